#ifndef XMLDOM_BENCH_DOCUMENTS_WORDS_H
#define XMLDOM_BENCH_DOCUMENTS_WORDS_H

#include <cstddef>
#include <random>
#include <string>

namespace bench {

/// Where generated documents get their contents from: the same sequence in every run.
class Words {
 public:
  Words() : m_engine(kSeed) {}

  /// A number below `limit`.
  std::size_t Number(std::size_t limit) { return m_engine() % limit; }

  /// One of a few choices.
  template <std::size_t N>
  const char* OneOf(const char* const (&choices)[N]) {
    return choices[Number(N)];
  }

  std::string Word();

  /// Words with blanks between them.
  std::string Line(std::size_t count);

 private:
  static const unsigned int kSeed = 20240229;

  std::mt19937 m_engine;  // every standard library gives the same numbers
};

}  // namespace bench

#endif
