// The cache of chain ends: the record of a node has no room for the last node of its chains, and
// finding it takes time linear in the chain. A slot, chosen by the address of the field that heads
// a chain, holds the end of the chain that was appended to last. Tested by
// tests/dom/NodeChain_test.cpp.

#include <xmldom/dom/NodeChain.h>

#include <cstddef>
#include <cstdint>

namespace xmldom {

unsigned long long g_uChainGeneration = 0;

namespace {

/// The end of a chain, as it was when the chain was appended to. `head` and `first` are only
/// compared. `link` and `last` may be dereferenced only while `generation` is the present one,
/// because then no node has been destroyed or unlinked since.
struct ChainEnd {
  IXMLDOMNode** head;  // the field that heads the chain
  IXMLDOMNode* first;
  IXMLDOMNode** link;  // the field that links to the last node
  IXMLDOMNode* last;
  unsigned long long generation;
};

/// The one slot of the cache for a chain. Each thread has slots of its own, because threads may use
/// the library in turns; the generation is common to all, because a document may pass from one
/// thread to another.
ChainEnd& SlotOf(IXMLDOMNode** head) {
  static const std::size_t kSlots = 16;
  static thread_local ChainEnd slots[kSlots];
  const std::uintptr_t address = reinterpret_cast<std::uintptr_t>(head);
  return slots[(address >> 4 ^ address >> 9) % kSlots];
}

}  // namespace

void AppendToChain(IXMLDOMNode*& head, IXMLDOMNode* node) {
  ChainEnd& end = SlotOf(&head);
  IXMLDOMNode** link = &head;
  if (head != nullptr) {
    // Links that an application changes by hand leave the generation as it is. So the chain must
    // also begin with the same node, and the same field must still link to its last node. More
    // cannot be known without reading the whole chain. LastOf follows what was added by hand.
    const bool isCached = end.head == &head && end.generation == g_uChainGeneration &&
                          end.first == head && *end.link == end.last &&
                          end.last->m_pParent == node->m_pParent;
    link = &LastOf(isCached ? end.last : head)->m_pNextSibling;
  }
  *link = node;
  end = ChainEnd{&head, head, link, node, g_uChainGeneration};
}

void PrependToChain(IXMLDOMNode*& head, IXMLDOMNode* node) {
  ChainEnd& end = SlotOf(&head);
  if (end.head == &head && end.first == head) {
    end.first = node;
    if (end.link == &head) end.link = &node->m_pNextSibling;
  }
  head = node;
}

}  // namespace xmldom
