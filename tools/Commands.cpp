#include "Commands.h"

namespace tool {

const std::vector<const CommandEntry*>& Commands() {
  static const std::vector<const CommandEntry*> commands = {
      &kCheckCommand, &kFormatCommand, &kSelectCommand, &kValueCommand, &kTreeCommand};
  return commands;
}

}  // namespace tool
