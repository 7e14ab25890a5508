#include <gtest/gtest.h>

#include "harness/LongChains.h"
#include "soak/Cases.h"

namespace {

std::string EditChains(Random random, Observer&) {
  LongChains chains(static_cast<unsigned int>(random.Next()));
  std::string steps;
  for (int i = 0; i < 60; ++i) {
    steps += chains.Step() + "\n";
    const std::string difference = chains.Difference();
    if (!difference.empty()) return steps + difference;
  }
  return "";
}

TEST(SoakChains, Nodes_before_others_are_found_as_plainly) { RunCases("chains", EditChains, 5); }

}  // namespace
