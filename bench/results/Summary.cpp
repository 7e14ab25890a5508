#include "results/Summary.h"

#include "Library.h"
#include "results/Figures.h"
#include "results/Goals.h"
#include "results/Statistics.h"
#include "results/Table.h"

namespace bench {

namespace {

std::string Limit(double limit) { return limit > 0 ? Fixed(limit, 2) : "-"; }

/// What the ratios of an operation are multiples of.
std::string BaseOf(Operation operation) {
  switch (operation) {
    case Operation::kLoad:
      return "expat";
    case Operation::kLoadAndDestroy:
    case Operation::kDestroy:
    case Operation::kCompare:
      return "plain";
    default:
      return "pugixml";
  }
}

}  // namespace

void WriteSpeedGoals(std::ostream& out, const Results& results, const std::string& set) {
  Table table(
      {"operation", "in multiples of", "goal", "measured", "goal on any", "worst", "on", "met"});
  for (const SpeedGoal& goal : SpeedGoals()) {
    const OperationName& name = NameOf(goal.operation);
    const Comparison comparison = Compare(results, name.name, set, kOurs, goal.base);
    if (comparison.mean <= 0) continue;
    table.AddRow({name.title, goal.base, Limit(goal.mean), Ratio(comparison.mean),
                  Limit(goal.worst), Ratio(comparison.worst), comparison.worstSample,
                  IsMet(goal, comparison) ? "yes" : "NO"});
  }
  table.Write(out);
}

void WriteRatios(std::ostream& out, const Results& results, const std::string& set) {
  std::vector<std::string> header = {"operation", "in multiples of"};
  for (const std::unique_ptr<Library>& library : AllLibraries()) header.push_back(library->Name());
  Table table(header);
  for (const OperationName& operation : AllOperations()) {
    if (results.Of(operation.name, set, kOurs).empty()) continue;
    const std::string base = BaseOf(operation.operation);
    std::vector<std::string> row = {operation.title, base};
    for (const std::unique_ptr<Library>& library : AllLibraries()) {
      row.push_back(Ratio(Compare(results, operation.name, set, library->Name(), base).mean));
    }
    table.AddRow(row);
  }
  table.Write(out);
}

void WriteRatioData(std::ostream& out, const Results& results, const std::string& set) {
  out << "operation";
  for (const std::unique_ptr<Library>& library : AllLibraries()) out << ' ' << library->Name();
  out << '\n';
  for (const OperationName& operation : AllOperations()) {
    const std::string base = BaseOf(operation.operation);
    out << '"' << operation.name << " (" << base << ")\"";
    for (const std::unique_ptr<Library>& library : AllLibraries()) {
      const double ratio = Compare(results, operation.name, set, library->Name(), base).mean;
      out << ' ' << PlotValue(ratio);
    }
    out << '\n';
  }
}

void WriteDocumentRatios(std::ostream& out, const Results& results, const std::string& set) {
  Table table({"operation", "document", "nodes", "xmldom, ns a node", "in multiples of", "ratio"});
  for (const SpeedGoal& goal : SpeedGoals()) {
    const OperationName& name = NameOf(goal.operation);
    for (const Result* result : results.Of(name.name, set, kOurs)) {
      const Result* base = results.Beside(*result, goal.base);
      const double ratio = base == nullptr ? 0 : MedianRatio(result->values, base->values);
      const double nanoseconds = Median(result->values) / static_cast<double>(result->nodes);
      table.AddRow({name.title, result->sample, std::to_string(result->nodes),
                    Fixed(nanoseconds, 2), goal.base, Ratio(ratio)});
    }
  }
  table.Write(out);
}

}  // namespace bench
