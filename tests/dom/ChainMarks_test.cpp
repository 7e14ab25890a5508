#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <functional>
#include <thread>
#include <vector>

#include "harness/CompactXml.h"
#include "harness/LongChains.h"
#include "harness/RefusingLog.h"
#include "harness/Trees.h"

// The node before another, after a walk backwards has left its marks in a long chain: what is
// changed since must not count any more.

namespace {

const int kChildren = 300;
const char* const kNone = "Call failed, no previous sibling";

class ChainMarks : public testing::Test {
 protected:
  ChainMarks() : m_parent(NewElement(nullptr, "p")) {
    for (int i = 0; i < kChildren; ++i) {
      m_children.push_back(NewElement(nullptr, "c").Detach());
      m_parent->AddChild(m_children.back());
    }
    for (int i = kChildren - 1; i > kChildren - 10; --i) {
      EXPECT_EQ(m_children[Index(i - 1)], Before(m_children[Index(i)]));
    }
  }

  static std::size_t Index(int i) { return static_cast<std::size_t>(i); }

  static IXMLDOMNode* Before(IXMLDOMNode* node) {
    Node before;
    node->get_previousSibling(before.Out());
    return before.Get();
  }

  void ExpectChain(int from) {
    for (std::size_t i = m_children.size() - 1; i > Index(from); --i) {
      ASSERT_EQ(m_children[i - 1], Before(m_children[i])) << i;
    }
  }

  void Unlink(int i) {
    Node removed;
    EXPECT_EQ(S_OK, m_parent->removeChild(m_children[Index(i)], removed.Out()));
    m_children.erase(m_children.begin() + i);
  }

  Node m_parent;
  std::vector<IXMLDOMNode*> m_children;
};

void InAnotherThread(const std::function<void()>& work) { std::thread(work).join(); }

TEST_F(ChainMarks, Lead_to_all_nodes_before_them) { ExpectChain(0); }

TEST_F(ChainMarks, Are_not_used_when_their_nodes_are_destroyed) {
  for (int i = kChildren - 30; i > 0; i -= 2) Unlink(i);
  ExpectChain(0);
}

TEST_F(ChainMarks, Are_not_used_when_another_thread_has_destroyed_their_nodes) {
  InAnotherThread([this] {
    for (int i = kChildren - 30; i > 0; --i) Unlink(i);
  });
  ExpectChain(0);
}

TEST_F(ChainMarks, Are_not_used_when_their_nodes_were_unlinked_by_hand_and_destroyed) {
  for (int i = kChildren - 30; i > 0; --i) {
    IXMLDOMNode* node = m_children[Index(i)];
    m_children[Index(i - 1)]->m_pNextSibling = node->m_pNextSibling;
    node->m_pNextSibling = nullptr;
    node->RealRelease();
    m_children.erase(m_children.begin() + i);
  }
  ExpectChain(0);
}

// What is taken out by hand may still name its parent and its next sibling.
TEST_F(ChainMarks, Do_not_lead_to_a_single_node_that_was_taken_out_by_hand) {
  for (int i = kChildren - 2; i > 0; --i) {
    IXMLDOMNode* const next = m_children[Index(i + 1)];
    for (bool isAskedBefore : {false, true}) {
      if (isAskedBefore) {
        EXPECT_EQ(m_children[Index(i)], Before(next));
      }
      m_children[Index(i - 1)]->m_pNextSibling = next;
      ASSERT_EQ(m_children[Index(i - 1)], Before(next)) << i << isAskedBefore;
      m_children[Index(i - 1)]->m_pNextSibling = m_children[Index(i)];
    }
  }
}

TEST_F(ChainMarks, Do_not_keep_a_node_in_its_chain_behind_one_that_was_taken_out_by_hand) {
  IXMLDOMNode* const before = m_children[Index(kChildren - 21)];
  const Node out(m_children[Index(kChildren - 20)]);
  IXMLDOMNode* const behind = out->m_pNextSibling;
  EXPECT_EQ(out.Get(), Before(behind));
  before->m_pNextSibling = behind;
  behind->AddRef();
  Node removed;
  EXPECT_EQ(S_OK, m_parent->removeChild(behind, removed.Out()));
  EXPECT_EQ(m_children[Index(kChildren - 18)], before->m_pNextSibling);
}

TEST_F(ChainMarks, Are_not_used_when_another_thread_has_unlinked_their_nodes_by_hand) {
  InAnotherThread([this] {
    for (int i = kChildren - 30; i > 0; --i) {
      IXMLDOMNode* node = m_children[Index(i)];
      m_children[Index(i - 1)]->m_pNextSibling = node->m_pNextSibling;
      node->m_pNextSibling = nullptr;
      node->m_pParent = nullptr;
      node->RealRelease();
      m_children.erase(m_children.begin() + i);
    }
  });
  ExpectChain(0);
}

TEST_F(ChainMarks, Are_not_used_when_their_nodes_were_moved_to_another_parent) {
  const Node other = NewElement(nullptr, "q");
  for (int i = kChildren - 30; i > 20; --i) {
    EXPECT_EQ(S_OK, other->appendChild(m_children[Index(i)], nullptr));
    m_children.erase(m_children.begin() + i);
  }
  ExpectChain(0);
}

TEST_F(ChainMarks, Are_not_used_when_the_chain_was_reversed_by_hand) {
  std::vector<IXMLDOMNode*> reversed(m_children.rbegin(), m_children.rend());
  m_children.swap(reversed);
  m_parent->m_pFirstChild = m_children[0];
  for (std::size_t i = 0; i < m_children.size(); ++i) {
    m_children[i]->m_pNextSibling = i + 1 == m_children.size() ? nullptr : m_children[i + 1];
  }
  ExpectChain(0);
}

TEST_F(ChainMarks, Are_not_used_when_the_chain_was_replaced_by_hand) {
  const Node replaced(m_parent->m_pFirstChild);
  m_parent->m_pFirstChild = nullptr;
  Node(m_parent->AddChild("n", nullptr));
  EXPECT_EQ(kNone, ThrownMessage([&] { Before(m_children[Index(kChildren - 11)]); }));
}

TEST_F(ChainMarks, Are_not_used_when_the_parent_was_cleared) {
  const Node kept = Keep(m_children[Index(kChildren - 11)]);
  m_parent->ClearNode(false);
  Node(m_parent->AddChild("n", nullptr));
  EXPECT_EQ(kNone, ThrownMessage([&] { Before(kept); }));
  EXPECT_EQ(kNone, ThrownMessage([&] { Before(kept->m_pNextSibling); }));
}

TEST_F(ChainMarks, Are_not_used_when_the_chain_was_cut_off) {
  const Node kept = Keep(m_children[Index(kChildren - 11)]);
  m_parent->m_pFirstChild->ClearNode(false);
  EXPECT_EQ(kNone, ThrownMessage([&] { Before(kept->m_pNextSibling); }));
}

TEST_F(ChainMarks, Of_one_chain_are_not_used_for_another) {
  const Node other = NewElement(nullptr, "q");
  for (int i = 0; i < 100; ++i) other->AddChild(NewElement(nullptr, "c").Detach());
  Node last;
  other->get_lastChild(last.Out());
  int count = 0;
  for (IXMLDOMNode* node = last; node != nullptr; node = Before(node)) ++count;
  EXPECT_EQ(100, count);
  ExpectChain(0);
}

// RecurseSetDocument invalidates the marks, so that destroying the parent does not take the place
// that was found last out of the cache. The removals must not use it for the end of their chain.
// Only the address sanitizer notices if it is read.
TEST_F(ChainMarks, That_were_forgotten_do_not_give_a_place_at_the_end_of_another_chain) {
  const Document document = Load("<q/>");
  IXMLDOMNode* const other = Root(document);
  other->RecurseSetDocument(document);
  m_parent.Reset();
  for (int i = 0; i < 20; ++i) Node(other->AddChild("c", nullptr));
  while (other->m_pFirstChild->m_pNextSibling != nullptr) {
    Node removed;
    EXPECT_EQ(S_OK, other->removeChild(other->m_pFirstChild, removed.Out()));
  }
  Node(other->AddChild("d", nullptr));
  EXPECT_EQ("<q><c/><d/></q>", CompactXml(document));
}

TEST_F(ChainMarks, Do_not_change_what_random_edits_give) {
  for (unsigned int seed = 0; seed < 20; ++seed) {
    LongChains chains(seed);
    std::string last;
    for (int i = 0; i < 200; ++i) {
      const std::string step = chains.Step();
      ASSERT_EQ("", chains.Difference()) << "seed " << seed << ": " << last << "; " << step;
      last = step;
    }
  }
}

}  // namespace
