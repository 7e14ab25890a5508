#ifndef XMLDOM_BENCH_MEASURE_TURNS_H
#define XMLDOM_BENCH_MEASURE_TURNS_H

#include <string>
#include <vector>

#include "Library.h"
#include "documents/Sample.h"
#include "results/Results.h"

namespace bench {

struct TurnOptions {
  int turns;            // an odd number, so that a median is one of the values
  double secondsOfOne;  // of one entry in one turn, at least
};

/// One operation of one library on one document.
struct Entry {
  Operation operation;
  const Library* library;
  const Sample* sample;
};

/// Measures entries that take turns, each turn in a process of its own and with the same number of
/// repetitions, which a turn before all others finds out. Counted is the processor time, since
/// others share the machine. Result: one result for each entry, in their order.
std::vector<Result> TakeTurns(const std::vector<Entry>& entries, const TurnOptions& options);

/// Those of the libraries that offer the operation and accept the document.
/// Effects: std::runtime_error when one does not do what the others do.
std::vector<Entry> Entries(Operation operation, const Sample& sample,
                           const std::vector<const Library*>& libraries);

}  // namespace bench

#endif
