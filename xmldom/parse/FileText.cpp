// Reading a file into memory with the calls of the system. Memory of its own is taken in the size
// of the file where that is known, and doubled where it is not, as for pipes, or where the file
// grows. Tested by tests/parse/XMLDocumentLoadFile_test.cpp, XMLDocumentLoadFileReading_test.cpp
// and XMLDocumentLoadFileErrno_test.cpp.

#include <xmldom/parse/FileText.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <new>

namespace xmldom {

FileText::FileText()
    : m_file(-1),
      m_own(nullptr),
      m_text(nullptr),
      m_length(0),
      m_capacity(0),
      m_size(0),
      m_error(0) {}

FileText::~FileText() {
  Close();
  std::free(m_own);
}

bool FileText::Open(const char* path) {
  m_error = EINVAL;
  if (path == nullptr) return false;
  m_file = open(path, O_RDONLY | O_CLOEXEC);
  m_error = m_file < 0 ? errno : 0;
  struct stat status;
  if (m_file >= 0 && fstat(m_file, &status) == 0 && S_ISREG(status.st_mode)) {
    m_size = static_cast<unsigned long long>(status.st_size);
  }
  return m_file >= 0;
}

void FileText::Close() {
  if (m_file >= 0) close(m_file);
  m_file = -1;
}

std::size_t FileText::Length() const {
  const void* end = m_length == 0 ? nullptr : std::memchr(m_text, '\0', m_length);
  return end == nullptr ? m_length
                        : static_cast<std::size_t>(static_cast<const char*>(end) - m_text);
}

/// Makes room for `capacity` bytes in the object's own memory, and moves there what was read.
void FileText::Reserve(std::size_t capacity) {
  char* own = static_cast<char*>(std::realloc(m_own, capacity));
  if (own == nullptr) throw std::bad_alloc();
  if (m_own == nullptr && m_text != nullptr) std::memcpy(own, m_text, m_length);
  m_own = m_text = own;
  m_capacity = capacity;
}

void FileText::Read(std::size_t most, char* memory) {
  m_error = EFBIG;
  if (m_size > most) return;
  m_text = memory;
  const std::size_t size = static_cast<std::size_t>(m_size);
  if (memory != nullptr) {
    m_capacity = size;
  } else if (size != 0) {
    Reserve(size);
  }
  while (m_length <= most) {
    // When there is no room left, the end of the file is looked for with a byte of its own.
    char next = '\0';
    const bool isFull = m_length == m_capacity;
    const ssize_t count =
        isFull ? read(m_file, &next, 1) : read(m_file, m_text + m_length, m_capacity - m_length);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) {
      m_error = count < 0 ? errno : 0;
      break;
    }
    if (isFull) {
      Reserve(std::max<std::size_t>(2 * m_capacity, 4096));
      m_text[m_length] = next;
    }
    m_length += static_cast<std::size_t>(count);
  }
  m_size = m_length;
}

}  // namespace xmldom
