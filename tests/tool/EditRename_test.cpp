#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <algorithm>
#include <ctime>
#include <random>
#include <string>
#include <vector>

#include "harness/LinearTime.h"
#include "tool/EditHarness.h"

// Default attributes of an element go with its old name, and those of the new name come. An edit
// compares the tree that it has changed with the tree that a load makes of the result, and fails
// when they differ.

namespace {

const char* const kNames[] = {"k", "l", "m", "n", "o"};

/// Some of the names in any order, each with `after` behind it.
std::string SomeNames(std::mt19937& engine, const std::string& after) {
  std::vector<std::string> names(std::begin(kNames), std::end(kNames));
  std::shuffle(names.begin(), names.end(), engine);
  names.resize(engine() % (names.size() + 1));
  std::string text;
  for (const std::string& name : names) text += " " + name + after;
  return text;
}

TEST(EditRename, Gives_an_element_the_default_attributes_that_a_load_gives_it) {
  std::mt19937 engine(1);
  for (int i = 0; i < 3000; ++i) {
    std::string type = "<!DOCTYPE r [";
    for (const char* name : {"b", "c"}) {
      const std::string declared = SomeNames(engine, std::string(" CDATA '") + name + "&lt;'");
      if (!declared.empty()) type += std::string("<!ATTLIST ") + name + declared + ">";
    }
    const std::string rest = SomeNames(engine, "='y'") + "/></r>";
    tool::EditedText edited = MakeEdited(type + "]><r><b" + rest);
    SCOPED_TRACE(edited.Bytes());
    ASSERT_NO_THROW(edited.Apply(MakeEdit("--rename", {"/r/b", "c"}), false));
    ASSERT_EQ(type + "]><r><c" + rest, edited.Bytes());
  }
}

TEST(EditRename, Adds_many_default_attributes_in_linear_time) {
  // Half of them stand in the tag already. Quadratic work would grow by the square of 16.
  ExpectGrowthBelow(80, 500, 8000, [](int count) {
    std::string declared;
    std::string written;
    for (int i = 0; i < count; ++i) {
      const std::string name = "a" + std::to_string(i);
      declared += " " + name + " CDATA 'x'";
      if (i % 2 == 0) written += " " + name + "='y'";
    }
    const std::string before = "<!DOCTYPE r [<!ATTLIST c" + declared + ">]><r><";
    tool::EditedText edited = MakeEdited(before + "b" + written + "/></r>");
    const std::clock_t begin = std::clock();
    edited.Apply(MakeEdit("--rename", {"/r/b", "c"}), false);
    const std::clock_t end = std::clock();
    EXPECT_EQ(before + "c" + written + "/></r>", edited.Bytes());
    return static_cast<double>(end - begin) / CLOCKS_PER_SEC;
  });
}

}  // namespace
