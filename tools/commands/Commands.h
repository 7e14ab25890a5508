#ifndef XMLDOM_TOOLS_COMMANDS_COMMANDS_H
#define XMLDOM_TOOLS_COMMANDS_COMMANDS_H

#include <tools/command/Command.h>

#include <vector>

namespace tool {

// The entries of the commands, each defined in the source of its command.
extern const CommandEntry kCheckCommand;
extern const CommandEntry kDiffCommand;
extern const CommandEntry kEditCommand;
extern const CommandEntry kFormatCommand;
extern const CommandEntry kMaskCommand;
extern const CommandEntry kPageCommand;
extern const CommandEntry kPathCommand;
extern const CommandEntry kSelectCommand;
extern const CommandEntry kTreeCommand;
extern const CommandEntry kValueCommand;

/// All commands, in the order in which help lists them.
const std::vector<const CommandEntry*>& Commands();

}  // namespace tool

#endif
