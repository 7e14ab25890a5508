#ifndef XMLDOM_DOM_NODEOWNERS_H
#define XMLDOM_DOM_NODEOWNERS_H

#include <xmldom/dom/XMLNode.h>

// The owner documents of whole subtrees, and what is known about them without visiting the nodes.

namespace xmldom {

/// Changes with every call that may have left neighbours with different owners; 0 while no call
/// has. All threads share it, because what such a call leaves behind passes to another thread with
/// the document.
extern unsigned long g_uOwnerGeneration;

XMLDOM_ALWAYS_INLINE inline unsigned long OwnerGeneration() {
  return __atomic_load_n(&g_uOwnerGeneration, __ATOMIC_RELAXED);
}

/// Gives `node`, its following siblings and all below them one owner, attributes aside.
/// Cost: linear in the nodes visited; nothing is allocated.
void SetOwners(IXMLDOMNode* node, IXMLDOMDocument2* owner);

/// To be called before `node` gets an owner that its neighbours need not have. Before the
/// first such call, those of a node without parent are taken not to matter.
void NoteOwnersDiffer(const IXMLDOMNode* node);

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
