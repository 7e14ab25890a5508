#include "measure/Turns.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "measure/Clock.h"
#include "measure/Forked.h"
#include "measure/NullOutput.h"
#include "measure/Work.h"

namespace bench {

namespace {

/// Keeps what Google Benchmark reports and prints nothing.
class Recorder : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) m_run = run;
  }

  const Run& Last() const { return m_run; }

 private:
  Run m_run;
};

/// An entry in all turns of a measurement.
class Contender {
 public:
  explicit Contender(const Entry& entry) : m_entry(entry), m_repetitions(1) {}

  /// Finds out how many repetitions take that long, with what the clock does not count.
  void WarmUp(double seconds) {
    for (;;) {
      const double total = Run().totalSeconds;
      if (total >= seconds / 2) return;
      const double missing = std::min(seconds / total, kMostGrowth);
      m_repetitions = static_cast<benchmark::IterationCount>(
          std::ceil(static_cast<double>(m_repetitions) * missing));
    }
  }

  void TakeTurn() { m_nanoseconds.push_back(Run().nanoseconds); }

  Result Outcome() const {
    const Sample& sample = *m_entry.sample;
    return Result{NameOf(m_entry.operation).name, sample.set,   sample.name, sample.nodes,
                  m_entry.library->Name(),        m_nanoseconds};
  }

 private:
  static constexpr double kMostGrowth = 100;  // of the repetitions, before they are timed again

  Timing Run() const {
    return RunForked([this] {
      const double start = ProcessorSeconds();
      benchmark::ClearRegisteredBenchmarks();
      benchmark::RegisterBenchmark("turn", [this](benchmark::State& state) {
        Repeat(m_entry.operation, *m_entry.library, *m_entry.sample, state);
      })->Iterations(m_repetitions);
      Recorder recorder;
      benchmark::RunSpecifiedBenchmarks(&recorder, "turn");
      const double seconds =
          recorder.Last().cpu_accumulated_time / static_cast<double>(recorder.Last().iterations);
      return Timing{seconds * 1e9, ProcessorSeconds() - start};
    });
  }

  Entry m_entry;
  benchmark::IterationCount m_repetitions;
  std::vector<double> m_nanoseconds;
};

bool TakesPart(Operation operation, const Library& library, const Sample& sample) {
  if (!library.Offers(operation)) return false;
  if (IsEdit(operation)) return true;
  const bool isSelection = !PathFor(operation, sample.paths).empty();
  if (isSelection && sample.isNamespaced && library.ResolvesNamespaces()) return false;
  return library.Load(sample.text) != nullptr;
}

}  // namespace

std::vector<Result> TakeTurns(const std::vector<Entry>& entries, const TurnOptions& options) {
  const NullOutput nowhere;
  std::vector<Contender> contenders(entries.begin(), entries.end());
  for (Contender& contender : contenders) contender.WarmUp(options.secondsOfOne);
  for (int turn = 0; turn < options.turns; ++turn) {
    // Another one begins each time, so that none always follows the same one.
    for (std::size_t i = 0; i < contenders.size(); ++i) {
      const std::size_t next = (i + static_cast<std::size_t>(turn)) % contenders.size();
      contenders[next].TakeTurn();
    }
  }
  std::vector<Result> results;
  for (const Contender& contender : contenders) results.push_back(contender.Outcome());
  return results;
}

std::vector<Entry> Entries(Operation operation, const Sample& sample,
                           const std::vector<const Library*>& libraries) {
  const NullOutput nowhere;
  std::vector<Entry> entries;
  std::size_t expected = 0;
  for (const Library* library : libraries) {
    if (!TakesPart(operation, *library, sample)) continue;
    const std::size_t selected = TryOut(operation, *library, sample);
    if (entries.empty()) expected = selected;
    if (selected != expected) {
      throw std::runtime_error(library->Name() + " selects " + std::to_string(selected) +
                               " nodes of " + sample.name + " where others select " +
                               std::to_string(expected));
    }
    entries.push_back(Entry{operation, library, &sample});
  }
  return entries;
}

}  // namespace bench
