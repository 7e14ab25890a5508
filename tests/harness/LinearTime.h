#ifndef XMLDOM_TESTS_HARNESS_LINEARTIME_H
#define XMLDOM_TESTS_HARNESS_LINEARTIME_H

#include <functional>

/// Does its work on `count` pieces. Result: the processor time of what is measured, in seconds;
/// what it prepares and checks need not be a part of that.
typedef std::function<double(int count)> MeasuredWork;

/// The case fails when `large` pieces take more than `mostGrowth` times as long as `small` ones.
/// The two are measured in turns, several times as long as the growth seems too large, and the
/// least time of each counts: a busy machine only adds to a time, and may be busy for a while.
/// `mostGrowth` should be far from the growth that is right and from the one that is wrong.
void ExpectGrowthBelow(double mostGrowth, int small, int large, const MeasuredWork& work);

/// The case fails when the processor time of `work` grows faster than its size: when `count` pieces
/// take more than 3,000 times as long as a hundredth of them. Linear work takes 100 times as long,
/// and up to ten times that when a tree no longer fits the processor's caches; quadratic work takes
/// 10,000 times as long. `count` should be about 100,000, since a hundredth has to show growth too.
void ExpectLinearTime(int count, const MeasuredWork& work);

#endif
