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

/// The one slot of the cache for a chain.
class Slot {
 public:
  explicit Slot(IXMLDOMNode** head)
      : m_cache(CacheOfThread()),
        m_head(head),
        m_bit(1u << NumberOf(head)),
        m_end(m_cache.ends[NumberOf(head)]) {}

  ChainEnd& End() { return m_end; }

  /// Whether the slot has an entry for this chain, right or wrong.
  bool IsTaken() const { return (m_cache.valid & m_bit) != 0 && m_end.head == m_head; }
  void Clear() { m_cache.valid &= ~m_bit; }

  /// The last node of the chain, whose nodes have the parent `parent`, if the entry has it or a
  /// node that was the last; else null.
  ///
  /// Links that an application changes by hand leave an entry valid. So the chain must also begin
  /// with the same node, and the node before the last must still link to it. More cannot be known
  /// without reading the whole chain.
  IXMLDOMNode* Last(const IXMLDOMNode* parent) {
    IXMLDOMNode* const last = m_end.last.node;
    if (!IsTaken() || m_end.first != *m_head || !IsUnchanged(m_cache, parent, m_end.parentToken) ||
        !IsUnchanged(m_cache, m_end.last) || last->m_pParent != parent) {
      return nullptr;
    }
    if (last == *m_head) return last;
    CachedNode& previous = m_end.previous;
    if (previous.node == nullptr) return FindPrevious() ? last : nullptr;
    const bool isLinked = IsUnchanged(m_cache, previous) && previous.node->m_pNextSibling == last;
    return isLinked ? last : nullptr;
  }

  /// Makes the entry.
  void Set(const IXMLDOMNode* parent, IXMLDOMNode* previous, IXMLDOMNode* last) {
    m_end.head = m_head;
    m_end.first = *m_head;
    m_end.parentToken = TokenOf(parent);
    m_end.previous = Cached(previous);
    m_end.last = Cached(last);
    m_cache.valid |= m_bit;
  }

 private:
  static std::size_t NumberOf(IXMLDOMNode** head) {
    const std::uintptr_t address = reinterpret_cast<std::uintptr_t>(head);
    return (address >> 4 ^ address >> 9) % NodeCache::kEnds;
  }

  /// Finds the node before the last, which became the last when the one behind it was unlinked.
  XMLDOM_NOINLINE bool FindPrevious() {
    IXMLDOMNode* previous = FindBefore(m_end.last.node);
    m_end.previous = Cached(previous);
    return previous != nullptr;
  }

  NodeCache& m_cache;
  IXMLDOMNode** const m_head;
  const unsigned m_bit;
  ChainEnd& m_end;
};

/// Walks to the end of a chain, and caches that if it is long. Result: the last node.
XMLDOM_NOINLINE IXMLDOMNode* WalkToEnd(Slot& slot, IXMLDOMNode*& head, const IXMLDOMNode* parent) {
  if (slot.IsTaken()) slot.Clear();
  IXMLDOMNode* previous = nullptr;
  IXMLDOMNode* last = head;
  std::size_t steps = 0;
  for (; last->m_pNextSibling != nullptr; ++steps) {
    previous = last;
    last = last->m_pNextSibling;
  }
  if (steps >= kFewNodes) slot.Set(parent, previous, last);
  return last;
}

IXMLDOMNode* LastOf(Slot& slot, IXMLDOMNode*& head, const IXMLDOMNode* parent) {
  IXMLDOMNode* last = slot.Last(parent);
  // An application may have added more nodes by hand.
  if (last == nullptr || last->m_pNextSibling != nullptr) last = WalkToEnd(slot, head, parent);
  return last;
}

}  // namespace

IXMLDOMNode* LastOfChain(IXMLDOMNode*& head, const IXMLDOMNode* parent) {
  Slot slot(&head);
  return LastOf(slot, head, parent);
}

void AppendToChain(IXMLDOMNode*& head, IXMLDOMNode* node) {
  Slot slot(&head);
  if (head == nullptr) {
    // What is cached may be the end of a chain that was here before and was taken away by hand.
    if (slot.IsTaken()) slot.Clear();
    head = node;
    return;
  }
  IXMLDOMNode* last = LastOf(slot, head, node->m_pParent);
  last->m_pNextSibling = node;
  if (slot.IsTaken()) {
    slot.End().previous = slot.End().last;
    slot.End().last = Cached(node);
  }
}

IXMLDOMNode* BeforeLast(const IXMLDOMNode* node) {
  Slot slot(&node->m_pParent->m_pFirstChild);
  const ChainEnd& end = slot.End();
  const bool isKnown = end.last.node == node && end.previous.node != nullptr &&
                       slot.Last(node->m_pParent) != nullptr;
  return isKnown ? end.previous.node : nullptr;
}

void LinkBehind(IXMLDOMNode* before, IXMLDOMNode* node) {
  IXMLDOMNode*& head = node->m_pParent->m_pFirstChild;
  Slot slot(&head);
  ChainEnd& end = slot.End();
  if (before == nullptr) {
    ChainMarks& marks = g_nodeCache.marks;
    if (slot.IsTaken() && end.first == head) end.first = node;
    if (marks.parent == node->m_pParent && marks.first == head) marks.first = node;
    head = node;
  } else {
    before->m_pNextSibling = node;
  }
  if (slot.IsTaken() && end.last.node == node->m_pNextSibling && end.previous.node == before) {
    end.previous = Cached(node);
  }
}

void Unlink(IXMLDOMNode* before, IXMLDOMNode* node) {
  IXMLDOMNode*& head = node->m_pParent->m_pFirstChild;
  IXMLDOMNode* const next = node->m_pNextSibling;
  if (before == nullptr) {
    ChainMarks& marks = g_nodeCache.marks;
    if (marks.parent == node->m_pParent && marks.first == node) marks.first = next;
  }
  (before == nullptr ? head : before->m_pNextSibling) = next;
  Slot slot(&head);
  if (!slot.IsTaken()) return;
  ChainEnd& end = slot.End();
  if (end.first == node) end.first = next;
  if (end.previous.node == node) end.previous = Cached(before);
  if (end.last.node == node) {
    end.last = Cached(before);
    end.previous.node = nullptr;
    if (before == nullptr) slot.Clear();
  }
}

}  // namespace xmldom
