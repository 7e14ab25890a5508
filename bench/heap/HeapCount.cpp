#include <malloc.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>

#include "heap/HeapReading.h"

// Stands before the allocator of the C library and counts; for processes with one thread.

extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* block, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);
void __libc_free(void* block);

}  // extern "C"

namespace {

HeapReading l_heap = {0, 0};

std::size_t BytesOf(void* block) { return malloc_usable_size(block) + sizeof(std::size_t); }

void* Counted(void* block) {
  if (block != nullptr) {
    ++l_heap.blocks;
    l_heap.bytes += BytesOf(block);
  }
  return block;
}

void Discount(std::size_t bytes) {
  --l_heap.blocks;
  l_heap.bytes -= bytes;
}

}  // namespace

#define XMLDOM_BENCH_REPLACES extern "C" __attribute__((visibility("default")))

XMLDOM_BENCH_REPLACES HeapReading ReadHeap() { return l_heap; }

XMLDOM_BENCH_REPLACES void* malloc(std::size_t size) { return Counted(__libc_malloc(size)); }

XMLDOM_BENCH_REPLACES void* calloc(std::size_t count, std::size_t size) {
  return Counted(__libc_calloc(count, size));
}

XMLDOM_BENCH_REPLACES void free(void* block) {
  if (block == nullptr) return;
  Discount(BytesOf(block));
  __libc_free(block);
}

XMLDOM_BENCH_REPLACES void* realloc(void* block, std::size_t size) {
  if (block == nullptr) return malloc(size);
  const std::size_t before = BytesOf(block);
  void* moved = __libc_realloc(block, size);
  if (moved != nullptr || size == 0) Discount(before);
  return Counted(moved);
}

XMLDOM_BENCH_REPLACES void* memalign(std::size_t alignment, std::size_t size) {
  return Counted(__libc_memalign(alignment, size));
}

XMLDOM_BENCH_REPLACES void* aligned_alloc(std::size_t alignment, std::size_t size) {
  return memalign(alignment, size);
}

XMLDOM_BENCH_REPLACES int posix_memalign(void** out, std::size_t alignment, std::size_t size) {
  *out = memalign(alignment, size);
  return *out == nullptr ? ENOMEM : 0;
}
