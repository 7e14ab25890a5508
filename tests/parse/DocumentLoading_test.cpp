#include <xmldom/parse/DocumentLoading.h>

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <string>

#include "harness/Balance.h"
#include "harness/TemporaryFile.h"
#include "harness/Trees.h"

namespace {

using xmldom::LoadError;
using xmldom::LoadResult;

TEST(DocumentLoading, A_text_becomes_a_document) {
  const LoadResult loaded = xmldom::LoadText("<a>x</a>");
  ASSERT_TRUE(loaded);
  EXPECT_FALSE(loaded.error);
  EXPECT_EQ("", xmldom::OneLine(loaded.error));
  EXPECT_EQ("<a>x</a>\n", XmlOf(loaded.document.Get()));
  EXPECT_EQ(1, loaded.document->GetRefCount());
  EXPECT_TRUE(xmldom::LoadText(std::string("<a/>")));
}

TEST(DocumentLoading, A_file_becomes_a_document) {
  TemporaryFile file("<a>x</a>");
  const LoadResult loaded = xmldom::LoadFile(file.Path());
  ASSERT_TRUE(loaded);
  EXPECT_EQ("<a>x</a>\n", XmlOf(loaded.document.Get()));
  EXPECT_TRUE(xmldom::LoadFile(std::string(file.Path())));
}

TEST(DocumentLoading, An_error_of_a_text_has_a_reason_a_place_and_a_tag) {
  TemporaryFile file("<a>\n  <b></c>\n</a>");
  for (const LoadResult& loaded :
       {xmldom::LoadText("<a>\n  <b></c>\n</a>"), xmldom::LoadFile(file.Path())}) {
    EXPECT_FALSE(loaded);
    EXPECT_FALSE(loaded.document);
    EXPECT_TRUE(loaded.error);
    EXPECT_FALSE(loaded.error.system);
    EXPECT_EQ(7, loaded.error.code);
    EXPECT_EQ("mismatched tag", loaded.error.reason);
    EXPECT_EQ(2, loaded.error.line);
    EXPECT_EQ(7, loaded.error.column);
    EXPECT_EQ("</c>", loaded.error.tag);
    EXPECT_EQ("line 2, column 7: mismatched tag, at </c>", xmldom::OneLine(loaded.error));
  }
}

TEST(DocumentLoading, A_load_that_fails_leaves_nothing_behind) {
  const Balance before = Balance::Now();
  const LoadResult text = xmldom::LoadText("<a><b>");
  const LoadResult file = xmldom::LoadFile("/none/such");
  EXPECT_FALSE(text);
  EXPECT_FALSE(file);
  EXPECT_EQ("", Balance::Now().ChangesSince(before));
}

TEST(DocumentLoading, The_result_that_is_not_kept_is_released) {
  const Balance before = Balance::Now();
  EXPECT_TRUE(xmldom::LoadText("<a><b/></a>"));
  EXPECT_EQ("", Balance::Now().ChangesSince(before));
}

TEST(DocumentLoading, Null_and_nothing_are_empty_texts) {
  EXPECT_EQ("no element found", xmldom::LoadText("").error.reason);
  EXPECT_EQ("no element found", xmldom::LoadText(nullptr).error.reason);
  EXPECT_EQ("no element found", xmldom::LoadText(std::string()).error.reason);
}

TEST(DocumentLoading, A_text_with_a_NUL_byte_is_refused_with_its_place) {
  const struct {
    std::string text;
    long line;
    long column;
  } rows[] = {{std::string("\0", 1), 1, 0},
              {std::string("<a/>\0", 5), 1, 4},
              {std::string("<a>\n\xc3\xa9\0</a>", 11), 2, 1},
              {std::string("<a>\r\n x\0</a>", 12), 2, 2},
              {std::string("<a>\r\rx\0", 7), 3, 1},
              {std::string("<a>\r\0", 5), 2, 0}};
  for (const auto& row : rows) {
    const LoadResult loaded = xmldom::LoadText(row.text);
    EXPECT_FALSE(loaded);
    EXPECT_EQ("NUL byte", loaded.error.reason);
    EXPECT_EQ(0, loaded.error.code);
    EXPECT_EQ(row.line, loaded.error.line);
    EXPECT_EQ(row.column, loaded.error.column);
  }
}

TEST(DocumentLoading, A_file_that_cannot_be_opened_gives_the_reason_of_the_system) {
  const struct {
    std::string path;
    std::errc reason;
  } rows[] = {{"/none/such", std::errc::no_such_file_or_directory},
              {"", std::errc::no_such_file_or_directory},
              {"/tmp", std::errc::is_a_directory},
              {"/etc/passwd/x", std::errc::not_a_directory},
              {std::string(5000, 'x'), std::errc::filename_too_long},
              {std::string("/etc/passwd\0", 12), std::errc::invalid_argument}};
  for (const auto& row : rows) {
    const LoadResult loaded = xmldom::LoadFile(row.path);
    EXPECT_FALSE(loaded);
    EXPECT_TRUE(loaded.error.system == row.reason) << loaded.error.system.message();
    EXPECT_EQ(loaded.error.system.message(), loaded.error.reason);
    EXPECT_EQ(loaded.error.reason, xmldom::OneLine(loaded.error));
    EXPECT_EQ(0, loaded.error.line);
  }
  EXPECT_TRUE(xmldom::LoadFile(nullptr).error.system == std::errc::no_such_file_or_directory);
}

TEST(DocumentLoading, The_line_of_an_error_holds_nothing_that_a_log_or_terminal_would_obey) {
  const LoadResult loaded = xmldom::LoadText("<a>\n<b></\x1b[2Jb\nx='\xff'>");
  ASSERT_TRUE(loaded.error);
  const std::string line = xmldom::OneLine(loaded.error);
  EXPECT_EQ(std::string::npos, xmldom::FindForbidden(line));
  EXPECT_EQ(std::string::npos, line.find_first_of("\t\r\n\x1b\x7f"));
  LoadError error;
  error.reason = "bad";
  error.tag = "<a\n\x1b[2J\xff" + std::string(2000, 'x');
  error.line = 3;
  EXPECT_EQ("line 3, column 0: bad, at <a\\x0A\\x1B[2J\\xFFxxx",
            xmldom::OneLine(error).substr(0, 46));
  EXPECT_EQ(256u, xmldom::OneLine(error).size());
  EXPECT_EQ("line 3, co...", xmldom::OneLine(error, 13));
}

}  // namespace
