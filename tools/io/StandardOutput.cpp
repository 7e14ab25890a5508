// Keeps standard output for the results of the tool, apart from what the library prints there.
// The tool writes to a copy of the descriptor; the C library's stdout is then sent elsewhere.
// Tested by tests/tool/command_line_test.bash.

#include <tools/io/StandardOutput.h>

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>

namespace tool {

int KeepStandardOutput() {
  // Above the standard descriptors, whichever of them are closed.
  return fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
}

void DivertStandardOutput(bool show) {
  if (show && dup2(STDERR_FILENO, STDOUT_FILENO) >= 0) {
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
    return;
  }
  // Opened for reading: printf then gives up before it formats the text, and the library prints the
  // whole of a text again for each of its references.
  if (std::freopen("/dev/null", "r", stdout) == nullptr) close(STDOUT_FILENO);
}

}  // namespace tool
