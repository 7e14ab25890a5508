#ifndef XMLDOM_DOM_TREEWALK_H
#define XMLDOM_DOM_TREEWALK_H

#include <xmldom/base/Stack.h>
#include <xmldom/dom/XMLNode.h>

#include <cstddef>

// Walking trees without recursion: neither the depth nor the breadth of a tree touches the call
// stack. The nodes above the current one are kept in a trail, of which there are two kinds.
// Everything that reads a tree is a visitor of these walks. Two loops stand for themselves, because
// they do not visit each node once: SingleNodeSearch::Run tests nodes repeatedly, and the
// destructor of a node takes the links apart on its way.

namespace xmldom {

/// A trail in memory beside the tree. Parent links are not used, because an application can leave
/// them null or dangling.
typedef Stack<IXMLDOMNode*, 32> SideTrail;

/// A trail in the owner links of the nodes themselves (link inversion), for walks that set the
/// owner of every node they visit: these run while nodes are destroyed, where nothing may be
/// allocated. Invariant: the owner link of a node on the trail holds the node above it, until the
/// walk has come back to the node; the visitor's Leave then sets the owner.
class InPlaceTrail {
 public:
  InPlaceTrail() : m_top(nullptr) {}

  void Push(IXMLDOMNode* node) {
    node->m_pOwnerDocument = reinterpret_cast<IXMLDOMDocument2*>(m_top);
    m_top = node;
  }

  IXMLDOMNode* Pop() {
    IXMLDOMNode* node = m_top;
    m_top = reinterpret_cast<IXMLDOMNode*>(node->m_pOwnerDocument);
    return node;
  }

  bool IsEmpty() const { return m_top == nullptr; }

 private:
  IXMLDOMNode* m_top;
};

/// Walks the chain of siblings that starts at `head`, and what the visitor asks for below them, in
/// document order. The visitor has
///
///   IXMLDOMNode* Enter(IXMLDOMNode* node, std::size_t depth)
///     called once for each node, before what hangs below it. Returns the head of the chain to walk
///     below the node, or null for none.
///   void Leave(IXMLDOMNode* node, std::size_t depth)
///     called after the chain below the node, when Enter returned one.
///   bool IsDone() const
///     asked after each call of Enter and of Leave; true ends the walk at once.
///
/// `depth` is that of the chain of `head`, and one more for each level below it. Nothing may be
/// unlinked during the walk.
/// Effects: what the visitor throws; std::bad_alloc when memory for a SideTrail is out.
template <class Trail, class Visitor>
void WalkChain(IXMLDOMNode* head, Visitor& visitor, std::size_t depth = 0) {
  Trail trail;
  IXMLDOMNode* node = head;
  for (;;) {
    if (node != nullptr) {
      IXMLDOMNode* below = visitor.Enter(node, depth);
      if (visitor.IsDone()) return;
      if (below != nullptr) {
        trail.Push(node);
        ++depth;
        node = below;
        continue;
      }
    } else {
      if (trail.IsEmpty()) return;
      node = trail.Pop();
      --depth;
      visitor.Leave(node, depth);
      if (visitor.IsDone()) return;
    }
    node = node->m_pNextSibling;
  }
}

/// Walks one node, which is at depth 0 and whose siblings are left alone, and what the visitor asks
/// for below it, as WalkChain does.
template <class Trail, class Visitor>
void WalkTree(IXMLDOMNode* top, Visitor& visitor) {
  IXMLDOMNode* below = visitor.Enter(top, 0);
  if (below == nullptr || visitor.IsDone()) return;
  WalkChain<Trail>(below, visitor, 1);
  if (!visitor.IsDone()) visitor.Leave(top, 0);
}

/// A visitor that has nothing to do on the way back and never ends the walk early.
struct PreOrderVisitor {
  void Leave(IXMLDOMNode*, std::size_t) {}
  bool IsDone() const { return false; }
};

}  // namespace xmldom

#endif
