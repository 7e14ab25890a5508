#ifndef XMLDOM_DOM_XMLERROR_H
#define XMLDOM_DOM_XMLERROR_H

#include <xmldom/base/Export.h>

/// Library-wide diagnostics: the last error of the lookups, and the leak report.
/// Threads: plain statics, for one thread at a time.
class XMLDOM_API CXML {
 public:
  /// Values of the error code. Successful lookups leave the code as it is.
  enum {
    NO_ERROR = 0,             ///< Set by ClearXMLError, and when an attribute was added.
    DUPLICATE_ATTRIBUTE = 1,  ///< An element has an attribute of that name already.
    NO_SUCH_ATTRIBUTE = 2,    ///< No attribute has the name.
    NO_SUCH_CHILD = 4         ///< No child has the name.
  };

  /// Sets the error code.
  static void SetXMLError(int code);
  /// Sets the error code to NO_ERROR, before the lookups that it is to tell about.
  static void ClearXMLError();
  /// The error code, as it was set last.
  static int GetXMLError();

  /// Posts the leak report (log type 26, severity 7): how many objects of each class are alive, and
  /// how many BSTRs are outstanding. `where` heads the report; null leaves the heading out.
  /// Result: the number of outstanding BSTRs.
  static long CheckLeaks(const char* where);

  static int iXMLError;  ///< The error code.
};

#endif
