#include "threads/Threads.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>
#include <vector>

void InFourThreads(const std::function<void(int thread)>& work) {
  const int kThreads = 4;
  const char* const wanted = std::getenv("XMLDOM_SECONDS");
  const std::chrono::duration<double> seconds(wanted == nullptr ? 1 : std::atof(wanted));
  const auto begin = std::chrono::steady_clock::now();
  std::vector<long> rounds(kThreads);
  std::vector<std::thread> threads;
  for (int i = 0; i < kThreads; ++i) {
    threads.emplace_back([&, i] {
      do {
        work(i);
        ++rounds[static_cast<std::size_t>(i)];
      } while (std::chrono::steady_clock::now() - begin < seconds && !testing::Test::HasFailure());
    });
  }
  for (std::thread& thread : threads) thread.join();
  std::printf("rounds:");
  for (long count : rounds) std::printf(" %ld", count);
  std::printf("\n");
}
