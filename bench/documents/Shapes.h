#ifndef XMLDOM_BENCH_DOCUMENTS_SHAPES_H
#define XMLDOM_BENCH_DOCUMENTS_SHAPES_H

#include <cstddef>
#include <string>
#include <vector>

#include "documents/Sample.h"

namespace bench {

/// One kind of generated document. The seed is fixed: the same size gives the same bytes.
struct Shape {
  std::string name;
  /// Makes the text of a document of about `nodes` nodes, and the paths for it.
  void (*generate)(std::size_t nodes, Sample& sample);
};

const std::vector<Shape>& AllShapes();

/// The shape of that name, which must exist.
const Shape& FindShape(const std::string& name);

}  // namespace bench

#endif
