#ifndef XMLDOM_TOOLS_QUERY_H
#define XMLDOM_TOOLS_QUERY_H

#include <cstddef>
#include <functional>
#include <string>

class IXMLDOMDocument2;
class IXMLDOMNode;

namespace CLI {
class App;
}

namespace tool {

/// The path that a command is given, and how it is to be searched for.
class Query {
 public:
  /// Describes the path as the next operand, and the options of the search.
  void Describe(CLI::App& arguments);

  /// Effects: throws a UsageError that shows what is wrong with the path.
  void Check() const;

  /// Hands every selected node to `visit`, in the order of the search. Result: how many they were.
  std::size_t Search(IXMLDOMDocument2* document,
                     const std::function<void(IXMLDOMNode*)>& visit) const;

 private:
  std::string m_path;
  bool m_first = false;
};

}  // namespace tool

#endif
