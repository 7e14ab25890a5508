#include "Operation.h"

#include <stdexcept>

namespace bench {

const std::vector<OperationName>& AllOperations() {
  static const std::vector<OperationName> operations = {
      {Operation::kLoad, "load", "load"},
      {Operation::kLoadAndDestroy, "load-destroy", "load and destroy"},
      {Operation::kDestroy, "destroy", "destroy"},
      {Operation::kWrite, "write", "write"},
      {Operation::kText, "text", "text of the root"},
      {Operation::kTextReferences, "text-references", "text with references"},
      {Operation::kSelectName, "select-name", "select all `//name`"},
      {Operation::kSelectAttribute, "select-attribute", "select all `//name[@attr='value']`"},
      {Operation::kSelectPath, "select-path", "select all `/a/b/c`"},
      {Operation::kFirstFound, "first-found", "select first, found"},
      {Operation::kFirstAbsent, "first-absent", "select first, not there"},
      {Operation::kCompare, "compare", "compare with an equal tree"},
      {Operation::kAppend, "append", "append one by one"},
      {Operation::kInsertFirst, "insert-first", "insert before the first"},
      {Operation::kRemoveFirst, "remove-first", "remove the first"},
  };
  return operations;
}

const OperationName& NameOf(Operation operation) {
  for (const OperationName& known : AllOperations()) {
    if (known.operation == operation) return known;
  }
  throw std::logic_error("an operation without a name");
}

const std::vector<Operation>& PlottedOperations() {
  static const std::vector<Operation> operations = {
      Operation::kLoad, Operation::kDestroy,         Operation::kWrite,
      Operation::kText, Operation::kSelectAttribute, Operation::kCompare,
  };
  return operations;
}

bool IsEdit(Operation operation) {
  return operation == Operation::kAppend || operation == Operation::kInsertFirst ||
         operation == Operation::kRemoveFirst;
}

}  // namespace bench
