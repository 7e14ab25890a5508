#ifndef XMLDOM_TOOLS_COMMAND_QUERY_H
#define XMLDOM_TOOLS_COMMAND_QUERY_H

#include <cstddef>
#include <functional>
#include <string>

class IXMLDOMDocument2;
class IXMLDOMNode;

namespace tool {

class Arguments;

/// Checks a path. `single`: it is for the search of a single node.
/// Effects: throws a UsageError that shows what is wrong with it.
void CheckPath(const std::string& path, bool single);

/// The path that the user gives to a command, and whether all nodes that it selects count or only
/// the first.
class Query {
 public:
  enum Kind {
    kAll,   ///< All nodes, or only the first with the option "--first".
    kFirst  ///< Always the first node alone; there is no such option.
  };

  explicit Query(Kind kind) : m_kind(kind), m_first(kind == kFirst) {}

  /// Declares the path as the next operand, and the options of the search.
  void DeclareArguments(Arguments& arguments);

  /// Effects: throws a UsageError when something is wrong with the path.
  void Check() const;

  const std::string& Path() const { return m_path; }

  /// Calls `visit` with each selected node, in the order of the search. Result: how many there are.
  std::size_t Search(IXMLDOMDocument2* document,
                     const std::function<void(IXMLDOMNode*)>& visit) const;

 private:
  const Kind m_kind;
  std::string m_path;
  bool m_first;
};

}  // namespace tool

#endif
