#ifndef XMLDOM_BASE_TEXTARGUMENT_H
#define XMLDOM_BASE_TEXTARGUMENT_H

#include <cstddef>
#include <cstring>
#include <utility>

namespace xmldom {

/// A text as an argument of a function, which only reads it: a NUL-terminated text, or whatever has
/// data() and size(), such as std::string and std::string_view. Null is an empty text. Nothing is
/// copied, so that the text must outlive the call.
class TextArgument {
 public:
  /// A NUL-terminated text; null is an empty one.
  TextArgument(const char* text) noexcept
      : m_data(text == nullptr ? "" : text), m_size(std::strlen(m_data)) {}

  /// A text that knows its size, and may hold NUL bytes.
  template <class Text,
            class = decltype(static_cast<const char*>(std::declval<const Text&>().data()))>
  TextArgument(const Text& text) noexcept
      : m_data(text.size() == 0 ? "" : text.data()), m_size(text.size()) {}

  /// Result: the first byte; never null. A text of which only the size is known has no terminator.
  const char* Data() const noexcept { return m_data; }
  /// Result: how many bytes there are.
  std::size_t Size() const noexcept { return m_size; }

 private:
  const char* m_data;
  std::size_t m_size;
};

}  // namespace xmldom

#endif
