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
  std::string absent;     // a path without a match
};

/// A document to measure with.
struct Sample {
  std::string text;
  Paths paths;
  std::size_t nodes = 0;       // elements, attributes, and texts that are not blank
  bool hasText = false;        // some text is not blank
  bool hasReferences = false;  // some text has a character or entity reference
};

/// The names of all generated documents of the ordinary kind, and those of the real ones.
std::vector<std::string> ShapeNames();
std::vector<std::string> RealDocumentNames();

/// A generated document of about `nodes` nodes, which are not counted; `name` is one of
/// ShapeNames(). The seed is fixed: the same size gives the same bytes.
Sample Generate(const std::string& name, std::size_t nodes);

/// The document of that name, which is made when it is asked for first and counted then:
/// - one of ShapeNames() with about `nodes` nodes;
/// - one of RealDocumentNames(), from the folder that `bench/fetch-documents` has filled;
/// - "children": an empty list, whose `nodes` children an edit adds or removes;
/// - "levels" and "siblings": so many elements in each other, or below one parent.
/// Effects: std::runtime_error when there is none.
const Sample& FindSample(const std::string& name, std::size_t nodes);

/// Sets what the text tells: the number of nodes, and what kinds of text there are. It is what the
/// plain tree (libraries/PlainTree.cpp) has after its load.
/// Effects: std::runtime_error when the text is not well-formed.
void CountNodes(Sample& sample);

/// The contents of a file. Effects: std::runtime_error when it cannot be read.
std::string Contents(const std::string& path);

/// `count` pieces one behind the other.
std::string Repeated(const std::string& piece, std::size_t count);

}  // namespace bench

#endif
