#ifndef XMLDOM_TOOLS_COMMAND_QUERY_H
#define XMLDOM_TOOLS_COMMAND_QUERY_H

#include <tools/document/PathSyntax.h>

#include <string>
#include <vector>

class IXMLDOMDocument2;
class IXMLDOMNode;

namespace tool {

class Arguments;

/// The path that the user gives to a command, and whether all nodes that it selects count or only
/// the first.
class Query {
 public:
  enum Kind {
    kAll,          ///< All nodes, or only the first with the option "--first".
    kFirstElement  ///< Always the first element alone; there is no such option.
  };

  explicit Query(Kind kind) : m_kind(kind), m_first(kind == kFirstElement) {}

  /// Declares the path as the next operand, and the options of the search.
  void DeclareArguments(Arguments& arguments);

  /// Effects: throws a UsageError when something is wrong with the path.
  void Check() const { Path(); }

  /// Whether the path ends in an attribute. Otherwise it selects elements.
  bool SelectsAttributes() const { return !Path().attribute.empty(); }

  /// Result: the selected nodes, elements or attributes, in the order of the search. They are
  /// borrowed from the tree.
  std::vector<IXMLDOMNode*> Select(IXMLDOMDocument2* document) const;

 private:
  SearchPath Path() const;

  const Kind m_kind;
  std::string m_path;
  bool m_first;
};

}  // namespace tool

#endif
