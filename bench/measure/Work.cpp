#include "measure/Work.h"

#include <functional>
#include <stdexcept>

namespace bench {

namespace {

const char* const kChildName = "item";

typedef std::unique_ptr<Tree> TreePointer;
typedef std::function<TreePointer()> Prepare;
typedef std::function<void(TreePointer&)> Act;

/// How often something is done before it is measured, so that caches and heap are as they are in
/// the middle of things.
benchmark::IterationCount WarmUps(const benchmark::State& state) {
  return state.max_iterations / 2 + 1;
}

/// Acts on a tree that is made before and destroyed after it, while the clock stands still.
void OnNewTrees(benchmark::State& state, const Prepare& prepare, const Act& act) {
  for (benchmark::IterationCount i = WarmUps(state); i > 0; --i) {
    TreePointer tree = prepare();
    act(tree);
  }
  for (auto _ : state) {
    state.PauseTiming();
    TreePointer tree = prepare();
    state.ResumeTiming();
    act(tree);
    state.PauseTiming();
    tree.reset();
    state.ResumeTiming();
  }
}

/// Acts on one tree again and again, for what leaves no traces.
void OnOneTree(benchmark::State& state, const Prepare& prepare, const Act& act) {
  TreePointer tree = prepare();
  for (benchmark::IterationCount i = WarmUps(state); i > 0; --i) act(tree);
  for (auto _ : state) act(tree);
}

void RepeatEdit(Operation operation, const Library& library, std::size_t children,
                benchmark::State& state) {
  const auto makeEmpty = [&library] { return library.Load("<list></list>"); };
  const auto append = [children](TreePointer& tree) { tree->Append(kChildName, children); };
  if (operation == Operation::kAppend) {
    OnNewTrees(state, makeEmpty, append);
  } else if (operation == Operation::kInsertFirst) {
    OnNewTrees(state, makeEmpty,
               [children](TreePointer& tree) { tree->InsertFirst(kChildName, children); });
  } else {
    const auto makeFull = [&] {
      TreePointer tree = makeEmpty();
      append(tree);
      return tree;
    };
    OnNewTrees(state, makeFull, [children](TreePointer& tree) { tree->RemoveFirst(children); });
  }
}

void Expect(bool condition, Operation operation, const Library& library, const Sample& sample) {
  if (condition) return;
  throw std::runtime_error(library.Name() + " does not do " + NameOf(operation).name + " on " +
                           sample.name);
}

}  // namespace

std::size_t TryOut(Operation operation, const Library& library, const Sample& sample) {
  if (IsEdit(operation)) return 1;
  const TreePointer tree = library.Load(sample.text);
  const char* path = PathFor(operation, sample.paths).c_str();
  const auto expect = [&](bool condition) { Expect(condition, operation, library, sample); };
  switch (operation) {
    case Operation::kWrite:
      expect(tree->Write());
      return 1;
    case Operation::kText:
    case Operation::kTextReferences:
      expect(tree->Text());
      return 1;
    case Operation::kSelectName:
    case Operation::kSelectAttribute:
    case Operation::kSelectPath: {
      const std::size_t count = tree->SelectAll(path);
      expect(count > 0);
      return count;
    }
    case Operation::kFirstFound:
      expect(tree->SelectFirst(path));
      return 1;
    case Operation::kFirstAbsent:
      expect(!tree->SelectFirst(path));
      return 1;
    case Operation::kCompare:
      expect(tree->Equals(*library.Load(sample.text)));
      return 1;
    default:
      return 1;
  }
}

void Repeat(Operation operation, const Library& library, const Sample& sample,
            benchmark::State& state) {
  const auto load = [&] { return library.Load(sample.text); };
  const char* path = PathFor(operation, sample.paths).c_str();
  switch (operation) {
    case Operation::kLoad:
      OnNewTrees(
          state, [] { return nullptr; }, [&](TreePointer& tree) { tree = load(); });
      return;
    case Operation::kLoadAndDestroy:
      OnOneTree(
          state, [] { return nullptr; }, [&](TreePointer&) { load(); });
      return;
    case Operation::kDestroy:
      OnNewTrees(state, load, [](TreePointer& tree) { tree.reset(); });
      return;
    case Operation::kWrite:
      OnOneTree(state, load, [](TreePointer& tree) { tree->Write(); });
      return;
    case Operation::kText:
    case Operation::kTextReferences:
      OnOneTree(state, load, [](TreePointer& tree) { tree->Text(); });
      return;
    case Operation::kSelectName:
    case Operation::kSelectAttribute:
    case Operation::kSelectPath:
      OnOneTree(state, load, [path](TreePointer& tree) { tree->SelectAll(path); });
      return;
    case Operation::kFirstFound:
    case Operation::kFirstAbsent:
      OnOneTree(state, load, [path](TreePointer& tree) { tree->SelectFirst(path); });
      return;
    case Operation::kCompare: {
      const TreePointer other = load();
      OnOneTree(state, load, [&other](TreePointer& tree) { tree->Equals(*other); });
      return;
    }
    case Operation::kAppend:
    case Operation::kInsertFirst:
    case Operation::kRemoveFirst:
      RepeatEdit(operation, library, sample.nodes, state);
      return;
  }
}

}  // namespace bench
