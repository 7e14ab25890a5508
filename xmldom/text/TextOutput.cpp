// Writing plain text: the paths of TextBuffer that are taken seldom, kept out of its inline
// members. Tested through the writer by tests/text/XMLWriter_test.cpp.

#include <xmldom/text/TextOutput.h>

#include <xmldom/base/Export.h>
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

XMLDOM_COLD void TextBuffer::Rescue() noexcept {
  try {
    for (unsigned int i = 0; i < m_length; ++i) m_target.Write(m_text + i, 1);
  } catch (...) {
    // The caller gets the exception that is under way.
  }
}

void ThrowTextTooLong() { throw std::length_error("xmldom: text of more than 4 GiB"); }

}  // namespace xmldom
