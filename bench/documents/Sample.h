#ifndef XMLDOM_BENCH_DOCUMENTS_SAMPLE_H
#define XMLDOM_BENCH_DOCUMENTS_SAMPLE_H

#include <cstddef>
#include <string>

#include "Operation.h"

namespace bench {

/// What is selected in a document, one path an operation.
struct Paths {
  std::string name;       // "//name"
  std::string attribute;  // "//name[@attr='value']"
  std::string steps;      // "/a/b/c"
  std::string found;      // "//name[@attr='value']" whose first match has a quarter before it
  std::string absent;     // "//name[@attr='value']" without a match
};

/// A document to measure with.
struct Sample {
  std::string name;
  std::string set;  // "small", "large", "real", or what else asks for it
  std::string text;
  std::size_t nodes = 0;       // elements, attributes, and texts that are not blank
  std::size_t textBytes = 0;   // of those texts
  std::size_t debugBytes = 0;  // that xmldom prints when it decodes them; 0 without references
  bool isNamespaced = false;   // its elements are in a default namespace
  Paths paths;
};

/// Sets what can be counted in the text: nodes and bytes.
void CountNodes(Sample& sample);

/// A document of which only the number of nodes matters: the children that an edit is done with.
Sample Children(const std::string& set, std::size_t count);

/// Whether an operation is measured on a document. Texts with references are a matter of their own,
/// since decoding prints, and left out where that alone would take minutes.
bool Suits(Operation operation, const Sample& sample);

/// The path that an operation selects with; empty for other operations.
const std::string& PathFor(Operation operation, const Paths& paths);

}  // namespace bench

#endif
