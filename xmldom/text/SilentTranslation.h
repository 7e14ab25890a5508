#ifndef XMLDOM_TEXT_SILENTTRANSLATION_H
#define XMLDOM_TEXT_SILENTTRANSLATION_H

#include <cstddef>

namespace xmldom {

/// The most bytes that a text of `length` bytes becomes when its references are decoded. Only
/// negative numbers make it longer: "&#-1;" becomes 6 bytes.
inline std::size_t MostDecoded(std::size_t length) { return length + length / 4; }

/// Writes a text to `to` as TranslateEntities does, unless that would log or print anything.
/// `ampersand` is its first '&', and `to` has room for MostDecoded bytes and a terminator. Result:
/// the end of what was written, at the terminator; null when TranslateEntities would log or print,
/// and what is at `to` then means nothing.
char* TranslateSilently(const char* text, const char* ampersand, char* to);

}  // namespace xmldom

#endif
