#include <gtest/gtest.h>
#include <xmldom/dom/NodeCache.h>
#include <xmldom/xmldom.h>

#include <functional>
#include <thread>
#include <vector>

#include "harness/CompactXml.h"
#include "harness/LinearTime.h"
#include "harness/NodeFacts.h"
#include "harness/ParentOfMany.h"
#include "harness/RefusingLog.h"
#include "harness/SmallStack.h"
#include "harness/Trees.h"
#include "harness/Worker.h"

// Documents that another thread has worked on in the meantime: what this thread has cached of them
// must not count any more.

namespace {

class NodeCache : public ParentOfMany {
 protected:
  NodeCache() {
    for (const char* name : {"a", "b", "c", "d"}) Add(name);
  }
};

void InAnotherThread(const std::function<void()>& work) { std::thread(work).join(); }

/// Nodes with memory of their own between other nodes, so that what is destroyed on one side of
/// them says nothing of what is on the other.
std::vector<Node> Filler() {
  std::vector<Node> nodes;
  for (int i = 0; i < 3000; ++i) nodes.push_back(NewElement(nullptr, "f"));
  return nodes;
}

TEST(NodeCacheOfTheEnd, Is_not_used_for_children_that_another_thread_has_cut_off) {
  const Node parent(NewElement(nullptr, "p"));
  for (int i = 0; i < 40; ++i) parent->AddChild(NewElement(nullptr, "x").Detach());
  const std::vector<Node> filler = Filler();
  const Node previous(parent->AddChild("y", nullptr));
  const Node last(parent->AddChild("z", nullptr));
  Node found;
  ASSERT_EQ(S_OK, parent->get_lastChild(found.Out()));
  InAnotherThread([&] { parent->ClearNode(false); });
  EXPECT_EQ("Call failed, no previous sibling",
            ThrownMessage([&] { last->get_previousSibling(found.Out()); }));
}

TEST(NodeCacheOfTheEnd, Is_not_used_for_children_that_were_cut_off_and_are_kept) {
  const Node parent(NewElement(nullptr, "p"));
  for (int i = 0; i < 40; ++i) parent->AddChild(NewElement(nullptr, "x").Detach());
  const Node left(parent->AddChild("a", nullptr));
  const Node cut(parent->AddChild("b", nullptr));
  Node(parent->AddChild("c", nullptr));
  const Node end(parent->AddChild("d", nullptr));
  left->ClearNode(false);
  Node(parent->AddChild("e", nullptr));
  EXPECT_EQ("<p>" + Repeat("<x/>", 40) + "<a/><e/></p>", CompactXml(parent));
  EXPECT_EQ(nullptr, end->m_pNextSibling);
}

// appendChild links siblings along that have no parent, and moving one of them cuts off the rest.
TEST(NodeCacheOfTheEnd, Is_not_used_for_children_that_a_sibling_without_parent_has_left_behind) {
  const Node parent(NewElement(nullptr, "p"));
  Node first = NewElement(nullptr, "n");
  const Node moved(first->AddSibling("moved", nullptr));
  for (int i = 0; i < 40; ++i) Node(first->AddSibling("x", nullptr));
  parent->appendChild(first.Detach(), nullptr);
  Node(parent->AddChild("a", nullptr));
  Node(parent->AddChild("b", nullptr));
  const Node end(parent->AddChild("c", nullptr));
  const Node other = NewElement(nullptr, "q");
  Node(other->AddChild("r", nullptr));
  const Node kept = Keep(moved->m_pNextSibling);
  moved->AddRef();
  EXPECT_EQ(S_OK, other->insertBefore(moved, other->m_pFirstChild, nullptr));
  Node(parent->AddChild("d", nullptr));
  EXPECT_EQ(nullptr, end->m_pNextSibling);
}

// appendChild links a node without parent along with the siblings that follow it, also when it is
// linked in another chain already. Taking it out of the second chain cuts the first.
TEST(NodeCacheOfTheEnd, Is_not_used_for_children_cut_off_by_a_removal_from_another_parent) {
  const Node parent(NewElement(nullptr, "p"));
  Node first = NewElement(nullptr, "first");
  const Node moved(first->AddSibling("moved", nullptr));
  parent->appendChild(first.Detach(), nullptr);
  for (int i = 0; i < 40; ++i) Node(parent->AddChild("x", nullptr));
  const Node end(parent->AddChild("end", nullptr));
  const Node other = NewElement(nullptr, "q");
  moved->AddRef();
  EXPECT_EQ(S_OK, other->appendChild(moved, nullptr));
  Node removed;
  EXPECT_EQ(S_OK, other->removeChild(moved, removed.Out()));
  Node(parent->AddChild("d", nullptr));
  EXPECT_EQ("<p><first/><moved/><d/></p>", CompactXml(parent));
  EXPECT_EQ(nullptr, end->m_pNextSibling);
}

TEST(NodeCacheOfTheEnd, Is_not_used_for_siblings_without_parent_cut_off_by_a_removal) {
  const Node first = NewElement(nullptr, "first");
  for (int i = 0; i < 9; ++i) Node(first->AddSibling("x", nullptr));
  const Node moved(first->AddSibling("moved", nullptr));
  for (int i = 0; i < 20; ++i) Node(first->AddSibling("y", nullptr));
  const Node end(first->AddSibling("end", nullptr));
  const Node parent(NewElement(nullptr, "p"));
  moved->AddRef();
  EXPECT_EQ(S_OK, parent->appendChild(moved, nullptr));
  Node removed;
  EXPECT_EQ(S_OK, parent->removeChild(moved, removed.Out()));
  const Node added(first->AddSibling("n", nullptr));
  EXPECT_EQ(added.Get(), moved->m_pNextSibling);
  EXPECT_EQ(nullptr, end->m_pNextSibling);
}

TEST(NodeCacheTokens, Never_come_from_the_first_group) {
  unsigned long next = 0ul - xmldom::kTokensAtOnce;
  EXPECT_EQ(~0ul, xmldom::LastOfNextGroup(next));
  EXPECT_EQ(2 * xmldom::kTokensAtOnce - 1, xmldom::LastOfNextGroup(next));
}

TEST_F(NodeCache, A_last_child_that_another_thread_has_destroyed_is_not_used) {
  InAnotherThread([this] {
    Node removed;
    EXPECT_EQ(S_OK, m_parent->removeChild(Child(3), removed.Out()));
  });
  Add("e");
  EXPECT_EQ("<p><a/><b/><c/><e/></p>", Xml(m_document));
}

TEST_F(NodeCache, A_chain_that_another_thread_has_destroyed_is_not_used) {
  InAnotherThread([this] { m_parent->ClearNode(false); });
  Add("e");
  Add("f");
  EXPECT_EQ("<p><e/><f/></p>", Xml(m_document));
}

TEST_F(NodeCache, A_document_that_another_thread_has_loaded_is_followed_anew) {
  InAnotherThread([this] {
    const std::string xml = "<p>" + Repeat("<x/>", kMany) + "<a/><b/><c/><d/></p>";
    EXPECT_EQ(VARIANT_TRUE, m_document->loadXML(xml.c_str()));
  });
  m_parent = Root(m_document);
  Add("e");
  EXPECT_EQ("<p><a/><b/><c/><d/><e/></p>", Xml(m_document));
}

TEST_F(NodeCache, What_another_thread_has_cut_off_gets_no_sibling) {
  const Node kept = Keep(Child(2));
  InAnotherThread([this] { Child(1)->ClearNode(false); });
  Add("e");
  EXPECT_EQ("<p><a/><b/><e/></p>", Xml(m_document));
  EXPECT_EQ("<d/>", CompactXml(kept->m_pNextSibling));
  EXPECT_EQ(nullptr, kept->m_pNextSibling->m_pNextSibling);
}

TEST_F(NodeCache, What_another_thread_has_appended_stays) {
  InAnotherThread([this] { Add("e"); });
  Add("f");
  InAnotherThread([this] { Add("g"); });
  EXPECT_EQ("<p><a/><b/><c/><d/><e/><f/><g/></p>", Xml(m_document));
}

TEST_F(NodeCache, Owners_that_another_thread_has_changed_are_set_again) {
  const Document other = NewDocument();
  const auto insertFirst = [this] {
    IXMLDOMNode* node = NewElement(nullptr, "n").Detach();
    EXPECT_EQ(S_OK, m_parent->insertBefore(node, m_parent->m_pFirstChild, nullptr));
  };
  m_parent->m_pFirstChild->RecurseSetDocument(m_document);
  insertFirst();
  InAnotherThread([&] { Child(3)->RecurseSetDocument(other); });
  EXPECT_EQ("c d ", NotOwnedBy(m_document, m_document));
  insertFirst();
  EXPECT_EQ("", NotOwnedBy(m_document, m_document));
}

// The nodes lie where another thread has destroyed nodes. The tokens of that must not keep this
// thread from using what it has cached since.
TEST_F(NodeCache, Appending_stays_cheap_where_another_thread_has_been) {
  ExpectLinearTime(100000, [this](int count) {
    InAnotherThread([&] {
      for (int i = 0; i < count; ++i) Add("n");
    });
    m_parent->ClearNode(false);
    const double seconds = OnSmallStack([&] {
      for (int i = 0; i < count; ++i) Add("n");
    });
    EXPECT_EQ(count, m_parent->CountChildNodes());
    m_parent->ClearNode(false);
    return seconds;
  });
}

TEST_F(NodeCache, Siblings_without_parent_that_another_thread_has_cut_off_get_no_sibling) {
  const Node parent = NewElement(nullptr, "p");
  // These keep the nodes of the case in different regions of memory, so that a change of one does
  // not make what is cached of another invalid.
  std::vector<Node> between;
  const auto keepApart = [&] {
    for (int i = 0; i < 3000; ++i) between.push_back(NewElement(nullptr, "x"));
  };
  keepApart();
  Node first = NewElement(nullptr, "n");
  for (int i = 0; i < kMany; ++i) Node(first->AddSibling("x", nullptr));
  IXMLDOMNode* const middle = Node(first->AddSibling("middle", nullptr)).Get();
  keepApart();
  parent->appendChild(first.Detach(), nullptr);
  const Node kept(parent->AddChild("a", nullptr));
  keepApart();
  const Node last(parent->AddChild("b", nullptr));
  InAnotherThread([&] { middle->ClearNode(false); });
  Node(parent->AddChild("c", nullptr));
  EXPECT_EQ("<p><n/>" + Repeat("<x/>", kMany) + "<middle/><c/></p>", CompactXml(parent));
  EXPECT_EQ(nullptr, last->m_pNextSibling);
}

/// Lets another thread cut off the last children of a parent, then appends one. A node beside the
/// others is handed to `early` before this thread caches the end, and one to `late` after the cut;
/// both release it. There are many parents, because what is cached of a chain has a place that
/// depends on the address of the parent.
void ExpectCutIsSeen(Worker& other, const std::function<void(IXMLDOMNode*)>& early,
                     const std::function<void(IXMLDOMNode*)>& late) {
  std::vector<Node> parents;
  for (int i = 0; i < 40; ++i) {
    IXMLDOMNode* const first = NewElement(nullptr, "n").Detach();
    IXMLDOMNode* const second = NewElement(nullptr, "n").Detach();
    parents.push_back(NewElement(nullptr, "p"));
    const Node& parent = parents.back();
    early(first);
    for (int j = 0; j < 20; ++j) Node(parent->AddChild("x", nullptr));
    const Node left(parent->AddChild("a", nullptr));
    const Node cut(parent->AddChild("b", nullptr));
    Node(parent->AddChild("c", nullptr));
    const Node end(parent->AddChild("d", nullptr));
    other.Run([&] { left->ClearNode(false); });
    late(second);
    Node(parent->AddChild("e", nullptr));
    ASSERT_EQ("<p>" + Repeat("<x/>", 20) + "<a/><e/></p>", CompactXml(parent)) << i;
    ASSERT_EQ(nullptr, end->m_pNextSibling) << i;
  }
}

// What this thread enters for the place covers what the other has entered.
TEST(NodeCacheOfTheEnd, Is_not_used_when_this_thread_has_changed_nodes_nearby_since) {
  Worker other;
  ExpectCutIsSeen(
      other, [](IXMLDOMNode* node) { node->RealRelease(); },
      [](IXMLDOMNode* node) { node->RealRelease(); });
}

TEST(NodeCacheOfTheEnd, Is_not_used_when_the_other_thread_has_changed_nodes_nearby_before) {
  Worker other;
  ExpectCutIsSeen(
      other, [&](IXMLDOMNode* node) { other.Run([&] { node->RealRelease(); }); },
      [&](IXMLDOMNode* node) { other.Run([&] { node->RealRelease(); }); });
}

}  // namespace
