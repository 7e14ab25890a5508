#include "measure/ProfiledWork.h"

#include <functional>
#include <stdexcept>

extern "C" __attribute__((noinline)) void ProfiledWork(const std::function<void()>& work) {
  work();
}

namespace bench {

namespace {

const char* const kChildName = "item";

typedef std::unique_ptr<Tree> TreePointer;

/// Makes a tree and does something with it; the first time warms the heap up.
void ActTwice(const std::function<TreePointer()>& make,
              const std::function<void(TreePointer&)>& act) {
  TreePointer first = make();
  act(first);
  first.reset();
  TreePointer tree = make();
  ProfiledWork([&] { act(tree); });
}

}  // namespace

void ProfileOnce(Operation operation, const Library& library, const Sample& sample) {
  const std::size_t children = sample.nodes;
  const auto load = [&] { return library.Load(sample.text); };
  const auto makeEmpty = [&] { return library.Load("<list></list>"); };
  const auto makeFull = [&] {
    TreePointer tree = makeEmpty();
    tree->Append(kChildName, children);
    return tree;
  };
  switch (operation) {
    case Operation::kLoad:
      return ActTwice([] { return nullptr; }, [&](TreePointer& tree) { tree = load(); });
    case Operation::kDestroy:
      return ActTwice(load, [](TreePointer& tree) { tree.reset(); });
    case Operation::kAppend:
      return ActTwice(makeEmpty, [&](TreePointer& tree) { tree->Append(kChildName, children); });
    case Operation::kInsertFirst:
      return ActTwice(makeEmpty,
                      [&](TreePointer& tree) { tree->InsertFirst(kChildName, children); });
    case Operation::kRemoveFirst:
      return ActTwice(makeFull, [&](TreePointer& tree) { tree->RemoveFirst(children); });
    default:
      throw std::runtime_error("no profile of " + std::string(NameOf(operation).name));
  }
}

}  // namespace bench
