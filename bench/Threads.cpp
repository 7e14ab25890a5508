#include "Threads.h"

#include <cstddef>
#include <string>

#include "documents/Documents.h"

namespace bench {

namespace {

const char* const kDocument = "device";
const std::size_t kNodes[] = {2000, 100000};

/// What each thread does.
void UseDocuments(const Library& library, const Sample& sample, benchmark::State& state) {
  bool isRight = true;
  for (auto _ : state) {
    const TreePointer tree = library.load(sample.text);
    isRight = tree->SelectAll(sample.paths.name.c_str()) > 0 &&
              tree->SelectAll(sample.paths.attribute.c_str()) > 0 &&
              tree->SelectFirst(sample.paths.found.c_str()) == 1 && isRight;
  }
  if (!isRight) state.SkipWithError("selects the wrong thing");
  if (state.thread_index() == 0) state.counters["nodes"] = static_cast<double>(sample.nodes);
}

}  // namespace

std::vector<benchmark::internal::Benchmark*> RegisterThreads(
    const std::vector<Library>& libraries) {
  std::vector<benchmark::internal::Benchmark*> registered;
  for (const std::size_t nodes : kNodes) {
    const Sample& sample = FindSample(kDocument, nodes);  // before there are threads
    for (const int threads : {1, 2}) {
      for (const Library& library : libraries) {
        const std::string name = std::string(threads == 1 ? "one-thread" : "two-threads") +
                                 "/threads/" + kDocument + "/" + std::to_string(nodes) + "/" +
                                 library.name;
        registered.push_back(benchmark::RegisterBenchmark(
            name.c_str(),
            [library, &sample](benchmark::State& state) { UseDocuments(library, sample, state); }));
        registered.back()->UseRealTime()->Threads(threads);
      }
    }
  }
  return registered;
}

}  // namespace bench
