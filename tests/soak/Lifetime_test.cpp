#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include "plain/PlainLifetime.h"
#include "soak/Cases.h"
#include "soak/Forest.h"

namespace {

ForestShape AnyShape(Random& random) {
  static const int kOneWitnessIn[] = {0, 1, 2, 4};
  ForestShape shape;
  shape.nodes = 2 + random.Below(24);
  shape.changesByHand = random.OneIn(2) ? 0 : random.Below(10);
  shape.keepsAll = false;
  shape.sharesNodes = false;  // a node is never in two chains
  shape.oneWitnessIn = random.OneOf(kOneWitnessIn);
  return shape;
}

/// Drops the references that a forest holds to some nodes, one after the other.
std::string DestroyRandomly(Random random, Observer& observer) {
  const ForestShape shape = AnyShape(random);
  Forest one(random, shape);
  Forest two(random, shape);
  random.Next();
  for (int calls = 1 + random.Below(5); calls > 0; --calls) {
    const int number = 2 + random.Below(one.Count() - 2);
    if (!one.Keeps(number)) continue;
    const std::string library =
        observer.Observe([&](std::string&) { one.HandOver(number)->RealRelease(); });
    const std::string plainly =
        observer.Observe([&](std::string&) { plain::RealRelease(two.HandOver(number)); });
    const std::string difference =
        Difference(library + "destroyed" + one.Record() + "\n" + one.State(),
                   plainly + "destroyed" + two.Record() + "\n" + two.State());
    if (!difference.empty()) return "release of #" + std::to_string(number) + "\n" + difference;
  }
  return "";
}

std::string ClearRandomly(Random random, Observer& observer) {
  const ForestShape shape = AnyShape(random);
  Forest one(random, shape);
  Forest two(random, shape);
  random.Next();
  const bool freesName = random.OneIn(3);
  int number = random.Below(2);
  if (random.OneIn(2)) {
    const int other = random.Below(one.Count());
    if (one.Keeps(other)) number = other;
  }
  const std::string library =
      observer.Observe([&](std::string&) { one.At(number)->ClearNode(freesName); });
  const std::string plainly =
      observer.Observe([&](std::string&) { plain::ClearNode(two.At(number), freesName); });
  return Difference(library + "destroyed" + one.Record() + "\n" + one.State(),
                    plainly + "destroyed" + two.Record() + "\n" + two.State());
}

std::string SetOwnersRandomly(Random random, Observer& observer) {
  ForestShape shape = AnyShape(random);
  shape.keepsAll = true;
  shape.oneWitnessIn = 0;
  Forest one(random, shape);
  Forest two(random, shape);
  random.Next();
  for (int calls = 1 + random.Below(4); calls > 0; --calls) {
    const int number = 2 + random.Below(one.Count() - 2);
    const int owner = random.Below(3);
    const bool clears = random.OneIn(2);
    const int depth = random.Below(5) - 1;
    const std::string library = observer.Observe([&](std::string&) {
      if (clears) {
        one.At(number)->RecurseClearDocument(depth);
      } else {
        one.At(number)->RecurseSetDocument(owner == 2 ? nullptr : one.Document(owner));
      }
    });
    const std::string plainly = observer.Observe([&](std::string&) {
      if (clears) {
        plain::RecurseClearDocument(two.At(number), depth);
      } else {
        plain::RecurseSetDocument(two.At(number), owner == 2 ? nullptr : two.Document(owner));
      }
    });
    const std::string difference = Difference(library + one.State(), plainly + two.State());
    if (!difference.empty()) {
      return (clears ? "clear " : "set ") + std::to_string(number) + "\n" + difference;
    }
  }
  return "";
}

TEST(SoakLifetime, Trees_are_destroyed_in_the_order_of_plain_destructors) {
  RunCases("destruction", DestroyRandomly);
}

TEST(SoakLifetime, A_node_is_cleared_as_plainly) { RunCases("clearing", ClearRandomly); }

TEST(SoakLifetime, Owners_are_set_and_cleared_as_plainly) { RunCases("owners", SetOwnersRandomly); }

}  // namespace
