#ifndef XMLDOM_TOOLS_DOCUMENT_LOSSCHECK_H
#define XMLDOM_TOOLS_DOCUMENT_LOSSCHECK_H

#include <cstddef>
#include <string>

namespace tool {

/// What of a text the library's written form does not give back, and where its parts stand.
struct LossReport {
  const char* reason;  ///< Why the text is not given back; null when it is.
  std::size_t offset;  ///< The first place that is lost or moved.

  std::size_t declarationEnd;  ///< Of the XML declaration; 0 without one.
  std::size_t encodingBegin;   ///< Of the name of an encoding that is not UTF-8.
  std::size_t encodingEnd;     ///< Both are 0 when there is none.
  std::size_t rootBegin;       ///< Of the root element, from tag to tag.
  std::size_t rootEnd;
};

/// What becomes of what stands outside the root element.
enum class Surroundings {
  kKept,    ///< Its bytes are put around the written root element again.
  kDropped  ///< It is lost.
};

/// Finds out whether the library's written form of a text says the same to a parser as the text
/// does: elements, attributes, texts and all else in their order, but for white space alone between
/// tags of elements that hold elements.
/// `text` is one that the library has loaded; anything else is reported as lost where it ends to be
/// XML, and a std::length_error where it is larger than the parser can take. Cost: one pass of the
/// parser; the stack does not grow.
LossReport FindLoss(const std::string& text, Surroundings surroundings);

}  // namespace tool

#endif
