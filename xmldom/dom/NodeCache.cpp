// What threads have cached of nodes, and how one learns that another has destroyed a node. Tested
// by tests/dom/NodeCache_test.cpp and tests/threads/.
//
// Each thread has a cache of its own, so that threads with documents of their own need no lock. A
// document may also pass from one thread to another and come back, and the other thread may have
// destroyed nodes that the first has in its cache.
//
// What the thread itself does keeps its cache right: before it destroys a node, it takes all
// pointers to that node out, and every entry whose chain is headed by a field of that node
// (ForgetNode). An entry never has pointers to a chain that is gone, because a member cuts a chain
// in only three ways: it destroys the node with the head of the chain, which drops the entry; it
// unlinks one node and links its neighbours, after which the rest of the chain is linked as before;
// or it cuts off all siblings that follow a node, and then everything is forgotten
// (ForgetFollowers). Applications can cut chains by hand; so every entry is compared with the links
// when it is used.
//
// What other threads do is learned from tokens. A thread that destroys or unlinks a node enters a
// new token in g_aulTokens: for the region of memory where that node is, and for the region of the
// parent, which stands for the parent's chains. Of a subtree that is destroyed as a whole, the
// parent of its top node is enough: the other parents are destroyed too. An entry holds the tokens
// that were in the table for its nodes when it was made. It may be used only while the same ones
// are there, or one that this thread has entered itself.
//
// Why this is enough: let thread A cache a node, pass the document on, and thread B destroy the
// node. B enters a token that nobody has used before. Passing a document on synchronises the two
// threads, as passing any data does. So A finds that token when the document is back, or one that
// was entered after it. Neither is the token in A's entry, which was there before; each token is
// entered once, so that an earlier one never comes back. If the token that A finds is A's own, then
// the first of A's tokens behind that of B took the place of a token of another thread. A sees that
// when it enters its token, because it takes the old one out in the same operation, and forgets
// everything. A's entry was made earlier than that: A had no document with the node in it between
// B's change and the return of the document. Relaxed operations are enough for this, because only
// the order of the changes of one element matters.
//
// Regions that share an element of the table, and threads that share a region, only make more
// entries invalid, and only when nodes are destroyed or unlinked there. Threads take tokens from a
// common counter, in groups that tell from whom a token is. On a machine of 32 bits the counter
// begins again after 65,536 groups; an entry, or a group in use, would then have to be as old as
// that to be taken for another one.

#include <xmldom/dom/NodeCache.h>

#include <xmldom/base/LiveCount.h>

namespace xmldom {

__thread NodeCache g_nodeCache;

unsigned long g_aulTokens[1 << kIndexBits];

namespace {

// The first token of the next group. The first group of all is nobody's, so that 0 is no token.
unsigned long g_ulNextTokens = kTokensAtOnce;

/// Enters a new token for the region of a node. A token of another thread that was there may be for
/// a change that this thread has not seen yet, and its own token would hide that.
inline void Enter(NodeCache& cache, const IXMLDOMNode* node) {
  // Tokens are used in falling order; the last of a group is never used, as that of no group is 0.
  if (cache.token % kTokensAtOnce == 0) {
    cache.token = __atomic_add_fetch(&g_ulNextTokens, kTokensAtOnce, __ATOMIC_RELAXED) - 1;
  }
  const unsigned long old = Exchange(ElementOf(node), cache.token);
  if (old != 0 && (old ^ cache.token) >= kTokensAtOnce) cache.valid = 0;
  --cache.token;
}

/// Compares a node with cached pointers.
class Comparison {
 public:
  explicit Comparison(const IXMLDOMNode* node)
      : m_node(reinterpret_cast<std::uintptr_t>(node)), m_isMatch(false), m_isNear(false) {}

  /// Compares with the address of a node, or of a field of one.
  void With(const void* address) {
    const std::uintptr_t distance = reinterpret_cast<std::uintptr_t>(address) - m_node;
    // Whatever begins in the node's region has all its fields within this distance.
    const std::uintptr_t most = (1 << 16) + sizeof(IXMLDOMNode);
    if (distance + most <= 2 * most) m_isNear = true;
    if (distance < sizeof(IXMLDOMNode)) m_isMatch = true;
  }

  /// Whether one of the addresses since the last call is that of the node or of a field of it.
  bool TakeMatch() {
    const bool isMatch = m_isMatch;
    m_isMatch = false;
    return isMatch;
  }

  /// Whether one of the addresses may belong to a node of the same region.
  bool IsNear() const { return m_isNear; }

 private:
  const std::uintptr_t m_node;
  bool m_isMatch;
  bool m_isNear;
};

/// Takes every pointer to a node out of the cache. Result: as of ForgetNode.
XMLDOM_NOINLINE bool TakeOut(NodeCache& cache, const IXMLDOMNode* node) {
  Comparison comparison(node);
  for (std::size_t i = 0; i < NodeCache::kEnds; ++i) {
    if ((cache.valid >> i & 1) == 0) continue;
    const ChainEnd& end = cache.ends[i];
    comparison.With(end.head);
    comparison.With(end.first);
    comparison.With(end.previous.node);
    comparison.With(end.last.node);
    if (comparison.TakeMatch()) cache.valid &= ~(1u << i);
  }
  if ((cache.valid & NodeCache::kMarksBit) != 0) {
    ChainMarks& marks = cache.marks;
    comparison.With(marks.parent);
    comparison.With(marks.first);
    if (comparison.TakeMatch()) cache.valid &= ~NodeCache::kMarksBit;
    for (std::size_t i = 0; i <= marks.count; ++i) {
      CachedNode& mark = i == 0 ? marks.before : marks.marks[i - 1];
      comparison.With(mark.node);
      if (comparison.TakeMatch()) mark.node = nullptr;
    }
  }
  return comparison.IsNear();
}

}  // namespace

XMLDOM_NOINLINE void NoteChange(const IXMLDOMNode* node) {
  NodeCache& cache = CacheOfThread();
  cache.valid &= ~NodeCache::kOwnedBit;
  Enter(cache, node);
}

XMLDOM_NOINLINE bool ForgetNode(const IXMLDOMNode* node) {
  NodeCache& cache = CacheOfThread();
  cache.valid &= ~NodeCache::kOwnedBit;
  const bool isNear = cache.valid != 0 && TakeOut(cache, node);
  Enter(cache, node);
  return isNear;
}

XMLDOM_COLD XMLDOM_NOINLINE void ForgetFollowers(const IXMLDOMNode* node) {
  for (node = node->m_pNextSibling; node != nullptr; node = node->m_pNextSibling) {
    ForgetAll();
    NoteChange(node);
    NoteChange(node->m_pParent);
  }
}

}  // namespace xmldom
