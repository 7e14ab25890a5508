// What threads have cached of nodes, and how one learns that another has destroyed a node. Tested
// by tests/dom/NodeCache_test.cpp and tests/threads/.
//
// Each thread has a cache of its own, so that threads with documents of their own need no lock. A
// document may also pass from one thread to another and come back, and the other thread may have
// destroyed nodes that the first has in its cache. So an entry is valid until one of two things
// happens:
//  - The thread itself destroys or unlinks a node, any node. It clears the bits of all its entries.
//  - Another thread destroys or unlinks a node of the entry, or another node of the same chain. It
//    enters a new token in g_aulTokens: for the region of memory where that node is, and for the
//    region of the parent, which stands for the parent's chains. Of a subtree that is destroyed as
//    a whole, the parent of its top node is enough: the other parents are destroyed too.
//
// An entry holds the tokens that were in the table for its nodes when it was made, and may be used
// only while the same ones are there.
//
// Why this is enough: let thread A cache a node, pass the document on, and thread B destroy the
// node. B enters a token that nobody has used before. Passing a document on synchronises the two
// threads, as passing any data does. So A finds that token when the document is back, or one that
// was entered after it, and neither is the token in A's entry, which was there before. Each token
// is entered once, so that an earlier one never comes back, in whatever order other threads enter
// theirs. That is why relaxed loads and stores are enough, and no token is lost that matters when
// two threads enter theirs at the same time.
//
// Regions that share an element of the table, and threads that share a region, only make more
// entries invalid, and only when nodes are destroyed or unlinked there. Threads take tokens from a
// common counter, some thousand at once. On a machine of 32 bits they begin again after four
// thousand million; an entry would then have to be as old as that to be taken for a new one.

#include <xmldom/dom/NodeCache.h>

namespace xmldom {

__thread NodeCache g_nodeCache;

unsigned long g_aulTokens[1 << kIndexBits];

namespace {

const unsigned kTokensAtOnce = 4096;

unsigned long g_ulTokens = 0;  // how many tokens threads have taken

/// A token that nobody has used.
inline unsigned long NewToken(NodeCache& cache) {
  if (cache.tokensLeft == 0) {
    cache.tokensLeft = kTokensAtOnce;
    cache.token = __atomic_fetch_add(&g_ulTokens, kTokensAtOnce, __ATOMIC_RELAXED);
  }
  --cache.tokensLeft;
  return ++cache.token;
}

inline void Enter(const IXMLDOMNode* node, unsigned long token) {
  __atomic_store_n(&ElementOf(node), token, __ATOMIC_RELAXED);
}

}  // namespace

XMLDOM_NOINLINE void NoteChange(const IXMLDOMNode* node) { Enter(node, NewToken(CacheOfThread())); }

XMLDOM_NOINLINE void InvalidateCaches(const IXMLDOMNode* node) {
  NodeCache& cache = CacheOfThread();
  cache.valid = 0;
  const unsigned long token = NewToken(cache);
  Enter(node, token);
  Enter(node->m_pParent, token);  // It may be null, or dangle: only the address counts.
}

XMLDOM_COLD XMLDOM_NOINLINE void InvalidateFollowers(const IXMLDOMNode* node) {
  for (node = node->m_pNextSibling; node != nullptr; node = node->m_pNextSibling) {
    InvalidateCaches(node);
  }
}

}  // namespace xmldom
