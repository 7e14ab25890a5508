#include "harness/LinearTime.h"

#include <gtest/gtest.h>

#include <algorithm>

void ExpectLinearTime(int count, const MeasuredWork& work) {
  const int kRuns = 3;
  const int kGrowth = 100;
  const double kMostGrowthOfTime = 3000;
  double small = work(count / kGrowth);
  for (int run = 1; run < kRuns; ++run) small = std::min(small, work(count / kGrowth));
  double large = work(count);
  for (int run = 1; run < kRuns && large > kMostGrowthOfTime * small; ++run) {
    large = std::min(large, work(count));
  }
  EXPECT_LE(large, kMostGrowthOfTime * small)
      << "seconds for " << count << " pieces, and 3000 times those for " << count / kGrowth;
}
