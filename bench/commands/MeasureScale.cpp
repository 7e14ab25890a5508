#include <cmath>

#include "commands/Commands.h"
#include "commands/Options.h"
#include "commands/Running.h"
#include "documents/Collections.h"

namespace bench {

namespace {

const double kSeconds = 0.02;
const int kStepsPerDecade = 2;

std::vector<Sample> GrowingDocuments() {
  const int first = 3 * kStepsPerDecade;
  const int last = 6 * kStepsPerDecade;
  std::vector<Sample> samples;
  for (int step = first; step <= last; ++step) {
    const double nodes = std::pow(10.0, static_cast<double>(step) / kStepsPerDecade);
    samples.push_back(MakeSample(FindShape("device"), "scale", static_cast<std::size_t>(nodes)));
  }
  return samples;
}

}  // namespace

void MeasureScale(const CommandWords& words) {
  const Options options(words, {"results"});
  const std::vector<Sample> samples = GrowingDocuments();
  for (Operation operation : PlottedOperations()) {
    const Progress progress(NameOf(operation).name);
    for (const Sample& sample : samples) {
      RunTurns(Entries(operation, sample, LibraryPointers()), TurnOptions{kTurns, kSeconds},
               options.Get("results"));
    }
  }
}

}  // namespace bench
