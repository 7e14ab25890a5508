#ifndef XMLDOM_TOOLS_COMMAND_ARGUMENTS_H
#define XMLDOM_TOOLS_COMMAND_ARGUMENTS_H

#include <functional>
#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace tool {

/// The value of an option that takes a text. An option that is given with an empty text differs
/// from one that is not given.
struct OptionalText {
  bool isGiven = false;
  std::string text;
};

/// The options and operands of one command. A command declares them here once; parsing the command
/// line then stores what the user gives in the variables that were declared with them. A variable
/// keeps its value when its option is not given.
///
/// `names` are the spellings of an option, as in "-0,--null"; `help` is what the help text says of
/// it. Variables are borrowed, and have to live as long as the command line is parsed.
class Arguments {
 public:
  /// Borrows the argument parser of one command.
  explicit Arguments(CLI::App& parser) : m_parser(parser) {}

  /// An operand that the user has to give.
  void AddOperand(const std::string& name, std::string& value, const std::string& help);
  /// Any number of operands, also none.
  void AddOperands(const std::string& name, std::vector<std::string>& values,
                   const std::string& help);

  /// An option without a value.
  void AddFlag(const std::string& names, bool& isGiven, const std::string& help);
  /// An option whose value may be any text; help calls the value `valueName`.
  void AddText(const std::string& names, const std::string& valueName, OptionalText& value,
               const std::string& help);
  /// An option whose value is a number from `smallest` to the largest int. Help shows the value as
  /// `valueText`, which also tells the number that holds without the option.
  void AddNumber(const std::string& names, const std::string& valueText, int smallest, int& value,
                 const std::string& help);
  /// An option whose value is one of `choices`.
  void AddChoice(const std::string& names, const std::vector<std::string>& choices,
                 std::string& value, const std::string& help);
  /// An option with a text that help does not show. The last one counts when it is given
  /// repeatedly.
  void AddHiddenText(const std::string& names, std::string& value);

  /// An option that may be given repeatedly and takes `valueCount` values, which help calls
  /// `valueNames`. `meet` is called with them wherever the option stands, so that options of
  /// different names are met in the order of the command line. Help lists it below `heading`, or
  /// with the other options when that is empty.
  void AddRepeatable(const std::string& names, const std::string& valueNames, int valueCount,
                     const std::function<void(const std::vector<std::string>&)>& meet,
                     const std::string& help, const std::string& heading);

  /// Makes `option` an error unless `required` is given too; both have been added before.
  void Require(const std::string& option, const std::string& required);

  /// How many values the option of this name takes at most. Result: -1 when there is no such
  /// option.
  int MostValuesOf(const std::string& option) const;

 private:
  CLI::App& m_parser;
};

}  // namespace tool

#endif
