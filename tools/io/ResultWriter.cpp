// Writes the results for one file and puts the file's name before each line.
// A line may come in pieces: the name is written when the first piece of a line is.
// Tested by tests/tool/input_test.bash (several files) and tests/tool/TerminalText_test.cpp.

#include <tools/io/ResultWriter.h>

#include <tools/io/Output.h>
#include <tools/io/TerminalText.h>

#include <cstring>

namespace tool {

ResultWriter::ResultWriter(Output& output, const std::string& prefix)
    : m_output(output),
      m_isTerminal(output.IsTerminal()),
      m_prefix(m_isTerminal ? ForTerminalLine(prefix) : prefix),
      m_terminator('\n'),
      m_atLineStart(true) {}

void ResultWriter::Write(const char* text, std::size_t size) {
  if (m_isTerminal) {
    WriteHarmless(ForTerminal(std::string(text, size)));
  } else {
    WriteLines(text, size);
  }
}

void ResultWriter::WriteLines(const char* text, std::size_t size) {
  if (m_prefix.empty()) {
    m_output.Write(text, size);
    return;
  }
  while (size > 0) {
    if (m_atLineStart) m_output.Write(m_prefix);
    const void* end = std::memchr(text, m_terminator, size);
    m_atLineStart = end != nullptr;
    const std::size_t length =
        m_atLineStart ? static_cast<std::size_t>(static_cast<const char*>(end) - text) + 1 : size;
    m_output.Write(text, length);
    text += length;
    size -= length;
  }
}

}  // namespace tool
