#include "results/Figures.h"

#include "results/Statistics.h"

namespace bench {

namespace {

double PerNode(const Result& result) {
  return Median(result.values) / static_cast<double>(result.nodes);
}

}  // namespace

std::vector<GrowthFigure> GrowthFigures(const Results& results, const std::string& library) {
  std::vector<GrowthFigure> figures;
  const Result* few = nullptr;
  for (const Result& result : results.All()) {
    if (result.set != "growth" || result.library != library) continue;
    const bool isPair = few != nullptr && few->operation == result.operation &&
                        few->sample == result.sample && few->nodes < result.nodes;
    if (!isPair) {
      few = &result;
      continue;
    }
    const double nodes = static_cast<double>(few->nodes) / static_cast<double>(result.nodes);
    figures.push_back(GrowthFigure{result.operation, result.sample, few->nodes, result.nodes,
                                   PerNode(*few), PerNode(result),
                                   MedianRatio(result.values, few->values) * nodes});
  }
  return figures;
}

double BytesPerNode(const Results& results, const std::string& measure, const std::string& sample,
                    const std::string& library) {
  for (const Result* result : results.Of(measure, "", library)) {
    if (result->sample == sample) return PerNode(*result);
  }
  return 0;
}

std::vector<PeakFigure> PeakFigures(const Results& results) {
  std::vector<PeakFigure> figures;
  for (const Result* peak : results.Of("peak", "", kOurs)) {
    const double nodes = static_cast<double>(peak->nodes);
    const double records = BytesPerNode(results, "records", peak->sample, kOurs) * nodes;
    const double text = BytesPerNode(results, "file", peak->sample, "document") * nodes;
    figures.push_back(PeakFigure{peak->sample, Median(peak->values) - records, text});
  }
  return figures;
}

double ExtremeNanoseconds(const Results& results, const std::string& step, const std::string& tree,
                          std::size_t nodes) {
  const Result* result = results.Find(step, "extreme", tree, nodes, kOurs);
  return result == nullptr ? 0 : Median(result->values);
}

double LibraryKibibytes(const Results& results, const std::string& library) {
  double bytes = 0;
  for (const Result* result : results.Of("size", "size", library)) bytes += Median(result->values);
  return bytes / 1024;
}

}  // namespace bench
