#ifndef XMLDOM_TESTS_SOAK_RANDOM_H
#define XMLDOM_TESTS_SOAK_RANDOM_H

#include <cstddef>
#include <cstdint>

/// Numbers that follow from a seed alone, the same with every standard library. Copies go on alike.
class Random {
 public:
  explicit Random(std::uint64_t seed) : m_state(seed) {}

  /// The splitmix64 generator.
  std::uint64_t Next() {
    m_state += 0x9e3779b97f4a7c15u;
    std::uint64_t mixed = m_state;
    mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9u;
    mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebu;
    return mixed ^ (mixed >> 31);
  }

  /// A number from 0 to `limit` - 1; 0 for a limit below 1.
  int Below(int limit) {
    return limit < 1 ? 0 : static_cast<int>(Next() % static_cast<unsigned int>(limit));
  }

  /// True once in `n` times.
  bool OneIn(int n) { return Below(n) == 0; }

  template <class T, std::size_t N>
  const T& OneOf(const T (&things)[N]) {
    return things[Below(static_cast<int>(N))];
  }

 private:
  std::uint64_t m_state;
};

#endif
