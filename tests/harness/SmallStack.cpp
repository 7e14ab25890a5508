#include "harness/SmallStack.h"

#include <pthread.h>

#include <cstdlib>
#include <ctime>

namespace {

const std::size_t kStackSize = 256 * 1024;

struct Job {
  const std::function<void()>& work;
  double seconds;
};

double ProcessorSeconds() {
  timespec now = {};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

void* Run(void* argument) {
  Job* job = static_cast<Job*>(argument);
  const double start = ProcessorSeconds();
  job->work();
  job->seconds = ProcessorSeconds() - start;
  return nullptr;
}

}  // namespace

double OnSmallStack(const std::function<void()>& work) {
  Job job = {work, 0};
  pthread_attr_t attributes;
  pthread_attr_init(&attributes);
  pthread_t thread;
  const bool started = pthread_attr_setstacksize(&attributes, kStackSize) == 0 &&
                       pthread_create(&thread, &attributes, Run, &job) == 0;
  pthread_attr_destroy(&attributes);
  if (!started) std::abort();
  pthread_join(thread, nullptr);
  return job.seconds;
}
