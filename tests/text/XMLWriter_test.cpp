#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "harness/SmallStack.h"
#include "harness/Trees.h"
#include "harness/Writing.h"

namespace {

struct Written {
  const char* xml;
  const char* written;
};

void ExpectWritten(const std::vector<Written>& rows, const Writing& how = Writing()) {
  for (const Written& row : rows) {
    SCOPED_TRACE(row.xml);
    Document document = Load(row.xml);
    EXPECT_EQ(row.written, Write(document, how));
  }
}

Writing Masked() {
  Writing how;
  how.masked = true;
  return how;
}

/// A document with a root element that holds a text, an element with a text, and an empty element.
Document Mixed() { return Load("<p>a<q>b</q><r/></p>"); }

}  // namespace

// ---- Layout

TEST(XMLWriter, Elements_stand_on_lines_of_their_own_indented_by_their_depth) {
  ExpectWritten({
      {"<a/>", "<a/>\n"},
      {"<a></a>", "<a/>\n"},
      {"<a><b/></a>", "<a>\n  <b/>\n</a>\n"},
      {"<a><b><c/></b><d/></a>", "<a>\n  <b>\n    <c/>\n  </b>\n  <d/>\n</a>\n"},
      {"<root a='1'><item>text</item><empty/></root>",
       "<root a='1'>\n  <item>text</item>\n  <empty/>\n</root>\n"},
  });
}

TEST(XMLWriter, One_text_alone_stays_on_the_line_of_its_element) {
  ExpectWritten(
      {{"<a>text</a>", "<a>text</a>\n"}, {"<a><b>text</b></a>", "<a>\n  <b>text</b>\n</a>\n"}});
}

TEST(XMLWriter, A_text_beside_other_children_gets_a_line_of_its_own) {
  ExpectWritten({{"<p>a<b/></p>", "<p>\n  a\n  <b/>\n</p>\n"},
                 {"<r><p>a<b/></p></r>", "<r>\n  <p>\n    a\n    <b/>\n  </p>\n</r>\n"},
                 {"<p>a<q>b</q></p>", "<p>\n  a\n  <q>b</q>\n</p>\n"}});
}

TEST(XMLWriter, Texts_are_written_before_all_other_children) {
  Document document = Load("<p><b/></p>");
  Root(document)->AddTextChild("a");
  EXPECT_EQ("<p>\n  a\n  <b/>\n</p>\n", Write(document));
  Root(document)->AddTextChild("c");
  EXPECT_EQ("<p>\n  a\n  c\n  <b/>\n</p>\n", Write(document));
}

TEST(XMLWriter, Several_texts_get_lines_of_their_own) {
  Document document = Load("<p>a</p>");
  Root(document)->AddTextChild("b");
  EXPECT_EQ("<p>\n  a\n  b\n</p>\n", Write(document));
}

TEST(XMLWriter, A_text_without_value_leaves_its_place_empty) {
  Document document = Load("<p/>");
  Root(document)->AddTextChild(nullptr);
  EXPECT_EQ("<p></p>\n", Write(document));
  Root(document)->AddTextChild("");
  EXPECT_EQ("<p>\n  \n  \n</p>\n", Write(document));
}

TEST(XMLWriter, Names_and_values_are_written_as_stored) {
  Document document = Load("<p/>");
  Root(document)->AddAttribute("a<b", "it's \"%s\" & <x>");
  Root(document)->AddTextChild("x<y & &lt; %d ]]>");
  Node child(Root(document)->AddChild("%n/>", nullptr));
  EXPECT_EQ("<p a<b='it's \"%s\" & <x>'>\n  x<y & &lt; %d ]]>\n  <%n/>/>\n</p>\n", Write(document));
}

TEST(XMLWriter, Bytes_of_every_kind_are_written_as_stored) {
  std::string bytes;
  for (int c = 1; c < 256; ++c) bytes += static_cast<char>(c);
  Document document = Load("<p/>");
  Root(document)->AddTextChild(bytes.c_str());
  EXPECT_EQ("<p>" + bytes + "</p>\n", Write(document));
}

TEST(XMLWriter, References_stay_references) {
  ExpectWritten({{"<a k='&lt;&amp;'>&gt;&#65;</a>", "<a k='&lt;&amp;'>&gt;&#65;</a>\n"}});
}

// ---- Attributes

TEST(XMLWriter, Attributes_are_written_in_the_order_of_their_chain) {
  ExpectWritten({{"<p b='2' a='1' c=''/>", "<p b='2' a='1' c=''/>\n"},
                 {"<p curPage='1' numPages='2'/>", "<p curPage='1' numPages='2'/>\n"}});
}

TEST(XMLWriter, An_attribute_without_value_is_written_empty) {
  Document document = Load("<p/>");
  Root(document)->AddAttribute("a", nullptr);
  EXPECT_EQ("<p a=''/>\n", Write(document));
}

// ---- Which node is written

TEST(XMLWriter, A_node_is_written_without_what_stands_around_it) {
  Document document = Load("<a><b><c/></b><d/></a>");
  EXPECT_EQ("<b>\n  <c/>\n</b>\n", Write(At(document, {0, 0})));
}

TEST(XMLWriter, The_depth_moves_a_node_in_by_levels) {
  Document document = Mixed();
  Writing how;
  how.depth = 2;
  const char* const moved = "    <p>\n      a\n      <q>b</q>\n      <r/>\n    </p>\n";
  EXPECT_EQ(moved, Write(Root(document), how));
  EXPECT_EQ(moved, Write(document, how));
}

TEST(XMLWriter, The_text_is_appended_to_what_the_buffer_holds) {
  Document document = Load("<a/>");
  CMemFile out(16);
  out.Write("before ", 7);
  document->GetXMLHelper(out, 0, nullptr, 0, 0, -1, -1, nullptr, false, false, 0);
  EXPECT_STREQ("before <a/>\n", out.GetAsStr());
}

TEST(XMLWriter, A_document_without_children_writes_nothing) {
  EXPECT_EQ("", Write(NewDocument()));
  EXPECT_EQ("", Write(NewDocument(), Masked()));
}

TEST(XMLWriter, Of_a_document_only_the_first_child_is_written) {
  Document document = NewDocument();
  document->AddChild(new IXMLDOMNode(document, "comment", "said", NODE_COMMENT));
  Node root(document->AddChild("root", nullptr));
  EXPECT_EQ("<comment/>\n", Write(document));
}

TEST(XMLWriter, A_node_that_is_its_own_owner_writes_like_a_document) {
  Node base(new IXMLDOMNode);
  EXPECT_EQ("", Write(base));
}

TEST(XMLWriter, A_node_of_document_type_under_another_owner_is_written_like_an_element) {
  Document document = NewDocument();
  Node node(new IXMLDOMNode(document, "d", nullptr, NODE_DOCUMENT));
  Node child(node->AddChild("a", nullptr));
  EXPECT_EQ("<d>\n  <a/>\n</d>\n", Write(node));
}

TEST(XMLWriter, Nodes_of_all_types_but_text_are_written_like_elements) {
  for (int type = NODE_INVALID; type <= NODE_NOTATION + 1; ++type) {
    SCOPED_TRACE(type);
    Document document = Load("<p/>");
    IXMLDOMNode* const node = new IXMLDOMNode(document, "n", "v", static_cast<DOMNodeType>(type));
    node->AddAttribute("k", "1");
    Root(document)->AddChild(node);
    const bool isText = type == NODE_TEXT;
    EXPECT_EQ(isText ? "<p>v</p>\n" : "<p>\n  <n k='1'/>\n</p>\n", Write(document));
  }
}

TEST(XMLWriter, A_text_or_attribute_on_its_own_is_written_as_an_empty_element) {
  Document document = Load("<p id='7'>text</p>");
  EXPECT_EQ("<#Text/>\n", Write(At(document, {0, 0})));
  EXPECT_EQ("<id/>\n", Write(Root(document)->m_pFirstAttribute));
}

TEST(XMLWriter, The_value_of_an_element_itself_is_not_written) {
  Document document = NewDocument();
  Node root(document->AddChild("p", "value"));
  EXPECT_EQ("<p/>\n", Write(document));
}

TEST(XMLWriter, A_node_without_name_is_written_without_one) {
  Document document = Load("<p><q/></p>");
  At(document, {0, 0})->ClearNode(true);
  EXPECT_EQ("<p>\n  </>\n</p>\n", Write(document));
}

// ---- Indentation

TEST(XMLWriter, The_owner_document_says_how_wide_a_level_is) {
  const struct {
    int width;
    const char* written;
  } rows[] = {
      {0, "<p>\na\n<q>b</q>\n<r/>\n</p>\n"},
      {1, "<p>\n a\n <q>b</q>\n <r/>\n</p>\n"},
      {4, "<p>\n    a\n    <q>b</q>\n    <r/>\n</p>\n"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.width);
    Document document = Mixed();
    document->m_nIndent = row.width;
    EXPECT_EQ(row.written, Write(document));
  }
}

TEST(XMLWriter, With_the_layout_off_only_texts_are_indented) {
  Document document = Load("<p>a<q>b<r/></q><s><t/></s></p>");
  document->m_uFlags &= ~static_cast<unsigned int>(IXMLDOMDocument2::FORMATTED_LAYOUT);
  EXPECT_EQ("<p>\n  a\n<q>\n    b\n<r/>\n</q>\n<s>\n<t/>\n</s>\n</p>\n", Write(document));
  At(document, {0, 2, 0})->AddTextChild("c");
  At(document, {0, 2, 0})->AddTextChild("d");
  EXPECT_EQ("<s>\n<t>\n    c\n    d\n</t>\n</s>\n", Write(At(document, {0, 2})));
}

TEST(XMLWriter, Only_the_lowest_bit_of_the_flags_is_the_layout) {
  Document document = Load("<a><b/></a>");
  document->m_uFlags = ~static_cast<unsigned int>(IXMLDOMDocument2::FORMATTED_LAYOUT);
  EXPECT_EQ("<a>\n<b/>\n</a>\n", Write(document));
  document->m_uFlags = ~0u;
  EXPECT_EQ("<a>\n  <b/>\n</a>\n", Write(document));
}

TEST(XMLWriter, A_document_made_by_hand_indents_only_texts_by_four) {
  Document document(new IXMLDOMDocument2);
  Node root(document->AddChild("p", nullptr));
  root->AddTextChild("a");
  Node child(root->AddChild("q", nullptr));
  EXPECT_EQ("<p>\n    a\n<q/>\n</p>\n", Write(document));
}

TEST(XMLWriter, A_node_without_owner_is_indented_by_two) {
  Node root(new IXMLDOMNode(nullptr, "p", nullptr, NODE_ELEMENT));
  root->AddTextChild("a");
  Node child(root->AddChild("q", nullptr));
  EXPECT_EQ("<p>\n  a\n  <q/>\n</p>\n", Write(root));
}

TEST(XMLWriter, Each_node_is_indented_as_its_own_owner_says) {
  Document wide = NewDocument();
  wide->m_nIndent = 8;
  Document document = Load("<p><q/></p>");
  At(document, {0, 0})->m_pOwnerDocument = wide;
  EXPECT_EQ("<p>\n        <q/>\n</p>\n", Write(document));
}

TEST(XMLWriter, A_node_without_owner_gives_the_whole_text_the_usual_layout) {
  const char* const xml = "<p>a<q><r/>b<s/></q><t>c</t></p>";
  const char* const usual =
      "<p>\n  a\n  <q>\n    b\n    <r/>\n    <s/>\n  </q>\n  <t>c</t>\n</p>\n";
  const std::vector<std::vector<int>> places = {{0},       {0, 0},    {0, 1}, {0, 1, 0},
                                                {0, 1, 1}, {0, 1, 2}, {0, 2}, {0, 2, 0}};
  for (const std::vector<int>& place : places) {
    SCOPED_TRACE(testing::PrintToString(place));
    Document document = Load(xml);
    document->m_nIndent = 7;
    IXMLDOMNode* node = document;
    for (int position : place) node = At(node, {position});
    node->m_pOwnerDocument = nullptr;
    EXPECT_EQ(usual, Write(document));
  }
}

TEST(XMLWriter, A_node_without_owner_below_a_text_gives_the_usual_layout_too) {
  Document document = Load("<p><q>a</q></p>");
  document->m_nIndent = 7;
  Node below(At(document, {0, 0, 0})->AddChild("r", nullptr));
  EXPECT_EQ("<p>\n       <q>a</q>\n</p>\n", Write(document));
  below->m_pOwnerDocument = nullptr;
  EXPECT_EQ("<p>\n  <q>a</q>\n</p>\n", Write(document));
}

TEST(XMLWriter, What_hangs_below_a_node_without_owner_may_name_one_that_is_gone) {
  Document document = Load("<p><q/></p>");
  document->m_nIndent = 7;
  IXMLDOMNode* removed = nullptr;
  {
    Document other = Load("<a><b>x<c/></b></a>");
    Node kept(At(other, {0, 0}));
    kept->AddRef();
    ASSERT_EQ(S_OK, Root(other)->removeChild(kept, &removed));
  }
  Node owned(removed);
  ASSERT_EQ(nullptr, removed->m_pOwnerDocument);
  ASSERT_NE(nullptr, removed->m_pFirstChild->m_pOwnerDocument);
  // By hand, because appending would give all of it the new owner.
  At(document, {0, 0})->m_pNextSibling = owned.Detach();
  EXPECT_EQ("<p>\n  <q/>\n  <b>\n    x\n    <c/>\n  </b>\n</p>\n", Write(document));
}

TEST(XMLWriter, What_was_in_the_buffer_stays_before_a_text_without_owners) {
  Document document = Load("<p><q/><r/></p>");
  document->m_nIndent = 7;
  At(document, {0, 1})->m_pOwnerDocument = nullptr;
  CMemFile out(16);
  out.WriteF("before: ");
  document->GetXMLHelper(out, 0, nullptr, 0, 0, -1, -1, nullptr, false, false, 0);
  EXPECT_STREQ("before: <p>\n  <q/>\n  <r/>\n</p>\n", out.GetAsStr());
  EXPECT_EQ(out.m_uLength, out.m_uPosition);
}

// ---- Masked

TEST(XMLWriter, Masked_all_values_are_left_out_and_no_tag_is_closed_at_once) {
  ExpectWritten({{"<a/>", "<a></a>\n"},
                 {"<a>text</a>", "<a></a>\n"},
                 {"<a k='1' m=''/>", "<a k='' m=''></a>\n"},
                 {"<a k='1'>text</a>", "<a k=''></a>\n"}},
                Masked());
}

TEST(XMLWriter, Masked_children_begin_on_the_line_of_their_parent) {
  ExpectWritten({{"<a><b/></a>", "<a>  <b></b>\n</a>\n"},
                 {"<a><b><c>x</c></b><d/></a>", "<a>  <b>    <c></c>\n  </b>\n  <d></d>\n</a>\n"}},
                Masked());
}

TEST(XMLWriter, Masked_texts_keep_their_lines) {
  ExpectWritten({{"<p>a<b/></p>", "<p>\n  \n  <b></b>\n</p>\n"}}, Masked());
  Document document = Load("<p>a</p>");
  Root(document)->AddTextChild("b");
  EXPECT_EQ("<p>\n  \n  \n</p>\n", Write(document, Masked()));
}

// ---- Size

TEST(XMLWriter, A_tree_deeper_than_the_call_stack_is_written) {
  const int depth = 100000;
  Document document = Load(Repeat("<a>", depth) + Repeat("</a>", depth));
  document->m_uFlags = 0;
  std::string written;
  OnSmallStack([&] { written = Write(document); });
  EXPECT_TRUE(Repeat("<a>\n", depth - 1) + "<a/>\n" + Repeat("</a>\n", depth - 1) == written);
}

TEST(XMLWriter, A_wide_tree_is_written) {
  const int count = 100000;
  Document document = Load("<r>" + Repeat("<a/>", count) + "</r>");
  EXPECT_TRUE("<r>\n" + Repeat("  <a/>\n", count) + "</r>\n" == Write(document));
}

TEST(XMLWriter, A_long_text_is_written_whole) {
  const std::string text(100000, 'x');
  const std::string xml = "<a k='" + text + "'>" + text + "</a>";
  Document document = Load(xml);
  EXPECT_TRUE(xml + "\n" == Write(document));
}
