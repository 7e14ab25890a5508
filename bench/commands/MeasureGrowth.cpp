#include "commands/Commands.h"
#include "commands/Options.h"
#include "commands/Running.h"
#include "documents/Collections.h"

namespace bench {

namespace {

const double kSeconds = 0.02;
const std::size_t kFewChildren = 10000;
const std::size_t kManyChildren = 1000000;

/// Measures one operation on two documents of different size, in turns. The plain tree shows what
/// the caches make of any linked tree.
void MeasurePair(Operation operation, const Sample& small, const Sample& large,
                 const std::string& resultsPath) {
  if (!Suits(operation, small) || !Suits(operation, large)) return;
  std::vector<Entry> entries;
  for (const char* name : {kOurs, kPlain}) {
    for (const Sample* sample : {&small, &large}) {
      entries.push_back(Entry{operation, FindLibrary(name), sample});
    }
  }
  RunTurns(entries, TurnOptions{kTurns, kSeconds}, resultsPath);
}

}  // namespace

void MeasureGrowth(const CommandWords& words) {
  const Options options(words, {"results"});
  const std::string results = options.Get("results");
  for (const Shape& shape : AllShapes()) {
    const Progress progress(shape.name);
    const Sample small = MakeSample(shape, "growth", kLargeNodes);
    const Sample large = MakeSample(shape, "growth", 10 * kLargeNodes);
    for (const OperationName& name : AllOperations()) {
      if (!IsEdit(name.operation)) MeasurePair(name.operation, small, large, results);
    }
  }
  const Progress progress("children");
  const Sample few = Children("growth", kFewChildren);
  const Sample many = Children("growth", kManyChildren);
  for (const OperationName& name : AllOperations()) {
    if (IsEdit(name.operation)) MeasurePair(name.operation, few, many, results);
  }
}

}  // namespace bench
