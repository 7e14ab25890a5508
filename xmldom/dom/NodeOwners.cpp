// Owner documents of whole subtrees, and when an insertion need not visit the siblings that follow
// the new node. Tested by tests/dom/NodeOwners_test.cpp.
//
// Invariant, while OwnerGeneration() is 0: when a node has an owner, all its following siblings
// and all nodes below them have that owner too. Whatever links a node gives its whole subtree the
// owner of the parent, and whatever clears owners begins at the top of a tree. Then it is enough to
// look at the next sibling.
//
// Two members break the invariant when an application calls them for a node that has a parent:
// RecurseSetDocument and RecurseClearDocument. Each such call raises the generation. From then on
// an insertion visits the siblings, unless the insertion just before visited the same ones and
// neither an owner nor a link has changed since.

#include <xmldom/dom/NodeOwners.h>

#include <xmldom/dom/NodeCache.h>
#include <xmldom/dom/TreeWalk.h>

namespace xmldom {

unsigned long g_uOwnerGeneration = 0;

namespace {

/// Gives every node that it visits one owner. Leave does so again, because the walk keeps its trail
/// in the owner links.
struct OwnerSetter : PreOrderVisitor {
  IXMLDOMDocument2* owner;

  explicit OwnerSetter(IXMLDOMDocument2* document) : owner(document) {}

  IXMLDOMNode* Enter(IXMLDOMNode* node, std::size_t) {
    node->m_pOwnerDocument = owner;
    return node->m_pFirstChild;
  }

  void Leave(IXMLDOMNode* node, std::size_t) { node->m_pOwnerDocument = owner; }
};

/// Whether `next`, its following siblings and all below them are known to have the owner.
bool IsOwnedThroughout(const IXMLDOMNode* next, const IXMLDOMDocument2* owner) {
  if (next == nullptr) return true;
  // Below a node that has lost its owner there may be nodes that still have one.
  if (owner == nullptr || next->m_pOwnerDocument != owner) return false;
  const unsigned long generation = OwnerGeneration();
  if (generation == 0) return true;
  const NodeCache& cache = g_nodeCache;
  const OwnedChain& chain = cache.owned;
  const bool isCached = (next == chain.node && TokenOf(next) == chain.nodeToken) ||
                        (next == chain.next && TokenOf(next) == chain.nextToken);
  return isCached && (cache.valid & NodeCache::kOwnedBit) != 0 && owner == chain.owner &&
         generation == chain.ownerGeneration;
}

}  // namespace

void NoteOwnersDiffer(const IXMLDOMNode* node) {
  if (node->m_pParent == nullptr && OwnerGeneration() == 0) return;
  // Odd from the first call on, so that it never is 0 again.
  __atomic_fetch_or(&g_uOwnerGeneration, 1ul, __ATOMIC_RELAXED);
  __atomic_fetch_add(&g_uOwnerGeneration, 2ul, __ATOMIC_RELAXED);
}

void SetOwners(IXMLDOMNode* node, IXMLDOMDocument2* owner) {
  if (node->m_pFirstChild == nullptr && node->m_pNextSibling == nullptr) {
    node->m_pOwnerDocument = owner;
    return;
  }
  OwnerSetter setter(owner);
  WalkChain<InPlaceTrail>(node, setter);
}

void LinkBefore(IXMLDOMNode* node, IXMLDOMNode* next, IXMLDOMDocument2* owner) {
  // SetOwners visits the siblings that follow as well, if they are linked already.
  if (IsOwnedThroughout(next, owner)) {
    SetOwners(node, owner);
    node->m_pNextSibling = next;
  } else {
    node->m_pNextSibling = next;
    SetOwners(node, owner);
  }
  if (OwnerGeneration() != 0) NoteOwned(node);
}

XMLDOM_COLD void NoteOwned(const IXMLDOMNode* node) {
  const IXMLDOMNode* const next = node->m_pNextSibling;
  NodeCache& cache = g_nodeCache;
  cache.owned = OwnedChain{node,          next,         node->m_pOwnerDocument, OwnerGeneration(),
                           TokenOf(node), TokenOf(next)};
  cache.valid |= NodeCache::kOwnedBit;
}

}  // namespace xmldom
