#include "measure/NullOutput.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <stdexcept>

namespace bench {

NullOutput::NullOutput() : m_saved(-1) {
  std::fflush(stdout);
  m_saved = dup(STDOUT_FILENO);
  const int nowhere = open("/dev/null", O_WRONLY | O_CLOEXEC);
  if (m_saved < 0 || nowhere < 0 || dup2(nowhere, STDOUT_FILENO) < 0) {
    throw std::runtime_error("cannot redirect standard output");
  }
  close(nowhere);
}

NullOutput::~NullOutput() {
  std::fflush(stdout);
  dup2(m_saved, STDOUT_FILENO);
  close(m_saved);
}

}  // namespace bench
