#include <gtest/gtest.h>
#include <tools/document/Splice.h>

#include <stdexcept>

// Parts of a text that are replaced, all at once.

namespace {

using tool::Splices;

TEST(Splices, Are_made_in_the_order_of_the_text) {
  Splices splices;
  splices.Remove(6, 7);
  splices.Insert(2, "A");
  splices.Replace(3, 5, "BCD");
  splices.Insert(2, "E");
  splices.Insert(8, "F");
  splices.Insert(0, "G");
  EXPECT_EQ("G01AE2BCD57F", splices.Apply("01234567"));
}

TEST(Splices, None_leave_the_text_as_it_is) { EXPECT_EQ("text", Splices().Apply("text")); }

TEST(Splices, Overlap_is_refused) {
  Splices splices;
  splices.Replace(0, 3, "x");
  splices.Replace(2, 4, "y");
  EXPECT_THROW(splices.Apply("01234"), std::logic_error);
  Splices outside;
  outside.Insert(6, "x");
  EXPECT_THROW(outside.Apply("01234"), std::logic_error);
}

}  // namespace
