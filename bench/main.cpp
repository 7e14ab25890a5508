#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <exception>
#include <fstream>
#include <iostream>
#include <regex>
#include <stdexcept>

#include "Child.h"
#include "Extremes.h"
#include "Memory.h"
#include "Operation.h"

// xmldom-bench COMMAND FILE [WORD...]: does one thing of what `scripts/bench` is made of, and
// appends what it measures to FILE.

namespace bench {

namespace {

typedef std::vector<std::string> Words;

const std::size_t kSmallNodes = 2000;    // of a document whose tree fits the cache of a core
const std::size_t kLargeNodes = 100000;  // of one whose tree does not

/// How often something is done between two looks at the clock that has to be prepared each time:
/// so often that some milliseconds pass.
std::int64_t RepetitionsOfPrepared(const Sample& sample) {
  return std::max<std::int64_t>(kLargeNodes / sample.nodes, 1);
}

/// One repetition that the benchmark library asks for. It has a process of its own.
void Measure(const Operation& operation, const Library& library, const Sample& sample,
             benchmark::State& state) {
  double seconds = 0;
  try {
    seconds =
        ResultOfChild([&] { return SecondsOf(operation, library, sample, state.max_iterations); });
  } catch (const std::exception& exception) {
    std::cerr << library.name << ", " << operation.name << ", " << sample.name << ": "
              << exception.what() << std::endl;
    state.SkipWithError(exception.what());
  }
  for (auto _ : state) {
    state.SetIterationTime(seconds / static_cast<double>(state.max_iterations));
  }
  state.counters["nodes"] = static_cast<double>(sample.nodes);
  state.counters["bytes"] = static_cast<double>(sample.text.size());
}

/// Registers one benchmark for each of the libraries that offer the operation, and tries it out:
/// selections have to find the same number of nodes.
/// Effects: std::runtime_error when one does not do what the others do.
void Register(const Operation& operation, const Sample& sample, const Words& libraries) {
  const std::regex filter(benchmark::GetBenchmarkFilter(), std::regex::extended);
  std::size_t expected = kNotOffered;
  for (const std::string& libraryName : libraries) {
    const std::string name = operation.name + "/" + sample.set + "/" + sample.name + "/" +
                             std::to_string(sample.nodes) + "/" + libraryName;
    if (!std::regex_search(name, filter)) continue;
    const Library& library = FindLibrary(libraryName);
    const std::size_t outcome = TryOut(operation, library, sample);
    if (outcome == kNotOffered) continue;
    if (expected == kNotOffered) expected = outcome;
    if (outcome != expected) {
      throw std::runtime_error(name + ": " + std::to_string(outcome) + " where others have " +
                               std::to_string(expected));
    }
    benchmark::internal::Benchmark* registered = benchmark::RegisterBenchmark(
        name.c_str(), [&](benchmark::State& state) { Measure(operation, library, sample, state); });
    registered->UseManualTime();
    if (!operation.isRepeatable) registered->Iterations(RepetitionsOfPrepared(sample));
  }
}

/// Measures each operation that suits all of the samples, with all libraries and samples in turns.
void MeasureTogether(const std::vector<Sample>& samples, const Words& libraries,
                     std::ostream& results) {
  std::cerr << "   " << samples.front().set << ", " << samples.front().name << ' ' << std::flush;
  for (const Operation& operation : AllOperations()) {
    bool isSuited = true;
    for (const Sample& sample : samples) isSuited = isSuited && Suits(operation, sample);
    if (!isSuited) continue;
    benchmark::ClearRegisteredBenchmarks();
    for (const Sample& sample : samples) Register(operation, sample, libraries);
    benchmark::JSONReporter reporter;
    std::ostream nowhere(nullptr);
    reporter.SetOutputStream(&results);
    reporter.SetErrorStream(&nowhere);  // It complains when the filter leaves nothing to do.
    benchmark::RunSpecifiedBenchmarks(&reporter);
    std::cerr << '.' << std::flush;
  }
  std::cerr << '\n';
}

Words AllNames() {
  Words names;
  for (const Library& library : AllLibraries()) names.push_back(library.name);
  return names;
}

void MeasureShapes(const std::string& set, std::size_t nodes, std::ostream& results) {
  for (const Shape& shape : AllShapes()) {
    MeasureTogether({MakeSample(set, shape.name, nodes)}, AllNames(), results);
  }
}

void Small(const Words&, std::ostream& results) {
  MeasureShapes("small", kSmallNodes, results);
  MeasureTogether({ListToEdit("small", 1000)}, AllNames(), results);
  MeasureTogether({ListToEdit("small", 10000)}, AllNames(), results);
}

void Large(const Words&, std::ostream& results) { MeasureShapes("large", kLargeNodes, results); }

/// The word is the folder of the documents.
void Real(const Words& words, std::ostream& results) {
  for (const Sample& sample : RealDocuments(words.at(0))) {
    MeasureTogether({sample}, AllNames(), results);
  }
}

/// Documents and lists, each together with one that is much larger. The plain tree shows what the
/// caches make of any linked tree.
void Growth(const Words&, std::ostream& results) {
  const Words libraries = {"xmldom", "plain"};
  for (const Shape& shape : AllShapes()) {
    MeasureTogether({MakeSample("growth", shape.name, kLargeNodes),
                     MakeSample("growth", shape.name, 10 * kLargeNodes)},
                    libraries, results);
  }
  MeasureTogether({ListToEdit("growth", 10000), ListToEdit("growth", 1000000)}, libraries, results);
}

/// One shape in sizes from 10^3 to 10^6 nodes, two a decade.
void Scale(const Words&, std::ostream& results) {
  for (int halves = 6; halves <= 12; ++halves) {
    const std::size_t nodes = static_cast<std::size_t>(std::pow(10.0, halves / 2.0));
    MeasureTogether({MakeSample("scale", "device", nodes)}, AllNames(), results);
  }
}

/// The words are a library and a file.
void Load(const Words& words, std::ostream& results) {
  MeasureLoad(FindLibrary(words.at(0)), words.at(1), results);
}

void Extremes(const Words&, std::ostream& results) { MeasureExtremes(results); }

/// Writes the text of a large document of the shape that the word names.
void Document(const Words& words, std::ostream& results) {
  results << MakeSample("large", words.at(0), kLargeNodes).text;
}

/// Does one operation once for a profiler; the words are its name and that of a library. Writes
/// how many nodes or children it was done with.
void Profile(const Words& words, std::ostream& results) {
  const Operation& operation = FindOperation(words.at(0));
  const Sample sample =
      operation.isEdit ? ListToEdit("profile", 1000) : MakeSample("profile", "flat", kSmallNodes);
  SecondsOf(operation, FindLibrary(words.at(1)), sample, 1);
  results << sample.nodes << '\n';
}

struct Command {
  const char* name;
  void (*run)(const Words& words, std::ostream& results);
};

const Command kCommands[] = {
    {"small", Small},       {"large", Large}, {"real", Real},
    {"growth", Growth},     {"scale", Scale}, {"extremes", Extremes},
    {"document", Document}, {"load", Load},   {"profile", Profile},
};

/// What the file of results tells besides the library's own context.
void AddContext() {
  std::string versions;
  for (const Library& library : AllLibraries()) {
    versions += (versions.empty() ? "" : ", ") + library.version;
  }
  benchmark::AddCustomContext("libraries", versions);
  benchmark::AddCustomContext("compiler", XMLDOM_BENCH_COMPILER);
}

int Run(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  AddContext();
  for (const Command& command : kCommands) {
    if (argc < 3 || std::string(argv[1]) != command.name) continue;
    // Debug lines are made and written, but nothing waits for a terminal or a disk.
    if (std::freopen("/dev/null", "w", stdout) == nullptr) return 1;
    std::ofstream results(argv[2], std::ios::app);
    command.run(Words(argv + 3, argv + argc), results);
    return results.flush() ? 0 : 1;
  }
  std::cerr << "usage: xmldom-bench COMMAND FILE [WORD...] [--benchmark_...]\n";
  return 2;
}

}  // namespace

const std::vector<Library>& AllLibraries() {
  static const std::vector<Library> libraries = {
      Xmldom(), PlainTree(), ExpatOnly(), Pugixml(), Libxml2(), Tinyxml2(), XercesC(),
  };
  return libraries;
}

const Library& FindLibrary(const std::string& name) {
  for (const Library& library : AllLibraries()) {
    if (library.name == name) return library;
  }
  throw std::runtime_error("no library " + name);
}

}  // namespace bench

int main(int argc, char** argv) {
  try {
    return bench::Run(argc, argv);
  } catch (const std::exception& exception) {
    std::cerr << "xmldom-bench: " << exception.what() << '\n';
    return 1;
  }
}
