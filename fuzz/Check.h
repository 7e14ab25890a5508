#ifndef XMLDOM_FUZZ_CHECK_H
#define XMLDOM_FUZZ_CHECK_H

/// Ends the program when `condition` does not hold, which a fuzzer takes for a crash.
#define FUZZ_CHECK(condition) \
  ((condition) ? static_cast<void>(0) : fuzz::Fail(__FILE__, __LINE__, #condition))

namespace fuzz {

[[noreturn]] void Fail(const char* file, int line, const char* what);

/// Takes log events without a word, but reads them to their ends, and sends standard output to
/// nowhere.
void Hush();

}  // namespace fuzz

#endif
