#ifndef XMLDOM_BENCH_CHILD_H
#define XMLDOM_BENCH_CHILD_H

#include <functional>

#include "Operation.h"

namespace bench {

/// Runs `work` in a copy of this process, so that it finds the heap as it is here, whatever others
/// have done with theirs. Result: what `work` returns.
/// Effects: std::runtime_error when the copy ends in another way, with what went wrong on standard
/// error.
Outcome OutcomeOfChild(const std::function<Outcome()>& work);

}  // namespace bench

#endif
