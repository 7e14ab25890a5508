#ifndef XMLDOM_DOM_NODEOWNERS_H
#define XMLDOM_DOM_NODEOWNERS_H

#include <xmldom/dom/XMLNode.h>

// The owner documents of whole subtrees, and what is known about them without visiting the nodes.

namespace xmldom {

/// Changes with every call that may have left neighbours with different owners below a node that
/// has an owner; 0 while no call has. All threads share it, because what such a call leaves behind
/// passes to another thread with the document.
extern unsigned long g_uOwnerGeneration;

XMLDOM_ALWAYS_INLINE inline unsigned long OwnerGeneration() {
  return __atomic_load_n(&g_uOwnerGeneration, __ATOMIC_RELAXED);
}

/// Whether `node`, a child of a node that has the owner `owner`, its following siblings and all
/// below them have that owner, because no call has left neighbours with different ones. They may
/// also have it when this is false.
inline bool IsSurelyOwned(const IXMLDOMNode* node, const IXMLDOMDocument2* owner) {
  // Below a node that has lost its owner there may be nodes that still have one.
  return owner != nullptr && node->m_pOwnerDocument == owner && OwnerGeneration() == 0;
}

/// Gives `node`, its following siblings and all below them one owner, attributes aside. What is
/// cached of owners no longer holds when this changes the owner of a node with more than one
/// reference, which may be in a second chain.
/// Cost: linear in the nodes visited; nothing is allocated.
void SetOwners(IXMLDOMNode* node, IXMLDOMDocument2* owner);

/// Makes what is cached of owners invalid. With `mayDiffer`, neighbours may have different owners
/// from now on, or a node may come to be in two chains; insertions then visit the siblings that
/// follow. Without, a node that may be in two chains gets another owner; this does nothing while no
/// call has been made with `mayDiffer`.
void NoteOwnersChange(bool mayDiffer);

/// Links `node`, which has no following sibling, before `next`, and gives it, all that then follow
/// and all below them one owner, attributes aside. A null `next` is the end of the chain.
/// Cost: linear in the subtree of `node`; linear also in all that follow when they are not known to
/// have the owner.
void LinkBefore(IXMLDOMNode* node, IXMLDOMNode* next, IXMLDOMDocument2* owner);

/// Notes that a node which has just been linked, all that follow and all below them have one owner,
/// attributes aside, so that the next insertion before the same siblings need not visit them.
void NoteOwned(const IXMLDOMNode* node);

}  // namespace xmldom

#endif
