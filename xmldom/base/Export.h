#ifndef XMLDOM_BASE_EXPORT_H
#define XMLDOM_BASE_EXPORT_H

/// Marks what the shared libraries hand out; everything else is built hidden.
#define XMLDOM_API __attribute__((visibility("default")))

/// Takes a private member of such a class back.
#define XMLDOM_HIDDEN __attribute__((visibility("hidden")))

/// Lets the compiler check the arguments of a printf-style function: which parameter is the format,
/// and which is the first that it formats (0 for a va_list). Parameters count from 1, `this` is
/// one.
#define XMLDOM_PRINTF(text, first) __attribute__((__format__(__printf__, text, first)))

/// Which exception alone may leave a function; any other ends in the unexpected-exception handler.
/// Only the library itself is compiled with it, since C++17 does not know it any more.
#ifdef XMLDOM_BUILDS_LIBRARY
#define XMLDOM_THROWS(type) throw(type)
#else
#define XMLDOM_THROWS(type)
#endif

#endif
