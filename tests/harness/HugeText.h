#ifndef XMLDOM_TESTS_HARNESS_HUGETEXT_H
#define XMLDOM_TESTS_HARNESS_HUGETEXT_H

#include <cstddef>

/// A NUL-terminated text of INT_MAX + 1 bytes, one more than Expat takes. It shows the same piece
/// of memory again and again, and so takes little of it.
class HugeText {
 public:
  HugeText();
  ~HugeText();

  HugeText(const HugeText&) = delete;
  HugeText& operator=(const HugeText&) = delete;

  /// Result: null where so many addresses cannot be had, as on a machine on which a program has
  /// half of 32 bits.
  char* Get() { return m_text; }
  std::size_t Size() const { return m_size; }

 private:
  std::size_t m_size;  // without the terminator
  char* m_text;
};

#endif
