// The command `edit`: changes documents at paths, on the way to standard output or in their files.
// All edits are made in the tree; the result is written only when each of them has been made.
// Tested by tests/tool/edit_test.bash and tests/tool/edit_in_place_test.bash.

#include <tools/command/Arguments.h>
#include <tools/command/FileCommand.h>
#include <tools/command/Layout.h>
#include <tools/command/Rewriting.h>
#include <tools/commands/Commands.h>
#include <tools/commands/Edit.h>
#include <tools/document/DocumentFrame.h>
#include <tools/document/DocumentLoad.h>
#include <tools/io/Diagnostics.h>

#include <xmldom/dom/XMLDocument.h>

namespace tool {

namespace {

class EditCommand : public FileCommand {
 public:
  EditCommand() : FileCommand(kChanges) {}

  void Check() const override {
    m_rewriting.Check(Files());
    if (m_edits.empty()) throw UsageError("an edit is needed, such as --set PATH TEXT");
    for (const Edit& edit : m_edits) CheckEdit(edit, m_rewriting.IsCareful());
  }

 protected:
  void DeclareOptions(Arguments& arguments) override {
    for (const EditKind& kind : EditKinds()) {
      // Options are met in the order of the command line, whatever their kinds, and so m_edits has
      // that order too.
      const auto add = [this, &kind](const std::vector<std::string>& operands) {
        m_edits.push_back({&kind, operands});
      };
      arguments.AddRepeatable(kind.option, kind.operands, kind.operandCount, add, kind.summary,
                              "Edits, in the order in which they are to be done");
    }
    m_layout.DeclareOptions(arguments);
    m_rewriting.DeclareOptions(arguments);
  }

  bool ReplacesFiles() const override { return m_rewriting.IsAsked(); }

  ExitStatus RunOn(const Input& input, ResultWriter& results, const Session&) override {
    EditedDocument edited = {{}, LoadDocument(input), m_rewriting.IsCareful()};
    if (edited.document == nullptr) return ExitStatus::kTrouble;
    const LossReport report = FindLoss(input.text, Surroundings::kKept);
    if (!m_rewriting.Allows(input, report)) return ExitStatus::kTrouble;
    for (const Edit& edit : m_edits) {
      const ExitStatus status = Try(edit, edited, input.name);
      if (status != ExitStatus::kDone) return status;
    }
    const std::string result = Frame(input.text, report, m_layout.Write(*edited.document));
    if (m_rewriting.IsAsked()) return m_rewriting.Replace(input, result);
    results.Write(result);
    return ExitStatus::kDone;
  }

 private:
  /// Makes one edit. Effects: a message to standard error when it cannot be made.
  static ExitStatus Try(const Edit& edit, EditedDocument& edited, const std::string& file) {
    const std::string title = std::string(edit.kind->option) + " " + edit.operands.front() + ": ";
    try {
      if (ApplyEdit(edit, edited)) return ExitStatus::kDone;
    } catch (const EditRefusal& refusal) {
      ComplainAbout(file, title + refusal.what());
      return ExitStatus::kTrouble;
    }
    ComplainAbout(file, title + "the path selects nothing");
    return ExitStatus::kNo;
  }

  std::vector<Edit> m_edits;
  Layout m_layout;
  Rewriting m_rewriting;
};

std::unique_ptr<Command> Make() { return std::make_unique<EditCommand>(); }

}  // namespace

const CommandEntry kEditCommand = {
    "edit", "Change a document at paths",
    "PATH says which element to change. When a path selects several elements, only the first of\n"
    "them is changed. The path '/' stands for the root element; 'xmldom select --help' explains\n"
    "paths. TEXT and VALUE are plain text, which is escaped where needed. XML is one element with\n"
    "all that it contains.\n"
    "\n"
    "What stands before and after the root element is kept. The root element is written with one\n"
    "element a line, as 'xmldom format' does. With -i the file is replaced as a whole, or stays "
    "as\n"
    "it is. It also stays as it is when the result would lack something that the file has, such "
    "as\n"
    "a comment, or have it in another place; --lossy replaces it even then.\n"
    "\n"
    "Exit status: 0 when all edits were made; 1 when a path selects nothing, and then nothing is\n"
    "written; 2 when something went wrong.\n"
    "\n"
    "Example: xmldom edit -i.old --set /config/hostname gw1 --remove //debug config.xml",
    Make};

}  // namespace tool
