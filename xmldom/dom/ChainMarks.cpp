// The marks in the chain of children that was searched last. Tested by
// tests/dom/ChainMarks_test.cpp.
//
// A search from the first child finds the node before any other. Going backwards in this way would
// be quadratic. So each search leaves marks on its way: two or three, at equal distances, which
// double while the way gets longer. The next search begins at the last mark, and leaves marks in
// the rest in its turn, and so on until fewer than 16 nodes are left. Whoever goes backwards comes
// to the last mark; then the search begins at the one before it. So whoever goes backwards through
// a whole chain has each part of it searched once or twice for every level of marks, and there are
// as many levels as the logarithm of the length. Each level has three marks at most.
//
// Correctness needs neither the order of the marks nor their distances. A chain has only one node
// whose next sibling is the wanted one. So whatever a search from a node of the chain finds is what
// one from the first child would find, and when it finds nothing, that one is made. It is enough
// that a mark is in the chain: it exists (NodeCache.cpp), and it has the parent whose children are
// searched. A member that takes a node out of a chain sets its parent to null.
//
// At places in random order, marks gain nothing: they spare as many steps as the searches cost that
// begin at a mark behind the wanted node and find nothing.

#include <xmldom/dom/ChainMarks.h>

#include <xmldom/dom/NodeCache.h>
#include <xmldom/dom/NodeChain.h>
#include <xmldom/support/LogException.h>

#include <cstddef>

namespace xmldom {

namespace {

/// Looks for the node before `node` from `place` on, among so many. Result: that node, or null.
/// Out: where the search has ended; null behind the last of the chain.
XMLDOM_NOINLINE IXMLDOMNode* Search(IXMLDOMNode*& place, const IXMLDOMNode* node,
                                    std::size_t most) {
  for (; place != nullptr && most != 0; --most, place = place->m_pNextSibling) {
    if (place->m_pNextSibling == node) return place;
  }
  return nullptr;
}

/// Searches the children of `parent` from a cached node on, if that can be used.
XMLDOM_NOINLINE IXMLDOMNode* SearchNear(const NodeCache& cache, const CachedNode& cached,
                                        const IXMLDOMNode* parent, const IXMLDOMNode* node) {
  if (!IsIn(cache, cached, parent)) return nullptr;
  IXMLDOMNode* place = cached.node;
  return Search(place, node, kFewNodes);
}

/// Searches from `place` to the end of the chain, and leaves marks on the way.
IXMLDOMNode* SearchAndMark(ChainMarks& marks, IXMLDOMNode* place, const IXMLDOMNode* node) {
  const std::size_t old = marks.count;
  std::size_t distance = kFewNodes;
  for (;;) {
    IXMLDOMNode* before = Search(place, node, distance);
    if (place == nullptr || before != nullptr) return before;
    if (marks.count == ChainMarks::kMost) continue;
    CachedNode* level = marks.marks + old;
    level[marks.count++ - old] = Cached(place);
    if (marks.count - old == 4) {
      level[0] = level[1];
      level[1] = level[3];
      marks.count = old + 2;
      distance *= 2;
    }
  }
}

}  // namespace

IXMLDOMNode* FindBefore(IXMLDOMNode* node) {
  IXMLDOMNode* const parent = node->m_pParent;
  IXMLDOMNode* const first = parent->m_pFirstChild;
  NodeCache& cache = CacheOfThread();
  ChainMarks& marks = cache.marks;
  if ((cache.valid & NodeCache::kMarksBit) == 0 || marks.parent != parent || marks.first != first ||
      !IsUnchanged(cache, parent, marks.parentToken)) {
    marks.parent = parent;
    marks.first = first;
    marks.parentToken = TokenOf(parent);
    marks.before.node = nullptr;
    marks.count = 0;
    cache.valid |= NodeCache::kMarksBit;
  }
  IXMLDOMNode* before = nullptr;
  // Whoever goes backwards asks for the node before the one that was found last: these places would
  // not lead to it any sooner.
  if (node != marks.before.node) {
    before = SearchNear(cache, marks.before, parent, node);
    if (before == nullptr) {
      IXMLDOMNode* place = first;
      before = Search(place, node, kFewNodes);
      // Not cached: somebody who goes backwards further on still needs what was found last there.
      if (before != nullptr) return before;
      before = SearchNear(cache, BeforeEnd(parent), parent, node);
    }
  }
  while (before == nullptr) {
    IXMLDOMNode* start = first;
    for (; marks.count != 0; --marks.count) {
      const CachedNode& mark = marks.marks[marks.count - 1];
      if (mark.node != node && IsIn(cache, mark, parent)) {
        start = mark.node;
        break;
      }
    }
    before = SearchAndMark(marks, start, node);
    if (before != nullptr) break;
    marks.count = 0;
    if (start == first) return nullptr;
  }
  marks.before = Cached(before);
  return before;
}

IXMLDOMNode* PreviousOf(IXMLDOMNode* node) {
  IXMLDOMNode* before = FindBefore(node);
  if (before == nullptr) {
    throw Exception("IXMLDOMNode::get_previousSibling", "Call failed, no previous sibling",
                    nullptr);
  }
  return before;
}

}  // namespace xmldom
