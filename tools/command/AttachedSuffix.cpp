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

std::vector<std::string> SplitSuffixes(const std::vector<std::string>& arguments,
                                       const Arguments& declared) {
  std::vector<std::string> split;
  std::size_t values = 0;  // how many of the next arguments are values of the last option
  for (auto at = arguments.begin(); at != arguments.end(); ++at) {
    split.push_back(*at);
    if (values > 0) {
      --values;
      continue;
    }
    if (*at == "--") {
      split.insert(split.end(), at + 1, arguments.end());
      break;
    }
    if (at->size() < 2 || at->front() != '-') continue;
    const std::string name = OptionName(*at);
    const int mostValues = declared.MostValuesOf(name);
    if (mostValues < 0) continue;
    const bool isAttached = name.size() < at->size();
    values = static_cast<std::size_t>(mostValues);
    if (isAttached && values > 0) --values;
    if (isAttached && name == kInPlaceFlag) {
      split.back() = name;
      split.push_back(kSuffixOption + ("=" + at->substr(name.size())));
    }
  }
  return split;
}

}  // namespace tool
