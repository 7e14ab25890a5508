#include "Child.h"

#include <malloc.h>
#include <sys/wait.h>
#include <unistd.h>

#include <exception>
#include <iostream>
#include <stdexcept>

namespace bench {

namespace {

/// Ends the process without what is done at its end: that is the business of the original.
[[noreturn]] void WorkAndExit(const std::function<Outcome()>& work, int out) {
  try {
    const Outcome outcome = work();
    _exit(write(out, &outcome, sizeof outcome) == static_cast<ssize_t>(sizeof outcome) ? 0 : 1);
  } catch (const std::exception& exception) {
    std::cerr << exception.what() << std::endl;
    _exit(1);
  }
}

}  // namespace

Outcome OutcomeOfChild(const std::function<Outcome()>& work) {
  // What glibc comes to by itself in a program that has given back a block of 32 MiB. Otherwise it
  // would depend on what was done before whether large texts cost page faults each time.
  mallopt(M_MMAP_THRESHOLD, 32 << 20);
  mallopt(M_TRIM_THRESHOLD, 64 << 20);
  malloc_trim(0);  // Free pages would be copied when the child writes to them.
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no process");
  if (child == 0) WorkAndExit(work, ends[1]);

  close(ends[1]);
  Outcome outcome = {};
  const ssize_t length = read(ends[0], &outcome, sizeof outcome);
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  if (length != static_cast<ssize_t>(sizeof outcome) || status != 0) {
    throw std::runtime_error("a measurement has failed");
  }
  return outcome;
}

}  // namespace bench
