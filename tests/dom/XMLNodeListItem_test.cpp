#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <climits>
#include <string>

#include "harness/AllocationFailure.h"
#include "harness/LinearTime.h"
#include "harness/Lists.h"
#include "harness/SmallStack.h"
#include "harness/Trees.h"

namespace {

TEST(XMLNodeListItem, GetItem_finds_each_position_in_any_order) {
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

TEST(XMLNodeListItem, GetItem_outside_the_list_is_null_and_leaves_the_cursor) {
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

TEST(XMLNodeListItem, GetItem_of_an_empty_list_is_null) {
  List list(new IXMLDOMNodeList);
  EXPECT_EQ(nullptr, list->GetItem(0));
  EXPECT_EQ(-1, list->m_nCursorIndex);
}

TEST(XMLNodeListItem, GetItem_adds_a_reference_to_that_node_alone) {
  Document document = Load("<a><b/><c/><d/></a>");
  List list = ChildrenOf(Root(document));
  for (int index : {2, 1, 2, 2}) {
    Node node(list->GetItem(index));
    for (int i = 0; i < 3; ++i) {
      EXPECT_EQ(i == index ? 3 : 2, At(document, {0, i})->GetRefCount());
    }
  }
}

TEST(XMLNodeListItem, GetItem_moves_the_iteration) {
  Document document = Load("<a><b/><c/><d/></a>");
  List list = ChildrenOf(Root(document));
  EXPECT_EQ("d", TakeName(list->GetItem(2)));
  EXPECT_EQ("c", TakeName(list->GetItem(1)));
  EXPECT_EQ("d", TakeName(list->NextNode()));
  EXPECT_EQ("(null)", TakeName(list->NextNode()));
  EXPECT_EQ("b", TakeName(list->GetItem(0)));
  EXPECT_EQ("c", TakeName(list->NextNode()));
}

TEST(XMLNodeListItem, GetItem_goes_backwards_through_what_was_added_meanwhile) {
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
class XMLNodeListItemChangedByHand : public testing::Test {
 protected:
  XMLNodeListItemChangedByHand()
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

TEST_F(XMLNodeListItemChangedByHand, Two_nodes_swapped_at_the_head_are_found_where_they_are) {
  IXMLDOMNodeListElt* second = LinkAt(1);
  m_list->m_pHead->m_pNext = second->m_pNext;
  second->m_pNext = m_list->m_pHead;
  m_list->m_pHead = second;
  EXPECT_EQ("bacde", NamesBackwards());
}

TEST_F(XMLNodeListItemChangedByHand, A_head_that_was_taken_out_is_not_found) {
  IXMLDOMNodeListElt* head = m_list->m_pHead;
  m_list->m_pHead = head->m_pNext;
  --m_list->m_nCount;
  head->~IXMLDOMNodeListElt();
  EXPECT_EQ("b", TakeName(m_list->GetItem(0)));
  EXPECT_EQ("bcde", NamesBackwards());
}

TEST_F(XMLNodeListItemChangedByHand, A_count_below_what_is_remembered_tells_of_a_link_taken_out) {
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

TEST_F(XMLNodeListItemChangedByHand, A_link_to_the_requested_item_that_was_changed_is_followed) {
  IXMLDOMNodeListElt* third = LinkAt(2);
  LinkAt(1)->m_pNext = third->m_pNext;
  third->m_pNext = nullptr;
  LinkAt(3)->m_pNext = third;
  EXPECT_EQ("d", TakeName(m_list->GetItem(2)));
  EXPECT_EQ("abdec", NamesBackwards());
}

TEST_F(XMLNodeListItemChangedByHand, A_request_behind_what_is_remembered_follows_the_links_too) {
  for (const int i : {0, 1, 2}) m_list->Add(At(m_document, {0, i}));
  IXMLDOMNodeListElt* last = LinkAt(7);
  LinkAt(6)->m_pNext = nullptr;
  last->m_pNext = LinkAt(3);
  LinkAt(2)->m_pNext = last;
  TakeName(m_list->GetItem(7));
  EXPECT_EQ("abccdeab", NamesBackwards());
}

TEST_F(XMLNodeListItemChangedByHand, A_count_above_the_links_ends_the_iteration) {
  m_list->m_nCount = 100;
  EXPECT_EQ(nullptr, m_list->GetItem(99));
  EXPECT_EQ(nullptr, m_list->GetItem(50));
  EXPECT_EQ(-2, m_list->m_nCursorIndex);
  EXPECT_EQ("e", TakeName(m_list->GetItem(4)));
}

TEST(XMLNodeListItem, GetItem_goes_backwards_when_memory_is_out) {
  Document document = Load("<a><b/><c/><d/></a>");
  List list = ChildrenOf(Root(document));
  EXPECT_EQ("d", TakeName(list->GetItem(2)));
  const AllocationFailure failure(0);
  const Node node(list->GetItem(1));
  EXPECT_TRUE(node.Get() == At(document, {0, 1}));
  EXPECT_EQ(1, list->m_nCursorIndex);
}

TEST(XMLNodeListItem, GetItem_goes_backwards_in_time_that_grows_with_the_list_alone) {
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

}  // namespace
