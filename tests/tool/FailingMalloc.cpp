// A library to be loaded in front of the C library (LD_PRELOAD), in which memory runs out: the n-th
// call of malloc, calloc or realloc since the process began gives a null pointer, and so operator
// new throws. The environment says which:
//
//   XMLDOM_TEST_FAILING=N       the N-th call fails, and those after it succeed again
//   XMLDOM_TEST_FAILING=N+      it fails, and so do all after it
//   XMLDOM_TEST_COUNT=FILE      gets the number of calls when the process ends well
//
// Used by tests/tool/allocation_test.bash.

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>

extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);
extern "C" void* __libc_realloc(void* block, std::size_t size);

namespace {

// The tool has one thread.
bool l_bIsKnown = false;  // whether the environment has been read
long l_nFailing = 0;      // the number of the call that fails; 0 for none
bool l_bAllAfter = false;
long l_nCalls = 0;

// The first call comes before any constructor.
void ReadEnvironment() {
  l_bIsKnown = true;
  const char* const failing = std::getenv("XMLDOM_TEST_FAILING");
  if (failing == nullptr) return;
  char* end = nullptr;
  l_nFailing = std::strtol(failing, &end, 10);
  l_bAllAfter = *end == '+';
}

bool Fails() {
  if (!l_bIsKnown) ReadEnvironment();
  ++l_nCalls;
  const bool fails = l_bAllAfter ? l_nCalls >= l_nFailing : l_nCalls == l_nFailing;
  if (fails) errno = ENOMEM;
  return fails;
}

__attribute__((destructor)) void WriteCount() {
  const char* const path = std::getenv("XMLDOM_TEST_COUNT");
  if (path == nullptr) return;
  char text[32];
  const int size = std::snprintf(text, sizeof text, "%ld\n", l_nCalls);
  const int descriptor = open(path, O_WRONLY | O_CREAT | O_TRUNC, 0666);
  if (descriptor < 0) return;
  if (write(descriptor, text, static_cast<std::size_t>(size)) != size) _exit(99);
  close(descriptor);
}

}  // namespace

#define XMLDOM_TESTS_REPLACES extern "C" __attribute__((visibility("default")))

XMLDOM_TESTS_REPLACES void* malloc(std::size_t size) noexcept {
  return Fails() ? nullptr : __libc_malloc(size);
}

XMLDOM_TESTS_REPLACES void* calloc(std::size_t count, std::size_t size) noexcept {
  return Fails() ? nullptr : __libc_calloc(count, size);
}

XMLDOM_TESTS_REPLACES void* realloc(void* block, std::size_t size) noexcept {
  return Fails() ? nullptr : __libc_realloc(block, size);
}
