#include <cstdlib>

#include "Library.h"
#include "documents/Documents.h"

// A little of everything that the library is measured for, always the same. Callgrind counts the
// instructions of CountedWorkload alone.

namespace {

const std::size_t kNodes = 600;
const std::size_t kChildren = 200;

/// A run that did something else would be counted for nothing.
void Require(bool condition) {
  if (!condition) std::abort();
}

void Read(const bench::Library& library, const bench::Sample& sample) {
  const bench::TreePointer tree = library.load(sample.text);
  const bench::TreePointer other = library.load(sample.text);
  Require(tree->Write() == 1 && tree->Text() == 1 && tree->Equals(*other) == 1);
  for (const std::string& path : {sample.paths.name, sample.paths.attribute, sample.paths.steps}) {
    Require(tree->SelectAll(path.c_str()) > 0);
  }
  Require(tree->SelectFirst(sample.paths.found.c_str()) == 1);
  Require(tree->SelectFirst(sample.paths.absent.c_str()) == 0);
}

void Edit(const bench::Library& library) {
  const bench::TreePointer list = library.load("<list><item/></list>");
  list->Append(kChildren);
  list->InsertFirst(kChildren);
  list->RemoveFirst(kChildren);
}

}  // namespace

extern "C" __attribute__((noinline)) void CountedWorkload(
    const bench::Library& library, const std::vector<bench::Sample>& samples) {
  for (const bench::Sample& sample : samples) Read(library, sample);
  Edit(library);
}

int main() {
  std::vector<bench::Sample> samples;
  for (const std::string& shape : bench::ShapeNames()) {
    samples.push_back(bench::Generate(shape, kNodes));
  }
  CountedWorkload(bench::Xmldom(), samples);
  return 0;
}
