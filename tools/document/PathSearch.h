#ifndef XMLDOM_TOOLS_DOCUMENT_PATHSEARCH_H
#define XMLDOM_TOOLS_DOCUMENT_PATHSEARCH_H

#include <tools/document/PathComparisons.h>

#include <unordered_map>
#include <vector>

class IXMLDOMNode;

namespace tool {

struct SearchPath;

/// Selects all nodes, elements or attributes, from `start`: a document, or any other node for a
/// path without '/' in front. Behind "//" the places to start from are the document and then each
/// element in document order; what is found from one of them is in document order. This is the
/// order of the library, whose result this is for a path that the library understands. Result: the
/// nodes, borrowed from the tree; none twice. Cost: no element is tested more often than the path
/// has steps, and each test looks at the children and attributes that the predicates name, as it
/// does in the library, which reads each text once, however many elements around it are tested.
std::vector<IXMLDOMNode*> SelectAll(const SearchPath& path, IXMLDOMNode* start);

/// Selects one node: the first that a depth-first search finds. Behind "//" it follows a match of
/// the first step to the end of the path before it goes on, as the single search of the library
/// does. Result: the node, borrowed from the tree; null when there is none. Cost: that of
/// SelectAll.
IXMLDOMNode* SelectFirst(const SearchPath& path, IXMLDOMNode* start);

/// Selects all nodes, or with `all` unset the first one, if there is any.
std::vector<IXMLDOMNode*> Select(const SearchPath& path, IXMLDOMNode* start, bool all);

/// Does what SelectFirst does for a field, from any number of nodes of one tree, which must not be
/// changed as long as this lives.
class FieldSearch {
 public:
  /// `field` is borrowed.
  explicit FieldSearch(const SearchPath& field)
      : m_field(field), m_comparisons(PathComparisons::kAnyDepth) {}

  /// Cost: that of SelectFirst, but where the field begins with ".." only once for all nodes from
  /// which that leads to the same place. In addition, once for each comparison of the field that is
  /// come to, that of a search for it in the whole document.
  IXMLDOMNode* From(IXMLDOMNode* node);

 private:
  const SearchPath& m_field;
  PathComparisons m_comparisons;
  std::unordered_map<const IXMLDOMNode*, IXMLDOMNode*> m_found;  // by the place where ".." leads
};

}  // namespace tool

#endif
