// The list of all commands, in the order in which help shows them.
// Each command defines its entry in its own source, and hides its class there.
// Tested by tests/tool/command_line_test.bash and tests/tool/manual_test.bash.

#include <tools/commands/Commands.h>

namespace tool {

const std::vector<const CommandEntry*>& Commands() {
  static const std::vector<const CommandEntry*> commands = {
      &kCheckCommand, &kFormatCommand, &kSelectCommand, &kValueCommand, &kPathCommand,
      &kTreeCommand,  &kEditCommand,   &kDiffCommand,   &kMaskCommand,  &kPageCommand};
  return commands;
}

}  // namespace tool
