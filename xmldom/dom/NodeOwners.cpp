#include <xmldom/dom/NodeOwners.h>

#include <xmldom/dom/NodeChain.h>
#include <xmldom/dom/TreeWalk.h>

// How nodes get their owner document, and when the siblings behind a new node need not be visited.
//
// Below a node that has an owner, all children and all below them have that owner too: whatever
// links a node gives its whole subtree the owner of the parent, and what is cleared on the way out
// of a tree begins at the top. Two members break this, when an application calls them for a node
// that hangs below another: RecurseSetDocument and RecurseClearDocument. They are counted. Before
// the first such call only the next sibling is looked at; afterwards the siblings have to be
// visited, unless they are those behind the last node that was put in place, and nothing has
// happened since.
//
// Tested by NodeOwners_test.cpp.

namespace xmldom {

unsigned long long g_uOwnerGeneration = 0;

namespace {

/// Gives all nodes one owner.
struct OwnerSetter : PreOrderVisitor {
  IXMLDOMDocument2* owner;

  explicit OwnerSetter(IXMLDOMDocument2* document) : owner(document) {}

  IXMLDOMNode* Enter(IXMLDOMNode* node, std::size_t) {
    node->m_pOwnerDocument = owner;
    return node->m_pFirstChild;
  }

  void Leave(IXMLDOMNode* node, std::size_t) { node->m_pOwnerDocument = owner; }
};

/// From `node` on, and from the sibling behind it on, all nodes had the owner at these two ages.
/// The pointers are compared and never dereferenced.
struct OwnedChain {
  const IXMLDOMNode* node;
  const IXMLDOMNode* next;
  const IXMLDOMDocument2* owner;
  unsigned long long ownerGeneration;
  unsigned long long
      chainGeneration;  // the addresses are those of the same nodes while this is the same
};

OwnedChain& LastOwnedChain() {
  static thread_local OwnedChain chain;
  return chain;
}

bool IsOwnedThroughout(const IXMLDOMNode* next, const IXMLDOMDocument2* owner) {
  if (next == nullptr) return true;
  // Nodes that have lost their owner can have others below them that still have one.
  if (owner == nullptr || next->m_pOwnerDocument != owner) return false;
  if (g_uOwnerGeneration == 0) return true;
  const OwnedChain& chain = LastOwnedChain();
  return (next == chain.node || next == chain.next) && owner == chain.owner &&
         chain.ownerGeneration == g_uOwnerGeneration && chain.chainGeneration == g_uChainGeneration;
}

}  // namespace

void SetOwners(IXMLDOMNode* node, IXMLDOMDocument2* owner) {
  if (node->m_pFirstChild == nullptr && node->m_pNextSibling == nullptr) {
    node->m_pOwnerDocument = owner;
    return;
  }
  OwnerSetter setter(owner);
  WalkChain<InPlaceTrail>(node, setter);
}

void LinkBefore(IXMLDOMNode* node, IXMLDOMNode* next, IXMLDOMDocument2* owner) {
  if (IsOwnedThroughout(next, owner)) {
    SetOwners(node, owner);
    node->m_pNextSibling = next;
  } else {
    node->m_pNextSibling = next;
    SetOwners(node, owner);
  }
  if (g_uOwnerGeneration != 0) {
    LastOwnedChain() = OwnedChain{node, next, owner, g_uOwnerGeneration, g_uChainGeneration};
  }
}

}  // namespace xmldom
