#ifndef XMLDOM_BENCH_MEASURE_WORK_H
#define XMLDOM_BENCH_MEASURE_WORK_H

#include <benchmark/benchmark.h>

#include "Library.h"
#include "documents/Sample.h"

namespace bench {

/// Does the operation once and looks at what comes of it.
/// Result: how many nodes it selected; 1 for an operation that selects none.
/// Effects: std::runtime_error when nothing, or the wrong thing, was done.
std::size_t TryOut(Operation operation, const Library& library, const Sample& sample);

/// Does the operation as often as `state` asks for; the clock runs during the operation alone.
/// Edits are done once for each node that the sample counts.
void Repeat(Operation operation, const Library& library, const Sample& sample,
            benchmark::State& state);

}  // namespace bench

#endif
