// The exception of an operation that cannot complete, and the functions that throw it, as a pointer
// to an object that owns copies of its texts. Tested by tests/support/LogException_test.cpp, and by
// tests/consume/other-standard-library with applications that have another std::string.

#include <xmldom/support/LogException.h>

#include <xmldom/support/ArgumentList.h>
#include <xmldom/support/Logger.h>
#include <xmldom/support/MemFile.h>

#include <cstdarg>
#include <cstring>
#include <new>

namespace {

/// Copies a text to `place`, or an empty one when it is null. Result: the end of the copy, behind
/// its terminator.
char* CopyTo(char* place, const char* text) {
  return stpcpy(place, text == nullptr ? "" : text) + 1;
}

/// The bytes that CopyTo writes.
std::size_t Room(const char* text) { return text == nullptr ? 1 : std::strlen(text) + 1; }

}  // namespace

CLogException::CLogException(const char* where, const char* message, const char* detail)
    : m_where(static_cast<char*>(::operator new(Room(where) + Room(message) + Room(detail)))) {
  m_message = CopyTo(m_where, where);
  char* const copy = CopyTo(m_where + Room(where), message);
  CopyTo(copy, detail);
  m_detail = detail == nullptr ? nullptr : copy;
}

CLogException::~CLogException() { ::operator delete(m_where); }

void* CLogException::operator new(std::size_t size) { return ::operator new(size); }
void CLogException::operator delete(void* p) { ::operator delete(p); }

const char* CLogException::GetWhere() const { return m_where; }
const char* CLogException::GetMessage() const { return m_message; }
const char* CLogException::GetDetail() const { return m_detail; }

void CLogException::LogMessage(int type, int severity, const char* title) const {
  CMemFile body(256);
  body.WriteF("%s: %s", m_where, m_message);
  if (m_detail != nullptr) {
    body.Write("\n", 1);
    body.Write(m_detail, static_cast<unsigned int>(std::strlen(m_detail)));
  }
  CLogger::PostLogEvent(static_cast<LogTypeEnum>(type), static_cast<LogSeverityEnum>(severity),
                        title, body.GetAsStr());
}

CLogException* Exception(const char* where, const char* message, char* detail) {
  throw new CLogException(where, message, detail);
}

CLogException* ExceptionF(const char* where, const char* format, ...) {
  CMemFile message(256);
  va_list arguments;
  va_start(arguments, format);
  // What ends the list is the destructor.
  const xmldom::ArgumentListEnd end = {arguments};  // NOLINT(clang-analyzer-deadcode.DeadStores)
  message.WriteFV(format, arguments);
  throw new CLogException(where, message.GetAsStr(), nullptr);
}
