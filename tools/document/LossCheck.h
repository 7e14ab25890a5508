#ifndef XMLDOM_TOOLS_DOCUMENT_LOSSCHECK_H
#define XMLDOM_TOOLS_DOCUMENT_LOSSCHECK_H

#include <cstddef>
#include <string>

namespace tool {

struct Input;

/// The first thing in a text that is lost or moved when the library loads it and writes it again,
/// and where the parts of the text stand. All places are offsets of bytes.
struct LossReport {
  const char* reason;  ///< What would be lost or moved; null when nothing is.
  std::size_t offset;  ///< Where that stands.
  std::size_t count;   ///< How many places there are of which something is lost or moved.

  std::size_t declarationEnd;  ///< The end of the XML declaration; 0 without one.
  std::size_t encodingBegin;   ///< The name, in the declaration, of an encoding that is not UTF-8;
  std::size_t encodingEnd;     ///< both are 0 without one.
  std::size_t rootBegin;       ///< The root element, with its tags.
  std::size_t rootEnd;
};

/// What happens to the surroundings of the root element: all that stands outside it.
enum class Surroundings {
  kKept,    ///< They are put around the written root element again (see Frame), so nothing is lost.
  kDropped  ///< They are not written, so a comment or document type there is reported as lost.
};

/// Whether texts and the values of attributes are written. What is lost of them is not reported
/// when none of them is.
enum class Values { kWritten, kMasked };

/// Finds out whether a parser reads the same from a text and from what the library writes of it:
/// the same elements, attributes, texts, comments and so on in the same order. White space between
/// the tags of an element that holds elements, and no text, is layout and does not count.
/// Result: the report; its reason is null when nothing is lost or moved.
/// Effects: throws a std::length_error for a text that is larger than the parser can take.
/// Bad input: a text that is not well-formed is reported as lost where the parser stops.
/// Cost: one pass of the parser; the stack does not grow.
LossReport FindLoss(const std::string& text, Surroundings surroundings,
                    Values values = Values::kWritten);
/// Does so with an input, of which UTF-16 is lost too.
LossReport FindLoss(const Input& input, Surroundings surroundings,
                    Values values = Values::kWritten);

}  // namespace tool

#endif
