#ifndef XMLDOM_BENCH_MEMORY_H
#define XMLDOM_BENCH_MEMORY_H

#include <ostream>
#include <string>

#include "Library.h"

namespace bench {

/// Loads a file in this process, which must have done nothing else. Writes a line of fields with
/// tabs between them: the document, its nodes, its bytes, the library, the heap bytes that the tree
/// holds as the allocator has rounded them up, those of the records alone (0 where that is not
/// known), and the peak of the resident memory during the load, above that before it.
/// Writes nothing when the library refuses the file.
void MeasureLoad(const Library& library, const std::string& path, std::ostream& results);

}  // namespace bench

#endif
