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
// in only three ways: it destroys or empties the node with the head of the chain, which drops the
// entry; it unlinks one node and links its neighbours, after which the rest of the chain is linked
// as before; or it cuts off all siblings that follow a node, and then everything is forgotten
// (ForgetFollowers). Applications can cut chains by hand; so every entry is compared with the links
// when it is used.
//
// A node can be in two chains. Let a, b and c have no parent and be linked in this order.
// p->appendChild(a) puts all three below p, but only a names p. q->appendChild(b) then puts b and c
// below q too. Removing b from q now also cuts the chain of p behind b. Therefore:
//  - Nothing is cached of the nodes behind the first one that names another parent.
//  - Everything is forgotten when a node is unlinked whose next sibling names another parent
//    (Unlink). A node in front of what is cached may have lost its parent since, because that was
//    destroyed, and have got a new one.
//  - One case is not noticed: the next sibling names the same new parent, which does not list it,
//    because somebody held the sibling when that parent was emptied or destroyed.
//
// Chains that no m_pFirstChild heads, those behind a node and those of attributes, may consist of
// nodes whose parent does not list them, because it has been cleared, loaded anew or destroyed, or
// because they are attributes. Taking one of these out of another chain leaves an entry as it was.
// So every entry for such a chain is dropped whenever a node is unlinked.
//
// What other threads do is learned from tokens. A thread that destroys a node enters a new token in
// g_aulTokens, for the region of memory where that node is; one that destroys or unlinks a node
// enters one for the region of the parent, which stands for the parent's chains. A node that is
// unlinked no longer names the parent. Of a subtree that is destroyed as a whole, the parent of its
// top node is enough: the other parents are destroyed too. An entry holds the tokens that were in
// the table for its nodes when it was made. It may be used only while the same ones are there, or
// one that this thread has entered itself.
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
// While the process has one thread, no other has anything cached, and no tokens are entered. As
// long as none has been entered at all, none need be looked for either: a thread that gets a
// document back sees that others have entered some as it would see the tokens themselves.
//
// Regions that share an element of the table, and threads that share a region, only make more
// entries invalid, and only when nodes are destroyed or unlinked there. Threads take tokens from a
// common counter, in groups that tell from whom a token is. On a machine of 32 bits the counter
// begins again after 65,536 groups; an entry, or a group in use, would then have to be as old as
// that to be taken for another one.

#include <xmldom/dom/NodeCache.h>

namespace xmldom {

__thread NodeCache g_nodeCache;

unsigned long g_aulTokens[1 << kIndexBits];

bool g_bHasTokens = false;

namespace {

// The first token of the next group. The first group of all is nobody's, so that 0 is no token.
unsigned long g_ulNextTokens = kTokensAtOnce;

/// Whether an address is that of a node or of a field of it. The difference to an address before
/// the node is large.
XMLDOM_WRAPS_AROUND inline bool IsWithin(const IXMLDOMNode* node, const void* address) {
  return reinterpret_cast<std::uintptr_t>(address) - reinterpret_cast<std::uintptr_t>(node) <
         sizeof(IXMLDOMNode);
}

/// Takes every pointer to a node out of the cache.
XMLDOM_NOINLINE void TakeOut(NodeCache& cache, const IXMLDOMNode* node) {
  unsigned left = cache.valid & (NodeCache::kMarksBit - 1);
  for (; left != 0; left &= left - 1) {
    const int index = __builtin_ctz(left);
    const ChainEnd& end = cache.ends[index];
    if (IsWithin(node, end.head) || end.first == node || Has(end.previous, node) ||
        end.last.node == node) {
      cache.valid &= ~(1u << index);
    }
  }
  ChainMarks& marks = cache.marks;
  if (marks.parent == node || marks.first == node) cache.valid &= ~NodeCache::kMarksBit;
  if (Has(marks.before, node)) marks.before = CachedPlace();
  for (std::size_t i = 0; i < marks.count; ++i) {
    if (marks.marks[i].node == node) marks.marks[i].node = nullptr;
  }
}

}  // namespace

XMLDOM_COLD XMLDOM_NOINLINE unsigned long StoredTokenOf(const IXMLDOMNode* node) {
  return __atomic_load_n(&ElementOf(node), __ATOMIC_RELAXED);
}

XMLDOM_COLD XMLDOM_NOINLINE CachedNode CachedWithToken(IXMLDOMNode* node) {
  return CachedNode{node, StoredTokenOf(node)};
}

XMLDOM_COLD XMLDOM_NOINLINE bool IsUnchanged(const NodeCache& cache, const IXMLDOMNode* node,
                                             unsigned long token) {
  const unsigned long now = StoredTokenOf(node);
  return now == token || (now ^ cache.token) < kTokensAtOnce;
}

// A token of another thread that is there may be for a change that this thread has not seen yet,
// and its own token would hide that.
XMLDOM_COLD XMLDOM_NOINLINE void EnterToken(NodeCache& cache, const IXMLDOMNode* node) {
  // Tokens are used in falling order; the last of a group is never used, as that of no group is 0.
  if (cache.token % kTokensAtOnce == 0) {
    cache.token = LastOfNextGroup(g_ulNextTokens);
    __atomic_store_n(&g_bHasTokens, true, __ATOMIC_RELAXED);
  }
  const unsigned long old = __atomic_exchange_n(&ElementOf(node), cache.token, __ATOMIC_RELAXED);
  if (old != 0 && (old ^ cache.token) >= kTokensAtOnce) cache.valid = 0;
  --cache.token;
}

XMLDOM_NOINLINE void NoteChange(const IXMLDOMNode* node) { NoteChange(CacheOfThread(), node); }

XMLDOM_NOINLINE bool ForgetNode(const IXMLDOMNode* node) {
  NodeCache& cache = CacheOfThread();
  cache.valid &= ~NodeCache::kOwnedBit;
  if (cache.valid != 0) TakeOut(cache, node);
  if (!HasOneThread()) EnterToken(cache, node);
  return cache.valid != 0;
}

XMLDOM_COLD XMLDOM_NOINLINE void ForgetFollowers(const IXMLDOMNode* node) {
  for (node = node->m_pNextSibling; node != nullptr; node = node->m_pNextSibling) {
    ForgetAll();
    NoteChange(node);
    NoteChange(node->m_pParent);
  }
}

}  // namespace xmldom
