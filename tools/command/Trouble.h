#ifndef XMLDOM_TOOLS_COMMAND_TROUBLE_H
#define XMLDOM_TOOLS_COMMAND_TROUBLE_H

#include <tools/command/Command.h>

#include <functional>
#include <string>

namespace tool {

/// Does the work on what messages call `name`.
/// Result: that of the work; kTrouble when the library or the memory fails on the way, which is
/// said. Effects: an OutputError passes through.
ExitStatus SayTrouble(const std::string& name, const std::function<ExitStatus()>& work);

}  // namespace tool

#endif
