#ifndef XMLDOM_TESTS_HARNESS_SILENCE_H
#define XMLDOM_TESTS_HARNESS_SILENCE_H

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

/// While it lives, what is printed to standard output goes nowhere.
class Silence {
 public:
  Silence() : m_stdout(dup(STDOUT_FILENO)) {
    static const int nowhere = open("/dev/null", O_WRONLY);
    std::fflush(stdout);
    dup2(nowhere, STDOUT_FILENO);
  }
  ~Silence() {
    std::fflush(stdout);
    dup2(m_stdout, STDOUT_FILENO);
    close(m_stdout);
  }

  Silence(const Silence&) = delete;
  Silence& operator=(const Silence&) = delete;

 private:
  const int m_stdout;
};

#endif
