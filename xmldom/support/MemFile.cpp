// A growable byte buffer that text is written into. It doubles its memory when that is full, so
// that the cost of all writes is linear in what they write. Tested by
// tests/support/MemFile_test.cpp.

#include <xmldom/support/MemFile.h>

#include <xmldom/support/ArgumentList.h>

#include <algorithm>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>
#include <stdexcept>

namespace {

char l_szEmpty[] = "";

/// The reference that stands for one of the five characters that have a predefined entity.
const char* EntityOf(char c) {
  switch (c) {
    case '&':
      return "&amp;";
    case '<':
      return "&lt;";
    case '>':
      return "&gt;";
    case '"':
      return "&quot;";
    default:
      return "&apos;";
  }
}

}  // namespace

CMemFile::CMemFile(unsigned int size)
    : m_uPosition(0), m_uLength(0), m_uInitialSize(size), m_uCapacity(0), m_pData(nullptr) {}

CMemFile::~CMemFile() { std::free(m_pData); }

// Makes room for `size` bytes and a terminator behind the contents and returns where they go.
char* CMemFile::Reserve(std::size_t size) {
  if (size > UINT_MAX - m_uLength) throw std::length_error("CMemFile: more than 4 GiB");
  const std::size_t needed = m_uLength + size;
  if (m_pData == nullptr || needed > m_uCapacity) {
    const std::size_t limit = std::min<std::size_t>(UINT_MAX, SIZE_MAX - 1);
    if (needed > limit) throw std::bad_alloc();
    const std::size_t doubled = m_uCapacity > limit / 2 ? limit : m_uCapacity * 2;
    const std::size_t capacity = std::max(
        needed, m_pData == nullptr ? std::min<std::size_t>(m_uInitialSize, limit) : doubled);
    char* data = static_cast<char*>(std::realloc(m_pData, capacity + 1));
    if (data == nullptr) throw std::bad_alloc();
    m_pData = data;
    m_uCapacity = capacity;
  }
  return m_pData + m_uLength;
}

void CMemFile::Append(const void* data, std::size_t size) {
  if (size != 0) std::memcpy(Reserve(size), data, size);
  m_uLength += static_cast<unsigned int>(size);
  m_uPosition = m_uLength;
}

void CMemFile::WriteF(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const xmldom::ArgumentListEnd end = {arguments};
  WriteFV(format, arguments);
}

void CMemFile::WriteFV(const char* format, va_list arguments) {
  va_list again;
  va_copy(again, arguments);
  const xmldom::ArgumentListEnd end = {again};
  char small[256];
  // The analyzer takes a list for unset that the caller's own guard of it refers to.
  // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized)
  const int size = std::vsnprintf(small, sizeof small, format, arguments);
  if (size < 0) throw std::length_error("CMemFile: formatted text too long");
  if (static_cast<std::size_t>(size) < sizeof small) {
    Append(small, static_cast<std::size_t>(size));
  } else {
    // vsnprintf writes its terminator into the byte that Reserve keeps for one.
    char* target = Reserve(static_cast<std::size_t>(size));
    std::vsnprintf(target, static_cast<std::size_t>(size) + 1, format, again);
    m_uLength += static_cast<unsigned int>(size);
    m_uPosition = m_uLength;
  }
}

void CMemFile::WriteStrEntities(const char* text) {
  if (text == nullptr) return;
  for (;;) {
    const std::size_t plain = std::strcspn(text, "&<>\"'");
    Append(text, plain);
    text += plain;
    if (*text == '\0') return;
    const char* entity = EntityOf(*text);
    Append(entity, std::strlen(entity));
    ++text;
  }
}

unsigned int CMemFile::Read(void* data, unsigned int size) {
  if (m_uPosition >= m_uLength) return 0;
  const unsigned int count = std::min(size, m_uLength - m_uPosition);
  std::memcpy(data, m_pData + m_uPosition, count);
  m_uPosition += count;
  return count;
}

const char* CMemFile::GetAsStr() {
  if (m_pData == nullptr) return l_szEmpty;
  m_pData[m_uLength] = '\0';
  return m_pData;
}
