#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <climits>
#include <ostream>
#include <string>

#include "harness/CompactXml.h"
#include "harness/SmallStack.h"
#include "harness/Thrown.h"
#include "harness/Trees.h"

namespace {

/// What a type yields as a value.
enum Value { NOTHING, STORED, TEXT_BELOW };

struct Row {
  int type;
  const char* name;
  Value value;
  Value typedValue;
};

std::ostream& operator<<(std::ostream& out, const Row& row) { return out << row.name; }

const Row kRows[] = {
    {0, "invalid", NOTHING, NOTHING},       {1, "element", NOTHING, TEXT_BELOW},
    {2, "attribute", STORED, STORED},       {3, "text", STORED, STORED},
    {4, "cdatasection", NOTHING, NOTHING},  {5, "entityreference", NOTHING, NOTHING},
    {6, "entity", NOTHING, NOTHING},        {7, "processinginstruction", STORED, STORED},
    {8, "comment", STORED, STORED},         {9, "document", NOTHING, NOTHING},
    {10, "documenttype", NOTHING, NOTHING}, {11, "documentfragment", NOTHING, NOTHING},
    {12, "notation", NOTHING, NOTHING},
};

const int kNoTypes[] = {13, 100, INT_MAX, -1, INT_MIN};

const char kStored[] = "stored &lt;";
const char kBelow[] = "&amp; below";

/// A node of any type that has a value and a text below.
Node NewNode(int type, const char* value = kStored) {
  Node node(new IXMLDOMNode(nullptr, "n", value, static_cast<DOMNodeType>(type)));
  node->AddTextChild(kBelow);
  return node;
}

typedef HRESULT (IXMLDOMNode::*Getter)(VARIANT* pVal);

const struct {
  const char* name;
  Getter get;
  Value Row::*value;
} kGetters[] = {{"get_nodeValue", &IXMLDOMNode::get_nodeValue, &Row::value},
                {"get_nodeTypedValue", &IXMLDOMNode::get_nodeTypedValue, &Row::typedValue}};

/// What a VARIANT holds, in words; a text is shown in brackets.
std::string Describe(const VARIANT& variant) {
  switch (variant.vt) {
    case VT_EMPTY:
      return "empty";
    case VT_I4:
      return std::to_string(variant.lVal);
    case VT_BSTR:
      return "[" + Text(variant.bstrVal) + "]";
    default:
      return "type " + std::to_string(variant.vt);
  }
}

std::string Describe(Value value) {
  if (value == NOTHING) return "empty";
  return value == STORED ? "[stored &lt;]" : "[& below]";
}

/// A VARIANT of the test that holds a text, a number or nothing.
struct Held : _variant_t {
  Held() {}
  explicit Held(const char* text) : _variant_t(text) {}
  explicit Held(int number) {
    vt = VT_I4;
    lVal = number;
  }
};

// ---- Values

class XMLNodeType : public testing::TestWithParam<Row> {};

INSTANTIATE_TEST_SUITE_P(All, XMLNodeType, testing::ValuesIn(kRows),
                         [](const testing::TestParamInfo<Row>& row) {
                           return std::string(row.param.name);
                         });

// What the record held before is freed.
TEST_P(XMLNodeType, Fills_a_record_whatever_it_held) {
  Node node = NewNode(GetParam().type);
  for (const auto& getter : kGetters) {
    SCOPED_TRACE(getter.name);
    const std::string expected = Describe(GetParam().*getter.value);
    Held empty;
    Held number(7);
    Held text("old");
    for (VARIANT* value : {static_cast<VARIANT*>(&empty), static_cast<VARIANT*>(&number),
                           static_cast<VARIANT*>(&text)}) {
      EXPECT_EQ(S_OK, (node->*getter.get)(value));
      EXPECT_EQ(expected, Describe(*value));
    }
  }
}

TEST_P(XMLNodeType, Fills_a_record_again_and_again) {
  Node node = NewNode(GetParam().type);
  for (const auto& getter : kGetters) {
    SCOPED_TRACE(getter.name);
    Held value;
    for (int i = 0; i < 3; ++i) EXPECT_EQ(S_OK, (node->*getter.get)(&value));
    EXPECT_EQ(Describe(GetParam().*getter.value), Describe(value));
  }
}

TEST_P(XMLNodeType, A_missing_stored_value_is_a_null_text) {
  Node node = NewNode(GetParam().type, nullptr);
  for (const auto& getter : kGetters) {
    SCOPED_TRACE(getter.name);
    const Value expected = GetParam().*getter.value;
    Held value("old");
    EXPECT_EQ(S_OK, (node->*getter.get)(&value));
    EXPECT_EQ(expected == STORED ? "[(null)]" : Describe(expected), Describe(value));
    if (expected == STORED) {
      EXPECT_EQ(nullptr, value.bstrVal);
    }
  }
}

TEST_P(XMLNodeType, Has_a_name) {
  Node node = NewNode(GetParam().type);
  EXPECT_EQ(GetParam().name, TakeBstr(node->GetNodeTypeString()));
  BSTR name = nullptr;
  EXPECT_EQ(S_OK, node->get_nodeTypeString(&name));
  EXPECT_EQ(GetParam().name, TakeBstr(name));
}

TEST(XMLNodeTypeValues, Are_copies) {
  Node node = NewNode(NODE_TEXT);
  Held value;
  node->get_nodeValue(&value);
  EXPECT_NE(node->m_pszValue, value.bstrVal);
  node->SetValue("new");
  EXPECT_EQ("[stored &lt;]", Describe(value));
}

TEST(XMLNodeTypeValues, Of_a_loaded_document_are_what_it_holds) {
  Document document = Load("<a v='&lt;1'>text &amp; more<b>below</b><!--c--></a>");
  const struct {
    IXMLDOMNode* node;
    const char* value;
    const char* typedValue;
  } rows[] = {
      {document, "empty", "empty"},
      {Root(document), "empty", "[text & more<!--c--> below]"},
      {Root(document)->m_pFirstAttribute, "[&lt;1]", "[&lt;1]"},
      {At(document, {0, 0}), "[text &amp; more<!--c-->]", "[text &amp; more<!--c-->]"},
      {At(document, {0, 1}), "empty", "[below]"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.node->m_pszNodeName);
    Held value;
    Held typedValue;
    EXPECT_EQ(S_OK, row.node->get_nodeValue(&value));
    EXPECT_EQ(row.value, Describe(value));
    EXPECT_EQ(S_OK, row.node->get_nodeTypedValue(&typedValue));
    EXPECT_EQ(row.typedValue, Describe(typedValue));
  }
}

TEST(XMLNodeTypeValues, An_element_without_text_has_an_empty_one) {
  Document document = Load("<a><b/></a>");
  Held value;
  EXPECT_EQ(S_OK, Root(document)->get_nodeTypedValue(&value));
  EXPECT_EQ("[]", Describe(value));
}

TEST(XMLNodeTypeValues, Are_bytes_as_they_stand) {
  Node node(new IXMLDOMNode(nullptr, "n", "\x01\x7f\x80\xff", NODE_ATTRIBUTE));
  Held value;
  EXPECT_EQ(S_OK, node->get_nodeValue(&value));
  EXPECT_STREQ("\x01\x7f\x80\xff", value.bstrVal);
}

TEST(XMLNodeTypeValues, A_deep_element_needs_no_stack) {
  Document document = Load(Repeat("<a>", 100000) + "text" + Repeat("</a>", 100000));
  Held value;
  OnSmallStack([&] { EXPECT_EQ(S_OK, Root(document)->get_nodeTypedValue(&value)); });
  EXPECT_EQ("[text]", Describe(value));
}

// ---- Numbers that are no types

TEST(XMLNodeTypeUnknown, Leaves_the_record_untouched) {
  for (int type : kNoTypes) {
    Node node = NewNode(type);
    for (const auto& getter : kGetters) {
      SCOPED_TRACE(std::string(getter.name) + " " + std::to_string(type));
      Held text("old");
      Held number(7);
      EXPECT_EQ(S_OK, (node->*getter.get)(&text));
      EXPECT_EQ("[old]", Describe(text));
      EXPECT_EQ(S_OK, (node->*getter.get)(&number));
      EXPECT_EQ("7", Describe(number));
    }
  }
}

TEST(XMLNodeTypeUnknown, Has_no_name_and_throws) {
  for (int type : kNoTypes) {
    SCOPED_TRACE(type);
    Node node = NewNode(type);
    const std::string expected =
        "IXMLDOMNode::GetNodeTypeString: Call failed, invalid node type " + std::to_string(type);
    EXPECT_EQ(expected, Thrown([&] { node->GetNodeTypeString(); }));
    BSTR name = nullptr;
    EXPECT_EQ(expected, Thrown([&] { node->get_nodeTypeString(&name); }));
    EXPECT_EQ(nullptr, name);
  }
}

// ---- Null arguments

TEST(XMLNodeTypeArguments, Null_out_pointers_are_refused_whatever_the_type) {
  for (int type : {1, 3, 9, 12, 13, -1}) {
    SCOPED_TRACE(type);
    Node node = NewNode(type);
    for (const auto& getter : kGetters) EXPECT_EQ(E_ARGUMENT, (node->*getter.get)(nullptr));
    EXPECT_EQ(E_ARGUMENT, node->get_nodeTypeString(nullptr));
  }
}

TEST(XMLNodeTypeDeathTest, A_null_node_is_an_assertion) {
  for (const auto& getter : kGetters) {
    SCOPED_TRACE(getter.name);
    const std::string message = std::string("XMLNode\\.cpp:[0-9]+: HRESULT IXMLDOMNode::") +
                                getter.name + "\\(VARIANT ?\\*\\): Assertion `this' failed";
    Held value;
    EXPECT_DEATH((NoNode()->*getter.get)(&value), message);
    EXPECT_DEATH((NoNode()->*getter.get)(nullptr), message);
  }
}

}  // namespace
