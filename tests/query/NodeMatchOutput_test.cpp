#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "harness/LogCapture.h"
#include "harness/StdoutCapture.h"
#include "harness/Trees.h"

// What matching says: log events for malformed steps, debug lines for texts with references.

namespace {

typedef std::vector<LoggedEvent> Events;

const char kItem[] = "<item id=\"7\"><n> 42abc</n></item>";

const LoggedEvent kNullQuery =
    Event(18, 3, "IXMLDOMNode::ParseXPathQuery - called with NULL query or name");
const LoggedEvent kTermination =
    Event(18, 3, "IXMLDOMNode::MatchQuery - unexpected termination while expecting ']'");

Events InvalidQuery(const std::string& character) {
  return {
      Event(18, 3,
            "IXMLDOMNode::MatchQuery - invalid query, got '" + character + "' when expecting '['")};
}

}  // namespace

TEST(NodeMatchOutput, A_null_step_matches_nothing_and_is_logged_for_elements_alone) {
  Document document = Load("<item>text</item>");
  LogCapture log;
  EXPECT_EQ(0, document->MatchQuery(nullptr));
  EXPECT_EQ(0, At(document, {0, 0})->MatchQuery(nullptr));
  EXPECT_EQ(Events(), log.Events());
  EXPECT_EQ(0, Root(document)->MatchQuery(nullptr));
  EXPECT_EQ(Events{kNullQuery}, log.Events());
}

TEST(NodeMatchOutput, Anything_but_a_bracket_between_predicates_is_logged) {
  const struct {
    const char* step;
    const char* character;
  } rows[] = {
      {"item[@id='7']x", "x"},         {"item[@id='7'] x", "x"}, {"item[@id='7']]", "]"},
      {"item[@id='7']\t[n=42]", "\t"}, {"item[@id='7']%", "%"},  {"item[@id='7']\xff", "\xff"},
  };
  Document document = Load(kItem);
  for (const auto& row : rows) {
    SCOPED_TRACE(row.step);
    LogCapture log;
    EXPECT_EQ(0, Root(document)->MatchQuery(row.step));
    EXPECT_EQ(InvalidQuery(row.character), log.Events());
  }
}

TEST(NodeMatchOutput, A_predicate_that_is_not_closed_is_logged) {
  Document document = Load(kItem);
  for (const char* step :
       {"item[", "item[@id='7'", "item[@id='7'][", "item[@id='7'] [n=42", "*[", "item[ "}) {
    SCOPED_TRACE(step);
    LogCapture log;
    EXPECT_EQ(0, Root(document)->MatchQuery(step));
    EXPECT_EQ(Events{kTermination}, log.Events());
  }
}

TEST(NodeMatchOutput, The_text_of_an_element_is_compared_decoded_with_a_debug_line) {
  Document document = Load("<item><n>a&lt;b</n></item>");
  StdoutCapture out;
  EXPECT_EQ(1, Root(document)->MatchQuery("item[n='a<b']"));
  EXPECT_EQ("Translate Entities: from <a&lt;b> to <a<b>\n", out.Take());
}

TEST(NodeMatchOutput, The_value_of_an_attribute_is_compared_as_stored) {
  Document document = Load("<item k='a&lt;b'/>");
  StdoutCapture out;
  EXPECT_EQ(1, Root(document)->MatchQuery("item[@k='a&lt;b']"));
  EXPECT_EQ(0, Root(document)->MatchQuery("item[@k='a<b']"));
  EXPECT_EQ("", out.Take());
}

TEST(NodeMatchOutput, Each_piece_of_a_text_prints_what_was_collected_so_far) {
  Document document = Load("<item><n>a&amp;<m>b&gt;</m></n></item>");
  StdoutCapture out;
  EXPECT_EQ(1, Root(document)->MatchQuery("item[n='a& b>']"));
  EXPECT_EQ(
      "Translate Entities: from <a&amp;> to <a&>\n"
      "Translate Entities: from <b&gt;> to <a& b>>\n",
      out.Take());
}

TEST(NodeMatchOutput, Every_candidate_of_the_name_is_read_until_one_matches) {
  Document document = Load("<item><m>&lt;</m><n>&gt;</n><n>&amp;</n><n>&quot;</n></item>");
  StdoutCapture out;
  EXPECT_EQ(1, Root(document)->MatchQuery("item[n='&']"));
  EXPECT_EQ(
      "Translate Entities: from <&gt;> to <>>\n"
      "Translate Entities: from <&amp;> to <&>\n",
      out.Take());
}

TEST(NodeMatchOutput, An_unknown_reference_is_kept_and_logged) {
  Document document = Load("<item><n/></item>");
  At(document, {0, 0})->AddTextChild("x&foo;y");
  LogCapture log;
  StdoutCapture out;
  EXPECT_EQ(1, Root(document)->MatchQuery("item[n='x&foo;y']"));
  EXPECT_EQ("Translate Entities: from <x&foo;y> to <x&foo;y>\n", out.Take());
  EXPECT_EQ(Events{Event(11, 4,
                         "TranslateEntities FAILED to match entity at the begining of this "
                         "string: '&foo;y'")},
            log.Events());
}

TEST(NodeMatchOutput, A_text_is_read_before_the_literal_is_looked_at) {
  for (const char* step : {"item[n=']", "item[n='open]", "item[n=1]", "item[n='no']"}) {
    SCOPED_TRACE(step);
    Document document = Load("<item><n>&lt;</n></item>");
    StdoutCapture out;
    EXPECT_EQ(0, Root(document)->MatchQuery(step));
    EXPECT_EQ("Translate Entities: from <&lt;> to <<>\n", out.Take());
  }
}

TEST(NodeMatchOutput, A_text_is_read_only_for_a_value_to_compare_it_with) {
  Document document = Load("<item><n>&lt;</n></item>");
  StdoutCapture out;
  for (const char* step :
       {"item", "item[n]", "item[m='<']", "item[n/m='<']", "item[@n='<']", "other[n='<']"}) {
    Root(document)->MatchQuery(step);
  }
  EXPECT_EQ("", out.Take());
}
