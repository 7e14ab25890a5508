#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <string>
#include <vector>

#include "harness/Trees.h"

namespace {

const int kOtherError = 7;  // a code that no lookup sets

/// The position of `node` in the chain that starts at `head`; -1 when it is not there.
int PositionIn(const IXMLDOMNode* head, const IXMLDOMNode* node) {
  int position = 0;
  for (; head != nullptr; head = head->m_pNextSibling, ++position) {
    if (head == node) return position;
  }
  return -1;
}

struct Search {
  const char* name;
  int position;  // of what is found; -1 for nothing
};

// ---- GetAttribute, GetChild, GetStrAttribute

TEST(XMLNodeLookup, GetAttribute_finds_exactly_that_name) {
  Document document = Load("<a x='1' xy='2' X='3' x.='4'/>");
  const Search rows[] = {{"x", 0},   {"xy", 1},  {"X", 2},      {"x.", 3}, {"y", -1}, {"", -1},
                         {"x ", -1}, {"XY", -1}, {"#Text", -1}, {"a", -1}, {"1", -1}, {"xyz", -1}};
  for (const Search& row : rows) {
    SCOPED_TRACE(row.name);
    Node found(Root(document)->GetAttribute(row.name));
    EXPECT_EQ(row.position, PositionIn(Root(document)->m_pFirstAttribute, found));
  }
}

TEST(XMLNodeLookup, GetChild_finds_exactly_that_name_whatever_the_type) {
  Document document = Load("<a b='1'>text<c/><d><e/></d><c/><C/></a>");
  const Search rows[] = {{"#Text", 0}, {"c", 1},      {"d", 2},  {"C", 4},  {"b", -1}, {"e", -1},
                         {"", -1},     {"#text", -1}, {"a", -1}, {"D", -1}, {"c ", -1}};
  for (const Search& row : rows) {
    SCOPED_TRACE(row.name);
    Node found(Root(document)->GetChild(row.name));
    EXPECT_EQ(row.position, PositionIn(Root(document)->m_pFirstChild, found));
  }
}

TEST(XMLNodeLookup, A_name_may_be_empty) {
  Node node = NewElement(nullptr, "a");
  node->AddAttribute("", "1");
  Node(node->AddChild("", nullptr));
  Node attribute(node->GetAttribute(""));
  Node child(node->GetChild(""));
  EXPECT_EQ(node->m_pFirstAttribute, attribute.Get());
  EXPECT_EQ(node->m_pFirstChild, child.Get());
}

TEST(XMLNodeLookup, The_first_of_several_with_one_name_is_found) {
  Document document = Load("<a x='1'/>");
  Root(document)->m_pFirstAttribute->m_pNextSibling =
      new IXMLDOMNode(document, "x", "2", NODE_ATTRIBUTE);
  EXPECT_STREQ("1", Root(document)->GetStrAttribute("x"));
}

TEST(XMLNodeLookup, A_node_without_name_is_never_found) {
  Node node = NewElement(nullptr, "a");
  node->AddChild(new IXMLDOMNode);
  Node(node->AddChild("b", nullptr));
  Node found(node->GetChild("b"));
  EXPECT_EQ(1, PositionIn(node->m_pFirstChild, found));
}

TEST(XMLNodeLookup, A_missing_name_does_not_find_a_node_without_name) {
  Node node = NewElement(nullptr, "a");
  node->AddChild(new IXMLDOMNode);
  node->m_pFirstAttribute = new IXMLDOMNode;
  EXPECT_EQ(nullptr, node->GetChild(nullptr));
  EXPECT_EQ(4, CXML::GetXMLError());
  EXPECT_EQ(nullptr, node->GetAttribute(nullptr));
  EXPECT_EQ(2, CXML::GetXMLError());
  EXPECT_EQ(nullptr, node->GetStrAttribute(nullptr));
}

TEST(XMLNodeLookup, What_is_found_carries_a_reference) {
  Document document = Load("<a x='1'><b/></a>");
  Node attribute(Root(document)->GetAttribute("x"));
  Node child(Root(document)->GetChild("b"));
  EXPECT_EQ(2, attribute->GetRefCount());
  EXPECT_EQ(2, child->GetRefCount());
}

TEST(XMLNodeLookup, GetStrAttribute_lends_the_stored_value) {
  Document document = Load("<a x='a&amp;b' y=''/>");
  IXMLDOMNode* attribute = Root(document)->m_pFirstAttribute;
  EXPECT_EQ(attribute->m_pszValue, Root(document)->GetStrAttribute("x"));
  EXPECT_STREQ("a&amp;b", Root(document)->GetStrAttribute("x"));
  EXPECT_STREQ("", Root(document)->GetStrAttribute("y"));
  EXPECT_EQ(1, attribute->GetRefCount());
}

TEST(XMLNodeLookup, GetStrAttribute_of_an_attribute_without_value_is_null_and_no_error) {
  Node node = NewElement(nullptr, "a");
  node->AddAttribute("x", nullptr);
  EXPECT_EQ(nullptr, node->GetStrAttribute("x"));
  EXPECT_EQ(CXML::NO_ERROR, CXML::GetXMLError());
}

TEST(XMLNodeLookup, A_miss_sets_the_error_code) {
  Document document = Load("<a x='1'><b/></a>");
  CXML::SetXMLError(kOtherError);
  EXPECT_EQ(nullptr, Root(document)->GetAttribute("b"));
  EXPECT_EQ(2, CXML::GetXMLError());
  EXPECT_EQ(nullptr, Root(document)->GetChild("x"));
  EXPECT_EQ(4, CXML::GetXMLError());
  EXPECT_EQ(nullptr, Root(document)->GetStrAttribute("b"));
  EXPECT_EQ(2, CXML::GetXMLError());
}

TEST(XMLNodeLookup, A_hit_leaves_the_error_code) {
  Document document = Load("<a x='1'><b/></a>");
  CXML::SetXMLError(kOtherError);
  Node(Root(document)->GetAttribute("x"));
  Node(Root(document)->GetChild("b"));
  Root(document)->GetStrAttribute("x");
  EXPECT_EQ(kOtherError, CXML::GetXMLError());
}

TEST(XMLNodeLookup, A_missing_name_is_a_miss) {
  Document document = Load("<a x='1'><b/></a>");
  EXPECT_EQ(nullptr, Root(document)->GetAttribute(nullptr));
  EXPECT_EQ(2, CXML::GetXMLError());
  EXPECT_EQ(nullptr, Root(document)->GetChild(nullptr));
  EXPECT_EQ(4, CXML::GetXMLError());
  EXPECT_EQ(nullptr, Root(document)->GetStrAttribute(nullptr));
  EXPECT_EQ(2, CXML::GetXMLError());
}

TEST(XMLNodeLookup, The_last_of_many_children_is_found) {
  Document document = Load("<a>" + Repeat("<b/>", 100000) + "<c/></a>");
  Node found(Root(document)->GetChild("c"));
  EXPECT_EQ(100000, PositionIn(Root(document)->m_pFirstChild, found));
}

// ---- GetStrValue

TEST(XMLNodeLookup, GetStrValue_of_an_element_is_that_of_a_text_that_comes_first) {
  Document document = Load("<a><b>text</b><c>a&lt;b<d/></c><e><d/>text</e><f/></a>");
  EXPECT_EQ(At(document, {0, 0, 0})->m_pszValue, At(document, {0, 0})->GetStrValue());
  EXPECT_STREQ("text", At(document, {0, 0})->GetStrValue());
  EXPECT_STREQ("a&lt;b", At(document, {0, 1})->GetStrValue());
  EXPECT_EQ(nullptr, At(document, {0, 3})->GetStrValue());
}

TEST(XMLNodeLookup, GetStrValue_of_an_element_prefers_the_text_to_its_own_value) {
  Node node(new IXMLDOMNode(nullptr, "a", "own", NODE_ELEMENT));
  EXPECT_STREQ("own", node->GetStrValue());
  node->AddTextChild("text");
  EXPECT_STREQ("text", node->GetStrValue());
}

TEST(XMLNodeLookup, GetStrValue_of_an_element_whose_text_has_no_value_is_null) {
  Node node(new IXMLDOMNode(nullptr, "a", "own", NODE_ELEMENT));
  node->AddTextChild(nullptr);
  EXPECT_EQ(nullptr, node->GetStrValue());
}

TEST(XMLNodeLookup, GetStrValue_of_an_element_whose_first_child_is_no_text_is_its_own) {
  Node node(new IXMLDOMNode(nullptr, "a", "own", NODE_ELEMENT));
  Node(node->AddChild("b", nullptr));
  node->AddTextChild("text");
  EXPECT_STREQ("own", node->GetStrValue());
  Node without = NewElement(nullptr, "a");
  Node(without->AddChild("b", "child"));
  without->AddTextChild("text");
  EXPECT_EQ(nullptr, without->GetStrValue());
}

TEST(XMLNodeLookup, GetStrValue_of_anything_but_an_element_is_its_own) {
  for (DOMNodeType type : {NODE_INVALID, NODE_ATTRIBUTE, NODE_TEXT, NODE_DOCUMENT}) {
    SCOPED_TRACE(type);
    Node node(new IXMLDOMNode(nullptr, "a", "own", type));
    node->AddTextChild("text");
    EXPECT_EQ(node->m_pszValue, node->GetStrValue());
  }
}

// ---- The rest

TEST(XMLNodeLookup, GetNextAttribute_steps_through_them_and_starts_again) {
  Document document = Load("<a a='1' b='2'/>");
  const struct {
    int result;
    const char* name;
    const char* value;
  } rows[] = {{1, "a", "1"}, {1, "b", "2"}, {0, "(null)", "(null)"},
              {1, "a", "1"}, {1, "b", "2"}, {0, "(null)", "(null)"}};
  IXMLDOMNode* cursor = nullptr;
  for (const auto& row : rows) {
    const char* name = "before";
    const char* value = "before";
    EXPECT_EQ(row.result, Root(document)->GetNextAttribute(cursor, name, value));
    EXPECT_EQ(row.name, Text(name));
    EXPECT_EQ(row.value, Text(value));
    EXPECT_EQ(row.result == 1, cursor != nullptr);
  }
}

TEST(XMLNodeLookup, GetNextAttribute_copies_nothing_and_adds_no_reference) {
  Node node = NewElement(nullptr, "a");
  node->AddAttribute("x", "1");
  node->AddAttribute("y", nullptr);
  IXMLDOMNode* cursor = nullptr;
  const char* name = nullptr;
  const char* value = nullptr;
  node->GetNextAttribute(cursor, name, value);
  EXPECT_EQ(node->m_pFirstAttribute, cursor);
  EXPECT_EQ(cursor->m_pszNodeName, name);
  EXPECT_EQ(cursor->m_pszValue, value);
  EXPECT_EQ(1, cursor->GetRefCount());
  EXPECT_EQ(1, node->GetNextAttribute(cursor, name, value));
  EXPECT_STREQ("y", name);
  EXPECT_EQ(nullptr, value);
}

TEST(XMLNodeLookup, GetNextAttribute_of_a_node_without_any_is_at_the_end_at_once) {
  Document document = Load("<a>text</a>");
  for (IXMLDOMNode* node : {Root(document), At(document, {0, 0})}) {
    IXMLDOMNode* cursor = nullptr;
    const char* name = "before";
    const char* value = "before";
    EXPECT_EQ(0, node->GetNextAttribute(cursor, name, value));
    EXPECT_EQ(nullptr, name);
    EXPECT_EQ(nullptr, value);
    EXPECT_EQ(nullptr, cursor);
  }
}

TEST(XMLNodeLookup, CountChildNodes_counts_elements_alone) {
  const struct {
    std::string xml;
    int count;
  } rows[] = {{"<a/>", 0},
              {"<a x='1'/>", 0},
              {"<a>text</a>", 0},
              {"<a>text<b/></a>", 1},
              {"<a><b/>text<c><d/></c></a>", 2},
              {"<a>" + Repeat("<b/>", 100000) + "</a>", 100000}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.xml.substr(0, 40));
    EXPECT_EQ(row.count, Root(Load(row.xml))->CountChildNodes());
  }
}

TEST(XMLNodeLookup, CountChildNodes_counts_elements_before_and_behind_a_text) {
  Node node = NewElement(nullptr, "a");
  Node(node->AddChild("b", nullptr));
  node->AddTextChild("text");
  Node(node->AddChild("c", nullptr));
  node->AddChild(new IXMLDOMNode(nullptr, "d", nullptr, NODE_COMMENT));
  EXPECT_EQ(2, node->CountChildNodes());
}

TEST(XMLNodeLookup, IsPageAttribute_knows_two_names) {
  const struct {
    const char* name;
    int result;
  } rows[] = {{"curPage", 1},  {"numPages", 1},  {"", 0},         {nullptr, 0},
              {"curpage", 0},  {"CURPAGE", 0},   {"curPages", 0}, {"numPage", 0},
              {"curPage ", 0}, {" numPages", 0}, {"index", 0}};
  Node node = NewElement(nullptr, "curPage");
  for (const auto& row : rows) {
    EXPECT_EQ(row.result, node->IsPageAttribute(row.name)) << Text(row.name);
  }
}

TEST(XMLNodeLookup, GetfirstChild_adds_a_reference) {
  Document document = Load("<a>text<b/></a>");
  Node child(Root(document)->GetfirstChild());
  EXPECT_EQ(At(document, {0, 0}), child.Get());
  EXPECT_EQ(2, child->GetRefCount());
}

TEST(XMLNodeLookup, GetfirstChild_of_a_node_without_children_is_null_and_no_error) {
  Document document = Load("<a x='1'/>");
  EXPECT_EQ(nullptr, Root(document)->GetfirstChild());
  EXPECT_EQ(CXML::NO_ERROR, CXML::GetXMLError());
}

}  // namespace
