#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <new>
#include <string>

#include "harness/Allocation.h"
#include "harness/CompactXml.h"
#include "harness/SmallStack.h"
#include "harness/Trees.h"

namespace {

// ---- AddChild(node)

TEST(XMLNodeBuild, AddChild_links_a_node_as_last_child_and_takes_its_reference_over) {
  Document document = Load("<a><b/></a>");
  IXMLDOMNode* child = new IXMLDOMNode(nullptr, "c", nullptr, NODE_COMMENT);
  EXPECT_EQ(1, Root(document)->AddChild(child));
  EXPECT_EQ("<a><b/><c/></a>", CompactXml(document));
  EXPECT_EQ(Root(document), child->m_pParent);
  EXPECT_EQ(document.Get(), child->m_pOwnerDocument);
  EXPECT_EQ(1, child->GetRefCount());
}

TEST(XMLNodeBuild, AddChild_refuses_null) {
  Document document = Load("<a/>");
  IXMLDOMNode* none = nullptr;
  EXPECT_EQ(0, Root(document)->AddChild(none));
  EXPECT_EQ("<a/>", CompactXml(document));
}

TEST(XMLNodeBuild, AddChild_gives_a_whole_subtree_its_owner_but_not_the_attributes) {
  Document document = Load("<a/>");
  Document other = Load("<b x='1'><c y='2'>text</c></b>");
  IXMLDOMNode* subtree = Root(other);
  other->m_pFirstChild = nullptr;  // its reference goes to the new parent
  Root(document)->AddChild(subtree);
  for (IXMLDOMNode* node : {subtree, At(subtree, {0}), At(subtree, {0, 0})}) {
    EXPECT_EQ(document.Get(), node->m_pOwnerDocument) << node->m_pszNodeName;
  }
  EXPECT_EQ(other.Get(), subtree->m_pFirstAttribute->m_pOwnerDocument);
  EXPECT_EQ(other.Get(), At(subtree, {0})->m_pFirstAttribute->m_pOwnerDocument);
}

TEST(XMLNodeBuild, AddChild_takes_following_siblings_along) {
  Document document = Load("<a><b/></a>");
  IXMLDOMNode* head = new IXMLDOMNode(nullptr, "c", nullptr, NODE_ELEMENT);
  Node follower(head->AddSibling("d", nullptr));
  Root(document)->AddChild(head);
  EXPECT_EQ("<a><b/><c/><d/></a>", CompactXml(document));
  EXPECT_EQ(document.Get(), follower->m_pOwnerDocument);
  EXPECT_EQ(nullptr, follower->m_pParent);
}

TEST(XMLNodeBuild, AddChild_under_a_node_without_owner_takes_the_owner_away) {
  Document document = NewDocument();
  Node parent = NewElement(nullptr, "a");
  Node child = Keep(new IXMLDOMNode(document, "b", nullptr, NODE_ELEMENT));
  parent->AddChild(child);
  EXPECT_EQ(nullptr, child->m_pOwnerDocument);
}

TEST(XMLNodeBuild, AddChild_of_a_wide_or_deep_tree_needs_no_stack) {
  const std::string texts[] = {"<a>" + Repeat("<b/>", 100000) + "</a>",
                               Repeat("<a>", 100000) + Repeat("</a>", 100000)};
  for (const std::string& text : texts) {
    Document document = Load("<top/>");
    Document other = Load(text);
    IXMLDOMNode* subtree = Root(other);
    other->m_pFirstChild = nullptr;
    OnSmallStack([&] { Root(document)->AddChild(subtree); });
    EXPECT_EQ(document.Get(), At(subtree, {0})->m_pOwnerDocument);
  }
}

// ---- AddChild(name, value), AddSibling, AddTextChild

TEST(XMLNodeBuild, AddChild_makes_an_element_and_hands_it_out) {
  Document document = Load("<a>text</a>");
  Node child(Root(document)->AddChild("b", "value"));
  EXPECT_EQ("<a>text<b><?value value?></b></a>", CompactXml(document));
  EXPECT_EQ(NODE_ELEMENT, child->m_eNodeType);
  EXPECT_EQ(Root(document), child->m_pParent);
  EXPECT_EQ(document.Get(), child->m_pOwnerDocument);
  EXPECT_EQ(2, child->GetRefCount());
}

TEST(XMLNodeBuild, AddChild_keeps_a_missing_value_missing) {
  Node parent = NewElement(nullptr, "a");
  Node without(parent->AddChild("b", nullptr));
  Node empty(parent->AddChild("c", ""));
  EXPECT_EQ(nullptr, without->m_pszValue);
  EXPECT_STREQ("", empty->m_pszValue);
}

TEST(XMLNodeBuild, Names_and_values_are_copied_as_they_stand) {
  Node parent = NewElement(nullptr, "a");
  char name[] = "<&>";
  char value[] = "&amp;<";
  Node child(parent->AddChild(name, value));
  name[0] = value[0] = '?';
  EXPECT_STREQ("<&>", child->m_pszNodeName);
  EXPECT_STREQ("&amp;<", child->m_pszValue);
}

TEST(XMLNodeBuild, AddSibling_goes_to_the_end_of_the_chain) {
  Document document = Load("<a><b/><c/><d/></a>");
  Node sibling(At(document, {0, 0})->AddSibling("e", "value"));
  EXPECT_EQ("<a><b/><c/><d/><e><?value value?></e></a>", CompactXml(document));
  EXPECT_EQ(NODE_ELEMENT, sibling->m_eNodeType);
  EXPECT_EQ(Root(document), sibling->m_pParent);
  EXPECT_EQ(document.Get(), sibling->m_pOwnerDocument);
  EXPECT_EQ(2, sibling->GetRefCount());
}

TEST(XMLNodeBuild, AddSibling_of_a_last_child_follows_it) {
  Document document = Load("<a><b/></a>");
  Node(At(document, {0, 0})->AddSibling("c", nullptr));
  EXPECT_EQ("<a><b/><c/></a>", CompactXml(document));
}

TEST(XMLNodeBuild, AddSibling_of_a_node_without_parent_has_none_either) {
  Node root = NewElement(nullptr, "a");
  Node sibling(root->AddSibling("b", nullptr));
  EXPECT_EQ(nullptr, sibling->m_pParent);
  EXPECT_EQ(sibling.Get(), root->m_pNextSibling);
}

TEST(XMLNodeBuild, AddTextChild_adds_a_text) {
  Document document = Load("<a><b/></a>");
  EXPECT_EQ(1, Root(document)->AddTextChild("text"));
  EXPECT_EQ("<a><b/>text</a>", CompactXml(document));
  IXMLDOMNode* text = At(document, {0, 1});
  EXPECT_EQ(NODE_TEXT, text->m_eNodeType);
  EXPECT_EQ(Root(document), text->m_pParent);
  EXPECT_EQ(document.Get(), text->m_pOwnerDocument);
  EXPECT_EQ(1, text->GetRefCount());
}

TEST(XMLNodeBuild, AddTextChild_of_null_adds_a_text_without_value) {
  Document document = Load("<a/>");
  EXPECT_EQ(1, Root(document)->AddTextChild(nullptr));
  EXPECT_EQ("<a><?text?></a>", CompactXml(document));
}

TEST(XMLNodeBuild, A_node_of_any_type_takes_children_and_attributes) {
  for (DOMNodeType type : {NODE_INVALID, NODE_ATTRIBUTE, NODE_TEXT, NODE_COMMENT}) {
    SCOPED_TRACE(type);
    Node node(new IXMLDOMNode(nullptr, "n", nullptr, type));
    Node(node->AddChild("b", nullptr));
    EXPECT_EQ(1, node->AddTextChild("t"));
    EXPECT_EQ(1, node->AddAttribute("x", "1"));
    EXPECT_EQ("<n x='1'><b/>t</n>", CompactXml(node));
  }
}

// ---- Memory

TEST(XMLNodeBuild, A_node_that_cannot_be_allocated_leaves_the_tree_unchanged) {
  const struct {
    const char* name;
    void (*build)(IXMLDOMNode* node);
    const char* after;
  } rows[] = {
      {"AddChild", [](IXMLDOMNode* node) { Node(node->AddChild("n", "v")); },
       "<a x='1'><b/><n><?value v?></n></a>"},
      {"AddSibling", [](IXMLDOMNode* node) { Node(node->m_pFirstChild->AddSibling("n", "v")); },
       "<a x='1'><b/><n><?value v?></n></a>"},
      {"AddTextChild", [](IXMLDOMNode* node) { node->AddTextChild("v"); }, "<a x='1'><b/>v</a>"},
      {"AddAttribute", [](IXMLDOMNode* node) { node->AddAttribute("n", "v"); },
       "<a x='1' n='v'><b/></a>"},
      {"SetAttribute", [](IXMLDOMNode* node) { node->SetAttribute("n", "v"); },
       "<a x='1' n='v'><b/></a>"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Document document = Load("<a x='1'><b/></a>");
    EXPECT_THROW(
        {
          OutOfMemory outOfMemory;
          row.build(Root(document));
        },
        std::bad_alloc);
    EXPECT_EQ("<a x='1'><b/></a>", CompactXml(document));
    row.build(Root(document));
    EXPECT_EQ(row.after, CompactXml(document));
  }
}

}  // namespace
