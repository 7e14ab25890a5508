#ifndef XMLDOM_TOOLS_DOCUMENT_PATHCHECK_H
#define XMLDOM_TOOLS_DOCUMENT_PATHCHECK_H

#include <cstddef>
#include <string>

namespace tool {

/// A problem of a path, and the byte where it is.
struct PathProblem {
  std::size_t offset;
  std::string reason;  ///< Empty when nothing is wrong.
};

/// Checks a path by the rules with which the library reads it. The library accepts every text: it
/// selects nothing for one that makes no sense, or ignores a part of it. Here that is a problem, so
/// that the user gets a message instead of an empty result.
/// `single`: the path is for the search of a single node, which has the steps "." and "..".
/// Result: the first problem; its reason is empty when there is none.
PathProblem FindPathProblem(const std::string& path, bool single);

}  // namespace tool

#endif
