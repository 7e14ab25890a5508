#ifndef XMLDOM_SUPPORT_LOGEXCEPTION_H
#define XMLDOM_SUPPORT_LOGEXCEPTION_H

#include <xmldom/base/Export.h>

#include <string>

/// What an operation that cannot complete throws, as a pointer. Whoever catches the pointer and
/// does not rethrow it deletes it.
class XMLDOM_API CLogException {
 public:
  /// Copies the texts. Null texts count as empty; a null `detail` means there is none.
  CLogException(const char* where, const char* message, const char* detail);

  const char* GetWhere() const { return m_where.c_str(); }      ///< Full name of the operation.
  const char* GetMessage() const { return m_message.c_str(); }  ///< What went wrong.
  /// More about it, usually a node's XML; null when none was given.
  const char* GetDetail() const { return m_hasDetail ? m_detail.c_str() : nullptr; }

  /// Posts one event of the given log type and severity: the title, and as body
  /// "where: message" with the detail, if any, on the next line.
  void LogMessage(int type, int severity, const char* title) const;

 private:
  std::string m_where;
  std::string m_message;
  std::string m_detail;
  bool m_hasDetail;
};

/// Makes a CLogException and throws it as a pointer. Callers write `throw Exception(...)`, so that
/// the same code works on a platform whose function returns the pointer.
XMLDOM_API CLogException* Exception(const char* where, const char* message, char* detail);

/// Exception() without detail and with a message formatted as by printf.
XMLDOM_API CLogException* ExceptionF(const char* where, const char* format, ...)
    XMLDOM_PRINTF(2, 3);

#endif
