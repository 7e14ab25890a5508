#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "harness/LogCapture.h"
#include "harness/SmallStack.h"
#include "harness/Trees.h"

namespace {

const char kItem[] = "<item id=\"7\"><n> 42abc</n></item>";

struct Step {
  const char* xml;
  const char* step;
};

/// Tests each step at the root element; nothing is logged whatever comes out.
void ExpectSilently(int result, const std::vector<Step>& rows) {
  for (const Step& row : rows) {
    SCOPED_TRACE(std::string(row.step) + " on " + row.xml);
    Document document = Load(row.xml);
    LogCapture log;
    EXPECT_EQ(result, Root(document)->MatchQuery(row.step));
    EXPECT_EQ(std::vector<LoggedEvent>(), log.Events());
  }
}

}  // namespace

TEST(NodeMatchSubString, Compares_the_whole_text_with_the_first_bytes) {
  const struct {
    const char* s;
    const char* sub;
    int n;
    int result;
  } rows[] = {
      {"abc", "abcdef", 3, 1},
      {"abc", "abc", 3, 1},
      {"", "abc", 0, 1},
      {"", "", 0, 1},
      {"\xff\x80", "\xff\x80", 2, 1},
      {"abc", "abcdef", 4, 0},
      {"abc", "abcdef", 2, 0},
      {"abc", "abd", 3, 0},
      {"abc", "ABC", 3, 0},
      {"abc", "", 0, 0},
      {"", "abc", 1, 0},
      {"abc", "abc", -1, 0},
      {nullptr, "abc", 3, 0},
      {"abc", nullptr, 3, 0},
      {nullptr, nullptr, 0, 0},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(Text(row.s) + " with " + std::to_string(row.n) + " of " + Text(row.sub));
    EXPECT_EQ(row.result, StringMatchesSubString(row.s, row.sub, row.n));
  }
}

TEST(NodeMatch, A_name_matches_the_element_of_exactly_that_name) {
  ExpectSilently(1, {{"<item/>", "item"}, {"<a-b.c/>", "a-b.c"}, {"<\xc3\xa9/>", "\xc3\xa9"}});
  ExpectSilently(0, {{"<item/>", "Item"},
                     {"<item/>", "ite"},
                     {"<item/>", "items"},
                     {"<item/>", " item"},
                     {"<item/>", ""},
                     {"<item/>", "."},
                     {"<item/>", ".."},
                     {"<item/>", "item]"}});
}

TEST(NodeMatch, A_star_matches_every_element) {
  ExpectSilently(1, {{"<item/>", "*"}, {"<x>text</x>", "*"}, {kItem, "*[@id='7']"}});
  ExpectSilently(0, {{"<item/>", "**"}, {"<item/>", "*item"}, {"<item/>", "* "}});
}

TEST(NodeMatch, An_empty_name_matches_an_element_without_one) {
  Node element(new IXMLDOMNode(nullptr, "", nullptr, NODE_ELEMENT));
  EXPECT_EQ(1, element->MatchQuery(""));
}

TEST(NodeMatch, Only_elements_match) {
  Document document = NewDocument();
  for (int type = NODE_INVALID; type <= NODE_NOTATION; ++type) {
    SCOPED_TRACE(type);
    Node node(new IXMLDOMNode(document, "item", "item", static_cast<DOMNodeType>(type)));
    const int isElement = type == NODE_ELEMENT ? 1 : 0;
    EXPECT_EQ(isElement, node->MatchQuery("item"));
    EXPECT_EQ(isElement, node->MatchQuery("*"));
  }
}

TEST(NodeMatch, A_number_is_compared_with_the_leading_integer) {
  ExpectSilently(1, {{kItem, "item[@id=7]"},
                     {kItem, "item[@id=07]"},
                     {kItem, "item[@id= +7x]"},
                     {kItem, "item[@id=\t7]"},
                     {kItem, "item[n=42]"},
                     {"<item><n>abc</n></item>", "item[n=0]"},
                     {"<item><n>abc</n></item>", "item[n=]"},
                     {"<item><n>abc</n></item>", "item[n=xyz]"},
                     {"<item><n>-3</n></item>", "item[n=-3]"},
                     {"<item><n>10</n></item>", "item[n=10.5]"},
                     {"<item k=''/>", "item[@k=0]"},
                     {"<item k='8='/>", "item[@k=8=9]"}});
  ExpectSilently(0, {{kItem, "item[@id=8]"},
                     {kItem, "item[@id=0x7]"},
                     {kItem, "item[n=4]"},
                     {"<item><n>3</n></item>", "item[n=-3]"},
                     {"<item><n>4294967297</n></item>", "item[n=1]"}});
}

TEST(NodeMatch, A_number_beyond_a_long_is_the_nearest_long) {
  ExpectSilently(1, {{"<item n='99999999999999999998'/>", "item[@n=99999999999999999999]"},
                     {"<item n='-99999999999999999998'/>", "item[@n=-99999999999999999999]"}});
  ExpectSilently(0, {{"<item n='99999999999999999999'/>", "item[@n=-99999999999999999999]"},
                     {"<item n='99999999999999999999'/>", "item[@n=-1]"}});
  const int areOneLong = LONG_MAX == 2147483647 ? 1 : 0;
  ExpectSilently(areOneLong, {{"<item n='2147483648'/>", "item[@n=2147483647]"},
                              {"<item n='-2147483649'/>", "item[@n=-2147483648]"}});
}

TEST(NodeMatch, An_element_without_text_equals_no_number) {
  ExpectSilently(0, {{"<item><n/></item>", "item[n=0]"},
                     {"<item><n/></item>", "item[n=]"},
                     {"<item><n><m/></n></item>", "item[n=0]"}});
}

TEST(NodeMatch, A_quoted_literal_is_compared_byte_by_byte) {
  ExpectSilently(1, {{kItem, "item[@id='7']"},
                     {kItem, "item[@id=\"7\"]"},
                     {kItem, "item[n=' 42abc']"},
                     {"<item><t>it's</t></item>", "item[t=\"it's\"]"},
                     {"<item><t>say \"a\"</t></item>", "item[t='say \"a\"']"},
                     {"<item><t>a/b</t></item>", "item[t='a/b']"},
                     {"<item><t>a=b</t></item>", "item[t='a=b']"},
                     {"<item><t>[x</t></item>", "item[t='[x']"},
                     {"<item><t>x<u>y</u></t></item>", "item[t='x y']"}});
  ExpectSilently(0, {{kItem, "item[@id='07']"},
                     {kItem, "item[@id='7 ']"},
                     {kItem, "item[n='42']"},
                     {kItem, "item[n='42abc']"},
                     {kItem, "item[n=' 42ABC']"},
                     {kItem, "item[n=' 42abcd']"},
                     {kItem, "item[@id='']"}});
}

TEST(NodeMatch, What_follows_the_closing_quote_is_ignored) {
  ExpectSilently(1, {{kItem, "item[@id='7'x]"},
                     {kItem, "item[@id='7'='8']"},
                     {kItem, "item[@id=\"7\"\"]"},
                     {"<item><t>it\"s</t></item>", "item[t='it\"s'/x]"}});
}

TEST(NodeMatch, A_literal_without_closing_quote_matches_nothing) {
  ExpectSilently(0, {{kItem, "item[@id='7]"},
                     {kItem, "item[@id='7\"]"},
                     {kItem, "item[@id=']"},
                     {kItem, "item[n=' 42abc]"},
                     {kItem, "item[n=']"},
                     {"<item><n/></item>", "item[n=']"},
                     {"<item><n/></item>", "item[n=\"']"}});
}

TEST(NodeMatch, A_closing_bracket_inside_quotes_ends_the_predicate) {
  ExpectSilently(0, {{"<item id='7]'/>", "item[@id='7]']"}});
}

TEST(NodeMatch, An_empty_literal_equals_an_empty_and_a_missing_value) {
  ExpectSilently(1, {{"<item><t/></item>", "item[t='']"},
                     {"<item><t></t></item>", "item[t=\"\"]"},
                     {"<item><t><u/></t></item>", "item[t='']"},
                     {"<item k=''/>", "item[@k='']"}});
  ExpectSilently(0, {{"<item><t>x</t></item>", "item[t='']"},
                     {"<item/>", "item[t='']"},
                     {"<item/>", "item[@k='']"}});
}

TEST(NodeMatch, An_attribute_without_value_equals_only_an_empty_literal) {
  Document document = Load("<item/>");
  Root(document)->AddAttribute("k", nullptr);
  EXPECT_EQ(1, Root(document)->MatchQuery("item[@k='']"));
  EXPECT_EQ(0, Root(document)->MatchQuery("item[@k='x']"));
  EXPECT_EQ(0, Root(document)->MatchQuery("item[@k=0]"));
  EXPECT_EQ(0, Root(document)->MatchQuery("item[@k=]"));
}

TEST(NodeMatch, A_bare_name_is_no_test_for_existence) {
  ExpectSilently(0, {{kItem, "item[@id]"},
                     {kItem, "item[n]"},
                     {kItem, "item[]"},
                     {kItem, "item[1]"},
                     {kItem, "item[@]"},
                     {kItem, "item[*]"},
                     {"<item><a><b/></a></item>", "item[a/b]"}});
}

TEST(NodeMatch, Some_candidate_has_to_satisfy_the_predicate) {
  const char* const xml = "<item a='1' b='2'>x<n>1</n><m>2</m><n>3</n></item>";
  ExpectSilently(1, {{xml, "item[n=1]"}, {xml, "item[n=3]"}, {xml, "item[@b=2]"}});
  ExpectSilently(0, {{xml, "item[n=2]"},
                     {xml, "item[@a=2]"},
                     {xml, "item[@n=1]"},
                     {xml, "item[a=1]"},
                     {xml, "item[#Text='x']"}});
}

TEST(NodeMatch, The_last_name_of_a_predicate_is_no_wildcard) {
  ExpectSilently(0, {{kItem, "item[*=42]"}, {kItem, "item[@*=7]"}, {kItem, "item[='7']"}});
}

TEST(NodeMatch, A_path_in_a_predicate_goes_down_one_level_a_segment) {
  const char* const xml = "<item><a/><a k='1'><b>v</b><c><d>w</d></c></a><b>no</b></item>";
  ExpectSilently(1, {{xml, "item[a/b='v']"},
                     {xml, "item[a/@k='1']"},
                     {xml, "item[a/@k=1]"},
                     {xml, "item[a/c/d='w']"},
                     {xml, "item[a/c='w']"}});
  ExpectSilently(0, {{xml, "item[a/b='no']"},
                     {xml, "item[a/d='w']"},
                     {xml, "item[b/b='v']"},
                     {xml, "item[A/b='v']"},
                     {xml, "item[/b='no']"},
                     {xml, "item[a/='v']"},
                     {xml, "item[a//b='v']"},
                     {xml, "item[a=1/b='v']"},
                     {xml, "item[@k/b='v']"},
                     {xml, "item[a/@k/b='v']"}});
}

TEST(NodeMatch, A_segment_that_begins_with_a_star_passes_any_name) {
  const char* const xml = "<item><a k='1'><b>v</b></a></item>";
  ExpectSilently(1, {{xml, "item[*/b='v']"},
                     {xml, "item[*x/b='v']"},
                     {xml, "item[*='v'/b='v']"},
                     {xml, "item[*/@k='1']"}});
  ExpectSilently(0, {{xml, "item[x*/b='v']"}, {xml, "item[*/*='v']"}, {xml, "item[*/c='v']"}});
}

TEST(NodeMatch, A_slash_counts_only_outside_quotes_of_both_kinds) {
  ExpectSilently(1, {{"<item><t>it's/x</t></item>", "item[t=\"it's/x\"]"},
                     {"<item k='a/b'/>", "item[@k='a/b']"}});
  ExpectSilently(0, {{"<item><t><x>1</x></t></item>", "item[t='a'/x=1]"}});
}

TEST(NodeMatch, All_predicates_of_a_step_have_to_hold) {
  ExpectSilently(1, {{kItem, "item[@id='7'][n=42]"},
                     {kItem, "item[@id='7'] [n=42]"},
                     {kItem, "item[@id='7']   [n=42]  "},
                     {kItem, "item[n=42][n=42][@id=7]"}});
  ExpectSilently(0, {{kItem, "item[@id='7'][n=43]"}, {kItem, "item[@id='8'][n=42]"}});
}

TEST(NodeMatch, A_blank_before_the_first_bracket_belongs_to_the_name) {
  ExpectSilently(0, {{kItem, "item [@id='7']"}});
}

TEST(NodeMatch, Predicates_behind_one_that_fails_are_not_examined) {
  ExpectSilently(0, {{kItem, "item[@id='8']x"}, {kItem, "item[@id='8']["}, {kItem, "item[]x"}});
}

TEST(NodeMatch, Predicates_of_another_name_are_not_examined) {
  ExpectSilently(0, {{kItem, "other["}, {kItem, "other[@id='7']x"}});
}

TEST(NodeMatch, MatchesSubquery_searches_children_or_attributes) {
  Document document = Load(kItem);
  EXPECT_EQ(1, Root(document)->MatchesSubquery("n=42"));
  EXPECT_EQ(1, Root(document)->MatchesSubquery("@id='7'"));
  EXPECT_EQ(0, Root(document)->MatchesSubquery("id='7'"));
  EXPECT_EQ(0, Root(document)->MatchesSubquery("@n=42"));
  EXPECT_EQ(0, Root(document)->MatchesSubquery(""));
}

TEST(NodeMatch, MatchesSubquery_works_on_nodes_of_every_type) {
  Document document = Load(kItem);
  EXPECT_EQ(1, document->MatchesSubquery("item/n=42"));
  EXPECT_EQ(0, At(document, {0, 0, 0})->MatchesSubquery("n=42"));
}

TEST(NodeMatch, MatchesSubquery_does_not_take_a_bracket_for_an_end) {
  Document document = Load("<item id='7]'/>");
  EXPECT_EQ(1, Root(document)->MatchesSubquery("@id='7]'"));
}

TEST(NodeMatch, MatchSubqueryHelper_looks_only_at_the_candidate) {
  Document document = Load(kItem);
  Document other = NewDocument();
  IXMLDOMNode* const element = At(document, {0, 0});
  IXMLDOMNode* const attribute = Root(document)->m_pFirstAttribute;
  EXPECT_EQ(1, other->MatchSubqueryHelper(element, "n=42"));
  EXPECT_EQ(1, other->MatchSubqueryHelper(attribute, "@id=7"));
  EXPECT_EQ(1, other->MatchSubqueryHelper(Root(document), "item/n=42"));
  EXPECT_EQ(1, other->MatchSubqueryHelper(Root(document), "item/@id=7"));
  EXPECT_EQ(0, other->MatchSubqueryHelper(Root(document), "n=42"));
}

TEST(NodeMatch, MatchSubqueryHelper_takes_elements_and_attributes_for_what_they_are) {
  Document document = Load(kItem);
  IXMLDOMNode* const element = At(document, {0, 0});
  IXMLDOMNode* const attribute = Root(document)->m_pFirstAttribute;
  EXPECT_EQ(0, document->MatchSubqueryHelper(element, "@n=42"));
  EXPECT_EQ(0, document->MatchSubqueryHelper(attribute, "id=7"));
  EXPECT_EQ(0, document->MatchSubqueryHelper(At(document, {0, 0, 0}), "#Text=' 42abc'"));
  EXPECT_EQ(0, document->MatchSubqueryHelper(document, "Document Root/item='x'"));
}

TEST(NodeMatch, MatchSubqueryHelper_fails_on_an_empty_predicate) {
  Document document = Load(kItem);
  EXPECT_EQ(0, document->MatchSubqueryHelper(Root(document), ""));
  EXPECT_EQ(0, document->MatchSubqueryHelper(Root(document)->m_pFirstAttribute, "@"));
}

TEST(NodeMatch, Missing_arguments_match_nothing) {
  Document document = Load(kItem);
  EXPECT_EQ(0, Root(document)->MatchesSubquery(nullptr));
  EXPECT_EQ(0, document->MatchSubqueryHelper(nullptr, "item='x'"));
  EXPECT_EQ(0, document->MatchSubqueryHelper(Root(document), nullptr));
}

TEST(NodeMatch, A_step_of_many_predicates_is_matched) {
  const std::string step = "item" + Repeat("[@id=7] ", 10000);
  ExpectSilently(1, {{kItem, step.c_str()}});
}

TEST(NodeMatch, A_predicate_may_go_deeper_than_the_call_stack) {
  const int depth = 100000;
  Document document = Load(Repeat("<a>", depth) + "<b k='1'/>" + Repeat("</a>", depth));
  const std::string predicate = Repeat("*/", depth);
  int missing = -1;
  int matching = -1;
  OnSmallStack([&] {
    missing = document->MatchesSubquery((predicate + "b='x'").c_str());
    matching = document->MatchesSubquery((predicate + "b/@k='1'").c_str());
  });
  EXPECT_EQ(0, missing);
  EXPECT_EQ(1, matching);
}

TEST(NodeMatch, A_predicate_is_tested_on_many_children) {
  std::string xml = "<item>";
  for (int i = 0; i < 100000; ++i) xml += "<n>" + std::to_string(i) + "</n>";
  Document document = Load(xml + "</item>");
  EXPECT_EQ(1, Root(document)->MatchQuery("item[n=99999]"));
  EXPECT_EQ(0, Root(document)->MatchQuery("item[n='100000']"));
}
