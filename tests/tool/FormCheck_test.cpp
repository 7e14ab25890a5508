#include <tools/document/FormCheck.h>

#include <gtest/gtest.h>
#include <tools/document/DocumentLoad.h>
#include <tools/io/SourceExcerpt.h>
#include <xmldom/dom/XMLDocument.h>

#include <algorithm>
#include <string>

// The check of a text that comes in pieces says the same as the load of the whole text.

namespace {

using tool::FormCheck;
using tool::FormProblem;

bool Check(const std::string& text, std::size_t pieceSize, FormProblem& problem) {
  FormCheck check;
  for (std::size_t at = 0; at < text.size(); at += pieceSize) {
    if (!check.Take(&text[at], std::min(pieceSize, text.size() - at))) break;
  }
  return check.Finish(problem);
}

class FormCheckTexts : public testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(
    Texts, FormCheckTexts,
    testing::Values(
        "<a/>", "<?xml version='1.0'?>\r\n<a b='1'>\xc3\xa9<!-- c --><![CDATA[x]]></a>\n",
        "<!DOCTYPE a [<!ENTITY x 'y'>]><a>&x;</a>", "", "hello", "<a", "<a>", "<a>\n<b>text\n",
        "<a/>\n<b/>\n", "<a>\n  <b></c>\n</a>", "<a>&x;</a>", "<a b='1' b='2'/>", "<a b=1/>",
        "<a>\xc3\xa9\xc3\xa9</b>", "\xef\xbb\xbf<a></b>", "<a>\x1b</a>", "<a>\x80</a>",
        "<a>\r\n<x>\r\n</b>\r\n", "<a>\r<x>\r</b>\r", "<a><!-- -- --></a>", "<a>]]></a>",
        "<!DOCTYPE a [<!ENTITY x '<b>'>]><a>&x;</a>", "<!DOCTYPE a [<!ENTITY x '&x;'>]><a>&x;</a>",
        "<?xml version='1.0' encoding='ISO-8859-1'?>\n<a>\xe9\xff</b>",
        "<?xml version='1.0' encoding='windows-1252'?>\n<a>\xe9</a>",
        "<?xml version='1.0' encoding=\"utf-16\"?><a/>", "<a><?xml version='1.0'?></a>"));

TEST_P(FormCheckTexts, Are_judged_as_the_load_judges_them) {
  const std::string text = GetParam();
  tool::LoadProblem expected;
  const bool isLoaded = tool::LoadText(text, expected) != nullptr;
  for (const std::size_t pieceSize : {1, 2, 7, 1000}) {
    FormProblem problem;
    ASSERT_EQ(isLoaded, Check(text, pieceSize, problem)) << pieceSize;
    if (isLoaded) continue;
    EXPECT_EQ(expected.reason, problem.reason) << pieceSize;
    EXPECT_EQ(expected.position.line, problem.position.line) << pieceSize;
    EXPECT_EQ(expected.position.column, problem.position.column) << pieceSize;
    EXPECT_EQ(tool::SourceExcerpt(text, expected.position), problem.excerpt) << pieceSize;
  }
}

TEST(FormCheck, A_long_line_is_shown_around_the_place) {
  const std::string text = "<a>" + std::string(500000, 'x') + "</b>" + std::string(500000, 'y');
  tool::LoadProblem expected;
  ASSERT_TRUE(tool::LoadText(text, expected) == nullptr);
  for (const std::size_t pieceSize : {4096, 65536, 2000000}) {
    FormProblem problem;
    EXPECT_FALSE(Check(text, pieceSize, problem));
    EXPECT_EQ("mismatched tag, near </b>", problem.reason);
    EXPECT_EQ(expected.position.column, problem.position.column);
    EXPECT_EQ(tool::SourceExcerpt(text, expected.position), problem.excerpt) << pieceSize;
  }
}

TEST(FormCheck, A_place_that_is_not_kept_is_told_but_not_shown) {
  FormProblem problem;
  EXPECT_FALSE(Check("<a>\n<!-- " + std::string(500000, 'x'), 4096, problem));
  EXPECT_EQ("unclosed token", problem.reason);
  EXPECT_EQ(2u, problem.position.line);
  EXPECT_EQ(1u, problem.position.column);
  EXPECT_EQ("", problem.excerpt);
}

TEST(FormCheck, Nothing_more_is_asked_for_when_the_place_can_be_shown) {
  FormCheck check;
  const std::string beginning = "<a></b>";
  EXPECT_TRUE(check.Take(beginning.data(), beginning.size()));
  const std::string rest(4096, 'x');
  EXPECT_FALSE(check.Take(rest.data(), rest.size()));
  FormProblem problem;
  EXPECT_FALSE(check.Finish(problem));
  EXPECT_EQ(6u, problem.position.column);
}

TEST(FormCheck, Utf_16_is_judged_and_not_shown) {
  const std::string good("\xff\xfe<\0a\0/\0>\0", 10);
  const std::string bad("\xfe\xff\0<\0a\0>\0<\0/\0b\0>", 16);
  for (const std::size_t pieceSize : {1, 3, 1000}) {
    FormProblem problem;
    EXPECT_TRUE(Check(good, pieceSize, problem));
    EXPECT_FALSE(Check(bad, pieceSize, problem));
    EXPECT_EQ("mismatched tag", problem.reason);
    EXPECT_EQ("", problem.excerpt);
  }
}

}  // namespace
