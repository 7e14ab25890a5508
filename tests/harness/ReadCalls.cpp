#include "harness/ReadCalls.h"

#include <sys/syscall.h>
#include <unistd.h>

namespace {

const ReadCalls::Function* l_pFunction = nullptr;

}  // namespace

ReadCalls::ReadCalls(const Function& function) : m_function(function) { l_pFunction = &m_function; }

ReadCalls::~ReadCalls() { l_pFunction = nullptr; }

ssize_t ReadCalls::Really(int file, void* memory, std::size_t size) {
  return static_cast<ssize_t>(syscall(SYS_read, file, memory, size));
}

/// Takes the place of the C library's, for the library under test too.
extern "C" __attribute__((visibility("default"))) ssize_t read(int file, void* memory,
                                                               std::size_t size) {
  return l_pFunction != nullptr ? (*l_pFunction)(file, memory, size)
                                : ReadCalls::Really(file, memory, size);
}
