#include <xmldom/text/NodeTexts.h>

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <string>

#include "harness/StdoutCapture.h"
#include "harness/Trees.h"

namespace {

using xmldom::Attribute;
using xmldom::HasAttribute;

class NodeTexts : public testing::Test {
 protected:
  // The debug line of what is decoded goes there.
  StdoutCapture m_output;
};

TEST_F(NodeTexts, Text_is_the_decoded_text_of_a_node) {
  Document document = Load("<a b='x &lt; y'>1 &amp; 2<c>3</c></a>");
  EXPECT_EQ("1 & 2 3", xmldom::Text(document.Get()));
  EXPECT_EQ("1 & 2 3", xmldom::Text(xmldom::Share(Root(document))));
  EXPECT_EQ("3", xmldom::Text(At(document, {0, 1})));
  EXPECT_EQ("1 & 2", xmldom::Text(At(document, {0, 0})));
  EXPECT_EQ("x < y", xmldom::Text(Root(document)->m_pFirstAttribute));
}

TEST_F(NodeTexts, What_has_no_text_gives_an_empty_one) {
  Document document = Load("<a/>");
  EXPECT_EQ("", xmldom::Text(Root(document)));
  EXPECT_EQ("", xmldom::Text(NewDocument().Get()));
  EXPECT_EQ("", xmldom::Text(nullptr));
  EXPECT_EQ("", xmldom::Text(XMLPtr<IXMLDOMNode>()));
}

TEST_F(NodeTexts, Attribute_is_the_decoded_value) {
  Document document = Load("<a b='1 &lt; &quot;2&quot;' c=''/>");
  EXPECT_EQ("1 < \"2\"", Attribute(Root(document), "b"));
  EXPECT_EQ("", Attribute(Root(document), "c"));
  EXPECT_EQ("", Attribute(Root(document), "c", "otherwise"));
}

TEST_F(NodeTexts, A_missing_attribute_is_told_apart_from_an_empty_one) {
  Document document = Load("<a c=''/>");
  CXML::ClearXMLError();
  EXPECT_TRUE(HasAttribute(Root(document), "c"));
  EXPECT_FALSE(HasAttribute(Root(document), "d"));
  EXPECT_EQ("", Attribute(Root(document), "d"));
  EXPECT_EQ("none", Attribute(Root(document), "d", "none"));
  EXPECT_EQ(0, CXML::GetXMLError());
}

TEST_F(NodeTexts, Null_has_no_attributes) {
  Document document = Load("<a b='1'/>");
  EXPECT_FALSE(HasAttribute(nullptr, "b"));
  EXPECT_EQ("none", Attribute(NoNode(), "b", "none"));
  EXPECT_FALSE(HasAttribute(Root(document), nullptr));
  EXPECT_EQ("", Attribute(Root(document), nullptr));
  EXPECT_FALSE(HasAttribute(document.Get(), "b"));
}

TEST_F(NodeTexts, An_attribute_without_value_or_name_does_no_harm) {
  Document document = Load("<a/>");
  Root(document)->AddAttribute("b", nullptr);
  EXPECT_TRUE(HasAttribute(Root(document), "b"));
  EXPECT_EQ("", Attribute(Root(document), "b", "otherwise"));
  IXMLDOMNode* attribute = Root(document)->m_pFirstAttribute;
  EXPECT_EQ("b", TakeHeap(attribute->m_pszNodeName));
  attribute->m_pszNodeName = nullptr;
  EXPECT_FALSE(HasAttribute(Root(document), "b"));
}

}  // namespace
