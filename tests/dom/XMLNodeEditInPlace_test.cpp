#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <algorithm>
#include <string>
#include <vector>

#include "harness/CompactXml.h"
#include "harness/LinearTime.h"
#include "harness/NodeFacts.h"
#include "harness/SmallStack.h"
#include "harness/Thrown.h"
#include "harness/Trees.h"

// Putting a node before another, or in its place.

namespace {

const int kMany = 100000;
const int kChildren = 4;

/// A document of kChildren children named b, c, d and e.
Document LoadFour() { return Load("<a><b/><c/><d/><e/></a>"); }

/// A tree whose root has these children.
std::string XmlWith(const std::vector<std::string>& names) {
  std::string xml = "<a>";
  for (const std::string& name : names) xml += "<" + name + "/>";
  return xml + "</a>";
}

// ---- insertBefore

TEST(XMLNodeEditInPlace, InsertBefore_puts_a_node_before_each_child) {
  const char* const rows[] = {"a1[n1 b1 c1 d1 e1]", "a1[b1 n1 c1 d1 e1]", "a1[b1 c1 n1 d1 e1]",
                              "a1[b1 c1 d1 n1 e1]"};
  for (int position = 0; position < kChildren; ++position) {
    SCOPED_TRACE(position);
    Document document = LoadFour();
    IXMLDOMNode* node = NewElement(nullptr, "n").Detach();
    IXMLDOMNode* out = nullptr;
    EXPECT_EQ(S_OK, Root(document)->insertBefore(node, At(document, {0, position}), &out));
    EXPECT_EQ(rows[position], References(Root(document)));
    EXPECT_EQ(node, out);
    EXPECT_EQ(Root(document), node->m_pParent);
    EXPECT_EQ("", NotOwnedBy(document, document));
  }
}

// A child that stands just before the reference child, or is it, stays where it is.
TEST(XMLNodeEditInPlace, InsertBefore_moves_each_child_before_each) {
  for (int from = 0; from < kChildren; ++from) {
    for (int to = 0; to < kChildren; ++to) {
      SCOPED_TRACE(std::to_string(from) + " before " + std::to_string(to));
      Document document = LoadFour();
      IXMLDOMNode* moved = At(document, {0, from});
      IXMLDOMNode* reference = At(document, {0, to});
      IXMLDOMNode* out = nullptr;
      EXPECT_EQ(S_OK, Root(document)->insertBefore(moved, reference, &out));
      EXPECT_EQ(moved, out);
      std::vector<std::string> names = {"b", "c", "d", "e"};
      if (from != to) {
        const std::string name = names[static_cast<std::size_t>(from)];
        const std::string before = names[static_cast<std::size_t>(to)];
        names.erase(names.begin() + from);
        names.insert(std::find(names.begin(), names.end(), before), name);
      }
      EXPECT_EQ(XmlWith(names), CompactXml(document));
      EXPECT_EQ("", NotOwnedBy(document, document));
      for (int i = 0; i < kChildren; ++i) EXPECT_EQ(1, At(document, {0, i})->GetRefCount());
    }
  }
}

TEST(XMLNodeEditInPlace, InsertBefore_needs_no_out_pointer) {
  Document document = Load("<a><b/></a>");
  EXPECT_EQ(S_OK, Root(document)->insertBefore(NewElement(nullptr, "n").Detach(),
                                               At(document, {0, 0}), nullptr));
  EXPECT_EQ("<a><n/><b/></a>", CompactXml(document));
}

TEST(XMLNodeEditInPlace, InsertBefore_from_another_document_changes_the_owner_but_of_attributes) {
  Document document = Load("<a><b/></a>");
  Document other = Load("<z><n v='1'><c w='2'>text</c></n><y/></z>");
  EXPECT_EQ(S_OK, Root(document)->insertBefore(At(other, {0, 0}), At(document, {0, 0}), nullptr));
  EXPECT_EQ("<a><n v='1'><c w='2'>text</c></n><b/></a>", CompactXml(document));
  EXPECT_EQ("<z><y/></z>", CompactXml(other));
  EXPECT_EQ("", NotOwnedBy(document, document));
  EXPECT_EQ("", AttributesNotOwnedBy(other, document));
}

TEST(XMLNodeEditInPlace, InsertBefore_of_a_document_moves_its_root_with_one_reference) {
  Document document = Load("<a><b/></a>");
  Document other = Load("<r><s/></r>");
  IXMLDOMNode* out = nullptr;
  EXPECT_EQ(S_OK, Root(document)->insertBefore(other, At(document, {0, 0}), &out));
  EXPECT_EQ("a1[r1[s1] b1]", References(Root(document)));
  EXPECT_EQ(Root(document)->m_pFirstChild, out);
  EXPECT_EQ("Document Root1", References(other));
}

TEST(XMLNodeEditInPlace, InsertBefore_of_a_document_before_its_own_root_changes_nothing) {
  Document document = Load("<a><b/></a>");
  EXPECT_EQ(S_OK, document->insertBefore(document, Root(document), nullptr));
  EXPECT_EQ("Document Root1[a1[b1]]", References(document));
}

TEST(XMLNodeEditInPlace, InsertBefore_below_a_node_without_owner_takes_it_from_all_that_follow) {
  Document document = Load("<a><p><b/><c><d/></c><e/></p></a>");
  Node parent;
  Root(document)->removeChild(At(document, {0, 0}), parent.Out());
  EXPECT_EQ("p ", NotOwnedBy(document, parent));
  EXPECT_EQ(S_OK, parent->insertBefore(new IXMLDOMNode(document, "n", nullptr, NODE_ELEMENT),
                                       At(parent, {1}), nullptr));
  EXPECT_EQ("<p><b/><n/><c><d/></c><e/></p>", CompactXml(parent));
  EXPECT_EQ("b ", NotOwnedBy(nullptr, parent));
}

TEST(XMLNodeEditInPlace, InsertBefore_of_a_detached_node_lets_its_following_siblings_go) {
  Document document = Load("<a><b/></a>");
  IXMLDOMNode* head = NewElement(nullptr, "n").Detach();
  Node follower(head->AddSibling("m", nullptr));
  EXPECT_EQ(S_OK, Root(document)->insertBefore(head, At(document, {0, 0}), nullptr));
  EXPECT_EQ("<a><n/><b/></a>", CompactXml(document));
  EXPECT_EQ(1, follower->GetRefCount());
}

// Siblings are no ancestors.
TEST(XMLNodeEditInPlace, InsertBefore_takes_a_node_that_the_parent_follows) {
  Node head = NewElement(nullptr, "n");
  Node parent(head->AddSibling("p", nullptr));
  Node(parent->AddChild("c", nullptr));
  IXMLDOMNode* out = nullptr;
  IXMLDOMNode* node = head.Detach();
  EXPECT_EQ(S_OK, parent->insertBefore(node, parent->m_pFirstChild, &out));
  EXPECT_EQ("p1[n1 c1]", References(parent));
  EXPECT_EQ(node, out);
  EXPECT_EQ(parent.Get(), node->m_pParent);
}

TEST(XMLNodeEditInPlace, InsertBefore_takes_a_node_that_an_ancestor_follows) {
  Node head = NewElement(nullptr, "n");
  Node top(head->AddSibling("t", nullptr));
  Node(top->AddChild("p", nullptr));
  Node(At(top, {0})->AddChild("c", nullptr));
  EXPECT_EQ(S_OK, At(top, {0})->insertBefore(head.Detach(), At(top, {0, 0}), nullptr));
  EXPECT_EQ("t1[p1[n1 c1]]", References(top));
}

TEST(XMLNodeEditInPlace, InsertBefore_ends_a_parent_that_the_new_child_alone_has_kept) {
  const int before = IXMLDOMNode::m_iObjCount;
  for (const bool hasAncestor : {false, true}) {
    Node head = NewElement(nullptr, "n");
    IXMLDOMNode* parent = head->AddSibling("p", nullptr);
    parent->RealRelease();
    if (hasAncestor) {
      parent = parent->AddChild("q", nullptr);
      parent->RealRelease();
    }
    Node child(parent->AddChild("c", nullptr));
    IXMLDOMNode* out = head;
    EXPECT_EQ(S_OK, parent->insertBefore(head.Detach(), child, &out));
    EXPECT_EQ(nullptr, out);
    EXPECT_EQ(1, child->GetRefCount());
    EXPECT_EQ(before + 1, IXMLDOMNode::m_iObjCount);
  }
}

TEST(XMLNodeEditInPlace, InsertBefore_refuses_a_node_that_the_parent_hangs_below) {
  Node top = NewElement(nullptr, "t");
  Node(top->AddSibling("s", nullptr));
  Node parent(top->AddChild("p", nullptr));
  Node(parent->AddChild("c", nullptr));
  EXPECT_EQ(E_ARGUMENT, parent->insertBefore(top, parent->m_pFirstChild, nullptr));
  EXPECT_EQ("t1[p2[c1]]", References(top));
  EXPECT_STREQ("s", top->m_pNextSibling->m_pszNodeName);
}

TEST(XMLNodeEditInPlace, InsertBefore_at_the_front_takes_constant_time) {
  ExpectLinearTime(kMany, [](int count) {
    Document document = Load("<a><b/></a>");
    IXMLDOMNode* root = Root(document);
    const double seconds = OnSmallStack([&] {
      for (int i = 0; i < count; ++i) {
        root->insertBefore(new IXMLDOMNode(nullptr, "n", nullptr, NODE_ELEMENT),
                           root->m_pFirstChild, nullptr);
      }
    });
    EXPECT_EQ(count + 1, root->CountChildNodes());
    return seconds;
  });
}

// ---- replaceChild

TEST(XMLNodeEditInPlace, ReplaceChild_takes_a_node_that_the_parent_follows) {
  Node head = NewElement(nullptr, "n");
  Node parent(head->AddSibling("p", nullptr));
  Node(parent->AddChild("c", nullptr));
  Node(parent->AddChild("d", nullptr));
  Node replaced;
  EXPECT_EQ(S_OK, parent->replaceChild(head.Detach(), At(parent, {1}), replaced.Out()));
  EXPECT_EQ("p1[c1 n1]", References(parent));
  EXPECT_EQ("d1", References(replaced));
}

TEST(XMLNodeEditInPlace, ReplaceChild_ends_a_parent_that_the_new_child_alone_has_kept) {
  const int before = IXMLDOMNode::m_iObjCount;
  Node head = NewElement(nullptr, "n");
  IXMLDOMNode* parent = head->AddSibling("p", nullptr);
  parent->RealRelease();
  Node(parent->AddChild("c", nullptr));
  Node replaced;
  EXPECT_EQ(S_OK, parent->replaceChild(head.Detach(), parent->m_pFirstChild, replaced.Out()));
  EXPECT_EQ("c1", References(replaced));
  EXPECT_EQ(before + 1, IXMLDOMNode::m_iObjCount);
}

// The exception leaves the new child detached, as it does one that has hung elsewhere.
TEST(XMLNodeEditInPlace, ReplaceChild_that_throws_has_dropped_the_following_siblings) {
  Node parent = NewElement(nullptr, "p");
  parent->AddAttribute("v", "1");
  Node head = NewElement(nullptr, "n");
  Node follower(head->AddSibling("m", nullptr));
  EXPECT_NE("", Thrown([&] { parent->replaceChild(head, parent->m_pFirstAttribute, nullptr); }));
  EXPECT_EQ("p1(v1)", References(parent));
  EXPECT_EQ(nullptr, head->m_pNextSibling);
  EXPECT_EQ(1, head->GetRefCount());
  EXPECT_EQ(1, follower->GetRefCount());
}

TEST(XMLNodeEditInPlace, ReplaceChild_puts_a_node_in_the_place_of_each_child) {
  const char* const rows[] = {"a1[n1 c1 d1 e1]", "a1[b1 n1 d1 e1]", "a1[b1 c1 n1 e1]",
                              "a1[b1 c1 d1 n1]"};
  for (int position = 0; position < kChildren; ++position) {
    SCOPED_TRACE(position);
    Document document = LoadFour();
    IXMLDOMNode* old = At(document, {0, position});
    IXMLDOMNode* node = NewElement(nullptr, "n").Detach();
    Node replaced;
    EXPECT_EQ(S_OK, Root(document)->replaceChild(node, old, replaced.Out()));
    EXPECT_EQ(rows[position], References(Root(document)));
    EXPECT_EQ(Root(document), node->m_pParent);
    EXPECT_EQ("", NotOwnedBy(document, document));
    EXPECT_EQ(old, replaced.Get());
    EXPECT_EQ(1, replaced->GetRefCount());
  }
}

TEST(XMLNodeEditInPlace, ReplaceChild_clears_the_links_of_the_old_node_and_the_owner_of_all_below) {
  Document document = Load("<a><b v='1'><c w='2'>text</c></b><d/></a>");
  Node replaced;
  Root(document)->replaceChild(NewElement(nullptr, "n").Detach(), At(document, {0, 0}),
                               replaced.Out());
  EXPECT_EQ("<b v='1'><c w='2'>text</c></b>", CompactXml(replaced));
  EXPECT_EQ(nullptr, replaced->m_pParent);
  EXPECT_EQ(nullptr, replaced->m_pNextSibling);
  EXPECT_EQ("", NotOwnedBy(nullptr, replaced));
  EXPECT_EQ("", AttributesNotOwnedBy(document, replaced));
  EXPECT_EQ("", NotOwnedBy(document, document));
}

// A child that replaces itself stays, and no reference is handed over.
TEST(XMLNodeEditInPlace, ReplaceChild_replaces_each_child_by_each) {
  for (int from = 0; from < kChildren; ++from) {
    for (int to = 0; to < kChildren; ++to) {
      SCOPED_TRACE(std::to_string(from) + " for " + std::to_string(to));
      Document document = LoadFour();
      IXMLDOMNode* old = At(document, {0, to});
      IXMLDOMNode* out = nullptr;
      EXPECT_EQ(S_OK, Root(document)->replaceChild(At(document, {0, from}), old, &out));
      EXPECT_EQ(old, out);
      EXPECT_EQ(1, old->GetRefCount());
      std::vector<std::string> names = {"b", "c", "d", "e"};
      if (from != to) {
        names[static_cast<std::size_t>(to)] = names[static_cast<std::size_t>(from)];
        names.erase(names.begin() + from);
        Release(out);
      }
      EXPECT_EQ(XmlWith(names), CompactXml(document));
      EXPECT_EQ("", NotOwnedBy(document, document));
    }
  }
}

TEST(XMLNodeEditInPlace, ReplaceChild_without_out_pointer_leaves_the_reference_to_who_has_it) {
  Document document = Load("<a><b/></a>");
  Node old(At(document, {0, 0}));
  EXPECT_EQ(S_OK, Root(document)->replaceChild(NewElement(nullptr, "n").Detach(), old, nullptr));
  EXPECT_EQ("<a><n/></a>", CompactXml(document));
  EXPECT_EQ(1, old->GetRefCount());
}

TEST(XMLNodeEditInPlace, ReplaceChild_puts_a_descendant_in_the_place_of_its_ancestor) {
  Document document = Load("<a><b><c><d/></c><e/></b><f/></a>");
  Node replaced;
  EXPECT_EQ(S_OK, Root(document)->replaceChild(At(document, {0, 0, 0}), At(document, {0, 0}),
                                               replaced.Out()));
  EXPECT_EQ("a1[c1[d1] f1]", References(Root(document)));
  EXPECT_EQ("b1[e1]", References(replaced));
  EXPECT_EQ("", NotOwnedBy(document, document));
}

TEST(XMLNodeEditInPlace, ReplaceChild_takes_from_another_document) {
  Document document = Load("<a><b/></a>");
  Document other = Load("<z><n v='1'><c w='2'>text</c></n><y/></z>");
  Node replaced;
  EXPECT_EQ(S_OK,
            Root(document)->replaceChild(At(other, {0, 0}), At(document, {0, 0}), replaced.Out()));
  EXPECT_EQ("<a><n v='1'><c w='2'>text</c></n></a>", CompactXml(document));
  EXPECT_EQ("<z><y/></z>", CompactXml(other));
  EXPECT_EQ("", NotOwnedBy(document, document));
  EXPECT_EQ("", AttributesNotOwnedBy(other, document));
}

TEST(XMLNodeEditInPlace, ReplaceChild_by_a_document_takes_its_root_with_one_reference) {
  Document document = Load("<a><b/></a>");
  Document other = Load("<r><s/></r>");
  Node replaced;
  EXPECT_EQ(S_OK, Root(document)->replaceChild(other, At(document, {0, 0}), replaced.Out()));
  EXPECT_EQ("a1[r1[s1]]", References(Root(document)));
  EXPECT_EQ("Document Root1", References(other));
}

TEST(XMLNodeEditInPlace, ReplaceChild_below_a_node_without_owner_takes_it_from_all_that_follow) {
  Document document = Load("<a><p><b/><c/><d><e/></d></p></a>");
  Node parent;
  Root(document)->removeChild(At(document, {0, 0}), parent.Out());
  Node replaced;
  EXPECT_EQ(S_OK, parent->replaceChild(new IXMLDOMNode(document, "n", nullptr, NODE_ELEMENT),
                                       At(parent, {1}), replaced.Out()));
  EXPECT_EQ("<p><b/><n/><d><e/></d></p>", CompactXml(parent));
  EXPECT_EQ("b ", NotOwnedBy(nullptr, parent));
}

TEST(XMLNodeEditInPlace, ReplaceChild_by_a_detached_node_lets_its_following_siblings_go) {
  Document document = Load("<a><b/><c/></a>");
  IXMLDOMNode* head = NewElement(nullptr, "n").Detach();
  Node follower(head->AddSibling("m", nullptr));
  Node replaced;
  EXPECT_EQ(S_OK, Root(document)->replaceChild(head, At(document, {0, 0}), replaced.Out()));
  EXPECT_EQ("<a><n/><c/></a>", CompactXml(document));
  EXPECT_EQ(1, follower->GetRefCount());
}

TEST(XMLNodeEditInPlace, ReplaceChild_of_wide_and_deep_trees_needs_no_stack) {
  for (bool isWide : {true, false}) {
    SCOPED_TRACE(isWide);
    ExpectLinearTime(kMany, [isWide](int count) {
      const std::string text = isWide ? "<a>" + Repeat("<b/>", count) + "</a>"
                                      : Repeat("<a>", count) + Repeat("</a>", count);
      Document document = Load(text);
      Document other = Load(text);
      const double seconds = OnSmallStack([&] {
        Node replaced;
        EXPECT_EQ(S_OK, document->replaceChild(other, Root(document), replaced.Out()));
      });
      EXPECT_EQ(document.Get(), At(document, {0, 0})->m_pOwnerDocument);
      return seconds;
    });
  }
}

}  // namespace
