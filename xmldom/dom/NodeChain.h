#ifndef XMLDOM_DOM_NODECHAIN_H
#define XMLDOM_DOM_NODECHAIN_H

#include <xmldom/base/Text.h>
#include <xmldom/dom/XMLNode.h>

// Chains of nodes that are linked through m_pNextSibling: the children of a node, or its
// attributes. The ends of the chains that grew last are cached, so that appending to one of them is
// constant.

namespace xmldom {

/// The last node of the chain that starts at `node`, which must not be null. Cost: linear in the
/// chain.
inline IXMLDOMNode* LastOf(IXMLDOMNode* node) {
  while (node->m_pNextSibling != nullptr) node = node->m_pNextSibling;
  return node;
}

/// Links `node`, whose parent is set, at the end of the chain that starts at `head`, and caches
/// that end. Cost: constant when the end of the chain is cached; otherwise linear in the chain. An
/// end stays cached until the thread destroys or unlinks a node anywhere, another thread does so
/// in a region of memory of the parent or of the last two nodes, a node is linked before the last
/// one, or another chain takes its slot.
void AppendToChain(IXMLDOMNode*& head, IXMLDOMNode* node);

/// Makes `node`, whose next sibling is the present head, the new head of a chain. The end stays
/// cached.
void PrependToChain(IXMLDOMNode*& head, IXMLDOMNode* node);

/// Links `node` at the end of a chain whose last node the caller knows; `last` is null for an empty
/// chain. The cache is not used.
inline void AppendBehind(IXMLDOMNode* last, IXMLDOMNode*& head, IXMLDOMNode* node) {
  (last != nullptr ? last->m_pNextSibling : head) = node;
}

/// The first node of exactly that name in the chain, borrowed; null when there is none, and for a
/// null name. Cost: linear in the chain.
inline IXMLDOMNode* FindInChain(IXMLDOMNode* head, const char* name) {
  if (name == nullptr) return nullptr;
  for (IXMLDOMNode* node = head; node != nullptr; node = node->m_pNextSibling) {
    if (SameString(node->m_pszNodeName, name)) return node;
  }
  return nullptr;
}

}  // namespace xmldom

#endif
