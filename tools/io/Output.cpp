// Writes results to a descriptor through a buffer, and reports every byte that the system refuses.
// A text that is larger than the buffer is written without it.
// Tested by tests/tool/command_line_test.bash.

#include <tools/io/Output.h>

#include <unistd.h>

#include <cerrno>
#include <cstring>

namespace tool {

namespace {

const std::size_t kBufferSize = 65536;

}  // namespace

OutputError::OutputError(int errorNumber)
    : std::runtime_error(std::string("write error: ") + std::strerror(errorNumber)) {}

Output::Output(int descriptor) : m_descriptor(descriptor) { m_buffer.reserve(kBufferSize); }

Output::~Output() {
  if (m_descriptor >= 0) close(m_descriptor);
}

void Output::Write(const char* data, std::size_t size) {
  if (size > kBufferSize - m_buffer.size()) Flush();
  if (size > kBufferSize) {
    WriteThrough(data, size);
  } else {
    m_buffer.insert(m_buffer.end(), data, data + size);
  }
}

void Output::Flush() {
  WriteThrough(m_buffer.data(), m_buffer.size());
  m_buffer.clear();
}

void Output::Finish() {
  Flush();
  const int descriptor = m_descriptor;
  m_descriptor = -1;
  if (descriptor >= 0 && close(descriptor) != 0) throw OutputError(errno);
}

bool Output::IsTerminal() const { return isatty(m_descriptor) == 1; }

void Output::WriteThrough(const char* data, std::size_t size) {
  while (size > 0) {
    const ssize_t written = write(m_descriptor, data, size);
    if (written < 0) {
      if (errno == EINTR) continue;
      throw OutputError(errno);
    }
    data += written;
    size -= static_cast<std::size_t>(written);
  }
}

}  // namespace tool
