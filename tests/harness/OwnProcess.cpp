#include "harness/OwnProcess.h"

#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdlib>

namespace {

/// Calls again when a signal has interrupted the call.
template <class Call>
auto Uninterrupted(Call call) -> decltype(call()) {
  decltype(call()) result;
  do {
    result = call();
  } while (result == -1 && errno == EINTR);
  return result;
}

void Write(int descriptor, const std::string& text) {
  for (std::size_t written = 0; written < text.size();) {
    const ssize_t count = Uninterrupted(
        [&] { return write(descriptor, text.data() + written, text.size() - written); });
    if (count < 0) _exit(EXIT_FAILURE);
    written += static_cast<std::size_t>(count);
  }
}

std::string ReadAll(int descriptor) {
  std::string text;
  char piece[4096];
  ssize_t count;
  while ((count = Uninterrupted([&] { return read(descriptor, piece, sizeof piece); })) > 0) {
    text.append(piece, static_cast<std::size_t>(count));
  }
  return text;
}

}  // namespace

std::string InOwnProcess(const std::function<std::string()>& call) {
  int ends[2];
  if (pipe(ends) != 0) return "no pipe";
  const pid_t child = fork();
  if (child < 0) return "no process";
  if (child == 0) {
    close(ends[0]);
    Write(ends[1], call());
    // Does not write what is buffered for standard output: the parent has the same text there.
    _exit(EXIT_SUCCESS);
  }
  close(ends[1]);
  const std::string result = ReadAll(ends[0]);
  close(ends[0]);
  int status = -1;
  Uninterrupted([&] { return waitpid(child, &status, 0); });
  if (status == 0) return result;
  return result + "the process ended with status " + std::to_string(status) + "\n";
}
