#include <xmldom/dom/NodeArgument.h>

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include "harness/Trees.h"

namespace {

IXMLDOMNode* Get(xmldom::NodeArgument node) { return node.Get(); }
const IXMLDOMNode* GetConst(xmldom::ConstNodeArgument node) { return node.Get(); }

TEST(NodeArgument, takes_pointers_of_every_kind) {
  Document document = Load("<a/>");
  IXMLDOMNode* const root = Root(document);
  const XMLPtr<IXMLDOMNode> owner = xmldom::Share(root);
  EXPECT_EQ(root, Get(root));
  EXPECT_EQ(root, Get(owner));
  EXPECT_EQ(document.Get(), Get(document.Get()));
  EXPECT_EQ(document.Get(), Get(xmldom::Share(document.Get())));
  EXPECT_EQ(root, GetConst(static_cast<const IXMLDOMNode*>(root)));
  EXPECT_EQ(root, GetConst(root));
  EXPECT_EQ(root, GetConst(owner));
  EXPECT_EQ(document.Get(), GetConst(xmldom::Share(document.Get())));
}

TEST(NodeArgument, null_is_no_node) {
  EXPECT_EQ(nullptr, Get(nullptr));
  EXPECT_EQ(nullptr, GetConst(nullptr));
  EXPECT_EQ(nullptr, Get(XMLPtr<IXMLDOMDocument2>()));
  EXPECT_FALSE(xmldom::NodeArgument(nullptr));
}

TEST(NodeArgument, adds_no_reference) {
  Document document = Load("<a/>");
  const xmldom::NodeArgument node(Root(document));
  EXPECT_EQ(1, node->GetRefCount());
  EXPECT_TRUE(node);
}

}  // namespace
