// The marks in the chain of children that was searched last. Tested by
// tests/dom/ChainMarks_test.cpp.
//
// A search from the first child finds the node before any other. Going backwards in this way would
// be quadratic. So each search leaves marks on its way: four to eight, at equal distances, which
// double while the way gets longer. The next search begins at the last mark, and leaves marks in
// the rest in its turn, and so on until fewer than eight nodes are left. Whoever goes backwards
// comes to the last mark; then the search begins at the one before it. So whoever goes backwards
// through a whole chain has each part of it searched once for every level of marks, and there are
// as many levels as the logarithm of the length. A level has fewer marks when there is no room for
// eight more.
//
// Correctness needs neither the order of the marks nor their distances. A chain has only one node
// whose next sibling is the wanted one. So whatever a search from a node of the chain finds is what
// one from the first child would find, and when it finds nothing, that one is made. It is enough
// that a mark is in the chain: it exists (NodeCache.cpp), and it has the parent whose children are
// searched. A member that takes one node out of a chain sets its parent to null; one that cuts off
// several makes the thread forget the chain.
//
// An application may take a node out by hand, and leave its parent and its next sibling as they
// were. So nothing that is cached is taken for the wanted node unless another node of the chain
// links to it: a mark only leads to the nodes behind it, and a place has the node before it. This
// is right unless several neighbours were taken out, together or one after the other.
//
// A chain may have nodes of another parent. Nothing is cached behind them (NodeCache.cpp).
//
// At places in random order, marks gain nothing: they spare as many steps as the searches cost that
// begin at a mark behind the wanted node and find nothing.

#include <xmldom/dom/ChainMarks.h>

#include <xmldom/dom/NodeCache.h>
#include <xmldom/dom/NodeChain.h>
#include <xmldom/support/LogException.h>

#include <algorithm>
#include <cstddef>

namespace xmldom {

namespace {

/// The least distance of marks, and the most that one search leaves.
const std::size_t kLeastDistance = 4;
const std::size_t kMostOfLevel = 8;

/// A node of the chain, and the one before it; null when that is not known.
struct Place {
  IXMLDOMNode* prior;
  IXMLDOMNode* node;
};

/// Looks for the node before `node` from `place` on, among so many. Result: whether it was found.
/// Out: `place` is where it was, or where the search has ended; its node is null behind the last.
/// `isOfOneParent` is false when one of the nodes up to there has another parent than `node`, and
/// otherwise as it was.
XMLDOM_ALWAYS_INLINE inline bool Search(Place& place, const IXMLDOMNode* node, std::size_t most,
                                        bool& isOfOneParent) {
  for (; place.node != nullptr && most != 0; --most) {
    IXMLDOMNode* const next = place.node->m_pNextSibling;
    isOfOneParent &= place.node->m_pParent == node->m_pParent;
    if (next == node) return true;
    place = Place{place.node, next};
  }
  return false;
}

/// Searches from `place` among so few nodes that nothing need be cached. Result: where it was
/// found, or null, also when what was found there may not be cached.
XMLDOM_NOINLINE Place SearchNear(Place place, const IXMLDOMNode* node) {
  bool isOfOneParent = true;
  return Search(place, node, kFewNodes, isOfOneParent) && isOfOneParent ? place
                                                                        : Place{nullptr, nullptr};
}

/// Searches from `place` to the end of the chain, and leaves marks on the way, as long as
/// `isOfOneParent` is true. Out: `place` and `isOfOneParent` as for Search.
XMLDOM_ALWAYS_INLINE inline bool SearchAndMark(ChainMarks& marks, Place& place,
                                               const IXMLDOMNode* node, bool& isOfOneParent) {
  CachedNode* const level = marks.marks + marks.count;
  const std::size_t most = std::min(ChainMarks::kMost - marks.count, kMostOfLevel) / 2 * 2;
  std::size_t count = 0;
  std::size_t distance = kLeastDistance;
  bool isFound;
  while (!(isFound = Search(place, node, distance, isOfOneParent)) && place.node != nullptr) {
    if (most == 0 || !isOfOneParent) continue;
    level[count++] = Cached(place.node);
    if (count < most) continue;
    count = most / 2;
    for (std::size_t i = 0; i < count; ++i) level[i] = level[2 * i + 1];
    distance *= 2;
  }
  marks.count += count;
  return isFound;
}

/// Takes marks away until the last one leads to the node before `node`, if it is in the chain.
/// Result: the node of that mark, or the first child when there is none.
XMLDOM_ALWAYS_INLINE inline IXMLDOMNode* LastUsableMark(const NodeCache& cache, ChainMarks& marks,
                                                        IXMLDOMNode* parent,
                                                        const IXMLDOMNode* node) {
  for (; marks.count != 0; --marks.count) {
    const CachedNode& mark = marks.marks[marks.count - 1];
    if (mark.node == nullptr || mark.node == node) continue;
    if (HasTokens() && !IsUnchanged(cache, mark)) continue;
    if (mark.node->m_pParent == parent && mark.node->m_pNextSibling != node) return mark.node;
  }
  return parent->m_pFirstChild;
}

/// Forgets the place that was found last, when another thread has changed something there. Result:
/// whether no other thread has changed what the parent stands for.
XMLDOM_COLD XMLDOM_NOINLINE bool Refresh(NodeCache& cache) {
  ChainMarks& marks = cache.marks;
  if (!IsUnchanged(cache, marks.before)) marks.before = CachedPlace();
  return IsUnchanged(cache, marks.parent, marks.parentToken);
}

/// Forgets all marks, for those of the children of `parent`.
XMLDOM_COLD XMLDOM_NOINLINE void Begin(NodeCache& cache, const IXMLDOMNode* parent) {
  ChainMarks& marks = cache.marks;
  marks.parent = parent;
  marks.first = parent->m_pFirstChild;
  marks.parentToken = TokenOf(parent);
  marks.before = CachedPlace();
  marks.count = 0;
  cache.valid |= NodeCache::kMarksBit;
}

/// The node before `node`, which is not the last child with a cached place. Result and effects: as
/// for FindBefore.
XMLDOM_NOINLINE IXMLDOMNode* FindWithMarks(IXMLDOMNode* node) {
  IXMLDOMNode* const parent = node->m_pParent;
  IXMLDOMNode* const first = parent->m_pFirstChild;
  NodeCache& cache = CacheOfThread();
  ChainMarks& marks = cache.marks;
  if ((cache.valid & NodeCache::kMarksBit) == 0 || marks.parent != parent || marks.first != first ||
      (HasTokens() && !Refresh(cache))) {
    Begin(cache, parent);
  }
  Place place = {nullptr, nullptr};
  // Whoever goes backwards asks for the node before the one that was found last: these places would
  // not lead to it any sooner.
  if (node != marks.before.node.node) {
    if (IsLinked(marks.before, parent)) {
      place = SearchNear(Place{marks.before.prior.node, marks.before.node.node}, node);
    }
    if (place.node == nullptr) {
      // Not cached: somebody who goes backwards further on still needs what was found last there.
      place = SearchNear(Place{nullptr, first}, node);
      if (place.node != nullptr) return place.node;
    }
  }
  bool isOfOneParent = true;
  while (place.node == nullptr) {
    place = Place{nullptr, LastUsableMark(cache, marks, parent, node)};
    const bool isWhole = place.node == first;
    isOfOneParent = true;
    if (SearchAndMark(marks, place, node, isOfOneParent)) break;
    marks.count = 0;
    if (isWhole) return nullptr;
  }
  if (isOfOneParent) marks.before = CachedPlace{Cached(place.prior), Cached(place.node)};
  return place.node;
}

}  // namespace

XMLDOM_NOINLINE IXMLDOMNode* FindBefore(IXMLDOMNode* node) {
  IXMLDOMNode* const beforeLast = BeforeLast(node);
  return beforeLast != nullptr ? beforeLast : FindWithMarks(node);
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
