#ifndef XMLDOM_BENCH_OPERATION_H
#define XMLDOM_BENCH_OPERATION_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "Library.h"
#include "documents/Documents.h"

namespace bench {

/// One library and one document, and what an operation has made of them so far.
struct Work {
  const Library& library;
  const Sample& sample;
  TreePointer tree;
  TreePointer other;

  TreePointer Load() const { return library.load(sample.text); }
};

/// What an operation is done with: ordinary documents, trees of extreme depth and breadth, or a
/// list that is edited.
enum Kind { kDocuments = 1, kExtremes = 2, kLists = 4 };

/// Something that is measured of each library.
struct Operation {
  std::string name;   // in results
  int kinds;          // the Kinds it is measured on
  bool isRepeatable;  // leaves the tree as it was, so that one tree does for all repetitions
  /// Makes what the operation needs; the clock stands still.
  void (*prepare)(Work& work);
  /// Does the operation. Result: what all libraries have to agree in, above 0; or kNotOffered.
  std::size_t (*act)(Work& work);
};

/// All operations. Those of one name differ in their kinds.
const std::vector<Operation>& AllOperations();

/// What came of an operation.
struct Outcome {
  std::size_t
      result;      // that of the operation; kNotOffered also when the library refuses a document
  double seconds;  // of processor time for all repetitions
};

/// Does an operation `repetitions` times, after half as many that warm heap and caches up.
/// Effects: std::runtime_error when the operation does nothing.
Outcome Do(const Operation& operation, const Library& library, const Sample& sample,
           std::int64_t repetitions);

}  // namespace bench

#endif
