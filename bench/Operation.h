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

/// Something that is measured of each library.
struct Operation {
  std::string name;  // in results
  bool isEdit;       // of a ListToEdit; all others work on documents
  bool
      isRepeatable;  // leaves the tree as it was, so that it can be done with one tree all the time
  /// Makes what the operation needs; the clock stands still.
  void (*prepare)(Work& work);
  /// Does the operation. Result: what all libraries have to agree in, above 0; or kNotOffered.
  std::size_t (*act)(Work& work);
};

/// All operations, in the order of the tables.
const std::vector<Operation>& AllOperations();

/// The operation of that name, which must exist.
const Operation& FindOperation(const std::string& name);

/// Whether an operation is measured on a document at all. For each text with references xmldom
/// prints a debug line with all text collected so far, which would be measured and nothing else.
bool Suits(const Operation& operation, const Sample& sample);

/// Does an operation once. Result: that of the operation; kNotOffered also when the library refuses
/// the document, or needs namespaces in paths where the document has one.
/// Effects: std::runtime_error when the operation does nothing.
std::size_t TryOut(const Operation& operation, const Library& library, const Sample& sample);

/// Does an operation `repetitions` times, after half as many that warm heap and caches up.
/// Result: the processor time of all repetitions, in seconds.
double SecondsOf(const Operation& operation, const Library& library, const Sample& sample,
                 std::int64_t repetitions);

/// The processor time that the calling thread has used.
double ProcessorSeconds();

}  // namespace bench

#endif
