#ifndef XMLDOM_BENCH_DOCUMENTS_COLLECTIONS_H
#define XMLDOM_BENCH_DOCUMENTS_COLLECTIONS_H

#include <cstddef>
#include <string>
#include <vector>

#include "documents/Sample.h"
#include "documents/Shapes.h"

namespace bench {

/// Nodes of a small document: its tree fits the cache of a core.
const std::size_t kSmallNodes = 2000;
/// Nodes of a large document: its tree fits no cache of a core.
const std::size_t kLargeNodes = 100000;

/// A generated document.
Sample MakeSample(const Shape& shape, const std::string& set, std::size_t nodes);

/// One document of each shape.
std::vector<Sample> OneOfEachShape(const std::string& set, std::size_t nodes);

/// Documents of Debian packages, from the folder that `bench/fetch-documents` has filled.
/// Effects: std::runtime_error when one is missing.
std::vector<Sample> RealDocuments(const std::string& folder);

}  // namespace bench

#endif
