#include <algorithm>

#include "results/Figures.h"
#include "results/Goals.h"
#include "results/Sections.h"
#include "results/Table.h"

namespace bench {

namespace {

/// The goals that are no ratios between libraries.
const double kMostBytesPerNode = 145;
const double kMostPeakTexts = 2.0;
const double kPeakAllowance = 128 * 1024;  // what Expat needs besides, and whole pages
const double kMostGrowth = 1.5;
const double kMostChildGrowth = 3.0;
const double kMostSearchRatio = 2.0;
const double kMostKibibytes = 112;

const char* Verdict(bool isMet) { return isMet ? "yes" : "NO"; }

std::string WithWorst(const Comparison& comparison) {
  if (comparison.mean <= 0) return "n/a";
  return Ratio(comparison.mean) + " (" + Ratio(comparison.worst) + " on " + comparison.worstSample +
         ")";
}

void AddSpeedGoals(Table& table, const Results& results) {
  for (const SpeedGoal& goal : SpeedGoals()) {
    const OperationName& name = NameOf(goal.operation);
    const Comparison small = Compare(results, name.name, "small", kOurs, goal.base);
    const Comparison all = Compare(results, name.name, "", kOurs, goal.base);
    std::string limit = "at most " + Fixed(goal.mean, 2) + " times " + goal.base;
    if (goal.worst > 0) limit += ", on none above " + Fixed(goal.worst, 2);
    table.AddRow({name.title, limit, WithWorst(small), WithWorst(all),
                  Verdict(small.mean > 0 && IsMet(goal, small))});
  }
}

/// The growth that is worst among the edits, or among all else.
void AddGrowthGoal(Table& table, const Results& results, bool ofEdits, double most) {
  GrowthFigure worst = {};
  for (const GrowthFigure& figure : GrowthFigures(results, kOurs)) {
    if ((figure.sample == "children") == ofEdits && figure.ratio > worst.ratio) worst = figure;
  }
  double plain = 0;
  for (const GrowthFigure& figure : GrowthFigures(results, kPlain)) {
    const bool isSame = figure.operation == worst.operation && figure.sample == worst.sample;
    if (isSame) plain = figure.ratio;
  }
  const std::string nodes = ofEdits ? "time a child at 10^6 children" : "time a node at 10^6 nodes";
  const std::string base = ofEdits ? "at 10^4" : "at 10^5";
  table.AddRow({nodes, "at most " + Fixed(most, 1) + " times that " + base,
                worst.ratio > 0 ? Ratio(worst.ratio) + " (" + worst.operation + ", " +
                                      worst.sample + "; plain " + Ratio(plain) + ")"
                                : "n/a",
                "", Verdict(worst.ratio > 0 && worst.ratio <= most)});
}

void AddMemoryGoals(Table& table, const Results& results) {
  const double bytes = BytesPerNode(results, "records", "flat", kOurs);
  const double all = BytesPerNode(results, "heap", "flat", kOurs);
  table.AddRow(
      {"heap bytes a node, flat records: the records and their copies",
       "at most " + Fixed(kMostBytesPerNode, 0),
       Fixed(bytes, 1) + " (" + Fixed(all, 1) + " with the parser and its copy of the text)", "",
       Verdict(bytes > 0 && bytes <= kMostBytesPerNode)});
  double most = 0;
  std::string sample;
  for (const PeakFigure& figure : PeakFigures(results)) {
    const double texts = (figure.bytes - kPeakAllowance) / figure.textBytes;
    if (texts <= most) continue;
    most = texts;
    sample = figure.sample;
  }
  table.AddRow(
      {"peak of loading a file, without the tree",
       "Expat's copy of the text, and at most once the text besides: " + Fixed(kMostPeakTexts, 1) +
           " texts and 128 KiB",
       Ratio(most) + " texts (" + sample + ")", "", Verdict(most > 0 && most <= kMostPeakTexts)});
}

void AddExtremeGoals(Table& table, const Results& results) {
  int done = 0;
  std::string missing;
  for (const Result& result : results.All()) {
    if (result.set != "extreme") continue;
    if (result.operation != kNotDone) {
      ++done;
    } else {
      missing +=
          (missing.empty() ? "" : ", ") + result.sample + " of " + std::to_string(result.nodes);
    }
  }
  table.AddRow({"10^6 levels and 10^7 siblings on a stack of 256 KiB", "everything is done",
                missing.empty() ? std::to_string(done) + " steps done" : "not done: " + missing, "",
                Verdict(done > 0 && missing.empty())});

  const std::size_t levels = 100000;
  const double all = ExtremeNanoseconds(results, "select_all_`//a/b`", "nested-search", levels);
  const double first = ExtremeNanoseconds(results, "select_first_`//a/b`", "nested-search", levels);
  const double ratio = all > 0 ? first / all : 0;
  table.AddRow({"`//a/b` that fails on 10^5 nested `a`, select first",
                "at most " + Fixed(kMostSearchRatio, 1) + " times select all", Ratio(ratio), "",
                Verdict(ratio > 0 && ratio <= kMostSearchRatio)});
}

void AddSizeGoal(Table& table, const Results& results) {
  const double size = LibraryKibibytes(results, kOurs);
  table.AddRow({"both shared libraries, stripped, text and data",
                "at most " + Fixed(kMostKibibytes, 0) + " KiB", Fixed(size, 0) + " KiB", "",
                Verdict(size > 0 && size <= kMostKibibytes)});
}

}  // namespace

void WriteGoals(std::ostream& out, const Results& results) {
  Table table({"what", "goal", "small documents", "all documents", "met"});
  AddSpeedGoals(table, results);
  AddGrowthGoal(table, results, true, kMostChildGrowth);
  AddMemoryGoals(table, results);
  AddGrowthGoal(table, results, false, kMostGrowth);
  AddExtremeGoals(table, results);
  AddSizeGoal(table, results);
  table.Write(out);
}

}  // namespace bench
