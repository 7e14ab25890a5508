#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <string>
#include <vector>

#include "harness/CompactXml.h"
#include "harness/RefusingLog.h"
#include "harness/Trees.h"

// Chains that other chains share nodes with, or whose nodes name a parent that does not list them:
// what was cached of one chain must not count any more when another one is changed.

namespace {

/// The names of a node and of those that follow it.
std::string Names(const IXMLDOMNode* node) {
  std::string names;
  for (; node != nullptr; node = node->m_pNextSibling) {
    names += (names.empty() ? "" : " ") + std::string(node->m_pszNodeName);
  }
  return names;
}

/// Adds siblings s1, s2 and so on. Result: all of them.
std::vector<Node> AddSiblings(IXMLDOMNode* node, int count) {
  std::vector<Node> siblings;
  for (int i = 1; i <= count; ++i) {
    siblings.emplace_back(node->AddSibling(("s" + std::to_string(i)).c_str(), nullptr));
  }
  return siblings;
}

/// "s1 s2" and so on.
std::string NamesOfSiblings(int count) {
  std::string names;
  for (int i = 1; i <= count; ++i) names += (i == 1 ? "s" : " s") + std::to_string(i);
  return names;
}

/// The previous sibling, with a reference added.
IXMLDOMNode* Before(IXMLDOMNode* node) {
  IXMLDOMNode* before = nullptr;
  EXPECT_EQ(S_OK, node->get_previousSibling(&before));
  return before;
}

void Add(IXMLDOMNode* parent, const char* name) {
  parent->AddChild(NewElement(nullptr, name).Detach());
}

// The chains of two parents end in the same nodes. Removing the first of these from the one cuts
// the other, and the children that were added in between do not show it, because they are the
// followers of that node in its own chain.
class NodeChainSharedByParents : public testing::Test {
 protected:
  NodeChainSharedByParents()
      : m_parent(NewElement(nullptr, "p")), m_other(NewElement(nullptr, "q")) {
    Node first = NewElement(nullptr, "first");
    Node moved(first->AddSibling("moved", nullptr));
    m_parent->appendChild(first.Detach(), nullptr);
    m_other->appendChild(Keep(moved).Detach(), nullptr);
    Add(m_other, "k");
    for (int i = 0; i < 40; ++i) Add(m_parent, "x");
  }

  /// The tree's reference passes to the Node, which drops it.
  void Cut() { Node(m_other->m_pFirstChild)->RemoveNodeFromTree(); }

  Node m_parent;
  Node m_other;
};

TEST_F(NodeChainSharedByParents, An_end_that_one_of_them_has_lost_gets_no_sibling) {
  Node end;
  ASSERT_EQ(S_OK, m_parent->get_lastChild(end.Out()));
  Cut();
  Add(m_parent, "d");
  EXPECT_EQ("<p><first/><moved/><d/></p>", CompactXml(m_parent));
  EXPECT_EQ(nullptr, end->m_pNextSibling);
}

TEST_F(NodeChainSharedByParents, An_end_that_one_of_them_has_lost_has_no_previous_sibling) {
  Node end;
  ASSERT_EQ(S_OK, m_parent->get_lastChild(end.Out()));
  Node previous;
  ASSERT_EQ(S_OK, end->get_previousSibling(previous.Out()));
  Node before;
  ASSERT_EQ(S_OK, previous->get_previousSibling(before.Out()));
  Cut();
  for (IXMLDOMNode* lost : {end.Get(), previous.Get(), before.Get()}) {
    Node found;
    EXPECT_EQ("Call failed, no previous sibling",
              ThrownMessage([&] { lost->get_previousSibling(found.Out()); }));
  }
}

TEST(NodeChainSharedOfSiblings, Is_followed_without_the_parent_which_may_be_gone) {
  XMLPtr<IXMLDOMDocument2> document = NewDocument();
  XMLPtr<IXMLDOMNode> middle = Node(document->AddChild("middle", nullptr));
  const Node kept(middle->AddChild("kept", nullptr));
  std::vector<Node> siblings = AddSiblings(kept, 20);
  middle->insertBefore(NewElement(nullptr, "i").Detach(), siblings[19], nullptr);
  siblings.clear();
  middle = nullptr;
  document = nullptr;
  Node(kept->AddSibling("n", nullptr));
  EXPECT_EQ("kept " + NamesOfSiblings(19) + " i s20 n", Names(kept));
}

// The last sibling is the last child too: looking for the node before it asks what is cached of the
// children.
TEST(NodeChainSharedOfSiblings,
     Takes_no_place_over_that_was_found_before_everything_was_forgotten) {
  XMLPtr<IXMLDOMNode> destroyed = NewElement(nullptr, "q");
  for (int i = 0; i < 40; ++i) Add(destroyed.Get(), "k");
  Node(Before(At(destroyed.Get(), {30})));
  NewElement(nullptr, "other")->RecurseSetDocument(nullptr);
  destroyed = nullptr;

  const Node parent = NewElement(nullptr, "p");
  Add(parent, "first");
  IXMLDOMNode* const first = parent->m_pFirstChild;
  const std::vector<Node> siblings = AddSiblings(first, 20);
  Node found;
  EXPECT_EQ(S_OK, parent->get_lastChild(found.Out()));
  parent->insertBefore(NewElement(nullptr, "n").Detach(), siblings[19], nullptr);
  for (const char* name : {"a", "b", "c"}) Node(first->AddSibling(name, nullptr));
  EXPECT_EQ("first " + NamesOfSiblings(19) + " n s20 a b c", Names(first));
}

TEST(NodeChainSharedOfSiblings,
     Ends_before_a_node_that_was_removed_and_is_in_the_next_tree_of_the_document) {
  const Document document = NewDocument();
  const Node first(document->AddChild("first", nullptr));
  std::vector<Node> siblings = AddSiblings(first, 20);
  Node last = Keep(siblings[19]);
  siblings.clear();
  Node removed;
  EXPECT_EQ(S_OK, document->removeChild(last, removed.Out()));
  EXPECT_EQ(VARIANT_TRUE, document->loadXML("<new/>"));
  EXPECT_EQ(S_OK, document->appendChild(last.Detach(), nullptr));
  Node(first->AddSibling("n", nullptr));
  EXPECT_EQ("first " + NamesOfSiblings(19) + " n", Names(first));
  EXPECT_EQ("new s20", Names(document->m_pFirstChild));
}

TEST(NodeChainSharedOfSiblings, Ends_before_nodes_that_were_moved_to_another_parent_one_by_one) {
  const Document document = NewDocument();
  XMLPtr<IXMLDOMNode> parent = NewElement(document, "p");
  const Node first(parent->AddChild("first", nullptr));
  const std::vector<Node> siblings = AddSiblings(first, 20);
  for (std::size_t i = 17; i < 20; ++i) {
    Node removed;
    EXPECT_EQ(S_OK, parent->removeChild(siblings[i], removed.Out()));
  }
  parent = nullptr;
  XMLPtr<IXMLDOMNode> other = NewElement(document, "q");
  for (std::size_t i = 17; i < 20; ++i) {
    EXPECT_EQ(S_OK, other->appendChild(Keep(siblings[i]).Detach(), nullptr));
  }
  other = nullptr;
  Node(first->AddSibling("n", nullptr));
  EXPECT_EQ("first " + NamesOfSiblings(17) + " n", Names(first));
  EXPECT_EQ("s18 s19 s20", Names(siblings[17]));
}

TEST(NodeChainSharedOfAttributes, Ends_before_what_it_shared_with_the_children) {
  const Document document = NewDocument();
  const Node parent = NewElement(document, "p");
  Add(parent, "c");
  parent->AddAttribute("a", "1");
  const Node attribute(parent->GetAttribute("a"));
  attribute->RecurseClearDocument(0);
  EXPECT_EQ(S_OK, parent->appendChild(Keep(attribute).Detach(), nullptr));
  for (int i = 0; i < 20; ++i) Add(parent, "k");
  parent->AddAttribute("z", "1");
  Node removed;
  EXPECT_EQ(S_OK, parent->removeChild(attribute, removed.Out()));
  EXPECT_EQ(1, parent->AddAttribute("y", "1"));
  EXPECT_EQ("a y", Names(parent->m_pFirstAttribute));
  Node found(parent->GetAttribute("y"));
  EXPECT_NE(nullptr, found.Get());
}

// Only the first link of a chain was changed.
TEST(NodeChainSharedOfChildren, That_was_replaced_by_hand_has_no_last_child_with_a_place) {
  const Node parent = NewElement(nullptr, "p");
  for (int i = 0; i < 30; ++i) Add(parent, "k");
  const Node last = Keep(At(parent, {29}));
  const Node chain(parent->m_pFirstChild);
  Node other = NewElement(nullptr, "z");
  other->m_pParent = parent;
  parent->m_pFirstChild = other.Detach();
  Node found;
  EXPECT_EQ("Call failed, no previous sibling",
            ThrownMessage([&] { last->get_previousSibling(found.Out()); }));
  const Node inserted = NewElement(nullptr, "n");
  EXPECT_EQ(S_FALSE, parent->insertBefore(inserted, last, nullptr));
}

}  // namespace
