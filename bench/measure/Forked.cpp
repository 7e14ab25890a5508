#include "measure/Forked.h"

#include <sys/wait.h>
#include <unistd.h>

#include <exception>
#include <iostream>
#include <stdexcept>

namespace bench {

namespace {

/// Ends the process without what would be done at its end: that is the original's business.
[[noreturn]] void WorkAndExit(const std::function<Timing()>& work, int out) {
  try {
    const Timing timing = work();
    const ssize_t written = write(out, &timing, sizeof timing);
    _exit(written == static_cast<ssize_t>(sizeof timing) ? 0 : 1);
  } catch (const std::exception& exception) {
    std::cerr << exception.what() << std::endl;
    _exit(1);
  }
}

}  // namespace

Timing RunForked(const std::function<Timing()>& work) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  const pid_t child = fork();
  if (child < 0) throw std::runtime_error("no process");
  if (child == 0) WorkAndExit(work, ends[1]);

  close(ends[1]);
  Timing timing = {};
  const ssize_t length = read(ends[0], &timing, sizeof timing);
  close(ends[0]);
  int status = 0;
  waitpid(child, &status, 0);
  if (length != static_cast<ssize_t>(sizeof timing) || status != 0) {
    throw std::runtime_error("a measurement has failed");
  }
  return timing;
}

}  // namespace bench
