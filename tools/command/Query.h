#ifndef XMLDOM_TOOLS_COMMAND_QUERY_H
#define XMLDOM_TOOLS_COMMAND_QUERY_H

#include <cstddef>
#include <functional>
#include <string>

class IXMLDOMDocument2;
class IXMLDOMNode;

namespace tool {

class Arguments;

/// Effects: throws a UsageError that shows what is wrong with a path. `single`: the path is for the
/// search of one node.
void CheckPath(const std::string& path, bool single);

/// The path that a command is given, and how it is to be searched for.
class Query {
 public:
  enum Kind {
    kAll,   ///< Selects all nodes, or only the first when the user says so.
    kFirst  ///< Selects the first node.
  };

  explicit Query(Kind kind) : m_kind(kind), m_first(kind == kFirst) {}

  /// Declares the path as the next operand, and the options of the search.
  void DeclareArguments(Arguments& arguments);

  /// Effects: throws a UsageError that shows what is wrong with the path.
  void Check() const;

  const std::string& Path() const { return m_path; }

  /// Hands every selected node to `visit`, in the order of the search. Result: how many they were.
  std::size_t Search(IXMLDOMDocument2* document,
                     const std::function<void(IXMLDOMNode*)>& visit) const;

 private:
  const Kind m_kind;
  std::string m_path;
  bool m_first;
};

}  // namespace tool

#endif
