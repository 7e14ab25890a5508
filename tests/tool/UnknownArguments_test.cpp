#include <tools/command/UnknownArguments.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

// What is suggested for a name that is not known. That it is refused is in command_line_test.bash.

namespace {

struct Row {
  const char* typed;
  const char* nearest;
};

class NearestOfRows : public testing::TestWithParam<Row> {};

INSTANTIATE_TEST_SUITE_P(Rows, NearestOfRows,
                         testing::Values(Row{"slect", "select"},      // one left out
                                         Row{"selecct", "select"},    // one added
                                         Row{"sekect", "select"},     // one changed
                                         Row{"eslect", "select"},     // neighbours exchanged
                                         Row{"sel", "select"},        // the beginning
                                         Row{"selection", "select"},  // more behind it
                                         Row{"-select", "select"},    // dashes do not count
                                         Row{"--fisrt", "--first"},   //
                                         Row{"--set-atr", "--set-attr"}, Row{"--st", "--set"},  //
                                         Row{"frobnicate", ""},  // nothing is near
                                         Row{"--x", ""},         //
                                         Row{"-", ""},           //
                                         Row{"", ""}));

TEST_P(NearestOfRows, Is_what_somebody_may_have_meant) {
  const std::vector<std::string> known = {"-0",      "check", "--set-attr", "--set",
                                          "--first", "diff",  "select"};
  EXPECT_EQ(GetParam().nearest, tool::NearestOf(GetParam().typed, known));
}

}  // namespace
