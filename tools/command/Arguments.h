#ifndef XMLDOM_TOOLS_COMMAND_ARGUMENTS_H
#define XMLDOM_TOOLS_COMMAND_ARGUMENTS_H

#include <functional>
#include <memory>
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

  /// An option with a value that has got another name. Effects: when it is given, parsing throws a
  /// UsageError that tells the new name.
  void AddRenamed(const std::string& oldName, const std::string& newName);

  /// Makes `option` an error unless `required` is given too; both have been added before.
  void Require(const std::string& option, const std::string& required);
  /// Makes it an error to give both of two options, which have been added before.
  void Exclude(const std::string& option, const std::string& other);

  /// How many values the option of this name takes at most. Result: -1 when there is no such
  /// option.
  int MostValuesOf(const std::string& option) const;

  /// The spellings of all options that help shows.
  std::vector<std::string> OptionNames() const;

 private:
  CLI::App& m_parser;
};

/// Parses the arguments of the tool: options that belong to all commands, the name of a command,
/// and the options and operands of that command.
class ArgumentParser {
 public:
  /// `closing` ends the help text.
  ArgumentParser(const std::string& program, const std::string& summary,
                 const std::string& closing);
  ~ArgumentParser();

  ArgumentParser(const ArgumentParser&) = delete;
  ArgumentParser& operator=(const ArgumentParser&) = delete;

  /// The options that belong to all commands. "--help" is one of them.
  Arguments General() { return Arguments(*m_parser); }
  /// Adds "--version", which makes `version` the answer.
  void AddVersion(const std::string& version);
  /// Adds a command. Result: its options and operands. `details` ends its help text.
  Arguments AddCommand(const std::string& name, const std::string& summary,
                       const std::string& details);

  /// Parses arguments, and stores what they give in the variables that were declared.
  /// Result: whether the command is to be run; otherwise `answer` holds the help or the version
  /// that the user asks for. Effects: throws a UsageError for arguments that make no sense.
  bool Parse(const std::vector<std::string>& arguments, std::string& answer);

 private:
  std::unique_ptr<CLI::App> m_parser;
};

}  // namespace tool

#endif
