#ifndef XMLDOM_BENCH_HEAP_HEAPREADING_H
#define XMLDOM_BENCH_HEAP_HEAPREADING_H

#include <cstddef>

/// What is allocated on the C heap.
struct HeapReading {
  std::size_t blocks;
  std::size_t bytes;  // as the allocator has rounded them up, its headers included
};

/// Defined by a library that is loaded before all others and counts what passes through it; null
/// in a process without it.
extern "C" HeapReading ReadHeap() __attribute__((weak));

#endif
