#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <string>

#include "harness/CompactXml.h"
#include "harness/LinearTime.h"
#include "harness/NodeFacts.h"
#include "harness/SmallStack.h"
#include "harness/Thrown.h"
#include "harness/Trees.h"

// Moving a node to the end, and taking it out. Putting it before or in place of another stands in
// XMLNodeEditInPlace_test.cpp.

namespace {

const int kMany = 100000;

// ---- appendChild

TEST(XMLNodeEdit, AppendChild_adds_a_detached_node_and_takes_its_reference_over) {
  Document document = Load("<a><b/></a>");
  IXMLDOMNode* node = new IXMLDOMNode(nullptr, "n", nullptr, NODE_ELEMENT);
  IXMLDOMNode* out = nullptr;
  EXPECT_EQ(S_OK, Root(document)->appendChild(node, &out));
  EXPECT_EQ("<a><b/><n/></a>", CompactXml(document));
  EXPECT_EQ(node, out);
  EXPECT_EQ(1, node->GetRefCount());
  EXPECT_EQ(Root(document), node->m_pParent);
  EXPECT_EQ("", NotOwnedBy(document, document));
}

TEST(XMLNodeEdit, AppendChild_needs_no_out_pointer) {
  Document document = Load("<a/>");
  EXPECT_EQ(S_OK, Root(document)->appendChild(NewElement(document, "n").Detach(), nullptr));
  EXPECT_EQ("<a><n/></a>", CompactXml(document));
}

TEST(XMLNodeEdit, AppendChild_of_a_child_moves_it_to_the_end) {
  const char* const rows[] = {"a1[c1 d1 b1]", "a1[b1 d1 c1]", "a1[b1 c1 d1]"};
  for (int position = 0; position < 3; ++position) {
    SCOPED_TRACE(position);
    Document document = Load("<a><b/><c/><d/></a>");
    EXPECT_EQ(S_OK, Root(document)->appendChild(At(document, {0, position}), nullptr));
    EXPECT_EQ(rows[position], References(Root(document)));
    EXPECT_EQ("", NotOwnedBy(document, document));
  }
}

TEST(XMLNodeEdit, AppendChild_takes_a_node_out_from_where_it_hangs) {
  Document document = Load("<a><b><c/><d><e/></d></b><f/></a>");
  EXPECT_EQ(S_OK, At(document, {0, 1})->appendChild(At(document, {0, 0, 1}), nullptr));
  EXPECT_EQ("<a><b><c/></b><f><d><e/></d></f></a>", CompactXml(document));
  EXPECT_EQ("Document Root1[a1[b1[c1] f1[d1[e1]]]]", References(document));
}

TEST(XMLNodeEdit, AppendChild_from_another_document_changes_the_owner_of_all_but_attributes) {
  Document document = Load("<a/>");
  Document other = Load("<z><b v='1'><c w='2'>text</c></b><y/></z>");
  IXMLDOMNode* node = At(other, {0, 0});
  EXPECT_EQ(S_OK, Root(document)->appendChild(node, nullptr));
  EXPECT_EQ("<a><b v='1'><c w='2'>text</c></b></a>", CompactXml(document));
  EXPECT_EQ("<z><y/></z>", CompactXml(other));
  EXPECT_EQ("", NotOwnedBy(document, document));
  EXPECT_EQ("", AttributesNotOwnedBy(other, document));
  EXPECT_EQ("", NotOwnedBy(other, other));
}

TEST(XMLNodeEdit, AppendChild_to_a_node_without_owner_takes_the_owner_away) {
  Document document = Load("<a><b><c/></b></a>");
  Node parent = NewElement(nullptr, "p");
  EXPECT_EQ(S_OK, parent->appendChild(At(document, {0, 0}), nullptr));
  EXPECT_EQ("<p><b><c/></b></p>", CompactXml(parent));
  EXPECT_EQ("", NotOwnedBy(nullptr, parent));
  EXPECT_EQ("", NotOwnedBy(document, document));
}

// The reference that the lookup of the root element adds stays with it.
TEST(XMLNodeEdit, AppendChild_of_a_document_moves_its_root_and_leaves_a_reference_to_it) {
  Document document = Load("<a><b/></a>");
  Document other = Load("<r><s/></r>");
  IXMLDOMNode* root = Root(other);
  IXMLDOMNode* out = nullptr;
  EXPECT_EQ(S_OK, Root(document)->appendChild(other, &out));
  EXPECT_EQ(root, out);
  EXPECT_EQ("<a><b/><r><s/></r></a>", CompactXml(document));
  EXPECT_EQ("", CompactXml(other));
  EXPECT_EQ("Document Root1[a1[b1 r2[s1]]]", References(document));
  EXPECT_EQ(1, other->GetRefCount());
  EXPECT_EQ("", NotOwnedBy(document, document));
  Release(out);
}

TEST(XMLNodeEdit, AppendChild_of_a_document_leaves_its_other_children) {
  Document document = Load("<a/>");
  Document other = Load("<r/>");
  Node(other->AddChild("s", nullptr));
  IXMLDOMNode* out = nullptr;
  EXPECT_EQ(S_OK, Root(document)->appendChild(other, &out));
  EXPECT_EQ("<a><r/></a>", CompactXml(document));
  EXPECT_EQ("<s/>", CompactXml(other));
  Release(out);
}

TEST(XMLNodeEdit, AppendChild_of_a_detached_node_takes_following_siblings_along) {
  Document document = Load("<a/>");
  IXMLDOMNode* head = NewElement(nullptr, "n").Detach();
  Node follower(head->AddSibling("m", nullptr));
  EXPECT_EQ(S_OK, Root(document)->appendChild(head, nullptr));
  EXPECT_EQ("<a><n/><m/></a>", CompactXml(document));
  EXPECT_EQ("", NotOwnedBy(document, document));
  EXPECT_EQ(nullptr, follower->m_pParent);
}

TEST(XMLNodeEdit, AppendChild_looks_at_no_type) {
  Node parent(new IXMLDOMNode(nullptr, "p", nullptr, NODE_COMMENT));
  for (DOMNodeType type : {NODE_INVALID, NODE_ATTRIBUTE, NODE_TEXT, NODE_DOCUMENT_FRAGMENT}) {
    SCOPED_TRACE(type);
    IXMLDOMNode* node = new IXMLDOMNode(nullptr, "n", nullptr, type);
    EXPECT_EQ(S_OK, parent->appendChild(node, nullptr));
    EXPECT_EQ(parent.Get(), node->m_pParent);
  }
}

TEST(XMLNodeEdit, AppendChild_of_wide_and_deep_trees_needs_no_stack) {
  for (bool isWide : {true, false}) {
    SCOPED_TRACE(isWide);
    ExpectLinearTime(kMany, [isWide](int count) {
      Document document = Load("<top/>");
      Document other = Load(isWide ? "<a>" + Repeat("<b/>", count) + "</a>"
                                   : Repeat("<a>", count) + Repeat("</a>", count));
      const double seconds =
          OnSmallStack([&] { Root(document)->appendChild(At(other, {0}), nullptr); });
      EXPECT_EQ(Root(document), At(document, {0, 0})->m_pParent);
      return seconds;
    });
  }
}

// ---- removeChild

TEST(XMLNodeEdit, RemoveChild_keeps_the_others_in_order_and_hands_the_reference_over) {
  const char* const rows[] = {"<a><c/><d/></a>", "<a><b/><d/></a>", "<a><b/><c/></a>"};
  for (int position = 0; position < 3; ++position) {
    SCOPED_TRACE(position);
    Document document = Load("<a><b/><c/><d/></a>");
    IXMLDOMNode* child = At(document, {0, position});
    Node removed;
    EXPECT_EQ(S_OK, Root(document)->removeChild(child, removed.Out()));
    EXPECT_EQ(rows[position], CompactXml(document));
    EXPECT_EQ(child, removed.Get());
    EXPECT_EQ(1, removed->GetRefCount());
    EXPECT_EQ(nullptr, removed->m_pParent);
    EXPECT_EQ(nullptr, removed->m_pNextSibling);
    EXPECT_EQ(nullptr, removed->m_pOwnerDocument);
  }
}

TEST(XMLNodeEdit, RemoveChild_leaves_the_owner_of_what_hangs_below) {
  Document document = Load("<a><b v='1'><c/>text</b></a>");
  Node removed;
  Root(document)->removeChild(At(document, {0, 0}), removed.Out());
  EXPECT_EQ("<b v='1'><c/>text</b>", CompactXml(removed));
  EXPECT_EQ("b ", NotOwnedBy(document, removed));
  EXPECT_EQ("", AttributesNotOwnedBy(document, removed));
  EXPECT_EQ(removed.Get(), At(removed, {0})->m_pParent);
}

TEST(XMLNodeEdit, RemoveChild_of_the_last_child_leaves_none) {
  Document document = Load("<a><b/></a>");
  Node removed;
  EXPECT_EQ(S_OK, Root(document)->removeChild(At(document, {0, 0}), removed.Out()));
  EXPECT_EQ("<a/>", CompactXml(document));
}

TEST(XMLNodeEdit, RemoveChild_takes_the_root_out_of_a_document) {
  Document document = Load("<a><b/></a>");
  Node removed;
  EXPECT_EQ(S_OK, document->removeChild(Root(document), removed.Out()));
  EXPECT_EQ("", CompactXml(document));
  EXPECT_EQ("<a><b/></a>", CompactXml(removed));
}

TEST(XMLNodeEdit, RemoveChild_without_out_pointer_leaves_the_reference_to_who_has_the_node) {
  Document document = Load("<a><b/></a>");
  Node child(At(document, {0, 0}));
  EXPECT_EQ(S_OK, Root(document)->removeChild(child, nullptr));
  EXPECT_EQ(1, child->GetRefCount());
}

// What hangs below it still names the document that is gone.
TEST(XMLNodeEdit, A_removed_node_that_outlives_its_document_can_be_written_and_moved) {
  Document document = Load("<a><b v='1'><c><d/></c>text</b></a>");
  Document other = Load("<z/>");
  IXMLDOMNode* removed = nullptr;
  Root(document)->removeChild(At(document, {0, 0}), &removed);
  document.Reset();
  EXPECT_EQ("<b v='1'>\n  text\n  <c>\n    <d/>\n  </c>\n</b>\n", XmlOf(removed));
  EXPECT_EQ("text", TakeHeap(removed->GetTextAsStr()));
  EXPECT_EQ(S_OK, Root(other)->appendChild(removed, nullptr));
  EXPECT_EQ("", NotOwnedBy(other, other));
}

TEST(XMLNodeEdit, A_removed_node_is_whole_again_once_it_is_attached) {
  Document document = Load("<a><b><c/></b></a>");
  Document other = Load("<z/>");
  IXMLDOMNode* removed = nullptr;
  Root(document)->removeChild(At(document, {0, 0}), &removed);
  EXPECT_EQ(S_OK, Root(other)->appendChild(removed, nullptr));
  EXPECT_EQ("", NotOwnedBy(other, other));
  EXPECT_EQ("Document Root1[z1[b1[c1]]]", References(other));
}

// ---- RemoveNodeFromTree

TEST(XMLNodeEdit, RemoveNodeFromTree_takes_a_node_out_and_keeps_its_reference_count) {
  const char* const rows[] = {"<a><c/><d/></a>", "<a><b/><d/></a>", "<a><b/><c/></a>"};
  for (int position = 0; position < 3; ++position) {
    SCOPED_TRACE(position);
    Document document = Load("<a><b/><c/><d/></a>");
    Node child(At(document, {0, position}));
    child->RemoveNodeFromTree();
    EXPECT_EQ(rows[position], CompactXml(document));
    EXPECT_EQ(1, child->GetRefCount());
    EXPECT_EQ(nullptr, child->m_pParent);
    EXPECT_EQ(nullptr, child->m_pNextSibling);
    EXPECT_EQ(nullptr, child->m_pOwnerDocument);
  }
}

TEST(XMLNodeEdit, RemoveNodeFromTree_leaves_a_node_without_parent_as_it_is) {
  Document document = NewDocument();
  Node node = NewElement(document, "a");
  Node follower(node->AddSibling("b", nullptr));
  node->RemoveNodeFromTree();
  EXPECT_EQ(document.Get(), node->m_pOwnerDocument);
  EXPECT_EQ(follower.Get(), node->m_pNextSibling);
  EXPECT_EQ(1, node->GetRefCount());
}

TEST(XMLNodeEdit, RemoveNodeFromTree_of_an_attribute_throws_and_changes_nothing) {
  for (const char* xml : {"<a v='1'/>", "<a v='1'><b/><c/></a>"}) {
    SCOPED_TRACE(xml);
    Document document = Load(xml);
    const std::string before = CompactXml(document);
    IXMLDOMNode* attribute = Root(document)->m_pFirstAttribute;
    EXPECT_EQ("IXMLDOMNode::get_previousSibling: Call failed, no previous sibling",
              Thrown([&] { attribute->RemoveNodeFromTree(); }));
    EXPECT_EQ(before, CompactXml(document));
    EXPECT_EQ(Root(document), attribute->m_pParent);
    EXPECT_EQ(document.Get(), attribute->m_pOwnerDocument);
    EXPECT_EQ(1, attribute->GetRefCount());
  }
}

// ---- Cost

TEST(XMLNodeEdit, Children_are_taken_from_the_front_in_constant_time) {
  ExpectLinearTime(kMany, [](int count) {
    Document document = Load("<a>" + Repeat("<b/>", count) + "</a>");
    IXMLDOMNode* root = Root(document);
    const double seconds = OnSmallStack([&] {
      while (root->m_pFirstChild != nullptr) {
        Node removed;
        root->removeChild(root->m_pFirstChild, removed.Out());
      }
    });
    EXPECT_EQ("<a/>", CompactXml(document));
    return seconds;
  });
}

}  // namespace
