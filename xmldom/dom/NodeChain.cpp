// The cache of chain ends: the record of a node has no room for the last node of its chains, and
// finding it takes time linear in the chain. A slot, chosen by the address of the field that heads
// a chain, holds the end of the chain that was appended to last. Tested by
// tests/dom/NodeChain_test.cpp.

#include <xmldom/dom/NodeChain.h>

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

/// The last node of the chain that starts at `head` and whose nodes have the parent `parent`, if
/// the entry has it; else null. The bit of the entry is set.
///
/// Links that an application changes by hand leave an entry valid. So the chain must also begin
/// with the same node, and the node before the last must still link to it. More cannot be known
/// without reading the whole chain.
inline IXMLDOMNode* LastIn(const ChainEnd& end, IXMLDOMNode*& head, const IXMLDOMNode* parent) {
  const bool isTrue = end.head == &head && end.first == head &&
                      TokenOf(parent) == end.parentToken && TokenOf(end.last) == end.lastToken &&
                      TokenOf(end.previous) == end.previousToken &&
                      end.previous->m_pNextSibling == end.last && end.last->m_pParent == parent;
  return isTrue ? end.last : nullptr;
}

/// Walks from `node` to the end of its chain, and notes the tokens of the last node and of the
/// parent in an entry. Result: the last node.
XMLDOM_COLD XMLDOM_NOINLINE IXMLDOMNode* WalkToEnd(IXMLDOMNode* node, const IXMLDOMNode* parent,
                                                   ChainEnd& end) {
  node = LastOf(node);
  end.parentToken = TokenOf(parent);
  end.lastToken = TokenOf(node);
  return node;
}

}  // namespace

void AppendToChain(IXMLDOMNode*& head, IXMLDOMNode* node) {
  NodeCache& cache = CacheOfThread();
  const std::size_t slot = SlotOf(&head);
  if (head == nullptr) {
    // Finding this end again is as quick as caching it. What is cached may be the end of a chain
    // that was here before and was taken away by hand.
    cache.valid &= ~(1u << slot);
    head = node;
    return;
  }
  ChainEnd& end = cache.ends[slot];
  const bool isValid = (cache.valid >> slot & 1) != 0;
  IXMLDOMNode* last = isValid ? LastIn(end, head, node->m_pParent) : nullptr;
  // An application may have added more nodes by hand.
  if (last == nullptr || last->m_pNextSibling != nullptr) {
    last = WalkToEnd(last == nullptr ? head : last, node->m_pParent, end);
  }
  last->m_pNextSibling = node;
  end.head = &head;
  end.first = head;
  end.previous = last;
  end.previousToken = end.lastToken;
  end.last = node;
  end.lastToken = TokenOf(node);
  cache.valid |= 1u << slot;
}

void PrependToChain(IXMLDOMNode*& head, IXMLDOMNode* node) {
  NodeCache& cache = CacheOfThread();
  ChainEnd& end = cache.ends[SlotOf(&head)];
  if (end.head == &head && end.first == head) end.first = node;
  head = node;
}

}  // namespace xmldom
