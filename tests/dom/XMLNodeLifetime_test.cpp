#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <climits>
#include <cstdlib>
#include <string>

#include "harness/Allocation.h"
#include "harness/AllocationFailure.h"
#include "harness/SmallStack.h"
#include "harness/Trees.h"

namespace {

TEST(XMLNodeLifetime, A_new_node_is_detached_and_holds_one_reference) {
  Document document = NewDocument();
  Node node(new IXMLDOMNode(document, "name", "value", NODE_ELEMENT));
  EXPECT_STREQ("name", node->m_pszNodeName);
  EXPECT_STREQ("value", node->m_pszValue);
  EXPECT_EQ(nullptr, node->m_pNextSibling);
  EXPECT_EQ(nullptr, node->m_pFirstChild);
  EXPECT_EQ(nullptr, node->m_pFirstAttribute);
  EXPECT_EQ(nullptr, node->m_pParent);
  EXPECT_EQ(document.Get(), node->m_pOwnerDocument);
  EXPECT_EQ(NODE_ELEMENT, node->m_eNodeType);
  EXPECT_EQ(1, node->GetRefCount());
}

TEST(XMLNodeLifetime, Name_and_value_are_copies) {
  char name[] = "name";
  char value[] = "value";
  Node node(new IXMLDOMNode(nullptr, name, value, NODE_ELEMENT));
  name[0] = value[0] = '?';
  EXPECT_STREQ("name", node->m_pszNodeName);
  EXPECT_STREQ("value", node->m_pszValue);
}

TEST(XMLNodeLifetime, Name_and_value_may_hold_any_byte) {
  const std::string bytes = AllBytes().substr(1);
  Node node(new IXMLDOMNode(nullptr, bytes.c_str(), bytes.c_str(), NODE_TEXT));
  EXPECT_EQ(bytes, node->m_pszNodeName);
  EXPECT_EQ(bytes, node->m_pszValue);
}

TEST(XMLNodeLifetime, A_null_value_stays_null_and_an_empty_one_empty) {
  Node without(new IXMLDOMNode(nullptr, "name", nullptr, NODE_ELEMENT));
  Node empty(new IXMLDOMNode(nullptr, "", "", NODE_ELEMENT));
  EXPECT_EQ(nullptr, without->m_pszValue);
  EXPECT_STREQ("", empty->m_pszValue);
  EXPECT_STREQ("", empty->m_pszNodeName);
}

TEST(XMLNodeLifetime, Any_type_is_stored) {
  for (int type : {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, -1, INT_MAX, INT_MIN}) {
    Node node(new IXMLDOMNode(nullptr, "name", nullptr, static_cast<DOMNodeType>(type)));
    EXPECT_EQ(type, node->m_eNodeType);
  }
}

TEST(XMLNodeLifetime, A_default_node_is_its_own_owner_and_has_nothing_else) {
  Node node(new IXMLDOMNode);
  EXPECT_EQ(nullptr, node->m_pszNodeName);
  EXPECT_EQ(nullptr, node->m_pszValue);
  EXPECT_EQ(nullptr, node->m_pNextSibling);
  EXPECT_EQ(nullptr, node->m_pFirstChild);
  EXPECT_EQ(nullptr, node->m_pFirstAttribute);
  EXPECT_EQ(nullptr, node->m_pParent);
  EXPECT_EQ(static_cast<void*>(node.Get()), static_cast<void*>(node->m_pOwnerDocument));
  EXPECT_EQ(NODE_INVALID, node->m_eNodeType);
  EXPECT_EQ(1, node->GetRefCount());
}

TEST(XMLNodeLifetime, Counts_the_nodes_alive) {
  const int before = IXMLDOMNode::m_iObjCount;
  {
    Document document = NewDocument();
    EXPECT_EQ(before + 1, IXMLDOMNode::m_iObjCount);
    Node node = NewElement(document, "a");
    Node other(new IXMLDOMNode);
    EXPECT_EQ(before + 3, IXMLDOMNode::m_iObjCount);
    node->AddAttribute("b", nullptr);
    node->AddTextChild("c");
    EXPECT_EQ(before + 5, IXMLDOMNode::m_iObjCount);
  }
  EXPECT_EQ(before, IXMLDOMNode::m_iObjCount);
}

TEST(XMLNodeLifetime, A_node_that_cannot_be_allocated_is_not_counted) {
  const int before = IXMLDOMNode::m_iObjCount;
  EXPECT_EQ(1, CountFailingAllocations([] { NewElement(nullptr, "a"); }));
  EXPECT_EQ(before, IXMLDOMNode::m_iObjCount);
}

TEST(XMLNodeLifetime, ClearNode_leaves_the_name_on_demand) {
  Document document = NewDocument();
  Node node(new IXMLDOMNode(document, "name", "value", NODE_ELEMENT));
  node->ClearNode(false);
  EXPECT_STREQ("name", node->m_pszNodeName);
  EXPECT_EQ(nullptr, node->m_pszValue);
  node->ClearNode(true);
  EXPECT_EQ(nullptr, node->m_pszNodeName);
}

TEST(XMLNodeLifetime, ClearNode_frees_what_it_takes_from_the_node) {
  const long blocks = HeapBlocks();
  for (bool freesName : {false, true}) {
    Node(new IXMLDOMNode(nullptr, "name", "value", NODE_ELEMENT))->ClearNode(freesName);
  }
  EXPECT_EQ(blocks, HeapBlocks());
}

TEST(XMLNodeLifetime, ClearNode_releases_what_the_node_links_to) {
  const int before = IXMLDOMNode::m_iObjCount;
  Node node = NewElement(nullptr, "a");
  node->AddTextChild("text");
  node->AddAttribute("x", "1");
  Node(node->AddSibling("b", nullptr));
  node->ClearNode(false);
  EXPECT_EQ(nullptr, node->m_pNextSibling);
  EXPECT_EQ(nullptr, node->m_pFirstChild);
  EXPECT_EQ(nullptr, node->m_pFirstAttribute);
  EXPECT_EQ(before + 1, IXMLDOMNode::m_iObjCount);
}

TEST(XMLNodeLifetime, ClearNode_leaves_type_parent_and_owner) {
  Document document = Load("<a><b>text</b></a>");
  IXMLDOMNode* node = At(document, {0, 0});
  node->ClearNode(true);
  EXPECT_EQ(NODE_ELEMENT, node->m_eNodeType);
  EXPECT_EQ(Root(document), node->m_pParent);
  EXPECT_EQ(document.Get(), node->m_pOwnerDocument);
}

TEST(XMLNodeLifetime, ClearNode_empties_a_document_that_stays_a_document) {
  Document document = Load("<a x='1'><b/></a>");
  document->AddAttribute("x", "1");
  document->m_pszValue = static_cast<char*>(std::calloc(1, 1));
  document->ClearNode(false);
  EXPECT_STREQ("Document Root", document->m_pszNodeName);
  EXPECT_EQ(NODE_DOCUMENT, document->m_eNodeType);
  EXPECT_EQ(document.Get(), document->m_pOwnerDocument);
  EXPECT_EQ(nullptr, document->m_pFirstChild);
  EXPECT_EQ(nullptr, document->m_pFirstAttribute);
  EXPECT_EQ(nullptr, document->m_pszValue);
}

TEST(XMLNodeLifetime, RecurseSetDocument_reaches_followers_and_all_below_but_no_attributes) {
  Document document = Load("<a><b/><c x='1'><d><e/></d></c><f>text</f></a>");
  Document other = NewDocument();
  At(document, {0, 1})->RecurseSetDocument(other);
  for (IXMLDOMNode* node :
       {At(document, {0, 1}), At(document, {0, 1, 0}), At(document, {0, 1, 0, 0}),
        At(document, {0, 2}), At(document, {0, 2, 0})}) {
    EXPECT_EQ(other.Get(), node->m_pOwnerDocument) << node->m_pszNodeName;
  }
  for (IXMLDOMNode* node :
       {Root(document), At(document, {0, 0}), At(document, {0, 1})->m_pFirstAttribute}) {
    EXPECT_EQ(document.Get(), node->m_pOwnerDocument) << node->m_pszNodeName;
  }
}

TEST(XMLNodeLifetime, RecurseSetDocument_takes_no_document_as_well) {
  Document document = Load("<a><b/></a>");
  Root(document)->RecurseSetDocument(nullptr);
  EXPECT_EQ(nullptr, Root(document)->m_pOwnerDocument);
  EXPECT_EQ(nullptr, At(document, {0, 0})->m_pOwnerDocument);
}

TEST(XMLNodeLifetime, RecurseSetDocument_reaches_nodes_without_owner) {
  Document document = NewDocument();
  Node node = NewElement(nullptr, "a");
  Node child(node->AddChild("b", nullptr));
  node->RecurseSetDocument(document);
  EXPECT_EQ(document.Get(), node->m_pOwnerDocument);
  EXPECT_EQ(document.Get(), child->m_pOwnerDocument);
}

TEST(XMLNodeLifetime, RecurseClearDocument_clears_parents_down_to_level_1) {
  const struct {
    int depth;
    bool top, follower, child, grandchild;  // still have a parent
  } rows[] = {
      {INT_MIN, false, false, false, false}, {-1, false, false, false, false},
      {0, false, false, false, true},        {1, false, false, true, true},
      {2, true, true, true, true},           {INT_MAX, true, true, true, true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.depth);
    Document document = Load("<a><b><c><d/></c></b><e/></a>");
    At(document, {0, 0})->RecurseClearDocument(row.depth);
    EXPECT_EQ(row.top, At(document, {0, 0})->m_pParent != nullptr);
    EXPECT_EQ(row.follower, At(document, {0, 1})->m_pParent != nullptr);
    EXPECT_EQ(row.child, At(document, {0, 0, 0})->m_pParent != nullptr);
    EXPECT_EQ(row.grandchild, At(document, {0, 0, 0, 0})->m_pParent != nullptr);
  }
}

TEST(XMLNodeLifetime, RecurseClearDocument_clears_the_owner_at_every_level) {
  Document document = Load("<a><b/><c x='1'><d><e/></d></c><f>text</f></a>");
  At(document, {0, 1})->RecurseClearDocument(0);
  for (IXMLDOMNode* node :
       {At(document, {0, 1}), At(document, {0, 1, 0}), At(document, {0, 1, 0, 0}),
        At(document, {0, 2}), At(document, {0, 2, 0})}) {
    EXPECT_EQ(nullptr, node->m_pOwnerDocument) << node->m_pszNodeName;
  }
  for (IXMLDOMNode* node :
       {Root(document), At(document, {0, 0}), At(document, {0, 1})->m_pFirstAttribute}) {
    EXPECT_EQ(document.Get(), node->m_pOwnerDocument) << node->m_pszNodeName;
  }
}

TEST(XMLNodeLifetime, RecurseClearDocument_stops_at_a_node_without_owner) {
  Document document = Load("<a><b/><c/></a>");
  At(document, {0, 0})->m_pOwnerDocument = nullptr;
  At(document, {0, 0})->RecurseClearDocument(0);
  EXPECT_EQ(Root(document), At(document, {0, 0})->m_pParent);
  EXPECT_EQ(document.Get(), At(document, {0, 1})->m_pOwnerDocument);
}

TEST(XMLNodeLifetime, RecurseClearDocument_passes_over_a_follower_without_owner) {
  Document document = Load("<a><b/><c><d/></c><e/></a>");
  At(document, {0, 1})->m_pOwnerDocument = nullptr;
  At(document, {0, 0})->RecurseClearDocument(0);
  EXPECT_EQ(Root(document), At(document, {0, 1})->m_pParent);
  EXPECT_EQ(document.Get(), At(document, {0, 1, 0})->m_pOwnerDocument);
  EXPECT_EQ(nullptr, At(document, {0, 2})->m_pOwnerDocument);
}

TEST(XMLNodeLifetime, RecurseClearDocument_passes_over_children_of_which_the_first_has_no_owner) {
  Document document = Load("<a><b/><c/></a>");
  At(document, {0, 0})->m_pOwnerDocument = nullptr;
  Root(document)->RecurseClearDocument(0);
  EXPECT_EQ(nullptr, Root(document)->m_pOwnerDocument);
  EXPECT_EQ(Root(document), At(document, {0, 0})->m_pParent);
  EXPECT_EQ(document.Get(), At(document, {0, 1})->m_pOwnerDocument);
  EXPECT_EQ(Root(document), At(document, {0, 1})->m_pParent);
}

TEST(XMLNodeLifetime, RecurseClearDocument_of_no_node_does_nothing) {
  EXPECT_EXIT(
      {
        NoNode()->RecurseClearDocument(0);
        std::_Exit(0);
      },
      testing::ExitedWithCode(0), "");
}

TEST(XMLNodeLifetime, Setting_and_clearing_owners_needs_no_stack) {
  const std::string texts[] = {"<a>" + Repeat("<b/>", 100000) + "</a>",
                               Repeat("<a>", 100000) + Repeat("</a>", 100000)};
  for (const std::string& text : texts) {
    Document document = Load(text);
    Document other = NewDocument();
    IXMLDOMNode* last = Root(document);
    while (last->m_pFirstChild != nullptr) last = last->m_pFirstChild;
    while (last->m_pNextSibling != nullptr) last = last->m_pNextSibling;
    OnSmallStack([&] { Root(document)->RecurseSetDocument(other); });
    EXPECT_EQ(other.Get(), last->m_pOwnerDocument);
    OnSmallStack([&] { Root(document)->RecurseClearDocument(0); });
    EXPECT_EQ(nullptr, last->m_pOwnerDocument);
  }
}

}  // namespace
