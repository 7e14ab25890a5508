// Keeps a descriptor of its own for the results of the tool, so that no file that is opened later
// can take the number of a closed standard output. Tested by tests/tool/command_line_test.bash.

#include <tools/io/StandardOutput.h>

#include <fcntl.h>
#include <unistd.h>

namespace tool {

int KeepStandardOutput() {
  // Above the standard descriptors, whichever of them are closed.
  return fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
}

}  // namespace tool
