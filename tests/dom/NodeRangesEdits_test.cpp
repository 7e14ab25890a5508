#include <gtest/gtest.h>
#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr_names.h>

#include <string>

#include "harness/CompactXml.h"
#include "harness/LinearTime.h"
#include "harness/NodeWalks.h"
#include "harness/SmallStack.h"
#include "harness/Trees.h"

namespace {

// ---- Editing on the way

TEST(NodeRangesEdits, the_child_in_hand_may_be_removed) {
  Document document = Load("<a><b/><c/><b/><b/><d/><b/></a>");
  for (NodePtr child : Children(Root(document))) {
    if (*child->m_pszNodeName == 'b') Remove(Root(document), child.Get());
  }
  EXPECT_EQ("<a><c/><d/></a>", CompactXml(document));
}

TEST(NodeRangesEdits, the_child_in_hand_may_be_moved) {
  Document document = Load("<a><from><b/><c/><d/></from><to/></a>");
  for (NodePtr child : Children(At(document, {0, 0}))) {
    EXPECT_EQ(S_OK, At(document, {0, 1})->appendChild(child.Get(), nullptr));
  }
  EXPECT_EQ("<a><from/><to><b/><c/><d/></to></a>", CompactXml(document));
  EXPECT_EQ("1 1 1 ", Counts(At(document, {0, 1, 0})));
}

TEST(NodeRangesEdits, the_child_in_hand_may_be_replaced) {
  Document document = Load("<a><b/><c/></a>");
  for (NodePtr child : Children(Root(document))) {
    NodePtr replaced;
    EXPECT_EQ(S_OK, Root(document)->replaceChild(NewElement(document, "x").Detach(), child.Get(),
                                                 replaced.Out()));
  }
  EXPECT_EQ("<a><x/><x/></a>", CompactXml(document));
}

TEST(NodeRangesEdits, what_is_put_in_directly_behind_is_passed_over) {
  Document document = Load("<a><b/><c/></a>");
  IXMLDOMNode* const root = Root(document);
  const auto putBehind = [root](IXMLDOMNode* child, const std::string&) {
    IXMLDOMNode* const added = NewElement(nullptr, "x").Detach();
    if (child->m_pNextSibling != nullptr) {
      EXPECT_EQ(S_OK, root->insertBefore(added, child->m_pNextSibling, nullptr));
    } else {
      EXPECT_EQ(S_OK, root->appendChild(added, nullptr));
    }
  };
  EXPECT_EQ("bc", NamesWithEdits(Children(root), putBehind));
  EXPECT_EQ("<a><b/><x/><c/><x/></a>", CompactXml(document));
}

TEST(NodeRangesEdits, a_loop_that_moves_each_child_to_the_end_goes_round_once) {
  Document document = Load("<a><b/><c/><d/></a>");
  IXMLDOMNode* const root = Root(document);
  const auto moveToEnd = [root](IXMLDOMNode* child, const std::string&) {
    EXPECT_EQ(S_OK, root->appendChild(child, nullptr));
  };
  EXPECT_EQ("bcd", NamesWithEdits(Children(root), moveToEnd));
  EXPECT_EQ("<a><b/><c/><d/></a>", CompactXml(document));
  EXPECT_EQ("1 1 1 ", Counts(root->m_pFirstChild));
}

TEST(NodeRangesEdits, a_loop_that_adds_a_child_at_the_end_visits_those_there_were) {
  Document document = Load("<a n='1'><b/><c/></a>");
  IXMLDOMNode* const root = Root(document);
  EXPECT_EQ("bc", NamesWithEdits(Children(root), [root](IXMLDOMNode*, const std::string&) {
              root->AddChild(NewElement(nullptr, "x").Detach());
            }));
  EXPECT_EQ("n", NamesWithEdits(Attributes(root), [root](IXMLDOMNode* attribute, const auto&) {
              root->AddAttribute((std::string(attribute->m_pszNodeName) + "n").c_str(), "2");
            }));
  EXPECT_EQ("<a n='1' nn='2'><b/><c/><x/><x/></a>", CompactXml(document));
}

TEST(NodeRangesEdits, a_loop_that_puts_in_children_before_the_last_ends) {
  Document document = Load("<a><b/><c/><last/></a>");
  IXMLDOMNode* const root = Root(document);
  IXMLDOMNode* const last = At(document, {0, 2});
  EXPECT_EQ("bcx", NamesWithEdits(Children(root), [&](IXMLDOMNode*, const std::string&) {
              EXPECT_EQ(S_OK, root->insertBefore(NewElement(nullptr, "x").Detach(), last, nullptr));
            }));
  EXPECT_EQ("<a><b/><c/><x/><x/><x/><last/></a>", CompactXml(document));
}

TEST(NodeRangesEdits, a_next_child_that_is_moved_comes_in_its_new_place) {
  Document document = Load("<a><b/><c/><d/></a>");
  IXMLDOMNode* const root = Root(document);
  EXPECT_EQ("bdc", NamesWithEdits(Children(root), [root](IXMLDOMNode* child, const std::string&) {
              if (*child->m_pszNodeName != 'b') return;
              EXPECT_EQ(S_OK, root->insertBefore(At(root, {2}), At(root, {1}), nullptr));
            }));
  EXPECT_EQ("<a><b/><d/><c/></a>", CompactXml(document));
}

TEST(NodeRangesEdits, a_next_child_moved_to_the_end_comes_last) {
  Document document = Load("<a><b/><c/><d/><e/></a>");
  IXMLDOMNode* const root = Root(document);
  const auto moveNext = [root](IXMLDOMNode* child, const std::string& names) {
    if (names == "b") {
      EXPECT_EQ(S_OK, root->appendChild(child->m_pNextSibling, nullptr));
    }
  };
  EXPECT_EQ("bdec", NamesWithEdits(Children(root), moveNext));
}

TEST(NodeRangesEdits, the_last_child_may_go_before_its_turn) {
  for (const bool isAdded : {false, true}) {
    Document document = Load("<a><b/><c/><d/></a>");
    IXMLDOMNode* const root = Root(document);
    const auto removeLast = [&](IXMLDOMNode* child, const std::string& names) {
      if (names == "b") Remove(root, At(root, {2}));
      if (isAdded) root->AddChild(NewElement(nullptr, "x").Detach());
      EXPECT_STRNE("d", child->m_pszNodeName);
    };
    // As many as there were: one that was added comes in place of the one that has gone.
    EXPECT_EQ(isAdded ? "bcx" : "bc", NamesWithEdits(Children(root), removeLast));
  }
}

TEST(NodeRangesEdits, the_last_child_may_come_to_stand_in_front) {
  Document document = Load("<a><b/><c/><d/></a>");
  IXMLDOMNode* const root = Root(document);
  EXPECT_EQ("bc", NamesWithEdits(Children(root), [root](IXMLDOMNode*, const std::string& names) {
              if (names != "b") return;
              EXPECT_EQ(S_OK, root->insertBefore(At(root, {2}), root->m_pFirstChild, nullptr));
            }));
  EXPECT_EQ("<a><d/><b/><c/></a>", CompactXml(document));
}

TEST(NodeRangesEdits, a_next_child_taken_out_is_passed_over) {
  Document document = Load("<a><b/><c/><d/></a>");
  IXMLDOMNode* const root = Root(document);
  const auto removeNext = [root](IXMLDOMNode* child, const std::string& names) {
    if (names == "b") Remove(root, child->m_pNextSibling);
  };
  EXPECT_EQ("bd", NamesWithEdits(Children(root), removeNext));
  EXPECT_EQ("<a><b/><d/></a>", CompactXml(document));
}

TEST(NodeRangesEdits, a_next_child_moved_elsewhere_does_not_lead_the_walk_there) {
  Document document = Load("<a><b/><c/><to><d/><e/></to></a>");
  IXMLDOMNode* const to = At(document, {0, 2});
  const auto moveNext = [to](IXMLDOMNode* child, const std::string& names) {
    if (names == "b") {
      EXPECT_EQ(S_OK, to->insertBefore(child->m_pNextSibling, to->m_pFirstChild, nullptr));
    }
  };
  EXPECT_EQ("bto", NamesWithEdits(Children(Root(document)), moveNext));
  EXPECT_EQ("<a><b/><to><c/><d/><e/></to></a>", CompactXml(document));
}

TEST(NodeRangesEdits, the_present_child_and_the_next_may_both_go) {
  Document document = Load("<a><k/><b/><c/><d/><e/><m/></a>");
  IXMLDOMNode* const root = Root(document);
  const auto removePairs = [root](IXMLDOMNode* child, const std::string&) {
    if (std::string("bd").find(child->m_pszNodeName) == std::string::npos) return;
    Remove(root, child->m_pNextSibling);
    Remove(root, child);
  };
  EXPECT_EQ("kbdm", NamesWithEdits(Children(root), removePairs));
  EXPECT_EQ("<a><k/><m/></a>", CompactXml(document));

  document->loadXML("<a><b/><c/><d/><e/></a>");
  IXMLDOMNode* const other = Root(document);
  EXPECT_EQ("bd", NamesWithEdits(Children(other), [other](IXMLDOMNode* child, const auto&) {
              Remove(other, child->m_pNextSibling);
              Remove(other, child);
            }));
  EXPECT_EQ("<a/>", CompactXml(document));
}

TEST(NodeRangesEdits, a_present_child_moved_while_the_next_goes_is_followed) {
  Document document = Load("<a><b/><c/><d/><e/><f/></a>");
  IXMLDOMNode* const root = Root(document);
  const auto moveOn = [root](IXMLDOMNode* child, const std::string& names) {
    if (names != "bc") return;
    Remove(root, child->m_pNextSibling);
    EXPECT_EQ(S_OK, root->insertBefore(child, At(root, {3}), nullptr));
  };
  EXPECT_EQ("bcf", NamesWithEdits(Children(root), moveOn));
  EXPECT_EQ("<a><b/><e/><c/><f/></a>", CompactXml(document));
}

TEST(NodeRangesEdits, a_walk_ends_when_the_nodes_around_it_have_all_gone) {
  Document document = Load("<a><b/><c/><d/><e/></a>");
  IXMLDOMNode* const root = Root(document);
  const auto removeAround = [root](IXMLDOMNode*, const std::string& names) {
    if (names != "bc") return;
    for (int i = 0; i < 3; ++i) Remove(root, root->m_pFirstChild);
  };
  EXPECT_EQ("bc", NamesWithEdits(Children(root), removeAround));
  EXPECT_EQ("<a><e/></a>", CompactXml(document));
}

TEST(NodeRangesEdits, a_loop_may_clear_what_it_walks) {
  Document document = Load("<a><b/><c/><d/></a>");
  IXMLDOMNode* const root = Root(document);
  EXPECT_EQ("b", NamesWithEdits(Children(root), [root](IXMLDOMNode*, const std::string&) {
              root->ClearNode(false);
            }));
  EXPECT_EQ(nullptr, root->m_pFirstChild);
}

TEST(NodeRangesEdits, a_walk_knows_its_chain_when_nodes_have_no_parent) {
  const Node owner = NewElement(nullptr, "a");
  owner->m_pFirstChild = NewElement(nullptr, "b").Detach();
  owner->m_pFirstChild->m_pNextSibling = NewElement(nullptr, "c").Detach();
  EXPECT_EQ("b c ", Names(Children(owner.Get())));
}

TEST(NodeRangesEdits, removing_the_next_child_each_time_is_linear) {
  ExpectLinearTime(100000, [](int count) {
    Document document = Load("<a>" + Repeat("<b/>", count) + "</a>");
    IXMLDOMNode* const root = Root(document);
    int visits = 0;
    const double seconds = OnSmallStack([&] {
      for (NodePtr child : Children(root)) {
        ++visits;
        IXMLDOMNode* const next = child->m_pNextSibling;
        if (next == nullptr) continue;
        // By hand, because removeChild looks for the previous sibling.
        child->m_pNextSibling = next->m_pNextSibling;
        next->m_pNextSibling = nullptr;
        next->m_pParent = nullptr;
        next->RealRelease();
      }
    });
    EXPECT_EQ((count + 1) / 2, visits);
    return seconds;
  });
}

TEST(NodeRangesEdits, a_tree_loaded_anew_on_the_way_does_no_harm) {
  Document document = Load("<a><b/><c/><d/></a>");
  const auto load = [&document](IXMLDOMNode*, const std::string&) {
    EXPECT_EQ(VARIANT_TRUE, document->loadXML("<x/>"));
  };
  EXPECT_EQ("bcd", NamesWithEdits(Children(Root(document)), load));
  EXPECT_EQ("<x/>", CompactXml(document));
}

TEST(NodeRangesEdits, selected_nodes_stay_whatever_is_removed) {
  Document document = Load("<a><b><b/></b><b/></a>");
  IXMLDOMNode* const root = Root(document);
  const auto removeAll = [root](IXMLDOMNode*, const std::string&) {
    while (root->m_pFirstChild != nullptr) Remove(root, root->m_pFirstChild);
  };
  EXPECT_EQ("bbb", NamesWithEdits(Selected(document.Get(), "//b"), removeAll));
  EXPECT_EQ("<a/>", CompactXml(document));
}

TEST(NodeRangesEdits, a_list_that_grows_is_walked_as_it_was) {
  const Node node = NewElement(nullptr, "a");
  const XMLPtr<IXMLDOMNodeList> list = Adopt(new IXMLDOMNodeList);
  EXPECT_EQ("", Names(Listed(list)));
  list->Add(node);
  list->Add(node);
  int count = 0;
  for (NodePtr found : Listed(list)) {
    ++count;
    list->Add(found.Get());
  }
  EXPECT_EQ(2, count);
  EXPECT_EQ(4, Listed(list).Count());
}

TEST(NodeRangesEdits, a_child_that_was_visited_and_is_moved_to_the_end_leaves_out_no_other) {
  Document document = Load("<p><a/><b/><c/><d/><e/><f/></p>");
  IXMLDOMNode* root = Root(document);
  IXMLDOMNode* a = root->m_pFirstChild;
  EXPECT_EQ("acefa",
            NamesWithEdits(Children(root), [&](IXMLDOMNode* child, const std::string& met) {
              if (met == "a" || met == "ac") Remove(root, child->m_pNextSibling);
              if (met == "ac") {
                EXPECT_EQ(S_OK, root->appendChild(a, nullptr));
              }
            }));
}

}  // namespace
