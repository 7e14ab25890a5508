// Compares two trees in step, from the root elements down, with a stack of its own.
// Two chains, of attributes or of children, are compared pair by pair. Where a pair does not fit,
// one look at the next node on either side tells whether only one side has a node more. Tested by
// tests/tool/Differences_test.cpp and tests/tool/diff_test.bash.

#include <tools/document/Differences.h>

#include <tools/io/SourceText.h>

#include <xmldom/dom/XMLDocument.h>

#include <cstring>
#include <utility>

namespace tool {

namespace {

// How many characters of a text or value a description shows.
const std::size_t kTextLimit = 60;

bool IsSame(const char* first, const char* second) {
  if (first == nullptr || second == nullptr) return first == second;
  return std::strcmp(first, second) == 0;
}

/// Whether two nodes have the same type and name, so that what they hold can be compared.
bool Fit(const IXMLDOMNode* first, const IXMLDOMNode* second) {
  return first != nullptr && second != nullptr && first->m_eNodeType == second->m_eNodeType &&
         IsSame(first->m_pszNodeName, second->m_pszNodeName);
}

std::string Quoted(const char* text) {
  return text == nullptr ? "''" : "'" + VisibleLine(text, kTextLimit) + "'";
}

const char* KindOf(const IXMLDOMNode* node) {
  if (node->m_eNodeType == NODE_ATTRIBUTE) return "attribute";
  return node->m_eNodeType == NODE_TEXT ? "text" : "element";
}

std::string Describe(const IXMLDOMNode* node) {
  const std::string kind = KindOf(node);
  if (node->m_eNodeType == NODE_TEXT) return kind + " " + Quoted(node->m_pszValue);
  if (node->m_eNodeType == NODE_ATTRIBUTE) {
    return kind + " " + node->m_pszNodeName + "=" + Quoted(node->m_pszValue);
  }
  return kind + " <" + node->m_pszNodeName + ">";
}

/// A node of each tree.
struct Pair {
  const IXMLDOMNode* first;
  const IXMLDOMNode* second;
};

class DifferenceFinder {
 public:
  explicit DifferenceFinder(bool all) : m_all(all) {}

  std::vector<Difference> Find(const Pair& roots) {
    if (Fit(roots.first, roots.second)) {
      Enter(roots);
    } else {
      Add(roots, roots);
    }
    while (!m_open.empty() && !IsDone()) CompareNextChildren();
    return std::move(m_differences);
  }

 private:
  /// A pair of elements, and the pair of children that is compared next.
  struct Level {
    Pair elements;
    Pair next;
  };

  bool IsDone() const { return !m_all && !m_differences.empty(); }

  void Enter(const Pair& elements) {
    Pair next = {elements.first->m_pFirstAttribute, elements.second->m_pFirstAttribute};
    while ((next.first != nullptr || next.second != nullptr) && !IsDone()) {
      const Pair pair = TakeNext(elements, next);
      if (pair.first != nullptr) CompareValues(pair);
    }
    m_open.push_back({elements, {elements.first->m_pFirstChild, elements.second->m_pFirstChild}});
  }

  void CompareNextChildren() {
    Level& level = m_open.back();
    if (level.next.first == nullptr && level.next.second == nullptr) {
      m_open.pop_back();
      return;
    }
    const Pair pair = TakeNext(level.elements, level.next);
    if (pair.first == nullptr) return;
    if (pair.first->m_eNodeType == NODE_TEXT) {
      CompareValues(pair);
    } else {
      Enter(pair);
    }
  }

  /// Takes a pair from two chains, of which at least one has not ended, or a node that only one of
  /// them has. Result: the pair when it fits; otherwise nulls, and the difference has been added.
  Pair TakeNext(const Pair& elements, Pair& next) {
    const Pair pair = next;
    const bool fits = Fit(pair.first, pair.second);
    const bool onlyFirst = pair.second == nullptr || (!fits && pair.first != nullptr &&
                                                      Fit(pair.first->m_pNextSibling, pair.second));
    const bool onlySecond = pair.first == nullptr ||
                            (!fits && !onlyFirst && Fit(pair.first, pair.second->m_pNextSibling));
    if (!onlySecond) next.first = pair.first->m_pNextSibling;
    if (!onlyFirst) next.second = pair.second->m_pNextSibling;
    if (fits) return pair;
    Add({onlySecond ? nullptr : pair.first, onlyFirst ? nullptr : pair.second}, elements);
    return {nullptr, nullptr};
  }

  void CompareValues(const Pair& pair) {
    if (!IsSame(pair.first->m_pszValue, pair.second->m_pszValue)) Add(pair, pair);
  }

  /// Adds a difference. One of the pair may be null; `elements` are those that hold the pair.
  void Add(const Pair& pair, const Pair& elements) {
    m_differences.push_back({MakeSide(pair.first, pair.second, elements.first),
                             MakeSide(pair.second, pair.first, elements.second)});
  }

  static DifferentNode MakeSide(const IXMLDOMNode* node, const IXMLDOMNode* other,
                                const IXMLDOMNode* element) {
    if (node != nullptr) return {node, Describe(node)};
    return {element, std::string("no ") + KindOf(other)};
  }

  const bool m_all;
  std::vector<Difference> m_differences;
  std::vector<Level> m_open;  // innermost last
};

}  // namespace

std::vector<Difference> FindDifferences(const IXMLDOMDocument2& first,
                                        const IXMLDOMDocument2& second, bool all) {
  return DifferenceFinder(all).Find({first.m_pFirstChild, second.m_pFirstChild});
}

}  // namespace tool
