#include "Operation.h"

#include <ctime>
#include <functional>
#include <stdexcept>

namespace {

/// The processor time that the calling thread has used.
double ProcessorSeconds() {
  timespec now = {};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

}  // namespace

/// Runs `work`. Result: the processor time it took, in seconds. Callgrind knows the function by its
/// name, and counts the instructions of `work` alone.
extern "C" __attribute__((noinline)) double TimedWork(const std::function<void()>& work) {
  const double start = ProcessorSeconds();
  work();
  return ProcessorSeconds() - start;
}

namespace bench {

namespace {

void PrepareNothing(Work&) {}
void PrepareTree(Work& work) { work.tree = work.Load(); }

void PrepareTwoTrees(Work& work) {
  work.tree = work.Load();
  work.other = work.Load();
}

void PrepareFullList(Work& work) {
  work.tree = work.Load();
  work.tree->Append(work.sample.nodes);
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

std::size_t DoReadText(Work& work, bool hasReferences) {
  const bool isSuited = work.sample.hasText && work.sample.hasReferences == hasReferences;
  return isSuited ? work.tree->Text() : kNotOffered;
}

std::size_t DoSelectAll(Work& work, const std::string& path) {
  return work.tree->SelectAll(path.c_str());
}

/// A search that should find nothing has done its work when it finds nothing.
std::size_t ResultIf(std::size_t expected, std::size_t found) {
  return found == kNotOffered ? kNotOffered : found == expected;
}

std::size_t DoSelectFirst(Work& work, const std::string& path, std::size_t expected) {
  return ResultIf(expected, work.tree->SelectFirst(path.c_str()));
}

}  // namespace

const std::vector<Operation>& AllOperations() {
  const int trees = kDocuments | kExtremes;
  static const std::vector<Operation> operations = {
      {"load", trees, false, PrepareNothing, DoLoad},
      {"load-destroy", trees, true, PrepareNothing, DoLoadAndDestroy},
      {"destroy", trees, false, PrepareTree, DoDestroy},
      {"write", kDocuments, true, PrepareTree, [](Work& work) { return work.tree->Write(); }},
      // The indentation of deep trees grows with the square of their depth.
      {"write", kExtremes, true, PrepareTree, [](Work& work) { return work.tree->WriteCompact(); }},
      {"text", trees, true, PrepareTree, [](Work& work) { return DoReadText(work, false); }},
      {"text-references", kDocuments, true, PrepareTree,
       [](Work& work) { return DoReadText(work, true); }},
      {"select-name", trees, true, PrepareTree,
       [](Work& work) { return DoSelectAll(work, work.sample.paths.name); }},
      {"select-attribute", trees, true, PrepareTree,
       [](Work& work) { return DoSelectAll(work, work.sample.paths.attribute); }},
      {"select-path", trees, true, PrepareTree,
       [](Work& work) { return DoSelectAll(work, work.sample.paths.steps); }},
      {"select-absent", kExtremes, true, PrepareTree,
       [](Work& work) { return ResultIf(0, DoSelectAll(work, work.sample.paths.absent)); }},
      {"first-found", trees, true, PrepareTree,
       [](Work& work) { return DoSelectFirst(work, work.sample.paths.found, 1); }},
      {"first-absent", trees, true, PrepareTree,
       [](Work& work) { return DoSelectFirst(work, work.sample.paths.absent, 0); }},
      {"compare", trees, true, PrepareTwoTrees,
       [](Work& work) { return work.tree->Equals(*work.other); }},
      {"append", kLists, false, PrepareTree,
       [](Work& work) { return work.tree->Append(work.sample.nodes); }},
      {"insert-first", kLists, false, PrepareTree,
       [](Work& work) { return work.tree->InsertFirst(work.sample.nodes); }},
      {"remove-first", kLists, false, PrepareFullList,
       [](Work& work) { return work.tree->RemoveFirst(work.sample.nodes); }},
      {"insert-last", kLists, false, PrepareTree,
       [](Work& work) { return work.tree->InsertBeforeLast(work.sample.nodes); }},
      {"remove-last", kLists, false, PrepareFullList,
       [](Work& work) { return work.tree->RemoveLast(work.sample.nodes); }},
      {"backwards", kLists, false, PrepareFullList,
       [](Work& work) { return work.tree->CountBackwards(); }},
      {"queue", kLists, false, PrepareFullList,
       [](Work& work) { return work.tree->Queue(work.sample.nodes); }},
  };
  return operations;
}

Outcome Do(const Operation& operation, const Library& library, const Sample& sample,
           std::int64_t repetitions) {
  Outcome outcome = {kNotOffered, 0};
  if (library.name == kExpatOnly && operation.name != "load") return outcome;
  Work work = {library, sample, nullptr, nullptr};
  const auto act = [&](std::int64_t count) {
    for (; count > 0; --count) outcome.result = operation.act(work);
  };
  const std::int64_t warmUps = repetitions / 2 + 1;
  operation.prepare(work);
  if (work.tree == nullptr && operation.prepare != PrepareNothing) return outcome;
  if (operation.isRepeatable) {
    act(warmUps);
    outcome.seconds = TimedWork([&] { act(repetitions); });
  } else {
    for (std::int64_t i = -warmUps; i < repetitions; ++i) {
      work.tree.reset();  // Before the next tree is made, as in a program with one document.
      operation.prepare(work);
      if (i < 0) {
        act(1);
      } else {
        outcome.seconds += TimedWork([&] { act(1); });
      }
    }
  }
  if (outcome.result == 0) throw std::runtime_error(operation.name + " does the wrong thing");
  return outcome;
}

}  // namespace bench
