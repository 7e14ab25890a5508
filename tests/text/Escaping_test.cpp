#include <xmldom/text/Escaping.h>

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include <string>

#include "harness/StdoutCapture.h"
#include "harness/Trees.h"

namespace {

using xmldom::EscapeAttribute;
using xmldom::EscapeText;
using xmldom::TextPlace;

struct Row {
  const char* text;
  const char* inElement;
  const char* besideElements;
  const char* inAttribute;
};

const Row kRows[] = {
    {"", "", "", ""},
    {"word", "word", "&#119;ord", "word"},
    {" word ", " word ", "&#32;word ", " word "},
    {"&<>", "&amp;&lt;&gt;", "&amp;&lt;&gt;", "&amp;&lt;&gt;"},
    {"\"'", "\"'", "&#34;'", "&quot;&apos;"},
    {" ", "&#32;", "&#32;", " "},
    {"\t", "&#9;", "&#9;", "&#9;"},
    {"a\tb", "a\tb", "&#97;\tb", "a&#9;b"},
    {"a\nb", "a&#10;b", "&#97;&#10;b", "a&#10;b"},
    {"\r\n", "&#13;&#10;", "&#13;&#10;", "&#13;&#10;"},
    {"a\n \t\nb", "a&#10;&#32;&#9;&#10;b", "&#97;&#10;&#32;&#9;&#10;b", "a&#10; &#9;&#10;b"},
    {"< >", "&lt;&#32;&gt;", "&lt;&#32;&gt;", "&lt; &gt;"},
    {"a\n ", "a&#10;&#32;", "&#97;&#10;&#32;", "a&#10; "},
    {"x y", "x y", "&#120; y", "x y"},
    {"x ", "x ", "&#120;&#32;", "x "},
    {"]]>", "]]&gt;", "&#93;]&gt;", "]]&gt;"},
    {"&#10;", "&amp;#10;", "&amp;#10;", "&amp;#10;"},
    {"\xf0\x9f\x99\x82", "\xf0\x9f\x99\x82", "&#128578;", "\xf0\x9f\x99\x82"},
};

TEST(Escaping, Every_place_has_the_references_that_it_needs) {
  for (const Row& row : kRows) {
    EXPECT_EQ(row.inElement, EscapeText(row.text).text) << row.text;
    EXPECT_EQ(row.besideElements, EscapeText(row.text, TextPlace::kBesideElements).text)
        << row.text;
    EXPECT_EQ(row.inAttribute, EscapeAttribute(row.text).text) << row.text;
  }
}

TEST(Escaping, A_fragment_made_of_escaped_texts_is_read_as_they_were) {
  const StdoutCapture output;
  for (const Row& row : kRows) {
    Document document =
        Load("<a b='" + EscapeAttribute(row.text).text + "'>" + EscapeText(row.text).text + "</a>");
    EXPECT_EQ(row.text, xmldom::Text(Root(document)));
    EXPECT_EQ(row.text, xmldom::Attribute(Root(document), "b"));
  }
}

TEST(Escaping, What_XML_cannot_hold_is_refused_with_its_offset) {
  const std::string text("ab\0c", 4);
  for (const xmldom::EscapedText& escaped :
       {EscapeText(text), EscapeText(text, TextPlace::kBesideElements), EscapeAttribute(text)}) {
    EXPECT_FALSE(escaped);
    EXPECT_EQ(2u, escaped.refusedAt);
    EXPECT_EQ("", escaped.text);
  }
  EXPECT_TRUE(EscapeText("ab"));
  EXPECT_EQ(std::string::npos, EscapeText("ab").refusedAt);
}

}  // namespace
