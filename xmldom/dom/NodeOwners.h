#ifndef XMLDOM_DOM_NODEOWNERS_H
#define XMLDOM_DOM_NODEOWNERS_H

#include <xmldom/dom/XMLNode.h>

// Owner documents of whole subtrees, and what is known about them without looking.

namespace xmldom {

/// How often a call may have left siblings with different owners; 0 while none has.
extern unsigned long long g_uOwnerGeneration;

/// Gives `node`, its following siblings and all below them one owner, attributes aside.
/// Cost: linear in the nodes visited; nothing is allocated.
void SetOwners(IXMLDOMNode* node, IXMLDOMDocument2* owner);

/// To be called when a call gives a node another owner than its neighbours may have.
inline void NoteOwnersDiffer(const IXMLDOMNode* node) {
  if (node->m_pParent != nullptr || g_uOwnerGeneration != 0) ++g_uOwnerGeneration;
}

/// Links `node`, which has no following sibling, before `next`, and gives it, all that then follow
/// and all below them one owner, attributes aside. A null `next` is the end of the chain.
/// Cost: linear in the subtree of `node`, as long as all that follow are known to have the owner;
/// else linear in all that follow as well.
void LinkBefore(IXMLDOMNode* node, IXMLDOMNode* next, IXMLDOMDocument2* owner);

}  // namespace xmldom

#endif
