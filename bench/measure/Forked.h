#ifndef XMLDOM_BENCH_MEASURE_FORKED_H
#define XMLDOM_BENCH_MEASURE_FORKED_H

#include <functional>

namespace bench {

/// What a repeated operation has taken.
struct Timing {
  double nanoseconds;   // of one repetition, as the clock has counted it
  double totalSeconds;  // of everything, with what the clock has not counted
};

/// Runs `work` in a copy of this process, so that it finds the heap as it is here, whatever others
/// have done with theirs. Effects: std::runtime_error when the copy does not come to its end.
Timing RunForked(const std::function<Timing()>& work);

}  // namespace bench

#endif
