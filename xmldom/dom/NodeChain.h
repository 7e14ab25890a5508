#ifndef XMLDOM_DOM_NODECHAIN_H
#define XMLDOM_DOM_NODECHAIN_H

#include <xmldom/base/Text.h>
#include <xmldom/dom/XMLNode.h>

// Chains of nodes that are linked through m_pNextSibling: children, and attributes.

namespace xmldom {

/// How often chain ends had to be forgotten.
extern unsigned long long g_uChainGeneration;

/// The last node of the chain that starts at `node`, which must not be null.
inline IXMLDOMNode* LastOf(IXMLDOMNode* node) {
  while (node->m_pNextSibling != nullptr) node = node->m_pNextSibling;
  return node;
}

/// Links `node`, whose parent is set, at the end of the chain that starts at `head`.
/// Cost: constant for a chain that was appended to recently, when since then no node has been
/// destroyed or taken out of any tree, and nothing was put before the last; otherwise linear in the
/// chain.
void AppendToChain(IXMLDOMNode*& head, IXMLDOMNode* node);

/// Makes `node`, which links to what the chain starts with, its new head. The end stays known.
void PrependToChain(IXMLDOMNode*& head, IXMLDOMNode* node);

/// Links `node` at the end of a chain whose last node is known; null for an empty one.
inline void AppendBehind(IXMLDOMNode* last, IXMLDOMNode*& head, IXMLDOMNode* node) {
  (last != nullptr ? last->m_pNextSibling : head) = node;
}

/// Makes AppendToChain forget where chains end: a node is going, or leaves its chain.
inline void InvalidateChainEnds() { ++g_uChainGeneration; }

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
