// The command `check`: tells whether files are well-formed, and where they are not.
// The parser alone checks a file, piece by piece. With --lossless it is loaded too, and the loss
// check follows. Tested by tests/tool/check_test.bash and tests/tool/lossless_test.bash.

#include <tools/command/Arguments.h>
#include <tools/command/FileCommand.h>
#include <tools/commands/Commands.h>
#include <tools/document/DocumentLoad.h>
#include <tools/document/FormCheck.h>
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

  ExitStatus RunOnFile(const std::string& file, const Session& session) override {
    if (m_lossless) return FileCommand::RunOnFile(file, session);
    const std::string name = DisplayName(file);
    FormCheck check;
    const auto take = [&](const char* piece, std::size_t size) { return check.Take(piece, size); };
    std::string reason;
    if (!ReadPieces(file, take, reason)) {
      ComplainAbout(name, reason);
      return ExitStatus::kTrouble;
    }
    FormProblem problem;
    if (!check.Finish(problem)) {
      ComplainAt(name, problem.position, problem.reason, problem.excerpt);
      return ExitStatus::kNo;
    }
    if (session.verbose) Remark(name, "well-formed");
    return ExitStatus::kDone;
  }

  ExitStatus RunOn(const Input& input, ResultWriter&, const Session& session) override {
    if (LoadDocument(input) == nullptr || !IsLossless(input)) return ExitStatus::kNo;
    if (session.verbose) Remark(input.name, "well-formed, lossless");
    return ExitStatus::kDone;
  }

 private:
  static bool IsLossless(const Input& input) {
    const LossReport report = FindLoss(input, Surroundings::kKept);
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
    "Well-formed is all that this says. The other commands also refuse a file of more than\n"
    "2147483647 bytes; so does this one with --lossless, which also says what 'format -i' would\n"
    "lose or move in a file.\n"
    "Exit status: 0 when all files are well-formed (and lossless), 1 when one is not, 2 for "
    "trouble.\n"
    "\n"
    "Example: xmldom check *.xml && echo fine\n"
    "Example: xmldom check --lossless config.xml",
    Make};

}  // namespace tool
