#ifndef XMLDOM_TOOLS_COMMAND_ATTACHEDSUFFIX_H
#define XMLDOM_TOOLS_COMMAND_ATTACHEDSUFFIX_H

#include <string>
#include <vector>

namespace tool {

class Arguments;

/// The flag that may have a suffix attached, and the option that takes it when it has been split
/// off.
extern const char kInPlaceFlag[];
extern const char kSuffixOption[];

/// Splits off what is attached to the flag, because the argument parser knows no value that can
/// only be attached: "-i.old" becomes "-i" and "--backup-suffix=.old". What stands as the value of
/// an option, or behind "--", stays as it is.
/// `arguments` are those of the command `command`, in their order, behind its name.
std::vector<std::string> SplitSuffixes(const std::vector<std::string>& arguments,
                                       const Arguments& declared);

}  // namespace tool

#endif
