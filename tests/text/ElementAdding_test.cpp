#include <xmldom/text/ElementAdding.h>

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include "harness/Trees.h"

namespace {

using xmldom::AddElement;

TEST(ElementAdding, An_element_is_added_and_owned_twice) {
  Document document = Load("<a><b/></a>");
  const XMLPtr<IXMLDOMNode> element = AddElement(Root(document), "c");
  ASSERT_TRUE(element);
  EXPECT_EQ(2, element->GetRefCount());
  EXPECT_EQ("<a>\n  <b/>\n  <c/>\n</a>\n", XmlOf(document));
}

TEST(ElementAdding, A_document_gets_one_root) {
  Document document = NewDocument();
  EXPECT_TRUE(AddElement(document, "a"));
  EXPECT_FALSE(AddElement(document, "b"));
  EXPECT_EQ("<a/>\n", XmlOf(document));
}

TEST(ElementAdding, What_cannot_have_or_be_an_element_is_refused) {
  Document document = Load("<a b='1'>x</a>");
  EXPECT_FALSE(AddElement(nullptr, "c"));
  EXPECT_FALSE(AddElement(Root(document)->m_pFirstAttribute, "c"));
  EXPECT_FALSE(AddElement(At(document, {0, 0}), "c"));
  for (const char* name : {"", "1", "a b", "a/><b", "\xff"}) {
    EXPECT_FALSE(AddElement(Root(document), name));
  }
  EXPECT_FALSE(AddElement(Root(document), nullptr));
  EXPECT_EQ("<a b='1'>x</a>\n", XmlOf(document));
}

TEST(ElementAdding, A_text_that_was_alone_keeps_what_it_says) {
  for (const char* xml : {"<a>x y</a>", "<a>\xc3\xa9</a>", "<a>&lt;x</a>", "<a> x</a>"}) {
    Document document = Load(xml);
    SetDebugEntities(false);
    const std::string text = xmldom::Text(Root(document));
    EXPECT_TRUE(AddElement(Root(document), "b"));
    const xmldom::LoadResult loaded = xmldom::LoadText(XmlOf(document));
    EXPECT_EQ(text, xmldom::Text(loaded.document));
    SetDebugEntities(true);
  }
}

TEST(ElementAdding, Blanks_of_the_text_before_it_stay) {
  for (const char* text : {"; ", "1 <", "x\t", "a \n b"}) {
    SCOPED_TRACE(text);
    const Document document = Load("<a/>");
    ASSERT_TRUE(xmldom::SetText(Root(document), text));
    ASSERT_TRUE(AddElement(Root(document), "b"));
    const xmldom::LoadResult read = xmldom::LoadText(xmldom::Xml(document));
    ASSERT_TRUE(read);
    EXPECT_EQ(text, xmldom::Text(read.document));
  }
}

}  // namespace
