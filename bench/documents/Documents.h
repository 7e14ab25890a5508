#ifndef XMLDOM_BENCH_DOCUMENTS_DOCUMENTS_H
#define XMLDOM_BENCH_DOCUMENTS_DOCUMENTS_H

#include <cstddef>
#include <string>
#include <vector>

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
  std::string set;  // "small", "large", "real", "growth" or "scale"
  std::string name;
  std::string text;
  Paths paths;
  std::size_t nodes = 0;             // elements, attributes, and texts that are not blank
  bool hasText = false;              // some text is not blank
  bool hasReferencesInText = false;  // some text has a character or entity reference
  bool isNamespaced = false;         // the elements are in a default namespace
  bool isListToEdit = false;  // an empty list, whose `nodes` children an edit adds or removes
};

/// One kind of generated document. The seed is fixed: the same size gives the same bytes.
struct Shape {
  std::string name;
  /// Makes the text of a document of about `nodes` nodes, and the paths for it.
  void (*generate)(std::size_t nodes, Sample& sample);
};

const std::vector<Shape>& AllShapes();

/// A generated document whose nodes are counted; `name` is that of a shape, which must exist.
Sample MakeSample(const std::string& set, const std::string& name, std::size_t nodes);

/// The empty list for edits with `children` children.
Sample ListToEdit(const std::string& set, std::size_t children);

/// The documents of Debian packages, from the folder that `bench/fetch-documents` has filled.
/// Effects: std::runtime_error when one is missing.
std::vector<Sample> RealDocuments(const std::string& folder);

/// Sets what the text tells: the number of nodes, and what kinds of text there are.
void CountNodes(Sample& sample);

/// The contents of a file. Effects: std::runtime_error when it cannot be read.
std::string Contents(const std::string& path);

}  // namespace bench

#endif
