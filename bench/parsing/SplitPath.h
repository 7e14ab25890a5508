#ifndef XMLDOM_BENCH_PARSING_SPLITPATH_H
#define XMLDOM_BENCH_PARSING_SPLITPATH_H

#include <string>
#include <vector>

namespace bench {

/// A path of one of the forms that are measured, for the walks written by hand: "//name",
/// "//name[@attribute='value']" and "/a/b/c".
struct SplitPath {
  explicit SplitPath(const char* path);

  bool isDescendant;
  std::vector<std::string> names;  // of the steps
  std::string attribute;           // empty when the last step has no predicate
  std::string value;
};

}  // namespace bench

#endif
