#ifndef XMLDOM_TESTS_HARNESS_LINEARTIME_H
#define XMLDOM_TESTS_HARNESS_LINEARTIME_H

#include <functional>

/// Does its work on `count` pieces. Result: the processor time of what is measured, in seconds;
/// what it prepares and checks need not be a part of that.
typedef std::function<double(int count)> MeasuredWork;

/// The case fails when the processor time of `work` grows faster than its size: when `count` pieces
/// take more than 3,000 times as long as a hundredth of them. Linear work takes 100 times as long,
/// and up to ten times that when a tree no longer fits the processor's caches; quadratic work takes
/// 10,000 times as long. `count` should be about 100,000, since a hundredth has to show growth too.
/// Other processes only add to a time, so that the least of several runs counts.
void ExpectLinearTime(int count, const MeasuredWork& work);

#endif
