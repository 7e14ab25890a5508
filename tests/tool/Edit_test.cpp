#include <gtest/gtest.h>
#include <tools/command/Command.h>
#include <tools/commands/Edit.h>
#include <tools/document/DocumentLoad.h>
#include <xmldom/xmldom.h>

#include <algorithm>
#include <string>
#include <vector>

// Edits at a document, and that they leave no reference behind: the harness counts.

namespace {

using tool::ApplyEdit;
using tool::Edit;
using tool::EditedDocument;
using tool::EditKind;

Edit Make(const std::string& option, const std::vector<std::string>& operands) {
  const auto& kinds = tool::EditKinds();
  const auto kind = std::find_if(kinds.begin(), kinds.end(),
                                 [&](const EditKind& each) { return each.option == option; });
  EXPECT_NE(kinds.end(), kind) << option;
  EXPECT_EQ(static_cast<std::size_t>(kind->operandCount), operands.size());
  return Edit{&*kind, operands};
}

EditedDocument Load(const std::string& xml, bool isCareful = true) {
  tool::LoadProblem problem;
  return EditedDocument{{}, tool::LoadText(xml, problem), isCareful};
}

std::string Write(const EditedDocument& edited) { return std::string(edited.document->Getxml()); }

struct Row {
  const char* before;
  const char* option;
  std::vector<std::string> operands;
  const char* after;
};

class Edits : public testing::TestWithParam<Row> {};

INSTANTIATE_TEST_SUITE_P(
    Rows, Edits,
    testing::Values(
        Row{"<a/>", "--append", {"/a", "<b c='1'>x</b>"}, "<a>\n  <b c='1'>x</b>\n</a>\n"},
        Row{"<a><b/></a>", "--append", {"/", "<c/>"}, "<a>\n  <b/>\n  <c/>\n</a>\n"},
        Row{"<a><b/><b/></a>",
            "--append",
            {"//b", "<c/>"},
            "<a>\n  <b>\n    <c/>\n  </b>\n  <b/>\n</a>\n"},
        Row{"<a><b/></a>",
            "--insert-before",
            {"/a/b", "<c d='1'/>"},
            "<a>\n  <c d='1'/>\n  <b/>\n</a>\n"},
        Row{"<a><b/><c/></a>",
            "--replace",
            {"/a/b", "<d>x</d>"},
            "<a>\n  <d>x</d>\n  <c/>\n</a>\n"},
        Row{"<a><b/></a>", "--replace", {"/a", "<c/>"}, "<c/>\n"},
        Row{"<a><b/></a>", "--replace", {"/", "<c/>"}, "<c/>\n"},
        Row{"<a><b>x<c/></b><d/></a>", "--remove", {"/a/b"}, "<a>\n  <d/>\n</a>\n"},
        Row{"<a/>", "--set", {"/a", "1 < 2"}, "<a>1 &lt; 2</a>\n"},
        Row{"<a>old</a>", "--set", {"/a", "new"}, "<a>new</a>\n"},
        Row{"<a>old</a>", "--set", {"/a", ""}, "<a/>\n"},
        Row{"<a>old</a>", "--set", {"/a", " \n&"}, "<a>&#32;&#10;&amp;</a>\n"},
        Row{"<a/>", "--set-attr", {"/a", "b", "it's"}, "<a b='it&apos;s'/>\n"},
        Row{"<a b='1' c='2'/>", "--set-attr", {"/a", "b", "\t"}, "<a b='&#9;' c='2'/>\n"},
        Row{"<a b='1'/>", "--set-attr", {"/", "n:\xc3\xa9", ""}, "<a b='1' n:\xc3\xa9=''/>\n"}));

TEST_P(Edits, Change_the_document) {
  const Row& row = GetParam();
  EditedDocument edited = Load(row.before);
  const Edit edit = Make(row.option, row.operands);
  EXPECT_NO_THROW(CheckEdit(edit, true));
  EXPECT_TRUE(ApplyEdit(edit, edited));
  EXPECT_EQ(row.after, Write(edited));
}

TEST(Edit, Path_that_selects_nothing_changes_nothing) {
  EditedDocument edited = Load("<a><b/></a>");
  EXPECT_FALSE(ApplyEdit(Make("--remove", {"/a/c"}), edited));
  EXPECT_FALSE(ApplyEdit(Make("--append", {"/b", "<c/>"}), edited));
  EXPECT_EQ("<a>\n  <b/>\n</a>\n", Write(edited));
}

class RefusedEdits : public testing::TestWithParam<Row> {};

INSTANTIATE_TEST_SUITE_P(
    Rows, RefusedEdits,
    testing::Values(
        Row{"<a>x</a>",
            "--append",
            {"/a", "<b/>"},
            "the element holds text, which would change; --lossy does it all the same"},
        Row{"<a/>", "--insert-before", {"/a", "<b/>"}, "nothing can stand beside the root element"},
        Row{"<a/>", "--insert-before", {"/", "<b/>"}, "nothing can stand beside the root element"},
        Row{"<a/>", "--remove", {"//a"}, "a document cannot be without its root element"},
        Row{"<a><b/></a>",
            "--set",
            {"/a", "x"},
            "the element holds elements, which a text cannot replace"},
        Row{"<a>x<b/></a>",
            "--set",
            {"/a", ""},
            "the element holds elements, which a text cannot replace"}));

TEST_P(RefusedEdits, Change_nothing) {
  const Row& row = GetParam();
  EditedDocument edited = Load(row.before);
  const std::string before = Write(edited);
  try {
    ApplyEdit(Make(row.option, row.operands), edited);
    ADD_FAILURE() << "not refused";
  } catch (const tool::EditRefusal& refusal) {
    EXPECT_STREQ(row.after, refusal.what());
  }
  EXPECT_EQ(before, Write(edited));
}

TEST(Edit, Element_is_appended_beside_text_where_something_may_be_lost) {
  EditedDocument edited = Load("<a>x</a>", false);
  EXPECT_TRUE(ApplyEdit(Make("--append", {"/a", "<b/>"}), edited));
  EXPECT_EQ("<a>\n  x\n  <b/>\n</a>\n", Write(edited));
}

class UnusableEdits : public testing::TestWithParam<Row> {};

INSTANTIATE_TEST_SUITE_P(
    Rows, UnusableEdits,
    testing::Values(
        Row{"",
            "--remove",
            {"a/"},
            "--remove: column 3 of the path: a name is missing at the end\n  a/\n    ^"},
        Row{"", "--set", {"", "x"}, "--set: column 1 of the path: the path is empty"},
        Row{"",
            "--append",
            {"/", "<b>\n</c>"},
            "--append: line 2, column 3 of the XML: mismatched tag, near </c>\n  </c>\n    ^"},
        Row{"", "--replace", {"/", ""}, "--replace: column 1 of the XML: no element found"},
        Row{"",
            "--append",
            {"/", "text"},
            "--append: column 1 of the XML: syntax error\n  text\n  ^"},
        Row{"",
            "--insert-before",
            {"/a/b", "<b/><c/>"},
            "--insert-before: column 5 of the XML: junk after document element, near <c/>\n  "
            "<b/><c/>\n      ^"},
        Row{"",
            "--set",
            {"/", "a\x01"},
            "--set: column 2 of the text: no XML document can hold this\n  a\\x01\n   ^"},
        Row{"",
            "--set",
            {"/", "\xff"},
            "--set: column 1 of the text: no XML document can hold this\n  \\xFF\n  ^"},
        Row{"",
            "--set",
            {"/", "\xef\xbf\xbf"},
            "--set: column 1 of the text: no XML document can hold this\n  \xef\xbf\xbf\n  ^"},
        Row{"",
            "--set-attr",
            {"/", "a", "\x1f"},
            "--set-attr: column 1 of the value: no XML document can hold this\n  \\x1F\n  ^"},
        Row{"", "--set-attr", {"/", "", "x"}, "--set-attr: '' cannot be the name of an attribute"},
        Row{"",
            "--set-attr",
            {"/", "1a", "x"},
            "--set-attr: '1a' cannot be the name of an attribute"},
        Row{"",
            "--set-attr",
            {"/", "a ", "x"},
            "--set-attr: 'a ' cannot be the name of an attribute"},
        Row{"",
            "--set-attr",
            {"/", "a='' b", "x"},
            "--set-attr: 'a='' b' cannot be the name of an attribute"},
        Row{"",
            "--set-attr",
            {"/", "a><b c", "x"},
            "--set-attr: 'a><b c' cannot be the name of an attribute"},
        Row{"",
            "--set-attr",
            {"/", "a/><!--", "x"},
            "--set-attr: 'a/><!--' cannot be the name of an attribute"}));

TEST_P(UnusableEdits, Are_refused_with_the_place) {
  const Row& row = GetParam();
  try {
    CheckEdit(Make(row.option, row.operands), false);
    ADD_FAILURE() << "not refused";
  } catch (const tool::UsageError& error) {
    EXPECT_STREQ(row.after, error.what());
  }
}

TEST(Edit, Content_that_would_be_lost_is_refused_only_where_nothing_may_be_lost) {
  const Edit edit = Make("--append", {"/", "<b>\nx</b>"});
  EXPECT_NO_THROW(CheckEdit(edit, false));
  try {
    CheckEdit(edit, true);
    ADD_FAILURE() << "not refused";
  } catch (const tool::UsageError& error) {
    EXPECT_STREQ(
        "--append: line 1, column 4 of the XML: a line break in a text would be lost\n  <b>\n     "
        "^",
        error.what());
  }
}

TEST(Edit, Attribute_that_content_brings_can_be_set_again) {
  EditedDocument edited = Load("<a/>");
  EXPECT_TRUE(ApplyEdit(Make("--append", {"/", "<b c='1'/>"}), edited));
  EXPECT_TRUE(ApplyEdit(Make("--set-attr", {"/a/b", "c", "2"}), edited));
  EXPECT_EQ("<a>\n  <b c='2'/>\n</a>\n", Write(edited));
}

}  // namespace
