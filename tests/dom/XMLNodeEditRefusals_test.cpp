#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <string>

#include "harness/CompactXml.h"
#include "harness/NodeFacts.h"
#include "harness/Thrown.h"
#include "harness/Trees.h"

// Edits that are not done: arguments that are of no use, nodes that would come to hang below
// themselves, and nodes that their parent does not list.

namespace {

/// What no edit stores in an out-pointer.
IXMLDOMNode* Untouched() { return reinterpret_cast<IXMLDOMNode*>(alignof(IXMLDOMNode)); }

const char kXml[] = "<a v='1'><b w='2'><c/></b><d/></a>";

// The nodes of kXml.
struct Parts {
  IXMLDOMDocument2* document;
  IXMLDOMNode* a;
  IXMLDOMNode* b;
  IXMLDOMNode* c;
  IXMLDOMNode* d;
  IXMLDOMNode* v;  // attribute of a
  IXMLDOMNode* w;  // attribute of b
};

struct Edit {
  const char* name;
  HRESULT (*call)(const Parts& parts, IXMLDOMDocument2* empty, IXMLDOMNode** out);
};

std::ostream& operator<<(std::ostream& stream, const Edit& edit) { return stream << edit.name; }

const Edit kRefused[] = {
    // Nothing to put in place.
    {"append null", [](const Parts& p, IXMLDOMDocument2*,
                       IXMLDOMNode** out) { return p.a->appendChild(nullptr, out); }},
    {"insert null", [](const Parts& p, IXMLDOMDocument2*,
                       IXMLDOMNode** out) { return p.a->insertBefore(nullptr, p.b, out); }},
    {"replace by null", [](const Parts& p, IXMLDOMDocument2*,
                           IXMLDOMNode** out) { return p.a->replaceChild(nullptr, p.b, out); }},
    {"append an empty document", [](const Parts& p, IXMLDOMDocument2* empty,
                                    IXMLDOMNode** out) { return p.a->appendChild(empty, out); }},
    {"insert an empty document",
     [](const Parts& p, IXMLDOMDocument2* empty, IXMLDOMNode** out) {
       return p.a->insertBefore(empty, p.b, out);
     }},
    {"replace by an empty document",
     [](const Parts& p, IXMLDOMDocument2* empty, IXMLDOMNode** out) {
       return p.a->replaceChild(empty, p.b, out);
     }},

    // No child to do it at.
    {"insert before null", [](const Parts& p, IXMLDOMDocument2*,
                              IXMLDOMNode** out) { return p.a->insertBefore(p.c, nullptr, out); }},
    {"insert before a grandchild",
     [](const Parts& p, IXMLDOMDocument2*, IXMLDOMNode** out) {
       return p.a->insertBefore(p.d, p.c, out);
     }},
    {"insert before the parent",
     [](const Parts& p, IXMLDOMDocument2*, IXMLDOMNode** out) {
       return p.b->insertBefore(p.d, p.a, out);
     }},
    {"insert before a document",
     [](const Parts& p, IXMLDOMDocument2*, IXMLDOMNode** out) {
       return p.a->insertBefore(p.d, p.document, out);
     }},
    {"replace null", [](const Parts& p, IXMLDOMDocument2*,
                        IXMLDOMNode** out) { return p.a->replaceChild(p.c, nullptr, out); }},
    {"replace a grandchild", [](const Parts& p, IXMLDOMDocument2*,
                                IXMLDOMNode** out) { return p.a->replaceChild(p.d, p.c, out); }},
    {"replace a document",
     [](const Parts& p, IXMLDOMDocument2*, IXMLDOMNode** out) {
       return p.a->replaceChild(p.d, p.document, out);
     }},
    {"remove null", [](const Parts& p, IXMLDOMDocument2*,
                       IXMLDOMNode** out) { return p.a->removeChild(nullptr, out); }},
    {"remove a grandchild", [](const Parts& p, IXMLDOMDocument2*,
                               IXMLDOMNode** out) { return p.a->removeChild(p.c, out); }},
    {"remove the parent", [](const Parts& p, IXMLDOMDocument2*,
                             IXMLDOMNode** out) { return p.b->removeChild(p.a, out); }},
    {"remove itself", [](const Parts& p, IXMLDOMDocument2*,
                         IXMLDOMNode** out) { return p.b->removeChild(p.b, out); }},
    {"remove a document",
     [](const Parts& p, IXMLDOMDocument2*, IXMLDOMNode** out) {
       return p.document->removeChild(p.document, out);
     }},

    // A node that would come to hang below itself.
    {"append to itself", [](const Parts& p, IXMLDOMDocument2*,
                            IXMLDOMNode** out) { return p.b->appendChild(p.b, out); }},
    {"append to its child", [](const Parts& p, IXMLDOMDocument2*,
                               IXMLDOMNode** out) { return p.b->appendChild(p.a, out); }},
    {"append to its grandchild", [](const Parts& p, IXMLDOMDocument2*,
                                    IXMLDOMNode** out) { return p.c->appendChild(p.a, out); }},
    {"append to its attribute", [](const Parts& p, IXMLDOMDocument2*,
                                   IXMLDOMNode** out) { return p.v->appendChild(p.a, out); }},
    {"append to the attribute of a child",
     [](const Parts& p, IXMLDOMDocument2*, IXMLDOMNode** out) {
       return p.w->appendChild(p.a, out);
     }},
    {"append the document to its root",
     [](const Parts& p, IXMLDOMDocument2*, IXMLDOMNode** out) {
       return p.a->appendChild(p.document, out);
     }},
    {"insert below itself", [](const Parts& p, IXMLDOMDocument2*,
                               IXMLDOMNode** out) { return p.b->insertBefore(p.b, p.c, out); }},
    {"insert below its child", [](const Parts& p, IXMLDOMDocument2*,
                                  IXMLDOMNode** out) { return p.b->insertBefore(p.a, p.c, out); }},
    {"insert the document below its root",
     [](const Parts& p, IXMLDOMDocument2*, IXMLDOMNode** out) {
       return p.a->insertBefore(p.document, p.b, out);
     }},
    {"replace a child by its parent",
     [](const Parts& p, IXMLDOMDocument2*, IXMLDOMNode** out) {
       return p.b->replaceChild(p.b, p.c, out);
     }},
    {"replace a grandchild by its grandparent",
     [](const Parts& p, IXMLDOMDocument2*, IXMLDOMNode** out) {
       return p.b->replaceChild(p.a, p.c, out);
     }},
    {"replace a child by the document",
     [](const Parts& p, IXMLDOMDocument2*, IXMLDOMNode** out) {
       return p.b->replaceChild(p.document, p.c, out);
     }},
};

class XMLNodeEditRefusals : public testing::TestWithParam<Edit> {};

INSTANTIATE_TEST_SUITE_P(All, XMLNodeEditRefusals, testing::ValuesIn(kRefused));

TEST_P(XMLNodeEditRefusals, Change_nothing) {
  Document document = Load(kXml);
  Document empty = NewDocument();
  const Parts parts = {document,
                       Root(document),
                       At(document, {0, 0}),
                       At(document, {0, 0, 0}),
                       At(document, {0, 1}),
                       Root(document)->m_pFirstAttribute,
                       At(document, {0, 0})->m_pFirstAttribute};
  const std::string references = References(document);
  IXMLDOMNode* out = Untouched();
  EXPECT_EQ(E_ARGUMENT, GetParam().call(parts, empty, &out));
  EXPECT_EQ(Untouched(), out);
  EXPECT_EQ(references, References(document));
  EXPECT_EQ("", NotOwnedBy(document, document));
  EXPECT_EQ("Document Root1", References(empty));
}

// A node of any type takes children and attributes, and so does an attribute.
TEST(XMLNodeEditRefusals, What_hangs_below_an_attribute_hangs_below_the_element_too) {
  const struct {
    const char* name;
    Node (*below)(IXMLDOMNode* attribute);
  } rows[] = {
      {"child", [](IXMLDOMNode* attribute) { return Node(attribute->AddChild("n", nullptr)); }},
      {"attribute",
       [](IXMLDOMNode* attribute) {
         attribute->AddAttribute("w", "2");
         return Node(attribute->GetAttribute("w"));
       }},
      {"child of an attribute",
       [](IXMLDOMNode* attribute) {
         attribute->AddAttribute("w", "2");
         return Node(attribute->m_pFirstAttribute->AddChild("n", nullptr));
       }},
      {"attribute of a child",
       [](IXMLDOMNode* attribute) {
         const Node child(attribute->AddChild("n", nullptr));
         child->AddAttribute("w", "2");
         return Node(child->GetAttribute("w"));
       }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    Document document = Load("<a><b v='1'/></a>");
    Node below = row.below(At(document, {0, 0})->m_pFirstAttribute);
    const std::string references = References(document);
    EXPECT_EQ(E_ARGUMENT, below->appendChild(At(document, {0, 0}), nullptr));
    EXPECT_EQ(references, References(document));
  }
}

// What follows a detached node would move along with it, and so come to hang below itself.
TEST(XMLNodeEditRefusals, A_detached_node_is_not_appended_below_what_follows_it) {
  Node head = NewElement(nullptr, "n");
  Node follower(head->AddSibling("m", nullptr));
  Node child(follower->AddChild("o", nullptr));
  for (IXMLDOMNode* parent : {follower.Get(), child.Get()}) {
    EXPECT_EQ(E_ARGUMENT, parent->appendChild(head, nullptr));
  }
  EXPECT_EQ("n1", References(head));
  EXPECT_EQ(follower.Get(), head->m_pNextSibling);
  EXPECT_EQ("m2[o2]", References(follower));
}

// ---- Nodes that name a parent which does not list them

TEST(XMLNodeEditRefusals, InsertBefore_an_attribute_gives_1_and_changes_nothing) {
  for (const char* xml : {"<a v='1'/>", "<a v='1'><b/></a>"}) {
    SCOPED_TRACE(xml);
    Document document = Load(xml);
    const std::string references = References(document);
    Node node = NewElement(nullptr, "n");
    IXMLDOMNode* out = Untouched();
    EXPECT_EQ(S_FALSE, Root(document)->insertBefore(node, Root(document)->m_pFirstAttribute, &out));
    EXPECT_EQ(Untouched(), out);
    EXPECT_EQ(references, References(document));
    EXPECT_EQ(nullptr, node->m_pParent);
  }
}

TEST(XMLNodeEditRefusals, InsertBefore_looks_for_the_reference_child_before_the_new_one) {
  Document document = Load(kXml);
  Document empty = NewDocument();
  IXMLDOMNode* attribute = Root(document)->m_pFirstAttribute;
  EXPECT_EQ(S_FALSE, Root(document)->insertBefore(empty, attribute, nullptr));
  EXPECT_EQ(S_FALSE, Root(document)->insertBefore(Root(document), attribute, nullptr));
}

TEST(XMLNodeEditRefusals, InsertBefore_a_node_that_its_parent_has_dropped_gives_1) {
  Document document = Load("<a><b/></a>");
  Node dropped = Keep(At(document, {0, 0}));
  Root(document)->ClearNode(false);
  EXPECT_EQ(Root(document), dropped->m_pParent);
  Node node = NewElement(nullptr, "n");
  EXPECT_EQ(S_FALSE, Root(document)->insertBefore(node, dropped, nullptr));
  EXPECT_EQ("<a/>", CompactXml(document));
}

const char kNotListed[] = "IXMLDOMNode::get_previousSibling: Call failed, no previous sibling";

TEST(XMLNodeEditRefusals, An_attribute_that_hangs_somewhere_throws_and_stays) {
  const Edit rows[] = {
      {"append it", [](const Parts& p, IXMLDOMDocument2*,
                       IXMLDOMNode** out) { return p.d->appendChild(p.v, out); }},
      {"insert it", [](const Parts& p, IXMLDOMDocument2*,
                       IXMLDOMNode** out) { return p.a->insertBefore(p.v, p.b, out); }},
      {"replace by it", [](const Parts& p, IXMLDOMDocument2*,
                           IXMLDOMNode** out) { return p.a->replaceChild(p.v, p.b, out); }},
      {"remove it", [](const Parts& p, IXMLDOMDocument2*,
                       IXMLDOMNode** out) { return p.a->removeChild(p.v, out); }},
  };
  Document document = Load(kXml);
  const Parts parts = {document, Root(document),       At(document, {0, 0}),
                       nullptr,  At(document, {0, 1}), Root(document)->m_pFirstAttribute,
                       nullptr};
  const std::string references = References(document);
  for (const Edit& row : rows) {
    SCOPED_TRACE(row.name);
    IXMLDOMNode* out = Untouched();
    EXPECT_EQ(kNotListed, Thrown([&] { row.call(parts, nullptr, &out); }));
    EXPECT_EQ(Untouched(), out);
    EXPECT_EQ(references, References(document));
    EXPECT_EQ("", NotOwnedBy(document, document));
    EXPECT_EQ("", AttributesNotOwnedBy(document, document));
  }
}

// The new node is out of its old place by then, and its reference is the caller's.
TEST(XMLNodeEditRefusals, ReplaceChild_of_an_attribute_throws_with_the_new_node_taken_out) {
  Document document = Load(kXml);
  Node node(At(document, {0, 0, 0}));
  EXPECT_EQ(kNotListed, Thrown([&] {
              Root(document)->replaceChild(node, Root(document)->m_pFirstAttribute, nullptr);
            }));
  EXPECT_EQ("a1(v1)[b1(w1) d1]", References(Root(document)));
  EXPECT_EQ("", NotOwnedBy(document, document));
  EXPECT_EQ("c1", References(node));
  EXPECT_EQ(nullptr, node->m_pParent);
  EXPECT_EQ(nullptr, node->m_pNextSibling);
  EXPECT_EQ(nullptr, node->m_pOwnerDocument);
}

// So does a node that names this one as its parent without being among its children.
TEST(XMLNodeEditRefusals, ReplaceChild_of_no_child_throws_with_the_new_node_taken_out) {
  Document document = Load(kXml);
  Node node(At(document, {0, 0, 0}));
  Node loose(new IXMLDOMNode(document, "loose", nullptr, NODE_ELEMENT));
  loose->m_pParent = Root(document);
  IXMLDOMNode* out = Untouched();
  EXPECT_EQ(kNotListed, Thrown([&] { Root(document)->replaceChild(node, loose, &out); }));
  EXPECT_EQ(Untouched(), out);
  EXPECT_EQ("a1(v1)[b1(w1) d1]", References(Root(document)));
  EXPECT_EQ("", NotOwnedBy(document, document));
  EXPECT_EQ("c1", References(node));
  EXPECT_EQ(nullptr, node->m_pParent);
  EXPECT_EQ(nullptr, node->m_pNextSibling);
  EXPECT_EQ(nullptr, node->m_pOwnerDocument);
  EXPECT_EQ("loose1", References(loose));
}

}  // namespace
