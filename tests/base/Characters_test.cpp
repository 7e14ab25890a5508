#include <xmldom/base/Characters.h>

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace {

using xmldom::Character;
using xmldom::FindForbidden;
using xmldom::OneLine;

const std::size_t kNone = std::string::npos;

Character Read(const std::string& text) { return xmldom::ReadCharacter(&text[0], text.size()); }

TEST(Characters, Valid_sequences_are_read_whole) {
  const struct {
    const char* text;
    std::uint32_t code;
  } rows[] = {{"a", 'a'},
              {"\x7f", 0x7F},
              {"\xc2\x80", 0x80},
              {"\xdf\xbf", 0x7FF},
              {"\xe0\xa0\x80", 0x800},
              {"\xed\x9f\xbf", 0xD7FF},
              {"\xee\x80\x80", 0xE000},
              {"\xef\xbf\xbf", 0xFFFF},
              {"\xf0\x90\x80\x80", 0x10000},
              {"\xf4\x8f\xbf\xbf", 0x10FFFF}};
  for (const auto& row : rows) {
    const Character character = Read(std::string(row.text) + "x");
    EXPECT_EQ(row.code, character.code);
    EXPECT_EQ(std::strlen(row.text), character.length);
    EXPECT_TRUE(character.isValid);
  }
}

TEST(Characters, Bytes_of_no_valid_sequence_are_read_one_by_one) {
  for (const char* text : {"\x80", "\xbf", "\xc0\x80", "\xc1\xbf", "\xe0\x9f\xbf", "\xed\xa0\x80",
                           "\xed\xbf\xbf", "\xf0\x8f\xbf\xbf", "\xf4\x90\x80\x80", "\xf8\x88\x80",
                           "\xff", "\xc3", "\xe2\x82", "\xf0\x9f\x99", "\xc3x", "\xe2\x82x"}) {
    const Character character = Read(text);
    EXPECT_EQ(static_cast<unsigned char>(*text), character.code);
    EXPECT_EQ(1u, character.length);
    EXPECT_FALSE(character.isValid);
  }
}

TEST(Characters, FindForbidden_gives_the_offset_of_what_XML_cannot_hold) {
  EXPECT_EQ(kNone, FindForbidden(""));
  EXPECT_EQ(kNone, FindForbidden("a \t\n\r<&>'\"\x7f \xc2\x85 \xc3\xa9 \xf0\x9f\x99\x82"));
  EXPECT_EQ(1u, FindForbidden("a\x01"));
  EXPECT_EQ(2u, FindForbidden("\xc3\xa9\x1f"));
  EXPECT_EQ(1u, FindForbidden(std::string("a\0b", 3)));
  EXPECT_EQ(0u, FindForbidden("\xff"));
  EXPECT_EQ(1u, FindForbidden("a\xed\xa0\x80"));
  EXPECT_EQ(1u, FindForbidden("a\xc0\xaf"));
  EXPECT_EQ(1u, FindForbidden("a\xef\xbf\xbe"));
  EXPECT_EQ(1u, FindForbidden("a\xef\xbf\xbf"));
  EXPECT_EQ(3u, FindForbidden("abc\xe2\x82"));
}

TEST(Characters, OneLine_escapes_what_is_not_printable) {
  EXPECT_EQ("plain \xc3\xa9 \\x0A\\x0D\\x09\\x1B[31m\\x7F",
            OneLine("plain \xc3\xa9 \n\r\t\x1b[31m\x7f"));
  EXPECT_EQ("\\xC2\\x85\\xE2\\x80\\xAE\\xFF\\xC3x", OneLine("\xc2\x85\xe2\x80\xae\xff\xc3x"));
  EXPECT_EQ("a\\x00b", OneLine(std::string("a\0b", 3)));
  EXPECT_EQ("", OneLine(nullptr));
}

TEST(Characters, OneLine_is_bounded_and_cut_behind_a_whole_character) {
  EXPECT_EQ("abcdef", OneLine("abcdef", 6));
  EXPECT_EQ("abc...", OneLine("abcdefg", 6));
  EXPECT_EQ("a\xc3\xa9...", OneLine("a\xc3\xa9\xc3\xa9\xc3\xa9x", 6));
  EXPECT_EQ("a...", OneLine("a\n\n", 7));
  EXPECT_EQ("...", OneLine("\n\n", 4));
  EXPECT_EQ("...", OneLine("abc", 0));
  EXPECT_EQ("", OneLine("", 0));
  EXPECT_EQ(256u, OneLine(std::string(1000, 'x')).size());
  for (std::size_t limit = 3; limit < 40; ++limit) {
    EXPECT_GE(limit, OneLine("a\xc3\xa9\n\xf0\x9f\x99\x82\xff bcdefghijklmnop", limit).size());
  }
}

}  // namespace
