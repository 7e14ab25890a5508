#include "soak/RandomPaths.h"

std::string AnyPredicate(Random& random) {
  static const char* const kSegments[] = {"a", "b", "c", "*", "*x", "@k", "@m", "#Text", "", "@"};
  static const char* const kWanted[] = {"='1'", "=1",  "='x'",    "=\"x\"", "=''",      "='",
                                        "=",    "='x", "=\"y'\"", "='a<b'", "='&lt;'",  "=01",
                                        "",     "= 1", "='/'",    "=x",     "='1'='x'", "='&'"};
  std::string predicate;
  for (int segments = random.Below(3); segments > 0; --segments) {
    predicate += std::string(random.OneOf(kSegments)) + "/";
  }
  return predicate + random.OneOf(kSegments) + random.OneOf(kWanted);
}

std::string AnyStep(Random& random, bool dots) {
  static const char* const kNames[] = {"a", "a", "a", "b", "b", "c", "*", "*", "*", "", "ab"};
  static const char* const kDots[] = {".", "..", "..", ".x", "..y"};
  static const char* const kRests[] = {"[", "[@k='1'", "] ", " x", "[]", "  "};
  std::string step = dots && random.OneIn(4) ? random.OneOf(kDots) : random.OneOf(kNames);
  while (random.OneIn(4)) {
    step += "[" + AnyPredicate(random) + "]";
    if (random.OneIn(6)) step += " ";
  }
  if (random.OneIn(20)) step += random.OneOf(kRests);
  return step;
}

std::string AnyPath(Random& random, int most, bool dots) {
  static const char* const kPrefixes[] = {"", "", "/", "//", "//", "//", "///"};
  std::string path = random.OneOf(kPrefixes);
  for (int i = 0, steps = random.Below(most + 1); i < steps; ++i) {
    if (i != 0) path += "/";
    path += AnyStep(random, dots);
  }
  return path;
}
