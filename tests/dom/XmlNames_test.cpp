#include <xmldom/dom/XmlNames.h>

#include <gtest/gtest.h>

#include <string>

#include "harness/Trees.h"
#include "soak/Random.h"

namespace {

using xmldom::IsXmlName;

TEST(XmlNames, are_those_that_the_parser_reads) {
  for (const char* name :
       {"a", "Z", "_", ":", "a-1.b:c", "\xc3\xa9", "a\xc3\xa9", "\xe6\xbc\xa2\xe5\xad\x97"}) {
    EXPECT_TRUE(IsXmlName(name)) << name;
  }
}

TEST(XmlNames, are_no_other_texts) {
  for (const char* name : {"", "1", "-a", ".a", "a b", "a=", "a>", "a/", "a'", "b=''><c", "a\n",
                           "\xc3\x97", "\xff", "a\xc3", "\xe2\x82\xac", "\xc3\xa9><b"}) {
    EXPECT_FALSE(IsXmlName(name)) << name;
  }
  EXPECT_FALSE(IsXmlName(nullptr));
  EXPECT_FALSE(IsXmlName(std::string("a\0", 2)));
  EXPECT_FALSE(IsXmlName(std::string("\xc3\xa9\0", 3)));
}

// Letters, digits, a combining accent and an extender, and what is none of these in a name or at
// its beginning; whole characters, their halves, and some that only fit where others stand.
TEST(XmlNames, are_what_loads_as_the_name_of_an_element) {
  // clang-format off
  const char* const kPieces[] = {
      "a", "_", ":", "-", ".", "7", "\xc3\xa9", "\xc3\x97", "\xc3", "\xa9", "\xcc\x81", "\xc2\xb7",
      "\xd9\xa3", "\xef\xbb\xbf", "\xe6\xbc\xa2", "\xe2\x82\xac", "\xf0\x9f\x98\x80"};
  // clang-format on
  Random random(7);
  int names = 0;
  for (int i = 0; i < 3000; ++i) {
    std::string text;
    for (int pieces = random.Below(4); pieces >= 0; --pieces) text += random.OneOf(kPieces);
    const Document document = NewDocument();
    const bool loads = document->loadXML(("<" + text + "/>").c_str()) == VARIANT_TRUE;
    ASSERT_EQ(loads, IsXmlName(text)) << text;
    names += loads ? 1 : 0;
  }
  EXPECT_LT(300, names);
  EXPECT_GT(2700, names);
}

}  // namespace
