#ifndef XMLDOM_TESTS_HARNESS_LONGTEXT_H
#define XMLDOM_TESTS_HARNESS_LONGTEXT_H

#include <sys/resource.h>

#include <string>

/// A text of 64 MiB: the C heap always asks the system for memory to copy it.
const std::string& LongText();

/// While it lives, the system gives no more memory, and so nobody can copy the long text.
class NoMoreMemory {
 public:
  NoMoreMemory();
  ~NoMoreMemory();

  NoMoreMemory(const NoMoreMemory&) = delete;
  NoMoreMemory& operator=(const NoMoreMemory&) = delete;

  /// False where the heap ends the process when memory is out, as that of the address sanitizer
  /// does, and where nobody keeps to the limit, as in an emulator.
  static bool IsPossible();

 private:
  rlimit m_before;
};

#endif
