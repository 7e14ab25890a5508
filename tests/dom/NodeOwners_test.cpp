#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <cstdlib>
#include <vector>

#include "harness/CompactXml.h"
#include "harness/LinearTime.h"
#include "harness/NodeFacts.h"
#include "harness/SmallStack.h"
#include "harness/Trees.h"

// Owners of the siblings behind a node that is put in place, after an application has given some of
// them another owner.

namespace {

const int kMany = 100000;

class NodeOwners : public testing::Test {
 protected:
  NodeOwners()
      : m_document(Load("<a><b/><c><x/></c><d/><e><y><z/></y></e></a>")),
        m_other(NewDocument()),
        m_root(Root(m_document)) {}

  IXMLDOMNode* NewChild() { return NewElement(nullptr, "n").Detach(); }

  void Insert(int position) {
    EXPECT_EQ(S_OK, m_root->insertBefore(NewChild(), At(m_root, {position}), nullptr));
  }

  Document m_document;
  Document m_other;
  IXMLDOMNode* m_root;
};

TEST_F(NodeOwners, InsertBefore_gives_the_owner_to_all_that_follow) {
  At(m_root, {2})->RecurseSetDocument(m_other);
  EXPECT_EQ("d e y z ", NotOwnedBy(m_document, m_document));
  Insert(1);
  EXPECT_EQ("", NotOwnedBy(m_document, m_document));
}

TEST_F(NodeOwners, InsertBefore_gives_no_owner_to_those_in_front) {
  m_root->m_pFirstChild->RecurseSetDocument(m_other);
  Insert(2);
  EXPECT_EQ("b c x ", NotOwnedBy(m_document, m_document));
}

TEST_F(NodeOwners, InsertBefore_gives_the_owner_to_those_below_the_siblings) {
  At(m_root, {3, 0, 0})->RecurseSetDocument(nullptr);
  Insert(0);
  EXPECT_EQ("", NotOwnedBy(m_document, m_document));
}

TEST_F(NodeOwners, InsertBefore_gives_the_owner_to_those_that_RecurseClearDocument_has_cleared) {
  At(m_root, {3, 0})->RecurseClearDocument(2);
  EXPECT_EQ("y z ", NotOwnedBy(m_document, m_document));
  Insert(1);
  EXPECT_EQ("", NotOwnedBy(m_document, m_document));
}

typedef NodeOwners NodeOwnersDeathTest;

// Insertions have a quick way as long as no call in the process has left neighbours with different
// owners, which other cases do.
TEST_F(NodeOwnersDeathTest, InsertBefore_gives_the_owner_also_before_any_change) {
  EXPECT_EXIT(
      {
        const Node child = NewElement(m_other, "n");
        EXPECT_EQ(S_OK, m_root->insertBefore(child, At(m_root, {1}), nullptr));
        std::_Exit(NotOwnedBy(m_document, m_document).empty() ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST_F(NodeOwnersDeathTest, InsertBefore_releases_what_follows_also_before_any_change) {
  EXPECT_EXIT(
      {
        const Node head = NewElement(nullptr, "n");
        const Node follower = NewElement(nullptr, "m");
        follower->AddRef();
        head->m_pNextSibling = follower;
        EXPECT_EQ(S_OK, m_root->insertBefore(head, At(m_root, {1}), nullptr));
        std::_Exit(follower->GetRefCount() == 1 ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

// The first change in a process, which is why each of these has one of its own.
TEST_F(NodeOwnersDeathTest, A_change_is_noticed_although_it_is_the_first) {
  const auto insertAndEnd = [this] {
    Insert(1);
    std::_Exit(NotOwnedBy(m_document, m_document).empty() ? 0 : 1);
  };
  EXPECT_EXIT(
      {
        At(m_root, {3, 0})->RecurseClearDocument(2);
        insertAndEnd();
      },
      testing::ExitedWithCode(0), "");
  EXPECT_EXIT(
      {
        At(m_root, {3, 0})->RecurseSetDocument(m_other);
        insertAndEnd();
      },
      testing::ExitedWithCode(0), "");
}

// A sibling of a node without parent may be given to the tree, and is in two chains then. What
// happens in the other one changes its owner.
TEST_F(NodeOwnersDeathTest, A_node_that_loses_its_owner_in_another_chain_gets_it_back) {
  EXPECT_EXIT(
      {
        IXMLDOMNode* other = NewElement(m_document, "other").Detach();
        m_root->appendChild(other->AddSibling("s", nullptr), nullptr);
        other->RealRelease();
        const bool isLost = NotOwnedBy(m_document, m_document) == "s ";
        Insert(1);
        std::_Exit(isLost && NotOwnedBy(m_document, m_document).empty() ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST_F(NodeOwnersDeathTest, A_node_that_is_added_without_owner_in_another_chain_gets_one) {
  EXPECT_EXIT(
      {
        const Node other = NewElement(nullptr, "other");
        m_root->appendChild(other->AddSibling("s", nullptr), nullptr);
        Node(other->AddSibling("t", nullptr));
        const bool isWithout = NotOwnedBy(m_document, m_document) == "t ";
        Insert(1);
        std::_Exit(isWithout && NotOwnedBy(m_document, m_document).empty() ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

// Children that outlive their parent stay linked, and have no parent.
TEST_F(NodeOwnersDeathTest, A_node_that_outlived_its_parent_gets_its_owner_back) {
  const auto givesBack = [this](void (*change)(IXMLDOMNode * left, IXMLDOMDocument2 * other)) {
    Node parent = NewElement(m_document, "p");
    const Node left(parent->AddChild("left", nullptr));
    IXMLDOMNode* shared = parent->AddChild("s", nullptr);
    parent.Detach()->RealRelease();
    m_root->appendChild(shared, nullptr);
    change(left, m_other);
    const bool isLost = NotOwnedBy(m_document, m_document) == "s ";
    Insert(1);
    return isLost && NotOwnedBy(m_document, m_document).empty();
  };
  EXPECT_EXIT(
      {
        const bool isBack = givesBack([](IXMLDOMNode* left, IXMLDOMDocument2* other) {
          NewElement(other, "q").Detach()->appendChild(Keep(left).Detach(), nullptr);
        });
        std::_Exit(isBack ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
  EXPECT_EXIT(
      {
        const bool isBack = givesBack(
            [](IXMLDOMNode* left, IXMLDOMDocument2* other) { left->RecurseSetDocument(other); });
        std::_Exit(isBack ? 0 : 1);
      },
      testing::ExitedWithCode(0), "");
}

TEST_F(NodeOwners, A_node_that_gets_another_owner_in_another_chain_gets_it_back) {
  Node other = NewElement(m_other, "other");
  m_root->appendChild(other->AddSibling("s", nullptr), nullptr);
  Insert(1);
  const Node parent = NewElement(m_other, "q");
  parent->appendChild(other.Detach(), nullptr);
  EXPECT_EQ("s ", NotOwnedBy(m_document, m_document));
  Insert(1);
  EXPECT_EQ("", NotOwnedBy(m_document, m_document));
}

// The node that is replaced is in a second chain below the new one.
TEST_F(NodeOwners, A_replaced_node_that_hangs_below_the_new_one_gets_its_owner_back) {
  Node left = NewElement(nullptr, "left");
  IXMLDOMNode* const replaced = left->AddSibling("s", nullptr);
  const Node above = NewElement(nullptr, "n");
  above->appendChild(left.Detach(), nullptr);
  m_root->appendChild(replaced, nullptr);
  Node old;
  EXPECT_EQ(S_OK, m_root->replaceChild(Keep(above).Detach(), replaced, old.Out()));
  EXPECT_EQ("s ", NotOwnedBy(m_document, m_document));
  m_root->insertBefore(NewChild(), above, nullptr);
  EXPECT_EQ("", NotOwnedBy(m_document, m_document));
}

// What is replaced has a child in front of the other siblings of the new one.
TEST_F(NodeOwners, A_node_that_loses_its_owner_with_what_is_replaced_gets_it_back) {
  IXMLDOMNode* const replaced = At(m_root, {3});
  Node other = NewElement(m_document, "other");
  const Node shared(other->AddSibling("s", nullptr));
  replaced->appendChild(other.Detach(), nullptr);
  m_root->appendChild(Keep(shared).Detach(), nullptr);
  Node old;
  EXPECT_EQ(S_OK, m_root->replaceChild(NewChild(), replaced, old.Out()));
  EXPECT_EQ("s ", NotOwnedBy(m_document, m_document));
  Insert(3);
  EXPECT_EQ("", NotOwnedBy(m_document, m_document));
}

TEST_F(NodeOwners, ReplaceChild_gives_the_owner_to_all_that_follow) {
  At(m_root, {2})->RecurseSetDocument(m_other);
  Node replaced;
  EXPECT_EQ(S_OK, m_root->replaceChild(NewChild(), At(m_root, {1}), replaced.Out()));
  EXPECT_EQ("", NotOwnedBy(m_document, m_document));
  EXPECT_EQ("", NotOwnedBy(nullptr, replaced));
}

TEST_F(NodeOwners, Every_call_of_RecurseSetDocument_counts) {
  for (int i = 0; i < 3; ++i) {
    SCOPED_TRACE(i);
    Insert(0);
    At(m_root, {2 + i})->RecurseSetDocument(i == 1 ? nullptr : m_other.Get());
    Insert(0);
    EXPECT_EQ("", NotOwnedBy(m_document, m_document));
  }
}

// The new sibling has the owner of the node that it was added to, not that of the parent.
TEST_F(NodeOwners, InsertBefore_gives_the_owner_to_siblings_added_to_one_of_another_owner) {
  m_root->m_pFirstChild->RecurseSetDocument(m_other);
  Insert(1);
  EXPECT_EQ("b ", NotOwnedBy(m_document, m_document));
  Node(m_root->m_pFirstChild->AddSibling("s", nullptr));
  EXPECT_EQ("b s ", NotOwnedBy(m_document, m_document));
  Insert(1);
  EXPECT_EQ("b ", NotOwnedBy(m_document, m_document));
}

// Several times: once the process has had other threads, what they may have changed is told for
// regions of memory, and the two chains may be in one or in two.
TEST_F(NodeOwners, What_is_known_of_one_chain_is_not_taken_for_another) {
  for (int i = 0; i < 20; ++i) {
    const Document document = Load("<a><b/><c><x/></c><d/></a>");
    m_root = Root(document);
    IXMLDOMNode* const parent = At(m_root, {1});
    Node(parent->AddChild("w", nullptr))->RecurseSetDocument(m_other);
    Insert(2);
    EXPECT_EQ("w ", NotOwnedBy(document, document));
    EXPECT_EQ(S_OK, parent->insertBefore(NewChild(), parent->m_pFirstChild, nullptr));
    EXPECT_EQ("", NotOwnedBy(document, document));
  }
}

TEST_F(NodeOwners, A_reference_child_with_an_owner_written_by_hand_is_noticed) {
  At(m_root, {1})->m_pOwnerDocument = m_other;
  At(m_root, {3, 0})->m_pOwnerDocument = nullptr;
  Insert(1);
  EXPECT_EQ("", NotOwnedBy(m_document, m_document));
}

TEST_F(NodeOwners, Insertions_at_the_front_stay_cheap_after_one_that_was_not) {
  ExpectLinearTime(kMany, [](int count) {
    const Document document = Load("<a><b/><c><x/></c></a>");
    const Document other = NewDocument();
    IXMLDOMNode* root = Root(document);
    At(root, {1})->RecurseSetDocument(other);
    const double seconds = OnSmallStack([&] {
      for (int i = 0; i < count; ++i) {
        root->insertBefore(new IXMLDOMNode(nullptr, "n", nullptr, NODE_ELEMENT),
                           root->m_pFirstChild, nullptr);
      }
    });
    EXPECT_EQ(count + 2, root->CountChildNodes());
    EXPECT_EQ("", NotOwnedBy(document, document));
    return seconds;
  });
}

TEST_F(NodeOwners, Insertions_in_turns_with_replacements_stay_cheap_after_one_that_was_not) {
  ExpectLinearTime(kMany, [](int count) {
    const Document document = Load("<a>" + Repeat("<b/>", count) + "</a>");
    IXMLDOMNode* root = Root(document);
    At(root, {1})->RecurseSetDocument(document);
    // To destroy one would make the next insertion visit all siblings again.
    std::vector<XMLPtr<IXMLDOMNode>> replaced(static_cast<std::size_t>(count));
    const double seconds = OnSmallStack([&] {
      for (XMLPtr<IXMLDOMNode>& node : replaced) {
        root->replaceChild(new IXMLDOMNode(nullptr, "n", nullptr, NODE_ELEMENT),
                           root->m_pFirstChild, node.Out());
        root->insertBefore(new IXMLDOMNode(nullptr, "n", nullptr, NODE_ELEMENT),
                           root->m_pFirstChild, nullptr);
      }
    });
    EXPECT_EQ(2 * count, root->CountChildNodes());
    EXPECT_EQ("", NotOwnedBy(document, document));
    return seconds;
  });
}

}  // namespace
