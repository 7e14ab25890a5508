#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "harness/LogCapture.h"
#include "harness/Trees.h"

// The members behind the selections, called with steps and lists of the caller's own.

namespace {

typedef std::vector<LoggedEvent> Events;
typedef std::vector<const IXMLDOMNode*> Nodes;

const LoggedEvent kNullQuery =
    Event(18, 3, "IXMLDOMNode::ParseXPathQuery - called with NULL query or name");

Nodes NodesOf(const IXMLDOMNodeList* list) {
  Nodes nodes;
  for (const IXMLDOMNodeListElt* link = list->m_pHead; link != nullptr; link = link->m_pNext) {
    nodes.push_back(link->m_pNode);
  }
  return nodes;
}

/// What SelectNodesHelper adds.
Nodes Select(IXMLDOMNode* node, CXPathList& list, int step) {
  Ref<IXMLDOMNodeList> result(new IXMLDOMNodeList);
  NewDocument()->SelectNodesHelper(node, list, result, step);
  return NodesOf(result);
}

Nodes Traverse(IXMLDOMNode* node, CXPathList& list) {
  Ref<IXMLDOMNodeList> result(new IXMLDOMNodeList);
  NewDocument()->SelectNodesTraverse(node, list, result);
  return NodesOf(result);
}

const IXMLDOMNode* SelectSingle(IXMLDOMNode* node, CXPathList& list, int step) {
  return Node(NewDocument()->SelectSingleNodeHelper(node, list, step));
}

/// Takes the index away, as a list has none before it is parsed.
void DropIndex(CXPathList& list) {
  CXPathList taken;
  taken.m_ppIndex = list.m_ppIndex;
  list.m_ppIndex = nullptr;
}

class XMLNodeSelectHelper : public testing::Test {
 protected:
  XMLNodeSelectHelper()
      : m_document(Load("<r>text<a><b/><a><b/></a></a><a/></r>")),
        m_root(Root(m_document)),
        m_a1(At(m_root, {1})),
        m_b1(At(m_root, {1, 0})),
        m_a2(At(m_root, {1, 1})),
        m_b2(At(m_root, {1, 1, 0})),
        m_a3(At(m_root, {2})) {}

  Document m_document;
  IXMLDOMNode* m_root;
  IXMLDOMNode* m_a1;
  IXMLDOMNode* m_b1;
  IXMLDOMNode* m_a2;
  IXMLDOMNode* m_b2;
  IXMLDOMNode* m_a3;
};

}  // namespace

// ---- SelectNodesHelper

TEST_F(XMLNodeSelectHelper, The_remaining_steps_are_matched_below_the_node) {
  CXPathList list;
  list.ParsePath("r/a/b");
  EXPECT_EQ(Nodes{m_b1}, Select(m_document, list, 0));
  EXPECT_EQ(Nodes{m_b1}, Select(m_root, list, 1));
  EXPECT_EQ(Nodes{m_b2}, Select(m_a2, list, 2));
  EXPECT_EQ(Nodes(), Select(m_root, list, 0));
}

TEST_F(XMLNodeSelectHelper, Behind_the_last_step_the_node_itself_is_added_whatever_it_is) {
  CXPathList list;
  list.ParsePath("x");
  EXPECT_EQ(Nodes{m_root}, Select(m_root, list, 1));
  EXPECT_EQ(Nodes{At(m_root, {0})}, Select(At(m_root, {0}), list, 1));
  CXPathList empty;
  EXPECT_EQ(Nodes{m_document.Get()}, Select(m_document, empty, 0));
}

TEST_F(XMLNodeSelectHelper, A_step_that_there_is_none_of_matches_no_child_and_is_logged) {
  CXPathList list;
  list.ParsePath("a/b");
  for (int step : {-1, -2, 3, 4, INT_MAX, INT_MIN}) {
    SCOPED_TRACE(step);
    LogCapture log;
    EXPECT_EQ(Nodes(), Select(m_root, list, step));
    EXPECT_EQ(Events(2, kNullQuery), log.Events());
  }
}

TEST_F(XMLNodeSelectHelper, The_descendant_flag_means_nothing_to_it) {
  CXPathList list;
  list.ParsePath("//b");
  EXPECT_EQ(Nodes(), Select(m_root, list, 0));
}

TEST_F(XMLNodeSelectHelper, A_missing_index_is_built) {
  CXPathList list;
  list.ParsePath("r/a");
  DropIndex(list);
  EXPECT_EQ((Nodes{m_a1, m_a3}), Select(m_document, list, 0));
  ASSERT_NE(nullptr, list.m_ppIndex);
  EXPECT_STREQ("a", list.m_ppIndex[1]);
}

TEST_F(XMLNodeSelectHelper, Results_are_added_behind_those_that_stand_in_the_list) {
  CXPathList list;
  list.ParsePath("a");
  Ref<IXMLDOMNodeList> result(new IXMLDOMNodeList);
  result->Add(m_a3);
  m_document->SelectNodesHelper(m_root, list, result, 0);
  EXPECT_EQ((Nodes{m_a3, m_a1, m_a3}), NodesOf(result));
}

// ---- SelectNodesTraverse

TEST_F(XMLNodeSelectHelper, Traversing_matches_below_the_node_and_every_element_under_it) {
  CXPathList list;
  list.ParsePath("a");
  EXPECT_EQ((Nodes{m_a1, m_a3, m_a2}), Traverse(m_document, list));
  EXPECT_EQ(Nodes{m_a2}, Traverse(m_a1, list));
  EXPECT_EQ(Nodes(), Traverse(m_b1, list));
}

TEST_F(XMLNodeSelectHelper, Traversing_adds_behind_the_last_link_whichever_the_list_has_as_tail) {
  CXPathList list;
  list.ParsePath("a");
  for (const bool hasTail : {false, true}) {
    Ref<IXMLDOMNodeList> result(new IXMLDOMNodeList);
    result->Add(m_b1);
    result->Add(m_b2);
    result->m_pTail = hasTail ? result->m_pHead : nullptr;
    m_document->SelectNodesTraverse(m_root, list, result);
    result->Add(m_b1);
    EXPECT_EQ((Nodes{m_b1, m_b2, m_a1, m_a3, m_a2, m_b1}), NodesOf(result));
  }
}

TEST_F(XMLNodeSelectHelper, Traversing_without_steps_adds_every_context) {
  CXPathList empty;
  EXPECT_EQ((Nodes{m_root, m_a1, m_b1, m_a2, m_b2, m_a3}), Traverse(m_root, empty));
}

// ---- SelectSingleNodeHelper

TEST_F(XMLNodeSelectHelper, Step_minus_one_starts_below_the_node) {
  CXPathList list;
  list.ParsePath("a/b");
  EXPECT_EQ(m_b1, SelectSingle(m_root, list, -1));
  EXPECT_EQ(nullptr, SelectSingle(m_document, list, -1));
}

TEST_F(XMLNodeSelectHelper, Any_other_step_is_tested_at_the_node_itself) {
  CXPathList list;
  list.ParsePath("a/b");
  EXPECT_EQ(m_b2, SelectSingle(m_a2, list, 0));
  EXPECT_EQ(m_b2, SelectSingle(m_b2, list, 1));
  EXPECT_EQ(nullptr, SelectSingle(m_root, list, 0));
  EXPECT_EQ(nullptr, SelectSingle(m_a2, list, 1));
}

TEST_F(XMLNodeSelectHelper, Without_steps_only_step_minus_one_finds_the_node) {
  CXPathList empty;
  LogCapture log;
  EXPECT_EQ(m_a1, SelectSingle(m_a1, empty, -1));
  EXPECT_EQ(Events(), log.Events());
  EXPECT_EQ(nullptr, SelectSingle(m_a1, empty, 0));
  EXPECT_EQ(Events{kNullQuery}, log.Events());
}

TEST_F(XMLNodeSelectHelper, A_step_behind_the_last_fails_at_the_node_and_is_logged) {
  CXPathList list;
  list.ParsePath("a/b");
  for (int step : {2, 3, INT_MAX}) {
    SCOPED_TRACE(step);
    LogCapture log;
    EXPECT_EQ(nullptr, SelectSingle(m_a2, list, step));
    EXPECT_EQ(Events{kNullQuery}, log.Events());
  }
}

TEST_F(XMLNodeSelectHelper, Steps_before_minus_one_start_deeper) {
  CXPathList list;
  list.ParsePath("b");
  EXPECT_EQ(m_b1, SelectSingle(m_root, list, -2));
  EXPECT_EQ(m_b2, SelectSingle(m_root, list, -3));
  EXPECT_EQ(nullptr, SelectSingle(m_root, list, -4));
  EXPECT_EQ(nullptr, SelectSingle(m_root, list, INT_MIN));
}

TEST_F(XMLNodeSelectHelper, A_descendant_list_starts_again_below_whatever_fails) {
  CXPathList list;
  list.ParsePath("//a/a/b");
  EXPECT_EQ(m_b2, SelectSingle(m_root, list, 0));
  EXPECT_EQ(m_b2, SelectSingle(m_a1, list, 0));
  EXPECT_EQ(nullptr, SelectSingle(m_a2, list, 0));
  EXPECT_EQ(m_b2, SelectSingle(m_a2, list, 1));
  EXPECT_EQ(nullptr, SelectSingle(At(m_root, {0}), list, 0));
}

TEST_F(XMLNodeSelectHelper, A_missing_index_is_built_for_a_single_node_too) {
  CXPathList list;
  list.ParsePath("a/b");
  DropIndex(list);
  EXPECT_EQ(m_b1, SelectSingle(m_root, list, -1));
  EXPECT_NE(nullptr, list.m_ppIndex);
}

TEST_F(XMLNodeSelectHelper, A_found_node_has_one_reference_more) {
  CXPathList list;
  list.ParsePath("a");
  Node found(m_document->SelectSingleNodeHelper(m_root, list, -1));
  EXPECT_EQ(2, m_a1->GetRefCount());
}

// ---- Missing arguments

TEST_F(XMLNodeSelectHelper, Nothing_is_selected_without_a_node_or_a_list) {
  CXPathList list;
  list.ParsePath("a");
  EXPECT_EQ(Nodes(), Select(nullptr, list, 0));
  EXPECT_EQ(Nodes(), Select(nullptr, list, 1));
  EXPECT_EQ(Nodes(), Traverse(nullptr, list));
  EXPECT_EQ(nullptr, SelectSingle(nullptr, list, -1));
  m_document->SelectNodesHelper(m_root, list, nullptr, 0);
  m_document->SelectNodesTraverse(m_root, list, nullptr);
  EXPECT_EQ(1, m_a1->GetRefCount());
}

TEST_F(XMLNodeSelectHelper, A_negative_count_makes_every_step_a_missing_one) {
  CXPathList list;
  list.ParsePath("a");
  list.m_nCount = -1;
  const LogCapture log;
  EXPECT_EQ(nullptr, SelectSingle(m_root, list, -1));
  EXPECT_EQ(Nodes(), Select(m_root, list, 0));
  EXPECT_EQ(Events(4, kNullQuery), log.Events()) << "once for each of two elements, and again";
}
