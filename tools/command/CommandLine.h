#ifndef XMLDOM_TOOLS_COMMAND_COMMANDLINE_H
#define XMLDOM_TOOLS_COMMAND_COMMANDLINE_H

#include <tools/command/Arguments.h>
#include <tools/command/Command.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace tool {

/// How the program presents itself in its help.
struct Program {
  const char* name;
  const char* summary;
  const char* closing;  ///< Ends the help text.
  std::string version;  ///< What "--version" writes.
};

/// The command line of the tool: general options, the name of a command, and the options and
/// operands of that command.
class CommandLine {
 public:
  /// Makes one object of each command, which declares its options.
  CommandLine(const Program& program, const std::vector<const CommandEntry*>& commands);

  CommandLine(const CommandLine&) = delete;
  CommandLine& operator=(const CommandLine&) = delete;

  /// Parses the arguments that main() is called with, and stores the options of the command in it.
  /// Result: the command that is to be run, owned by this object; null when the user asks for help
  /// or for the version. Out: `answer` holds what the user then gets to read.
  /// Effects: throws a UsageError for arguments that cannot be understood.
  Command* Parse(int argc, char** argv, std::string& answer);

  /// Whether "--verbose" is given.
  bool IsVerbose() const { return m_isVerbose; }

  /// What the user has to type to get help: for the command that is named, as far as parsing has
  /// come to one, and for the tool otherwise.
  std::string HelpCommand() const;

 private:
  struct ParsedCommand {
    Arguments arguments;
    std::unique_ptr<Command> command;
  };

  const std::string m_program;
  ArgumentParser m_parser;
  std::map<std::string, ParsedCommand> m_commands;  // by name
  std::string m_named;                              // the command that is named, once it is known
  bool m_isVerbose = false;
};

}  // namespace tool

#endif
