#include <gtest/gtest.h>
#include <xmldom/support/MemFile.h>
#include <xmldom/xmldom.h>

#include <cstring>
#include <string>

#include "harness/LogCapture.h"
#include "harness/StdoutCapture.h"
#include "harness/Trees.h"

namespace {

/// A node of any type under `parent`, which owns it.
IXMLDOMNode* AddNode(IXMLDOMNode* parent, const char* name, const char* value,
                     tagDOMNodeType type) {
  IXMLDOMNode* node = new IXMLDOMNode(parent->m_pOwnerDocument, name, value, type);
  parent->AddChild(node);
  return node;
}

/// The text of a node, without the debug lines.
std::string TextOf(const IXMLDOMNode* node) {
  StdoutCapture output;
  CMemFile text(16);
  node->GetTextHelper(text);
  return std::string(text.GetAsStr(), text.m_uLength);
}

}  // namespace

// ---- GetTextHelper

TEST(XMLNodeText, Joins_own_texts_first_and_then_those_of_the_children) {
  const struct {
    const char* xml;
    const char* text;
  } rows[] = {
      {"<a/>", ""},
      {"<a>x</a>", "x"},
      {"<a><b>x</b></a>", "x"},
      {"<a><b>x</b><c>y</c></a>", "x y"},
      {"<a><b>x</b>y</a>", "y x"},
      {"<a><b>1<c>2</c></b><d>3</d>0</a>", "0 1 2 3"},
      {"<a><b><c>1</c></b><d>2</d></a>", "1 2"},
      {"<a v='1'><b w='2'/></a>", ""},
      {"<a> x </a>", " x "},
      {"<a><b> x </b><c> y </c></a>", " x   y "},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.xml);
    const Document document = Load(row.xml);
    EXPECT_EQ(row.text, TextOf(Root(document)));
  }
}

TEST(XMLNodeText, Joins_several_own_texts_with_blanks) {
  const Document document = Load("<a/>");
  IXMLDOMNode* root = Root(document);
  root->AddTextChild("x");
  AddNode(root, "b", nullptr, NODE_ELEMENT)->AddTextChild("y");
  root->AddTextChild("z");
  EXPECT_EQ("x z y", TextOf(root));
}

TEST(XMLNodeText, Decodes_each_text) {
  const Document document = Load("<a/>");
  Root(document)->AddTextChild("a&amp;b");
  Root(document)->AddTextChild("c");
  EXPECT_EQ("a&b c", TextOf(Root(document)));
}

TEST(XMLNodeText, Keeps_comments_and_sections_that_the_parser_kept) {
  const Document document = Load("<a>x<!--c--><![CDATA[&lt;]]></a>");
  EXPECT_EQ("x<!--c--><![CDATA[<]]>", TextOf(Root(document)));
}

TEST(XMLNodeText, Of_a_document_is_that_of_its_root) {
  const Document document = Load("<a>x<b>y</b></a>");
  EXPECT_EQ("x y", TextOf(document));
}

TEST(XMLNodeText, Of_a_document_is_that_of_its_first_child_alone) {
  const Document document = Load("<a>x</a>");
  AddNode(document, "b", nullptr, NODE_ELEMENT)->AddTextChild("y");
  EXPECT_EQ("x", TextOf(document));
}

TEST(XMLNodeText, Of_an_empty_document_is_empty) {
  const Document document = NewDocument();
  EXPECT_EQ("", TextOf(document));
}

TEST(XMLNodeText, Of_texts_and_attributes_themselves_is_empty) {
  const Document document = Load("<a v='1'>x</a>");
  EXPECT_EQ("", TextOf(At(document, {0, 0})));
  EXPECT_EQ("", TextOf(Root(document)->m_pFirstAttribute));
}

TEST(XMLNodeText, Leaves_out_the_values_of_nodes_that_are_no_texts) {
  const Document document = Load("<a>x</a>");
  const tagDOMNodeType types[] = {NODE_ELEMENT, NODE_CDATA_SECTION, NODE_COMMENT,
                                  NODE_PROCESSING_INSTRUCTION};
  for (tagDOMNodeType type : types) AddNode(Root(document), "n", "value", type);
  EXPECT_EQ("x", TextOf(Root(document)));
}

TEST(XMLNodeText, Takes_the_texts_below_any_node_that_is_no_text) {
  const Document document = Load("<a/>");
  AddNode(Root(document), "#comment", "c", NODE_COMMENT)->AddTextChild("x");
  EXPECT_EQ("x", TextOf(Root(document)));
}

TEST(XMLNodeText, Takes_nothing_from_below_a_text) {
  const Document document = Load("<a>x</a>");
  AddNode(At(document, {0, 0}), "b", nullptr, NODE_ELEMENT)->AddTextChild("y");
  EXPECT_EQ("x", TextOf(Root(document)));
}

TEST(XMLNodeText, Joins_empty_texts_like_others) {
  const struct {
    const char* texts[3];
    const char* text;
  } rows[] = {
      {{"", "x", "y"}, "x y"}, {{"x", "", "y"}, "x  y"},        {{"x", "y", ""}, "x y "},
      {{"", "", ""}, ""},      {{nullptr, "x", nullptr}, "x "}, {{"&#0;", "x", "&#0;"}, "x "},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    const Document document = Load("<a/>");
    for (const char* text : row.texts) Root(document)->AddTextChild(text);
    EXPECT_EQ(row.text, TextOf(Root(document)));
  }
}

TEST(XMLNodeText, Is_appended_with_a_blank_to_what_the_buffer_holds) {
  const Document document = Load("<a><b>x</b></a>");
  CMemFile text(16);
  text.Write("before", 6);
  Root(document)->GetTextHelper(text);
  EXPECT_EQ("before x", std::string(text.GetAsStr()));
}

TEST(XMLNodeText, Prints_a_debug_line_for_each_text_with_references) {
  const Document document = Load("<a>&lt;<b>x</b><c>&gt;</c></a>");
  StdoutCapture output;
  CMemFile text(16);
  Root(document)->GetTextHelper(text);
  EXPECT_EQ(
      "Translate Entities: from <&lt;> to <<>\n"
      "Translate Entities: from <&gt;> to << x >>\n",
      output.Take());
}

TEST(XMLNodeText, Logs_unknown_references_and_keeps_them) {
  const Document document = Load("<a/>");
  Root(document)->AddTextChild("x&u;");
  LogCapture log;
  EXPECT_EQ("x&u;", TextOf(Root(document)));
  ASSERT_EQ(1u, log.Events().size());
  EXPECT_EQ(Event(11, 4,
                  "TranslateEntities FAILED to match entity at the begining of this string: '&u;'"),
            log.Events()[0]);
}

// ---- Texts handed out

TEST(XMLNodeTextAsBSTR, Is_a_new_string) {
  const Document document = Load("<a>x<b>y</b></a>");
  BSTR text = Root(document)->GetTextAsBSTR();
  EXPECT_EQ(1, GetNumBSTRsAllocated());
  EXPECT_EQ("x y", TakeBstr(text));
}

TEST(XMLNodeTextAsBSTR, Is_empty_when_there_is_no_text) {
  const Document document = Load("<a/>");
  BSTR text = Root(document)->GetTextAsBSTR();
  EXPECT_EQ(1, GetNumBSTRsAllocated());
  EXPECT_EQ("", TakeBstr(text));
}

TEST(XMLNodeTextGetText, Gives_a_new_string_also_when_it_is_empty) {
  for (const char* expected : {"text", ""}) {
    const Document document = Load("<a><b>" + std::string(expected) + "</b></a>");
    BSTR text = nullptr;
    EXPECT_EQ(S_OK, Root(document)->get_text(&text));
    EXPECT_EQ(expected, TakeBstr(text));
  }
}

TEST(XMLNodeTextGetText, Refuses_a_null_out_pointer) {
  const Document document = Load("<a>x</a>");
  EXPECT_EQ(E_ARGUMENT, Root(document)->get_text(nullptr));
  EXPECT_EQ(0, GetNumBSTRsAllocated());
}

TEST(XMLNodeTextAsStr, Is_a_new_text_on_the_heap) {
  const Document document = Load("<a>x<b>y</b></a>");
  EXPECT_EQ("x y", TakeHeap(Root(document)->GetTextAsStr()));
}

TEST(XMLNodeTextAsStr, Decodes_each_text_also_when_no_debug_line_is_printed) {
  const Document document = Load("<a><b>1 &lt; 2 &amp; 3</b>x&#65;y<c>&gt;</c></a>");
  SetDebugEntities(false);
  StdoutCapture output;
  EXPECT_EQ("xAy 1 < 2 & 3 >", TakeHeap(Root(document)->GetTextAsStr()));
  SetDebugEntities(true);
  EXPECT_EQ("", output.Take());
}

// Such a text is put before what was collected from below the element.
TEST(XMLNodeTextAsStr, Puts_texts_of_every_length_before_those_of_the_children) {
  for (std::size_t length = 1; length < 3000; length += 13) {
    const std::string late(length, 'y');
    const Document document = Load("<a><b>" + Repeat("x", 500) + "</b>" + late + "</a>");
    EXPECT_EQ(late + " " + Repeat("x", 500), TakeHeap(Root(document)->GetTextAsStr()));
  }
}

TEST(XMLNodeTextAsStr, Is_null_when_there_is_no_text) {
  const Document document = Load("<a><b/></a>");
  EXPECT_EQ(nullptr, Root(document)->GetTextAsStr());
  EXPECT_EQ(nullptr, NewDocument()->GetTextAsStr());
}

TEST(XMLNodeTextAsStr, Grows_with_the_text) {
  for (std::size_t size : {4095u, 4096u, 4097u, 100000u}) {
    SCOPED_TRACE(size);
    const std::string text(size, 'x');
    EXPECT_EQ(text, TakeHeap(Root(Load("<a>" + text + "</a>"))->GetTextAsStr()));
  }
}

// ---- GetStringValue

namespace {

const std::size_t kBufferSize = 16;

/// What a call with a buffer of kBufferSize '#' has left.
struct StringValue {
  bool isBuffer;      // whether the result was the buffer
  std::string bytes;  // the whole buffer
};

StringValue StringValueOf(const std::string& text, int size) {
  const Document document = Load("<a>" + text + "</a>");
  char buffer[kBufferSize];
  std::memset(buffer, '#', sizeof buffer);
  const char* result = Root(document)->GetStringValue(buffer, size);
  EXPECT_TRUE(result == nullptr || result == buffer);
  return StringValue{result == buffer, std::string(buffer, sizeof buffer)};
}

/// A buffer that holds `text` and is untouched behind its terminator.
std::string Filled(const std::string& text) {
  return text + '\0' + std::string(kBufferSize - text.size() - 1, '#');
}

std::string Overrun(int passed, int required) {
  return "IXMLDOMNode::GetStringValue - buffer size overrun, string trunked, passed size " +
         std::to_string(passed) + ", required size " + std::to_string(required);
}

}  // namespace

TEST(XMLNodeTextStringValue, Is_null_without_a_buffer_in_silence) {
  const Document document = Load("<a>text</a>");
  Root(document)->AddTextChild("&lt;&unknown;");
  LogCapture log;
  StdoutCapture output;
  EXPECT_EQ(nullptr, Root(document)->GetStringValue(nullptr, 16));
  EXPECT_EQ("", output.Take());
  EXPECT_TRUE(log.Events().empty());
}

TEST(XMLNodeTextStringValue, Copies_a_text_that_fits_in_silence) {
  const struct {
    const char* text;
    int size;
  } rows[] = {{"abc", 4}, {"abc", 5}, {"abc", 16}, {"a", 2}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.size);
    LogCapture log;
    const StringValue value = StringValueOf(row.text, row.size);
    EXPECT_TRUE(value.isBuffer);
    EXPECT_EQ(Filled(row.text), value.bytes);
    EXPECT_TRUE(log.Events().empty());
  }
}

TEST(XMLNodeTextStringValue, Gives_null_and_an_empty_text_when_there_is_none) {
  for (int size : {1, 2, 16}) {
    SCOPED_TRACE(size);
    LogCapture log;
    const StringValue value = StringValueOf("", size);
    EXPECT_FALSE(value.isBuffer);
    EXPECT_EQ(Filled(""), value.bytes);
    EXPECT_TRUE(log.Events().empty());
  }
}

TEST(XMLNodeTextStringValue, Cuts_a_text_that_does_not_fit_and_logs_it) {
  const struct {
    const char* text;
    int size;
    const char* cut;
    int required;
  } rows[] = {
      {"abc", 3, "ab", 4}, {"abc", 2, "a", 4},      {"abc", 1, "", 4},
      {"abc", 0, "", 4},   {"abc", -1, "", 4},      {"", 0, "", 1},
      {"", -5, "", 1},     {"abc", INT_MIN, "", 4}, {"\xc3\xa9", 2, "\xc3", 3},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.size);
    LogCapture log;
    const StringValue value = StringValueOf(row.text, row.size);
    EXPECT_EQ(*row.cut != '\0', value.isBuffer);
    EXPECT_EQ(Filled(row.cut), value.bytes);
    ASSERT_EQ(2u, log.Events().size());
    EXPECT_EQ(Event(18, 4, Overrun(row.size, row.required)), log.Events()[0]);
    EXPECT_EQ(Event(18, 4, "IXMLDOMNode::GetStringValue - Overrun was initiated from here:",
                    log.Events()[1].body),
              log.Events()[1]);
  }
}

TEST(XMLNodeTextStringValue, Logs_the_call_stack_of_a_cut) {
  LogCapture log;
  StringValueOf("abc", 1);
  ASSERT_EQ(2u, log.Events().size());
  EXPECT_NE("", log.Events()[1].body);
}
