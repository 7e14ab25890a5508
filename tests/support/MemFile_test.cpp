#include <gtest/gtest.h>
#include <xmldom/support/MemFile.h>
#include <xmldom/text/EntityTranslation.h>

#include <climits>
#include <cstring>
#include <stdexcept>
#include <string>

#include "harness/StdoutCapture.h"
#include "harness/Trees.h"

namespace {

std::string ContentsOf(CMemFile& file) { return std::string(file.GetAsStr(), file.m_uLength); }

void WriteText(CMemFile& file, const std::string& text) {
  file.Write(text.data(), static_cast<unsigned int>(text.size()));
}

/// Makes a buffer believe that it is full, as it would be after 4 GiB - 1 bytes.
class FullBuffer {
 public:
  explicit FullBuffer(CMemFile& file) : m_file(file), m_uLength(file.m_uLength) {
    file.m_uLength = UINT_MAX;
  }
  ~FullBuffer() { m_file.m_uLength = m_uLength; }

  FullBuffer(const FullBuffer&) = delete;
  FullBuffer& operator=(const FullBuffer&) = delete;

 private:
  CMemFile& m_file;
  unsigned int m_uLength;
};

TEST(MemFile, A_new_buffer_is_empty) {
  const unsigned int sizes[] = {0, 1, 1024, 4096, 16384, UINT_MAX};
  for (unsigned int size : sizes) {
    SCOPED_TRACE(size);
    CMemFile file(size);
    EXPECT_EQ(0u, file.m_uLength);
    EXPECT_EQ(0u, file.m_uPosition);
    EXPECT_STREQ("", file.GetAsStr());
  }
}

TEST(MemFile, Write_appends_and_moves_the_position_to_the_end) {
  CMemFile file(16);
  WriteText(file, "ab");
  WriteText(file, "cde");
  EXPECT_EQ("abcde", ContentsOf(file));
  EXPECT_EQ(5u, file.m_uLength);
  EXPECT_EQ(5u, file.m_uPosition);
}

TEST(MemFile, Write_of_nothing_changes_nothing) {
  CMemFile file(16);
  WriteText(file, "ab");
  file.Write("cde", 0);
  file.Write(nullptr, 0);
  EXPECT_EQ("ab", ContentsOf(file));
  EXPECT_EQ(2u, file.m_uPosition);
}

TEST(MemFile, Write_appends_at_the_length_wherever_the_position_is) {
  CMemFile file(16);
  WriteText(file, "abcde");
  file.m_uPosition = 1;
  WriteText(file, "fg");
  EXPECT_EQ("abcdefg", ContentsOf(file));
  EXPECT_EQ(7u, file.m_uPosition);
}

TEST(MemFile, Keeps_every_byte) {
  const std::string bytes = AllBytes();
  CMemFile file(1);
  WriteText(file, bytes);
  EXPECT_EQ(bytes, ContentsOf(file));
}

TEST(MemFile, Grows_beyond_any_initial_size) {
  const unsigned int sizes[] = {0, 1, 7, 1024};
  const std::string expected = Repeat("0123456789", 10000);
  for (unsigned int size : sizes) {
    SCOPED_TRACE(size);
    CMemFile file(size);
    for (int i = 0; i < 10000; ++i) WriteText(file, "0123456789");
    EXPECT_EQ(expected, ContentsOf(file));
  }
}

TEST(MemFile, Does_not_move_before_its_initial_size_is_passed) {
  CMemFile file(100);
  WriteText(file, "a");
  const char* contents = file.GetAsStr();
  WriteText(file, std::string(99, 'b'));
  EXPECT_EQ(contents, file.GetAsStr());
}

TEST(MemFile, Counters_set_to_0_empty_the_buffer) {
  CMemFile file(4);
  WriteText(file, "a long text");
  file.m_uPosition = 0;
  file.m_uLength = 0;
  EXPECT_STREQ("", file.GetAsStr());
  WriteText(file, "b");
  EXPECT_EQ("b", ContentsOf(file));
}

TEST(MemFile, Contents_are_terminated_after_every_write) {
  CMemFile file(0);
  for (std::size_t length = 1; length <= 40; ++length) {
    WriteText(file, "x");
    EXPECT_EQ(length, std::strlen(file.GetAsStr()));
  }
}

TEST(MemFile, WriteStrEntities_escapes_the_special_characters) {
  const struct {
    const char* text;
    const char* escaped;
  } rows[] = {
      {"", ""},
      {"plain", "plain"},
      {"&", "&amp;"},
      {"<", "&lt;"},
      {">", "&gt;"},
      {"\"", "&quot;"},
      {"'", "&apos;"},
      {"a<b>c", "a&lt;b&gt;c"},
      {"&&", "&amp;&amp;"},
      {"&lt;", "&amp;lt;"},
      {"&#65;", "&amp;#65;"},
      {"'\"<>&", "&apos;&quot;&lt;&gt;&amp;"},
      {"\xc3\xa9\t\n", "\xc3\xa9\t\n"},
  };
  for (const auto& row : rows) {
    CMemFile file(2);
    file.WriteStrEntities(row.text);
    EXPECT_EQ(row.escaped, ContentsOf(file));
  }
}

TEST(MemFile, WriteStrEntities_appends) {
  CMemFile file(2);
  file.WriteStrEntities("a&");
  file.WriteStrEntities("b");
  EXPECT_EQ("a&amp;b", ContentsOf(file));
  EXPECT_EQ(7u, file.m_uPosition);
}

TEST(MemFile, WriteStrEntities_of_null_appends_nothing) {
  CMemFile file(2);
  WriteText(file, "a");
  file.WriteStrEntities(nullptr);
  EXPECT_EQ("a", ContentsOf(file));
}

TEST(MemFile, WriteStrEntities_is_undone_by_the_entity_translation) {
  const std::string text = AllBytes().substr(1);
  CMemFile escaped(4096);
  escaped.WriteStrEntities(text.c_str());
  CMemFile decoded(4096);
  const StdoutCapture debugLines;
  EXPECT_EQ(1, TranslateEntities(escaped.GetAsStr(), decoded));
  EXPECT_EQ(text, ContentsOf(decoded));
}

TEST(MemFile, WriteStrEntities_escapes_a_long_text) {
  const std::string text(100000, '&');
  CMemFile file(4096);
  file.WriteStrEntities(text.c_str());
  EXPECT_EQ(Repeat("&amp;", 100000), ContentsOf(file));
}

TEST(MemFile, Read_copies_from_the_position_on) {
  CMemFile file(16);
  WriteText(file, "abcdef");
  file.m_uPosition = 2;
  char data[4] = {};
  EXPECT_EQ(3u, file.Read(data, 3));
  EXPECT_STREQ("cde", data);
  EXPECT_EQ(5u, file.m_uPosition);
  EXPECT_EQ(6u, file.m_uLength);
}

TEST(MemFile, Read_in_pieces_gives_the_whole) {
  const std::string bytes = AllBytes();
  CMemFile file(16);
  WriteText(file, bytes);
  file.m_uPosition = 0;
  std::string read;
  char data[7];
  for (;;) {
    const unsigned int count = file.Read(data, sizeof data);
    if (count == 0) break;
    read.append(data, count);
  }
  EXPECT_EQ(bytes, read);
}

TEST(MemFile, Read_stops_at_the_length) {
  const struct {
    unsigned int position;
    unsigned int size;
    unsigned int count;
  } rows[] = {{0, 3, 3}, {0, 4, 3}, {2, 5, 1}, {3, 1, 0}, {1, 0, 0}, {2, UINT_MAX, 1}, {0, 0, 0}};
  for (const auto& row : rows) {
    SCOPED_TRACE(testing::Message() << row.position << ", " << row.size);
    CMemFile file(16);
    WriteText(file, "abc");
    file.m_uPosition = row.position;
    char data[8];
    EXPECT_EQ(row.count, file.Read(data, row.size));
    EXPECT_EQ(row.position + row.count, file.m_uPosition);
  }
}

TEST(MemFile, Read_behind_the_length_gives_nothing) {
  CMemFile file(16);
  WriteText(file, "abc");
  file.m_uPosition = UINT_MAX;
  char data[8];
  EXPECT_EQ(0u, file.Read(data, sizeof data));
}

TEST(MemFile, Read_of_a_buffer_without_contents_gives_nothing) {
  CMemFile file(16);
  char data[8];
  EXPECT_EQ(0u, file.Read(data, sizeof data));
  WriteText(file, "abc");
  file.m_uPosition = 0;
  file.m_uLength = 0;
  EXPECT_EQ(0u, file.Read(data, sizeof data));
}

TEST(MemFile, A_full_buffer_takes_no_more_and_keeps_what_it_holds) {
  const struct {
    const char* name;
    void (*write)(CMemFile&);
  } rows[] = {
      {"Write", [](CMemFile& file) { file.Write("x", 1); }},
      {"WriteF", [](CMemFile& file) { file.WriteF("%d", 1); }},
      {"WriteF, long", [](CMemFile& file) { file.WriteF("%*d", 1000, 1); }},
      {"WriteStrEntities", [](CMemFile& file) { file.WriteStrEntities("x"); }},
      {"WriteStrEntities, escaped", [](CMemFile& file) { file.WriteStrEntities("&"); }},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    CMemFile file(16);
    WriteText(file, "abc");
    {
      const FullBuffer full(file);
      EXPECT_THROW(row.write(file), std::length_error);
      EXPECT_EQ(UINT_MAX, file.m_uLength);
    }
    EXPECT_EQ("abc", ContentsOf(file));
  }
}

TEST(MemFile, A_full_buffer_takes_an_empty_text) {
  CMemFile file(16);
  const FullBuffer full(file);
  file.Write("", 0);
  file.WriteStrEntities("");
  file.WriteF("%s", "");
  EXPECT_EQ(UINT_MAX, file.m_uLength);
}

}  // namespace
