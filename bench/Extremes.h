#ifndef XMLDOM_BENCH_EXTREMES_H
#define XMLDOM_BENCH_EXTREMES_H

#include <ostream>

namespace bench {

/// Builds trees of xmldom of extreme depth and breadth on a stack of 256 KiB, each in a process of
/// its own, does everything with them and checks what comes of it. Writes a line for each step,
/// with tabs between the fields: the tree, its nodes, the step, and the nanoseconds of processor
/// time; the step is "NOT DONE" when a process does not come to its end.
void MeasureExtremes(std::ostream& results);

}  // namespace bench

#endif
