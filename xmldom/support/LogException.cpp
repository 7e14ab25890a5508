// The exception of an operation that cannot complete, and the functions that throw it, as a pointer
// to an object that owns copies of its texts. Tested by tests/support/LogException_test.cpp.

#include <xmldom/support/LogException.h>

#include <xmldom/support/Logger.h>
#include <xmldom/support/MemFile.h>

#include <cstdarg>

namespace {

const char* OrEmpty(const char* text) { return text == nullptr ? "" : text; }

}  // namespace

CLogException::CLogException(const char* where, const char* message, const char* detail)
    : m_where(OrEmpty(where)),
      m_message(OrEmpty(message)),
      m_detail(OrEmpty(detail)),
      m_hasDetail(detail != nullptr) {}

void CLogException::LogMessage(int type, int severity, const char* title) const {
  std::string body = m_where + ": " + m_message;
  if (m_hasDetail) body += "\n" + m_detail;
  CLogger::PostLogEvent(static_cast<LogTypeEnum>(type), static_cast<LogSeverityEnum>(severity),
                        title, body.c_str());
}

CLogException* Exception(const char* where, const char* message, char* detail) {
  throw new CLogException(where, message, detail);
}

CLogException* ExceptionF(const char* where, const char* format, ...) {
  CMemFile message(256);
  va_list arguments;
  va_start(arguments, format);
  try {
    message.WriteFV(format, arguments);
  } catch (...) {
    va_end(arguments);
    throw;
  }
  va_end(arguments);
  throw new CLogException(where, message.GetAsStr(), nullptr);
}
