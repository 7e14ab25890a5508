#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <new>
#include <string>

#include "harness/Allocation.h"
#include "harness/CountWitness.h"
#include "harness/Lists.h"
#include "harness/Trees.h"

namespace {

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

TEST(XMLNodeList, Counts_a_link_until_its_node_is_released) {
  const int before = IXMLDOMNodeListElt::m_iObjCount;
  int links = 0;
  List list(new IXMLDOMNodeList);
  list->Add(Node(new CountWitness(IXMLDOMNodeListElt::m_iObjCount, links)));
  list.Reset();
  EXPECT_EQ(before + 1, links);
  EXPECT_EQ(before, IXMLDOMNodeListElt::m_iObjCount);
}

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

// ---- ResetCursor

TEST(XMLNodeList, ResetCursor_lets_the_iteration_begin_again_wherever_it_is) {
  Node nodes[] = {NewElement(nullptr, "a"), NewElement(nullptr, "b")};
  for (int taken = 0; taken <= 3; ++taken) {
    SCOPED_TRACE(taken);
    Ref<RestartedList> list(new RestartedList);
    list->Add(nodes[0]);
    list->Add(nodes[1]);
    for (int i = 0; i < taken; ++i) TakeName(list->NextNode());
    list->ResetCursor();
    EXPECT_EQ(nullptr, list->m_pCursor);
    EXPECT_EQ(IXMLDOMNodeList::CURSOR_FRESH, list->m_nCursorIndex);
    for (const char* name : {"a", "b", "(null)"}) EXPECT_EQ(name, TakeName(list->NextNode()));
  }
}

TEST(XMLNodeList, ResetCursor_changes_neither_nodes_nor_references) {
  Node node = NewElement(nullptr, "a");
  Ref<RestartedList> list(new RestartedList);
  list->ResetCursor();
  EXPECT_EQ(nullptr, list->NextNode());
  list->Add(node);
  list->ResetCursor();
  EXPECT_EQ(1, list->m_nCount);
  EXPECT_EQ(2, node->GetRefCount());
}

}  // namespace
