#ifndef XMLDOM_TESTS_TOOL_RANDOMPATHS_H
#define XMLDOM_TESTS_TOOL_RANDOMPATHS_H

#include <random>
#include <string>

/// Small trees and paths of few names, so that paths often select something. They are the same ones
/// in every run.
class RandomPaths {
 public:
  explicit RandomPaths(unsigned int seed) : m_engine(seed), m_number(0) {}

  /// A document of about `elements` elements, in which each has a number of its own as attribute n.
  std::string Document(int elements);

  /// Which paths are made.
  enum Kind {
    kPlain,     ///< Those of the library's language.
    kWithDots,  ///< Those of its single search, with steps that move.
    kAny        ///< With existence tests and positions too.
  };
  std::string Path(Kind kind);

 private:
  int Below(int limit) { return static_cast<int>(m_engine() % static_cast<unsigned int>(limit)); }
  std::string Name() { return std::string(1, "abc"[Below(3)]); }
  std::string Predicate(Kind kind);

  std::mt19937 m_engine;
  int m_number;
};

#endif
