#include <xmldom/text/TextStoring.h>

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <string>

#include "harness/Trees.h"

namespace {

using xmldom::SetAttribute;
using xmldom::SetText;
using xmldom::StoreResult;

// ---- Elements

struct ElementRow {
  const char* before;
  const char* text;
  const char* after;
};

TEST(TextStoring, SetText_makes_a_text_the_only_one_of_an_element) {
  const ElementRow rows[] = {
      {"<a/>", "x", "<a>x</a>\n"},
      {"<a>old</a>", "new", "<a>new</a>\n"},
      {"<a>old</a>", "", "<a/>\n"},
      {"<a/>", "", "<a/>\n"},
      {"<a/>", "<b> & 'c'", "<a>&lt;b&gt;&#32;&amp; 'c'</a>\n"},
      {"<a/>", " ", "<a>&#32;</a>\n"},
      {"<a/>", "1\n2\r\n3\t4", "<a>1&#10;2&#13;&#10;3\t4</a>\n"},
      {"<a/>", "< >", "<a>&lt;&#32;&gt;</a>\n"},
      {"<a><b/></a>", "x", "<a>\n  &#120;\n  <b/>\n</a>\n"},
      {"<a><b/>old<c/></a>", "\xc3\xa9", "<a>\n  &#233;\n  <b/>\n  <c/>\n</a>\n"},
      {"<a><b/>old</a>", "", "<a>\n  <b/>\n</a>\n"},
      {"<a><b/></a>", "&", "<a>\n  &amp;\n  <b/>\n</a>\n"},
  };
  for (const ElementRow& row : rows) {
    Document document = Load(row.before);
    EXPECT_TRUE(SetText(Root(document), row.text)) << row.before;
    EXPECT_EQ(row.after, XmlOf(document)) << row.before;
  }
}

TEST(TextStoring, A_text_is_stored_where_the_members_of_a_node_look_for_it) {
  Document document = Load("<a><b/></a>");
  ASSERT_TRUE(SetText(Root(document), "<"));
  EXPECT_STREQ("&lt;", Root(document)->GetStrValue());
  EXPECT_STREQ("#Text", Root(document)->m_pFirstChild->m_pszNodeName);
  EXPECT_EQ(document.Get(), Root(document)->m_pFirstChild->m_pOwnerDocument);
  EXPECT_EQ(Root(document), Root(document)->m_pFirstChild->m_pParent);
  EXPECT_EQ(1, Root(document)->m_pFirstChild->GetRefCount());
}

TEST(TextStoring, Further_texts_of_an_element_are_removed) {
  Document document = Load("<a><b/></a>");
  for (const char* text : {"1", "2", "3"}) Root(document)->AddTextChild(text);
  const Node last = Keep(At(document, {0, 3}));
  ASSERT_TRUE(SetText(Root(document), "x"));
  EXPECT_EQ("<a>\n  &#120;\n  <b/>\n</a>\n", XmlOf(document));
  EXPECT_EQ(nullptr, last->m_pParent);
  ASSERT_TRUE(SetText(Root(document), ""));
  EXPECT_EQ("<a>\n  <b/>\n</a>\n", XmlOf(document));
}

TEST(TextStoring, SetText_works_where_the_first_child_names_another_parent) {
  Document document = Load("<a><b/></a>");
  At(document, {0, 0})->m_pParent = nullptr;
  ASSERT_TRUE(SetText(Root(document), "x"));
  EXPECT_EQ("<a>\n  &#120;\n  <b/>\n</a>\n", XmlOf(document));
}

// ---- Texts and attributes

TEST(TextStoring, SetText_sets_the_value_of_a_text_node) {
  Document document = Load("<a>old</a>");
  IXMLDOMNode* const text = At(document, {0, 0});
  EXPECT_TRUE(SetText(text, "1 < 2\n"));
  EXPECT_STREQ("1 &lt; 2&#10;", text->m_pszValue);
  EXPECT_TRUE(SetText(text, ""));
  EXPECT_STREQ("", text->m_pszValue);
}

TEST(TextStoring, A_text_node_beside_other_nodes_begins_with_a_reference) {
  for (const char* xml : {"<a>old<b/></a>", "<a><b/>old</a>"}) {
    Document document = Load(xml);
    IXMLDOMNode* text = Root(document)->m_pFirstChild;
    if (text->m_eNodeType != NODE_TEXT) text = text->m_pNextSibling;
    EXPECT_TRUE(SetText(text, "x y"));
    EXPECT_STREQ("&#120; y", text->m_pszValue);
  }
  const Node alone(new IXMLDOMNode(nullptr, "#Text", nullptr, NODE_TEXT));
  EXPECT_TRUE(SetText(alone, "x"));
  EXPECT_STREQ("x", alone->m_pszValue);
}

TEST(TextStoring, SetText_sets_the_value_of_an_attribute) {
  Document document = Load("<a b='old'/>");
  IXMLDOMNode* const attribute = Root(document)->m_pFirstAttribute;
  EXPECT_TRUE(SetText(attribute, " \"x\"\t'y'\n"));
  EXPECT_STREQ(" &quot;x&quot;&#9;&apos;y&apos;&#10;", attribute->m_pszValue);
  EXPECT_EQ(1, attribute->GetRefCount());
  EXPECT_TRUE(SetText(attribute, ""));
  EXPECT_EQ("<a b=''/>\n", XmlOf(document));
}

TEST(TextStoring, SetAttribute_replaces_and_adds_and_leaves_no_reference) {
  Document document = Load("<a b='old' c='2'/>");
  CXML::SetXMLError(4);
  for (const char* value : {"1", "<3>", "2"}) {
    EXPECT_TRUE(SetAttribute(xmldom::Share(Root(document)), "b", value));
    EXPECT_EQ(1, Root(document)->m_pFirstAttribute->GetRefCount());
  }
  EXPECT_EQ(4, CXML::GetXMLError());
  EXPECT_TRUE(SetAttribute(Root(document), "d", "<\n>"));
  EXPECT_EQ("<a b='2' c='2' d='&lt;&#10;&gt;'/>\n", XmlOf(document));
  EXPECT_EQ(0, CXML::GetXMLError());
  IXMLDOMNode* const added = Root(document)->m_pFirstAttribute->m_pNextSibling->m_pNextSibling;
  EXPECT_EQ(1, added->GetRefCount());
  EXPECT_EQ(document.Get(), added->m_pOwnerDocument);
}

// ---- Refusals

TEST(TextStoring, A_character_that_XML_cannot_hold_is_refused_with_its_offset) {
  Document document = Load("<a b='1'>x</a>");
  IXMLDOMNode* const root = Root(document);
  const std::string text("12\0", 3);
  for (IXMLDOMNode* node : {root, root->m_pFirstAttribute, root->m_pFirstChild}) {
    const StoreResult result = SetText(node, text);
    EXPECT_FALSE(result);
    EXPECT_EQ(StoreResult::kForbidden, result.problem);
    EXPECT_EQ(2u, result.offset);
    EXPECT_STREQ("XML cannot hold a character of the text", result.Reason());
  }
  for (const char* name : {"b", "c"}) {
    const StoreResult result = SetAttribute(root, name, "\xff");
    EXPECT_EQ(StoreResult::kForbidden, result.problem);
    EXPECT_EQ(0u, result.offset);
  }
  EXPECT_EQ("<a b='1'>x</a>\n", XmlOf(document));
}

TEST(TextStoring, What_cannot_have_the_text_is_refused) {
  Document document = Load("<a b='1'/>");
  EXPECT_EQ(StoreResult::kNoNode, SetText(nullptr, "x").problem);
  EXPECT_EQ(StoreResult::kNoNode, SetText(XMLPtr<IXMLDOMNode>(), "x").problem);
  EXPECT_EQ(StoreResult::kNoNode, SetAttribute(NoNode(), "b", "x").problem);
  EXPECT_EQ(StoreResult::kWrongType, SetText(document, "x").problem);
  EXPECT_EQ(StoreResult::kWrongType, SetAttribute(document, "b", "x").problem);
  EXPECT_EQ(StoreResult::kWrongType,
            SetAttribute(Root(document)->m_pFirstAttribute, "b", "x").problem);
  EXPECT_STREQ("", StoreResult({StoreResult::kNone, 0}).Reason());
  EXPECT_EQ("<a b='1'/>\n", XmlOf(document));
}

TEST(TextStoring, A_name_that_XML_does_not_know_is_refused) {
  Document document = Load("<a/>");
  for (const char* name : {"", "1", "-a", ".a", "a b", "a=", "a>", "a/", "a'", "b=''><c", "a\n",
                           "\xc3\x97", "\xff", "a\xc3", "\xe2\x82\xac"}) {
    EXPECT_EQ(StoreResult::kNoName, SetAttribute(Root(document), name, "x").problem) << name;
  }
  EXPECT_EQ(StoreResult::kNoName, SetAttribute(Root(document), nullptr, "x").problem);
  EXPECT_EQ("<a/>\n", XmlOf(document));
  for (const char* name : {"a", "_", ":", "a-1.b:c", "\xc3\xa9", "a\xc3\xa9", "\xe6\xbc\xa2"}) {
    EXPECT_TRUE(SetAttribute(Root(document), name, "x")) << name;
  }
}

TEST(TextStoring, An_attribute_of_any_name_can_be_replaced) {
  Document document = Load("<a/>");
  Root(document)->AddAttribute("no name", "1");
  EXPECT_TRUE(SetAttribute(Root(document), "no name", "2"));
  EXPECT_STREQ("2", Root(document)->m_pFirstAttribute->m_pszValue);
}

}  // namespace
