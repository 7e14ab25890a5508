#include <algorithm>
#include <exception>
#include <iostream>
#include <stdexcept>

#include "commands/Commands.h"
#include "commands/Options.h"
#include "commands/Running.h"
#include "harness/SmallStack.h"
#include "measure/Child.h"
#include "measure/Extremes.h"
#include "measure/NullOutput.h"
#include "results/Sections.h"

namespace bench {

namespace {

const Extreme& FindExtreme(const std::string& name) {
  const std::vector<Extreme>& extremes = AllExtremes();
  const auto found = std::find_if(extremes.begin(), extremes.end(),
                                  [&name](const Extreme& each) { return each.name == name; });
  if (found == extremes.end()) throw std::runtime_error("no tree " + name);
  return *found;
}

/// Tables have spaces in names, the fields of results have none.
std::string AsField(std::string text) {
  std::replace(text.begin(), text.end(), ' ', '_');
  return text;
}

}  // namespace

void MeasureExtremes(const CommandWords& words) {
  const Options options(words, {"results"});
  for (const Extreme& extreme : AllExtremes()) {
    const Progress progress(extreme.name);
    for (std::size_t nodes : extreme.sizes) {
      const ChildOutcome child =
          RunChild({"one-extreme", "--results", options.Get("results"), "--tree", extreme.name,
                    "--nodes", std::to_string(nodes)},
                   "");
      if (!child.ended) {
        Results::AppendTo(options.Get("results"),
                          Result{kNotDone, "extreme", extreme.name, nodes, kOurs, {1}});
      }
      Progress::Dot();
    }
  }
}

void MeasureOneExtreme(const CommandWords& words) {
  const Options options(words, {"results", "tree", "nodes"});
  const Extreme& extreme = FindExtreme(options.Get("tree"));
  const std::size_t nodes = std::stoul(options.Get("nodes"));
  const std::string path = options.Get("results");
  const StepDone record = [&](const std::string& step, double seconds) {
    Results::AppendTo(
        path, Result{AsField(step), "extreme", extreme.name, nodes, kOurs, {seconds * 1e9}});
  };
  const NullOutput nowhere;
  std::exception_ptr failure;
  OnSmallStack([&] {
    try {
      extreme.run(nodes, record);
    } catch (...) {
      failure = std::current_exception();
    }
  });
  if (failure != nullptr) std::rethrow_exception(failure);
}

}  // namespace bench
