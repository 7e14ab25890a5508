#ifndef XMLDOM_TOOLS_COMMAND_COMMAND_H
#define XMLDOM_TOOLS_COMMAND_COMMAND_H

#include <memory>
#include <stdexcept>
#include <string>

namespace tool {

class Arguments;
class Output;

/// The exit statuses of the tool, which are those of grep and diff.
enum class ExitStatus {
  kDone = 0,    ///< Done, found, well-formed.
  kNo = 1,      ///< The answer is no.
  kTrouble = 2  ///< No answer: bad usage, an unreadable or malformed file, a failed write.
};

/// The command line makes no sense; the text says why.
class UsageError : public std::runtime_error {
 public:
  explicit UsageError(const std::string& text) : std::runtime_error(text) {}
};

/// What a command is given to run with.
struct Session {
  Output& output;
  bool verbose;
};

/// One command of the tool. Its members are called in the order in which they stand here.
class Command {
 public:
  virtual ~Command() = default;

  /// Declares the options and operands, whose values are to be stored in this object.
  virtual void DeclareArguments(Arguments& arguments) = 0;

  /// Checks the values of the arguments before any file is read. Effects: throws a UsageError.
  virtual void Check() const {}

  /// Does the work. Result: the exit status of the tool.
  /// Effects: throws an OutputError when results cannot be written.
  virtual ExitStatus Run(const Session& session) = 0;
};

/// An entry in the list of commands: how help presents a command, and how to make it.
struct CommandEntry {
  const char* name;
  const char* summary;
  const char* details;  ///< Ends the help text, with an example.
  std::unique_ptr<Command> (*make)();
};

}  // namespace tool

#endif
