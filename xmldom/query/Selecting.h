#ifndef XMLDOM_QUERY_SELECTING_H
#define XMLDOM_QUERY_SELECTING_H

#include <xmldom/base/Export.h>
#include <xmldom/dom/NodeArgument.h>
#include <xmldom/dom/NodeRanges.h>
#include <xmldom/ptr/XMLPtr.h>

namespace xmldom {

// The searches of IXMLDOMNode, with owners as results, so that nothing has to be released. They
// begin at `node`, or at its owner document when the path begins with '/'. A path that selects
// nothing is no error; CheckPath (PathCheck.h) tells of a path whether it can select anything.
// Bad input: a null node selects nothing, and so does a path that begins with '/' from a node
// without owner document. Effects: those of IXMLDOMNode::MatchQuery for each node that is tested.

/// Selects one node: `if (XMLPtr<IXMLDOMNode> port = xmldom::SelectOne(document, "//port"))`.
/// Result: that of IXMLDOMNode::SelectSingleNode, in an owner; empty when there is none. A null
/// path counts as empty, and selects `node`.
XMLDOM_NODISCARD inline XMLPtr<IXMLDOMNode> SelectOne(NodeArgument node, const char* path) {
  if (!node) return nullptr;
  return xmldom::Adopt(node->SelectSingleNode(path == nullptr ? "" : path));
}

/// Selects all nodes: `for (XMLPtr<IXMLDOMNode> port : xmldom::Select(document, "//port"))`.
/// Result: a range over the nodes of IXMLDOMNode::SelectNodes. It holds a reference to each of
/// them, so that the loop may change the tree as it likes.
XMLDOM_NODISCARD inline XMLNodes Select(NodeArgument node, const char* path) {
  return xmldom::Selected(node.Get(), path);
}

}  // namespace xmldom

#endif
