#include "measure/Memory.h"

#include <fstream>
#include <stdexcept>

#include "heap/HeapReading.h"

namespace bench {

namespace {

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

MemoryUse LoadAndCount(const Library& library, const std::string& path) {
  if (ReadHeap == nullptr) throw std::runtime_error("the counting library is not loaded");
  library.Load("<warm><up/></warm>");  // What a library makes once for all documents.
  ResetPeak();
  const std::size_t residentBefore = StatusBytes("VmRSS");
  const HeapReading before = ReadHeap();
  const std::unique_ptr<Tree> tree = library.LoadFile(path);
  const HeapReading after = ReadHeap();
  if (tree == nullptr) throw std::runtime_error(library.Name() + " refuses " + path);
  const std::size_t peak = StatusBytes("VmHWM") - residentBefore;
  return MemoryUse{after.blocks - before.blocks, after.bytes - before.bytes, tree->RecordBytes(),
                   peak};
}

}  // namespace bench
