#include "results/Statistics.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <stdexcept>

namespace bench {

double Median(std::vector<double> values) {
  if (values.empty()) throw std::logic_error("a median of nothing");
  const std::size_t middle = values.size() / 2;
  std::sort(values.begin(), values.end());
  if (values.size() % 2 == 1) return values[middle];
  return (values[middle - 1] + values[middle]) / 2;
}

double GeometricMean(const std::vector<double>& values) {
  if (values.empty()) throw std::logic_error("a mean of nothing");
  double sum = 0;
  for (double value : values) sum += std::log(value);
  return std::exp(sum / static_cast<double>(values.size()));
}

double MedianRatio(const std::vector<double>& values, const std::vector<double>& base) {
  std::vector<double> ratios;
  for (std::size_t i = 0; i < values.size() && i < base.size(); ++i) {
    ratios.push_back(values[i] / base[i]);
  }
  return Median(ratios);
}

}  // namespace bench
