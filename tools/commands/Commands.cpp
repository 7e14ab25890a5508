#include <tools/commands/Commands.h>

namespace tool {

const std::vector<const CommandEntry*>& Commands() {
  static const std::vector<const CommandEntry*> commands = {
      &kCheckCommand, &kFormatCommand, &kSelectCommand, &kValueCommand, &kPathCommand,
      &kTreeCommand,  &kEditCommand,   &kDiffCommand,   &kMaskCommand,  &kPageCommand};
  return commands;
}

}  // namespace tool
