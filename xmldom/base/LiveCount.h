#ifndef XMLDOM_BASE_LIVECOUNT_H
#define XMLDOM_BASE_LIVECOUNT_H

#include <xmldom/base/Export.h>

// Counters of live objects and strings, which all threads share.

namespace xmldom {

/// Adds to a counter that other threads may change at the same time. Only the sum matters, so that
/// nothing else is ordered by it. Always inlined, because a call is longer than the instruction.
template <class Number>
__attribute__((always_inline)) inline void AddToCount(Number& count, int change) {
  __atomic_fetch_add(&count, change, __ATOMIC_RELAXED);
}

/// Result: a counter that other threads may change at the same time.
template <class Number>
inline Number ReadCount(const Number& count) {
  return __atomic_load_n(&count, __ATOMIC_RELAXED);
}

}  // namespace xmldom

#endif
