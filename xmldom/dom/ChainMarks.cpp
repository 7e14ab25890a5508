// The marks in the chain of children that was gone through backwards last. Tested by
// tests/dom/ChainMarks_test.cpp.
//
// A walk from the first child finds the node before any other. Going backwards in this way would be
// quadratic. So when somebody asks for the node before the one that was found last, the walk leaves
// marks: at a quarter, a half and three quarters of its way, then in the same manner in the last
// quarter, and so on until less than 16 nodes are left. The next walks begin at the last mark. When
// the marks up to there are used up, the one before them is the last, and the walk that begins
// there leaves marks in its turn. So each level of quarters is walked through once, and there is
// never more than three marks of a level.
//
// Correctness needs neither the order of the marks nor their distances. A chain has only one node
// whose next sibling is the wanted one. So whatever a walk from a node of the chain finds is what a
// walk from the first child would find, and when it finds nothing, that other walk is made. It is
// enough that a mark is in the chain: it exists (NodeCache.cpp), and it has the parent whose
// children are searched. A member that takes a node out of a chain sets the parent to null. Chains
// without marks that somebody may remove at random cost one walk for each removal, as without a
// cache: marks are made for walks backwards alone.

#include <xmldom/dom/ChainMarks.h>

#include <xmldom/dom/NodeCache.h>
#include <xmldom/dom/NodeChain.h>
#include <xmldom/support/LogException.h>

#include <cstddef>

namespace xmldom {

namespace {

/// A walk from a node, to the one before the wanted one or the end of the chain.
struct Walk {
  IXMLDOMNode* place;
  std::size_t steps;

  explicit Walk(IXMLDOMNode* start) : place(start), steps(0) {}

  /// Result: the node before the wanted one; null when it is not among the next ones.
  IXMLDOMNode* FindBefore(const IXMLDOMNode* node, std::size_t most) {
    for (; place != nullptr && steps <= most; ++steps, place = place->m_pNextSibling) {
      if (place->m_pNextSibling == node) return place;
    }
    return nullptr;
  }
};

const std::size_t kAll = static_cast<std::size_t>(-1);

/// Whether a node can be used to search the children of `parent`.
bool IsIn(const NodeCache& cache, const CachedNode& cached, const IXMLDOMNode* parent) {
  return cached.node != nullptr && IsUnchanged(cache, cached) && cached.node->m_pParent == parent;
}

/// Leaves marks behind `node` on the way of a walk of so many steps from there.
void LeaveMarks(ChainMarks& marks, IXMLDOMNode* node, std::size_t steps) {
  while (steps >= kFewNodes && marks.count + 3 <= ChainMarks::kMost) {
    const std::size_t quarter = steps / 4;
    for (int i = 0; i < 3; ++i) {
      for (std::size_t step = 0; step < quarter; ++step) node = node->m_pNextSibling;
      marks.marks[marks.count++] = Cached(node);
    }
    steps -= 3 * quarter;
  }
}

}  // namespace

IXMLDOMNode* FindBefore(IXMLDOMNode* node) {
  const IXMLDOMNode* parent = node->m_pParent;
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
  const bool isBackwards = node == marks.before.node;
  IXMLDOMNode* before = nullptr;
  if (!isBackwards) {
    before = Walk(first).FindBefore(node, kFewNodes);
    if (before != nullptr) return before;
    if (IsIn(cache, marks.before, parent)) {
      before = Walk(marks.before.node).FindBefore(node, kFewNodes);
    }
    if (before == nullptr) before = BeforeLast(node);
  }
  if (before == nullptr) {
    for (; marks.count != 0; --marks.count) {
      const CachedNode& mark = marks.marks[marks.count - 1];
      if (mark.node != node && IsIn(cache, mark, parent)) break;
    }
    IXMLDOMNode* start = marks.count != 0 ? marks.marks[marks.count - 1].node : first;
    Walk walk(start);
    before = walk.FindBefore(node, kAll);
    if (before == nullptr) {
      if (marks.count == 0) return nullptr;
      marks.count = 0;
      before = Walk(first).FindBefore(node, kAll);
      if (before == nullptr) return nullptr;
    } else if (isBackwards || marks.count != 0) {
      LeaveMarks(marks, start, walk.steps);
    }
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
