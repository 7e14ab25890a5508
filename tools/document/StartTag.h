#ifndef XMLDOM_TOOLS_DOCUMENT_STARTTAG_H
#define XMLDOM_TOOLS_DOCUMENT_STARTTAG_H

#include <cstddef>
#include <string>

namespace tool {

/// A part of a text, by the offsets of its first byte and of the byte behind its last one.
struct SourceRange {
  std::size_t begin;
  std::size_t end;
};

/// Reads a start tag, or an empty-element tag, of a well-formed text: the name of the element, and
/// then its attributes one after another. The text is borrowed.
/// Cost: linear in the tag.
class StartTag {
 public:
  /// `begin` is the offset of the '<'.
  StartTag(const std::string& text, std::size_t begin);

  /// The name of the element.
  SourceRange Name() const { return m_name; }

  /// Goes to the next attribute. Result: whether there is one. Out: where its name stands, and its
  /// value, without the quotes.
  bool Next(SourceRange& name, SourceRange& value);

 private:
  std::size_t EndOfName(std::size_t begin) const;
  std::size_t SkipSpace(std::size_t at) const;

  const std::string& m_text;
  SourceRange m_name;
  std::size_t m_at;  // behind the name, or behind the attribute that was read last
};

}  // namespace tool

#endif
