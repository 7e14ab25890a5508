#ifndef XMLDOM_TOOLS_DOCUMENT_PATHSYNTAX_H
#define XMLDOM_TOOLS_DOCUMENT_PATHSYNTAX_H

#include <xmldom/xmldom_ptr.h>

#include <cstddef>
#include <string>
#include <vector>

namespace tool {

// The paths of the tool are those of the library, and more: a predicate may also ask whether
// something exists, as in [@name] or [child], or for a position, as in [2] or [last()]; and a path
// may end in /@name. All of it means what it means in XPath 1.0.

/// One predicate of a step.
struct PathPredicate {
  enum Kind {
    kComparison,  ///< `comparison` has to be true.
    kExistence,   ///< There has to be a node that `names` lead to.
    kPosition,    ///< Only the node at `position` is left.
    kLast         ///< Only the last node is left.
  };
  Kind kind;
  std::string comparison;  ///< A predicate as the library takes it, without its brackets.
  std::vector<std::string>
      names;             ///< From child to child; "*" is any, and the last may be "@name".
  std::size_t position;  ///< Counted from 1, among what the predicates before it leave.
};

/// One step: the children of this name that the predicates leave.
struct PathStep {
  std::string name;  ///< "*" stands for any, "." for the node itself, ".." for its parent.
  std::vector<PathPredicate> predicates;
};

/// What a path is for, which decides what it may hold.
enum class PathPurpose {
  kAll,    ///< Selects all nodes.
  kFirst,  ///< Selects one node; steps "." and ".." are understood.
  kField   ///< Selects one node from another one, and so begins with no '/'. "." is that node.
};

/// A path that has been taken apart.
struct SearchPath {
  std::string text;
  bool isPlain;     ///< Whether `text` can be given to the library. It never is for a field.
  bool isAnywhere;  ///< Whether it begins with "//": each element is a place to start from.
  std::vector<PathStep> steps;
  std::string attribute;  ///< The name at its end, without the '@'; empty when it has none.
};

/// Takes a path apart. Result: the first problem of the path; none when it can be searched for.
/// Out: `path` holds it then. Cost: linear in the path.
xmldom::PathProblem ReadPath(const std::string& text, PathPurpose purpose, SearchPath& path);

}  // namespace tool

#endif
