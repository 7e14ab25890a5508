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

  /// Result: null when the address space has no free range of this size, as on mipsel, where a
  /// process has 2 GiB.
  char* Get() { return m_text; }
  std::size_t Size() const { return m_size; }

 private:
  std::size_t m_size;  // without the terminator
  char* m_text;
};

#endif
