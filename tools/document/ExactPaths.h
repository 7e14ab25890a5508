#ifndef XMLDOM_TOOLS_DOCUMENT_EXACTPATHS_H
#define XMLDOM_TOOLS_DOCUMENT_EXACTPATHS_H

#include <cstddef>
#include <string>
#include <unordered_map>
#include <unordered_set>

class IXMLDOMNode;

namespace tool {

/// Makes paths that select one node each: the names from the root element down, with a position
/// behind the name of each element that has siblings of its name, as in /config/interface[2]/@name.
/// The tree must not be changed as long as this lives.
class ExactPaths {
 public:
  /// The path of an element, or of an attribute. Cost: linear in the depth of the node. In
  /// addition, once for each element above any of the nodes that are asked for, linear in its
  /// children, and for each of these the logarithm of the number of their names, in comparisons.
  std::string PathTo(const IXMLDOMNode* node);

 private:
  void NumberChildren(const IXMLDOMNode* parent);

  std::unordered_set<const IXMLDOMNode*> m_numbered;  // the nodes whose children are in the other
  // Of elements with siblings of their name.
  std::unordered_map<const IXMLDOMNode*, std::size_t> m_positions;
};

}  // namespace tool

#endif
