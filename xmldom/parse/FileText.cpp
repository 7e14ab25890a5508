// Reading a file into memory with the calls of the system. The buffer is taken in the size of the
// file where that is known, and doubled where it is not, as for pipes. Tested by
// tests/parse/XMLDocumentLoadFile_test.cpp.

#include <xmldom/parse/FileText.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <new>

namespace xmldom {

FileText::FileText() : m_file(-1), m_text(nullptr), m_length(0), m_capacity(0), m_size(0) {}

FileText::~FileText() {
  Close();
  std::free(m_text);
}

bool FileText::Open(const char* path) {
  Close();
  if (path != nullptr) m_file = open(path, O_RDONLY | O_CLOEXEC);
  return m_file >= 0;
}

void FileText::Close() {
  if (m_file >= 0) close(m_file);
  m_file = -1;
}

const char* FileText::Text() const { return m_text == nullptr ? "" : m_text; }

void FileText::Reserve(std::size_t capacity) {
  char* text = static_cast<char*>(std::realloc(m_text, capacity + 1));
  if (text == nullptr) throw std::bad_alloc();
  m_text = text;
  m_capacity = capacity;
}

/// How much room to begin with. It is one byte more than a regular file holds, so that the call
/// that finds the end of the file needs no more of it. Stores the size of such a file in m_size.
std::size_t FileText::ExpectedSize(std::size_t most) {
  struct stat status;
  if (fstat(m_file, &status) != 0 || !S_ISREG(status.st_mode) || status.st_size <= 0) return 4096;
  m_size = static_cast<unsigned long long>(status.st_size);
  return static_cast<std::size_t>(std::min<unsigned long long>(m_size, most)) + 1;
}

void FileText::Read(std::size_t most) {
  const std::size_t expected = ExpectedSize(most);
  if (m_size > most) return;
  Reserve(expected);
  for (;;) {
    if (m_length == m_capacity) {
      if (m_length > most) break;
      Reserve(m_capacity * 2);
    }
    const ssize_t count = read(m_file, m_text + m_length, m_capacity - m_length);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) break;
    m_length += static_cast<std::size_t>(count);
  }
  m_text[m_length] = '\0';
  m_size = m_length;
}

}  // namespace xmldom
