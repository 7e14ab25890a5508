#include <stdexcept>

#include "commands/Commands.h"
#include "commands/Options.h"
#include "commands/Running.h"
#include "documents/Collections.h"

namespace bench {

namespace {

const std::size_t kFewChildren = 1000;
const std::size_t kManyChildren = 10000;

std::vector<Sample> Documents(const Options& options) {
  std::vector<Sample> samples = OneOfEachShape("small", kSmallNodes);
  if (options.Get("documents", "small") == "all") {
    for (const Sample& sample : OneOfEachShape("large", kLargeNodes)) samples.push_back(sample);
    for (const Sample& sample : RealDocuments(options.Get("real"))) samples.push_back(sample);
  }
  samples.push_back(Children("small", kFewChildren));
  samples.push_back(Children("small", kManyChildren));
  return samples;
}

std::vector<Operation> Chosen(const std::string& name) {
  std::vector<Operation> operations;
  for (const OperationName& known : AllOperations()) {
    if (name.empty() || known.name == name) operations.push_back(known.operation);
  }
  if (operations.empty()) throw std::runtime_error("no operation " + name);
  return operations;
}

}  // namespace

void MeasureOperations(const CommandWords& words) {
  const Options options(words, {"results", "documents", "real", "operation", "seconds"});
  const TurnOptions turns = {kTurns, std::stod(options.Get("seconds", "0.02"))};
  const std::vector<Sample> samples = Documents(options);
  for (Operation operation : Chosen(options.Get("operation", ""))) {
    const Progress progress(NameOf(operation).name);
    for (const Sample& sample : samples) {
      if (!Suits(operation, sample)) continue;
      RunTurns(Entries(operation, sample, LibraryPointers()), turns, options.Get("results"));
    }
  }
}

}  // namespace bench
