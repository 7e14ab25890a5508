#ifndef XMLDOM_BENCH_THREADS_H
#define XMLDOM_BENCH_THREADS_H

#include <benchmark/benchmark.h>

#include <vector>

#include "Library.h"

namespace bench {

/// Registers for each library what one thread does with documents of its own, and two at once:
/// each loads a document, selects in it and destroys it. The time of an iteration is what passes on
/// the clock, by the documents of all threads, so that two threads on two cores take half of what
/// one takes when neither waits for the other. The benchmarks of one thread are meant for a process
/// of their own, which then has only one thread.
/// Result: the benchmarks; they belong to the benchmark library.
std::vector<benchmark::internal::Benchmark*> RegisterThreads(const std::vector<Library>& libraries);

}  // namespace bench

#endif
