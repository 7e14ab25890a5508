#ifndef XMLDOM_DOM_NODECHAIN_H
#define XMLDOM_DOM_NODECHAIN_H

#include <xmldom/dom/XMLNode.h>
#include <xmldom/support/HeapString.h>

// Chains of nodes that are linked through m_pNextSibling: children, and attributes.

namespace xmldom {

/// The last node of the chain that starts at `node`, which must not be null.
inline IXMLDOMNode* LastOf(IXMLDOMNode* node) {
  while (node->m_pNextSibling != nullptr) node = node->m_pNextSibling;
  return node;
}

/// Links `node` at the end of the chain that starts at `head`. `hint` is a node of the chain to
/// start from, or null. Cost: linear in the nodes between the hint and the end.
inline void AppendToChain(IXMLDOMNode*& head, IXMLDOMNode* node, IXMLDOMNode* hint = nullptr) {
  if (head == nullptr) {
    head = node;
  } else {
    LastOf(hint != nullptr ? hint : head)->m_pNextSibling = node;
  }
}

/// The first node of exactly that name in the chain, borrowed, or null.
inline IXMLDOMNode* FindInChain(IXMLDOMNode* head, const char* name) {
  if (name == nullptr) return nullptr;
  for (IXMLDOMNode* node = head; node != nullptr; node = node->m_pNextSibling) {
    if (SameString(node->m_pszNodeName, name)) return node;
  }
  return nullptr;
}

}  // namespace xmldom

#endif
