#include "measure/Child.h"

#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <stdexcept>

namespace bench {

namespace {

const char* const kThisProgram = "/proc/self/exe";

std::string ReadAll(int file) {
  std::string text;
  std::array<char, 4096> piece;
  for (;;) {
    const ssize_t length = read(file, piece.data(), piece.size());
    if (length <= 0) return text;
    text.append(piece.data(), static_cast<std::size_t>(length));
  }
}

std::vector<char*> Pointers(std::vector<std::string>& texts) {
  std::vector<char*> pointers;
  for (std::string& text : texts) pointers.push_back(&text[0]);
  pointers.push_back(nullptr);
  return pointers;
}

std::vector<std::string> EnvironmentWith(const std::string& variable) {
  std::vector<std::string> variables;
  for (char** known = environ; *known != nullptr; ++known) variables.push_back(*known);
  if (!variable.empty()) variables.push_back(variable);
  return variables;
}

}  // namespace

ChildOutcome RunChild(const std::vector<std::string>& arguments, const std::string& environment) {
  int ends[2];
  if (pipe(ends) != 0) throw std::runtime_error("no pipe");
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
  posix_spawn_file_actions_addclose(&actions, ends[0]);
  posix_spawn_file_actions_addclose(&actions, ends[1]);

  std::vector<std::string> words = arguments;
  words.insert(words.begin(), kThisProgram);
  std::vector<std::string> variables = EnvironmentWith(environment);
  pid_t child = 0;
  const int error = posix_spawn(&child, kThisProgram, &actions, nullptr, Pointers(words).data(),
                                Pointers(variables).data());
  posix_spawn_file_actions_destroy(&actions);
  close(ends[1]);

  ChildOutcome outcome = {false, ""};
  if (error == 0) {
    outcome.output = ReadAll(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    outcome.ended = WIFEXITED(status) && WEXITSTATUS(status) == 0;
  }
  close(ends[0]);
  if (error != 0) throw std::runtime_error("cannot start a process");
  return outcome;
}

}  // namespace bench
