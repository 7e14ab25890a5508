#include <tools/io/SourceText.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

// Lines and columns of several places at once. What a message shows of them is in check_test.bash.

namespace {

using tool::PositionOf;
using tool::PositionsOf;
using tool::SourcePosition;

TEST(SourceText, Places_are_told_in_the_order_of_their_offsets) {
  const std::string text =
      "a\r\nb\xc3\xa9"
      "c\rd\n";
  const std::vector<std::size_t> offsets = {6, 0, 3, 6, 8, text.size(), 1};
  const auto positions = PositionsOf(text, offsets);
  ASSERT_EQ(offsets.size(), positions.size());
  for (std::size_t i = 0; i < offsets.size(); ++i) {
    const SourcePosition expected = PositionOf(text, offsets[i]);
    EXPECT_EQ(expected.line, positions[i].line) << i;
    EXPECT_EQ(expected.column, positions[i].column) << i;
  }
  EXPECT_EQ(2u, positions[0].line);
  EXPECT_EQ(3u, positions[0].column);
  EXPECT_EQ(4u, positions[5].line);
  EXPECT_EQ(1u, positions[5].column);
}

}  // namespace
