#ifndef XMLDOM_TESTS_TOOL_RANDOMTEXT_H
#define XMLDOM_TESTS_TOOL_RANDOMTEXT_H

#include <random>
#include <string>

/// Small texts full of what is lost easily, the same ones in every run.
class RandomText {
 public:
  explicit RandomText(unsigned int seed) : m_engine(seed) {}

  /// A document. Some are not well-formed.
  std::string Document();

  /// Plain text, with characters that XML writes in another way.
  std::string Plain();

 private:
  template <std::size_t N>
  const char* OneOf(const char* const (&texts)[N]) {
    return texts[Below(static_cast<int>(N))];
  }

  /// A number from 0 to `limit` - 1.
  int Below(int limit) { return static_cast<int>(m_engine() % static_cast<unsigned int>(limit)); }

  std::string Tree();
  std::string StartTag();

  std::mt19937 m_engine;
};

#endif
