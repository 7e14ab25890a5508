#include <algorithm>

#include "results/Figures.h"
#include "results/Sections.h"
#include "results/Statistics.h"
#include "results/Table.h"

namespace bench {

void WriteGrowth(std::ostream& out, const Results& results) {
  Table table({"operation", "document", "nodes", "ns a node", "nodes", "ns a node", "ratio",
               "ratio of the plain tree"});
  const std::vector<GrowthFigure> plain = GrowthFigures(results, kPlain);
  std::size_t i = 0;
  for (const GrowthFigure& figure : GrowthFigures(results, kOurs)) {
    const std::string beside = i < plain.size() ? Ratio(plain[i].ratio) : "n/a";
    table.AddRow({figure.operation, figure.sample, std::to_string(figure.fewNodes),
                  Fixed(figure.nanosecondsFew, 2), std::to_string(figure.manyNodes),
                  Fixed(figure.nanosecondsMany, 2), Fixed(figure.ratio, 2), beside});
    ++i;
  }
  table.Write(out);
}

void WriteExtremes(std::ostream& out, const Results& results) {
  Table table({"tree", "nodes", "step", "ms", "ns a node"});
  for (const Result& result : results.All()) {
    if (result.set != "extreme") continue;
    std::string step = result.operation;
    std::replace(step.begin(), step.end(), '_', ' ');
    const bool isDone = result.operation != kNotDone;
    const double nanoseconds = Median(result.values);
    table.AddRow({result.sample, std::to_string(result.nodes), step,
                  isDone ? Fixed(nanoseconds / 1e6, 1) : "-",
                  isDone ? Fixed(nanoseconds / static_cast<double>(result.nodes), 1) : "-"});
  }
  table.Write(out);
}

}  // namespace bench
