#include <expat.h>
#include <gtest/gtest.h>
#include <tools/document/CharacterData.h>
#include <tools/document/DocumentOrder.h>

#include <memory>
#include <string>
#include <vector>

#include "tool/Loading.h"
#include "tool/RandomText.h"

namespace {

using tool::CharacterData;

typedef std::vector<IXMLDOMNode*> Nodes;

Nodes AllElements(IXMLDOMDocument2* document) {
  Nodes elements;
  for (IXMLDOMNode* element = document; (element = tool::NextElement(element)) != nullptr;) {
    elements.push_back(element);
  }
  return elements;
}

/// The character data of each element of a document, in the order of their start tags.
std::vector<std::string> AllTexts(const std::string& text) {
  const XMLPtr<IXMLDOMDocument2> document = Load(text);
  const Nodes elements = AllElements(document.Get());
  const CharacterData data(text, document.Get(), elements);
  std::vector<std::string> texts;
  for (const IXMLDOMNode* element : elements) texts.push_back(data.Of(element));
  return texts;
}

std::string TextOf(const std::string& text) { return AllTexts(text).front(); }

TEST(CharacterData, Is_all_text_between_the_tags_in_its_order) {
  EXPECT_EQ((std::vector<std::string>{"xyz", "y"}), AllTexts("<a>x<b>y</b>z</a>"));
  EXPECT_EQ((std::vector<std::string>{"", ""}), AllTexts("<a><b/></a>"));
  EXPECT_EQ((std::vector<std::string>{"\n  1\n", "1"}), AllTexts("<a>\n  <b>1</b>\n</a>"));
}

TEST(CharacterData, References_are_what_they_stand_for) {
  EXPECT_EQ("<&>'\"", TextOf("<a>&lt;&amp;&gt;&apos;&quot;</a>"));
  EXPECT_EQ("A\xC3\xA9\xF0\x9F\x98\x80", TextOf("<a>&#x41;&#233;&#x1F600;</a>"));
  EXPECT_EQ("&lt;", TextOf("<a>&amp;lt;</a>"));
  EXPECT_EQ("\r\n", TextOf("<a>&#13;&#10;</a>"));
}

TEST(CharacterData, Entities_are_what_the_document_type_says) {
  EXPECT_EQ((std::vector<std::string>{"1x<y2", "y"}),
            AllTexts("<!DOCTYPE a [<!ENTITY e 'x&#38;#60;<b>y</b>'>]><a>1&e;2</a>"));
  EXPECT_EQ("12", TextOf("<!DOCTYPE a SYSTEM 'none.dtd'><a>1&unknown;2</a>"));
}

TEST(CharacterData, Sections_are_unwrapped_and_comments_and_instructions_left_out) {
  EXPECT_EQ("1<b>&amp;2", TextOf("<a>1<![CDATA[<b>&amp;]]>2</a>"));
  EXPECT_EQ("12", TextOf("<a>1<!-- x -->2<?pi y?></a>"));
  EXPECT_EQ(" \n ", TextOf("<a><![CDATA[ \n ]]></a>"));
  EXPECT_EQ("", TextOf("<a><!-- x --></a>"));
}

TEST(CharacterData, Line_ends_are_line_feeds_and_white_space_stays) {
  EXPECT_EQ(" 1\n 2\n\n3\t", TextOf("<a> 1\r\n 2\r\n\r3\t</a>"));
}

TEST(CharacterData, Comes_in_UTF_8_from_any_encoding) {
  EXPECT_EQ("\xC3\xA9", TextOf("<?xml version='1.0' encoding='ISO-8859-1'?><a>\xE9</a>"));
  EXPECT_EQ("\xC3\xA9", TextOf("\xEF\xBB\xBF<a>\xC3\xA9</a>"));
}

TEST(CharacterData, Is_read_for_the_elements_that_are_asked_for) {
  const std::string text = "<a>1<b>2<c>3</c></b><d>4<e>5</e></d></a>";
  const XMLPtr<IXMLDOMDocument2> document = Load(text);
  const Nodes elements = AllElements(document.Get());
  const CharacterData data(text, document.Get(), {elements[4], elements[1], elements[4]});
  EXPECT_EQ("5", data.Of(elements[4]));
  EXPECT_EQ("23", data.Of(elements[1]));
}

TEST(CharacterData, Of_nested_elements_takes_memory_once) {
  const int kLevels = 100000;
  std::string text;
  for (int i = 0; i < kLevels; ++i) text += "<a>x";
  for (int i = 0; i < kLevels; ++i) text += "</a>";
  const XMLPtr<IXMLDOMDocument2> document = Load(text);
  const Nodes elements = AllElements(document.Get());
  const CharacterData data(text, document.Get(), elements);
  EXPECT_EQ("x", data.Of(elements.back()));
  EXPECT_EQ(static_cast<std::size_t>(kLevels), data.Of(elements.front()).size());
}

// ---- The plain way: a pass of the parser for each element, which counts start tags.

struct PlainReader {
  std::size_t wanted;
  std::size_t begun;
  std::size_t depth;  // inside the element
  std::string text;
};

std::string PlainText(const std::string& text, std::size_t element) {
  PlainReader reader = {element, 0, 0, {}};
  const std::unique_ptr<XML_ParserStruct, void (*)(XML_Parser)> parser(XML_ParserCreate(nullptr),
                                                                       &XML_ParserFree);
  XML_SetUserData(parser.get(), &reader);
  XML_SetElementHandler(
      parser.get(),
      [](void* self, const char*, const char**) {
        PlainReader& open = *static_cast<PlainReader*>(self);
        if (open.begun++ == open.wanted || open.depth > 0) ++open.depth;
      },
      [](void* self, const char*) {
        PlainReader& open = *static_cast<PlainReader*>(self);
        if (open.depth > 0) --open.depth;
      });
  XML_SetCharacterDataHandler(parser.get(), [](void* self, const char* piece, int size) {
    PlainReader& open = *static_cast<PlainReader*>(self);
    if (open.depth > 0) open.text.append(piece, static_cast<std::size_t>(size));
  });
  XML_Parse(parser.get(), text.data(), static_cast<int>(text.size()), XML_TRUE);
  return reader.text;
}

TEST(CharacterData, Of_any_text_is_that_of_the_plain_way) {
  RandomText random(20261122);
  int compared = 0;
  for (int i = 0; i < 5000; ++i) {
    const std::string text = random.Document();
    if (TryLoad(text) == nullptr) continue;
    const std::vector<std::string> texts = AllTexts(text);
    for (std::size_t j = 0; j < texts.size(); ++j) ASSERT_EQ(PlainText(text, j), texts[j]) << text;
    ++compared;
  }
  EXPECT_LT(1000, compared);
}

}  // namespace
