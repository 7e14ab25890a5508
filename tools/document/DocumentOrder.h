#ifndef XMLDOM_TOOLS_DOCUMENT_DOCUMENTORDER_H
#define XMLDOM_TOOLS_DOCUMENT_DOCUMENTORDER_H

#include <xmldom/dom/XMLNode.h>

namespace tool {

/// The first element in the chain of siblings that begins at `node`, which may be null. Result:
/// null when there is none.
inline IXMLDOMNode* ElementFrom(IXMLDOMNode* node) {
  while (node != nullptr && node->m_eNodeType != NODE_ELEMENT) node = node->m_pNextSibling;
  return node;
}

/// The element that follows `node` in document order, the order of the start tags. From a document
/// on, this goes through all of its elements; the stack does not grow with their depth.
/// Result: null behind the last element of the tree.
/// Cost: linear in the tree for all of its elements together.
inline IXMLDOMNode* NextElement(IXMLDOMNode* node) {
  if (IXMLDOMNode* below = ElementFrom(node->m_pFirstChild)) return below;
  while (node != nullptr && node->m_eNodeType == NODE_ELEMENT) {
    if (IXMLDOMNode* next = ElementFrom(node->m_pNextSibling)) return next;
    node = node->m_pParent;
  }
  return nullptr;
}

/// The node, element or text, that follows `node` in document order below `root`, which may be
/// `node` itself; the stack does not grow with the depth. Result: null behind the last one.
/// Cost: linear in the tree for all of its nodes together.
template <class Node>
Node* NextNode(Node* node, const IXMLDOMNode* root) {
  if (node->m_pFirstChild != nullptr) return node->m_pFirstChild;
  while (node != root && node->m_pNextSibling == nullptr) node = node->m_pParent;
  return node == root ? nullptr : node->m_pNextSibling;
}

}  // namespace tool

#endif
