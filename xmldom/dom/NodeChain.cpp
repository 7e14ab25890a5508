// The cache of chain ends: the record of a node has no room for the last node of its chains, and
// finding it takes time linear in the chain. A slot, chosen by the address of the field that heads
// a chain, holds the end of the long chain that was gone through last. Short chains take no slot,
// because many of them are made beside each long one. Tested by tests/dom/NodeChain_test.cpp.

#include <xmldom/dom/NodeChain.h>

#include <xmldom/dom/ChainMarks.h>
#include <xmldom/dom/NodeCache.h>

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

/// Whether the last node of an entry is in the chain that starts at `head`, and whose nodes have
/// the parent `parent`. Others may follow that an application has added by hand.
///
/// Links that an application changes by hand leave an entry valid. So the chain must also begin
/// with the same node, and the node before the last must still link to it, or another one must that
/// has taken its place. More cannot be known without reading the whole chain.
bool IsRight(const NodeCache& cache, ChainEnd& end, const IXMLDOMNode* head,
             const IXMLDOMNode* parent) {
  IXMLDOMNode* const last = end.last.node;
  if (end.first != head || !IsUnchanged(cache, parent, end.parentToken) ||
      !IsIn(cache, end.last, parent)) {
    return false;
  }
  if (last == head) return true;
  const IXMLDOMNode* const previous = NodeAt(cache, end.previous, parent);
  if (previous != nullptr && previous->m_pNextSibling == last) return true;
  if (parent == nullptr || FindBefore(last) == nullptr) return false;
  // Where the search has found it, unless that is among the first, or else some other place.
  end.previous = cache.marks.before;
  return true;
}

/// Finds the last node of a chain. Result: the entry that has it now; null for a short chain.
ChainEnd* EndOf(IXMLDOMNode*& head, const IXMLDOMNode* parent, IXMLDOMNode*& last) {
  NodeCache& cache = CacheOfThread();
  const std::size_t slot = SlotOf(&head);
  ChainEnd& end = cache.ends[slot];
  last = head;
  IXMLDOMNode* prior = nullptr;
  IXMLDOMNode* previous = nullptr;
  std::size_t steps = 0;
  if (IsOf(cache, slot, &head)) {
    if (IsRight(cache, end, head, parent)) {
      last = end.last.node;
      if (last->m_pNextSibling == nullptr) return &end;
      previous = NodeAt(cache, end.previous, parent);
      steps = kFewNodes;
    } else {
      cache.valid &= ~(1u << slot);
    }
  }
  for (; last->m_pNextSibling != nullptr; ++steps) {
    prior = previous;
    previous = last;
    last = last->m_pNextSibling;
  }
  if (steps < kFewNodes) return nullptr;
  const CachedPlace place = {Cached(prior), Cached(previous)};
  end = ChainEnd{&head, head, TokenOf(parent), place, Cached(last)};
  cache.valid |= 1u << slot;
  return &end;
}

}  // namespace

IXMLDOMNode* LastOfChain(IXMLDOMNode*& head, const IXMLDOMNode* parent) {
  IXMLDOMNode* last;
  EndOf(head, parent, last);
  return last;
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
  IXMLDOMNode* last;
  ChainEnd* end = EndOf(head, node->m_pParent, last);
  last->m_pNextSibling = node;
  if (end == nullptr) return;
  end->previous = CachedPlace{end->previous.node, end->last};
  end->last = Cached(node);
}

const CachedPlace* BeforeEnd(IXMLDOMNode* parent) {
  const NodeCache& cache = CacheOfThread();
  IXMLDOMNode** const head = &parent->m_pFirstChild;
  const std::size_t slot = SlotOf(head);
  const ChainEnd& end = cache.ends[slot];
  // Another thread may have cut off all children, of which some may be left that name the parent.
  const bool isCurrent = IsOf(cache, slot, head) && IsUnchanged(cache, parent, end.parentToken);
  return isCurrent ? &end.previous : nullptr;
}

void LinkBehind(IXMLDOMNode* before, IXMLDOMNode* parent, IXMLDOMNode* node) {
  if (before != nullptr) {
    before->m_pNextSibling = node;
    return;
  }
  NodeCache& cache = CacheOfThread();
  IXMLDOMNode*& head = parent->m_pFirstChild;
  ChainEnd& end = cache.ends[SlotOf(&head)];
  if (end.head == &head && end.first == head) end.first = node;
  if (cache.marks.parent == parent && cache.marks.first == head) cache.marks.first = node;
  head = node;
}

void Unlink(IXMLDOMNode* before, IXMLDOMNode* node) {
  IXMLDOMNode* const parent = node->m_pParent;
  LinkBehind(before, parent, node->m_pNextSibling);
  IXMLDOMNode** const head = &parent->m_pFirstChild;
  ChainEnd& end = CacheOfThread().ends[SlotOf(head)];
  if (end.head != head) return;
  if (end.last.node == node) end.last = Cached(before);
  if (end.previous.prior.node == node) end.previous.prior = Cached(before);
  if (end.previous.node.node == node) end.previous.node.node = nullptr;
}

}  // namespace xmldom
