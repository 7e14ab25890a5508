#include <tools/document/PathComparisons.h>

#include <gtest/gtest.h>
#include <tools/document/DocumentOrder.h>
#include <tools/document/PathSyntax.h>
#include <xmldom/dom/XMLDocument.h>

#include <cstdio>
#include <random>
#include <string>

#include "harness/Silence.h"
#include "tool/Loading.h"

// One search for all elements, whose texts are parts of each other, says of each what the library
// says when it is asked about that element alone.

namespace {

using tool::PathComparisons;

/// Makes small trees with texts at every level, and comparisons that often hold.
class RandomTexts {
 public:
  explicit RandomTexts(unsigned int seed) : m_engine(seed) {}

  std::string Element(int depth) {
    const std::string name = Name();
    std::string xml = "<" + name + (Below(3) == 0 ? " k='" + Piece() + "'>" : ">");
    for (int i = Below(4); i > 0; --i) {
      xml += depth > 0 && Below(2) == 0 ? Element(depth - 1) : Text();
    }
    return xml + "</" + name + ">";
  }

  std::string Name() { return std::string(1, "abc"[Below(3)]); }

  std::string Comparison() {
    static const char* const kLeft[] = {"a", "b", "*/a", "a/b", "@k", "a/@k", "b/*/c"};
    return kLeft[Below(7)] + std::string("=") + (Below(4) == 0 ? "1" : "'" + Value() + "'");
  }

 private:
  int Below(int limit) { return static_cast<int>(m_engine() % static_cast<unsigned int>(limit)); }
  std::string Piece() { return Below(2) == 0 ? "x" : "1"; }
  std::string Text() { return Below(5) == 0 ? "&lt;" : Piece(); }

  std::string Value() {
    std::string value;
    for (int i = Below(3); i > 0; --i) value += Below(5) == 0 ? "<" : Piece();
    return value;
  }

  std::mt19937 m_engine;
};

class PathComparisonsAtRandom : public testing::TestWithParam<unsigned int> {};

INSTANTIATE_TEST_SUITE_P(Seeds, PathComparisonsAtRandom, testing::Values(1u, 2u));

TEST_P(PathComparisonsAtRandom, Hold_at_any_depth_for_what_they_hold_for_alone) {
  std::printf("seed %u\n", GetParam());
  const Silence silence;  // Reading a reference prints a line.
  RandomTexts random(GetParam());
  int asked = 0;
  int holding = 0;
  for (int i = 0; i < 3000; ++i) {
    const std::string xml = "<r>" + random.Element(5) + random.Element(5) + "</r>";
    const XMLPtr<IXMLDOMDocument2> document = Load(xml);
    tool::PathStep step = {i % 5 == 0 ? "*" : random.Name(), {}};
    step.predicates.push_back({tool::PathPredicate::kComparison, random.Comparison(), {}, 0});
    const tool::PathPredicate& comparison = step.predicates.front();
    SCOPED_TRACE("//" + step.name + "[" + comparison.comparison + "] in " + xml);
    PathComparisons anyDepth(PathComparisons::kAnyDepth);
    PathComparisons oneDepth(PathComparisons::kOneDepth);
    for (IXMLDOMNode* element = document->m_pFirstChild; element != nullptr;
         element = tool::NextElement(element)) {
      if (step.name != "*" && step.name != element->m_pszNodeName) continue;
      const bool holds = element->MatchesSubquery(comparison.comparison.c_str()) != 0;
      ASSERT_EQ(holds, anyDepth.Hold(step, comparison, element));
      ASSERT_EQ(holds, oneDepth.Hold(step, comparison, element));
      ++asked;
      holding += holds;
    }
  }
  EXPECT_LT(3000, asked);
  EXPECT_LT(asked / 50, holding);
  EXPECT_LT(holding, asked / 2);
}

}  // namespace
