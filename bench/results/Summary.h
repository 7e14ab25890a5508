#ifndef XMLDOM_BENCH_RESULTS_SUMMARY_H
#define XMLDOM_BENCH_RESULTS_SUMMARY_H

#include <ostream>
#include <string>

#include "results/Results.h"

namespace bench {

/// Each goal of speed beside what was measured over the documents of a set.
void WriteSpeedGoals(std::ostream& out, const Results& results, const std::string& set);

/// Each operation in multiples of one library, a column for each of the others.
void WriteRatios(std::ostream& out, const Results& results, const std::string& set);

/// The same for plots: a row for each operation, a column for each library, as PlotValue
/// writes them.
void WriteRatioData(std::ostream& out, const Results& results, const std::string& set);

/// xmldom on each document, in multiples of the library that its goal names.
void WriteDocumentRatios(std::ostream& out, const Results& results, const std::string& set);

}  // namespace bench

#endif
