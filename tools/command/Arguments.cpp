// Declares options and operands to CLI11, which parses them. Only this and CommandLine.cpp include
// CLI11, because its headers take seconds to compile: commands call these functions instead.
// Tested by tests/tool/command_line_test.bash and the tests of the commands.

#include <tools/command/Arguments.h>

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

void Arguments::AddRepeatable(const std::string& names, const std::string& valueNames,
                              int valueCount,
                              const std::function<void(const std::vector<std::string>&)>& meet,
                              const std::string& help, const std::string& heading) {
  const CLI::callback_t callback = [meet](const CLI::results_t& values) {
    meet(values);
    return true;
  };
  CLI::Option* option = m_parser.add_option(names, callback, help)
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

int Arguments::MostValuesOf(const std::string& option) const {
  const CLI::Option* found = m_parser.get_option_no_throw(option);
  return found == nullptr ? -1 : found->get_items_expected_max();
}

}  // namespace tool
