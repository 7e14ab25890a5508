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
// An application may take a node out by hand, and leave its parent and its next sibling as they
// were. So nothing that is cached is taken for the wanted node unless another node of the chain
// links to it: a mark only leads to the nodes behind it, and a place has the node before it. This
// is right unless several neighbours were taken out.
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

/// A node of the chain, and the one before it; null when that is not known.
struct Place {
  IXMLDOMNode* prior;
  IXMLDOMNode* node;
};

/// Looks for the node before `node` from `place` on, among so many. Result: whether it was found.
/// Out: `place` is where it was, or where the search has ended; its node is null behind the last.
XMLDOM_NOINLINE bool Search(Place& place, const IXMLDOMNode* node, std::size_t most) {
  IXMLDOMNode* prior = place.prior;
  IXMLDOMNode* at = place.node;
  bool isFound = false;
  for (; at != nullptr && most != 0; --most) {
    IXMLDOMNode* const next = at->m_pNextSibling;
    isFound = next == node;
    if (isFound) break;
    prior = at;
    at = next;
  }
  place = Place{prior, at};
  return isFound;
}

/// Searches the children of `parent` from a cached place on, which may be null, if that can be
/// used.
XMLDOM_NOINLINE bool SearchNear(const NodeCache& cache, const CachedPlace* cached,
                                const IXMLDOMNode* parent, const IXMLDOMNode* node, Place& place) {
  if (cached == nullptr) return false;
  place = Place{cached->prior.node, NodeAt(cache, *cached, parent)};
  return Search(place, node, kFewNodes);
}

/// Searches from `place` to the end of the chain, and leaves marks on the way.
bool SearchAndMark(ChainMarks& marks, Place& place, const IXMLDOMNode* node) {
  const std::size_t old = marks.count;
  std::size_t distance = kFewNodes;
  for (;;) {
    if (Search(place, node, distance)) return true;
    if (place.node == nullptr) return false;
    if (marks.count == ChainMarks::kMost) continue;
    CachedNode* level = marks.marks + old;
    level[marks.count++ - old] = Cached(place.node);
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
    marks.before = CachedPlace();
    marks.count = 0;
    cache.valid |= NodeCache::kMarksBit;
  }
  Place place = {nullptr, first};
  bool isFound = false;
  // Whoever goes backwards asks for the node before the one that was found last: these places would
  // not lead to it any sooner.
  if (node != marks.before.node.node) {
    isFound = SearchNear(cache, &marks.before, parent, node, place);
    if (!isFound) {
      place = Place{nullptr, first};
      // Not cached: somebody who goes backwards further on still needs what was found last there.
      if (Search(place, node, kFewNodes)) return place.node;
      isFound = SearchNear(cache, BeforeEnd(parent), parent, node, place);
    }
  }
  while (!isFound) {
    place = Place{nullptr, first};
    for (; marks.count != 0; --marks.count) {
      const CachedNode& mark = marks.marks[marks.count - 1];
      if (mark.node != node && IsIn(cache, mark, parent) && mark.node->m_pNextSibling != node) {
        place.node = mark.node;
        break;
      }
    }
    const bool isWhole = place.node == first;
    isFound = SearchAndMark(marks, place, node);
    if (isFound) break;
    marks.count = 0;
    if (isWhole) return nullptr;
  }
  marks.before = CachedPlace{Cached(place.prior), Cached(place.node)};
  return place.node;
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
