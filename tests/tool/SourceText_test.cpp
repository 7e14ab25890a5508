#include <tools/io/SourceText.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

// Lines and columns of several places at once. What a message shows of them is in check_test.bash.

namespace {

using tool::PositionsOf;
using tool::SourcePosition;

TEST(SourceText, Places_are_told_in_the_order_of_their_offsets) {
  const std::string text =
      "a\r\nb\xc3\xa9"
      "c\rd\n";
  const struct {
    std::size_t offset;
    std::size_t line;
    std::size_t column;
  } places[] = {{6, 2, 3}, {0, 1, 1}, {3, 2, 1}, {6, 2, 3}, {8, 3, 1}, {10, 4, 1}, {1, 1, 2}};
  std::vector<std::size_t> offsets;
  for (const auto& place : places) offsets.push_back(place.offset);
  const std::vector<SourcePosition> positions = PositionsOf(text, offsets);
  ASSERT_EQ(offsets.size(), positions.size());
  for (std::size_t i = 0; i < offsets.size(); ++i) {
    EXPECT_EQ(places[i].line, positions[i].line) << i;
    EXPECT_EQ(places[i].column, positions[i].column) << i;
  }
}

}  // namespace
