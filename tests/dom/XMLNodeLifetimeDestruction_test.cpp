#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <string>

#include "harness/CountWitness.h"
#include "harness/SmallStack.h"
#include "harness/Trees.h"

namespace {

/// A node of an application, which tells when it is destroyed.
class Witness : public IXMLDOMNode {
 public:
  Witness(std::string* story, const char* name, DOMNodeType type = NODE_ELEMENT)
      : IXMLDOMNode(nullptr, name, nullptr, type), m_story(story) {}
  ~Witness() override { *m_story += std::string(m_pszNodeName) + " "; }

 private:
  std::string* m_story;
};

/// A node with two following siblings, two children, the first of which has a child, and two
/// attributes; all of them witnesses.
IXMLDOMNode* NewWitnessTree(std::string* story) {
  IXMLDOMNode* top = new Witness(story, "top");
  top->m_pNextSibling = new Witness(story, "sibling1");
  top->m_pNextSibling->m_pNextSibling = new Witness(story, "sibling2");
  top->AddChild(new Witness(story, "child1"));
  top->AddChild(new Witness(story, "child2"));
  top->m_pFirstChild->AddChild(new Witness(story, "grandchild"));
  top->m_pFirstAttribute = new Witness(story, "attribute1", NODE_ATTRIBUTE);
  top->m_pFirstAttribute->m_pNextSibling = new Witness(story, "attribute2", NODE_ATTRIBUTE);
  return top;
}

TEST(XMLNodeLifetimeDestruction, The_last_release_destroys_everything_below) {
  const int before = IXMLDOMNode::m_iObjCount;
  Document document = Load("<a x='1' y='2'><b z='3'><c/>text</b><d/></a>");
  Node root = Keep(Root(document));
  document.Reset();
  EXPECT_LT(before, IXMLDOMNode::m_iObjCount);
  root.Reset();
  EXPECT_EQ(before, IXMLDOMNode::m_iObjCount);
}

TEST(XMLNodeLifetimeDestruction, The_head_of_a_chain_takes_its_followers_along) {
  const int before = IXMLDOMNode::m_iObjCount;
  Node head = NewElement(nullptr, "a");
  Node(head->AddSibling("b", nullptr));
  Node(head->AddSibling("c", nullptr));
  EXPECT_EQ(before + 3, IXMLDOMNode::m_iObjCount);
  head.Reset();
  EXPECT_EQ(before, IXMLDOMNode::m_iObjCount);
}

TEST(XMLNodeLifetimeDestruction, A_derived_destructor_finds_those_before_it_counted) {
  Document document = Load("<p><a/><b><c/></b><d x='1'/></p>");
  int seen = 0;
  At(document, {0, 1})->AddChild(new CountWitness(IXMLDOMNode::m_iObjCount, seen));
  const int before = IXMLDOMNode::m_iObjCount;
  document.Reset();
  // Only <d> and its attribute have gone by then.
  EXPECT_EQ(before - 2, seen);
}

TEST(XMLNodeLifetimeDestruction, A_child_that_is_kept_loses_parent_and_owner) {
  Document document = NewDocument();
  Node parent = NewElement(document, "parent");
  Node child(parent->AddChild("child", nullptr));
  EXPECT_EQ(2, child->GetRefCount());
  parent.Reset();
  EXPECT_EQ(1, child->GetRefCount());
  EXPECT_EQ(nullptr, child->m_pParent);
  EXPECT_EQ(nullptr, child->m_pOwnerDocument);
}

TEST(XMLNodeLifetimeDestruction, A_child_that_is_kept_behind_one_without_owner_loses_them_too) {
  Document document = NewDocument();
  Node parent = NewElement(document, "parent");
  Node(parent->AddChild("first", nullptr));
  {
    const Node second(parent->AddChild("second", nullptr));
    Node(second->AddChild("below", nullptr));
    second->m_pOwnerDocument = nullptr;
  }
  Node child(parent->AddChild("child", nullptr));
  parent.Reset();
  EXPECT_EQ(1, child->GetRefCount());
  EXPECT_EQ(nullptr, child->m_pParent);
  EXPECT_EQ(nullptr, child->m_pOwnerDocument);
}

TEST(XMLNodeLifetimeDestruction, A_following_sibling_that_is_kept_loses_parent_and_owner) {
  Document document = NewDocument();
  Node parent = NewElement(document, "parent");
  Node first = NewElement(document, "first");
  first->m_pParent = parent;
  Node second(first->AddSibling("second", nullptr));
  first.Reset();
  EXPECT_EQ(nullptr, second->m_pParent);
  EXPECT_EQ(nullptr, second->m_pOwnerDocument);
}

// Deliberate: parent links are cleared no more than one level below what is destroyed.
TEST(XMLNodeLifetimeDestruction, A_node_kept_two_levels_below_loses_its_owner_alone) {
  Document document = Load("<a><b/></a>");
  Node kept = Keep(At(document, {0, 0}));
  IXMLDOMNode* const link = Root(document);
  document.Reset();
  EXPECT_EQ(nullptr, kept->m_pOwnerDocument);
  EXPECT_EQ(link, kept->m_pParent);
}

TEST(XMLNodeLifetimeDestruction, What_is_kept_keeps_what_it_links_to) {
  Document document = Load("<a><b x='1'><c>text</c></b><d/></a>");
  Node kept = Keep(At(document, {0, 0}));
  document.Reset();
  EXPECT_STREQ("d", kept->m_pNextSibling->m_pszNodeName);
  EXPECT_STREQ("x", kept->m_pFirstAttribute->m_pszNodeName);
  EXPECT_STREQ("text", At(kept, {0, 0})->m_pszValue);
  EXPECT_EQ(nullptr, At(kept, {0, 0})->m_pOwnerDocument);
  EXPECT_EQ(nullptr, kept->m_pNextSibling->m_pOwnerDocument);
}

// Deliberate: attribute chains are not visited when owners and parents are cleared.
TEST(XMLNodeLifetimeDestruction, A_first_attribute_that_is_kept_keeps_its_links) {
  Document document = NewDocument();
  Node element = NewElement(document, "a");
  element->AddAttribute("x", "1");
  Node attribute = Keep(element->m_pFirstAttribute);
  IXMLDOMNode* const link = element;
  element.Reset();
  EXPECT_EQ(link, attribute->m_pParent);
  EXPECT_EQ(document.Get(), attribute->m_pOwnerDocument);
}

TEST(XMLNodeLifetimeDestruction,
     A_later_attribute_that_is_kept_loses_its_links_with_the_one_before) {
  Document document = NewDocument();
  Node element = NewElement(document, "a");
  element->AddAttribute("x", "1");
  element->AddAttribute("y", "2");
  Node attribute = Keep(element->m_pFirstAttribute->m_pNextSibling);
  element.Reset();
  EXPECT_EQ(nullptr, attribute->m_pParent);
  EXPECT_EQ(nullptr, attribute->m_pOwnerDocument);
}

// A node without owner counts as cleared already.
TEST(XMLNodeLifetimeDestruction, A_child_kept_from_a_node_without_owner_keeps_its_parent_link) {
  Node parent = NewElement(nullptr, "parent");
  Node child(parent->AddChild("child", nullptr));
  IXMLDOMNode* const link = parent;
  parent.Reset();
  EXPECT_EQ(link, child->m_pParent);
  EXPECT_EQ(nullptr, child->m_pOwnerDocument);
}

TEST(XMLNodeLifetimeDestruction, Destruction_takes_siblings_then_children_then_attributes) {
  std::string story;
  Node(NewWitnessTree(&story));
  EXPECT_EQ("top sibling1 sibling2 child1 child2 grandchild attribute1 attribute2 ", story);
}

TEST(XMLNodeLifetimeDestruction, Destruction_of_plain_nodes_keeps_that_order) {
  std::string story;
  Document document = Load("<a><b x='1'><c/></b><d/></a>");
  At(document, {0, 0, 0})->AddChild(new Witness(&story, "below-c"));
  At(document, {0, 0})->AddChild(new Witness(&story, "below-b"));
  At(document, {0, 1})->AddChild(new Witness(&story, "below-d"));
  At(document, {0, 0})->m_pFirstAttribute->AddChild(new Witness(&story, "below-x"));
  At(document, {0})->AddChild(new Witness(&story, "last"));
  document.Reset();
  EXPECT_EQ("last below-d below-b below-c below-x ", story);
}

TEST(XMLNodeLifetimeDestruction, A_derived_node_that_is_kept_is_not_destroyed) {
  std::string story;
  Document document = Load("<a/>");
  IXMLDOMNode* witness = new Witness(&story, "witness");
  Root(document)->AddChild(witness);
  Node kept = Keep(witness);
  document.Reset();
  EXPECT_EQ("", story);
  kept.Reset();
  EXPECT_EQ("witness ", story);
}

TEST(XMLNodeLifetimeDestruction, Plain_nodes_below_a_derived_one_are_destroyed_with_it) {
  std::string story;
  const int before = IXMLDOMNode::m_iObjCount;
  Node witness(new Witness(&story, "witness"));
  witness->AddAttribute("x", "1");
  witness->AddTextChild("text");
  Node(witness->AddSibling("sibling", nullptr));
  witness.Reset();
  EXPECT_EQ(before, IXMLDOMNode::m_iObjCount);
}

/// A node of an application that notes its own fields when it is destroyed.
class FieldWitness : public IXMLDOMNode {
 public:
  FieldWitness(std::string* story, IXMLDOMDocument2* owner, const char* name, DOMNodeType type)
      : IXMLDOMNode(owner, name, "value", type), m_story(story) {}
  ~FieldWitness() override {
    *m_story += std::string(m_pszNodeName) + "=" + m_pszValue + " type" +
                std::to_string(m_eNodeType) +
                (m_pParent != nullptr ? std::string(" below ") + m_pParent->m_pszNodeName : "") +
                (m_pOwnerDocument != nullptr ? " owner" : "") + "; ";
  }

 private:
  std::string* m_story;
};

// Attributes are not visited when owners and parents are cleared, and deeper nodes keep their
// parents, which still have their names. The destructor of the top node runs before anything is
// cleared.
TEST(XMLNodeLifetimeDestruction, A_derived_node_has_its_own_fields_in_its_destructor) {
  std::string story;
  Document document = NewDocument();
  Node top(new FieldWitness(&story, document, "top", NODE_COMMENT));
  top->m_pNextSibling = new FieldWitness(&story, document, "sibling", NODE_TEXT);
  IXMLDOMNode* child = new FieldWitness(&story, document, "child", NODE_ELEMENT);
  top->AddChild(child);
  Node(child->AddChild("plain", nullptr));
  child->m_pFirstChild->AddChild(new FieldWitness(&story, document, "deep", NODE_ENTITY));
  IXMLDOMNode* attribute = new FieldWitness(&story, document, "attribute", NODE_ATTRIBUTE);
  attribute->m_pParent = top;
  top->m_pFirstAttribute = attribute;
  top.Reset();
  EXPECT_EQ(
      "top=value type8 owner; sibling=value type3; child=value type1; "
      "deep=value type6 below plain; attribute=value type2 below top owner; ",
      story);
}

TEST(XMLNodeLifetimeDestruction,
     Derived_nodes_deep_inside_are_destroyed_once_around_those_that_are_kept) {
  std::string story;
  const int before = IXMLDOMNode::m_iObjCount;
  Document document = Load("<a><b><c x='1'/><d/></b><e/></a>");
  At(document, {0, 0, 0})->AddChild(new Witness(&story, "below-c"));
  At(document, {0, 0, 0})->AddChild(new Witness(&story, "kept"));
  At(document, {0, 0, 0})->AddChild(new Witness(&story, "after-kept"));
  At(document, {0, 0, 0})->m_pFirstAttribute->m_pNextSibling =
      new Witness(&story, "attribute", NODE_ATTRIBUTE);
  At(document, {0, 1})->AddChild(new Witness(&story, "below-e"));
  Node kept = Keep(At(document, {0, 0, 0, 1}));
  document.Reset();
  EXPECT_EQ("below-e below-c attribute ", story);
  EXPECT_EQ(before + 2, IXMLDOMNode::m_iObjCount);
  EXPECT_EQ(nullptr, kept->m_pOwnerDocument);
  EXPECT_EQ(nullptr, kept->m_pNextSibling->m_pOwnerDocument);
  kept.Reset();
  EXPECT_EQ("below-e below-c attribute kept after-kept ", story);
  EXPECT_EQ(before, IXMLDOMNode::m_iObjCount);
}

/// A node that notes, when it is destroyed, the types of those that it hangs below.
class PathWitness : public IXMLDOMNode {
 public:
  PathWitness(std::string* story, IXMLDOMDocument2* owner)
      : IXMLDOMNode(owner, "witness", nullptr, NODE_ELEMENT), m_story(story) {}
  ~PathWitness() override {
    for (IXMLDOMNode* node = m_pParent; node != nullptr; node = node->m_pParent) {
      *m_story += std::string(node->m_pszNodeName) + std::to_string(node->m_eNodeType) + " ";
    }
  }

 private:
  std::string* m_story;
};

// Parents are cleared no more than one level below what is destroyed.
TEST(XMLNodeLifetimeDestruction, Type_and_parent_can_be_read_while_a_tree_is_destroyed) {
  std::string story;
  Document document = Load("<a><b x='1'><c><d>text</d></c></b></a>");
  At(document, {0, 0, 0, 0})->AddChild(new PathWitness(&story, document));
  document.Reset();
  EXPECT_EQ("d1 c1 b1 a1 ", story);
}

TEST(XMLNodeLifetimeDestruction, Neither_depth_nor_breadth_of_a_tree_needs_stack) {
  const std::string texts[] = {
      "<a>" + Repeat("<b/>", 100000) + "</a>",
      Repeat("<a>", 100000) + Repeat("</a>", 100000),
      Repeat("<a x='1' y='2'>text<b/>", 20000) + Repeat("</a>", 20000),
  };
  for (const std::string& text : texts) {
    const int before = IXMLDOMNode::m_iObjCount;
    Document document = Load(text);
    EXPECT_LE(before + 100000, IXMLDOMNode::m_iObjCount);
    OnSmallStack([&] { document.Reset(); });
    EXPECT_EQ(before, IXMLDOMNode::m_iObjCount);
  }
}

TEST(XMLNodeLifetimeDestruction, A_node_kept_below_many_others_survives_alone) {
  Document document = Load(Repeat("<a>", 100000) + Repeat("</a>", 100000));
  const int before = IXMLDOMNode::m_iObjCount;
  IXMLDOMNode* last = Root(document);
  while (last->m_pFirstChild != nullptr) last = last->m_pFirstChild;
  Node kept = Keep(last);
  document.Reset();
  EXPECT_EQ(before - 100000, IXMLDOMNode::m_iObjCount);
  EXPECT_EQ(1, kept->GetRefCount());
  EXPECT_EQ(nullptr, kept->m_pOwnerDocument);
}

// Deliberate: the reverse of the order of destruction.
TEST(XMLNodeLifetimeDestruction, ClearNode_takes_attributes_then_children_then_siblings) {
  std::string story;
  Node top(NewWitnessTree(&story));
  top->ClearNode(false);
  EXPECT_EQ("attribute1 attribute2 child1 child2 grandchild sibling1 sibling2 ", story);
}

}  // namespace
