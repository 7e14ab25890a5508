// The parts of writing plain text that are seldom run. Tested by tests/text/XMLWriter_test.cpp.

#include <xmldom/text/TextOutput.h>

#include <stdexcept>

namespace xmldom {

void TextBuffer::WriteThrough(const char* text, unsigned int length) {
  Flush();
  if (length > kCapacity) {
    m_target.Write(text, length);
  } else {
    Write(text, length);
  }
}

void ThrowTextTooLong() { throw std::length_error("xmldom: text of more than 4 GiB"); }

}  // namespace xmldom
