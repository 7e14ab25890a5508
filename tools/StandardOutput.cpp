#include "StandardOutput.h"

#include <fcntl.h>
#include <unistd.h>

namespace tool {

int KeepStandardOutput() {
  // Above the standard descriptors, whichever of them are closed.
  return fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
}

}  // namespace tool
