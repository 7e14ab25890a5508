#ifndef XMLDOM_FUZZ_PARSEREVENTS_H
#define XMLDOM_FUZZ_PARSEREVENTS_H

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace fuzz {

/// Something that a parser tells of a text.
struct Event {
  enum Kind { BEGIN, END, TEXT, COMMENT, INSTRUCTION, SKIPPED_ENTITY };
  using Attributes = std::vector<std::pair<std::string, std::string>>;

  Kind kind;
  std::string text;  ///< A name, or what a text, a comment or an instruction says.
  Attributes attributes;
  std::size_t offset;  ///< Where it stands in the text that was parsed; this is not compared.

  bool operator==(const Event& other) const {
    return kind == other.kind && text == other.text && attributes == other.attributes;
  }
};

/// What Expat itself tells of a text in any encoding that it knows. Texts that follow each other
/// are one event. Result: whether the text is well-formed.
bool ParseEvents(const std::string& bytes, std::vector<Event>& events);

/// The same events with all white space taken out of the texts.
std::vector<Event> WithoutSpace(const std::vector<Event>& events);

/// Adds an event; a text is joined with one before it, and an empty one is left out.
void AddEvent(const Event& event, std::vector<Event>& events);

}  // namespace fuzz

#endif
