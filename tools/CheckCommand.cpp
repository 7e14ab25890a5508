// Tells whether files are well-formed, and where they are not.

#include "Commands.h"
#include "Diagnostics.h"
#include "DocumentLoad.h"
#include "FileCommand.h"

#include <xmldom/dom/XMLDocument.h>

namespace tool {

namespace {

class CheckCommand : public FileCommand {
 public:
  CheckCommand() : FileCommand(kVerdict) {}

 protected:
  void DescribeOptions(CLI::App&) override {}

  ExitStatus RunOn(const Input& input, ResultWriter&, const Session& session) override {
    if (LoadDocument(input) == nullptr) return ExitStatus::kNo;
    if (session.verbose) Remark(input.name, "well-formed");
    return ExitStatus::kDone;
  }
};

std::unique_ptr<Command> Make() { return std::make_unique<CheckCommand>(); }

}  // namespace

const CommandEntry kCheckCommand = {
    "check", "Tell whether files are well-formed XML",
    "Says nothing about a well-formed file, except with --verbose. For any other file it says "
    "what\n"
    "is wrong, with line and column, and shows the place.\n"
    "Exit status: 0 when all files are well-formed, 1 when one is not, 2 for trouble.\n"
    "\n"
    "Example: xmldom check *.xml && echo fine",
    Make};

}  // namespace tool
