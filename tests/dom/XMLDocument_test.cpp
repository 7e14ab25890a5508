#include <gtest/gtest.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include <climits>
#include <string>

#include "harness/CompactXml.h"
#include "harness/Trees.h"

namespace {

VARIANT NumberVariant(int number) {
  VARIANT variant;
  VariantInit(&variant);
  variant.vt = VT_I4;
  variant.lVal = number;
  return variant;
}

HRESULT CreateNode(IXMLDOMDocument2* document, int type, std::string name, IXMLDOMNode** out) {
  return document->createNode(NumberVariant(type), &name[0], nullptr, out);
}

}  // namespace

// ---- Create

TEST(XMLDocumentCreate, Succeeds) {
  IXMLDOMDocument2* document = nullptr;
  EXPECT_TRUE(Create(&document));
  ASSERT_NE(nullptr, document);
  Release(document);
}

TEST(XMLDocumentCreate, Gives_an_empty_node_of_type_document_that_owns_itself) {
  const Document document = NewDocument();
  EXPECT_EQ("Document Root", Text(document->m_pszNodeName));
  EXPECT_EQ(nullptr, document->m_pszValue);
  EXPECT_EQ(NODE_DOCUMENT, document->m_eNodeType);
  EXPECT_EQ(document.Get(), document->m_pOwnerDocument);
  EXPECT_EQ(nullptr, document->m_pParent);
  EXPECT_EQ(nullptr, document->m_pFirstChild);
  EXPECT_EQ(nullptr, document->m_pFirstAttribute);
  EXPECT_EQ(nullptr, document->m_pNextSibling);
}

TEST(XMLDocumentCreate, Switches_formatted_layout_on_with_an_indent_of_two) {
  const Document document = NewDocument();
  EXPECT_EQ(static_cast<unsigned int>(IXMLDOMDocument2::FORMATTED_LAYOUT), document->m_uFlags);
  EXPECT_EQ(2, document->m_nIndent);
}

TEST(XMLDocumentCreate, Makes_no_builder) {
  const Document document = NewDocument();
  EXPECT_EQ(nullptr, document->m_pSax);
  EXPECT_EQ(0, CXMLSax::m_iObjCount);
}

TEST(XMLDocumentCreate, Hands_out_the_only_reference) {
  const Document document = NewDocument();
  EXPECT_EQ(1, document->GetRefCount());
}

TEST(XMLDocumentCreate, Counts_as_a_document_and_as_a_node) {
  const Document document = NewDocument();
  EXPECT_EQ(1, IXMLDOMDocument2::m_iObjCount);
  EXPECT_EQ(1, IXMLDOMNode::m_iObjCount);
}

TEST(XMLDocumentCreate, Gives_documents_that_do_not_share_their_trees) {
  const Document first = NewDocument();
  const Document second = NewDocument();
  first->loadXML("<a/>");
  EXPECT_EQ(nullptr, second->m_pFirstChild);
  EXPECT_EQ(2, IXMLDOMDocument2::m_iObjCount);
}

TEST(XMLDocument, Constructed_directly_has_formatted_layout_off_and_an_indent_of_four) {
  const Document document(new IXMLDOMDocument2);
  EXPECT_EQ(0u, document->m_uFlags);
  EXPECT_EQ(4, document->m_nIndent);
}

// ---- The end of a document

TEST(XMLDocument, Released_as_a_node_takes_tree_and_builder_along) {
  IXMLDOMDocument2* document = nullptr;
  Create(&document);
  document->loadXML("<a v='1'><b>");
  IXMLDOMNode* node = document;
  Release(node);
  EXPECT_EQ(nullptr, node);
  EXPECT_EQ(0, IXMLDOMDocument2::m_iObjCount);
  EXPECT_EQ(0, IXMLDOMNode::m_iObjCount);
  EXPECT_EQ(0, CXMLSax::m_iObjCount);
  EXPECT_EQ(0, CNodeStack::m_iObjCount);
  EXPECT_EQ(0, CNodeStackElt::m_iObjCount);
}

TEST(XMLDocument, Leaves_a_root_element_that_is_still_referred_to_without_parent_and_owner) {
  Document document = Load("<a v='1'><b/></a>");
  Node root;
  document->get_documentElement(root.Out());
  document.Reset();
  EXPECT_EQ(nullptr, root->m_pParent);
  EXPECT_EQ(nullptr, root->m_pOwnerDocument);
  EXPECT_EQ("<a v='1'><b/></a>", CompactXml(root));
}

TEST(XMLDocument, Lives_on_until_its_last_reference_goes) {
  Document document = Load("<a/>");
  document->AddRef();
  EXPECT_EQ(1, document->RealRelease());
  EXPECT_EQ("<a/>", CompactXml(document));
}

// ---- createNode

TEST(XMLDocumentCreateNode, Makes_a_detached_node_of_this_document_without_value) {
  const Document document = NewDocument();
  Node node;
  EXPECT_EQ(S_OK, CreateNode(document, NODE_TEXT, "name", node.Out()));
  EXPECT_EQ("name", Text(node->m_pszNodeName));
  EXPECT_EQ(nullptr, node->m_pszValue);
  EXPECT_EQ(NODE_TEXT, node->m_eNodeType);
  EXPECT_EQ(document.Get(), node->m_pOwnerDocument);
  EXPECT_EQ(nullptr, node->m_pParent);
  EXPECT_EQ(1, node->GetRefCount());
  EXPECT_EQ(nullptr, document->m_pFirstChild);
}

TEST(XMLDocumentCreateNode, Copies_the_name) {
  const Document document = NewDocument();
  std::string name = "first";
  Node node;
  document->createNode(NumberVariant(NODE_ELEMENT), &name[0], nullptr, node.Out());
  name = "other";
  EXPECT_EQ("first", Text(node->m_pszNodeName));
}

TEST(XMLDocumentCreateNode, Stores_any_type_unchecked) {
  const Document document = NewDocument();
  const int types[] = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, -1, INT_MAX, INT_MIN};
  for (int type : types) {
    SCOPED_TRACE(type);
    Node node;
    EXPECT_EQ(S_OK, CreateNode(document, type, "n", node.Out()));
    EXPECT_EQ(type, static_cast<int>(node->m_eNodeType));
  }
}

TEST(XMLDocumentCreateNode, Takes_the_number_whatever_type_the_variant_names) {
  const Document document = NewDocument();
  for (unsigned short tag : {VT_EMPTY, VT_I4, VT_BSTR}) {
    SCOPED_TRACE(tag);
    VARIANT type = NumberVariant(NODE_ATTRIBUTE);
    type.vt = tag;
    std::string name = "n";
    Node node;
    EXPECT_EQ(S_OK, document->createNode(type, &name[0], nullptr, node.Out()));
    EXPECT_EQ(NODE_ATTRIBUTE, node->m_eNodeType);
  }
}

TEST(XMLDocumentCreateNode, Ignores_the_namespace) {
  const Document document = NewDocument();
  std::string name = "p:n";
  std::string space = "urn:x";
  Node node;
  EXPECT_EQ(S_OK,
            document->createNode(NumberVariant(NODE_ELEMENT), &name[0], &space[0], node.Out()));
  EXPECT_EQ("<p:n/>", CompactXml(node));
}

TEST(XMLDocumentCreateNode, Takes_an_empty_name) {
  const Document document = NewDocument();
  Node node;
  EXPECT_EQ(S_OK, CreateNode(document, NODE_ELEMENT, "", node.Out()));
  EXPECT_EQ("", Text(node->m_pszNodeName));
}

TEST(XMLDocumentCreateNode, Refuses_a_null_out_pointer) {
  const Document document = NewDocument();
  EXPECT_EQ(E_ARGUMENT, CreateNode(document, NODE_ELEMENT, "n", nullptr));
  EXPECT_EQ(1, IXMLDOMNode::m_iObjCount);
}

TEST(XMLDocumentCreateNode, Makes_a_node_without_name_for_a_null_one) {
  const Document document = NewDocument();
  Node node;
  EXPECT_EQ(S_OK, document->createNode(NumberVariant(NODE_ELEMENT), nullptr, nullptr, node.Out()));
  EXPECT_EQ(nullptr, node->m_pszNodeName);
}

// ---- get_documentElement

TEST(XMLDocumentElement, Is_the_root_element_with_a_reference_added) {
  const Document document = Load("<!-- c --><a/><!-- d -->");
  Node root;
  EXPECT_EQ(S_OK, document->get_documentElement(root.Out()));
  EXPECT_EQ(Root(document), root.Get());
  EXPECT_EQ(2, root->GetRefCount());
}

TEST(XMLDocumentElement, Is_null_in_an_empty_document) {
  const Document document = NewDocument();
  IXMLDOMNode* root = document;
  EXPECT_EQ(S_FALSE, document->get_documentElement(&root));
  EXPECT_EQ(nullptr, root);
}

TEST(XMLDocumentElement, Is_null_after_a_load_that_found_no_element) {
  const Document document = Load("<a/>");
  document->loadXML("no element");
  IXMLDOMNode* root = document;
  EXPECT_EQ(S_FALSE, document->get_documentElement(&root));
  EXPECT_EQ(nullptr, root);
}

TEST(XMLDocumentElement, Refuses_a_null_out_pointer) {
  const Document document = Load("<a/>");
  EXPECT_EQ(E_ARGUMENT, document->get_documentElement(nullptr));
  EXPECT_EQ(1, Root(document)->GetRefCount());
}
