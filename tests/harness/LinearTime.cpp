#include "harness/LinearTime.h"

#include <gtest/gtest.h>

#include <algorithm>

void ExpectLinearTime(int count, const MeasuredWork& work) {
  const int kRuns = 3;
  const double kMostGrowth = 200;
  double small = work(count / 32);
  for (int run = 1; run < kRuns; ++run) small = std::min(small, work(count / 32));
  double large = work(count);
  for (int run = 1; run < kRuns && large > kMostGrowth * small; ++run) {
    large = std::min(large, work(count));
  }
  EXPECT_LE(large, kMostGrowth * small) << "seconds for " << count << " pieces, and 200 times those"
                                        << " for " << count / 32;
}
