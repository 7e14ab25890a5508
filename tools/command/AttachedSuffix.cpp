// Finds "-i" with a suffix attached among the arguments of a command and splits it in two.
// Goes through the arguments as the parser will, so that the value of another option is left alone.
// Tested by tests/tool/edit_in_place_test.bash.

#include <tools/command/AttachedSuffix.h>

#include <tools/command/Arguments.h>

namespace tool {

const char kInPlaceFlag[] = "-i";
const char kSuffixOption[] = "--backup-suffix";

namespace {

/// The name of the option in an argument that begins with '-': "-x", or "--name" up to a '='.
std::string OptionName(const std::string& argument) {
  return argument.substr(0, argument.compare(0, 2, "--") == 0 ? argument.find('=') : 2);
}

}  // namespace

void VisitOptions(const std::vector<std::string>& arguments,
                  const std::function<int(std::size_t, const std::string&)>& visit) {
  for (std::size_t index = 0; index < arguments.size(); ++index) {
    const std::string& argument = arguments[index];
    if (argument == "--") return;
    if (argument.size() < 2 || argument.front() != '-') continue;
    const std::string name = OptionName(argument);
    const int mostValues = visit(index, name);
    const bool hasAttached = name.size() < argument.size();
    if (mostValues > 0) index += static_cast<std::size_t>(mostValues) - (hasAttached ? 1 : 0);
  }
}

std::vector<std::string> SplitSuffixes(const std::vector<std::string>& arguments,
                                       const Arguments& declared) {
  std::vector<std::string> split;
  std::size_t copied = 0;
  VisitOptions(arguments, [&](std::size_t index, const std::string& name) {
    const std::string& argument = arguments[index];
    if (name == kInPlaceFlag && argument.size() > name.size()) {
      split.insert(split.end(), &arguments[copied], &argument);
      split.push_back(name);
      split.push_back(kSuffixOption + ("=" + argument.substr(name.size())));
      copied = index + 1;
    }
    return declared.MostValuesOf(name);
  });
  split.insert(split.end(), arguments.begin() + static_cast<std::ptrdiff_t>(copied),
               arguments.end());
  return split;
}

}  // namespace tool
