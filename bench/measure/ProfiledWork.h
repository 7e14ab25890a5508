#ifndef XMLDOM_BENCH_MEASURE_PROFILEDWORK_H
#define XMLDOM_BENCH_MEASURE_PROFILEDWORK_H

#include "Library.h"
#include "documents/Sample.h"

namespace bench {

/// Does the operation twice, the second time inside of the function ProfiledWork, so that a
/// profiler can tell it from the rest. For loads, destruction and edits.
/// Effects: std::runtime_error for any other operation.
void ProfileOnce(Operation operation, const Library& library, const Sample& sample);

}  // namespace bench

#endif
