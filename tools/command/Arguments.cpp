// Declares options and operands to CLI11, which parses them. Only this source includes CLI11,
// because its headers take seconds to compile: everything else calls these functions. The
// exceptions with which CLI11 ends parsing become a result or a UsageError here. Tested by
// tests/tool/command_line_test.bash and the tests of the commands.

#include <tools/command/Arguments.h>

#include <tools/command/Command.h>
#include <tools/io/Diagnostics.h>

#include <CLI/CLI.hpp>

#include <climits>

namespace tool {

namespace {

// CLI11 shows the type of a value behind a name; a blank in its place leaves the name alone.
const char kNoValueName[] = " ";

}  // namespace

void Arguments::AddOperand(const std::string& name, std::string& value, const std::string& help) {
  m_parser.add_option(name, value, help)->required()->option_text(kNoValueName);
}

void Arguments::AddOperands(const std::string& name, std::vector<std::string>& values,
                            const std::string& help) {
  m_parser.add_option(name, values, help)->option_text(kNoValueName);
}

void Arguments::AddFlag(const std::string& names, bool& isGiven, const std::string& help) {
  m_parser.add_flag(names, isGiven, help);
}

void Arguments::AddText(const std::string& names, const std::string& valueName, OptionalText& value,
                        const std::string& help) {
  const std::function<void(const std::string&)> store = [&value](const std::string& text) {
    value.isGiven = true;
    value.text = text;
  };
  m_parser.add_option_function(names, store, help)->option_text(valueName);
}

void Arguments::AddNumber(const std::string& names, const std::string& valueText, int smallest,
                          int& value, const std::string& help) {
  m_parser.add_option(names, value, help)
      ->check(CLI::Range(smallest, INT_MAX))
      ->option_text(valueText);
}

void Arguments::AddChoice(const std::string& names, const std::vector<std::string>& choices,
                          std::string& value, const std::string& help) {
  m_parser.add_option(names, value, help)
      ->check(CLI::IsMember(choices))
      ->option_text(CLI::detail::join(choices, "|"));
}

void Arguments::AddHiddenText(const std::string& names, std::string& value) {
  m_parser.add_option(names, value)->group("")->take_last();
}

void Arguments::AddRenamed(const std::string& oldName, const std::string& newName) {
  const std::string command = m_parser.get_name();
  const std::function<void(const std::string&)> refuse = [=](const std::string&) {
    throw UsageError(oldName + " of " + command + " is called " + newName + " now");
  };
  m_parser.add_option_function(oldName, refuse)->group("");
}

void Arguments::AddRepeatable(const std::string& names, const std::string& valueNames,
                              int valueCount,
                              const std::function<void(const std::vector<std::string>&)>& meet,
                              const std::string& help, const std::string& heading) {
  const CLI::callback_t callback = [meet](const CLI::results_t& values) {
    meet(values);
    return true;
  };
  CLI::Option* option = m_parser.add_option(names, callback, help)
                            ->type_name(valueNames)  // for the message when one is missing
                            ->type_size(valueCount)
                            ->expected(1)
                            ->allow_extra_args(false)
                            ->trigger_on_parse()
                            ->option_text(valueNames);
  if (!heading.empty()) option->group(heading);
}

void Arguments::Require(const std::string& option, const std::string& required) {
  m_parser.get_option(option)->needs(m_parser.get_option(required));
}

void Arguments::Exclude(const std::string& option, const std::string& other) {
  m_parser.get_option(option)->excludes(m_parser.get_option(other));
}

int Arguments::MostValuesOf(const std::string& option) const {
  const CLI::Option* found = m_parser.get_option_no_throw(option);
  return found == nullptr ? -1 : found->get_items_expected_max();
}

std::vector<std::string> Arguments::OptionNames() const {
  std::vector<std::string> names;
  for (const CLI::Option* option : m_parser.get_options()) {
    if (option->get_group().empty()) continue;
    for (const std::string& name : option->get_snames()) names.push_back("-" + name);
    for (const std::string& name : option->get_lnames()) names.push_back("--" + name);
  }
  return names;
}

ArgumentParser::ArgumentParser(const std::string& program, const std::string& summary,
                               const std::string& closing)
    : m_parser(new CLI::App(summary, program)) {
  m_parser->set_help_flag("-h,--help", "Show this help and exit");
  m_parser->require_subcommand(0, 1);
  m_parser->get_formatter()->label("OPTIONS", "OPTION");
  m_parser->get_formatter()->label("SUBCOMMAND", "COMMAND");
  m_parser->footer(closing);
}

ArgumentParser::~ArgumentParser() = default;

void ArgumentParser::AddVersion(const std::string& version) {
  m_parser->set_version_flag("--version", version, "Show the version and exit");
}

Arguments ArgumentParser::AddCommand(const std::string& name, const std::string& summary,
                                     const std::string& details) {
  CLI::App* command = m_parser->add_subcommand(name, summary);
  command->group("Commands");
  command->footer(details);
  // General options may stand behind the name of the command too.
  command->fallthrough();
  return Arguments(*command);
}

bool ArgumentParser::Parse(const std::vector<std::string>& arguments, std::string& answer) {
  try {
    // CLI11 takes them from the last to the first.
    m_parser->parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    return true;
  } catch (const CLI::CallForHelp&) {
    answer = m_parser->help();
  } catch (const CLI::CallForVersion& version) {
    answer = version.what() + std::string("\n");
  } catch (const CLI::ExtrasError&) {
    std::string text = "too many operands:";
    for (const std::string& extra : m_parser->remaining(true))
      text += " '" + ForMessage(extra) + "'";
    throw UsageError(text);
  } catch (const CLI::ParseError& error) {
    throw UsageError(error.what());
  }
  return false;
}

}  // namespace tool
