#ifndef XMLDOM_BASE_LIVECOUNT_H
#define XMLDOM_BASE_LIVECOUNT_H

#include <xmldom/base/Export.h>

#if defined(__has_include)
#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#define XMLDOM_HAS_SINGLE_THREADED 1
#endif
#endif

// Numbers that all threads share, such as the counters of live objects and strings.

namespace xmldom {

/// Adds to a counter that other threads may change at the same time. Only the sum matters, so that
/// nothing else is ordered by it. While the process has one thread, as the C library tells where it
/// can, a plain addition does, which takes a fraction of the time. Always inlined, because a call
/// is longer than the instructions.
template <class Number>
__attribute__((always_inline)) inline void AddToCount(Number& count, int change) {
#ifdef XMLDOM_HAS_SINGLE_THREADED
  if (__libc_single_threaded) {
    count += change;
    return;
  }
#endif
  __atomic_fetch_add(&count, change, __ATOMIC_RELAXED);
}

/// Stores a number that other threads may exchange at the same time. Result: the one that was
/// there. Nothing else is ordered by it.
template <class Number>
__attribute__((always_inline)) inline Number Exchange(Number& place, Number number) {
#ifdef XMLDOM_HAS_SINGLE_THREADED
  if (__libc_single_threaded) {
    const Number old = place;
    place = number;
    return old;
  }
#endif
  return __atomic_exchange_n(&place, number, __ATOMIC_RELAXED);
}

/// Result: a counter that other threads may change at the same time.
template <class Number>
inline Number ReadCount(const Number& count) {
  return __atomic_load_n(&count, __ATOMIC_RELAXED);
}

}  // namespace xmldom

#endif
