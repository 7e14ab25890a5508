#ifndef XMLDOM_BENCH_MEASURE_CHILD_H
#define XMLDOM_BENCH_MEASURE_CHILD_H

#include <string>
#include <vector>

namespace bench {

struct ChildOutcome {
  bool ended;          // with status 0
  std::string output;  // what it wrote to its standard output
};

/// Runs this program again with other arguments and waits for its end. `environment` is NAME=VALUE
/// to be set for it, or empty. Effects: std::runtime_error when it cannot be started.
ChildOutcome RunChild(const std::vector<std::string>& arguments, const std::string& environment);

}  // namespace bench

#endif
