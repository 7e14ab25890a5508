// Parses the command line with CLI11, and finds the command that it names, a subcommand of the
// parser. The exceptions with which CLI11 ends parsing become a result or a UsageError here.
// Tested by tests/tool/command_line_test.bash.

#include <tools/command/CommandLine.h>

#include <tools/command/Arguments.h>
#include <tools/command/AttachedSuffix.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <utility>

namespace tool {

CommandLine::CommandLine(const Program& program, const std::vector<const CommandEntry*>& commands)
    : m_parser(new CLI::App(program.summary, program.name)) {
  m_parser->set_help_flag("-h,--help", "Show this help and exit");
  m_parser->set_version_flag("--version", program.version, "Show the version and exit");
  m_parser->add_flag("--verbose", m_isVerbose,
                     "Also say what is fine, and what the library prints");
  m_parser->require_subcommand(0, 1);
  m_parser->get_formatter()->label("OPTIONS", "OPTION");
  m_parser->get_formatter()->label("SUBCOMMAND", "COMMAND");
  m_parser->footer(program.closing);
  for (const CommandEntry* entry : commands) AddCommand(*entry);
}

CommandLine::~CommandLine() = default;

void CommandLine::AddCommand(const CommandEntry& entry) {
  CLI::App* parser = m_parser->add_subcommand(entry.name, entry.summary);
  parser->group("Commands");
  parser->footer(entry.details);
  // General options may stand behind the name of the command too.
  parser->fallthrough();
  std::unique_ptr<Command> command = entry.make();
  Arguments arguments(*parser);
  command->DeclareArguments(arguments);
  m_commands[entry.name] = {parser, std::move(command)};
}

Command* CommandLine::Parse(int argc, char** argv, std::string& answer) {
  try {
    m_parser->parse(SplitArguments(argc, argv));
  } catch (const CLI::CallForHelp&) {
    answer = m_parser->help();
    return nullptr;
  } catch (const CLI::CallForVersion& version) {
    answer = version.what() + std::string("\n");
    return nullptr;
  } catch (const CLI::ParseError& error) {
    throw UsageError(error.what());
  }
  const auto named = m_parser->get_subcommands();
  if (named.empty()) throw UsageError("a command is needed");
  return m_commands.at(named.front()->get_name()).command.get();
}

std::string CommandLine::HelpCommand() const {
  const auto named = m_parser->get_subcommands();
  const std::string command = named.empty() ? "" : named.front()->get_name() + " ";
  return m_parser->get_name() + " " + command + "--help";
}

/// The arguments with a suffix that is attached to "-i" as an argument of its own, from the last to
/// the first, which is the order that CLI11 takes.
std::vector<std::string> CommandLine::SplitArguments(int argc, char** argv) const {
  std::vector<std::string> arguments(argv + 1, argv + argc);
  const auto name = std::find_if(arguments.begin(), arguments.end(),
                                 [](const std::string& text) { return text[0] != '-'; });
  const auto named = name == arguments.end() ? m_commands.end() : m_commands.find(*name);
  if (named != m_commands.end()) {
    const auto rest = SplitSuffixes({name + 1, arguments.end()}, Arguments(*named->second.parser));
    arguments.erase(name + 1, arguments.end());
    arguments.insert(arguments.end(), rest.begin(), rest.end());
  }
  std::reverse(arguments.begin(), arguments.end());
  return arguments;
}

}  // namespace tool
