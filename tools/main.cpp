// The command-line tool: finds the command, has it run and ends as it says.

#include <tools/command/AttachedSuffix.h>
#include <tools/commands/Commands.h>
#include <tools/io/Diagnostics.h>
#include <tools/io/Output.h>
#include <tools/io/StandardOutput.h>

#include <expat.h>
#include <CLI/CLI.hpp>

#include <algorithm>
#include <csignal>
#include <map>
#include <sstream>

namespace tool {

namespace {

const char kAbout[] = "XML documents: check, write, search, show, edit, compare.";
const char kClosing[] =
    "'xmldom COMMAND --help' explains a command.\n"
    "Exit status: 0 done, found or well-formed; 1 the answer is no; 2 trouble.\n"
    "\n"
    "Example: xmldom value //comment /usr/share/mime/packages/*.xml";

/// The numbers that a report of a fault needs. Expat can be another than the one built with.
std::string Version() {
  const XML_Expat_Version expat = XML_ExpatVersionInfo();
  std::ostringstream text;
  text << "xmldom " XMLDOM_VERSION "\n"
       << "built with libxmldom " XMLDOM_VERSION " (so-version " XMLDOM_SOVERSION "), "
       << "running with Expat " << expat.major << '.' << expat.minor << '.' << expat.micro;
  return text.str();
}

/// The command line as its user wrote it: which command, with which options.
class CommandLine {
 public:
  CommandLine() : m_parser(kAbout, "xmldom") {
    m_parser.set_help_flag("-h,--help", "Show this help and exit");
    m_parser.set_version_flag("--version", Version, "Show the version and exit");
    m_parser.add_flag("--verbose", m_verbose, "Also say what is fine, and what the library prints");
    m_parser.require_subcommand(0, 1);
    m_parser.get_formatter()->label("OPTIONS", "OPTION");
    m_parser.get_formatter()->label("SUBCOMMAND", "COMMAND");
    m_parser.footer(kClosing);
    for (const CommandEntry* entry : Commands()) {
      CLI::App* described = m_parser.add_subcommand(entry->name, entry->summary);
      described->group("Commands");
      described->footer(entry->details);
      described->fallthrough();
      m_commands[described] = entry->make();
      m_commands[described]->Describe(*described);
    }
  }

  ExitStatus Execute(int argc, char** argv, Output& output) {
    try {
      m_parser.parse(Arguments(argc, argv));
      DivertStandardOutput(m_verbose);
      SayLogEvents();
      Command& command = Chosen();
      command.Check();
      return command.Run({output, m_verbose});
    } catch (const CLI::CallForHelp&) {
      output.Write(m_parser.help());
    } catch (const CLI::CallForVersion& version) {
      output.Write(version.what() + std::string("\n"));
    } catch (const CLI::ParseError& error) {
      return Refuse(error.what());
    } catch (const UsageError& error) {
      return Refuse(error.what());
    }
    return ExitStatus::kDone;
  }

 private:
  /// What the parser is to read: a suffix attached to -i stands apart.
  std::vector<std::string> Arguments(int argc, char** argv) const {
    std::vector<std::string> arguments(argv + 1, argv + argc);
    const auto named = std::find_if(arguments.begin(), arguments.end(),
                                    [](const std::string& text) { return text[0] != '-'; });
    for (const auto& command : m_commands) {
      if (named == arguments.end() || command.first->get_name() != *named) continue;
      const auto rest = SplitSuffixes({named + 1, arguments.end()}, *command.first);
      arguments.erase(named + 1, arguments.end());
      arguments.insert(arguments.end(), rest.begin(), rest.end());
      break;
    }
    // From the last to the first, as the parser wants them.
    std::reverse(arguments.begin(), arguments.end());
    return arguments;
  }

  Command& Chosen() const {
    const auto chosen = m_parser.get_subcommands();
    if (chosen.empty()) throw UsageError("a command is needed");
    return *m_commands.at(chosen.front());
  }

  ExitStatus Refuse(const std::string& reason) const {
    Complain(reason);
    const auto chosen = m_parser.get_subcommands();
    const std::string command = chosen.empty() ? "" : chosen.front()->get_name() + " ";
    Complain("'xmldom " + command + "--help' explains more");
    return ExitStatus::kTrouble;
  }

  CLI::App m_parser;
  bool m_verbose = false;
  std::map<const CLI::App*, std::unique_ptr<Command>> m_commands;
};

int Run(int argc, char** argv) {
  // A closed pipe, or a limit on the size of files, is then an error of the write, told like any
  // other.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  try {
    Output output(KeepStandardOutput());
    const ExitStatus status = CommandLine().Execute(argc, argv, output);
    output.Finish();
    return static_cast<int>(status);
  } catch (const std::exception& error) {
    Complain(error.what());
    return static_cast<int>(ExitStatus::kTrouble);
  }
}

}  // namespace

}  // namespace tool

int main(int argc, char** argv) { return tool::Run(argc, argv); }
