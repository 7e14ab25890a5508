// Searches a tree for what a path of the tool selects. The library is asked when it understands the
// path; otherwise the search goes from step to step here.
// Tested by tests/tool/PathSearch_test.cpp.

#include <tools/document/PathSearch.h>

#include <tools/document/DocumentOrder.h>
#include <tools/document/PathSteps.h>
#include <tools/document/PathSyntax.h>

#include <xmldom/dom/XMLDocument.h>
#include <xmldom/xmldom_ptr.h>

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <functional>
#include <unordered_map>

namespace tool {

namespace {

typedef std::vector<IXMLDOMNode*> Nodes;

bool HasDots(const PathStep& step) { return step.name[0] == '.'; }

bool HasAttribute(const SearchPath& path, const IXMLDOMNode* element) {
  return path.attribute.empty() || FindAttribute(element, path.attribute) != nullptr;
}

/// What the end of a path makes of the element that its steps lead to. Result: null when the
/// element lacks the attribute.
IXMLDOMNode* NodeAt(const SearchPath& path, IXMLDOMNode* element) {
  return path.attribute.empty() ? element : FindAttribute(element, path.attribute);
}

/// Follows the steps of a path level by level, from any number of nodes one after the other.
class StepByStep {
 public:
  StepByStep(const SearchPath& path, PathComparisons& comparisons)
      : m_path(path), m_comparisons(comparisons) {}

  /// Appends what the path selects from `start`.
  void Select(IXMLDOMNode* start, Nodes& selected) {
    m_nodes.assign(1, start);
    for (const PathStep& step : m_path.steps) {
      m_next.clear();
      for (IXMLDOMNode* node : m_nodes) TakeStep(step, node, m_comparisons, m_next);
      m_nodes.swap(m_next);
    }
    for (IXMLDOMNode* element : m_nodes) {
      IXMLDOMNode* const node = NodeAt(m_path, element);
      if (node != nullptr) selected.push_back(node);
    }
  }

 private:
  const SearchPath& m_path;
  PathComparisons& m_comparisons;
  Nodes m_nodes;
  Nodes m_next;
};

/// The single search, by the rules of the library. An element that a step selects is followed down
/// by the next step; when that finds nothing, and for any other element, a path that begins with
/// "//" begins anew among the children. What was searched once is never searched again: it has
/// failed, or will be gone on with.
class DepthFirst {
 public:
  DepthFirst(const SearchPath& path, PathComparisons& comparisons)
      : m_path(path), m_comparisons(comparisons) {}

  IXMLDOMNode* Find(IXMLDOMNode* start) {
    Follow(start, 0);
    while (m_found == nullptr && !m_open.empty()) {
      Children& children = *m_open.back().children;
      if (children.next != nullptr) {
        Try(children);
      } else if (m_path.isAnywhere && !m_open.back().isAnew) {
        m_open.back() = {m_open.back().element, &ChildrenOf(m_open.back().element, 0), true};
      } else {
        m_open.pop_back();
      }
    }
    return m_found;
  }

 private:
  /// The children of a node while they are searched with one step.
  struct Children {
    std::size_t step;
    Nodes selected;      // by the step
    std::size_t passed;  // how many of these have been tried
    IXMLDOMNode* next;   // the child to try; null behind the last
  };
  /// What a search of children is found by.
  struct Key {
    const IXMLDOMNode* parent;
    std::size_t step;

    bool operator==(const Key& other) const { return parent == other.parent && step == other.step; }
  };
  struct KeyHash {
    std::size_t operator()(const Key& key) const {
      return std::hash<const void*>()(key.parent) + 31 * key.step;
    }
  };
  struct Open {
    IXMLDOMNode* element;
    Children* children;  // of the element, or of the one to which dots lead from it
    bool isAnew;         // whether the path begins anew among them
  };

  Children& ChildrenOf(IXMLDOMNode* parent, std::size_t step) {
    const auto placed = m_searches.emplace(Key{parent, step}, Children());
    Children& children = placed.first->second;
    if (placed.second) {
      children = {step, {}, 0, ElementFrom(parent->m_pFirstChild)};
      TakeStep(m_path.steps[step], parent, m_comparisons, children.selected);
    }
    return children;
  }

  void Try(Children& children) {
    IXMLDOMNode* const child = children.next;
    children.next = ElementFrom(child->m_pNextSibling);
    const bool isSelected =
        children.passed < children.selected.size() && children.selected[children.passed] == child;
    if (isSelected) ++children.passed;
    const bool isLast = children.step + 1 == m_path.steps.size();
    if (isSelected && (!isLast || HasAttribute(m_path, child))) {
      Follow(child, children.step + 1);
    } else {
      BeginAnew(child);
    }
  }

  void BeginAnew(IXMLDOMNode* element) {
    if (m_path.isAnywhere) m_open.push_back({element, &ChildrenOf(element, 0), true});
  }

  /// Goes on from an element that the steps before `step` have led to.
  void Follow(IXMLDOMNode* element, std::size_t step) {
    IXMLDOMNode* arrived = element;
    for (; step < m_path.steps.size() && HasDots(m_path.steps[step]); ++step) {
      if (m_path.steps[step].name == "..") arrived = arrived->m_pParent;
      if (arrived == nullptr) return;
    }
    if (step < m_path.steps.size()) {
      m_open.push_back({element, &ChildrenOf(arrived, step), false});
      return;
    }
    m_found = NodeAt(m_path, arrived);
    if (m_found == nullptr) BeginAnew(element);
  }

  const SearchPath& m_path;
  PathComparisons& m_comparisons;
  std::unordered_map<Key, Children, KeyHash> m_searches;
  std::vector<Open> m_open;
  IXMLDOMNode* m_found = nullptr;
};

/// How the elements lie that one search of a path tests with the same step.
PathComparisons::Reach ReachOf(const SearchPath& path) {
  return path.isAnywhere ? PathComparisons::kAnyDepth : PathComparisons::kOneDepth;
}

IXMLDOMNode* FindFirst(const SearchPath& path, IXMLDOMNode* start, PathComparisons& comparisons) {
  const bool isStraight =
      !path.isAnywhere && std::none_of(path.steps.begin(), path.steps.end(), HasDots);
  if (!isStraight) return DepthFirst(path, comparisons).Find(start);
  Nodes selected;
  StepByStep(path, comparisons).Select(start, selected);
  return selected.empty() ? nullptr : selected.front();
}

}  // namespace

std::vector<IXMLDOMNode*> SelectAll(const SearchPath& path, IXMLDOMNode* start) {
  Nodes selected;
  if (path.isPlain) {
    for (XMLPtr<IXMLDOMNode> node : xmldom::Selected(start, path.text.c_str())) {
      selected.push_back(node.Get());
    }
    return selected;
  }
  PathComparisons comparisons(ReachOf(path));
  StepByStep search(path, comparisons);
  search.Select(start, selected);
  if (!path.isAnywhere) return selected;
  for (IXMLDOMNode* element = start; (element = NextElement(element)) != nullptr;) {
    search.Select(element, selected);
  }
  return selected;
}

IXMLDOMNode* SelectFirst(const SearchPath& path, IXMLDOMNode* start) {
  if (path.isPlain) return xmldom::Adopt(start->SelectSingleNode(path.text.c_str())).Get();
  PathComparisons comparisons(ReachOf(path));
  return FindFirst(path, start, comparisons);
}

std::vector<IXMLDOMNode*> Select(const SearchPath& path, IXMLDOMNode* start, bool all) {
  if (all) return SelectAll(path, start);
  IXMLDOMNode* const node = SelectFirst(path, start);
  return node == nullptr ? Nodes() : Nodes{node};
}

IXMLDOMNode* FieldSearch::From(IXMLDOMNode* node) {
  assert(node != nullptr);
  const IXMLDOMNode* arrived = node;
  for (const PathStep& step : m_field.steps) {
    if (!HasDots(step) || arrived == nullptr) break;
    if (step.name == "..") arrived = arrived->m_pParent;
  }
  if (arrived == nullptr || arrived == node) return FindFirst(m_field, node, m_comparisons);
  const auto placed = m_found.emplace(arrived, nullptr);
  if (placed.second) placed.first->second = FindFirst(m_field, node, m_comparisons);
  return placed.first->second;
}

}  // namespace tool
