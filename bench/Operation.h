#ifndef XMLDOM_BENCH_OPERATION_H
#define XMLDOM_BENCH_OPERATION_H

#include <string>
#include <vector>

namespace bench {

/// What is measured of each library.
enum class Operation {
  kLoad,
  kLoadAndDestroy,
  kDestroy,
  kWrite,
  kText,
  kTextReferences,
  kSelectName,
  kSelectAttribute,
  kSelectPath,
  kFirstFound,
  kFirstAbsent,
  kCompare,
  kAppend,
  kInsertFirst,
  kRemoveFirst,
};

struct OperationName {
  Operation operation;
  std::string name;   // on the command line and in results
  std::string title;  // in tables
};

/// All operations, in the order of the tables.
const std::vector<OperationName>& AllOperations();

const OperationName& NameOf(Operation operation);

/// Those whose time is plotted against the number of nodes.
const std::vector<Operation>& PlottedOperations();

/// Whether an operation edits the children of one element, and needs no document for it.
bool IsEdit(Operation operation);

}  // namespace bench

#endif
