#ifndef XMLDOM_DOM_TREEWALK_H
#define XMLDOM_DOM_TREEWALK_H

#include <xmldom/base/Stack.h>
#include <xmldom/dom/XMLNode.h>

#include <cstddef>

// The one way to walk a tree. Neither the depth nor the breadth of a tree touches the call stack:
// the way back up is kept in a trail, of which there are two kinds.

namespace xmldom {

/// A trail in memory of its own. It does not rely on parent links, which an application can leave
/// null or stale.
typedef Stack<IXMLDOMNode*, 32> HeapTrail;

/// A trail in the owner links of the nodes walked, for the walks that set those links anyway: they
/// run while nodes are destroyed, where nothing may be allocated. A node's link is free to be set
/// once the walk has come back to it.
class OwnerLinkTrail {
 public:
  OwnerLinkTrail() : m_top(nullptr) {}

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

/// Walks the chain of siblings that starts at `head`, and what the visitor asks for below, in
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
/// `depth` is 0 for the chain of `head`. Nothing may be unlinked during the walk.
/// Effects: what the visitor throws; std::bad_alloc when memory for a HeapTrail is out.
template <class Trail, class Visitor>
void WalkChain(IXMLDOMNode* head, Visitor& visitor) {
  Trail trail;
  std::size_t depth = 0;
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

/// A visitor that has nothing to do on the way back and never ends the walk early.
struct PreOrderVisitor {
  void Leave(IXMLDOMNode*, std::size_t) {}
  bool IsDone() const { return false; }
};

}  // namespace xmldom

#endif
