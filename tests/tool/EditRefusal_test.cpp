#include <gtest/gtest.h>
#include <tools/command/Command.h>
#include <tools/edit/EditStep.h>
#include <xmldom/xmldom.h>

#include <ostream>
#include <string>
#include <vector>

#include "tool/EditHarness.h"

// Edits that cannot be made, in a document or in any.

namespace {

struct Row {
  std::string before;
  const char* option;
  std::vector<std::string> operands;
  std::size_t offset;
  const char* reason;
};

/// How a row is named when its case fails.
void PrintTo(const Row& row, std::ostream* out) { *out << row.option << " in " << row.before; }

class RefusedEdits : public testing::TestWithParam<Row> {};

const char kBesideRoot[] = "nothing can stand beside the root element";
const char kEntity[] = "the element comes from this entity, and cannot be changed here";
const char kElements[] = "the element holds elements, which a text cannot replace";
const char kSupplied[] = "the document type supplies the attribute, which cannot be removed";
const std::string kLatin1 = "<?xml version='1.0' encoding='ISO-8859-1'?>";

INSTANTIATE_TEST_SUITE_P(
    Rows, RefusedEdits,
    testing::Values(
        Row{" <a/>", "--insert-before", {"/a", "<b/>"}, 1, kBesideRoot},
        Row{"<a/>", "--insert-after", {"/", "<b/>"}, 0, kBesideRoot},
        Row{"<a/>", "--remove", {"//a"}, 0, "a document cannot be without its root element"},
        Row{"<a><b/></a>", "--set", {"/a", "x"}, 0, kElements},
        Row{"<a>x<b/></a>", "--set", {"/a", ""}, 0, kElements},
        Row{"<!DOCTYPE a [<!ENTITY e '<b/>'>]><a>\n&e;</a>", "--remove", {"//b"}, 37, kEntity},
        Row{"<!DOCTYPE a [<!ENTITY e '<b/>'>]><a><b/>&e;</a>", "--remove", {"//b"}, 40, kEntity},
        Row{"<!DOCTYPE a [<!ENTITY e '<b/>'>]><a>&e;</a>", "--set", {"/", "x"}, 33, kElements},
        Row{"<!DOCTYPE a [<!ATTLIST a b CDATA '1'>]><a/>",
            "--remove-attr",
            {"/", "b"},
            39,
            kSupplied},
        Row{"<!DOCTYPE a [<!ATTLIST a b CDATA '1'>]><a b='2'/>",
            "--remove-attr",
            {"/", "b"},
            39,
            kSupplied},
        Row{"<a/>",
            "--append",
            {"/", "<b>\n&e;</b>"},
            0,
            "line 2, column 1 of the XML: undefined entity, near <b>\n  &e;</b>\n  ^"},
        Row{"<!DOCTYPE a [\n<!ENTITY f 'x'>\n]><a/>",
            "--append",
            {"/", "<b>\n&e;</b>"},
            32,
            "line 2, column 1 of the XML: undefined entity, near <b>\n  &e;</b>\n  ^"},
        Row{kLatin1 + "<a/>",
            "--append",
            {"/", "<b><!--\xe2\x82\xac--></b>"},
            43,
            "column 8 of the XML: the encoding of the file, ISO-8859-1, cannot hold this\n"
            "  <b><!--\xe2\x82\xac--></b>\n         ^"},
        Row{kLatin1 + "<a/>",
            "--append",
            {"/", "<b\xc5\x82 c='\xe2\x82\xac'/>"},
            43,
            "column 3 of the XML: the encoding of the file, ISO-8859-1, cannot hold this\n"
            "  <b\xc5\x82 c='\xe2\x82\xac'/>\n    ^"},
        Row{kLatin1 + "<a/>",
            "--rename",
            {"/", "\xc5\x82"},
            43,
            "the encoding of the file, ISO-8859-1, cannot hold this: '\xc5\x82'"},
        Row{kLatin1 + "<a/>",
            "--set-attr",
            {"/", "\xc5\x82", "x"},
            43,
            "the encoding of the file, ISO-8859-1, cannot hold this: '\xc5\x82'"}));

TEST_P(RefusedEdits, Change_nothing_and_tell_the_place) {
  const Row& row = GetParam();
  for (bool all : {false, true}) {
    // Without --all, the first of the elements may be edited.
    if (!all && row.offset == 40) continue;
    tool::EditedText edited = MakeEdited(row.before);
    const tool::Edit edit = MakeEdit(row.option, row.operands);
    EXPECT_NO_THROW(CheckEdit(edit, all));
    try {
      edited.Apply(edit, all);
      ADD_FAILURE() << "not refused: " << row.before;
    } catch (const tool::EditRefusal& refusal) {
      EXPECT_STREQ(row.reason, refusal.what());
      EXPECT_EQ(row.offset, refusal.Offset());
    }
    EXPECT_EQ(row.before, edited.Bytes());
  }
}

struct UnusableRow {
  const char* option;
  std::vector<std::string> operands;
  const char* reason;
};

class UnusableEdits : public testing::TestWithParam<UnusableRow> {};

INSTANTIATE_TEST_SUITE_P(
    Rows, UnusableEdits,
    testing::Values(
        UnusableRow{"--remove",
                    {"a/"},
                    "--remove: column 3 of the path: a name is missing at the end\n  a/\n    ^"},
        UnusableRow{"--set", {"", "x"}, "--set: column 1 of the path: the path is empty"},
        UnusableRow{
            "--append",
            {"/", "<b>\n</c>"},
            "--append: line 2, column 3 of the XML: mismatched tag, near </c>\n  </c>\n    ^"},
        UnusableRow{"--replace", {"/", ""}, "--replace: column 1 of the XML: no element found"},
        UnusableRow{
            "--append", {"/", "text"}, "--append: column 1 of the XML: syntax error\n  text\n  ^"},
        UnusableRow{"--insert-after",
                    {"/a/b", "<b/><c/>"},
                    "--insert-after: column 5 of the XML: junk after document element, near <c/>\n"
                    "  <b/><c/>\n      ^"},
        UnusableRow{"--append",
                    {"/", "<!-- c --><b/>"},
                    "--append: column 1 of the XML: nothing but one element can be put into a "
                    "document\n  <!-- c --><b/>\n  ^"},
        UnusableRow{"--append",
                    {"/", "<b/>\n<?p?>"},
                    "--append: line 2, column 1 of the XML: nothing but one element can be put "
                    "into a document\n  <?p?>\n  ^"},
        UnusableRow{"--append",
                    {"/", "<?xml version='1.0'?><b/>"},
                    "--append: column 1 of the XML: XML or text declaration not at start of "
                    "entity, near <?xml version='1.0'?>\n  <?xml version='1.0'?><b/>\n  ^"},
        UnusableRow{"--set",
                    {"/", "a\x01"},
                    "--set: column 2 of the text: no XML document can hold this\n  a\\x01\n   ^"},
        UnusableRow{"--set",
                    {"/", "\xff"},
                    "--set: column 1 of the text: no XML document can hold this\n  \\xFF\n  ^"},
        UnusableRow{"--set",
                    {"/", "\xef\xbf\xbf"},
                    "--set: column 1 of the text: no XML document can hold this\n  \xef\xbf\xbf\n"
                    "  ^"},
        UnusableRow{"--set-attr",
                    {"/", "a", "\x1f"},
                    "--set-attr: column 1 of the value: no XML document can hold this\n  \\x1F\n"
                    "  ^"},
        UnusableRow{
            "--set-attr", {"/", "", "x"}, "--set-attr: '' cannot be the name of an attribute"},
        UnusableRow{
            "--set-attr", {"/", "1a", "x"}, "--set-attr: '1a' cannot be the name of an attribute"},
        UnusableRow{"--set-attr",
                    {"/", "a='' b", "x"},
                    "--set-attr: 'a='' b' cannot be the name of an attribute"},
        UnusableRow{
            "--remove-attr", {"/", "a "}, "--remove-attr: 'a ' cannot be the name of an attribute"},
        UnusableRow{
            "--rename", {"/", "a><b"}, "--rename: 'a><b' cannot be the name of an element"}));

TEST_P(UnusableEdits, Are_refused_with_the_place) {
  try {
    CheckEdit(MakeEdit(GetParam().option, GetParam().operands), false);
    ADD_FAILURE() << "not refused";
  } catch (const tool::UsageError& error) {
    EXPECT_STREQ(GetParam().reason, error.what());
  }
}

TEST(UnusableEdit, Path_of_all_elements_may_have_no_dots) {
  const tool::Edit edit = MakeEdit("--remove", {"/a/../b"});
  EXPECT_NO_THROW(CheckEdit(edit, false));
  EXPECT_THROW(CheckEdit(edit, true), tool::UsageError);
}

}  // namespace
