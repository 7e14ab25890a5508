#ifndef XMLDOM_TOOLS_COMMAND_UNKNOWNARGUMENTS_H
#define XMLDOM_TOOLS_COMMAND_UNKNOWNARGUMENTS_H

#include <string>
#include <vector>

namespace tool {

class Arguments;

/// Effects: throws a UsageError unless `name` is one of the known commands. It suggests the one
/// that resembles the name most, if any does.
void RequireKnownCommand(const std::string& name, const std::vector<std::string>& known);

/// Effects: throws a UsageError when one of these arguments is an option that none of `declared`
/// knows, or gives a value to a flag. It names all unknown ones as they were typed, in their order,
/// and suggests for each the option that resembles it most, if any does. An argument that is the
/// value of an option, or stands behind "--", is no option.
void RequireKnownOptions(const std::vector<std::string>& arguments,
                         const std::vector<Arguments>& declared);

/// The one of `known` that somebody may have meant who typed `typed`: it begins with that, or few
/// characters have to be changed, added, left out or exchanged with their neighbours to make it.
/// Result: empty when there is none. Cost: the product of both lengths for each that is known.
std::string NearestOf(const std::string& typed, const std::vector<std::string>& known);

}  // namespace tool

#endif
