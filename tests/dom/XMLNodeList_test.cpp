#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <climits>
#include <new>
#include <string>

#include "harness/Allocation.h"
#include "harness/AllocationFailure.h"
#include "harness/LinearTime.h"
#include "harness/SmallStack.h"
#include "harness/Trees.h"

namespace {

typedef Ref<IXMLDOMNodeList> List;
typedef Ref<IXMLDOMNamedNodeMap> Map;

List ChildrenOf(IXMLDOMNode* node) {
  List list;
  node->get_childNodes(list.Out());
  return list;
}

Map AttributesOf(IXMLDOMNode* node) {
  Map map;
  node->get_attributes(map.Out());
  return map;
}

/// Takes a node over: its name, or "(null)".
std::string TakeName(IXMLDOMNode* node) {
  Node taken(node);
  return node == nullptr ? "(null)" : Text(node->m_pszNodeName);
}

// ---- Records

TEST(XMLNodeList, A_new_list_is_empty) {
  List list(new IXMLDOMNodeList);
  EXPECT_EQ(nullptr, list->m_pHead);
  EXPECT_EQ(nullptr, list->m_pTail);
  EXPECT_EQ(nullptr, list->m_pCursor);
  EXPECT_EQ(0, list->m_nCount);
  EXPECT_EQ(-1, list->m_nCursorIndex);
  EXPECT_EQ(1, list->GetRefCount());
}

TEST(XMLNodeList, Counts_lists_and_maps_and_links) {
  const int lists = IXMLDOMNodeList::m_iObjCount;
  const int links = IXMLDOMNodeListElt::m_iObjCount;
  Document document = Load("<a x='1'><b/><c/></a>");
  List list = ChildrenOf(Root(document));
  Map map = AttributesOf(Root(document));
  EXPECT_EQ(lists + 2, IXMLDOMNodeList::m_iObjCount);
  EXPECT_EQ(links + 3, IXMLDOMNodeListElt::m_iObjCount);
  list.Reset();
  EXPECT_EQ(lists + 1, IXMLDOMNodeList::m_iObjCount);
  EXPECT_EQ(links + 1, IXMLDOMNodeListElt::m_iObjCount);
  map.Reset();
  EXPECT_EQ(lists, IXMLDOMNodeList::m_iObjCount);
  EXPECT_EQ(links, IXMLDOMNodeListElt::m_iObjCount);
}

// ---- Add

TEST(XMLNodeList, Add_takes_a_reference_and_returns_the_count) {
  Node node = NewElement(nullptr, "a");
  List list(new IXMLDOMNodeList);
  EXPECT_EQ(2, list->Add(node));
  EXPECT_EQ(3, list->Add(node));
  EXPECT_EQ(3, node->GetRefCount());
  EXPECT_EQ(2, list->m_nCount);
  list.Reset();
  EXPECT_EQ(1, node->GetRefCount());
}

TEST(XMLNodeList, Add_refuses_null) {
  List list(new IXMLDOMNodeList);
  EXPECT_EQ(0, list->Add(nullptr));
  EXPECT_EQ(0, list->m_nCount);
  EXPECT_EQ(nullptr, list->m_pHead);
}

TEST(XMLNodeList, Add_keeps_the_order_whatever_the_hint_says) {
  Node nodes[] = {NewElement(nullptr, "a"), NewElement(nullptr, "b"), NewElement(nullptr, "c"),
                  NewElement(nullptr, "d")};
  List list(new IXMLDOMNodeList);
  list->Add(nodes[0]);
  list->Add(nodes[1]);
  list->m_pTail = nullptr;
  list->Add(nodes[2]);
  list->m_pTail = list->m_pHead;
  list->Add(nodes[3]);
  for (const char* name : {"a", "b", "c", "d", "(null)"}) {
    EXPECT_EQ(name, TakeName(list->NextNode()));
  }
  EXPECT_STREQ("d", list->m_pTail->m_pNode->m_pszNodeName);
}

TEST(XMLNodeList, A_link_that_cannot_be_allocated_leaves_the_list_unchanged) {
  Node node = NewElement(nullptr, "a");
  List list(new IXMLDOMNodeList);
  int failures = 0;
  for (int count = 0; count < 100; ++count) {
    try {
      OutOfMemory outOfMemory;
      list->Add(node);
    } catch (const std::bad_alloc&) {
      ++failures;
      EXPECT_EQ(count, list->m_nCount);
      EXPECT_EQ(1 + count, node->GetRefCount());
      EXPECT_EQ(count, IXMLDOMNodeListElt::m_iObjCount);
      list->Add(node);
    }
  }
  // There is memory for no link at first, and not for a hundred at once.
  EXPECT_LT(1, failures);
}

TEST(XMLNodeList, Many_nodes_are_added_walked_and_released) {
  Node node = NewElement(nullptr, "a");
  List list(new IXMLDOMNodeList);
  for (int i = 0; i < 100000; ++i) list->Add(node);
  int walked = 0;
  for (; walked < 100000; ++walked) {
    if (TakeName(list->GetItem(walked)) != "a") break;
  }
  EXPECT_EQ(100000, walked);
  EXPECT_EQ(100001, node->GetRefCount());
  list.Reset();
  EXPECT_EQ(1, node->GetRefCount());
}

TEST(XMLNodeList, Keeps_nodes_alive_beyond_their_tree) {
  Document document = Load("<a><b>text</b><c/></a>");
  List list = ChildrenOf(Root(document));
  document.Reset();
  Node first(list->GetItem(0));
  EXPECT_STREQ("b", first->m_pszNodeName);
  EXPECT_STREQ("text", first->GetStrValue());
  EXPECT_EQ(nullptr, first->m_pOwnerDocument);
  const int before = IXMLDOMNode::m_iObjCount;
  first.Reset();
  list.Reset();
  EXPECT_EQ(before - 3, IXMLDOMNode::m_iObjCount);
}

// ---- NextNode

TEST(XMLNodeList, NextNode_of_an_empty_list_ends_at_once) {
  List list(new IXMLDOMNodeList);
  EXPECT_EQ(nullptr, list->NextNode());
  EXPECT_EQ(-2, list->m_nCursorIndex);
  EXPECT_EQ(nullptr, list->NextNode());
  EXPECT_EQ(-2, list->m_nCursorIndex);
}

TEST(XMLNodeList, NextNode_walks_to_the_end_and_stays_there) {
  Document document = Load("<a><b/><c/></a>");
  List list = ChildrenOf(Root(document));
  const struct {
    const char* name;
    int cursor;
  } rows[] = {{"b", 0}, {"c", 1}, {"(null)", -2}, {"(null)", -2}};
  for (const auto& row : rows) {
    EXPECT_EQ(row.name, TakeName(list->NextNode()));
    EXPECT_EQ(row.cursor, list->m_nCursorIndex);
  }
}

TEST(XMLNodeList, NextNode_adds_a_reference) {
  Document document = Load("<a><b/></a>");
  List list = ChildrenOf(Root(document));
  Node node(list->NextNode());
  EXPECT_EQ(3, node->GetRefCount());
}

TEST(XMLNodeList, NextNode_reaches_nodes_added_before_the_end_was_met) {
  Node node = NewElement(nullptr, "a");
  List list(new IXMLDOMNodeList);
  list->Add(node);
  EXPECT_EQ("a", TakeName(list->NextNode()));
  list->Add(node);
  EXPECT_EQ("a", TakeName(list->NextNode()));
}

TEST(XMLNodeList, NextNode_stays_at_an_end_once_met) {
  Node node = NewElement(nullptr, "a");
  List list(new IXMLDOMNodeList);
  EXPECT_EQ(nullptr, list->NextNode());
  list->Add(node);
  EXPECT_EQ(nullptr, list->NextNode());
  EXPECT_EQ("a", TakeName(list->GetItem(0)));
}

// ---- GetItem

TEST(XMLNodeList, GetItem_finds_each_position_in_any_order) {
  Document document = Load("<a><b/><c/><d/></a>");
  List list = ChildrenOf(Root(document));
  const struct {
    int index;
    const char* name;
    int cursor;
  } rows[] = {{2, "d", 2}, {1, "c", 1}, {1, "c", 1}, {0, "b", 0},
              {2, "d", 2}, {0, "b", 0}, {1, "c", 1}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.index);
    EXPECT_EQ(row.name, TakeName(list->GetItem(row.index)));
    EXPECT_EQ(row.cursor, list->m_nCursorIndex);
  }
}

TEST(XMLNodeList, GetItem_outside_the_list_is_null_and_leaves_the_cursor) {
  Document document = Load("<a><b/><c/></a>");
  List list = ChildrenOf(Root(document));
  for (int index : {-1, INT_MIN, 2, INT_MAX}) {
    EXPECT_EQ(nullptr, list->GetItem(index));
    EXPECT_EQ(-1, list->m_nCursorIndex);
  }
  TakeName(list->GetItem(1));
  EXPECT_EQ(nullptr, list->GetItem(2));
  EXPECT_EQ(1, list->m_nCursorIndex);
  TakeName(list->NextNode());
  EXPECT_EQ(nullptr, list->GetItem(-1));
  EXPECT_EQ(-2, list->m_nCursorIndex);
}

TEST(XMLNodeList, GetItem_of_an_empty_list_is_null) {
  List list(new IXMLDOMNodeList);
  EXPECT_EQ(nullptr, list->GetItem(0));
  EXPECT_EQ(-1, list->m_nCursorIndex);
}

TEST(XMLNodeList, GetItem_adds_a_reference_to_that_node_alone) {
  Document document = Load("<a><b/><c/><d/></a>");
  List list = ChildrenOf(Root(document));
  for (int index : {2, 1, 2, 2}) {
    Node node(list->GetItem(index));
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(i == index ? 3 : 2, At(document, {0, i})->GetRefCount());
    }
  }
}

TEST(XMLNodeList, GetItem_moves_the_iteration) {
  Document document = Load("<a><b/><c/><d/></a>");
  List list = ChildrenOf(Root(document));
  EXPECT_EQ("d", TakeName(list->GetItem(2)));
  EXPECT_EQ("c", TakeName(list->GetItem(1)));
  EXPECT_EQ("d", TakeName(list->NextNode()));
  EXPECT_EQ("(null)", TakeName(list->NextNode()));
  EXPECT_EQ("b", TakeName(list->GetItem(0)));
  EXPECT_EQ("c", TakeName(list->NextNode()));
}

TEST(XMLNodeList, GetItem_goes_backwards_through_what_was_added_meanwhile) {
  Document document = Load("<a><b/><c/><d/></a>");
  List list = ChildrenOf(Root(document));
  EXPECT_EQ("d", TakeName(list->GetItem(2)));
  EXPECT_EQ("c", TakeName(list->GetItem(1)));
  for (int i = 0; i < 3; ++i) list->Add(At(document, {0, i}));
  EXPECT_EQ("d", TakeName(list->GetItem(5)));
  EXPECT_EQ("c", TakeName(list->GetItem(4)));
  EXPECT_EQ("b", TakeName(list->GetItem(3)));
  EXPECT_EQ("d", TakeName(list->GetItem(2)));
  EXPECT_EQ(2, list->m_nCursorIndex);
  EXPECT_EQ(list->m_pHead->m_pNext->m_pNext, list->m_pCursor);
}

// An application may change the links and the count itself. What a backward request has remembered
// of the links then holds no longer.

/// A list of five nodes named a to e, after backward requests.
class XMLNodeListChangedByHand : public testing::Test {
 protected:
  XMLNodeListChangedByHand()
      : m_document(Load("<r><a/><b/><c/><d/><e/></r>")), m_list(ChildrenOf(Root(m_document))) {
    TakeName(m_list->GetItem(4));
    TakeName(m_list->GetItem(3));
  }

  IXMLDOMNodeListElt* LinkAt(int index) {
    IXMLDOMNodeListElt* link = m_list->m_pHead;
    for (; index > 0; --index) link = link->m_pNext;
    return link;
  }

  /// The names of all items, each requested after the one behind it.
  std::string NamesBackwards() {
    std::string names;
    for (int index = m_list->m_nCount - 1; index >= 0; --index) {
      names.insert(0, TakeName(m_list->GetItem(index)));
      EXPECT_EQ(index, m_list->m_nCursorIndex);
    }
    return names;
  }

  Document m_document;
  List m_list;
};

TEST_F(XMLNodeListChangedByHand, Two_nodes_swapped_at_the_head_are_found_where_they_are) {
  IXMLDOMNodeListElt* second = LinkAt(1);
  m_list->m_pHead->m_pNext = second->m_pNext;
  second->m_pNext = m_list->m_pHead;
  m_list->m_pHead = second;
  EXPECT_EQ("bacde", NamesBackwards());
}

TEST_F(XMLNodeListChangedByHand, A_head_that_was_taken_out_is_not_found) {
  IXMLDOMNodeListElt* head = m_list->m_pHead;
  m_list->m_pHead = head->m_pNext;
  --m_list->m_nCount;
  head->~IXMLDOMNodeListElt();
  EXPECT_EQ("b", TakeName(m_list->GetItem(0)));
  EXPECT_EQ("bcde", NamesBackwards());
}

TEST_F(XMLNodeListChangedByHand, A_count_below_what_is_remembered_tells_of_a_link_taken_out) {
  TakeName(m_list->GetItem(4));
  EXPECT_EQ(nullptr, m_list->NextNode());
  EXPECT_EQ("abcde", NamesBackwards());
  IXMLDOMNodeListElt* link = LinkAt(1);
  LinkAt(0)->m_pNext = link->m_pNext;
  --m_list->m_nCount;
  link->~IXMLDOMNodeListElt();
  TakeName(m_list->GetItem(3));
  EXPECT_EQ("acde", NamesBackwards());
}

TEST_F(XMLNodeListChangedByHand, A_link_to_the_requested_item_that_was_changed_is_followed) {
  IXMLDOMNodeListElt* third = LinkAt(2);
  LinkAt(1)->m_pNext = third->m_pNext;
  third->m_pNext = nullptr;
  LinkAt(3)->m_pNext = third;
  EXPECT_EQ("d", TakeName(m_list->GetItem(2)));
  EXPECT_EQ("abdec", NamesBackwards());
}

TEST_F(XMLNodeListChangedByHand, A_request_behind_what_is_remembered_follows_the_links_too) {
  for (const int i : {0, 1, 2}) m_list->Add(At(m_document, {0, i}));
  IXMLDOMNodeListElt* last = LinkAt(7);
  LinkAt(6)->m_pNext = nullptr;
  last->m_pNext = LinkAt(3);
  LinkAt(2)->m_pNext = last;
  TakeName(m_list->GetItem(7));
  EXPECT_EQ("abccdeab", NamesBackwards());
}

TEST_F(XMLNodeListChangedByHand, A_count_above_the_links_ends_the_iteration) {
  m_list->m_nCount = 100;
  EXPECT_EQ(nullptr, m_list->GetItem(99));
  EXPECT_EQ(nullptr, m_list->GetItem(50));
  EXPECT_EQ(-2, m_list->m_nCursorIndex);
  EXPECT_EQ("e", TakeName(m_list->GetItem(4)));
}

TEST(XMLNodeList, GetItem_goes_backwards_when_memory_is_out) {
  Document document = Load("<a><b/><c/><d/></a>");
  List list = ChildrenOf(Root(document));
  EXPECT_EQ("d", TakeName(list->GetItem(2)));
  const AllocationFailure failure(0);
  const Node node(list->GetItem(1));
  EXPECT_TRUE(node.Get() == At(document, {0, 1}));
  EXPECT_EQ(1, list->m_nCursorIndex);
}

TEST(XMLNodeList, GetItem_goes_backwards_in_time_that_grows_with_the_list_alone) {
  ExpectLinearTime(100000, [](int count) {
    Document document = NewDocument();
    List list(new IXMLDOMNodeList);
    for (int i = 0; i < count; ++i) list->Add(document);
    return OnSmallStack([&] {
      for (int i = count - 1; i >= 0; --i) {
        const Node node(list->GetItem(i));
        ASSERT_EQ(i, list->m_nCursorIndex);
      }
    });
  });
}

// ---- The map

TEST(XMLNodeList, GetNamedItem_finds_exactly_that_name) {
  Document document = Load("<a x='1' xy='2' X='3'/>");
  Map map = AttributesOf(Root(document));
  const struct {
    const char* name;
    const char* found;
  } rows[] = {{"x", "x"},      {"X", "X"},         {"xy", "xy"}, {"y", "(null)"},
              {"", "(null)"},  {"xyz", "(null)"},  {"x", "x"},   {"XY", "(null)"},
              {"1", "(null)"}, {nullptr, "(null)"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(Text(row.name));
    EXPECT_EQ(row.found, TakeName(map->GetNamedItem(row.name)));
  }
}

TEST(XMLNodeList, GetNamedItem_finds_the_first_of_several) {
  Node first = NewElement(nullptr, "x");
  Node second = NewElement(nullptr, "x");
  Map map(new IXMLDOMNamedNodeMap);
  map->Add(first);
  map->Add(second);
  Node found(map->GetNamedItem("x"));
  EXPECT_EQ(first.Get(), found.Get());
}

TEST(XMLNodeList, GetNamedItem_passes_over_nodes_without_name) {
  Node nameless(new IXMLDOMNode);
  Node named = NewElement(nullptr, "x");
  Map map(new IXMLDOMNamedNodeMap);
  map->Add(nameless);
  map->Add(named);
  EXPECT_EQ("x", TakeName(map->GetNamedItem("x")));
}

TEST(XMLNodeList, GetNamedItem_adds_a_reference_to_that_node_alone) {
  Document document = Load("<a x='1' y='2'/>");
  Map map = AttributesOf(Root(document));
  Node found(map->GetNamedItem("y"));
  EXPECT_EQ(3, found->GetRefCount());
  EXPECT_EQ(2, Root(document)->m_pFirstAttribute->GetRefCount());
}

TEST(XMLNodeList, GetNamedItem_restarts_and_moves_the_iteration) {
  Document document = Load("<a x='1' y='2' z='3'/>");
  Map map = AttributesOf(Root(document));
  TakeName(map->GetItem(2));
  EXPECT_EQ("x", TakeName(map->GetNamedItem("x")));
  EXPECT_EQ(0, map->m_nCursorIndex);
  EXPECT_EQ("y", TakeName(map->NextNode()));
}

TEST(XMLNodeList, GetNamedItem_that_misses_ends_the_iteration) {
  Document document = Load("<a x='1' y='2'/>");
  Map map = AttributesOf(Root(document));
  EXPECT_EQ(nullptr, map->GetNamedItem("z"));
  EXPECT_EQ(-2, map->m_nCursorIndex);
  EXPECT_EQ(nullptr, map->NextNode());
  EXPECT_EQ(2, Root(document)->m_pFirstAttribute->GetRefCount());
}

TEST(XMLNodeList, getNamedItem_reports_hit_and_miss) {
  Document document = Load("<a x='1'/>");
  Map map = AttributesOf(Root(document));
  char name[] = "x";
  Node found;
  EXPECT_EQ(S_OK, map->getNamedItem(name, found.Out()));
  EXPECT_EQ(Root(document)->m_pFirstAttribute, found.Get());
  EXPECT_EQ(3, found->GetRefCount());
  char other[] = "y";
  IXMLDOMNode* none = found;
  EXPECT_EQ(S_FALSE, map->getNamedItem(other, &none));
  EXPECT_EQ(nullptr, none);
}

TEST(XMLNodeList, getNamedItem_refuses_a_null_out_pointer) {
  Document document = Load("<a x='1' y='2'/>");
  Map map = AttributesOf(Root(document));
  TakeName(map->GetItem(1));
  char name[] = "x";
  EXPECT_EQ(E_ARGUMENT, map->getNamedItem(name, nullptr));
  EXPECT_EQ(1, map->m_nCursorIndex);
}

}  // namespace
