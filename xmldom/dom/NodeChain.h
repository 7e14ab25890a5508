#ifndef XMLDOM_DOM_NODECHAIN_H
#define XMLDOM_DOM_NODECHAIN_H

#include <xmldom/base/Text.h>
#include <xmldom/dom/NodeCache.h>
#include <xmldom/dom/XMLNode.h>

#include <cstddef>

// Chains of nodes that are linked through m_pNextSibling: the children of a node, or its
// attributes. The ends of some long chains are cached, so that appending to one of them is
// constant.

namespace xmldom {

/// A walk through this many nodes is as quick as a look into the cache, so shorter chains are not
/// cached.
const std::size_t kFewNodes = 16;

/// The last node of the chain that starts at `head`, which must not be null. `parent` is the parent
/// of the node that heads the chain, or of the one that it follows. The end of a long chain is
/// cached, unless the chain has nodes of another parent. Cost: constant when the end of the chain
/// is cached; otherwise linear in the chain. An end stays cached until another thread
/// destroys or unlinks a node in a region of memory of the parent or of the last three nodes,
/// another chain takes its slot, or the thread forgets everything (NodeCache.h); an end of siblings
/// or of attributes also until the thread unlinks a node.
IXMLDOMNode* LastOfChain(IXMLDOMNode*& head, const IXMLDOMNode* parent);

/// The node before `node`, which has a parent, when it is the last child and that is cached; else
/// null.
IXMLDOMNode* BeforeLast(const IXMLDOMNode* node);

/// Links `node`, whose parent is set, at the end of the chain that starts at `head`. Cost: as for
/// LastOfChain.
void AppendToChain(IXMLDOMNode*& head, IXMLDOMNode* node);

/// Lets `before`, or `parent` itself when that is null, link to `node` as the next or the first of
/// its children. The end stays cached.
void LinkBehind(IXMLDOMNode* before, IXMLDOMNode* parent, IXMLDOMNode* node);

/// Takes `node` out of the children of its parent, where it stands behind `before`, or first when
/// that is null, and tells other threads of the change (NoteChange). It keeps its owner, and loses
/// its parent and its next sibling. The end of the chain stays cached; the ends of chains of
/// siblings and of attributes are forgotten.
void Unlink(IXMLDOMNode* before, IXMLDOMNode* node);

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
