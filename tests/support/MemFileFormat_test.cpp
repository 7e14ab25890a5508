#include <gtest/gtest.h>
#include <xmldom/support/ArgumentList.h>
#include <xmldom/support/MemFile.h>

#include <climits>
#include <cstdarg>
#include <stdexcept>
#include <string>

namespace {

std::string ContentsOf(CMemFile& file) { return std::string(file.GetAsStr(), file.m_uLength); }

void WriteText(CMemFile& file, const std::string& text) {
  file.Write(text.data(), static_cast<unsigned int>(text.size()));
}

/// What a function with a variable number of arguments makes of its own: one text for each of
/// `times`.
void WriteArguments(CMemFile& file, int times, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const xmldom::ArgumentListEnd end = {arguments};
  for (int i = 0; i < times; ++i) {
    va_list copy;
    va_copy(copy, arguments);
    const xmldom::ArgumentListEnd copyEnd = {copy};
    file.WriteFV(format, copy);
  }
}

// ---- WriteF

TEST(MemFileFormat, WriteF_appends_formatted_text) {
  CMemFile file(4);
  WriteText(file, "<");
  file.WriteF("%s=%d %c%%", "a", -7, 'x');
  EXPECT_EQ("<a=-7 x%", ContentsOf(file));
  EXPECT_EQ(8u, file.m_uPosition);
}

TEST(MemFileFormat, WriteF_appends_texts_of_any_length) {
  const std::size_t lengths[] = {0, 1, 254, 255, 256, 257, 1023, 1024, 1025, 100000};
  for (std::size_t length : lengths) {
    SCOPED_TRACE(length);
    const std::string text(length, 'x');
    CMemFile file(1024);
    file.WriteF("%s.", text.c_str());
    EXPECT_EQ(text + ".", ContentsOf(file));
  }
}

TEST(MemFileFormat, WriteF_of_an_empty_text_changes_nothing) {
  CMemFile file(16);
  file.WriteF("%s", "");
  EXPECT_EQ("", ContentsOf(file));
  WriteText(file, "abc");
  file.WriteF("%s", "");
  EXPECT_EQ("abc", ContentsOf(file));
  EXPECT_EQ(3u, file.m_uLength);
  EXPECT_EQ(3u, file.m_uPosition);
}

TEST(MemFileFormat, WriteF_appends_at_the_length_wherever_the_position_is) {
  CMemFile file(16);
  WriteText(file, "abc");
  file.m_uPosition = 0;
  file.WriteF("%d", 4);
  EXPECT_EQ("abc4", ContentsOf(file));
  EXPECT_EQ(4u, file.m_uPosition);
}

TEST(MemFileFormat, WriteF_refuses_a_text_that_printf_cannot_count) {
  CMemFile file(16);
  WriteText(file, "abc");
  const std::string format = "%" + std::to_string(INT_MAX + 1LL) + "d";
  EXPECT_THROW(file.WriteF(format.c_str(), 1), std::length_error);
  EXPECT_EQ("abc", ContentsOf(file));
}

// ---- WriteFV

TEST(MemFileFormat, WriteFV_appends_formatted_text) {
  CMemFile file(4);
  WriteText(file, "<");
  WriteArguments(file, 1, "%s=%d %c%%", "a", -7, 'x');
  EXPECT_EQ("<a=-7 x%", ContentsOf(file));
  EXPECT_EQ(8u, file.m_uPosition);
}

TEST(MemFileFormat, WriteFV_takes_each_list_of_arguments_as_it_comes) {
  CMemFile file(4);
  WriteArguments(file, 3, "%d;%s;", 5, "text");
  EXPECT_EQ("5;text;5;text;5;text;", ContentsOf(file));
}

TEST(MemFileFormat, WriteFV_appends_texts_of_any_length) {
  const std::size_t lengths[] = {0, 1, 255, 256, 257, 1023, 1024, 1025, 100000};
  for (std::size_t length : lengths) {
    SCOPED_TRACE(length);
    const std::string text(length, 'x');
    CMemFile file(1024);
    WriteArguments(file, 1, "%s%c", text.c_str(), '.');
    EXPECT_EQ(text + ".", ContentsOf(file));
  }
}

TEST(MemFileFormat, WriteFV_refuses_a_text_that_printf_cannot_count) {
  CMemFile file(16);
  WriteText(file, "abc");
  const std::string format = "%" + std::to_string(INT_MAX + 1LL) + "d";
  EXPECT_THROW(WriteArguments(file, 1, format.c_str(), 1), std::length_error);
  EXPECT_EQ("abc", ContentsOf(file));
}

}  // namespace
