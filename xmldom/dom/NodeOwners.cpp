// Owner documents of whole subtrees, and when an insertion need not visit the siblings that follow
// the new node. Tested by tests/dom/NodeOwners_test.cpp.
//
// Invariant, while OwnerGeneration() is 0: when a child of a node with an owner has that owner too,
// so have all its following siblings and all nodes below them. Whatever links a node gives its
// whole subtree the owner of the parent. Then it is enough to look at the next sibling.
//
// Some calls break the invariant: RecurseClearDocument, and RecurseSetDocument for a node that has
// a parent or siblings that follow. So do AddSibling for a node without parent or without owner,
// and AddChild and appendChild of a node with siblings that follow: these can be in two chains at
// once (NodeCache.cpp), and the owner that they get in the one is not that of their neighbours in
// the other. Each such call raises the generation. From then on an insertion visits the siblings,
// unless the insertion just before visited the same ones and neither an owner nor a link has
// changed since.
//
// One case is not noticed: another thread gets the document, gives a new owner to nodes in the
// chain that are in a second chain too, of another document, and hands both back.

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
  // Whether a node that may be in two chains gets another owner. Where two chains meet, each has a
  // reference.
  bool isShared;

  explicit OwnerSetter(IXMLDOMDocument2* document) : owner(document), isShared(false) {}

  IXMLDOMNode* Enter(IXMLDOMNode* node, std::size_t) {
    isShared |= node->m_pOwnerDocument != owner && node->GetRefCount() > 1;
    node->m_pOwnerDocument = owner;
    return node->m_pFirstChild;
  }

  void Leave(IXMLDOMNode* node, std::size_t) { node->m_pOwnerDocument = owner; }
};

/// Whether `next`, its following siblings and all below them are known to have the owner.
bool IsOwnedThroughout(const IXMLDOMNode* next, const IXMLDOMDocument2* owner) {
  if (next == nullptr || IsSurelyOwned(next, owner)) return true;
  if (owner == nullptr || next->m_pOwnerDocument != owner) return false;
  const unsigned long generation = OwnerGeneration();
  const NodeCache& cache = g_nodeCache;
  const OwnedChain& chain = cache.owned;
  const bool isCached = (next == chain.node && TokenOf(next) == chain.nodeToken) ||
                        (next == chain.next && TokenOf(next) == chain.nextToken);
  return isCached && (cache.valid & NodeCache::kOwnedBit) != 0 && owner == chain.owner &&
         generation == chain.ownerGeneration;
}

}  // namespace

void NoteOwnersChange(bool mayDiffer) {
  if (!mayDiffer && OwnerGeneration() == 0) return;
  // Odd from the first call on, so that it never is 0 again.
  __atomic_fetch_or(&g_uOwnerGeneration, 1ul, __ATOMIC_RELAXED);
  __atomic_fetch_add(&g_uOwnerGeneration, 2ul, __ATOMIC_RELAXED);
}

void SetOwners(IXMLDOMNode* node, IXMLDOMDocument2* owner) {
  OwnerSetter setter(owner);
  if (node->m_pFirstChild == nullptr && node->m_pNextSibling == nullptr) {
    setter.Enter(node, 0);
  } else {
    WalkChain<InPlaceTrail>(node, setter);
  }
  if (setter.isShared) NoteOwnersChange(false);
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
  NoteOwned(node);
}

XMLDOM_COLD void NoteOwned(const IXMLDOMNode* node) {
  if (OwnerGeneration() == 0) return;
  const IXMLDOMNode* const next = node->m_pNextSibling;
  NodeCache& cache = g_nodeCache;
  cache.owned = OwnedChain{node,          next,         node->m_pOwnerDocument, OwnerGeneration(),
                           TokenOf(node), TokenOf(next)};
  cache.valid |= NodeCache::kOwnedBit;
}

}  // namespace xmldom
