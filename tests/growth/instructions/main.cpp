// growth [WORD]: runs each operation, or those that have WORD in their line, on n and on 4n under
// Callgrind, which writes a file for each of these runs: its name is in the file. Prints a line for
// each operation: the number of its first file, n, the exception or "-", and its name. The script
// beside this reads both.

#include <malloc.h>
#include <valgrind/callgrind.h>
#include <xmldom/xmldom.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "growth/instructions/Growth.h"

namespace {

const int kFactor = 4;

unsigned long g_logEvents = 0;

void CountEvent(const CLogEvent&, void*) { ++g_logEvents; }

void Run(const Growing& row, int size) {
  row.run(size);
  CALLGRIND_DUMP_STATS_AT("row");
}

}  // namespace

// What has been freed before is tidied up before, not in the middle of what is counted.
Counted::Counted() {
#ifdef __GLIBC__
  malloc_trim(0);
#endif
  CALLGRIND_TOGGLE_COLLECT;
}

Counted::~Counted() { CALLGRIND_TOGGLE_COLLECT; }

void Require(bool condition) {
  if (condition) return;
  std::fputs("growth: an operation did something else than it should have\n", stderr);
  std::abort();
}

unsigned long LogEvents() { return g_logEvents; }

std::string Times(int count, const std::string& text) {
  std::string all;
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

int main(int argc, char** argv) {
  CLogger::SetSink(CountEvent, nullptr);
  SetDebugEntities(false);
  int part = 1;
  for (const auto& rows :
       {BuildingRows(), ChainRows(), EditingRows(), LoadingRows(), ReadingRows(), WritingRows(),
        SelectingRows(), ListRows(), SupportRows(), OwnerRows()}) {
    for (const Growing& row : rows) {
      const std::string line = std::string(row.operation) + "\t" + row.shape;
      if (argc > 1 && line.find(argv[1]) == std::string::npos) continue;
      // What is allocated once is so before anything is counted.
      row.run(1);
      CALLGRIND_ZERO_STATS;
      std::printf("%d\t%d\t%s\t%s\n", part, row.size,
                  row.exception == nullptr ? "-" : row.exception, line.c_str());
      std::fflush(stdout);
      Run(row, row.size);
      Run(row, kFactor * row.size);
      part += 2;
    }
  }
  return 0;
}
