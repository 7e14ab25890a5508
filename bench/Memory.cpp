#include "Memory.h"

#include <malloc.h>

#include <fstream>
#include <iostream>
#include <stdexcept>

#include "documents/Documents.h"

namespace bench {

namespace {

/// What is allocated on the C heap, with the headers of the blocks.
std::size_t HeapBytes() {
  const struct mallinfo2 heap = mallinfo2();
  return heap.uordblks + heap.hblkhd;
}

/// A line of /proc/self/status that counts KiB, in bytes.
std::size_t StatusBytes(const std::string& name) {
  std::ifstream status("/proc/self/status");
  std::string word;
  while (status >> word) {
    if (word != name + ":") continue;
    std::size_t kibibytes = 0;
    status >> kibibytes;
    return kibibytes * 1024;
  }
  throw std::runtime_error("/proc/self/status has no " + name);
}

/// The peak counts from now on.
void ResetPeak() {
  std::ofstream file("/proc/self/clear_refs");
  file << '5' << std::flush;
  if (!file) throw std::runtime_error("cannot write /proc/self/clear_refs");
}

}  // namespace

void MeasureLoad(const Library& library, const std::string& path) {
  library.load("<warm><up/></warm>");  // What a library makes once for all documents.
  ResetPeak();
  const std::size_t residentBefore = StatusBytes("VmRSS");
  const std::size_t heapBefore = HeapBytes();
  const TreePointer tree = library.loadFile(path);
  const std::size_t heap = HeapBytes() - heapBefore;
  const std::size_t peak = StatusBytes("VmHWM") - residentBefore;
  if (tree == nullptr) return;

  Sample sample;
  sample.text = Contents(path);
  CountNodes(sample);
  std::cout << path.substr(path.rfind('/') + 1) << '\t' << sample.nodes << '\t'
            << sample.text.size() << '\t' << library.name << '\t' << heap << '\t'
            << tree->RecordBytes() << '\t' << peak << '\n';
}

}  // namespace bench
