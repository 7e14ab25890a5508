#ifndef XMLDOM_TEXT_TEXTOUTPUT_H
#define XMLDOM_TEXT_TEXTOUTPUT_H

#include <xmldom/support/MemFile.h>

#include <climits>
#include <cstddef>
#include <cstring>

// Writing plain text. The functions below take a CMemFile or a TextBuffer, of which they call
// nothing but Write.

namespace xmldom {

/// A buffer before a CMemFile, which saves a call of the file for each small piece of text. Call
/// Flush at the end, and before anything else can see the file, for example a sink of log events.
/// When an exception ends the writing, the destructor gives the file what was written before.
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

  /// Called while an exception is under way, perhaps because the target has no room or memory.
  /// Writes byte by byte until the target refuses one.
  void Rescue() noexcept;

  /// Writes a piece that is too long for the rest of the buffer.
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
