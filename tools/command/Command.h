#ifndef XMLDOM_TOOLS_COMMAND_COMMAND_H
#define XMLDOM_TOOLS_COMMAND_COMMAND_H

#include <memory>
#include <stdexcept>
#include <string>

namespace tool {

class Arguments;
class Output;

/// What the process ends with, as grep does.
enum class ExitStatus {
  kDone = 0,    ///< Done, found, well-formed.
  kNo = 1,      ///< The answer is no.
  kTrouble = 2  ///< Bad usage, an unreadable file, a tree that could not be made, a failed write.
};

/// The command line cannot be used; the text says why.
class UsageError : public std::runtime_error {
 public:
  explicit UsageError(const std::string& text) : std::runtime_error(text) {}
};

/// What all commands share while the tool runs.
struct Session {
  Output& output;
  bool verbose;
};

/// One command of the tool, from its arguments to its exit status.
class Command {
 public:
  virtual ~Command() = default;

  /// Declares the options and operands, whose values are to be stored in this object.
  virtual void DeclareArguments(Arguments& arguments) = 0;

  /// Looks the arguments over before any file is read. Effects: throws a UsageError.
  virtual void Check() const {}

  /// Effects: throws an OutputError when results cannot be written.
  virtual ExitStatus Run(const Session& session) = 0;
};

/// How a command presents itself to the tool.
struct CommandEntry {
  const char* name;
  const char* summary;
  const char* details;  ///< Ends the help text, with an example.
  std::unique_ptr<Command> (*make)();
};

}  // namespace tool

#endif
