#ifndef XMLDOM_DOM_TREEWALK_H
#define XMLDOM_DOM_TREEWALK_H

#include <xmldom/base/Stack.h>
#include <xmldom/dom/XMLNode.h>

#include <cstddef>

// Walking trees without recursion, so that neither the depth nor the breadth of a tree uses the
// call stack. During a walk, the nodes above the current one are kept in a trail, of which there
// are two kinds.
//
// These walks are for everything that visits each node of a tree once. Other loops are not such
// walks: SingleNodeSearch::Run tests nodes repeatedly, the destructor of a node takes the links
// apart while it follows them, and TextCollector, TextMemory and WalkEverywhere keep more of each
// open chain than the node that they are below.

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

/// Walks the chain of siblings that starts at `head`, and the chains that the visitor asks for
/// below them, in document order. The visitor has these members:
///
///   IXMLDOMNode* Enter(IXMLDOMNode* node, std::size_t depth)
///     is called once for each node, before the nodes below it. It returns the head of the chain to
///     walk below the node, or null for none.
///   void Leave(IXMLDOMNode* node, std::size_t depth)
///     is called after the chain below the node has been walked, when Enter returned one.
///   bool IsDone() const
///     is asked after each call of Enter and of Leave; true ends the walk at once.
///
/// `depth` is the depth of the nodes in the chain of `head`; it is one more for each level below.
/// Nothing may be unlinked during the walk.
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

/// Walks one node, and what the visitor asks for below it, as WalkChain does. The node is at depth
/// 0; its siblings are not visited.
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
