#include <gtest/gtest.h>
#include <tools/document/SourceEncoding.h>
#include <xmldom/xmldom.h>

#include <string>

// The bytes of a document as UTF-8, and back.

namespace {

using tool::SourceEncoding;

std::string Decoded(const std::string& bytes) {
  std::string text;
  std::string reason;
  EXPECT_TRUE(SourceEncoding(bytes).Decode(bytes, text, reason)) << reason;
  EXPECT_EQ(bytes, SourceEncoding(bytes).Encode(text));
  return text;
}

std::string Utf16(const std::string& ascii, bool isBigEndian) {
  std::string bytes;
  for (const char c : ascii) bytes += isBigEndian ? std::string{'\0', c} : std::string{c, '\0'};
  return bytes;
}

TEST(SourceEncoding, Utf_8_stays_as_it_is) {
  for (const char* text :
       {"", "<a/>", "\xef\xbb\xbf<a>\xe2\x82\xac</a>", "<?xml version='1.0' encoding='utf-8'?><a/>",
        "<?xml version='1.0' encoding='windows-1252'?><a/>", "<?xml"}) {
    EXPECT_EQ(text, Decoded(text));
  }
}

TEST(SourceEncoding, Declaration_names_utf_8_in_as_many_bytes) {
  EXPECT_EQ("<?xml version='1.0' encoding='UTF-8'     ?><a>\xc3\xa9</a>",
            Decoded("<?xml version='1.0' encoding='iso-8859-1'?><a>\xe9</a>"));
  EXPECT_EQ("<?xml version='1.0' encoding = \"UTF-8\"    standalone='yes' ?>\n<a/>",
            Decoded("<?xml version='1.0' encoding = \"US-ASCII\" standalone='yes' ?>\n<a/>"));
  EXPECT_EQ("\xef\xbb\xbf<?xml version='1.0' encoding='UTF-8'     ?><a>\xc3\xa9</a>",
            Decoded("\xef\xbb\xbf<?xml version='1.0' encoding='iso-8859-1'?><a>\xe9</a>"));
  EXPECT_EQ("\xef\xbb\xbf<?xml version='1.0' encoding='UTF-8' ?><a/>",
            Decoded("\xff\xfe" + Utf16("<?xml version='1.0' encoding='UTF-16'?><a/>", false)));
}

// The parser refuses it. Bytes that become two in UTF-8 would move the name of the encoding.
TEST(SourceEncoding, Declaration_that_is_not_in_ascii_is_none) {
  for (const char* text : {"<?xml version='\xff' encoding='iso-8859-1'?><a>\xe9</a>",
                           "<?xml version='1.0' \xff\xff encoding='iso-8859-1'?><a/>"}) {
    EXPECT_EQ(text, Decoded(text));
  }
}

TEST(SourceEncoding, Instruction_whose_name_begins_with_xml_is_no_declaration) {
  const std::string text = "<?xml-stylesheet encoding='iso-8859-1'?><a/>";
  const std::string inUtf8 = "<?xml-stylesheet encoding='iso-8859-1'?><a>\xc3\xa9</a>";
  EXPECT_EQ(inUtf8, Decoded(inUtf8));
  EXPECT_EQ(text, Decoded(Utf16(text, true)));
}

TEST(SourceEncoding, Utf_16_is_known_by_its_mark_or_its_first_character) {
  for (bool isBigEndian : {false, true}) {
    EXPECT_EQ("<a/>", Decoded(Utf16("<a/>", isBigEndian)));
    const std::string mark = isBigEndian ? "\xfe\xff" : "\xff\xfe";
    EXPECT_EQ("\xef\xbb\xbf<a/>\r\n", Decoded(mark + Utf16("<a/>\r\n", isBigEndian)));
  }
  EXPECT_EQ("\xef\xbb\xbf\xc3\xa9\xe2\x82\xac\xf0\x9f\x99\x82\xf4\x8f\xbf\xbf",
            Decoded(std::string("\xfe\xff\0\xe9\x20\xac\xd8\x3d\xde\x42\xdb\xff\xdf\xff", 14)));
}

TEST(SourceEncoding, Utf_16_may_declare_itself_and_nothing_else) {
  const auto isDecoded = [](const std::string& name, bool isBigEndian) {
    const std::string bytes =
        Utf16("<?xml version='1.0' encoding='" + name + "'?><a/>", isBigEndian);
    std::string text;
    std::string reason;
    const bool isRight = SourceEncoding(bytes).Decode(bytes, text, reason);
    if (!isRight) {
      EXPECT_EQ("<?xml version='1.0' encoding=", text);
    }
    return isRight;
  };
  for (bool isBigEndian : {false, true}) {
    EXPECT_TRUE(isDecoded("utf-16", isBigEndian));
    EXPECT_EQ(!isBigEndian, isDecoded("UTF-16LE", isBigEndian));
    EXPECT_EQ(isBigEndian, isDecoded("UTF-16BE", isBigEndian));
    EXPECT_FALSE(isDecoded("UTF-8", isBigEndian));
    EXPECT_FALSE(isDecoded("ISO-8859-1", isBigEndian));
  }
}

TEST(SourceEncoding, Parts_are_encoded_as_they_stand) {
  for (bool isBigEndian : {false, true}) {
    const SourceEncoding encoding(Utf16("<a/>", isBigEndian));
    EXPECT_EQ(Utf16("<b/>", isBigEndian), encoding.EncodePart("<b/>"));
  }
  EXPECT_EQ("\xe9",
            SourceEncoding("<?xml version='1.0' encoding='ISO-8859-1'?>").EncodePart("\xc3\xa9"));
  EXPECT_EQ("\xc3\xa9", SourceEncoding("<a/>").EncodePart("\xc3\xa9"));
}

TEST(SourceEncoding, Bytes_that_are_no_characters_are_refused_with_the_text_before_them) {
  const std::string ascii = "<?xml version='1.0' encoding='US-ASCII'?><a>";
  for (const std::string& bytes :
       {std::string("\xff\xfe<\0a\0>\0x", 9), std::string("\xff\xfe<\0a\0>\0\0\xd8", 10),
        std::string("\xff\xfe<\0a\0>\0\0\xdc<\0", 12),
        std::string("\xff\xfe<\0a\0>\0\0\xd8<\0", 12)}) {
    std::string text;
    std::string reason;
    EXPECT_FALSE(SourceEncoding(bytes).Decode(bytes, text, reason));
    EXPECT_EQ("\xef\xbb\xbf<a>", text);
    EXPECT_EQ("no character in UTF-16", reason);
  }
  std::string text;
  std::string reason;
  EXPECT_FALSE(SourceEncoding(ascii).Decode(ascii + "\xe9", text, reason));
  EXPECT_EQ(ascii, text);
  EXPECT_EQ("no character in US-ASCII", reason);
}

TEST(SourceEncoding, Characters_that_cannot_be_held_become_references) {
  const SourceEncoding latin1("<?xml version='1.0' encoding='ISO-8859-1'?>");
  const SourceEncoding ascii("<?xml version='1.0' encoding='US-ASCII'?>");
  const SourceEncoding utf8("<a/>");
  const std::string text = "x\xc3\xa9\xe2\x82\xac\xf0\x9f\x99\x82z";
  EXPECT_EQ("x\xc3\xa9&#8364;&#128578;z", latin1.WithReferences(text));
  EXPECT_EQ("x&#233;&#8364;&#128578;z", ascii.WithReferences(text));
  EXPECT_EQ(text, utf8.WithReferences(text));
  EXPECT_EQ(3u, latin1.FindForeign(text));
  EXPECT_EQ(6u, latin1.FindForeign(text, 6));
  EXPECT_EQ(std::string::npos, latin1.FindForeign(text, 10));
  EXPECT_EQ(std::string::npos, utf8.FindForeign(text));
}

}  // namespace
