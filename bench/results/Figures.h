#ifndef XMLDOM_BENCH_RESULTS_FIGURES_H
#define XMLDOM_BENCH_RESULTS_FIGURES_H

#include <cstddef>
#include <string>
#include <vector>

#include "results/Results.h"

namespace bench {

/// The library that the figures are about.
const char* const kOurs = "xmldom";

/// The tree that shows what a library over Expat costs at least.
const char* const kPlain = "plain";

/// How the time for a node grows from a document to a larger one of the same kind.
struct GrowthFigure {
  std::string operation;
  std::string sample;
  std::size_t fewNodes;
  std::size_t manyNodes;
  double nanosecondsFew;   // a node
  double nanosecondsMany;  // a node
  double ratio;            // of the two, from the same turns
};

/// All pairs that were measured of a library.
std::vector<GrowthFigure> GrowthFigures(const Results& results, const std::string& library);

/// A memory measure of one library and document, divided by the nodes; 0 when it is missing.
double BytesPerNode(const Results& results, const std::string& measure, const std::string& sample,
                    const std::string& library);

/// What a load of xmldom needed at its peak beside the records, and how long the text is.
struct PeakFigure {
  std::string sample;
  double bytes;
  double textBytes;
};

std::vector<PeakFigure> PeakFigures(const Results& results);

/// The nanoseconds of one step with an extreme tree; 0 when it is missing.
double ExtremeNanoseconds(const Results& results, const std::string& step, const std::string& tree,
                          std::size_t nodes);

/// Text and data of the shared libraries of that name together, in KiB; 0 when it is missing.
double LibraryKibibytes(const Results& results, const std::string& library);

}  // namespace bench

#endif
