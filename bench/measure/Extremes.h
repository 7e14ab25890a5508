#ifndef XMLDOM_BENCH_MEASURE_EXTREMES_H
#define XMLDOM_BENCH_MEASURE_EXTREMES_H

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace bench {

/// Gets the name of each thing that was done with a tree, and the processor time it took.
typedef std::function<void(const std::string& step, double seconds)> StepDone;

/// A tree of xmldom that other trees cannot stand for.
struct Extreme {
  std::string name;
  std::vector<std::size_t> sizes;
  /// Does everything with a tree of that size, and checks what comes of it; runs on a small stack.
  /// Effects: std::runtime_error when something else came of it.
  void (*run)(std::size_t nodes, const StepDone& done);
};

const std::vector<Extreme>& AllExtremes();

}  // namespace bench

#endif
