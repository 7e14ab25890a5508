#include <fstream>
#include <stdexcept>

#include "commands/Commands.h"
#include "commands/Options.h"
#include "commands/Running.h"
#include "results/Statistics.h"
#include "results/Summary.h"
#include "results/Table.h"

namespace bench {

namespace {

/// Nanoseconds a node: a row for each size, a column for each library that has any.
void WriteScale(std::ostream& out, const Results& results, const std::string& operation) {
  std::vector<std::string> libraries;
  for (const Library* library : LibraryPointers()) {
    if (!results.Of(operation, "scale", library->Name()).empty()) {
      libraries.push_back(library->Name());
    }
  }
  out << "nodes";
  for (const std::string& library : libraries) out << ' ' << library;
  out << '\n';
  for (const Result* ours : results.Of(operation, "scale", kOurs)) {
    const double nodes = static_cast<double>(ours->nodes);
    out << ours->nodes;
    for (const std::string& library : libraries) {
      const Result* result = results.Beside(*ours, library);
      out << ' ' << PlotValue(result == nullptr ? 0 : Median(result->values) / nodes);
    }
    out << '\n';
  }
}

}  // namespace

void WritePlotData(const CommandWords& words) {
  const Options options(words, {"results", "folder"});
  Results results;
  results.Read(options.Get("results"));
  const std::string folder = options.Get("folder");
  for (Operation operation : PlottedOperations()) {
    const std::string name = NameOf(operation).name;
    std::ofstream file(folder + "/" + name + ".dat");
    WriteScale(file, results, name);
    if (!file.flush()) throw std::runtime_error("cannot write to " + folder);
  }
  std::ofstream file(folder + "/ratios.dat");
  WriteRatioData(file, results, "small");
  if (!file.flush()) throw std::runtime_error("cannot write to " + folder);
}

}  // namespace bench
