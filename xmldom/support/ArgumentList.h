#ifndef XMLDOM_SUPPORT_ARGUMENTLIST_H
#define XMLDOM_SUPPORT_ARGUMENTLIST_H

#include <cstdarg>

namespace xmldom {

/// Ends a list of arguments when its scope is left, also by an exception.
struct ArgumentListEnd {
  va_list& list;
  ~ArgumentListEnd() { va_end(list); }
};

}  // namespace xmldom

#endif
