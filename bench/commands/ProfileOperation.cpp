#include <algorithm>
#include <iostream>
#include <stdexcept>

#include "commands/Commands.h"
#include "commands/Options.h"
#include "commands/Running.h"
#include "documents/Collections.h"
#include "measure/ProfiledWork.h"

namespace bench {

namespace {

const std::size_t kChildren = 1000;

Sample FlatRecords() {
  for (const Shape& shape : AllShapes()) {
    if (std::string(shape.name) == "flat") return MakeSample(shape, "profile", kSmallNodes);
  }
  throw std::runtime_error("no flat records");
}

}  // namespace

void ProfileOperation(const CommandWords& words) {
  const Options options(words, {"operation", "library"});
  const std::string name = options.Get("operation");
  const auto operation =
      std::find_if(AllOperations().begin(), AllOperations().end(),
                   [&name](const OperationName& candidate) { return candidate.name == name; });
  if (operation == AllOperations().end()) throw std::runtime_error("no operation " + name);
  const Library* library = FindLibrary(options.Get("library"));
  if (library == nullptr) throw std::runtime_error("no library " + options.Get("library"));
  const Sample sample =
      IsEdit(operation->operation) ? Children("profile", kChildren) : FlatRecords();
  ProfileOnce(operation->operation, *library, sample);
  std::cout << sample.nodes << std::endl;
}

}  // namespace bench
