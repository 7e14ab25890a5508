#ifndef XMLDOM_DOM_NODECONTENT_H
#define XMLDOM_DOM_NODECONTENT_H

#include <xmldom/dom/XMLDocument.h>

namespace xmldom {

/// Whether a node stands for the first of its children when it is read: one that is its own owner.
inline bool IsOwnDocument(const IXMLDOMNode* node) {
  return static_cast<const void*>(node->m_pOwnerDocument) == static_cast<const void*>(node);
}

/// What IXMLDOMNode::GetStrValue gives.
inline const char* StoredValueOf(const IXMLDOMNode* node) {
  if (node->m_eNodeType == NODE_ELEMENT && node->m_pFirstChild != nullptr &&
      node->m_pFirstChild->m_eNodeType == NODE_TEXT) {
    return node->m_pFirstChild->m_pszValue;
  }
  return node->m_pszValue;
}

/// What reading a node reads: the node itself, or for a document its first child; borrowed, null
/// for an empty document.
inline IXMLDOMNode* ContentOf(const IXMLDOMNode* node) {
  while (node != nullptr && IsOwnDocument(node)) node = node->m_pFirstChild;
  return const_cast<IXMLDOMNode*>(node);
}

}  // namespace xmldom

#endif
