#ifndef XMLDOM_TOOLS_DOCUMENT_DIFFERENCES_H
#define XMLDOM_TOOLS_DOCUMENT_DIFFERENCES_H

#include <string>
#include <vector>

class IXMLDOMDocument2;
class IXMLDOMNode;

namespace tool {

/// One side of a difference.
struct DifferentNode {
  /// The node that differs: an element, a text or an attribute. Where there is none, the element
  /// that lacks it. Borrowed from its tree.
  const IXMLDOMNode* node;
  /// What it is and holds, as in "text 'x'", or what is missing, as in "no text".
  std::string description;
};

/// What one document has at a place, and the other has not.
struct Difference {
  DifferentNode first;
  DifferentNode second;
};

/// Compares two documents: the names, attributes and texts of all elements, in their order. They
/// are equal where CompareXMLNodes finds no difference and the root elements have the same name.
///
/// Result: the differences in the order of the elements, the first alone unless `all`. Behind a
/// child or an attribute that only one side has, the comparison goes on with the next one if that
/// is there on the other side; below a pair that differs in name, nothing is compared. Bad input:
/// both documents have a root element. Cost: linear in both trees, and in the texts that are
/// described.
std::vector<Difference> FindDifferences(const IXMLDOMDocument2& first,
                                        const IXMLDOMDocument2& second, bool all);

}  // namespace tool

#endif
