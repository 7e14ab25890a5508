#include "soak/Cases.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "harness/AllocationFailure.h"

namespace {

unsigned long long FromEnvironment(const char* name, unsigned long long otherwise) {
  const char* text = std::getenv(name);
  return text == nullptr ? otherwise : std::strtoull(text, nullptr, 10);
}

unsigned long long UsualCases() { return AllocationFailure::ReachesMalloc() ? 20000 : 2000; }

/// Keeps the cases of two subjects apart that have the same seed and number.
std::uint64_t SeedOf(const std::string& subject, unsigned long long seed, unsigned long long i) {
  std::uint64_t mixed = seed;
  for (char c : subject) mixed = mixed * 1099511628211u + static_cast<unsigned char>(c);
  Random random(mixed);
  return random.Next() ^ Random(i).Next();
}

}  // namespace

void RunCases(const std::string& subject, const RandomCase& runCase, int share) {
  const unsigned long long seed = FromEnvironment("XMLDOM_SEED", 1);
  const unsigned long long all = FromEnvironment("XMLDOM_CASES", UsualCases());
  const unsigned long long only = FromEnvironment("XMLDOM_CASE", 0);
  const unsigned long long last =
      only != 0 ? only : (all * static_cast<unsigned>(share) + 99) / 100;
  unsigned long long i = only != 0 ? only : 1;
  std::string difference;
  {
    Observer observer;
    for (; i <= last; ++i) {
      // In every fourth case the log throws at one of the first five events.
      observer.ThrowAtEvent(i % 4 == 0 ? static_cast<int>(1 + i / 4 % 5) : 0);
      difference = runCase(Random(SeedOf(subject, seed, i)), observer);
      if (!difference.empty()) break;
    }
  }
  const unsigned long long done = (i > last ? last : i) - (only != 0 ? only - 1 : 0);
  std::printf("%s: %llu cases, seed %llu\n", subject.c_str(), done, seed);
  if (difference.empty()) return;
  ADD_FAILURE() << subject << ": case " << i << " of seed " << seed
                << " differs; run it again with "
                << "XMLDOM_SEED=" << seed << " XMLDOM_CASE=" << i << "\n"
                << difference;
}
