#ifndef XMLDOM_BENCH_MEMORY_H
#define XMLDOM_BENCH_MEMORY_H

#include <string>

#include "Library.h"

namespace bench {

/// Loads a file in this process, which must have done nothing else. Prints a line of fields with
/// tabs between them: the document, its nodes, its bytes, the library, the heap bytes that the tree
/// holds as the allocator has rounded them up, those of the records alone (0 where that is not
/// known), and the peak of the resident memory during the load, above that before it.
/// Prints nothing when the library refuses the file.
void MeasureLoad(const Library& library, const std::string& path);

}  // namespace bench

#endif
