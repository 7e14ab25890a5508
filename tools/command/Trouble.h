#ifndef XMLDOM_TOOLS_COMMAND_TROUBLE_H
#define XMLDOM_TOOLS_COMMAND_TROUBLE_H

#include <tools/command/Command.h>

#include <functional>
#include <string>

namespace tool {

/// Trouble is what grep and diff call their exit status 2: there is no answer, because something
/// went wrong. This does work on a file, or on several, that messages call `name`.
/// Result: that of the work; kTrouble when the library fails, memory runs out, the result is too
/// large, or any other exception ends the work. Effects: a message then says so. An OutputError,
/// which is no matter of the file, and a UsageError are not caught.
ExitStatus SayTrouble(const std::string& name, const std::function<ExitStatus()>& work);

}  // namespace tool

#endif
