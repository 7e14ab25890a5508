#ifndef XMLDOM_BENCH_RESULTS_GOALS_H
#define XMLDOM_BENCH_RESULTS_GOALS_H

#include <string>
#include <vector>

#include "Operation.h"
#include "results/Results.h"

namespace bench {

/// What an operation of xmldom may take, in multiples of another library.
struct SpeedGoal {
  Operation operation;
  std::string base;
  double mean;   // the most that the geometric mean over the documents may be
  double worst;  // the most on any document; 0 when that is open
};

const std::vector<SpeedGoal>& SpeedGoals();

/// One library in multiples of another, over the documents that both have done.
struct Comparison {
  double mean = 0;  // geometric; 0 when there is no such document
  double worst = 0;
  std::string worstSample;
};

bool IsMet(const SpeedGoal& goal, const Comparison& comparison);

/// An empty set stands for small, large and real documents.
Comparison Compare(const Results& results, const std::string& operation, const std::string& set,
                   const std::string& library, const std::string& base);

}  // namespace bench

#endif
