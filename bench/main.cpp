#include <benchmark/benchmark.h>

#include <algorithm>
#include <exception>
#include <iostream>
#include <stdexcept>
#include <vector>

#include "Child.h"
#include "Memory.h"
#include "Operation.h"
#include "Records.h"
#include "Threads.h"
#include "harness/SmallStack.h"

// The program xmldom-bench, which does one thing of what `scripts/bench` is made of. The options of
// the benchmark library say what is measured of a set, how often, and where that is written.

namespace bench {

namespace {

typedef std::vector<std::string> Words;

const std::size_t kSmallNodes = 2000;    // of a document whose tree fits the cache of a core
const std::size_t kLargeNodes = 100000;  // of one whose tree does not

const std::vector<Library>& AllLibraries() {
  static const std::vector<Library> libraries = {
      Xmldom(), PlainTree(), ExpatOnly(), Pugixml(), Libxml2(), Tinyxml2(), XercesC(),
  };
  return libraries;
}

/// The item of that name, which must exist.
template <class Item>
const Item& Find(const std::vector<Item>& items, const std::string& name) {
  for (const Item& item : items) {
    if (item.name == name) return item;
  }
  throw std::runtime_error("there is no " + name);
}

/// Documents of one kind, each in all of the sizes, which take turns with each other.
struct Set {
  std::string name;
  Kind kind;
  Words documents;
  std::vector<std::size_t> sizes;  // about how many nodes; 0 where the document tells
  Words libraries;
};

const std::vector<Set>& AllSets() {
  Words all;
  for (const Library& library : AllLibraries()) all.push_back(library.name);
  // The plain tree shows what the caches make of any linked tree that grows.
  const Words linked = {"xmldom", "plain"};
  static const std::vector<Set> sets = {
      {"small", kDocuments, ShapeNames(), {kSmallNodes}, all},
      {"small", kLists, {"children"}, {1000, 10000}, all},
      {"large", kDocuments, ShapeNames(), {kLargeNodes}, all},
      {"real", kDocuments, RealDocumentNames(), {0}, all},
      {"growth", kDocuments, ShapeNames(), {kLargeNodes, 10 * kLargeNodes}, linked},
      {"growth", kLists, {"children"}, {10000, 1000000}, linked},
      {"scale", kDocuments, {"device"}, {1000, 3162, 10000, 31622, 100000, 316227, 1000000}, all},
      {"extremes", kExtremes, {"levels"}, {100000, 1000000}, {"xmldom"}},
      {"extremes", kExtremes, {"siblings"}, {1000000, 10000000}, {"xmldom"}},
  };
  return sets;
}

/// What one benchmark does.
struct Measurement {
  const Operation& operation;
  const Set& set;
  std::string document;
  std::size_t nodes;
  const Library& library;
  /// What the first of the libraries had as the result, in which the others have to agree with it;
  /// 0 before.
  std::shared_ptr<std::size_t> agreed;
};

/// Measures one repetition, in a process of its own; trees of extreme depth and breadth on a small
/// stack there.
Outcome OutcomeOf(const Measurement& measurement, const Sample& sample, std::int64_t repetitions) {
  return OutcomeOfChild([&] {
    Outcome outcome = {};
    const auto work = [&] {
      outcome = Do(measurement.operation, measurement.library, sample, repetitions);
    };
    if (measurement.set.kind == kExtremes) {
      OnSmallStack(work);
    } else {
      work();
    }
    return outcome;
  });
}

void Measure(const Measurement& measurement, benchmark::State& state) {
  Outcome outcome = {kNotOffered, 0};
  try {
    const Sample& sample = FindSample(measurement.document, measurement.nodes);
    outcome = OutcomeOf(measurement, sample, state.max_iterations);
    state.counters["nodes"] = static_cast<double>(sample.nodes);
    if (outcome.result == kNotOffered) {
      state.SkipWithError("not offered");
    } else if (*measurement.agreed == 0) {
      *measurement.agreed = outcome.result;
    } else if (outcome.result != *measurement.agreed) {
      throw std::runtime_error("libraries do not agree");
    }
  } catch (const std::exception& exception) {
    state.SkipWithError(exception.what());
  }
  for (auto _ : state) {
    state.SetIterationTime(outcome.seconds / static_cast<double>(state.max_iterations));
  }
}

/// The statistic that the page shows. What else runs on the machine only ever adds to a time.
double Least(const std::vector<double>& values) {
  return *std::min_element(values.begin(), values.end());
}

/// Registers the benchmarks of an operation on one document in all of its sizes.
void Register(const Operation& operation, const Set& set, const std::string& document) {
  for (const std::size_t nodes : set.sizes) {
    const auto agreed = std::make_shared<std::size_t>(0);
    for (const std::string& library : set.libraries) {
      const std::string size = nodes == 0 ? "all" : std::to_string(nodes);
      const std::string name =
          operation.name + "/" + set.name + "/" + document + "/" + size + "/" + library;
      const Measurement measurement = {
          operation, set, document, nodes, Find(AllLibraries(), library), agreed};
      benchmark::internal::Benchmark* registered = benchmark::RegisterBenchmark(
          name.c_str(), [measurement](benchmark::State& state) { Measure(measurement, state); });
      registered->UseManualTime();
      registered->ComputeStatistics("least", Least);
      // What has to be prepared each time is done so often that some milliseconds pass.
      const std::size_t repetitions =
          nodes == 0 ? 1 : std::max<std::size_t>(kLargeNodes / nodes, 1);
      if (!operation.isRepeatable) registered->Iterations(static_cast<std::int64_t>(repetitions));
    }
  }
}

/// The word is the name of a set.
void MeasureSet(const Words& words) {
  for (const Set& set : AllSets()) {
    if (set.name != words.at(0)) continue;
    for (const Operation& operation : AllOperations()) {
      if ((operation.kinds & set.kind) == 0) continue;
      for (const std::string& document : set.documents) Register(operation, set, document);
    }
  }
  if (words.at(0) == "threads") {
    const std::vector<Library> libraries = {Xmldom(), PlainTree(), Pugixml()};
    for (benchmark::internal::Benchmark* registered : RegisterThreads(libraries)) {
      registered->ComputeStatistics("least", Least);
    }
  }
  std::string versions;
  for (const Library& library : AllLibraries()) {
    versions += (versions.empty() ? "" : ", ") + library.version;
  }
  benchmark::AddCustomContext("libraries", versions);
  benchmark::AddCustomContext("compiler", XMLDOM_BENCH_COMPILER);
  benchmark::RunSpecifiedBenchmarks();
}

/// The words are a library and a file.
void Load(const Words& words) { MeasureLoad(Find(AllLibraries(), words.at(0)), words.at(1)); }

/// Prints a large document; the word is its name.
void Document(const Words& words) { std::cout << Generate(words.at(0), kLargeNodes).text; }

/// Prints the nodes of a document; the words are its name, and about how many nodes a generated one
/// has.
void Records(const Words& words) {
  const std::size_t nodes = words.size() > 1 ? std::stoul(words.at(1)) : 0;
  PrintRecords(FindSample(words.at(0), nodes).text);
}

/// Does one operation once for a profiler; the words are its name and that of a library. Prints
/// how many nodes or children it was done with.
void Profile(const Words& words) {
  const Operation& operation = Find(AllOperations(), words.at(0));
  const Sample& sample =
      operation.kinds == kLists ? FindSample("children", 1000) : FindSample("flat", kSmallNodes);
  Do(operation, Find(AllLibraries(), words.at(1)), sample, 1);
  std::cout << sample.nodes << '\n';
}

struct Command {
  std::string name;
  void (*run)(const Words& words);
};

void Run(int argc, char** argv) {
  const std::vector<Command> commands = {{"set", MeasureSet},
                                         {"load", Load},
                                         {"document", Document},
                                         {"records", Records},
                                         {"profile", Profile}};
  benchmark::Initialize(&argc, argv);
  const Words words(argv + 1, argv + argc);
  Find(commands, words.at(0)).run(Words(words.begin() + 1, words.end()));
}

}  // namespace

}  // namespace bench

int main(int argc, char** argv) {
  try {
    bench::Run(argc, argv);
    return std::cout.flush() ? 0 : 1;
  } catch (const std::out_of_range&) {
    std::cerr << "usage: xmldom-bench {set NAME | load LIBRARY FILE | document NAME |"
                 " records NAME [NODES] | profile OPERATION LIBRARY} [--benchmark_...]\n";
    return 2;
  } catch (const std::exception& exception) {
    std::cerr << "xmldom-bench: " << exception.what() << '\n';
    return 1;
  }
}
