#ifndef XMLDOM_TOOLS_DOCUMENT_PATHCHECK_H
#define XMLDOM_TOOLS_DOCUMENT_PATHCHECK_H

#include <cstddef>
#include <string>

namespace tool {

/// What is wrong with a path, and at which byte.
struct PathProblem {
  std::size_t offset;
  std::string reason;  ///< Empty when nothing is wrong.
};

/// Looks a path over as the library will read it. The library takes any text and just selects
/// nothing, or ignores a part; here whatever cannot mean what it says is a problem.
/// `single`: the path is for the search of one node, which understands "." and "..".
/// Result: the first problem.
PathProblem FindPathProblem(const std::string& path, bool single);

}  // namespace tool

#endif
