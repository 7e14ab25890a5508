#include <benchmark/benchmark.h>

#include <cstdio>
#include <exception>
#include <iostream>
#include <map>

#include "commands/Commands.h"

// xmldom-bench COMMAND [--option value]...: measures xmldom beside its peers. `scripts/bench` runs
// the commands one after the other.

namespace {

typedef void (*Command)(const bench::CommandWords& words);

const std::map<std::string, Command>& Commands() {
  static const std::map<std::string, Command> commands = {
      {"operations", bench::MeasureOperations},
      {"scale", bench::MeasureScale},
      {"growth", bench::MeasureGrowth},
      {"memory", bench::MeasureMemory},
      {"one-load", bench::MeasureOneLoad},
      {"extremes", bench::MeasureExtremes},
      {"one-extreme", bench::MeasureOneExtreme},
      {"profile", bench::ProfileOperation},
      {"print", bench::PrintTables},
      {"page", bench::WritePage},
      {"plots", bench::WritePlotData},
  };
  return commands;
}

int Usage() {
  std::cerr << "usage: xmldom-bench COMMAND [--option value]...\ncommands:";
  for (const auto& command : Commands()) std::cerr << ' ' << command.first;
  std::cerr << '\n';
  return 2;
}

}  // namespace

int main(int argc, char** argv) {
  // Debug lines are collected before they are written, whatever standard output is.
  std::setvbuf(stdout, nullptr, _IOFBF, BUFSIZ);
  const auto command = Commands().find(argc > 1 ? argv[1] : "");
  if (command == Commands().end()) return Usage();
  char* benchmarkArguments[] = {argv[0], nullptr};
  int benchmarkArgumentCount = 1;
  benchmark::Initialize(&benchmarkArgumentCount, benchmarkArguments);
  try {
    command->second(bench::CommandWords(argv + 2, argv + argc));
  } catch (const std::exception& exception) {
    std::cerr << "xmldom-bench: " << exception.what() << '\n';
    return 1;
  }
  return 0;
}
