#ifndef XMLDOM_BASE_TEXT_H
#define XMLDOM_BASE_TEXT_H

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>

namespace xmldom {

/// Copies the first `length` bytes of `text`. Result: a NUL-terminated copy on the C heap, the
/// caller's. Effects: std::bad_alloc when memory is out.
inline char* CopyString(const char* text, std::size_t length) {
  char* copy = static_cast<char*>(std::malloc(length + 1));
  if (copy == nullptr) throw std::bad_alloc();
  std::memcpy(copy, text, length);
  copy[length] = '\0';
  return copy;
}

/// Copies a text; null gives null.
inline char* CopyString(const char* text) {
  return text == nullptr ? nullptr : CopyString(text, std::strlen(text));
}

/// Whether two texts are the same; a missing one equals only a missing one.
inline bool SameString(const char* a, const char* b) {
  if (a == nullptr || b == nullptr) return a == b;
  // Most texts that differ do so in their first byte.
  return *a == *b && std::strcmp(a, b) == 0;
}

}  // namespace xmldom

#endif
