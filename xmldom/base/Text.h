#ifndef XMLDOM_BASE_TEXT_H
#define XMLDOM_BASE_TEXT_H

#include <xmldom/base/Export.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <new>

// Names and values of nodes are NUL-terminated texts on the C heap, so that an application may free
// and replace them with the means of C. A TextRange is a part of a text that belongs to somebody
// else.

namespace xmldom {

/// Owns a text on the C heap, or null.
typedef std::unique_ptr<char, void (*)(void*)> HeapText;

/// Copies the first `length` bytes of `text`. Result: a NUL-terminated copy on the C heap, the
/// caller's (free). Effects: std::bad_alloc when memory is out.
inline char* CopyString(const char* text, std::size_t length) {
  char* copy = static_cast<char*>(std::malloc(length + 1));
  if (copy == nullptr) throw std::bad_alloc();
  std::memcpy(copy, text, length);
  copy[length] = '\0';
  return copy;
}

/// Copies a whole text in the same way. Result: the copy; null for null. Not inlined, because it is
/// called in many places.
XMLDOM_NOINLINE inline char* CopyString(const char* text) {
  if (text == nullptr) return nullptr;
  const std::size_t size = std::strlen(text) + 1;
  void* copy = std::malloc(size);
  if (copy == nullptr) throw std::bad_alloc();
  return static_cast<char*>(std::memcpy(copy, text, size));
}

/// Whether two texts are equal. A null one equals only another null.
inline bool SameString(const char* a, const char* b) {
  if (a == nullptr || b == nullptr) return a == b;
  // Most texts that differ do so in the first byte, and then strcmp need not be called.
  return *a == *b && std::strcmp(a, b) == 0;
}

/// Part of a text that belongs to somebody else, without a terminator.
struct TextRange {
  const char* begin;
  const char* end;

  std::size_t Length() const { return static_cast<std::size_t>(end - begin); }
  bool StartsWith(char c) const { return begin != end && *begin == c; }
};

/// The range of a whole NUL-terminated text.
inline TextRange WholeText(const char* text) { return TextRange{text, text + std::strlen(text)}; }

/// Whether a NUL-terminated text equals a range. Null equals no range. Always inlined, because
/// searches test the name of each node with it.
XMLDOM_ALWAYS_INLINE inline bool Equals(const char* text, const TextRange& range) {
  if (text == nullptr) return false;
  const std::size_t length = range.Length();
  // Most names that differ do so in the first byte, and then strncmp need not be called.
  if (length != 0 && *text != *range.begin) return false;
  return std::strncmp(text, range.begin, length) == 0 && text[length] == '\0';
}

}  // namespace xmldom

#endif
