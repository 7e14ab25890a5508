#ifndef XMLDOM_BASE_LIVECOUNT_H
#define XMLDOM_BASE_LIVECOUNT_H

#include <xmldom/base/Export.h>

#if defined(__has_include)
#if __has_include(<sys/single_threaded.h>)
#include <sys/single_threaded.h>
#define XMLDOM_HAS_SINGLE_THREADED 1
#endif
#endif

// Counters of live objects and strings, which all threads share.

namespace xmldom {

/// Whether the process is known to have one thread. False where the C library cannot tell.
__attribute__((always_inline)) inline bool HasOneThread() {
#ifdef XMLDOM_HAS_SINGLE_THREADED
  return __libc_single_threaded != 0;
#else
  return false;
#endif
}

/// Adds to a counter that other threads may change at the same time. Only the sum matters, so that
/// nothing else is ordered by it. While the process has one thread, a plain addition does, which
/// takes a fraction of the time. Always inlined, because a call is longer than the instructions.
template <class Number>
__attribute__((always_inline)) inline void AddToCount(Number& count, int change) {
  if (HasOneThread()) {
    count += change;
    return;
  }
  __atomic_fetch_add(&count, change, __ATOMIC_RELAXED);
}

/// Result: a counter that other threads may change at the same time.
template <class Number>
inline Number ReadCount(const Number& count) {
  return __atomic_load_n(&count, __ATOMIC_RELAXED);
}

}  // namespace xmldom

#endif
