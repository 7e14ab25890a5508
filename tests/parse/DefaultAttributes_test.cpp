#include <gtest/gtest.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include <string>
#include <vector>

#include "harness/ExpatVersion.h"
#include "harness/LoadOutcome.h"
#include "harness/LogCapture.h"
#include "harness/Trees.h"

namespace {

const int kFreeSize = 8 << 20;
const long kAmplification = 43;
const char kTooMany[] = "CXMLSax - default attributes of ";

/// While it lives, default attributes may take another number of times the size of the text.
class MaxDefaultsFactor {
 public:
  explicit MaxDefaultsFactor(unsigned int factor) { SetMaxDefaultsFactor(factor); }
  ~MaxDefaultsFactor() { SetMaxDefaultsFactor(100); }

  MaxDefaultsFactor(const MaxDefaultsFactor&) = delete;
  MaxDefaultsFactor& operator=(const MaxDefaultsFactor&) = delete;
};

/// What a default attribute named "d" with that value takes.
std::size_t SizeOf(const std::string& stored) {
  return sizeof(IXMLDOMNode) + 2 + stored.size() + 1;
}

/// A text whose elements `e` have the default attribute `d` with that value, `count` times
/// `element` below its root.
std::string TextOf(const std::string& value, int count, const std::string& element = "<e/>") {
  return "<!DOCTYPE r [<!ATTLIST e d CDATA '" + value + "'>]><r>" + Repeat(element, count) + "</r>";
}

/// Many attributes for many elements, each in a few bytes.
std::string Attack() {
  std::string attributes;
  for (int i = 0; i < 300; ++i) attributes += " a" + std::to_string(i) + " CDATA ''";
  return "<!DOCTYPE r [<!ATTLIST e" + attributes + ">]><r>" + Repeat("<e/>", 1000) + "</r>";
}

long ErrorCode(IXMLDOMDocument2* document) {
  Ref<IXMLDOMParseError> error;
  document->get_parseError(error.Out());
  return error->m_lErrorCode;
}

std::string Reason(IXMLDOMDocument2* document) {
  Ref<IXMLDOMParseError> error;
  document->get_parseError(error.Out());
  return Text(error->m_bstrReason);
}

int CountElements(IXMLDOMDocument2* document) {
  int count = 0;
  for (IXMLDOMNode* node = Root(document)->m_pFirstChild; node != nullptr;
       node = node->m_pNextSibling) {
    ++count;
  }
  return count;
}

}  // namespace

TEST(DefaultAttributes, That_take_more_than_8_MiB_and_100_times_the_text_end_the_load) {
  const Document document = NewDocument();
  const LogCapture log;
  EXPECT_EQ(kNotParsed, LoadText(document, Attack()));
  EXPECT_EQ(kAmplification, ErrorCode(document));
  EXPECT_EQ("limit on input amplification factor (from DTD and entities) breached",
            Reason(document));
  ASSERT_EQ(1u, log.Events().size());
  EXPECT_EQ(18, log.Events()[0].type);
  EXPECT_EQ(3, log.Events()[0].severity);
  EXPECT_EQ(0u, log.Events()[0].title.find(kTooMany)) << log.Events()[0].title;
}

TEST(DefaultAttributes, End_the_load_of_a_file_too) {
  const Document document = NewDocument();
  const LogCapture log;
  EXPECT_EQ(kNotParsed, LoadFile(document, Attack()));
  EXPECT_EQ(kAmplification, ErrorCode(document));
  EXPECT_EQ(1u, log.Events().size());
}

TEST(DefaultAttributes, Leave_the_tree_up_to_the_element_that_was_too_much) {
  const Document document = NewDocument();
  const MaxDefaultsFactor factor(0);
  const LogCapture log;
  const std::string value(1000, 'v');
  const int fit = static_cast<int>(kFreeSize / SizeOf(value));
  EXPECT_EQ(kNotParsed, LoadText(document, TextOf(value, fit + 10)));
  EXPECT_EQ(fit + 1, CountElements(document));
  EXPECT_EQ(kParsed, LoadText(document, "<a/>")) << "the document can be used again";
  EXPECT_EQ(0, ErrorCode(document));
}

TEST(DefaultAttributes, Tell_where_the_load_ended) {
  const Document document = NewDocument();
  const MaxDefaultsFactor factor(0);
  const LogCapture log;
  LoadText(document, TextOf(std::string(kFreeSize, 'v'), 2, "\n<e x='1'></e>"));
  Ref<IXMLDOMParseError> error;
  document->get_parseError(error.Out());
  EXPECT_EQ(2, error->m_lLine);
  char text[600];
  EXPECT_EQ(0u, std::string(document->m_pSax->GetErrorStr(text, sizeof text))
                    .find("Parsing error \"limit on input amplification factor"));
}

// One element takes all that is free to the byte: record, name and value, with their terminators.
TEST(DefaultAttributes, May_take_8_MiB_whatever_the_factor) {
  const Document document = NewDocument();
  const MaxDefaultsFactor factor(0);
  const LogCapture log;
  std::string value(kFreeSize - SizeOf(""), 'v');
  EXPECT_EQ(kParsed, LoadText(document, TextOf(value, 1)));
  EXPECT_EQ(0, ErrorCode(document));
  EXPECT_TRUE(log.Events().empty());

  value += 'v';
  EXPECT_EQ(kNotParsed, LoadText(document, TextOf(value, 1)));
  const std::vector<LoggedEvent> events = {
      Event(18, 3, kTooMany + std::to_string(kFreeSize + 1) + " bytes are too many")};
  EXPECT_EQ(events, log.Events());
}

TEST(DefaultAttributes, Count_as_they_are_stored) {
  const Document document = NewDocument();
  const MaxDefaultsFactor factor(0);
  const LogCapture log;
  // Each is stored as "&quot;".
  const std::string value(kFreeSize / 6, '"');
  EXPECT_EQ(kNotParsed, LoadText(document, TextOf(value, 1)));
}

TEST(DefaultAttributes, May_take_the_factor_times_the_text) {
  const Document document = NewDocument();
  const LogCapture log;
  const int elements = 2;
  const std::string value(kFreeSize, 'v');
  const std::string bare = TextOf(value, elements);
  const std::size_t defaults = elements * SizeOf(value);
  // A text that is as large as they are.
  const std::string even = bare + std::string(defaults - bare.size(), ' ');
  {
    const MaxDefaultsFactor factor(1);
    EXPECT_EQ(kParsed, LoadText(document, even));
    EXPECT_EQ(kNotParsed, LoadText(document, even.substr(0, even.size() - 1)));
  }
  EXPECT_EQ(1u, log.Events().size());
}

TEST(DefaultAttributes, Are_not_those_that_stand_in_the_tag) {
  const Document document = NewDocument();
  const MaxDefaultsFactor factor(0);
  const LogCapture log;
  const std::string value(1000, 'v');
  const int count = static_cast<int>(kFreeSize / SizeOf(value)) + 10;
  EXPECT_EQ(kParsed, LoadText(document, TextOf(value, count, "<e d='" + value + "'/>")));
  EXPECT_EQ(count, CountElements(document));
  EXPECT_EQ(kNotParsed, LoadText(document, TextOf(value, count, "<e f='" + value + "'/>")));
  EXPECT_EQ(1u, log.Events().size());
}

TEST(DefaultAttributes, Are_allowed_up_to_the_largest_factor) {
  const Document document = NewDocument();
  const MaxDefaultsFactor factor(0xFFFFFFFFu);
  EXPECT_EQ(kParsed, LoadText(document, Attack()));
}

TEST(DefaultAttributes, Are_counted_anew_for_each_load_of_a_builder) {
  const Document document = NewDocument();
  const MaxDefaultsFactor factor(0);
  const LogCapture log;
  const std::string xml = TextOf(std::string(kFreeSize, 'v'), 1);
  CXMLSax builder(document);
  ASSERT_TRUE(builder.CreateParser());
  EXPECT_FALSE(builder.LoadXML(xml.c_str()));
  EXPECT_EQ(1u, log.Events().size());
  builder.DestroyParser();
  ASSERT_TRUE(builder.CreateParser());
  EXPECT_TRUE(builder.LoadXML(TextOf("v", 1).c_str()));
  EXPECT_EQ(1u, log.Events().size());
}

TEST(DefaultAttributes, End_the_load_as_a_stopped_one_with_an_Expat_that_has_no_code_for_it) {
  const Document document = NewDocument();
  const LogCapture log;
  const ExpatVersion old(2, 2, 0);
  EXPECT_EQ(kNotParsed, LoadText(document, Attack()));
  EXPECT_EQ(XML_ERROR_ABORTED, ErrorCode(document));
  EXPECT_EQ("parsing aborted", Reason(document));
  EXPECT_EQ(1u, log.Events().size());
}

// A handler of an application's own may call the builder's with fewer attributes than the tag has.
TEST(DefaultAttributes, Are_found_in_what_the_handler_was_called_with) {
  const Document document = NewDocument();
  CXMLSax builder(document);
  ASSERT_TRUE(builder.CreateParser());
  XML_SetStartElementHandler(builder.m_p, [](void* data, const char* name, const char** all) {
    const char* first[] = {all[0], all[0] == nullptr ? nullptr : all[1], nullptr};
    CXMLSax::StartElementHandler(data, name, first);
  });
  EXPECT_TRUE(builder.LoadXML(TextOf("d", 1, "<e a='1' b='2' c='3'/>").c_str()));
  EXPECT_EQ("<r>\n  <e a='1'/>\n</r>\n", XmlOf(document));
}

TEST(DefaultAttributes, Are_not_limited_when_the_handlers_are_called_without_a_load) {
  const Document document = NewDocument();
  const MaxDefaultsFactor factor(0);
  const LogCapture log;
  CXMLSax builder(document);
  ASSERT_TRUE(builder.CreateParser());
  builder.m_pNodeStack = new CNodeStack;
  const std::string xml = TextOf(std::string(kFreeSize, 'v'), 1);
  EXPECT_TRUE(builder.Parse(xml.data(), static_cast<int>(xml.size()), true));
  EXPECT_TRUE(log.Events().empty());
}
