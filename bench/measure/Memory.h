#ifndef XMLDOM_BENCH_MEASURE_MEMORY_H
#define XMLDOM_BENCH_MEASURE_MEMORY_H

#include <cstddef>
#include <string>

#include "Library.h"

namespace bench {

/// What a document needs that was loaded from a file.
struct MemoryUse {
  std::size_t blocks;       // live allocations of the tree
  std::size_t heapBytes;    // that the document holds after it
  std::size_t recordBytes;  // of its nodes, names and values alone; 0 where that is not known
  std::size_t peakBytes;    // resident memory at its highest during the load, above that before
};

/// Loads a file in this process, which must have loaded the counting library first.
/// Effects: std::runtime_error when the library refuses the file, or there is no counting library.
MemoryUse LoadAndCount(const Library& library, const std::string& path);

}  // namespace bench

#endif
