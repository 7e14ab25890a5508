#include "harness/LongText.h"

#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>

namespace {

rlim_t AddressSpaceInUse() {
  unsigned long pages = 0;
  std::ifstream("/proc/self/statm") >> pages;
  return static_cast<rlim_t>(pages) * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
}

}  // namespace

const std::string& LongText() {
  static const std::string text(64 * 1024 * 1024, 'x');
  return text;
}

NoMoreMemory::NoMoreMemory() {
  LongText();
  if (getrlimit(RLIMIT_AS, &m_before) != 0) std::abort();
  rlimit now = m_before;
  now.rlim_cur = AddressSpaceInUse();
  if (setrlimit(RLIMIT_AS, &now) != 0) std::abort();
}

NoMoreMemory::~NoMoreMemory() { setrlimit(RLIMIT_AS, &m_before); }

bool NoMoreMemory::IsPossible() {
#ifdef XMLDOM_TESTS_OTHER_MALLOC
  return false;  // It is a sanitizer's, which has address space of its own.
#else
  const std::size_t size = LongText().size();
  const NoMoreMemory limit;
  void* more = mmap(nullptr, size, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
  if (more == MAP_FAILED) return true;
  munmap(more, size);
  return false;
#endif
}
