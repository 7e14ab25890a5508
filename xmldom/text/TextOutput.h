#ifndef XMLDOM_TEXT_TEXTOUTPUT_H
#define XMLDOM_TEXT_TEXTOUTPUT_H

#include <xmldom/support/MemFile.h>

#include <climits>
#include <cstddef>
#include <cstring>

// Writing plain text: into a CMemFile by nothing but its own Write, or into a TextBuffer before
// one.

namespace xmldom {

/// Gathers small pieces of text for a CMemFile, which would otherwise be called for each. Flush
/// before the target is used by anybody else, as by a sink of log events, and at the end. Whoever
/// leaves by an exception leaves in the target what was written before it.
class TextBuffer {
 public:
  explicit TextBuffer(CMemFile& target) : m_target(target), m_length(0) {}

  ~TextBuffer() {
    if (m_length != 0) Rescue();
  }

  TextBuffer(const TextBuffer&) = delete;
  TextBuffer& operator=(const TextBuffer&) = delete;

  void Write(const char* text, unsigned int length) {
    if (length > kCapacity - m_length) {
      WriteThrough(text, length);
      return;
    }
    std::memcpy(m_text + m_length, text, length);
    m_length += length;
  }

  /// The target, with everything in it that was written so far.
  CMemFile& Flush() {
    if (m_length != 0) m_target.Write(m_text, m_length);
    m_length = 0;
    return m_target;
  }

 private:
  static const unsigned int kCapacity = 1024;

  /// Gives the target as much as it takes: an exception is under way already, which may be that of
  /// a target without room or memory for all.
  void Rescue() noexcept;

  /// Writes what there is no room for.
  void WriteThrough(const char* text, unsigned int length);

  CMemFile& m_target;
  unsigned int m_length;
  char m_text[kCapacity];
};

/// Refuses a text that is longer than a buffer can hold.
[[noreturn]] void ThrowTextTooLong();

/// Appends `length` bytes. Effects: std::length_error for more than a buffer can hold.
template <class Output>
inline void WriteBytes(Output& out, const char* text, std::size_t length) {
  if (length > UINT_MAX) ThrowTextTooLong();
  out.Write(text, static_cast<unsigned int>(length));
}

/// Appends a text; null appends nothing.
template <class Output>
inline void WriteText(Output& out, const char* text) {
  if (text != nullptr) WriteBytes(out, text, std::strlen(text));
}

/// Appends a text literal.
template <class Output, std::size_t N>
inline void WriteLiteral(Output& out, const char (&text)[N]) {
  out.Write(text, static_cast<unsigned int>(N - 1));
}

/// Appends `count` blanks; a negative count appends none.
template <class Output>
void WriteBlanks(Output& out, long long count) {
  static const char blanks[] =
      "                                                                "
      "                                                                ";
  const long long most = sizeof blanks - 1;
  if (count > UINT_MAX) ThrowTextTooLong();
  for (; count > 0; count -= most) {
    out.Write(blanks, static_cast<unsigned int>(count < most ? count : most));
  }
}

}  // namespace xmldom

#endif
