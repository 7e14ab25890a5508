#include "Operation.h"

#include <ctime>
#include <functional>
#include <stdexcept>

/// Runs `work`. Result: the processor time it took, in seconds. Callgrind knows the function by its
/// name, and counts the instructions of `work` alone.
extern "C" __attribute__((noinline)) double TimedWork(const std::function<void()>& work) {
  const double start = bench::ProcessorSeconds();
  work();
  return bench::ProcessorSeconds() - start;
}

namespace bench {

namespace {

const char* const kChildName = "item";

void PrepareNothing(Work&) {}
void PrepareTree(Work& work) { work.tree = work.Load(); }

void PrepareTwoTrees(Work& work) {
  work.tree = work.Load();
  work.other = work.Load();
}

void PrepareFullList(Work& work) {
  work.tree = work.Load();
  work.tree->Append(kChildName, work.sample.nodes);
}

std::size_t SelectAll(Work& work, const std::string& path) {
  return work.tree->SelectAll(path.c_str());
}

std::size_t SelectFirst(Work& work, const std::string& path, std::size_t expected) {
  const std::size_t found = work.tree->SelectFirst(path.c_str());
  return found == kNotOffered ? kNotOffered : found == expected;
}

std::size_t DoLoad(Work& work) {
  work.tree = work.Load();
  return work.tree == nullptr ? kNotOffered : 1;
}

std::size_t DoLoadAndDestroy(Work& work) { return work.Load() == nullptr ? kNotOffered : 1; }

std::size_t DoDestroy(Work& work) {
  work.tree.reset();
  return 1;
}

std::size_t DoAppend(Work& work) {
  work.tree->Append(kChildName, work.sample.nodes);
  return work.sample.nodes;
}

std::size_t DoInsertFirst(Work& work) {
  work.tree->InsertFirst(kChildName, work.sample.nodes);
  return work.sample.nodes;
}

std::size_t DoRemoveFirst(Work& work) {
  work.tree->RemoveFirst(work.sample.nodes);
  return work.sample.nodes;
}

bool UsesPath(const Operation& operation) {
  return operation.name.compare(0, 6, "select") == 0 || operation.name.compare(0, 5, "first") == 0;
}

}  // namespace

const std::vector<Operation>& AllOperations() {
  static const std::vector<Operation> operations = {
      {"load", false, false, PrepareNothing, DoLoad},
      {"load-destroy", false, true, PrepareNothing, DoLoadAndDestroy},
      {"destroy", false, false, PrepareTree, DoDestroy},
      {"write", false, true, PrepareTree, [](Work& work) { return work.tree->Write(); }},
      {"text", false, true, PrepareTree, [](Work& work) { return work.tree->Text(); }},
      {"select-name", false, true, PrepareTree,
       [](Work& work) { return SelectAll(work, work.sample.paths.name); }},
      {"select-attribute", false, true, PrepareTree,
       [](Work& work) { return SelectAll(work, work.sample.paths.attribute); }},
      {"select-path", false, true, PrepareTree,
       [](Work& work) { return SelectAll(work, work.sample.paths.steps); }},
      {"first-found", false, true, PrepareTree,
       [](Work& work) { return SelectFirst(work, work.sample.paths.found, 1); }},
      {"first-absent", false, true, PrepareTree,
       [](Work& work) { return SelectFirst(work, work.sample.paths.absent, 0); }},
      {"compare", false, true, PrepareTwoTrees,
       [](Work& work) { return work.tree->Equals(*work.other); }},
      {"append", true, false, PrepareTree, DoAppend},
      {"insert-first", true, false, PrepareTree, DoInsertFirst},
      {"remove-first", true, false, PrepareFullList, DoRemoveFirst},
  };
  return operations;
}

const Operation& FindOperation(const std::string& name) {
  for (const Operation& operation : AllOperations()) {
    if (operation.name == name) return operation;
  }
  throw std::runtime_error("no operation " + name);
}

bool Suits(const Operation& operation, const Sample& sample) {
  if (operation.isEdit != sample.isListToEdit) return false;
  return operation.name != "text" || (sample.hasText && !sample.hasReferencesInText);
}

std::size_t TryOut(const Operation& operation, const Library& library, const Sample& sample) {
  if (library.name == kExpatOnly && operation.name != "load") return kNotOffered;
  if (library.resolvesNamespaces && sample.isNamespaced && UsesPath(operation)) return kNotOffered;
  Work work = {library, sample, nullptr, nullptr};
  operation.prepare(work);
  if (work.tree == nullptr && operation.prepare != PrepareNothing) return kNotOffered;
  const std::size_t outcome = operation.act(work);
  if (outcome == 0) {
    throw std::runtime_error(library.name + " does not do " + operation.name + " on " +
                             sample.name);
  }
  return outcome;
}

double SecondsOf(const Operation& operation, const Library& library, const Sample& sample,
                 std::int64_t repetitions) {
  Work work = {library, sample, nullptr, nullptr};
  const std::int64_t warmUps = repetitions / 2 + 1;
  if (operation.isRepeatable) {
    operation.prepare(work);
    for (std::int64_t i = 0; i < warmUps; ++i) operation.act(work);
    return TimedWork([&] {
      for (std::int64_t i = 0; i < repetitions; ++i) operation.act(work);
    });
  }
  double seconds = 0;
  for (std::int64_t i = -warmUps; i < repetitions; ++i) {
    work.tree.reset();  // Before the next tree is made, as in a program with one document.
    operation.prepare(work);
    if (i < 0) {
      operation.act(work);
    } else {
      seconds += TimedWork([&] { operation.act(work); });
    }
  }
  return seconds;
}

double ProcessorSeconds() {
  timespec now = {};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

}  // namespace bench
