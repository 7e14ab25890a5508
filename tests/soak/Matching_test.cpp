#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include "plain/PlainMatching.h"
#include "soak/Cases.h"
#include "soak/Forest.h"
#include "soak/RandomPaths.h"

namespace {

std::string MatchRandomly(Random random, Observer& observer) {
  const ForestShape shape = AnySmallShape(random);
  Forest forest(random, shape);
  random.Next();
  IXMLDOMNode* node = AnyNode(forest, random);
  const std::string step = AnyStep(random, false);
  const std::string predicate = AnyPredicate(random);
  const bool hasNoStep = random.OneIn(40);
  const std::string before = forest.State();
  const auto run = [&](bool library) {
    return observer.Observe([&](std::string& results) {
      const char* text = hasNoStep ? nullptr : step.c_str();
      results += std::to_string(library ? node->MatchQuery(text) : plain::MatchQuery(node, text));
      results += std::to_string(library ? node->MatchesSubquery(predicate.c_str())
                                        : plain::MatchesSubquery(node, predicate.c_str()));
      IXMLDOMNode* other = forest.At(0);
      results += std::to_string(library ? other->MatchSubqueryHelper(node, predicate.c_str())
                                        : plain::MatchSubqueryHelper(node, predicate.c_str()));
      results += "\n";
    });
  };
  const std::string library = run(true);
  const std::string after = forest.State();
  const std::string difference = Difference(library + after, run(false) + before);
  return difference.empty() ? "" : "step " + step + ", predicate " + predicate + "\n" + difference;
}

TEST(SoakMatching, Nodes_match_steps_as_by_cutting_texts) { RunCases("matching", MatchRandomly); }

}  // namespace
