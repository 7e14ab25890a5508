#ifndef XMLDOM_BENCH_COMMANDS_RUNNING_H
#define XMLDOM_BENCH_COMMANDS_RUNNING_H

#include <string>
#include <vector>

#include "measure/Turns.h"
#include "results/Figures.h"

namespace bench {

const int kTurns = 7;

std::vector<const Library*> LibraryPointers();

/// Takes the turns and appends the results to a file, with a dot for whoever waits.
void RunTurns(const std::vector<Entry>& entries, const TurnOptions& options,
              const std::string& resultsPath);

/// Tells on standard error what is being measured, and ends the line.
class Progress {
 public:
  explicit Progress(const std::string& subject);
  ~Progress();

  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  static void Dot();
};

}  // namespace bench

#endif
