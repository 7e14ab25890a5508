#ifndef XMLDOM_DOM_NODECACHE_H
#define XMLDOM_DOM_NODECACHE_H

#include <xmldom/base/Export.h>
#include <xmldom/base/LiveCount.h>
#include <xmldom/base/WrapAround.h>
#include <xmldom/dom/XMLNode.h>

#include <climits>
#include <cstddef>
#include <cstdint>

// What a thread has cached of nodes, and how long the cached pointers may be used. NodeCache.cpp
// tells why they may, also when a document passes from one thread to another.

namespace xmldom {

/// A node that may be used as long as IsUnchanged says so.
struct CachedNode {
  IXMLDOMNode* node;    // or null
  unsigned long token;  // what TokenOf gave for it
};

/// A place in a chain: a node, and the one before it, whose link shows that an application has not
/// taken the node out by hand. Either may be null.
struct CachedPlace {
  CachedNode prior;
  CachedNode node;
};

/// The end of a chain, and its first node, which insertions and removals at the front keep up to
/// date. Only `previous` and `last` are dereferenced. `previous` is the place of the node before
/// the last; when the node that followed `last` was removed, it is the place of `last` itself. It
/// may also be empty, or a place of another chain, and counts only where IsLinked says so.
struct ChainEnd {
  IXMLDOMNode** head;  // the field that heads the chain
  IXMLDOMNode* first;
  unsigned long parentToken;
  CachedPlace previous;
  CachedNode last;
};

/// Nodes of one chain from which the node before another can be found (ChainMarks.h). `parent` and
/// `first` are only compared.
struct ChainMarks {
  static const std::size_t kMost = 28;  // marks

  const IXMLDOMNode* parent;
  const IXMLDOMNode* first;
  unsigned long parentToken;
  CachedPlace before;  // what was found last
  std::size_t count;   // of marks
  CachedNode marks[kMost];
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
/// each of its nodes, the parent among them, is unchanged.
struct NodeCache {
  static const std::size_t kEnds = 8;             // the most chains whose ends are cached
  static const unsigned kMarksBit = 1u << kEnds;  // of `marks`; the bits of `ends` are below it
  static const unsigned kOwnedBit = kMarksBit << 1;

  unsigned valid;
  unsigned notOfChildren;  // of the bits in `valid`, those of chains of siblings and attributes
  unsigned long token;     // the next that this thread may enter
  ChainMarks marks;
  ChainEnd ends[kEnds];
  ChainEnd uncachedEnd;  // of a chain that is not cached: its last node, and only within a call
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

/// The table of tokens has two to the power of this many elements.
const int kIndexBits = 10;

/// A token of the last change in each region of memory: that a node was destroyed there, or taken
/// from the children of one. No two changes have the same token; 0 stands for none. Several regions
/// share an element.
extern unsigned long g_aulTokens[1 << kIndexBits];

/// Whether any thread has taken tokens. As long as none has, the table is empty.
extern bool g_bHasTokens;

XMLDOM_ALWAYS_INLINE inline bool HasTokens() {
  return __builtin_expect(__atomic_load_n(&g_bHasTokens, __ATOMIC_RELAXED), false);
}

/// How many tokens a thread takes at once: all that have the upper half of their bits in common.
const unsigned long kTokensAtOnce = 1ul << (sizeof(long) * CHAR_BIT / 2);

/// Takes the next group of tokens from a counter of all tokens. Result: the last of the group,
/// which is used first. The group that begins at 0 is left out when the counter begins again: a
/// thread that has taken no tokens yet would take them for its own.
inline unsigned long LastOfNextGroup(unsigned long& next) {
  unsigned long last;
  do {
    last = __atomic_add_fetch(&next, kTokensAtOnce, __ATOMIC_RELAXED) - 1;
  } while (last < kTokensAtOnce);
  return last;
}

/// The region of memory where a node begins: 64 KiB, which hold some hundred nodes.
inline std::uintptr_t RegionOf(const IXMLDOMNode* node) {
  return reinterpret_cast<std::uintptr_t>(node) >> 16;
}

/// The region of no node.
const std::uintptr_t kNoRegion = ~static_cast<std::uintptr_t>(0);

/// The element for a node's region. The heaps of different threads begin at multiples of one power
/// of two; the multiplication spreads them over the table.
XMLDOM_WRAPS_AROUND __attribute__((always_inline)) inline unsigned long& ElementOf(
    const IXMLDOMNode* node) {
  return g_aulTokens[static_cast<std::uint32_t>(RegionOf(node)) * 0x9E3779B1u >> (32 - kIndexBits)];
}

/// The token of the last change in the region of a node. The node need not exist any more.
unsigned long StoredTokenOf(const IXMLDOMNode* node);

/// The same, which is quicker while there are no tokens.
XMLDOM_ALWAYS_INLINE inline unsigned long TokenOf(const IXMLDOMNode* node) {
  return HasTokens() ? StoredTokenOf(node) : 0;
}

/// Whether no other thread has changed anything in the region of a node since TokenOf gave `token`
/// for it. The node need not exist any more. True while there are no tokens, which is quicker asked
/// beforehand.
bool IsUnchanged(const NodeCache& cache, const IXMLDOMNode* node, unsigned long token);

inline bool IsUnchanged(const NodeCache& cache, const CachedNode& cached) {
  return IsUnchanged(cache, cached.node, cached.token);
}

/// Whether a place is that of a node, or of the one behind it.
XMLDOM_ALWAYS_INLINE inline bool Has(const CachedPlace& place, const IXMLDOMNode* node) {
  return place.prior.node == node || place.node.node == node;
}

inline bool IsUnchanged(const NodeCache& cache, const CachedPlace& place) {
  return IsUnchanged(cache, place.prior) && IsUnchanged(cache, place.node);
}

/// Whether the node of a place, which is unchanged, can be used as one of the children of `parent`.
XMLDOM_ALWAYS_INLINE inline bool IsLinked(const CachedPlace& place, const IXMLDOMNode* parent) {
  return place.prior.node != nullptr && place.node.node != nullptr &&
         place.prior.node->m_pNextSibling == place.node.node &&
         place.node.node->m_pParent == parent;
}

/// A node, and its token.
CachedNode CachedWithToken(IXMLDOMNode* node);

/// The same, which is quicker while there are no tokens.
XMLDOM_ALWAYS_INLINE inline CachedNode Cached(IXMLDOMNode* node) {
  return CachedNode{node, TokenOf(node)};
}

/// Enters a new token for the region of a node. To be called when there are other threads to find
/// it.
void EnterToken(NodeCache& cache, const IXMLDOMNode* node);

/// Forgets what is cached of owners, and tells other threads of a change in the region of a node,
/// which may be null or dangle. To be called for the parent of a node before the node leaves its
/// chain; for the node itself too, when what is cached of owners may have it (NodeOwners.cpp).
void NoteChange(const IXMLDOMNode* node);

/// The same for a caller that has the cache.
XMLDOM_ALWAYS_INLINE inline void NoteChange(NodeCache& cache, const IXMLDOMNode* node) {
  cache.valid &= ~NodeCache::kOwnedBit;
  if (!HasOneThread()) EnterToken(cache, node);
}

/// Takes every pointer to a node out of this thread's cache, and tells other threads of the change.
/// To be called before the node is destroyed. Result: whether anything else is cached. If not, the
/// call holds for all nodes of the region that are destroyed with this one.
bool ForgetNode(const IXMLDOMNode* node);

/// Forgets all that this thread has cached.
inline void ForgetAll() { g_nodeCache.valid = 0; }

/// Forgets all that this thread has cached, and what others have cached about the siblings that
/// follow a node, if there are any. To be called before they leave its chain. The parent alone does
/// not do, because a sibling need not name it: AddChild and appendChild link siblings along as they
/// are.
void ForgetFollowers(const IXMLDOMNode* node);

}  // namespace xmldom

#endif
