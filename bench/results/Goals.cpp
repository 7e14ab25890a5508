#include "results/Goals.h"

#include "results/Statistics.h"

namespace bench {

const std::vector<SpeedGoal>& SpeedGoals() {
  static const std::vector<SpeedGoal> goals = {
      {Operation::kLoad, "plain", 1.0, 1.15},
      {Operation::kLoadAndDestroy, "plain", 1.0, 0},
      {Operation::kWrite, "pugixml", 0.8, 1.2},
      {Operation::kText, "pugixml", 0.7, 0},
      {Operation::kSelectName, "pugixml", 1.0, 2.0},
      {Operation::kSelectAttribute, "pugixml", 1.0, 2.0},
      {Operation::kSelectPath, "pugixml", 1.0, 2.0},
      {Operation::kFirstFound, "pugixml", 0.3, 0},
      {Operation::kFirstAbsent, "pugixml", 1.0, 0},
      {Operation::kCompare, "plain", 1.0, 0},
      {Operation::kAppend, "pugixml", 1.5, 0},
      {Operation::kInsertFirst, "pugixml", 1.5, 0},
      {Operation::kRemoveFirst, "pugixml", 1.5, 0},
  };
  return goals;
}

bool IsMet(const SpeedGoal& goal, const Comparison& comparison) {
  return comparison.mean <= goal.mean && (goal.worst <= 0 || comparison.worst <= goal.worst);
}

Comparison Compare(const Results& results, const std::string& operation, const std::string& set,
                   const std::string& library, const std::string& base) {
  Comparison comparison;
  std::vector<double> ratios;
  for (const Result* result : results.Of(operation, set, library)) {
    const Result* other = results.Beside(*result, base);
    if (other == nullptr) continue;
    const double ratio = MedianRatio(result->values, other->values);
    ratios.push_back(ratio);
    if (ratio <= comparison.worst) continue;
    comparison.worst = ratio;
    comparison.worstSample = result->sample;
  }
  if (!ratios.empty()) comparison.mean = GeometricMean(ratios);
  return comparison;
}

}  // namespace bench
