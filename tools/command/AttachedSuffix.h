#ifndef XMLDOM_TOOLS_COMMAND_ATTACHEDSUFFIX_H
#define XMLDOM_TOOLS_COMMAND_ATTACHEDSUFFIX_H

#include <functional>
#include <string>
#include <vector>

namespace tool {

class Arguments;

/// The flag to which a suffix may be attached, and the hidden option that takes the suffix when it
/// has been split off.
extern const char kInPlaceFlag[];
extern const char kSuffixOption[];

/// Calls `visit` with each argument that is an option: where it stands, and its name without what
/// is attached to it, "-x" or "--name". `visit` returns how many values the option takes at most,
/// and -1 when it is not known; arguments that are its values are passed over. Nothing behind "--"
/// is an option.
void VisitOptions(const std::vector<std::string>& arguments,
                  const std::function<int(std::size_t index, const std::string& name)>& visit);

/// Splits off a suffix that is attached to the flag, as it can be for sed: "-i.old" becomes "-i"
/// and "--backup-suffix=.old". CLI11 cannot parse an option whose value is optional and can only be
/// attached: it takes the next argument for the value. An argument that is the value of another
/// option, or stands behind "--", stays as it is.
/// `arguments` are those behind the name of the command, and `declared` tells its options.
std::vector<std::string> SplitSuffixes(const std::vector<std::string>& arguments,
                                       const Arguments& declared);

}  // namespace tool

#endif
