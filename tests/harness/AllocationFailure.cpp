#include "harness/AllocationFailure.h"

#include <dlfcn.h>

#include <cstddef>
#include <cstdlib>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define XMLDOM_TESTS_OTHER_MALLOC
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || \
    __has_feature(memory_sanitizer)
#define XMLDOM_TESTS_OTHER_MALLOC
#endif
#endif
#ifndef __GLIBC__
#define XMLDOM_TESTS_OTHER_MALLOC
#endif

namespace {

const int kUnlimited = -1;
int l_nAllowed = kUnlimited;
bool l_bHasStruck = false;
long l_nBlocks = 0;

/// Where the Expat library lies in memory; null when it is not a library of its own.
const void* l_pExpat = nullptr;

const void* LibraryOf(const void* address) {
  Dl_info info;
  return address != nullptr && dladdr(address, &info) != 0 ? info.dli_fbase : nullptr;
}

}  // namespace

AllocationFailure::AllocationFailure(int allowed, Reach reach)
    : m_operatorNew(ReachesMalloc() ? kUnlimited : allowed) {
  l_pExpat = reach == ALL_BUT_EXPAT ? LibraryOf(dlsym(RTLD_DEFAULT, "XML_ParserFree")) : nullptr;
  l_bHasStruck = false;
  l_nAllowed = allowed;
}

AllocationFailure::~AllocationFailure() { l_nAllowed = kUnlimited; }

bool AllocationFailure::HasStruck() const { return l_bHasStruck || m_operatorNew.HasStruck(); }

long HeapBlocks() { return l_nBlocks; }

#ifdef XMLDOM_TESTS_OTHER_MALLOC

bool AllocationFailure::ReachesMalloc() { return false; }

#else

bool AllocationFailure::ReachesMalloc() { return true; }

namespace {

/// Whether an allocation that `caller` asks for has to fail.
bool Fails(const void* caller) {
  if (l_nAllowed == kUnlimited) return false;
  if (l_pExpat != nullptr && LibraryOf(caller) == l_pExpat) return false;
  if (l_nAllowed > 0) {
    --l_nAllowed;
    return false;
  }
  l_bHasStruck = true;
  return true;
}

void* Counted(void* block) {
  if (block != nullptr) ++l_nBlocks;
  return block;
}

}  // namespace

// The functions of the C library, which stand in front of its own in every library of the process.

#define XMLDOM_TESTS_REPLACES extern "C" __attribute__((visibility("default")))

extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);
extern "C" void* __libc_realloc(void* block, std::size_t size);
extern "C" void __libc_free(void* block);

XMLDOM_TESTS_REPLACES void* malloc(std::size_t size) noexcept {
  return Fails(__builtin_return_address(0)) ? nullptr : Counted(__libc_malloc(size));
}

XMLDOM_TESTS_REPLACES void* calloc(std::size_t count, std::size_t size) noexcept {
  return Fails(__builtin_return_address(0)) ? nullptr : Counted(__libc_calloc(count, size));
}

XMLDOM_TESTS_REPLACES void* realloc(void* block, std::size_t size) noexcept {
  if (Fails(__builtin_return_address(0))) return nullptr;
  void* result = __libc_realloc(block, size);
  if (block == nullptr) return Counted(result);
  if (result == nullptr && size == 0) --l_nBlocks;  // it has been freed
  return result;
}

XMLDOM_TESTS_REPLACES void free(void* block) noexcept {
  if (block != nullptr) --l_nBlocks;
  __libc_free(block);
}

#endif
