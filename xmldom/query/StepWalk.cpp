// Walking a tree with the steps of a path. Tested by tests/query/XMLNodeSelect_test.cpp and, beside
// a plain implementation, by tests/soak/Selection_test.cpp.

#include <xmldom/query/StepWalk.h>

#include <xmldom/dom/TreeWalk.h>
#include <xmldom/dom/XMLNodeList.h>
#include <xmldom/query/NodeMatch.h>

namespace xmldom {

namespace {

/// Goes down one level a step, as long as nodes match.
class StepVisitor : public PreOrderVisitor {
 public:
  StepVisitor(const XPathSteps& steps, int firstStep, IXMLDOMNodeList* list)
      : m_steps(steps), m_firstStep(firstStep), m_list(list), m_found(nullptr) {}

  IXMLDOMNode* Enter(IXMLDOMNode* node, std::size_t depth) {
    const int k = m_firstStep + static_cast<int>(depth);
    if (!MatchesStep(node, m_steps.At(k))) return nullptr;
    if (k + 1 < m_steps.Count()) return node->m_pFirstChild;
    if (m_list != nullptr) {
      m_list->Add(node);
    } else {
      m_found = node;
    }
    return nullptr;
  }

  bool IsDone() const { return m_found != nullptr; }
  IXMLDOMNode* Found() const { return m_found; }

 private:
  const XPathSteps& m_steps;
  int m_firstStep;
  IXMLDOMNodeList* m_list;
  IXMLDOMNode* m_found;
};

/// A chain of children, one of which the walk is below.
struct OpenChain {
  IXMLDOMNode* node;
  IXMLDOMNodeListElt* place;  // of its next node in the list; null stands for the head
};

/// The last link of a list; null when it is empty.
IXMLDOMNodeListElt* LastLink(const IXMLDOMNodeList* list) {
  // The tail that a list remembers may be any of its links, or none.
  IXMLDOMNodeListElt* link = list->m_pHead;
  if (link != nullptr && list->m_pTail != nullptr) link = list->m_pTail;
  while (link != nullptr && link->m_pNext != nullptr) link = link->m_pNext;
  return link;
}

/// Adds a node to a list behind the link `place`. `*last` is the last link. Result: the link of the
/// node.
IXMLDOMNodeListElt* AddBehind(IXMLDOMNodeListElt* place, IXMLDOMNode* node, IXMLDOMNodeList* list,
                              IXMLDOMNodeListElt** last) {
  list->Add(node);
  IXMLDOMNodeListElt* const end = *last;
  IXMLDOMNodeListElt* const link = end == nullptr ? list->m_pHead : end->m_pNext;
  if (place == end) {
    *last = link;
  } else {
    // Where there is no link yet, there is no place but that of the first.
    end->m_pNext = nullptr;  // NOLINT(clang-analyzer-core.NullDereference)
    list->m_pTail = end;
    IXMLDOMNodeListElt*& next = place == nullptr ? list->m_pHead : place->m_pNext;
    link->m_pNext = next;
    next = link;
  }
  return link;
}

}  // namespace

IXMLDOMNode* WalkSteps(IXMLDOMNode* head, const XPathSteps& steps, int firstStep,
                       IXMLDOMNodeList* list) {
  StepVisitor visitor(steps, firstStep, list);
  WalkChain<SideTrail>(head, visitor);
  return visitor.Found();
}

IXMLDOMNode* WalkEverywhere(IXMLDOMNode* head, const XPathStep& step, IXMLDOMNodeList* list) {
  Stack<OpenChain, 32> outer;
  IXMLDOMNodeListElt* last = list == nullptr ? nullptr : LastLink(list);
  IXMLDOMNodeListElt* place = last;
  IXMLDOMNode* node = head;
  for (;;) {
    if (node == nullptr) {
      if (outer.IsEmpty()) return nullptr;
      const OpenChain chain = outer.Pop();
      node = chain.node;
      place = chain.place;
    } else {
      if (MatchesStep(node, step)) {
        if (list == nullptr) return node;
        place = AddBehind(place, node, list, &last);
      }
      IXMLDOMNode* below = node->m_pFirstChild;
      if (below != nullptr && (node->m_eNodeType == NODE_ELEMENT || list == nullptr)) {
        // Most elements without elements have one text.
        const bool isText = below->m_eNodeType == NODE_TEXT && below->m_pNextSibling == nullptr &&
                            below->m_pFirstChild == nullptr;
        if (!isText) {
          outer.Push(OpenChain{node, place});
          place = last;
          node = below;
          continue;
        }
      }
    }
    node = node->m_pNextSibling;
  }
}

}  // namespace xmldom
