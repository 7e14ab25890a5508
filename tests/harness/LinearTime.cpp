#include "harness/LinearTime.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>

void ExpectGrowthBelow(double mostGrowth, int small, int large, const MeasuredWork& work) {
  const int kMostTurns = 6;
  const int kSmallRunsInTurn = 3;  // the first of them meets cold caches
  double smallTime = std::numeric_limits<double>::infinity();
  double largeTime = smallTime;
  for (int turn = 0; turn < kMostTurns; ++turn) {
    for (int run = 0; run < kSmallRunsInTurn; ++run) smallTime = std::min(smallTime, work(small));
    largeTime = std::min(largeTime, work(large));
    if (largeTime <= mostGrowth * smallTime) return;
  }
  ADD_FAILURE() << large << " pieces take " << largeTime << " seconds, more than " << mostGrowth
                << " times the " << smallTime << " seconds of " << small;
}

void ExpectLinearTime(int count, const MeasuredWork& work) {
  ExpectGrowthBelow(3000, count / 100, count, work);
}
