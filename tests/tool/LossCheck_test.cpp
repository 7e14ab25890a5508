#include <gtest/gtest.h>
#include <tools/document/LossCheck.h>

#include <cstring>
#include <string>

#include "tool/ParserEvents.h"
#include "tool/WrittenForm.h"

// Texts that the written form gives back, and texts of which it loses or moves something, with the
// first such place marked by a '^' in front of it.

namespace {

using tool::FindLoss;
using tool::LossReport;
using tool::Surroundings;

class Lossless : public testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(
    Texts, Lossless,
    testing::Values(
        "<a/>", "<a></a>", "<a/>\n", "<a/>\n\n\n", "\n<a/>", "<a>\n  <b/>\n</a>\n",
        "<a>\r\n\t<b/> <c/>\r\n</a>\r\n", "<a b='1' c=\"2\"/>", "<a b='it&apos;s'/>",
        "<a b=\"it's\" c='&quot;'/>", "<a b='&lt;&amp;&gt;'/>", "<a b=' x  y '/>",
        // A parser makes a blank of a line break in an attribute value whoever writes it.
        "<a b='x\ny\tz'/>", "<a b='&#32;&#x20;&#160;&#233;'/>", "<a b=']]>'/>", "<a b=''/>",
        "<a>text</a>", "<a>  text\t</a>", "<a>\ttwo words </a>", "<a>1 &lt; 2</a>",
        "<a>x &amp; y</a>", "<a>&#10;&#13;&#9;&#32;</a>", "<a> x&#10;</a>", "<a>]] ]&gt;</a>",
        "<a>\"it's\"</a>", "<a>\xc3\xa9\xe2\x82\xac\xf0\x9f\x99\x82</a>", "<a>&#xe9;&#xE9;</a>",
        "<a><b>text</b>\n<c>text</c></a>", "<a xml:space='preserve'>  text  </a>",
        "<a xml:space='default'>\n<b/>\n</a>",
        "<a><b xml:space='preserve'>x </b>\n<c xml:space='default'>\n<d/></c></a>",
        "<n:a xmlns:n='urn:n' n:b='1'/>", "<?xml version='1.0'?><a/>",
        "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n<a/>\n",
        "<?xml version='1.0' encoding='utf-8'?>\n<a/>", "\xef\xbb\xbf<a>\n<b/></a>",
        "<!-- one -->\n<?two three?>\n<a/>\n<!-- four --><?five?>\n",
        "<?xml version='1.0'?>\n<!--\n  license\n-->\n\n<a>\n<b/>\n</a>\n\n<!-- end -->",
        "<!DOCTYPE a><a/>", "<!DOCTYPE a SYSTEM 'a.dtd'>\n<a>&entity;</a>",
        "<!DOCTYPE a PUBLIC '-//X//Y' 'a.dtd' [\n<!-- c -->\n<?p i?>\n]>\n<a><b>x</b></a>",
        "<!DOCTYPE a [<!ENTITY e 'text'><!ELEMENT a ANY>]>\n<a>text &amp; x&#62;</a>",
        "<!DOCTYPE a [<!ENTITY % p 'text'><!ENTITY x SYSTEM 'x'>]><a>see &x;</a>",
        "<!DOCTYPE a [<!ATTLIST a b NMTOKENS #IMPLIED>]><a b='  x   y '/>",
        "<!DOCTYPE a [<!ATTLIST a b CDATA 'x'>]><a b='y'/>"));

TEST_P(Lossless, Text_is_said_to_be_lossless_and_is) {
  const std::string text = GetParam();
  const LossReport report = FindLoss(text, Surroundings::kKept);
  EXPECT_EQ(nullptr, report.reason) << report.reason;
  const std::string written = WrittenForm(text);
  EXPECT_EQ(ParserEvents(text), ParserEvents(written));
  EXPECT_EQ(nullptr, FindLoss(written, Surroundings::kKept).reason);
  EXPECT_EQ(written, WrittenForm(written));
}

struct Loss {
  const char* text;
  const char* reason;
};

void ExpectLoss(const Loss& loss, Surroundings surroundings) {
  std::string text = loss.text;
  const std::size_t place = text.find('^');
  text.erase(place, 1);
  const LossReport report = FindLoss(text, surroundings);
  ASSERT_NE(nullptr, report.reason);
  EXPECT_STREQ(loss.reason, report.reason);
  EXPECT_EQ(place, report.offset);
}

class Lossy : public testing::TestWithParam<Loss> {};

const char kComment[] = "a comment inside the root element would be moved into a text";
const char kInstruction[] =
    "a processing instruction inside the root element would be moved into a text";
const char kSection[] = "a CDATA section would be moved into a text";
const char kMixed[] = "text beside elements would be moved before them";
const char kBreak[] = "a line break in a text would be lost";
const char kSpace[] = "white space in a text would be lost";
const char kBlank[] = "a text of white space alone would be lost";
const char kPreserved[] = "white space that xml:space='preserve' protects would change";
const char kAttribute[] = "a tab or line break in an attribute value would become a blank";
const char kEntity[] = "a reference to an entity would be replaced by its text";
const char kSupplied[] = "an attribute that the document type supplies would be written";
const char kEncoding[] = "the encoding would become UTF-8";

INSTANTIATE_TEST_SUITE_P(
    Texts, Lossy,
    testing::Values(
        Loss{"<?xml version='1.0' encoding='^ISO-8859-1'?><a/>", kEncoding},
        Loss{"<?xml version='1.0' encoding='^us-ascii'?>\n<a><!-- c --></a>", kEncoding},
        Loss{"<a>^<!-- c --></a>", kComment},
        Loss{"<!-- c -->\n<a>\n ^<!-- c -->\n<b/></a>", kComment},
        Loss{"<a>^<?p i?></a>", kInstruction}, Loss{"<?p i?><a><b>^<?p i?></b></a>", kInstruction},
        Loss{"<a>^<![CDATA[x]]></a>", kSection}, Loss{"<a>x^<![CDATA[]]></a>", kSection},
        Loss{"<a>^x<b/></a>", kMixed}, Loss{"<a><b/>^x</a>", kMixed},
        Loss{"<a>\n<b/> ^x\n</a>", kMixed}, Loss{"<a><b/>^&#32;</a>", kMixed},
        Loss{"<a><b/><c><d/></c>^x</a>", kMixed}, Loss{"<a>^x y<b><!-- c --></b></a>", kMixed},
        Loss{"<a>x^\ny</a>", kBreak}, Loss{"<a>^\n  x\n</a>", kBreak},
        Loss{"<a>x^\r\n</a>", kBreak}, Loss{"<a>^\r&amp;</a>", kBreak},
        Loss{"<a>&lt;^ &gt;</a>", kSpace}, Loss{"<a>^ &lt;</a>", kSpace},
        Loss{"<a>&lt;^\t</a>", kSpace}, Loss{"<a>^ </a>", kBlank},
        Loss{"<a><b/>\n<c>^\n</c></a>", kBlank},
        Loss{"<a xml:space='preserve'>^<b/></a>", kPreserved},
        Loss{"<a xml:space='preserve'>^\n<b/></a>", kPreserved},
        Loss{"<a xml:space='preserve'>^<b xml:space='default'/></a>", kPreserved},
        Loss{"<a b='1' c='x^&#10;y'/>", kAttribute}, Loss{"<a b='^&#x9;'/>", kAttribute},
        Loss{"<a><b c='&lt;^&#013;'/></a>", kAttribute},
        Loss{"<!DOCTYPE a [<!ENTITY e 'x'>]><a>^&e;</a>", kEntity},
        Loss{"<!DOCTYPE a [<!ENTITY e ''>]><a>x^&e;y</a>", kEntity},
        Loss{"<!DOCTYPE a [<!ENTITY e '<b/>'>]><a>\n^&e;</a>", kEntity},
        Loss{"<!DOCTYPE a [<!ENTITY e 'x'>]><a b='&amp;^&e;'/>", kEntity},
        // What the document type declares elsewhere is unknown, and vanishes from a value.
        Loss{"<!DOCTYPE a SYSTEM 'a.dtd'><a b='x^&e;'/>", kEntity},
        Loss{"<!DOCTYPE a [<!ATTLIST a b CDATA 'x'>]>^<a c='1'/>", kSupplied}));

TEST_P(Lossy, Text_is_said_to_be_lossy_with_the_first_place) {
  ExpectLoss(GetParam(), Surroundings::kKept);
}

class LossyAlone : public testing::TestWithParam<Loss> {};

INSTANTIATE_TEST_SUITE_P(
    Texts, LossyAlone,
    testing::Values(
        Loss{"^<!-- c --><a/>", "a comment outside the root element would be lost"},
        Loss{"<a/>\n^<!-- c -->", "a comment outside the root element would be lost"},
        Loss{"^<?p i?><a/>", "a processing instruction outside the root element would be lost"},
        Loss{"\n^<!DOCTYPE a><a/>", "a document type would be lost"},
        Loss{"^<!DOCTYPE a SYSTEM 'a.dtd' [\n<!-- c -->]><a/>", "a document type would be lost"},
        Loss{"<a>^<!-- c --></a>", kComment}));

TEST_P(LossyAlone, Text_loses_its_surroundings) { ExpectLoss(GetParam(), Surroundings::kDropped); }

TEST(LossCheck, Declaration_and_white_space_are_no_loss_where_surroundings_are_dropped) {
  const std::string text = "<?xml version='1.0' encoding='UTF-8'?>\n\n<a/>\n\n";
  EXPECT_EQ(nullptr, FindLoss(text, Surroundings::kDropped).reason);
}

TEST(LossCheck, Root_element_is_found) {
  const std::string before = "<?xml version='1.0'?>\n<!-- <a> --><!DOCTYPE a>";
  const std::string after = "\n<!-- </a> -->";
  for (const char* root : {"<a/>", "<a><a/></a>", "<a b='>'>x</a\n>"}) {
    const LossReport report = FindLoss(before + root + after, Surroundings::kKept);
    EXPECT_EQ(before.size(), report.rootBegin);
    EXPECT_EQ(before.size() + std::strlen(root), report.rootEnd);
    EXPECT_EQ(before.find("\n"), report.declarationEnd);
  }
}

TEST(LossCheck, Text_that_is_no_xml_is_reported_where_it_ends_to_be_any) {
  const LossReport report = FindLoss("<a></b>", Surroundings::kKept);
  EXPECT_STREQ("mismatched tag", report.reason);
  EXPECT_EQ(5u, report.offset);
}

}  // namespace
