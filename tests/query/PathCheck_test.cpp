#include <xmldom/query/PathCheck.h>

#include <gtest/gtest.h>

#include <string>

namespace {

using xmldom::CheckPath;
using xmldom::PathProblem;
using xmldom::PathUse;

struct Row {
  const char* path;
  std::size_t offset;
  const char* reason;
};

const char kNoComparison[] = "no '=' in the predicate; it has to compare, as in [name='text']";
const char kOpenQuote[] = "unclosed quote; a predicate ends at the first ']', even in quotes";
const char kDots[] = " is understood only when one node is searched for";

// Neither search can select anything with these.
const Row kUnusable[] = {
    {"a/", 2, "a name is missing at the end"},
    {"//", 2, "a name is missing at the end"},
    {"a//b", 2, "empty step; '//' can stand only at the beginning"},
    {"//port[2]", 8, kNoComparison},
    {"//port[@n]", 9, kNoComparison},
    {"//port[n]", 8, kNoComparison},
    {"//port[@n!='6']", 9, "'!' cannot stand in a name"},
    {"//port[@n != '6']", 9, "a blank cannot stand in a name"},
    {"//port[@n = '6']", 9, "a blank cannot stand in a name"},
    {"//port[text()='up']", 11, "'(' cannot stand in a name"},
    {"//port[.='up']", 7, "a name cannot begin with '.'"},
    {"//port[@*='6']", 8, "'*' cannot be compared, it stands only before a '/'"},
    {"//port[@n/x='6']", 9, "an attribute has nothing below it"},
    {"//port[]", 7, "empty predicate"},
    {"//port/@n", 7, "an attribute cannot be selected, only tested in brackets"},
    {"/site/rack[port='up'", 10, "'[' without ']'"},
    {"/site/rack]", 10, "']' without '['"},
    {"/site/rack[port='up']x", 21, "'x' where only '[', '/' or the end can follow"},
    {"/a[@w='[1]']", 6, kOpenQuote},
    {"/a[b=x]/c[1]", 11, kNoComparison},
    {"a b", 1, "a blank cannot stand in a name"},
    {"1a", 0, "a name cannot begin with '1'"},
    {"a|b", 1, "'|' cannot stand in a name"},
    {"a\x1b", 1, "'\\x1B' cannot stand in a name"},
    {"a[b='1']\xe2\x80\xae", 8, "'\\xE2\\x80\\xAE' where only '[', '/' or the end can follow"},
};

TEST(PathCheck, What_can_never_select_is_told_with_reason_and_offset) {
  for (const Row& row : kUnusable) {
    for (const PathUse use : {PathUse::kSelect, PathUse::kSelectOne}) {
      const PathProblem problem = CheckPath(row.path, use);
      EXPECT_TRUE(problem) << row.path;
      EXPECT_EQ(row.reason, problem.reason) << row.path;
      EXPECT_EQ(row.offset, problem.offset) << row.path;
    }
  }
}

TEST(PathCheck, What_can_select_is_no_problem) {
  for (const char* path : {"", "a", "/a", "//a", "///a", "*", "/*", "a/b", "a[b='x']", "a[@b=1]",
                           "a[b/@c='x'] [d=2] ", "a[*b/c='1']", "a[b=x]", "a[b=]", "a[b='x' or so]",
                           "\xc3\xa9", "a[b='x/y']", "a[b=\"it's\"]"}) {
    EXPECT_EQ("", CheckPath(path).reason) << path;
    EXPECT_EQ("", CheckPath(path, PathUse::kSelectOne).reason) << path;
    EXPECT_FALSE(CheckPath(path)) << path;
  }
}

TEST(PathCheck, Dots_move_in_the_search_for_one_node_only) {
  for (const char* path : {"./a", "../a", "a/../b", "//a/../../b", "..x/a", "..[b]/a", "//./a"}) {
    EXPECT_EQ("", CheckPath(path, PathUse::kSelectOne).reason) << path;
    EXPECT_TRUE(CheckPath(path)) << path;
  }
  EXPECT_EQ(std::string("'..'") + kDots, CheckPath("a/../b").reason);
  EXPECT_EQ(2u, CheckPath("a/../b").offset);
  EXPECT_EQ(std::string("'.'") + kDots, CheckPath("./a").reason);
}

TEST(PathCheck, Dots_that_lead_nowhere_are_a_problem) {
  const Row rows[] = {{".", 0, "a path cannot end in '.'"},
                      {"a/..", 2, "a path cannot end in '..'"},
                      {"a/.x", 2, "a path cannot end in '.'"},
                      {"/../a", 1, "'..' leads out of the document"},
                      {"/a/../../a", 6, "'..' leads out of the document"},
                      {"//./../a", 4, "'..' leads out of the document"}};
  for (const Row& row : rows) {
    const PathProblem problem = CheckPath(row.path, PathUse::kSelectOne);
    EXPECT_EQ(row.reason, problem.reason) << row.path;
    EXPECT_EQ(row.offset, problem.offset) << row.path;
  }
}

TEST(PathCheck, The_path_of_a_slash_selects_one_node_and_no_list) {
  EXPECT_FALSE(CheckPath("/", PathUse::kSelectOne));
  EXPECT_EQ("a name is missing at the end", CheckPath("/").reason);
}

TEST(PathCheck, Null_is_the_empty_path_and_a_NUL_byte_ends_a_path) {
  EXPECT_FALSE(CheckPath(nullptr));
  EXPECT_FALSE(CheckPath(std::string("a\0[", 3)));
  EXPECT_TRUE(CheckPath(std::string("a[\0]", 4)));
}

TEST(PathCheck, Strict_rules_also_tell_what_would_be_ignored) {
  const xmldom::PathRules strict = {PathUse::kSelectOne, true, true, "elsewhere"};
  const Row rows[] = {
      {"", 0, "the path is empty"},
      {"/", 1, "a name is missing at the end"},
      {"a[b=x]", 4, "a number or a quoted text has to follow '='"},
      {"a[b=1x]", 5, "'x' follows what is compared, and would be ignored"},
      {"a[b='1' or so]", 8, "'o' follows what is compared, and would be ignored"},
      {"..x/a", 0, "a name cannot begin with '.'"},
      {"a/..[b=1]/c", 4, "'..' stands alone in its step"},
      {"../a", 0, "'..' leads out of the document"},
      {"//./a", 2, "'.' cannot begin a search at every depth"},
  };
  for (const Row& row : rows) {
    const PathProblem problem = xmldom::CheckPathBy(row.path, strict);
    EXPECT_EQ(row.reason, problem.reason) << row.path;
    EXPECT_EQ(row.offset, problem.offset) << row.path;
  }
  EXPECT_EQ("'.' is understood only elsewhere",
            xmldom::CheckPathBy("./a", {PathUse::kSelect, true, true, "elsewhere"}).reason);
}

}  // namespace
