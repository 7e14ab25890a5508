#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <climits>
#include <initializer_list>
#include <string>
#include <vector>

#include "harness/CompactXml.h"
#include "harness/LogCapture.h"
#include "harness/Trees.h"

namespace {

typedef std::vector<LoggedEvent> Events;

const int kOtherError = 7;  // a code that no building operation sets

// ---- AddAttribute, SetAttribute

TEST(XMLNodeBuildValues, AddAttribute_keeps_the_order_of_the_calls) {
  Document document = Load("<e/>");
  EXPECT_EQ(1, Root(document)->AddAttribute("b", "1"));
  EXPECT_EQ(1, Root(document)->AddAttribute("a", nullptr));
  EXPECT_EQ(1, Root(document)->AddAttribute("c", ""));
  EXPECT_EQ("<e b='1' a='' c=''/>", CompactXml(document));
  const IXMLDOMNode* attribute = Root(document)->m_pFirstAttribute;
  EXPECT_EQ(NODE_ATTRIBUTE, attribute->m_eNodeType);
  EXPECT_EQ(Root(document), attribute->m_pParent);
  EXPECT_EQ(document.Get(), attribute->m_pOwnerDocument);
  EXPECT_EQ(1, attribute->GetRefCount());
  EXPECT_EQ(nullptr, attribute->m_pNextSibling->m_pszValue);
  EXPECT_STREQ("", attribute->m_pNextSibling->m_pNextSibling->m_pszValue);
}

TEST(XMLNodeBuildValues, AddAttribute_tells_names_apart_by_case) {
  Document document = Load("<e a='1'/>");
  EXPECT_EQ(1, Root(document)->AddAttribute("A", "2"));
  EXPECT_EQ("<e a='1' A='2'/>", CompactXml(document));
}

// Deliberate: the refused call leaves a reference behind, which the case gives back.
TEST(XMLNodeBuildValues, AddAttribute_refuses_a_second_of_the_same_name) {
  Document document = Load("<e a='1' b='2'/>");
  EXPECT_EQ(0, Root(document)->AddAttribute("a", "3"));
  EXPECT_EQ("<e a='1' b='2'/>", CompactXml(document));
  EXPECT_EQ(CXML::DUPLICATE_ATTRIBUTE, CXML::GetXMLError());
  EXPECT_EQ(2, Root(document)->m_pFirstAttribute->GetRefCount());
  Root(document)->m_pFirstAttribute->RealRelease();
}

TEST(XMLNodeBuildValues, AddAttribute_clears_the_error_code_when_it_adds_one) {
  Node node = NewElement(nullptr, "e");
  for (int code : {0, 1, 2, 4, kOtherError}) {
    CXML::SetXMLError(code);
    EXPECT_EQ(1, node->AddAttribute(std::to_string(code).c_str(), nullptr));
    EXPECT_EQ(CXML::NO_ERROR, CXML::GetXMLError());
  }
}

TEST(XMLNodeBuildValues, AddAttribute_takes_many) {
  Node node = NewElement(nullptr, "e");
  for (int i = 0; i < 2000; ++i) node->AddAttribute(std::to_string(i).c_str(), "");
  EXPECT_NE(nullptr, node->GetStrAttribute("1999"));
}

// Deliberate: each replacement leaves a reference behind, which the case gives back.
TEST(XMLNodeBuildValues, SetAttribute_replaces_a_value_in_place) {
  Document document = Load("<e a='1' b='2'/>");
  CXML::SetXMLError(kOtherError);
  EXPECT_EQ(1, Root(document)->SetAttribute("a", "3"));
  EXPECT_EQ(1, Root(document)->SetAttribute("a", "4"));
  EXPECT_EQ("<e a='4' b='2'/>", CompactXml(document));
  EXPECT_EQ(kOtherError, CXML::GetXMLError());
  IXMLDOMNode* attribute = Root(document)->m_pFirstAttribute;
  EXPECT_EQ(3, attribute->GetRefCount());
  attribute->RealRelease();
  attribute->RealRelease();
}

TEST(XMLNodeBuildValues, SetAttribute_to_null_leaves_an_attribute_without_value) {
  Document document = Load("<e a='1'/>");
  EXPECT_EQ(1, Root(document)->SetAttribute("a", nullptr));
  EXPECT_EQ("<e a=''/>", CompactXml(document));
  EXPECT_EQ(nullptr, Root(document)->m_pFirstAttribute->m_pszValue);
  EXPECT_EQ(1, Root(document)->SetAttribute("a", nullptr));
  EXPECT_EQ("<e a=''/>", CompactXml(document));
  EXPECT_EQ(nullptr, Root(document)->m_pFirstAttribute->m_pszValue);
  EXPECT_EQ(3, Root(document)->m_pFirstAttribute->GetRefCount());
  Root(document)->m_pFirstAttribute->RealRelease();
  Root(document)->m_pFirstAttribute->RealRelease();
}

TEST(XMLNodeBuildValues, SetAttribute_adds_a_missing_attribute) {
  Document document = Load("<e a='1'/>");
  CXML::SetXMLError(kOtherError);
  EXPECT_EQ(1, Root(document)->SetAttribute("b", "2"));
  EXPECT_EQ(CXML::NO_ERROR, CXML::GetXMLError());
  EXPECT_EQ(1, Root(document)->SetAttribute("c", nullptr));
  EXPECT_EQ("<e a='1' b='2' c=''/>", CompactXml(document));
  const IXMLDOMNode* second = Root(document)->m_pFirstAttribute->m_pNextSibling;
  EXPECT_EQ(1, second->GetRefCount());
  EXPECT_EQ(nullptr, second->m_pNextSibling->m_pszValue);
}

TEST(XMLNodeBuildValues, SetAttribute_takes_a_part_of_the_old_value) {
  Document document = Load("<e a='12345'/>");
  IXMLDOMNode* attribute = Root(document)->m_pFirstAttribute;
  EXPECT_EQ(1, Root(document)->SetAttribute("a", attribute->m_pszValue + 2));
  EXPECT_EQ("<e a='345'/>", CompactXml(document));
  attribute->RealRelease();
}

// ---- AppendValue, SetValue

TEST(XMLNodeBuildValues, AppendValue_appends_up_to_a_length_or_a_NUL) {
  const struct {
    const char* before;
    const char* text;
    int length;
    const char* after;
  } rows[] = {
      {"xy", "abcdef", 3, "xyabc"}, {"xy", "abcdef", 6, "xyabcdef"}, {"x", "abc", 2, "xab"},
      {"", "abc", 1, "a"},          {nullptr, "abcdef", 3, "abc"},   {"xy", "ab\0cd", 5, "xyab"},
      {nullptr, "ab\0cd", 5, "ab"}, {"xy", "abc", INT_MAX, "xyabc"}, {"xy", "", 1, "xy"},
      {nullptr, "", 1, ""},         {"xy", "abc", 0, "xy"},          {"xy", "abc", -1, "xy"},
      {"xy", "abc", INT_MIN, "xy"}, {nullptr, "abc", 0, "(null)"},   {nullptr, "abc", -1, "(null)"},
      {"xy", nullptr, 0, "xy"},     {"xy", nullptr, 3, "xy"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message()
                 << Text(row.before) << " + " << row.length << " of " << Text(row.text));
    Node node(new IXMLDOMNode(nullptr, "#Text", row.before, NODE_TEXT));
    node->AppendValue(row.text, row.length);
    EXPECT_EQ(row.after, Text(node->m_pszValue));
  }
}

TEST(XMLNodeBuildValues, AppendValue_needs_no_terminator_in_the_text) {
  const std::vector<char> text(100000, 'x');
  Node node(new IXMLDOMNode(nullptr, "#Text", nullptr, NODE_TEXT));
  node->AppendValue(text.data(), 100000);
  node->AppendValue(text.data(), 100000);
  EXPECT_EQ(std::string(200000, 'x'), node->m_pszValue);
}

TEST(XMLNodeBuildValues, AppendValue_sets_the_value_of_the_node_itself_whatever_its_type) {
  Document document = Load("<a>text</a>");
  Root(document)->AppendValue("own", 3);
  EXPECT_EQ("<a><?value own?>text</a>", CompactXml(document));
}

TEST(XMLNodeBuildValues, AppendValue_takes_a_part_of_the_old_value) {
  Node node(new IXMLDOMNode(nullptr, "#Text", "abc", NODE_TEXT));
  node->AppendValue(node->m_pszValue + 1, 2);
  EXPECT_STREQ("abcbc", node->m_pszValue);
}

TEST(XMLNodeBuildValues, SetValue_sets_that_of_a_text_or_of_a_text_that_comes_first) {
  const struct {
    const char* xml;
    std::initializer_list<int> at;
    const char* after;
  } rows[] = {
      {"<a>old</a>", {0}, "<a>new</a>"},
      {"<a>old</a>", {0, 0}, "<a>new</a>"},
      {"<a>old<b/></a>", {0}, "<a>new<b/></a>"},
      {"<a><b/>old</a>", {0, 1}, "<a><b/>new</a>"},
  };
  for (const auto& row : rows) {
    LogCapture log;
    Document document = Load(row.xml);
    At(document, row.at)->SetValue("new");
    EXPECT_EQ(row.after, CompactXml(document));
    EXPECT_EQ(Events(), log.Events());
  }
}

TEST(XMLNodeBuildValues, SetValue_of_null_leaves_a_text_without_value) {
  Document document = Load("<a>old</a>");
  Root(document)->SetValue(nullptr);
  EXPECT_EQ("<a><?text?></a>", CompactXml(document));
  Root(document)->SetValue(nullptr);
  EXPECT_EQ("<a><?text?></a>", CompactXml(document));
}

TEST(XMLNodeBuildValues, SetValue_takes_a_part_of_the_old_value) {
  Document document = Load("<a>old</a>");
  Root(document)->SetValue(At(document, {0, 0})->m_pszValue + 1);
  EXPECT_EQ("<a>ld</a>", CompactXml(document));
}

TEST(XMLNodeBuildValues, SetValue_of_any_other_node_is_logged_and_changes_nothing) {
  Document document = Load("<a x='1'><b/>text<c><d/>text</c><e/></a>");
  Document empty = NewDocument();
  const std::string before = CompactXml(document);
  for (IXMLDOMNode* node : {static_cast<IXMLDOMNode*>(document), Root(document),
                            At(document, {0, 2}), At(document, {0, 3}),
                            Root(document)->m_pFirstAttribute, static_cast<IXMLDOMNode*>(empty)}) {
    SCOPED_TRACE(node->m_pszNodeName);
    LogCapture log;
    node->SetValue("new");
    EXPECT_EQ(Events{Event(18, 3, "IXMLDOMNode::SetValue - SetValue called on non-leaf node",
                           XmlOf(node))},
              log.Events());
    EXPECT_EQ(before, CompactXml(document));
  }
}

}  // namespace
