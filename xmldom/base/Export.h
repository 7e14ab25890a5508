#ifndef XMLDOM_BASE_EXPORT_H
#define XMLDOM_BASE_EXPORT_H

#include <cstddef>  // tells which C library it is

/// Exports a class or function from the shared library, because applications link to it. Everything
/// without this mark is built hidden.
#define XMLDOM_API __attribute__((visibility("default")))

/// Keeps one member of an exported class out of the exported symbols, because only the library
/// calls it.
#define XMLDOM_HIDDEN __attribute__((visibility("hidden")))

/// Lets the compiler check the arguments of a printf-style function, because it cannot see by
/// itself which parameter is the format. `text` is the position of the format; `first` that of the
/// first argument that it formats, or 0 for a va_list. Positions count from 1, and `this` is one.
#define XMLDOM_PRINTF(text, first) __attribute__((__format__(__printf__, text, first)))

/// Marks a function that hardly ever runs, because the compiler then makes it small, and moves the
/// branches that call it out of the way of others.
#define XMLDOM_COLD __attribute__((cold))

/// Keeps a function out of its callers, because a caller that runs often and seldom needs it would
/// save registers for it every time.
#define XMLDOM_NOINLINE __attribute__((noinline))

/// Has the compiler warn where the result of a function is thrown away, because the result is the
/// only sign of a failure. A cast to void says that this is meant. (Clang takes the standard
/// attribute from C++17 on only; g++ honours the cast with the standard one only.)
#if __cplusplus >= 201703L || (defined(__GNUC__) && !defined(__clang__) && __GNUC__ >= 7)
#define XMLDOM_NODISCARD [[nodiscard]]
#else
#define XMLDOM_NODISCARD __attribute__((warn_unused_result))
#endif

/// Inlines a function everywhere, because a single call with the address of an object, if only in
/// the handler of an exception, keeps the compiler from holding any of the object in registers.
#define XMLDOM_ALWAYS_INLINE __attribute__((always_inline))

/// Gives a variable of a thread (`__thread`) a place that a few instructions find; from a shared
/// library it is a call otherwise. On 64-bit PowerPC that call even fails with -fno-plt: the linker
/// makes it one to __tls_get_addr_opt, which expects that the code of the PLT has been run before.
/// With the GNU C library such a library can still be loaded while a program runs: all its
/// variables of a thread, about 1250 bytes, then come out of a reserve of more than 1600. Other C
/// libraries may have none.
#if defined(XMLDOM_BUILDS_LIBRARY) && defined(__GLIBC__)
#define XMLDOM_THREAD_PLACE __attribute__((tls_model("initial-exec")))
#else
#define XMLDOM_THREAD_PLACE
#endif

/// Names the one type of exception that may leave a function; any other ends in the handler for
/// unexpected exceptions. Applications do not see it, because C++17 no longer has such
/// declarations.
#ifdef XMLDOM_BUILDS_LIBRARY
#define XMLDOM_THROWS(type) throw(type)
#else
#define XMLDOM_THROWS(type)
#endif

#endif
