#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <ostream>
#include <string>
#include <vector>

#include "tool/EditHarness.h"

// What edits make of the bytes of a document.

namespace {

struct Row {
  std::string before;
  const char* option;
  std::vector<std::string> operands;
  std::string after;
};

/// How a row is named when its case fails.
void PrintTo(const Row& row, std::ostream* out) { *out << row.option << " in " << row.before; }

std::string Apply(const Row& row, bool all) {
  tool::EditedText edited = MakeEdited(row.before);
  const tool::Edit edit = MakeEdit(row.option, row.operands);
  EXPECT_NO_THROW(CheckEdit(edit, all));
  EXPECT_NE(0u, edited.Apply(edit, all).changed);
  return edited.Bytes();
}

class Edits : public testing::TestWithParam<Row> {};

TEST_P(Edits, Change_the_bytes_of_the_first_element) {
  EXPECT_EQ(GetParam().after, Apply(GetParam(), false));
}

INSTANTIATE_TEST_SUITE_P(
    Set, Edits,
    testing::Values(
        Row{"<a  b = '1' >old</a >", "--set", {"/a", "1 < 2"}, "<a  b = '1' >1 &lt; 2</a >"},
        Row{"<a><!-- c -->old<![CDATA[x]]></a>", "--set", {"/a", "new"}, "<a>new</a>"},
        Row{"<a>old</a>", "--set", {"/a", ""}, "<a></a>"},
        Row{"<a>\n</a>", "--set", {"/a", "x"}, "<a>x</a>"},
        Row{"<a b='1' />", "--set", {"/", "x"}, "<a b='1'>x</a>"},
        Row{"<a />", "--set", {"/", ""}, "<a />"},
        Row{"<a>old</a>", "--set", {"/a", " \n&"}, "<a>&#32;&#10;&amp;</a>"},
        Row{"<!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;</a>",
            "--set",
            {"/a", "y"},
            "<!DOCTYPE a [<!ENTITY e 'x'>]><a>y</a>"}));

INSTANTIATE_TEST_SUITE_P(
    Append, Edits,
    testing::Values(
        Row{"<a/>", "--append", {"/", "<b/>"}, "<a>\n  <b/>\n</a>"},
        Row{"<a></a>\n", "--append", {"/", "<b/>"}, "<a>\n  <b/>\n</a>\n"},
        Row{"<a>\r\n</a>\r\n", "--append", {"/", "<b/>"}, "<a>\r\n  <b/>\r\n</a>\r\n"},
        Row{"<?xml version='1.0'?><a/>",
            "--append",
            {"/", "<b/>"},
            "<?xml version='1.0'?><a><b/></a>"},
        Row{"<a>\n\t<b/>\n</a>", "--append", {"//b", "<c/>"}, "<a>\n\t<b>\n\t\t<c/>\n\t</b>\n</a>"},
        Row{"<a>\n<b/>\n</a>", "--append", {"//b", "<c/>"}, "<a>\n<b>\n<c/>\n</b>\n</a>"},
        Row{"<a><x/>\n\t<b/>\n</a>", "--append", {"//x", "<c/>"}, "<a><x><c/></x>\n\t<b/>\n</a>"},
        Row{"<a>\n   <b/>\n</a>", "--append", {"/", "<c/>"}, "<a>\n   <b/>\n   <c/>\n</a>"},
        Row{"<a>\n\n  <b/> <!-- c -->\n\n</a>",
            "--append",
            {"/", "<d/>"},
            "<a>\n\n  <b/> <!-- c -->\n  <d/>\n\n</a>"},
        Row{"<a>\n  <!-- c -->\n</a>",
            "--append",
            {"/", "<b/>"},
            "<a>\n  <!-- c -->\n  <b/>\n</a>"},
        Row{"<a><b/></a>", "--append", {"/", "<c/>"}, "<a><b/><c/></a>"},
        Row{"<a> <b/> </a>", "--append", {"/", "<c/>"}, "<a> <b/> <c/> </a>"},
        Row{"<a>one\n  <b/>\n</a>", "--append", {"/", "<c/>"}, "<a>one\n  <b/>\n<c/></a>"},
        Row{"<a>&#32;</a>", "--append", {"/", "<c/>"}, "<a>&#32;<c/></a>"},
        Row{"<a xml:space='preserve'>\n  <b/>\n</a>",
            "--append",
            {"/", "<c/>"},
            "<a xml:space='preserve'>\n  <b/>\n<c/></a>"},
        Row{"<a xml:space='preserve' />",
            "--append",
            {"/", "<c/>"},
            "<a xml:space='preserve'><c/></a>"},
        Row{"<a>\r\n  <b/>\r\n</a>",
            "--append",
            {"/", "<c>\n<d/>\n</c>\n"},
            "<a>\r\n  <b/>\r\n  <c>\r\n<d/>\r\n</c>\r\n</a>"},
        Row{"<!DOCTYPE a [<!ENTITY e '<b/>'>]><a>&e;</a>",
            "--append",
            {"/", "<c>&e;</c>"},
            "<!DOCTYPE a [<!ENTITY e '<b/>'>]><a>&e;<c>&e;</c></a>"},
        Row{"<!DOCTYPE a [<!ATTLIST c d CDATA '1'>]><a/>",
            "--append",
            {"/", "<c/>"},
            "<!DOCTYPE a [<!ATTLIST c d CDATA '1'>]><a><c/></a>"},
        Row{"<!DOCTYPE a SYSTEM 'a.dtd'><a/>",
            "--append",
            {"/", "<c>&nbsp;</c>"},
            "<!DOCTYPE a SYSTEM 'a.dtd'><a><c>&nbsp;</c></a>"}));

INSTANTIATE_TEST_SUITE_P(
    Insert, Edits,
    testing::Values(
        Row{"<a>\n  <b/>\n</a>", "--insert-before", {"/a/b", "<c/>"}, "<a>\n  <c/>\n  <b/>\n</a>"},
        Row{"<a>\n  <b/>\n</a>", "--insert-after", {"/a/b", "<c/>"}, "<a>\n  <b/>\n  <c/>\n</a>"},
        Row{"<a>\n\n\t<b/>\r\n</a>",
            "--insert-before",
            {"/a/b", "<c/>"},
            "<a>\n\n\t<c/>\n\t<b/>\r\n</a>"},
        Row{"<a><b/>\n  <c/></a>", "--insert-before", {"/a/b", "<d/>"}, "<a><d/><b/>\n  <c/></a>"},
        Row{"<a>x<b/>y</a>", "--insert-before", {"//b", "<c/>"}, "<a>x<c/><b/>y</a>"},
        Row{"<a>x\n<b/>y</a>", "--insert-after", {"//b", "<c/>"}, "<a>x\n<b/><c/>y</a>"},
        Row{"<a xml:space='preserve'>\n<b/></a>",
            "--insert-after",
            {"//b", "<c/>"},
            "<a xml:space='preserve'>\n<b/><c/></a>"},
        Row{"<a>\n  <!-- of b -->\n  <b/> <!-- too -->\n</a>",
            "--insert-after",
            {"//b", "<c/>"},
            "<a>\n  <!-- of b -->\n  <b/>\n  <c/> <!-- too -->\n</a>"}));

INSTANTIATE_TEST_SUITE_P(
    Replace, Edits,
    testing::Values(Row{"<!-- c --><a> <b>x<c/></b>  </a>\n<?p?>",
                        "--replace",
                        {"/a/b", " <d>y</d>\n"},
                        "<!-- c --><a> <d>y</d>  </a>\n<?p?>"},
                    Row{"<?xml version='1.0'?>\n<a/>\n",
                        "--replace",
                        {"/", "<c/>"},
                        "<?xml version='1.0'?>\n<c/>\n"},
                    Row{"<a>x<b/>y</a>", "--replace", {"/a/b", "<c/>"}, "<a>x<c/>y</a>"}));

INSTANTIATE_TEST_SUITE_P(
    Remove, Edits,
    testing::Values(
        Row{"<a>\n  <b/>\n  <c/>\n</a>", "--remove", {"//b"}, "<a>\n  <c/>\n</a>"},
        Row{"<a>\r\n\t<b>\r\n\t</b> \t\r\n</a>", "--remove", {"//b"}, "<a>\r\n</a>"},
        Row{"<a>\n  <b/> <!-- c -->\n</a>", "--remove", {"//b"}, "<a>\n   <!-- c -->\n</a>"},
        Row{"<a>\n  <b/><c/>\n</a>", "--remove", {"//c"}, "<a>\n  <b/>\n</a>"},
        Row{"<a>\n  <b/></a>", "--remove", {"//b"}, "<a>\n  </a>"},
        Row{"<a><b/></a>", "--remove", {"//b"}, "<a></a>"},
        Row{"<a>x <b/> y</a>", "--remove", {"//b"}, "<a>x  y</a>"},
        Row{"<a>x<b/> </a>", "--remove", {"//b"}, "<a>x </a>"},
        Row{"<a>]<b/>]></a>", "--remove", {"//b"}, "<a>]]&gt;</a>"},
        Row{"<a>x]]<b/>>]]&gt;</a>", "--remove", {"//b"}, "<a>x]]&gt;]]&gt;</a>"},
        Row{"<a>]<b/>] ></a>", "--remove", {"//b"}, "<a>]] ></a>"},
        Row{"<a xml:space='preserve'>x\r<b/>\ny</a>",
            "--remove",
            {"//b"},
            "<a xml:space='preserve'>x\r\r\ny</a>"},
        Row{"<a>x\r<b/>\n\ny</a>", "--remove", {"//b"}, "<a>x\r\r\ny</a>"},
        Row{"<a>x\r<b/>z\ny</a>", "--remove", {"//b"}, "<a>x\rz\ny</a>"},
        Row{"<a>x<b/>\r\ny</a>", "--remove", {"//b"}, "<a>x\r\ny</a>"},
        Row{"<a xml:space='preserve'>\n  <b/>\n</a>",
            "--remove",
            {"//b"},
            "<a xml:space='preserve'>\n  \n</a>"}));

INSTANTIATE_TEST_SUITE_P(
    Attributes, Edits,
    testing::Values(
        Row{"<a  b = \"1\"\n c='2'/>", "--set-attr", {"/", "b", "x"}, "<a  b = \"x\"\n c='2'/>"},
        Row{"<a b=\"1\"/>", "--set-attr", {"/", "b", "it's"}, "<a b=\"it's\"/>"},
        Row{"<a b='1'/>", "--set-attr", {"/", "b", "it's"}, "<a b=\"it's\"/>"},
        Row{"<a b='1'/>", "--set-attr", {"/", "b", "'\""}, "<a b='&apos;\"'/>"},
        Row{"<a b=\"1\"/>",
            "--set-attr",
            {"/", "b", "\"<&>\t\n"},
            "<a b='\"&lt;&amp;>&#9;&#10;'/>"},
        Row{"<a/>", "--set-attr", {"/", "b", ""}, "<a b=\"\"/>"},
        Row{"<a >x</a>", "--set-attr", {"/", "b", "1"}, "<a b=\"1\" >x</a>"},
        Row{"<a b='1' />", "--set-attr", {"/", "c", "2"}, "<a b='1' c='2' />"},
        Row{"<a b='1'\n   c=\"2\">x</a>",
            "--set-attr",
            {"/", "d", "3"},
            "<a b='1'\n   c=\"2\"\n   d=\"3\">x</a>"},
        Row{"<a/>", "--set-attr", {"/", "n:\xc3\xa9", "1"}, "<a n:\xc3\xa9=\"1\"/>"},
        Row{"<!DOCTYPE a [<!ATTLIST a b CDATA '1' c CDATA '2'>]><a/>",
            "--set-attr",
            {"/", "c", "3"},
            "<!DOCTYPE a [<!ATTLIST a b CDATA '1' c CDATA '2'>]><a c=\"3\"/>"},
        Row{"<!DOCTYPE a [<!ATTLIST a b CDATA '1'>]><a c='2'/>",
            "--set-attr",
            {"/", "d", "3"},
            "<!DOCTYPE a [<!ATTLIST a b CDATA '1'>]><a c='2' d='3'/>"},
        Row{"<a b='1' c='2'/>", "--remove-attr", {"/", "b"}, "<a c='2'/>"},
        Row{"<a b='1'\n   c='2' >x</a>", "--remove-attr", {"/", "c"}, "<a b='1' >x</a>"},
        Row{"<a b='1'/>", "--remove-attr", {"/a", "b"}, "<a/>"}));

INSTANTIATE_TEST_SUITE_P(
    Rename, Edits,
    testing::Values(Row{"<a><b c='1' ><b/></b ></a>",
                        "--rename",
                        {"/a/b", "long"},
                        "<a><long c='1' ><b/></long ></a>"},
                    Row{"<a b='1'/>", "--rename", {"/", "\xc3\xa9"}, "<\xc3\xa9 b='1'/>"},
                    Row{"<!DOCTYPE a [<!ATTLIST a b CDATA '1'>]><a c='2'/>",
                        "--rename",
                        {"/", "d"},
                        "<!DOCTYPE a [<!ATTLIST a b CDATA '1'>]><d c='2'/>"},
                    Row{"<!DOCTYPE a [<!ATTLIST d b CDATA '1&lt;' c CDATA '3'>]><a c='2'/>",
                        "--rename",
                        {"/", "d"},
                        "<!DOCTYPE a [<!ATTLIST d b CDATA '1&lt;' c CDATA '3'>]><d c='2'/>"}));

const std::string kLatin1 = "<?xml version='1.0' encoding='ISO-8859-1'?>";
const std::string kAscii = "<?xml version='1.0' encoding='us-ascii'?>";

INSTANTIATE_TEST_SUITE_P(
    Encodings, Edits,
    testing::Values(Row{"\xef\xbb\xbf<a>\xc3\xa9</a>",
                        "--set",
                        {"/", "\xe2\x82\xac"},
                        "\xef\xbb\xbf<a>\xe2\x82\xac</a>"},
                    Row{kLatin1 + "<!-- \xe9 --><a b='\xe9'/>",
                        "--set",
                        {"/", "\xc3\xa8\xe2\x82\xac"},
                        kLatin1 + "<!-- \xe9 --><a b='\xe9'>\xe8&#8364;</a>"},
                    Row{kLatin1 + "<a>\xe9</a>",
                        "--set-attr",
                        {"/", "b", "\xe2\x82\xac\xc3\xa8"},
                        kLatin1 + "<a b=\"&#8364;\xe8\">\xe9</a>"},
                    Row{kLatin1 + "<a>\xe9</a>",
                        "--append",
                        {"/", "<\xc3\xa8 b='\xe2\x82\xac'>\xe2\x82\xac</\xc3\xa8>"},
                        kLatin1 + "<a>\xe9<\xe8 b='&#8364;'>&#8364;</\xe8></a>"},
                    Row{kLatin1 + "<a/>",
                        "--set",
                        {"/", " \xe2\x82\xac x \xe2\x82\xac\t"},
                        kLatin1 + "<a>&#32;&#8364; x &#8364;&#9;</a>"},
                    Row{kAscii + "<a>x</a>", "--set", {"/", "\xc3\xa9"}, kAscii + "<a>&#233;</a>"},
                    Row{std::string("\xff\xfe<\0a\0>\0\xac\x20<\0/\0a\0>\0", 18),
                        "--set",
                        {"/", "\xc3\xa9\xf0\x9f\x99\x82"},
                        std::string("\xff\xfe<\0a\0>\0\xe9\0\x3d\xd8\x42\xde<\0/\0a\0>\0", 22)},
                    Row{std::string("\xfe\xff\0<\0a\0/\0>", 10),
                        "--rename",
                        {"/", "b"},
                        std::string("\xfe\xff\0<\0b\0/\0>", 10)}));

class EditsOfAll : public testing::TestWithParam<Row> {};

TEST_P(EditsOfAll, Change_all_elements_in_one_pass) {
  EXPECT_EQ(GetParam().after, Apply(GetParam(), true));
}

INSTANTIATE_TEST_SUITE_P(
    Rows, EditsOfAll,
    testing::Values(
        Row{"<a><b>1</b><c><b/></c></a>", "--set", {"//b", "x"}, "<a><b>x</b><c><b>x</b></c></a>"},
        Row{"<b><b><b/></b></b>", "--append", {"//b", "<c/>"}, "<b><b><b><c/></b><c/></b><c/></b>"},
        Row{"<a><b><b/></b><b/></a>",
            "--insert-before",
            {"//b", "<c/>"},
            "<a><c/><b><c/><b/></b><c/><b/></a>"},
        Row{"<a><b><b/></b><b/></a>",
            "--insert-after",
            {"//b", "<c/>"},
            "<a><b><b/><c/></b><c/><b/><c/></a>"},
        Row{"<a><b><b/></b><b/></a>", "--replace", {"//b", "<c/>"}, "<a><c/><c/></a>"},
        Row{"<a>\n  <b><b/></b>\n  <b/> <b/>\n  <c/><b/>\n</a>",
            "--remove",
            {"//b"},
            "<a>\n  <c/>\n</a>"},
        Row{"<a>x <b/> <b/> y</a>", "--remove", {"//b"}, "<a>x   y</a>"},
        Row{"<a>]<b/>]<b/>><b/></a>", "--remove", {"//b"}, "<a>]]&gt;</a>"},
        Row{"<a>]]<b/><b/>><b/>]]<b/>></a>", "--remove", {"//b"}, "<a>]]&gt;]]&gt;</a>"},
        Row{"<a xml:space='preserve'>\r<b/><b/>\n<b/>\n\r<b/>\n</a>",
            "--remove",
            {"//b"},
            "<a xml:space='preserve'>\r\r\n\n\r\r\n</a>"},
        Row{"<b><b><b/></b></b>", "--rename", {"//b", "c"}, "<c><c><c/></c></c>"},
        Row{"<b><b x='1'/></b>", "--set-attr", {"//b", "x", "2"}, "<b x=\"2\"><b x='2'/></b>"},
        Row{"<b><b x='1'/><b/></b>", "--remove-attr", {"//b", "x"}, "<b><b/><b/></b>"},
        Row{"<!DOCTYPE a [<!ENTITY e 'x'>]><a><b/>&e;<b/></a>",
            "--append",
            {"/a/b", "<c>&e;</c>"},
            "<!DOCTYPE a [<!ENTITY e 'x'>]><a><b><c>&e;</c></b>&e;<b><c>&e;</c></b></a>"}));

TEST(Edit, Count_tells_how_many_elements_are_changed) {
  tool::EditedText edited = MakeEdited("<a><b x='1'><b/></b><b x='1'/></a>");
  const auto count = [&](const tool::Edit& edit, bool all) {
    return edited.Apply(edit, all).changed;
  };
  EXPECT_EQ(1u, count(MakeEdit("--set-attr", {"//b", "y", "1"}), false));
  EXPECT_EQ(3u, count(MakeEdit("--set-attr", {"//b", "y", "1"}), true));
  EXPECT_EQ(2u, count(MakeEdit("--remove-attr", {"//b", "x"}), true));
  EXPECT_EQ(2u, count(MakeEdit("--remove", {"//b"}), true));
  EXPECT_EQ("<a></a>", edited.Bytes());
}

TEST(Edit, Sees_what_the_one_before_has_made) {
  tool::EditedText edited = MakeEdited("<a/>");
  edited.Apply(MakeEdit("--append", {"/", "<b c='1'/>"}), false);
  edited.Apply(MakeEdit("--set-attr", {"/a/b", "c", "2"}), false);
  edited.Apply(MakeEdit("--insert-after", {"/a/b", "<c/>"}), false);
  edited.Apply(MakeEdit("--rename", {"/a/c", "d"}), false);
  edited.Apply(MakeEdit("--set", {"/a/d", "x"}), false);
  EXPECT_EQ("<a>\n  <b c='2'/>\n  <d>x</d>\n</a>", edited.Bytes());
}

TEST(Edit, Path_that_selects_nothing_changes_nothing) {
  tool::EditedText edited = MakeEdited("<a><b/></a>");
  for (bool all : {false, true}) {
    EXPECT_EQ(0u, edited.Apply(MakeEdit("--remove", {"/a/c"}), all).selected);
    const tool::EditOutcome outcome = edited.Apply(MakeEdit("--remove-attr", {"/a/b", "x"}), all);
    EXPECT_EQ(1u, outcome.selected);
    EXPECT_EQ(0u, outcome.changed);
  }
  EXPECT_EQ("<a><b/></a>", edited.Bytes());
}

}  // namespace
