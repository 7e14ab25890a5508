#include <xmldom/parse/XmlNames.h>

#include <expat.h>
#include <gtest/gtest.h>

#include <string>

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

TEST(XmlNames, tell_a_parser_without_memory_by_the_code_that_Expat_gives) {
  EXPECT_EQ(XML_ERROR_NO_MEMORY, xmldom::kNoMemory);
}

}  // namespace
