#include <xmldom/base/TextArgument.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

std::string Copy(xmldom::TextArgument text) { return std::string(text.Data(), text.Size()); }

TEST(TextArgument, takes_terminated_texts_and_null) {
  EXPECT_EQ("abc", Copy("abc"));
  EXPECT_EQ("", Copy(""));
  const char* const none = nullptr;
  EXPECT_EQ("", Copy(none));
  EXPECT_EQ("", Copy(nullptr));
}

TEST(TextArgument, takes_texts_that_know_their_size) {
  EXPECT_EQ(std::string("a\0b", 3), Copy(std::string("a\0b", 3)));
  EXPECT_EQ("ab", Copy(std::vector<char>{'a', 'b'}));
  EXPECT_EQ("", Copy(std::vector<char>()));
  EXPECT_NE(nullptr, xmldom::TextArgument(std::vector<char>()).Data());
}

}  // namespace
