#ifndef XMLDOM_DOM_NODEOWNERS_H
#define XMLDOM_DOM_NODEOWNERS_H

#include <xmldom/dom/XMLNode.h>

// The owner documents of whole subtrees, and what is known about them without visiting the nodes.

namespace xmldom {

/// How many calls may have left neighbours with different owners; 0 while no call has.
extern unsigned long long g_uOwnerGeneration;

/// Gives `node`, its following siblings and all below them one owner, attributes aside.
/// Cost: linear in the nodes visited; nothing is allocated.
void SetOwners(IXMLDOMNode* node, IXMLDOMDocument2* owner);

/// To be called before `node` gets an owner that its neighbours need not have. A node without
/// parent has no neighbours that matter before the first such call.
inline void NoteOwnersDiffer(const IXMLDOMNode* node) {
  if (node->m_pParent != nullptr || g_uOwnerGeneration != 0) ++g_uOwnerGeneration;
}

/// Links `node`, which has no following sibling, before `next`, and gives it, all that then follow
/// and all below them one owner, attributes aside. A null `next` is the end of the chain.
/// Cost: linear in the subtree of `node`; linear also in all that follow when they are not known to
/// have the owner.
void LinkBefore(IXMLDOMNode* node, IXMLDOMNode* next, IXMLDOMDocument2* owner);

}  // namespace xmldom

#endif
