#include "commands/Running.h"

#include <iostream>

namespace bench {

std::vector<const Library*> LibraryPointers() {
  std::vector<const Library*> pointers;
  for (const std::unique_ptr<Library>& library : AllLibraries()) pointers.push_back(library.get());
  return pointers;
}

void RunTurns(const std::vector<Entry>& entries, const TurnOptions& options,
              const std::string& resultsPath) {
  for (const Result& result : TakeTurns(entries, options)) Results::AppendTo(resultsPath, result);
  Progress::Dot();
}

Progress::Progress(const std::string& subject) {
  std::cerr << "   " << subject << ' ' << std::flush;
}

Progress::~Progress() { std::cerr << '\n'; }

void Progress::Dot() { std::cerr << '.' << std::flush; }

}  // namespace bench
