#include <gtest/gtest.h>
#include <xmldom/support/MemFile.h>
#include <xmldom/text/XMLWriter.h>

#include <algorithm>
#include <climits>
#include <string>

namespace {

std::string Padding(const char* padTemplate, int from, int to) {
  CMemFile out(16);
  Pad(out, padTemplate, from, to);
  return std::string(out.GetAsStr(), out.m_uLength);
}

std::string Spaces(int n) {
  CMemFile out(16);
  PrintSpaces(out, n);
  return std::string(out.GetAsStr(), out.m_uLength);
}

}  // namespace

TEST(XMLWriterPad, Pad_puts_the_number_before_the_end_of_the_first_tag) {
  const struct {
    const char* padTemplate;
    const char* row;
  } rows[] = {
      {"<row/>", "<row index='004'/>\n"},
      {"<row></row>", "<row index='004'></row>\n"},
      {"<row>", "<row index='004'>\n"},
      {"<row a='b/c'/>", "<row a='b/c' index='004'/>\n"},
      {"<row a='/>'/>", "<row a=' index='004'/>'/>\n"},
      {"<row a='>'/>", "<row a=' index='004'>'/>\n"},
      {"<row / >", "<row /  index='004'>\n"},
      {"<row><cell/></row>", "<row index='004'><cell/></row>\n"},
      {"<row //>", "<row / index='004'/>\n"},
      {"row", "row index='004'\n"},
      {"row/", "row/ index='004'\n"},
      {"%s%n%d", "%s%n%d index='004'\n"},
      {"<a>%s</a>", "<a index='004'>%s</a>\n"},
      {"", " index='004'\n"},
      {">", " index='004'>\n"},
      {"/>", " index='004'/>\n"},
      {"><row/>", " index='004'><row/>\n"},
      {"<\xff\x01/>", "<\xff\x01 index='004'/>\n"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.padTemplate);
    EXPECT_EQ(row.row, Padding(row.padTemplate, 3, 4));
  }
}

TEST(XMLWriterPad, Pad_numbers_its_rows_behind_the_first_number_up_to_the_second) {
  const struct {
    int from;
    int to;
    const char* rows;
  } rows[] = {
      {3, 5, "<r index='004'/>\n<r index='005'/>\n"},
      {998, 1000, "<r index='999'/>\n<r index='1000'/>\n"},
      {-2, 1, "<r index='-01'/>\n<r index='000'/>\n<r index='001'/>\n"},
      {INT_MAX - 1, INT_MAX, "<r index='2147483647'/>\n"},
      {INT_MIN, INT_MIN + 1, "<r index='-2147483647'/>\n"},
      {0, 0, ""},
      {1, 0, ""},
      {INT_MAX, INT_MAX, ""},
      {INT_MAX, INT_MIN, ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::to_string(row.from) + " to " + std::to_string(row.to));
    EXPECT_EQ(row.rows, Padding("<r/>", row.from, row.to));
  }
}

TEST(XMLWriterPad, Pad_without_template_writes_nothing) { EXPECT_EQ("", Padding(nullptr, 0, 3)); }

TEST(XMLWriterPad, Pad_takes_a_long_template) {
  const std::string name(100000, 'r');
  EXPECT_EQ("<" + name + " index='001'/>\n", Padding(("<" + name + "/>").c_str(), 0, 1));
}

TEST(XMLWriterPad, Pad_writes_many_rows) {
  const std::string rows = Padding("<r/>", 0, 100000);
  EXPECT_EQ(100000, std::count(rows.begin(), rows.end(), '\n'));
}

TEST(XMLWriterPad, PrintSpaces_appends_that_many_blanks_of_either_sign) {
  for (int n : {0, 1, 4, 127, 128, 129, 1000, 100000}) {
    SCOPED_TRACE(n);
    const std::string blanks(static_cast<std::size_t>(n), ' ');
    EXPECT_EQ(blanks, Spaces(n));
    EXPECT_EQ(blanks, Spaces(-n));
  }
}
