#include "harness/StdoutCapture.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>

StdoutCapture::StdoutCapture() {
  std::fflush(stdout);
  char name[] = "/tmp/xmldom-stdout-XXXXXX";
  m_file = mkstemp(name);
  if (m_file < 0) std::abort();
  unlink(name);
  m_stdout = dup(STDOUT_FILENO);
  dup2(m_file, STDOUT_FILENO);
}

StdoutCapture::~StdoutCapture() {
  Restore();
  close(m_file);
}

std::string StdoutCapture::Take() {
  Restore();
  std::string text;
  char buffer[4096];
  lseek(m_file, 0, SEEK_SET);
  for (;;) {
    const ssize_t count = read(m_file, buffer, sizeof buffer);
    if (count <= 0) break;
    text.append(buffer, static_cast<std::size_t>(count));
  }
  return text;
}

void StdoutCapture::Restore() {
  if (m_stdout < 0) return;
  std::fflush(stdout);
  dup2(m_stdout, STDOUT_FILENO);
  close(m_stdout);
  m_stdout = -1;
}
