#ifndef XMLDOM_BENCH_RESULTS_STATISTICS_H
#define XMLDOM_BENCH_RESULTS_STATISTICS_H

#include <vector>

namespace bench {

/// The middle value; there must be one.
double Median(std::vector<double> values);

/// There must be a value, and all must be above 0.
double GeometricMean(const std::vector<double>& values);

/// The median of the quotients of the same turn: what disturbs a turn disturbs both.
double MedianRatio(const std::vector<double>& values, const std::vector<double>& base);

}  // namespace bench

#endif
