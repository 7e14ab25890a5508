#include <gtest/gtest.h>
#include <tools/document/PathSyntax.h>

#include <string>

namespace {

using tool::PathPredicate;
using tool::PathPurpose;
using tool::SearchPath;

/// The problem of a path as "OFFSET REASON"; empty when it has none.
std::string ProblemOf(const std::string& text, PathPurpose purpose = PathPurpose::kAll) {
  SearchPath path;
  const xmldom::PathProblem problem = tool::ReadPath(text, purpose, path);
  return problem ? std::to_string(problem.offset) + " " + problem.reason : "";
}

SearchPath Read(const std::string& text, PathPurpose purpose = PathPurpose::kAll) {
  SearchPath path;
  EXPECT_FALSE(tool::ReadPath(text, purpose, path)) << text;
  return path;
}

TEST(PathSyntax, What_the_library_knows_is_left_to_it) {
  for (const char* text : {"a", "/a/b", "//a[@b='1'][c=2] [d/e='x/y']", "*/b"}) {
    EXPECT_TRUE(Read(text).isPlain) << text;
  }
  for (const char* text : {"a/@b", "a[1]", "a[last()]", "a[@b]", "a[b/c]"}) {
    EXPECT_FALSE(Read(text).isPlain) << text;
  }
}

TEST(PathSyntax, A_path_is_taken_apart) {
  const SearchPath path = Read("//a[@b='1'][ 12 ]/*[c/@d] [last()]/@e");
  EXPECT_TRUE(path.isAnywhere);
  EXPECT_EQ("e", path.attribute);
  ASSERT_EQ(2u, path.steps.size());
  EXPECT_EQ("a", path.steps[0].name);
  ASSERT_EQ(2u, path.steps[0].predicates.size());
  EXPECT_EQ(PathPredicate::kComparison, path.steps[0].predicates[0].kind);
  EXPECT_EQ("@b='1'", path.steps[0].predicates[0].comparison);
  EXPECT_EQ(PathPredicate::kPosition, path.steps[0].predicates[1].kind);
  EXPECT_EQ(12u, path.steps[0].predicates[1].position);
  EXPECT_EQ("*", path.steps[1].name);
  ASSERT_EQ(2u, path.steps[1].predicates.size());
  EXPECT_EQ(PathPredicate::kExistence, path.steps[1].predicates[0].kind);
  EXPECT_EQ((std::vector<std::string>{"c", "@d"}), path.steps[1].predicates[0].names);
  EXPECT_EQ(PathPredicate::kLast, path.steps[1].predicates[1].kind);
}

TEST(PathSyntax, An_attribute_behind_two_slashes_is_one_of_any_element) {
  const SearchPath path = Read("//@a");
  EXPECT_TRUE(path.isAnywhere);
  ASSERT_EQ(1u, path.steps.size());
  EXPECT_EQ("*", path.steps[0].name);
}

TEST(PathSyntax, A_field_may_be_the_node_itself_or_its_attribute_and_may_go_up) {
  EXPECT_TRUE(Read(".", PathPurpose::kField).steps.empty());
  EXPECT_TRUE(Read("@a", PathPurpose::kField).steps.empty());
  EXPECT_EQ(1u, Read("../@a", PathPurpose::kField).steps.size());
  EXPECT_EQ("0 a field begins at the selected node, not with '/'",
            ProblemOf("/a", PathPurpose::kField));
  EXPECT_EQ("0 a field begins at the selected node, not with '/'",
            ProblemOf("//a", PathPurpose::kField));
  EXPECT_EQ("0 the path is empty", ProblemOf("", PathPurpose::kField));
}

TEST(PathSyntax, Positions_are_whole_numbers_from_1_on) {
  EXPECT_EQ("2 positions count from 1", ProblemOf("a[0]"));
  EXPECT_EQ("3 a position is a whole number, or last()", ProblemOf("a[1.5]"));
  EXPECT_EQ("2 a position is a whole number, or last()", ProblemOf("a[-1]"));
  EXPECT_EQ("3 a position is a whole number, or last()", ProblemOf("a[1 2]"));
  EXPECT_EQ(static_cast<std::size_t>(-1),
            Read("a[99999999999999999999999]").steps[0].predicates[0].position);
}

TEST(PathSyntax, What_XPath_has_besides_is_named) {
  const std::string function = "no function is understood but last(), alone in its brackets";
  EXPECT_EQ("6 " + function, ProblemOf("a[text()]"));
  EXPECT_EQ("6 " + function, ProblemOf("a[text()='x']"));
  EXPECT_EQ("6 " + function, ProblemOf("a[last()-1]"));
  EXPECT_EQ("5 " + function, ProblemOf("a[not(b)]"));
  EXPECT_EQ("10 " + function, ProblemOf("a[position()=2]"));
  EXPECT_EQ("4 'and' is written as two predicates: [a][b]", ProblemOf("a[b and c]"));
  EXPECT_EQ("4 'or' is not understood", ProblemOf("a[b or c='1']"));
  EXPECT_EQ("4 only '=' compares", ProblemOf("a[@b>1]"));
  EXPECT_EQ("4 only '=' compares", ProblemOf("a[@b!='1']"));
  EXPECT_EQ("3 '|' is not understood", ProblemOf("a[b|c]"));
  EXPECT_EQ("5 axes are not understood", ProblemOf("child::a"));
  EXPECT_EQ("8 axes are not understood", ProblemOf("a[parent::b]"));
}

TEST(PathSyntax, Names_that_are_missing_or_impossible_are_refused_where_they_stand) {
  EXPECT_EQ("2 empty predicate", ProblemOf("a[]"));
  EXPECT_EQ("3 empty predicate", ProblemOf("a[ ]"));
  EXPECT_EQ("4 a name is missing at the end of the predicate", ProblemOf("a[b/]"));
  EXPECT_EQ("3 a name is missing at the end of the predicate", ProblemOf("a[@]"));
  EXPECT_EQ("4 a name is missing before '/'", ProblemOf("a[b//c]"));
  EXPECT_EQ("4 an attribute has nothing below it", ProblemOf("a[@b/c]"));
  EXPECT_EQ("2 a name cannot begin with '.'", ProblemOf("a[.]"));
  EXPECT_EQ("2 a name cannot begin with '.'", ProblemOf("a[../b]"));
  EXPECT_EQ("6 'x' where only '[', '/' or the end can follow", ProblemOf("a[@b] x"));
  EXPECT_EQ("6 a name is missing before '['", ProblemOf("a[b]/[c]"));
  EXPECT_EQ("4 '[' without ']'", ProblemOf("a[b][c"));
}

TEST(PathSyntax, Attributes_stand_at_the_end_and_alone) {
  EXPECT_EQ("4 an attribute has nothing below it", ProblemOf("a/@b/c"));
  EXPECT_EQ("4 an attribute takes no predicate", ProblemOf("a/@b[1]"));
  EXPECT_EQ("3 '*' does not stand for attributes; give a name", ProblemOf("a/@*"));
  EXPECT_EQ("3 the name of an attribute has to follow '@'", ProblemOf("a/@"));
  EXPECT_EQ("3 the name of an attribute has to follow '@'", ProblemOf("a/@1"));
  EXPECT_EQ("1 a document has no attributes; its root element is '/*'", ProblemOf("/@a"));
  EXPECT_EQ("0 a document has no attributes; its root element is '/*'", ProblemOf("@a"));
}

TEST(PathSyntax, Blanks_between_and_in_predicates_mean_nothing) {
  EXPECT_EQ("", ProblemOf("a[1] [b]  [@c='1'] "));
  EXPECT_EQ("", ProblemOf("a[ last() ][ @b ]/c"));
  EXPECT_EQ("1 a blank cannot stand in a name", ProblemOf("a [1]"));
}

}  // namespace
