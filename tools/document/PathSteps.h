#ifndef XMLDOM_TOOLS_DOCUMENT_PATHSTEPS_H
#define XMLDOM_TOOLS_DOCUMENT_PATHSTEPS_H

#include <string>
#include <vector>

class IXMLDOMNode;

namespace tool {

class PathComparisons;
struct PathStep;

/// Appends what a step selects from one node: children that are elements, in document order. They
/// are borrowed from the tree. Steps "." and ".." select nothing. `comparisons` are those of the
/// search that takes the step.
/// Cost: linear in the children of the node, and in what the predicates look at.
void TakeStep(const PathStep& step, IXMLDOMNode* from, PathComparisons& comparisons,
              std::vector<IXMLDOMNode*>& selected);

/// The attribute of that name; "*" is any. Result: borrowed; null when there is none.
IXMLDOMNode* FindAttribute(const IXMLDOMNode* element, const std::string& name);

}  // namespace tool

#endif
