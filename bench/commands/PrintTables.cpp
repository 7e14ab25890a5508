#include <iostream>
#include <stdexcept>

#include "commands/Commands.h"
#include "commands/Options.h"
#include "results/Summary.h"

namespace bench {

void PrintTables(const CommandWords& words) {
  const Options options(words, {"results", "documents"});
  Results results;
  results.Read(options.Get("results"));
  const std::string set = options.Get("documents", "small") == "all" ? "" : "small";
  WriteDocumentRatios(std::cout, results, set);
  std::cout << '\n';
  WriteRatios(std::cout, results, set);
  std::cout << '\n';
  WriteSpeedGoals(std::cout, results, set);
}

}  // namespace bench
