#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include "plain/PlainPathEdit.h"
#include "soak/Cases.h"
#include "soak/Forest.h"
#include "soak/RandomPaths.h"

namespace {

int Edit(IXMLDOMNode* node, int kind, const char* path, const char* content, bool library) {
  switch (kind) {
    case 0:
      return library ? node->ReplaceChildAtXPath(path, content)
                     : plain::ReplaceChildAtXPath(node, path, content);
    case 1:
      return library ? node->AppendChildAtXPath(path, content)
                     : plain::AppendChildAtXPath(node, path, content);
    case 2:
      return library ? node->InsertBeforeXPath(path, content)
                     : plain::InsertBeforeXPath(node, path, content);
    default:
      return library ? node->RemoveChildAtXPath(path) : plain::RemoveChildAtXPath(node, path);
  }
}

/// One edit in trees of which the forest keeps little, so that what is replaced is destroyed.
std::string EditRandomly(Random random, Observer& observer) {
  static const char* const kContents[] = {"<n/>", "<n k='1'>x<m l='2'/></n>", "<n>", "", nullptr};
  static const char* const kSimple[] = {"/", "/*", "//a", "//b", "//c", "//*", "a", "*", "/*/*"};
  // An exception of the log gives every reference back, which the plain edits do not do:
  // XMLNodePathEditFailures_test.cpp holds it.
  observer.ThrowAtEvent(0);
  ForestShape shape;
  shape.nodes = 2 + random.Below(14);
  // An edit that throws keeps a reference: then the forest has to know every node.
  shape.keepsAll = random.OneIn(2);
  shape.sharesNodes = false;
  shape.changesByHand = shape.keepsAll ? random.Below(5) : 0;
  shape.oneWitnessIn = 2;
  Forest one(random, shape);
  Forest two(random, shape);
  random.Next();
  int number = random.Below(2);
  if (random.OneIn(3)) {
    const int other = random.Below(one.Count());
    if (one.Keeps(other)) number = other;
  }
  const int kind = random.Below(4);
  const std::string path = random.OneIn(4) ? AnyPath(random, 3, true) : random.OneOf(kSimple);
  const char* givenPath = random.OneIn(50) ? nullptr : path.c_str();
  const char* content = random.OneOf(kContents);
  const auto run = [&](Forest& forest, bool library) {
    const std::string seen = observer.Observe([&](std::string& results) {
      const int result = Edit(forest.At(number), kind, givenPath, content, library);
      results += "gives " + std::to_string(result) + "\n";
    });
    return seen + "destroyed" + forest.Record() + "\n" + forest.State();
  };
  const std::string difference = Difference(run(one, true), run(two, false));
  return difference.empty() ? ""
                            : "edit " + std::to_string(kind) + " at #" + std::to_string(number) +
                                  " of " + path + "\n" + difference;
}

TEST(SoakPathEdit, References_are_given_back_in_the_order_of_the_plain_edits) {
  RunCases("path edits", EditRandomly);
}

}  // namespace
