#ifndef XMLDOM_TESTS_HARNESS_LINEARTIME_H
#define XMLDOM_TESTS_HARNESS_LINEARTIME_H

#include <functional>

/// Does its work on `count` pieces. Result: the processor time of what is measured, in seconds;
/// what it prepares and checks need not be a part of that.
typedef std::function<double(int count)> MeasuredWork;

/// The case fails when the processor time of `work` grows faster than its size: when `count` pieces
/// take more than 200 times as long as a 32nd of them. Linear work takes 32 times as long, and some
/// times that when caches no longer hold it; quadratic work takes 1024 times as long.
/// Other processes only add to a time, so that the least of several runs counts.
void ExpectLinearTime(int count, const MeasuredWork& work);

#endif
