// What threads have cached of nodes, and how one learns that another has destroyed a node. Tested
// by tests/dom/NodeCache_test.cpp and tests/threads/.
//
// Each thread has a cache of its own, so that threads with documents of their own need no lock. A
// document may also pass from one thread to another and come back, and the other thread may have
// destroyed nodes that the first has in its cache. So an entry is valid until one of two things
// happens:
//  - The thread itself destroys or unlinks a node, any node. It clears the bits of all its entries.
//  - Another thread destroys or unlinks a node of the entry, or another node of the same chain. It
//    enters itself in g_apLastThread, where the thread of the entry was before: for the region of
//    memory where that node is, and for the region of the parent, which stands for the chain.
//
// A thread also enters itself for the region of a node before it caches a pointer to the node. When
// it finds another thread there, it clears the bits of its own entries that have nodes there.
//
// Why this is enough: let thread A cache a node, pass the document on, and thread B destroy the
// node. A was in the table for the region of the node. So B finds A there, or a thread that came
// after A, and enters itself unless it has come after A already. When the document is back, A finds
// B there, or a thread that came after B, and the entry is not valid. If A finds itself, it has
// entered itself again after B, and has cleared the bit of the entry when it did so. Passing a
// document on synchronises the two threads, as passing any data does, so that neither finds an
// older value than these. In what order other threads come does not matter. That is why relaxed
// loads and stores are enough.
//
// Regions that share an element of the table, and threads that share a region, only make more
// entries invalid. A thread that has ended stays in the table. A new thread whose cache is at the
// same address may be taken for it, which does no harm, because its cache is empty.

#include <xmldom/dom/NodeCache.h>

namespace xmldom {

__thread NodeCache g_nodeCache;

const NodeCache* g_apLastThread[1 << kIndexBits];

XMLDOM_COLD XMLDOM_NOINLINE void TakeRegions(unsigned index) {
  NodeCache& cache = CacheOfThread();
  cache.valid &= ~NodeCache::kOwnedBit;
  for (std::size_t i = 0; i < NodeCache::kEnds; ++i) {
    const ChainEnd& end = cache.ends[i];
    if (end.parentIndex == index || end.previousIndex == index || end.lastIndex == index) {
      cache.valid &= ~(1u << i);
    }
  }
  __atomic_store_n(&g_apLastThread[index], &cache, __ATOMIC_RELAXED);
}

XMLDOM_NOINLINE std::uint16_t MakeMine(const IXMLDOMNode* node) {
  const unsigned index = IndexOf(node);
  if (!IsMine(g_nodeCache, index)) TakeRegions(index);
  return static_cast<std::uint16_t>(index);
}

XMLDOM_NOINLINE void InvalidateCaches(const IXMLDOMNode* node) {
  g_nodeCache.valid = 0;
  MakeMine(node);
  MakeMine(node->m_pParent);  // It may be null, or dangle: only the address counts.
}

}  // namespace xmldom
