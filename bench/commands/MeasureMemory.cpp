#include <cstdio>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>

#include "commands/Commands.h"
#include "commands/Options.h"
#include "commands/Running.h"
#include "documents/Collections.h"
#include "measure/Child.h"
#include "measure/Memory.h"

namespace bench {

namespace {

/// A document in a file, for as long as it is needed.
class SampleFile {
 public:
  SampleFile(const std::string& path, const Sample& sample) : m_path(path) {
    std::ofstream file(path, std::ios::binary);
    file << sample.text;
    if (!file.flush()) throw std::runtime_error("cannot write " + path);
  }
  ~SampleFile() { std::remove(m_path.c_str()); }

  SampleFile(const SampleFile&) = delete;
  SampleFile& operator=(const SampleFile&) = delete;

 private:
  std::string m_path;
};

void Record(const std::string& measure, const Sample& sample, const std::string& library,
            std::size_t value, const std::string& resultsPath) {
  Results::AppendTo(
      resultsPath,
      Result{
          measure, sample.set, sample.name, sample.nodes, library, {static_cast<double>(value)}});
}

void MeasureInChild(const Library& library, const Sample& sample, const std::string& path,
                    const std::string& resultsPath) {
  const ChildOutcome child = RunChild({"one-load", "--library", library.Name(), "--file", path},
                                      "LD_PRELOAD=" XMLDOM_BENCH_HEAP_LIBRARY);
  std::istringstream fields(child.output);
  MemoryUse use = {};
  if (!child.ended ||
      !(fields >> use.blocks >> use.heapBytes >> use.recordBytes >> use.peakBytes)) {
    throw std::runtime_error(library.Name() + " cannot be measured with " + sample.name);
  }
  Record("blocks", sample, library.Name(), use.blocks, resultsPath);
  Record("heap", sample, library.Name(), use.heapBytes, resultsPath);
  if (use.recordBytes > 0) {
    Record("records", sample, library.Name(), use.recordBytes, resultsPath);
  }
  Record("peak", sample, library.Name(), use.peakBytes, resultsPath);
}

}  // namespace

void MeasureMemory(const CommandWords& words) {
  const Options options(words, {"results", "real"});
  const std::string results = options.Get("results");
  std::vector<Sample> samples = OneOfEachShape("large", kLargeNodes);
  for (const Sample& sample : RealDocuments(options.Get("real"))) samples.push_back(sample);
  for (const Sample& sample : samples) {
    const Progress progress(sample.name);
    const std::string path = results + ".document";
    const SampleFile file(path, sample);
    Record("file", sample, "document", sample.text.size(), results);
    for (const Library* library : LibraryPointers()) {
      if (!library->Offers(Operation::kDestroy) || library->Load(sample.text) == nullptr) continue;
      MeasureInChild(*library, sample, path, results);
      Progress::Dot();
    }
  }
}

void MeasureOneLoad(const CommandWords& words) {
  const Options options(words, {"library", "file"});
  const Library* library = FindLibrary(options.Get("library"));
  if (library == nullptr) throw std::runtime_error("no library " + options.Get("library"));
  const MemoryUse use = LoadAndCount(*library, options.Get("file"));
  std::cout << use.blocks << ' ' << use.heapBytes << ' ' << use.recordBytes << ' ' << use.peakBytes
            << std::endl;
}

}  // namespace bench
