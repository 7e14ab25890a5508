#ifndef XMLDOM_DOM_XMLERROR_H
#define XMLDOM_DOM_XMLERROR_H

#include <xmldom/base/Export.h>

/// Diagnostics: the error code of the last failed lookup, and the leak report of the whole library.
/// Threads: each thread has an error code of its own. The leak report counts the objects of all
/// threads.
class XMLDOM_API CXML {
 public:
  /// Values of the error code. A lookup that succeeds does not change the code, so that it tells
  /// about the last failure.
  enum {
    NO_ERROR = 0,  ///< Nothing failed; set by ClearXMLError and when an attribute is added.
    DUPLICATE_ATTRIBUTE = 1,  ///< AddAttribute found an attribute of that name already.
    NO_SUCH_ATTRIBUTE = 2,    ///< No attribute has the name.
    NO_SUCH_CHILD = 4         ///< No child has the name.
  };

  /// Sets the error code.
  static void SetXMLError(int code);
  /// Sets the error code to NO_ERROR. Call it before the lookups that you want to know about.
  static void ClearXMLError();
  /// Result: the error code, as it was set last.
  static int GetXMLError();

  /// Posts the leak report: how many objects of each class exist, and how many BSTRs are allocated
  /// and not yet freed. `where` is the heading of the report; null leaves the heading out.
  /// Result: the number of these BSTRs. Effects: a log event (type 26, severity 7).
  static long CheckLeaks(const char* where);

  static XMLDOM_THREAD_PLACE __thread int iXMLError;  ///< The error code of the running thread.
};

#endif
