// The command `check`: tells whether files are well-formed, and where they are not.
// A file is checked by loading it; with --lossless the loss check follows.
// Tested by tests/tool/check_test.bash and tests/tool/lossless_test.bash.

#include <tools/command/Arguments.h>
#include <tools/command/FileCommand.h>
#include <tools/commands/Commands.h>
#include <tools/document/DocumentLoad.h>
#include <tools/document/LossCheck.h>
#include <tools/io/Diagnostics.h>

#include <xmldom/dom/XMLDocument.h>

namespace tool {

namespace {

class CheckCommand : public FileCommand {
 public:
  CheckCommand() : FileCommand(kVerdict) {}

 protected:
  void DeclareOptions(Arguments& arguments) override {
    arguments.AddFlag(
        "--lossless", m_lossless,
        "Also tell whether 'format -i' gives all of a file back, and where it does not");
  }

  ExitStatus RunOn(const Input& input, ResultWriter&, const Session& session) override {
    if (LoadDocument(input) == nullptr) return ExitStatus::kNo;
    if (m_lossless && !IsLossless(input)) return ExitStatus::kNo;
    if (session.verbose) Remark(input.name, m_lossless ? "well-formed, lossless" : "well-formed");
    return ExitStatus::kDone;
  }

 private:
  static bool IsLossless(const Input& input) {
    const LossReport report = FindLoss(input.text, Surroundings::kKept);
    if (report.reason == nullptr) return true;
    ComplainAt(input, report.offset, report.reason);
    return false;
  }

  bool m_lossless = false;
};

std::unique_ptr<Command> Make() { return std::make_unique<CheckCommand>(); }

}  // namespace

const CommandEntry kCheckCommand = {
    "check", "Tell whether files are well-formed XML",
    "Says nothing about a well-formed file, except with --verbose. For any other file it says "
    "what\n"
    "is wrong, with line and column, and shows the place.\n"
    "With --lossless the same for what 'format -i' would lose or move in a file.\n"
    "Exit status: 0 when all files are well-formed (and lossless), 1 when one is not, 2 for "
    "trouble.\n"
    "\n"
    "Example: xmldom check *.xml && echo fine\n"
    "Example: xmldom check --lossless config.xml",
    Make};

}  // namespace tool
