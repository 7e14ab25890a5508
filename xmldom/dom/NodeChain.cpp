// The cache of chain ends: the record of a node has no room for the last node of its chains, and
// finding it takes time linear in the chain. A slot, chosen by the address of the field that heads
// a chain, holds the end of the long chain that was gone through last. Short chains take no slot,
// because many of them are made beside each long one. Tested by tests/dom/NodeChain_test.cpp and
// tests/dom/NodeChainShared_test.cpp.

#include <xmldom/dom/NodeChain.h>

#include <xmldom/dom/ChainMarks.h>
#include <xmldom/dom/NodeCache.h>
#include <xmldom/dom/NodeOwners.h>

#include <cstddef>
#include <cstdint>

namespace xmldom {

namespace {

/// The number of the one slot of the cache for a chain.
std::size_t SlotOf(IXMLDOMNode** head) {
  const std::uintptr_t address = reinterpret_cast<std::uintptr_t>(head);
  return (address >> 4 ^ address >> 9) % NodeCache::kEnds;
}

/// Whether an entry, right or wrong, is that of the chain.
XMLDOM_ALWAYS_INLINE inline bool IsOf(const NodeCache& cache, std::size_t slot,
                                      IXMLDOMNode** head) {
  return cache.ends[slot].head == head && (cache.valid >> slot & 1) != 0;
}

/// Whether no other thread has changed anything where the nodes of an entry are.
XMLDOM_COLD XMLDOM_NOINLINE bool AreUnchanged(const NodeCache& cache, const ChainEnd& end,
                                              const IXMLDOMNode* parent) {
  return IsUnchanged(cache, parent, end.parentToken) && IsUnchanged(cache, end.previous) &&
         IsUnchanged(cache, end.last);
}

/// Whether the node before the last of an entry, or the one before that, still links to the last.
XMLDOM_ALWAYS_INLINE inline bool IsLastLinked(const ChainEnd& end, const IXMLDOMNode* parent) {
  const IXMLDOMNode* const last = end.last.node;
  const IXMLDOMNode* const previous = end.previous.node.node;
  // They are the same when the node that followed has been removed.
  return IsLinked(end.previous, parent) && (previous == last || previous->m_pNextSibling == last);
}

/// Whether the last node of an entry is in the chain. Others may follow that an application has
/// added by hand.
///
/// Links that an application changes by hand leave an entry valid. So the chain must also begin
/// with the same node, and the node before the last must still link to it, or another one must that
/// has taken its place. More cannot be known without reading the whole chain. That other one is
/// only looked for among children: elsewhere the parent may be gone.
inline bool IsRight(const NodeCache& cache, ChainEnd& end, bool isOfChildren,
                    const IXMLDOMNode* head, const IXMLDOMNode* parent) {
  const bool isIn =
      end.first == head && AreUnchanged(cache, end, parent) && end.last.node->m_pParent == parent;
  if (!isIn) return false;
  if (end.last.node == head || IsLastLinked(end, parent)) return true;
  if (!isOfChildren || FindBefore(end.last.node) == nullptr) return false;
  // The place that the search has cached. It caches none for a node among the first, or behind one
  // of another parent; this is then some other place, which IsLinked shows.
  end.previous = cache.marks.before;
  return true;
}

/// The node before the last of an entry that is right, when it is known; else any node that exists,
/// or null.
inline const CachedNode& BeforeLastOf(const ChainEnd& end) {
  const CachedPlace& place = end.previous;
  return place.node.node == end.last.node ? place.prior : place.node;
}

/// Finds the last node of a chain whose entry does not have it, because links were changed or
/// because other nodes follow. Nothing is cached behind a node of another parent (NodeCache.cpp).
/// Result: as for EndOf.
XMLDOM_COLD XMLDOM_NOINLINE ChainEnd* FindEnd(IXMLDOMNode*& head, const IXMLDOMNode* parent) {
  NodeCache& cache = CacheOfThread();
  const std::size_t slot = SlotOf(&head);
  const unsigned bit = 1u << slot;
  const bool isOfChildren = parent != nullptr && &head == &parent->m_pFirstChild;
  ChainEnd* end = &cache.ends[slot];
  IXMLDOMNode* prior = nullptr;
  IXMLDOMNode* previous = nullptr;
  IXMLDOMNode* last = head;
  const IXMLDOMNode* known = nullptr;
  std::size_t steps = 0;
  if (IsOf(cache, slot, &head)) {
    if (IsRight(cache, *end, isOfChildren, head, parent)) {
      previous = BeforeLastOf(*end).node;
      last = end->last.node;
      known = last;
      steps = kFewNodes;
    } else {
      cache.valid &= ~bit;
    }
  }
  bool isOfOneParent = last->m_pParent == parent;
  for (; last->m_pNextSibling != nullptr; ++steps) {
    prior = previous;
    previous = last;
    last = last->m_pNextSibling;
    isOfOneParent &= last->m_pParent == parent;
  }
  if (steps < kFewNodes || !isOfOneParent) {
    end = &cache.uncachedEnd;
  } else if (last != known) {
    cache.valid |= bit;
    cache.notOfChildren = isOfChildren ? cache.notOfChildren & ~bit : cache.notOfChildren | bit;
    end->head = &head;
    end->first = head;
    end->parentToken = StoredTokenOf(parent);
    end->previous = CachedPlace{CachedWithToken(prior), CachedWithToken(previous)};
  }
  end->last = CachedWithToken(last);
  return end;
}

/// Finds the last node of a chain. Result: an entry that has it; that of the chain, except for a
/// chain that is short or has nodes of another parent.
XMLDOM_NOINLINE ChainEnd* EndOf(IXMLDOMNode*& head, const IXMLDOMNode* parent) {
  NodeCache& cache = CacheOfThread();
  const std::size_t slot = SlotOf(&head);
  ChainEnd& end = cache.ends[slot];
  const bool hasEnd = !HasTokens() && IsOf(cache, slot, &head) && end.first == head &&
                      end.last.node->m_pParent == parent && IsLastLinked(end, parent) &&
                      end.last.node->m_pNextSibling == nullptr;
  return hasEnd ? &end : FindEnd(head, parent);
}

/// The node before `node`, which is the last of an entry, when it still links to it; else null.
XMLDOM_ALWAYS_INLINE inline IXMLDOMNode* LinkedBefore(const ChainEnd& end,
                                                      const IXMLDOMNode* node) {
  IXMLDOMNode* const previous = end.previous.node.node;
  const bool isLinked = IsLinked(end.previous, node->m_pParent) && previous->m_pNextSibling == node;
  return isLinked ? previous : nullptr;
}

/// The same when there are tokens: another thread may have cut off all children, of which some may
/// be left that name the parent.
XMLDOM_COLD XMLDOM_NOINLINE IXMLDOMNode* UnchangedBefore(const NodeCache& cache,
                                                         const ChainEnd& end,
                                                         const IXMLDOMNode* node) {
  return AreUnchanged(cache, end, node->m_pParent) ? LinkedBefore(end, node) : nullptr;
}

/// Takes `node`, which is unlinked from behind `before`, out of an entry.
XMLDOM_COLD XMLDOM_NOINLINE void TakeOutOfEnd(const NodeCache& cache, ChainEnd& end,
                                              IXMLDOMNode* before, const IXMLDOMNode* node) {
  const CachedNode cached = CachedWithToken(before);
  if (end.last.node == node) {
    end.last = cached;
    if (before == nullptr) end.head = nullptr;  // Whatever follows, the entry does not have it.
  }
  if (end.previous.prior.node == node) end.previous.prior = cached;
  if (end.previous.node.node != node) return;
  // What was found last, in whatever chain, may be the place of the node that is the last now.
  const bool isFound = (cache.valid & NodeCache::kMarksBit) != 0;
  end.previous = isFound ? cache.marks.before : CachedPlace();
}

}  // namespace

IXMLDOMNode* LastOfChain(IXMLDOMNode*& head, const IXMLDOMNode* parent) {
  return EndOf(head, parent)->last.node;
}

void AppendToChain(IXMLDOMNode*& head, IXMLDOMNode* node) {
  if (head == nullptr) {
    // What is cached may be the end of a chain that was here before and was taken away by hand.
    NodeCache& cache = CacheOfThread();
    const std::size_t slot = SlotOf(&head);
    if (cache.ends[slot].head == &head) cache.valid &= ~(1u << slot);
    head = node;
    return;
  }
  ChainEnd* const end = EndOf(head, node->m_pParent);
  // The end may be that of a second chain too, whose nodes have another owner.
  if (end->last.node->m_pOwnerDocument != node->m_pOwnerDocument) NoteOwnersChange(false);
  end->last.node->m_pNextSibling = node;
  end->previous = CachedPlace{BeforeLastOf(*end), end->last};
  end->last = Cached(node);
}

IXMLDOMNode* BeforeLast(const IXMLDOMNode* node) {
  const NodeCache& cache = CacheOfThread();
  IXMLDOMNode** const head = &node->m_pParent->m_pFirstChild;
  const std::size_t slot = SlotOf(head);
  const ChainEnd& end = cache.ends[slot];
  if (end.last.node != node || end.first != *head || !IsOf(cache, slot, head)) return nullptr;
  return HasTokens() ? UnchangedBefore(cache, end, node) : LinkedBefore(end, node);
}

void LinkBehind(IXMLDOMNode* before, IXMLDOMNode* parent, IXMLDOMNode* node) {
  NodeCache& cache = CacheOfThread();
  IXMLDOMNode*& head = parent->m_pFirstChild;
  ChainEnd& end = cache.ends[SlotOf(&head)];
  const bool isCached = end.head == &head;
  if (before != nullptr) {
    before->m_pNextSibling = node;
    if (isCached && end.previous.node.node == before && end.last.node == node->m_pNextSibling) {
      end.previous = CachedPlace{end.previous.node, CachedWithToken(node)};
    }
    return;
  }
  if (isCached && end.first == head) end.first = node;
  if (cache.marks.parent == parent && cache.marks.first == head) cache.marks.first = node;
  head = node;
}

XMLDOM_NOINLINE void Unlink(IXMLDOMNode* before, IXMLDOMNode* node) {
  NodeCache& cache = CacheOfThread();
  IXMLDOMNode* const parent = node->m_pParent;
  IXMLDOMNode* const next = node->m_pNextSibling;
  IXMLDOMNode*& head = parent->m_pFirstChild;
  NoteChange(cache, parent);
  // The siblings that follow were linked along by appendChild. They may be in another chain too,
  // which is cut here.
  if (next != nullptr && next->m_pParent != parent) ForgetFollowers(node);
  node->m_pNextSibling = nullptr;
  node->m_pParent = nullptr;
  cache.valid &= ~cache.notOfChildren;
  ChainEnd& end = cache.ends[SlotOf(&head)];
  if (end.head == &head) {
    if (end.first == node) end.first = next;
    if (end.last.node == node || Has(end.previous, node)) TakeOutOfEnd(cache, end, before, node);
  }
  if (before != nullptr) {
    before->m_pNextSibling = next;
    return;
  }
  if (cache.marks.first == node) cache.marks.first = next;
  head = next;
}

}  // namespace xmldom
