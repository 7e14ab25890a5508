#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include "harness/Trees.h"
#include "plain/PlainList.h"
#include "soak/Cases.h"
#include "soak/Forest.h"

namespace {

/// The position of a link, counted from the head; -1 for null.
template <class Link>
int PositionOf(const Link* head, const Link* link, Link* Link::*next) {
  if (link == nullptr) return -1;
  int position = 0;
  for (; head != nullptr && head != link; head = head->*next) ++position;
  return position;
}

std::string Describe(const Forest& forest, const IXMLDOMNodeList& list) {
  std::string text =
      std::to_string(list.m_nCount) + " nodes, cursor " + std::to_string(list.m_nCursorIndex);
  // Behind the end the cursor points nowhere.
  text += " at " +
          std::to_string(PositionOf(list.m_pHead, list.m_pCursor, &IXMLDOMNodeListElt::m_pNext));
  text += ", tail " +
          std::to_string(PositionOf(list.m_pHead, list.m_pTail, &IXMLDOMNodeListElt::m_pNext));
  for (const IXMLDOMNodeListElt* link = list.m_pHead; link != nullptr; link = link->m_pNext) {
    text += " " + forest.NameOf(link->m_pNode);
  }
  return text + "\n";
}

std::string Describe(const Forest& forest, const plain::NodeList& list) {
  typedef plain::NodeList::Link Link;
  std::string text =
      std::to_string(list.count) + " nodes, cursor " + std::to_string(list.cursorIndex);
  text += " at " + std::to_string(PositionOf(list.head, list.cursor, &Link::next));
  text += ", tail " + std::to_string(PositionOf(list.head, list.tail, &Link::next));
  for (const Link* link = list.head; link != nullptr; link = link->next) {
    text += " " + forest.NameOf(link->node);
  }
  return text + "\n";
}

// Changes by hand, of which all are such that a list can notice them in constant time: those of the
// head, of the link to the last item, and of the count.

/// Swaps two neighbours; `field` links to the first of them.
template <class Link>
void SwapAt(Link** field, Link* Link::*next) {
  Link* first = *field;
  if (first == nullptr || first->*next == nullptr) return;
  Link* second = first->*next;
  first->*next = second->*next;
  second->*next = first;
  *field = second;
}

template <class Link>
void SwapFirstTwo(Link*& head, Link* Link::*next) {
  SwapAt(&head, next);
}

template <class Link>
void SwapLastTwo(Link*& head, Link* Link::*next) {
  Link** field = &head;
  while (*field != nullptr && (*field)->*next != nullptr && (*field)->*next->*next != nullptr) {
    field = &((*field)->*next);
  }
  SwapAt(field, next);
}

/// Makes a change of one kind, below kHandChanges, to the fields of a list.
const int kHandChanges = 5;
template <class Link>
void ChangeByHand(int kind, Link*& head, Link*& tail, int& count, Link* Link::*next) {
  if (kind == 0) tail = nullptr;
  if (kind == 1) SwapFirstTwo(head, next);
  if (kind == 2) SwapLastTwo(head, next);
  if (kind == 3) ++count;
  if (kind == 4 && count > 0) --count;
}

std::string UseRandomly(Random random, Observer& observer, bool changesByHand) {
  static const char* const kNames[] = {"a", "b", "c", "k", "none"};
  ForestShape shape;
  shape.nodes = 1 + random.Below(12);
  Forest one(random, shape);
  Forest two(random, shape);
  random.Next();
  Ref<IXMLDOMNamedNodeMap> fast(new IXMLDOMNamedNodeMap);
  plain::NodeList plainList;
  std::string calls;
  for (int count = 4 + random.Below(40); count > 0; --count) {
    const int kind = random.Below(changesByHand ? 10 + kHandChanges : 10);
    const int number = random.Below(one.Count());
    const int index = random.Below(plainList.count + 3) - 1;
    const char* name = random.OneOf(kNames);
    const auto call = [&](std::string& results, bool library) {
      IXMLDOMNode* node = nullptr;
      int result = 0;
      if (kind < 4) {
        result = library ? fast->Add(one.At(number)) : plainList.Add(two.At(number));
      } else if (kind < 6) {
        node = library ? fast->NextNode() : plainList.NextNode();
      } else if (kind < 9) {
        node = library ? fast->GetItem(index) : plainList.GetItem(index);
      } else if (kind == 9) {
        node = library ? fast->GetNamedItem(name) : plainList.GetNamedItem(name);
      } else if (library) {
        ChangeByHand(kind - 10, fast->m_pHead, fast->m_pTail, fast->m_nCount,
                     &IXMLDOMNodeListElt::m_pNext);
      } else {
        ChangeByHand(kind - 10, plainList.head, plainList.tail, plainList.count,
                     &plain::NodeList::Link::next);
      }
      results += std::to_string(result) + " " + (library ? one : two).NameOf(node) + "\n";
      if (node != nullptr) node->RealRelease();
    };
    const std::string library =
        observer.Observe([&](std::string& results) { call(results, true); }) + Describe(one, *fast);
    const std::string plainly = observer.Observe([&](std::string& results) {
      call(results, false);
    }) + Describe(two, plainList);
    calls += "call " + std::to_string(kind) + " " + std::to_string(index) + "\n";
    const std::string difference = Difference(library, plainly);
    if (!difference.empty()) return calls + difference;
  }
  return Difference(one.State(), two.State());
}

TEST(SoakList, Nodes_are_added_and_fetched_as_from_a_plain_list) {
  RunCases("list",
           [](Random random, Observer& observer) { return UseRandomly(random, observer, false); });
}

TEST(SoakList, Links_changed_by_hand_are_followed_as_they_stand) {
  RunCases("list changed by hand",
           [](Random random, Observer& observer) { return UseRandomly(random, observer, true); });
}

}  // namespace
