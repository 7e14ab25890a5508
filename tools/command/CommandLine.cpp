// The command line of the tool: finds the command that it names and has its arguments parsed.
// What is not known is refused before anything is parsed, so that messages name it as it was typed.
// Tested by tests/tool/command_line_test.bash.

#include <tools/command/CommandLine.h>

#include <tools/command/AttachedSuffix.h>
#include <tools/command/UnknownArguments.h>

#include <algorithm>
#include <utility>

namespace tool {

CommandLine::CommandLine(const Program& program, const std::vector<const CommandEntry*>& commands)
    : m_program(program.name), m_parser(program.name, program.summary, program.closing) {
  m_parser.AddVersion(program.version);
  m_parser.General().AddFlag("--verbose", m_isVerbose,
                             "Also say what is fine, and how many changes each edit made");
  for (const CommandEntry* entry : commands) {
    Arguments arguments = m_parser.AddCommand(entry->name, entry->summary, entry->details);
    std::unique_ptr<Command> command = entry->make();
    command->DeclareArguments(arguments);
    m_commands.insert({entry->name, ParsedCommand{arguments, std::move(command)}});
  }
}

Command* CommandLine::Parse(int argc, char** argv, std::string& answer) {
  std::vector<std::string> arguments(argv + 1, argv + argc);
  // No general option has a value, so the first operand is the command.
  const auto name = std::find_if(arguments.begin(), arguments.end(),
                                 [](const std::string& text) { return text[0] != '-'; });
  const auto end = arguments.end();
  const std::vector<Arguments> general = {m_parser.General()};
  if (name == end) {
    RequireKnownOptions({arguments.begin(), end}, general);
  } else {
    std::vector<std::string> names;
    for (const auto& entry : m_commands) names.push_back(entry.first);
    RequireKnownOptions({arguments.begin(), name}, general);
    RequireKnownCommand(*name, names);
    m_named = *name;
    const Arguments& declared = m_commands.at(m_named).arguments;
    const std::vector<std::string> rest(name + 1, end);
    RequireKnownOptions(rest, {declared, general.front()});
    const std::vector<std::string> split = SplitSuffixes(rest, declared);
    arguments.erase(name + 1, end);
    arguments.insert(arguments.end(), split.begin(), split.end());
  }
  if (!m_parser.Parse(arguments, answer)) return nullptr;
  if (m_named.empty()) throw UsageError("a command is needed");
  return m_commands.at(m_named).command.get();
}

std::string CommandLine::HelpCommand() const {
  return m_program + " " + (m_named.empty() ? "" : m_named + " ") + "--help";
}

}  // namespace tool
