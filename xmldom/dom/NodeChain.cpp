#include <xmldom/dom/NodeChain.h>

#include <cstddef>
#include <cstdint>

// The record of a node has no room for the end of its chains. The ends of the chains that grew last
// are remembered here instead, so that appending to them one by one is linear.

namespace xmldom {

unsigned long long g_uChainGeneration = 0;

namespace {

struct ChainEnd {
  IXMLDOMNode** head;  // names the chain
  IXMLDOMNode* first;
  IXMLDOMNode** link;  // the field that linked to the last node
  IXMLDOMNode* last;
  unsigned long long generation;  // in which it was the last
};

/// The one place where the end of a chain can be remembered. Threads that take turns with the
/// library have their own each; the age is everybody's, since a document may change hands.
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
    // What was remembered may be dereferenced only while no node has been destroyed or unlinked
    // since, which the age tells. Links that an application has changed itself do not change the
    // age: the chain must still begin with the same node, and what linked to its last node must
    // still do so. That is as much as can be known without reading all of the chain.
    const bool remembers = end.head == &head && end.generation == g_uChainGeneration &&
                           end.first == head && *end.link == end.last &&
                           end.last->m_pParent == node->m_pParent;
    link = &LastOf(remembers ? end.last : head)->m_pNextSibling;
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
