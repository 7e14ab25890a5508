#ifndef XMLDOM_BENCH_RESULTS_SECTIONS_H
#define XMLDOM_BENCH_RESULTS_SECTIONS_H

#include <ostream>

#include "results/Results.h"

namespace bench {

/// The operation of a result that stands for an extreme tree that was not done.
const char* const kNotDone = "NOT-DONE";

// Parts of the page, each with the tables of its subject.

void WriteMachine(std::ostream& out);
void WriteGoals(std::ostream& out, const Results& results);
void WriteMemory(std::ostream& out, const Results& results);
void WriteGrowth(std::ostream& out, const Results& results);
void WriteExtremes(std::ostream& out, const Results& results);
void WriteProfile(std::ostream& out, const Results& results);
void WriteSizes(std::ostream& out, const Results& results);

}  // namespace bench

#endif
