#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <vector>

#include "harness/LinearTime.h"
#include "harness/ParentOfMany.h"
#include "harness/SmallStack.h"
#include "harness/Trees.h"

// Appending after an application has changed links itself: where a chain ended before must not
// count any more. The ends of long chains alone are cached, so these chains begin with many nodes.

namespace {

class NodeChain : public ParentOfMany {};

TEST_F(NodeChain, A_last_child_that_was_cut_off_gets_no_sibling) {
  Add("a");
  Add("b");
  Node cut(Child(1));
  Child(0)->m_pNextSibling = nullptr;
  Add("c");
  EXPECT_EQ("<p><a/><c/></p>", Xml(m_document));
  EXPECT_EQ(nullptr, cut->m_pNextSibling);
}

TEST_F(NodeChain, A_last_child_that_became_the_last_by_a_removal_and_was_cut_off_gets_no_sibling) {
  for (const char* name : {"a", "b", "c"}) Add(name);
  Node removed;
  EXPECT_EQ(S_OK, m_parent->removeChild(Child(2), removed.Out()));
  Node cut(Child(1));
  Child(0)->m_pNextSibling = nullptr;
  Add("d");
  EXPECT_EQ("<p><a/><d/></p>", Xml(m_document));
  EXPECT_EQ(nullptr, cut->m_pNextSibling);
}

TEST_F(NodeChain, The_last_two_children_that_were_cut_off_get_no_sibling) {
  for (const char* name : {"a", "b", "c"}) Add(name);
  const Node last = Keep(Child(2));
  const Node cut(Child(1));
  Child(0)->m_pNextSibling = nullptr;
  Add("d");
  EXPECT_EQ("<p><a/><d/></p>", Xml(m_document));
  EXPECT_EQ(nullptr, last->m_pNextSibling);
}

// It still names its parent and the last child.
TEST_F(NodeChain, A_last_child_but_one_that_was_taken_out_is_not_before_the_last) {
  for (const char* name : {"a", "b", "c"}) Add(name);
  const Node out(Child(1));
  Node last(Keep(Child(2)));
  Child(0)->m_pNextSibling = Keep(last).Detach();
  Node before;
  EXPECT_EQ(S_OK, last->get_previousSibling(before.Out()));
  EXPECT_EQ(Child(0), before.Get());
  Add("d");
  EXPECT_EQ("<p><a/><c/><d/></p>", Xml(m_document));
}

TEST_F(NodeChain, A_child_that_was_inserted_before_the_last_and_taken_out_is_not_before_the_last) {
  for (const char* name : {"a", "b"}) Add(name);
  IXMLDOMNode* const last = Child(1);
  const Node out(NewElement(nullptr, "n").Detach());
  EXPECT_EQ(S_OK, m_parent->insertBefore(out, last, nullptr));
  Child(0)->m_pNextSibling = Keep(last).Detach();
  Node before;
  EXPECT_EQ(S_OK, last->get_previousSibling(before.Out()));
  EXPECT_EQ(Child(0), before.Get());
  Add("c");
  EXPECT_EQ("<p><a/><b/><c/></p>", Xml(m_document));
}

TEST_F(NodeChain, A_child_that_was_taken_out_is_not_before_one_that_became_the_last_by_a_removal) {
  for (const char* name : {"a", "b", "c", "d"}) Add(name);
  Node removed;
  EXPECT_EQ(S_OK, m_parent->removeChild(Child(3), removed.Out()));
  const Node out(Child(1));
  IXMLDOMNode* const last = Child(2);
  Child(0)->m_pNextSibling = Keep(last).Detach();
  Node before;
  EXPECT_EQ(S_OK, last->get_previousSibling(before.Out()));
  EXPECT_EQ(Child(0), before.Get());
  Add("e");
  EXPECT_EQ("<p><a/><c/><e/></p>", Xml(m_document));
  EXPECT_EQ(S_OK, Child(2)->get_previousSibling(before.Out()));
  EXPECT_EQ(last, before.Get());
}

TEST_F(NodeChain, A_last_child_that_was_moved_to_the_front_and_removed_gets_no_sibling) {
  for (const char* name : {"a", "b"}) Add(name);
  IXMLDOMNode* const last = Child(1);
  Child(0)->m_pNextSibling = nullptr;
  last->m_pNextSibling = m_parent->m_pFirstChild;
  m_parent->m_pFirstChild = last;
  Node removed;
  EXPECT_EQ(S_OK, m_parent->removeChild(last, removed.Out()));
  Add("c");
  EXPECT_EQ("<p><a/><c/></p>", Xml(m_document));
}

TEST_F(NodeChain, Children_are_removed_from_the_end_and_added_there_in_turns) {
  for (const char* name : {"a", "b", "c", "d"}) Add(name);
  Node removed;
  for (int number = 1; number < 4; ++number) {
    for (int i = 0; i < number; ++i) {
      Node last;
      EXPECT_EQ(S_OK, m_parent->get_lastChild(last.Out()));
      EXPECT_EQ(S_OK, m_parent->removeChild(last, removed.Out()));
    }
    Add("e");
    Add("f");
  }
  EXPECT_EQ("<p><a/><b/><e/><f/></p>", Xml(m_document));
}

TEST_F(NodeChain, Children_that_were_cut_off_get_no_sibling) {
  Add("a");
  Node last = Keep(Child(0));
  Node cut(m_parent->m_pFirstChild);
  m_parent->m_pFirstChild = nullptr;
  Add("b");
  Add("c");
  EXPECT_EQ("<p><b/><c/></p>", Xml(m_document));
  EXPECT_EQ(nullptr, last->m_pNextSibling);
}

TEST_F(NodeChain, A_chain_that_begins_again_with_its_former_head_ends_there) {
  Add("a");
  Node last = Keep(Child(0));
  Node head(m_parent->m_pFirstChild);
  Node cut(head->m_pNextSibling);
  m_parent->m_pFirstChild = nullptr;
  head->m_pNextSibling = nullptr;
  m_parent->AddChild(head.Detach());
  Add("d");
  EXPECT_EQ("<p><x/><d/></p>", Xml(m_document));
  EXPECT_EQ(nullptr, last->m_pNextSibling);
}

TEST_F(NodeChain, Siblings_that_an_insertion_leaves_behind_get_no_sibling) {
  const Node first = NewElement(nullptr, "x");
  IXMLDOMNode* const moved = first->AddSibling("m", nullptr);  // its reference goes to the parent
  for (int i = 0; i < kMany; ++i) Node(first->AddSibling("l", nullptr));
  const Node last(first->AddSibling("l", nullptr));
  Add("a");
  EXPECT_EQ(S_OK, m_parent->insertBefore(moved, m_parent->m_pFirstChild, nullptr));
  const Node added(first->AddSibling("q", nullptr));
  EXPECT_EQ("<p><m/><a/><q/></p>", Xml(m_document));
  EXPECT_EQ(nullptr, last->m_pNextSibling);
}

TEST_F(NodeChain, A_chain_whose_head_was_replaced_is_followed_anew) {
  Add("a");
  Node last = Keep(Child(0));
  Node replaced(m_parent->m_pFirstChild);
  Node head = NewElement(m_document, "n");
  head->m_pParent = m_parent;
  m_parent->m_pFirstChild = head.Detach();
  Add("c");
  EXPECT_EQ("<p><n/><c/></p>", Xml(m_document));
  EXPECT_EQ(nullptr, last->m_pNextSibling);
}

TEST_F(NodeChain, A_node_that_was_put_before_the_last_stays_there) {
  Add("a");
  Add("b");
  IXMLDOMNode* first = Child(0);
  IXMLDOMNode* between = NewElement(m_document, "n").Detach();
  between->m_pParent = m_parent;
  between->m_pNextSibling = first->m_pNextSibling;
  first->m_pNextSibling = between;
  Add("c");
  EXPECT_EQ("<p><a/><n/><b/><c/></p>", Xml(m_document));
}

TEST_F(NodeChain, Nodes_that_were_put_behind_the_last_stay_there) {
  Add("a");
  Add("b");
  IXMLDOMNode* more = NewElement(m_document, "m").Detach();
  more->m_pParent = m_parent;
  Child(1)->m_pNextSibling = more;
  Add("c");
  Add("d");
  EXPECT_EQ("<p><a/><b/><m/><c/><d/></p>", Xml(m_document));
}

TEST_F(NodeChain, A_last_attribute_that_was_cut_off_gets_no_sibling) {
  const auto name = [](int i) { return "n" + std::to_string(i); };
  for (int i = 0; i < kMany; ++i) m_parent->AddAttribute(name(i).c_str(), "1");
  IXMLDOMNode* last = m_parent->m_pFirstAttribute;
  for (int i = 2; i < kMany; ++i) last = last->m_pNextSibling;
  Node cut(last->m_pNextSibling);
  last->m_pNextSibling = nullptr;
  m_parent->AddAttribute("c", "3");
  EXPECT_EQ(Text("c"), Text(last->m_pNextSibling->m_pszNodeName));
  EXPECT_EQ(nullptr, cut->m_pNextSibling);
}

TEST_F(NodeChain, A_last_sibling_that_was_cut_off_gets_no_sibling) {
  IXMLDOMNode* first = m_parent->m_pFirstChild;
  Node(first->AddSibling("a", nullptr));
  Node(first->AddSibling("b", nullptr));
  Node(first->AddSibling("c", nullptr));
  Node cut(Child(2));
  Child(1)->m_pNextSibling = nullptr;
  Node(first->AddSibling("d", nullptr));
  EXPECT_EQ("<p><a/><b/><d/></p>", Xml(m_document));
  EXPECT_EQ(nullptr, cut->m_pNextSibling);
}

TEST_F(NodeChain, A_tail_that_was_moved_to_another_parent_stays_there) {
  Add("a");
  Add("b");
  Add("c");
  Node other = NewElement(m_document, "q");
  IXMLDOMNode* first = Child(0);
  other->m_pFirstChild = first->m_pNextSibling;
  for (IXMLDOMNode* n = other->m_pFirstChild; n != nullptr; n = n->m_pNextSibling) {
    n->m_pParent = other;
  }
  first->m_pNextSibling = nullptr;
  Add("d");
  EXPECT_EQ("<p><a/><d/></p>", Xml(m_document));
  EXPECT_EQ("<q><b/><c/></q>", Xml(other));
}

// Which slot of the cache has the end of a chain depends on where its parent is, so many parents
// take all slots. The call that sets the owner forgets the ends of all other chains. An end that
// wrongly stayed would be read before its links show that it must not be used; only the address
// sanitizer notices that.
TEST_F(NodeChain, A_last_child_that_was_destroyed_is_not_read_wherever_its_parent_is) {
  std::vector<Node> parents;
  for (int i = 0; i < 64; ++i) {
    parents.push_back(NewElement(m_document, "p"));
    IXMLDOMNode* const parent = parents.back();
    parent->RecurseSetDocument(m_document);
    for (int child = 0; child < kMany; ++child) Node(parent->AddChild("x", nullptr));
    IXMLDOMNode* const before = At(parent, {kMany - 2});
    Release(before->m_pNextSibling);
    const Node added(parent->AddChild("y", nullptr));
    EXPECT_EQ(added.Get(), before->m_pNextSibling);
  }
}

// Each insertion gives the chain another head.
TEST_F(NodeChain, Appending_stays_cheap_between_insertions_at_the_front) {
  ExpectLinearTime(100000, [&](int count) {
    const Node parent = NewElement(m_document, "p");
    Node(parent->AddChild("a", nullptr));
    const double seconds = OnSmallStack([&] {
      for (int i = 0; i < count; ++i) {
        parent->insertBefore(new IXMLDOMNode(nullptr, "n", nullptr, NODE_ELEMENT),
                             parent->m_pFirstChild, nullptr);
        parent->AddTextChild("t");
      }
    });
    EXPECT_EQ(count + 1, parent->CountChildNodes());
    return seconds;
  });
}

}  // namespace
