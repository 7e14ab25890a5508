#ifndef XMLDOM_DOM_NODECACHE_H
#define XMLDOM_DOM_NODECACHE_H

#include <xmldom/base/Export.h>
#include <xmldom/dom/XMLNode.h>

#include <cstddef>
#include <cstdint>

// What a thread has cached of nodes, and until when the cached pointers may be used. NodeCache.cpp
// tells why that is so, also when a document passes from one thread to another.

namespace xmldom {

/// The end of a chain, as it was when the chain was appended to. Only `previous` and `last` are
/// dereferenced.
struct ChainEnd {
  IXMLDOMNode** head;  // the field that heads the chain
  IXMLDOMNode* first;
  const IXMLDOMNode* previous;  // the node before the last
  IXMLDOMNode* last;
  // Of the regions of the parent and of these two, see IndexOf.
  std::uint16_t parentIndex;
  std::uint16_t previousIndex;
  std::uint16_t lastIndex;
};

/// What the last insertion visited: with this number of owner changes `node`, all siblings that
/// follow it and all below them had the owner `owner`. The pointers are only compared: while the
/// entry is valid, equal addresses mean the same nodes.
struct OwnedChain {
  const IXMLDOMNode* node;
  const IXMLDOMNode* next;
  const IXMLDOMDocument2* owner;
  unsigned long ownerGeneration;
};

/// All that one thread has cached. An entry may be used only while its bit in `valid` is set and
/// IsMine holds for each of its nodes, the parent among them.
struct NodeCache {
  static const std::size_t kEnds = 16;
  static const unsigned kOwnedBit = 1u << kEnds;  // of `owned`; the bits of `ends` are below it

  unsigned valid;
  ChainEnd ends[kEnds];
  OwnedChain owned;
};

/// The cache of the running thread. Its address also stands for the thread.
extern XMLDOM_THREAD_PLACE __thread NodeCache g_nodeCache;

/// The cache of the running thread, for functions that use it more than once: compilers would find
/// the address of the variable anew for each use.
inline NodeCache& CacheOfThread() {
  NodeCache* cache = &g_nodeCache;
  __asm__("" : "+r"(cache));
  return *cache;
}

const int kIndexBits = 10;

/// The last thread that cached, destroyed or unlinked a node, for each region of memory; null
/// before the first. Several regions share an element.
extern const NodeCache* g_apLastThread[1 << kIndexBits];

/// The region of memory where a node begins: 64 KiB, which hold some hundred nodes.
inline std::uintptr_t RegionOf(const IXMLDOMNode* node) {
  return reinterpret_cast<std::uintptr_t>(node) >> 16;
}

/// The index of a node's region in g_apLastThread. The heaps of different threads begin at
/// multiples of one power of two; the multiplication spreads them over the table.
__attribute__((always_inline)) inline unsigned IndexOf(const IXMLDOMNode* node) {
  return static_cast<std::uint32_t>(RegionOf(node)) * 0x9E3779B1u >> (32 - kIndexBits);
}

/// Whether the running thread, whose cache this is, is the last in the regions of an index.
__attribute__((always_inline)) inline bool IsMine(const NodeCache& cache, unsigned index) {
  return __atomic_load_n(&g_apLastThread[index], __ATOMIC_RELAXED) == &cache;
}

/// Makes the running thread the last in the regions of an index, and its entries with nodes there
/// invalid.
void TakeRegions(unsigned index);

/// Makes the running thread the last in the region of a node, if it is not. To be called before a
/// pointer to the node is cached. The node need not exist any more. Result: the index of the
/// region.
std::uint16_t MakeMine(const IXMLDOMNode* node);

/// Makes invalid all that this thread has cached, and what others have cached about `node` and the
/// chain that it is in. To be called before a node is destroyed or leaves its chain.
void InvalidateCaches(const IXMLDOMNode* node);

}  // namespace xmldom

#endif
