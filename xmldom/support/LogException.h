#ifndef XMLDOM_SUPPORT_LOGEXCEPTION_H
#define XMLDOM_SUPPORT_LOGEXCEPTION_H

#include <xmldom/base/Export.h>

#include <cstddef>

/// The exception of an operation that cannot complete. It is thrown as a pointer: whoever catches
/// the pointer and does not throw it again must delete it.
///
/// Its memory and its texts are the library's own, whatever standard library an application is
/// compiled with.
class XMLDOM_API CLogException {
 public:
  /// Copies the texts. A null `where` or `message` counts as empty; a null `detail` means none.
  CLogException(const char* where, const char* message, const char* detail);
  ~CLogException();

  CLogException(const CLogException&) = delete;
  CLogException& operator=(const CLogException&) = delete;

  const char* GetWhere() const;    ///< The full name of the operation.
  const char* GetMessage() const;  ///< What went wrong.
  /// Further text, usually the XML of a node; null when none was given.
  const char* GetDetail() const;

  /// Posts one log event of the given type and severity. Its body is "where: message", with the
  /// detail, if there is one, on the next line.
  void LogMessage(int type, int severity, const char* title) const;

  /// An application may have another global allocator than the library, and delete what the library
  /// has made.
  static void* operator new(std::size_t size);
  static void operator delete(void* p);

 private:
  char* m_where;  // one block of memory, which holds all three texts
  const char* m_message;
  const char* m_detail;
};

/// Makes a CLogException and throws it as a pointer. Callers write `throw Exception(...)`, so that
/// the same code works on a platform whose function returns the pointer.
XMLDOM_API CLogException* Exception(const char* where, const char* message, char* detail);

/// Exception() without detail and with a message formatted as by printf.
XMLDOM_API CLogException* ExceptionF(const char* where, const char* format, ...)
    XMLDOM_PRINTF(2, 3);

#endif
