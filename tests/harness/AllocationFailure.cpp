#include "harness/AllocationFailure.h"

#include <dlfcn.h>
#include <expat.h>

#include <cstddef>
#include <cstdlib>

// A sanitizer brings its own (cmake/XmldomTests.cmake), and so do other C libraries.
#if !defined(__GLIBC__) && !defined(XMLDOM_TESTS_OTHER_MALLOC)
#define XMLDOM_TESTS_OTHER_MALLOC
#endif

namespace {

const int kUnlimited = -1;
int l_nAllowed = kUnlimited;
AllocationFailure::Extent l_extent = AllocationFailure::FROM_THERE_ON;
bool l_bHasStruck = false;
long l_nBlocks = 0;

/// Whether a parser is being made whose allocations may not fail.
bool l_bSparesNewParsers = false;
bool l_bIsMakingParser = false;

/// Where the Expat library lies in memory; null when it is not a library of its own.
const void* l_pExpat = nullptr;

const void* LibraryOf(const void* address) {
  Dl_info info;
  return address != nullptr && dladdr(address, &info) != 0 ? info.dli_fbase : nullptr;
}

}  // namespace

AllocationFailure::AllocationFailure(int allowed, Reach reach, Extent extent)
    : m_allowed(allowed), m_operatorNew(ReachesMalloc() ? kUnlimited : allowed, extent == ONCE) {
  l_bSparesNewParsers = reach == ALL_BUT_NEW_PARSERS;
  l_extent = extent;
  l_pExpat = reach == ALL_BUT_EXPAT ? LibraryOf(dlsym(RTLD_DEFAULT, "XML_ParserFree")) : nullptr;
  l_bHasStruck = false;
  l_nAllowed = allowed;
}

AllocationFailure::~AllocationFailure() { l_nAllowed = kUnlimited; }

bool AllocationFailure::HasStruck() const { return l_bHasStruck || m_operatorNew.HasStruck(); }

int AllocationFailure::Succeeded() const {
  return ReachesMalloc() ? m_allowed - l_nAllowed : m_operatorNew.Succeeded();
}

long HeapBlocks() { return l_nBlocks; }

/// Stands in front of Expat's own in every library of the process.
extern "C" __attribute__((visibility("default"))) XML_Parser XMLCALL XML_ParserCreate_MM(
    const XML_Char* encoding, const XML_Memory_Handling_Suite* memory, const XML_Char* separator) {
  typedef XML_Parser (*Function)(const XML_Char*, const XML_Memory_Handling_Suite*,
                                 const XML_Char*);
  static const Function function =
      reinterpret_cast<Function>(dlsym(RTLD_NEXT, "XML_ParserCreate_MM"));
  l_bIsMakingParser = true;
  const XML_Parser parser = function(encoding, memory, separator);
  l_bIsMakingParser = false;
  return parser;
}

#ifdef XMLDOM_TESTS_OTHER_MALLOC

bool AllocationFailure::ReachesMalloc() { return false; }

#else

bool AllocationFailure::ReachesMalloc() { return true; }

namespace {

/// Whether an allocation that `caller` asks for has to fail.
bool Fails(const void* caller) {
  if (l_nAllowed == kUnlimited) return false;
  if (l_bIsMakingParser && l_bSparesNewParsers) return false;
  if (l_pExpat != nullptr && LibraryOf(caller) == l_pExpat) return false;
  if (l_nAllowed > 0) {
    --l_nAllowed;
    return false;
  }
  if (l_extent == AllocationFailure::ONCE) l_nAllowed = kUnlimited;
  l_bHasStruck = true;
  return true;
}

void* Counted(void* block) {
  if (block != nullptr) ++l_nBlocks;
  return block;
}

}  // namespace

// The functions of the C library, which stand in front of its own in every library of the process.
// They call what stands behind them, which is Valgrind's where that runs the process, so that it
// sees each block.

#define XMLDOM_TESTS_REPLACES extern "C" __attribute__((visibility("default")))

extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);
extern "C" void* __libc_realloc(void* block, std::size_t size);
extern "C" void __libc_free(void* block);

namespace {

/// What allocates and frees. Until it is known, which takes some memory itself, it is the C
/// library.
struct Heap {
  void* (*malloc)(std::size_t size);
  void* (*calloc)(std::size_t count, std::size_t size);
  void* (*realloc)(void* block, std::size_t size);
  void (*free)(void* block);
};
Heap l_heap = {__libc_malloc, __libc_calloc, __libc_realloc, __libc_free};
bool l_bIsHeapKnown = false;

template <class Function>
void Find(Function& function, const char* name) {
  void* const found = dlsym(RTLD_NEXT, name);
  if (found != nullptr) function = reinterpret_cast<Function>(found);
}

const Heap& TheHeap() {
  if (l_bIsHeapKnown) return l_heap;
  l_bIsHeapKnown = true;
  Heap heap = l_heap;
  Find(heap.malloc, "malloc");
  Find(heap.calloc, "calloc");
  Find(heap.realloc, "realloc");
  Find(heap.free, "free");
  l_heap = heap;
  return l_heap;
}

}  // namespace

XMLDOM_TESTS_REPLACES void* malloc(std::size_t size) noexcept {
  return Fails(__builtin_return_address(0)) ? nullptr : Counted(TheHeap().malloc(size));
}

XMLDOM_TESTS_REPLACES void* calloc(std::size_t count, std::size_t size) noexcept {
  return Fails(__builtin_return_address(0)) ? nullptr : Counted(TheHeap().calloc(count, size));
}

XMLDOM_TESTS_REPLACES void* realloc(void* block, std::size_t size) noexcept {
  if (Fails(__builtin_return_address(0))) return nullptr;
  void* result = TheHeap().realloc(block, size);
  if (block == nullptr) return Counted(result);
  if (result == nullptr && size == 0) --l_nBlocks;  // it has been freed
  return result;
}

XMLDOM_TESTS_REPLACES void free(void* block) noexcept {
  if (block != nullptr) --l_nBlocks;
  TheHeap().free(block);
}

#endif
