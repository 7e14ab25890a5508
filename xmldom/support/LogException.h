#ifndef XMLDOM_SUPPORT_LOGEXCEPTION_H
#define XMLDOM_SUPPORT_LOGEXCEPTION_H

#include <xmldom/base/Export.h>

#include <string>

/// The exception of an operation that cannot complete. It is thrown as a pointer: whoever catches
/// the pointer and does not throw it again must delete it.
class XMLDOM_API CLogException {
 public:
  /// Copies the texts. A null `where` or `message` counts as empty; a null `detail` means none.
  CLogException(const char* where, const char* message, const char* detail);

  const char* GetWhere() const { return m_where.c_str(); }      ///< The full name of the operation.
  const char* GetMessage() const { return m_message.c_str(); }  ///< What went wrong.
  /// Further text, usually the XML of a node; null when none was given.
  const char* GetDetail() const { return m_hasDetail ? m_detail.c_str() : nullptr; }

  /// Posts one log event of the given type and severity. Its body is "where: message", with the
  /// detail, if there is one, on the next line.
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
