#include <gtest/gtest.h>
#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include <cstdio>
#include <string>

#include "harness/Trees.h"
#include "soak/Cases.h"
#include "soak/RandomDocuments.h"
#include "soak/RandomPaths.h"

// A path that CheckPath complains of selects nothing in any document that was loaded.

namespace {

/// How often each outcome was met, so that none of them is tested by nothing.
struct Outcomes {
  int unusable = 0;
  int selecting = 0;
  int selectingNothing = 0;
};

IXMLDOMNode* AnyElement(IXMLDOMDocument2* document, Random& random) {
  IXMLDOMNode* node = document;
  while (!random.OneIn(3)) {
    IXMLDOMNode* child = node->m_pFirstChild;
    while (child != nullptr && (child->m_eNodeType != NODE_ELEMENT || random.OneIn(4))) {
      child = child->m_pNextSibling;
    }
    if (child == nullptr) break;
    node = child;
  }
  return node;
}

std::string CheckRandomly(Random random, Outcomes& outcomes) {
  Document document = NewDocument();
  document->loadXML(AnyDocument(random).c_str());
  IXMLDOMNode* const node = AnyElement(document, random);
  const std::string path = AnyPath(random, 3, random.OneIn(2));
  const bool isSingle = random.OneIn(2);
  const xmldom::PathProblem problem =
      xmldom::CheckPath(path, isSingle ? xmldom::PathUse::kSelectOne : xmldom::PathUse::kSelect);
  const bool selects = isSingle ? xmldom::SelectOne(node, path.c_str()) != nullptr
                                : xmldom::Select(node, path.c_str()).Count() > 0;
  ++(problem ? outcomes.unusable : selects ? outcomes.selecting : outcomes.selectingNothing);
  if (!problem || !selects) return "";
  return path + " selects, in spite of \"" + problem.reason + "\" at " +
         std::to_string(problem.offset);
}

TEST(SoakPathCheck, A_path_that_cannot_select_selects_nothing) {
  Outcomes outcomes;
  RunCases("path check", [&](Random random, Observer& observer) {
    std::string difference;
    observer.Observe([&](std::string&) { difference = CheckRandomly(random, outcomes); });
    return difference;
  });
  const int all = outcomes.unusable + outcomes.selecting + outcomes.selectingNothing;
  if (all > 100) {
    EXPECT_LT(all / 20, outcomes.unusable);
    EXPECT_LT(all / 20, outcomes.selecting);
    EXPECT_LT(all / 20, outcomes.selectingNothing);
  }
  std::printf("%d unusable, %d selecting, %d selecting nothing\n", outcomes.unusable,
              outcomes.selecting, outcomes.selectingNothing);
}

}  // namespace
