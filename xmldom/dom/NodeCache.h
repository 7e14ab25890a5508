#ifndef XMLDOM_DOM_NODECACHE_H
#define XMLDOM_DOM_NODECACHE_H

#include <xmldom/base/Export.h>
#include <xmldom/dom/XMLNode.h>

#include <cstddef>
#include <cstdint>

// What a thread has cached of nodes, and until when the cached pointers may be used. NodeCache.cpp
// tells why that is so, also when a document passes from one thread to another.

namespace xmldom {

/// The end of a chain that was appended to, and its first node, which PrependToChain keeps up to
/// date. Only `previous` and `last` are dereferenced.
struct ChainEnd {
  IXMLDOMNode** head;  // the field that heads the chain
  IXMLDOMNode* first;
  const IXMLDOMNode* previous;  // the node before the last
  IXMLDOMNode* last;
  // What TokenOf gave for the parent and for these two.
  unsigned long parentToken;
  unsigned long previousToken;
  unsigned long lastToken;
};

/// What the last insertion visited: with this number of owner changes `node`, all siblings that
/// follow it and all below them had the owner `owner`. The pointers are only compared: while the
/// entry is valid, equal addresses mean the same nodes.
struct OwnedChain {
  const IXMLDOMNode* node;
  const IXMLDOMNode* next;
  const IXMLDOMDocument2* owner;
  unsigned long ownerGeneration;
  // What TokenOf gave for the two nodes.
  unsigned long nodeToken;
  unsigned long nextToken;
};

/// All that one thread has cached. An entry may be used only while its bit in `valid` is set and
/// TokenOf gives the same for each of its nodes, the parent among them.
struct NodeCache {
  static const std::size_t kEnds = 16;
  static const unsigned kOwnedBit = 1u << kEnds;  // of `owned`; the bits of `ends` are below it

  unsigned valid;
  unsigned tokensLeft;  // how many tokens behind `token` this thread may use
  unsigned long token;  // the one that it has used last
  ChainEnd ends[kEnds];
  OwnedChain owned;
};

/// The cache of the running thread.
extern XMLDOM_THREAD_PLACE __thread NodeCache g_nodeCache;

/// The cache of the running thread, for functions that use it more than once: compilers would find
/// the address of the variable anew for each use.
inline NodeCache& CacheOfThread() {
  NodeCache* cache = &g_nodeCache;
  __asm__("" : "+r"(cache));
  return *cache;
}

const int kIndexBits = 10;

/// A token of the last change in each region of memory: that a node was destroyed or unlinked
/// there. No two changes have the same token; 0 stands for none. Several regions share an element.
extern unsigned long g_aulTokens[1 << kIndexBits];

/// The region of memory where a node begins: 64 KiB, which hold some hundred nodes.
inline std::uintptr_t RegionOf(const IXMLDOMNode* node) {
  return reinterpret_cast<std::uintptr_t>(node) >> 16;
}

/// The element for a node's region. The heaps of different threads begin at multiples of one power
/// of two; the multiplication spreads them over the table.
__attribute__((always_inline)) inline unsigned long& ElementOf(const IXMLDOMNode* node) {
  return g_aulTokens[static_cast<std::uint32_t>(RegionOf(node)) * 0x9E3779B1u >> (32 - kIndexBits)];
}

/// The token of the last change in the region of a node. The node need not exist any more.
__attribute__((always_inline)) inline unsigned long TokenOf(const IXMLDOMNode* node) {
  return __atomic_load_n(&ElementOf(node), __ATOMIC_RELAXED);
}

/// Notes a change in the region of a node. To be called before the node is destroyed.
void NoteChange(const IXMLDOMNode* node);

/// Makes invalid all that this thread has cached, and what others have cached about `node` and its
/// parent's chains. To be called before a node is destroyed or leaves its chain.
void InvalidateCaches(const IXMLDOMNode* node);

/// Does so for each sibling that follows a node. To be called before they leave its chain. The
/// parent alone does not do, because a sibling need not name it: AddChild and appendChild link
/// siblings along as they are.
void InvalidateFollowers(const IXMLDOMNode* node);

}  // namespace xmldom

#endif
