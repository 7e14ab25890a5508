// The command `edit`: changes documents at paths, on the way to standard output or in their files.
// The edits are made in the text; the result is written only when each of them has been made.
// Tested by tests/tool/edit_test.bash and tests/tool/edit_in_place_test.bash.

#include <tools/command/Arguments.h>
#include <tools/command/FileCommand.h>
#include <tools/command/InPlace.h>
#include <tools/commands/Commands.h>
#include <tools/document/DocumentLoad.h>
#include <tools/document/SourceEncoding.h>
#include <tools/edit/Edit.h>
#include <tools/edit/EditProof.h>
#include <tools/edit/EditStep.h>
#include <tools/edit/EditedText.h>
#include <tools/io/Diagnostics.h>

#include <xmldom/dom/XMLDocument.h>

namespace tool {

namespace {

class EditCommand : public FileCommand {
 public:
  EditCommand() : FileCommand(kChanges) {}

  void Check() const override {
    m_inPlace.Check(Files());
    if (m_edits.empty()) throw UsageError("an edit is needed, such as --set PATH TEXT");
    for (const Edit& edit : m_edits) CheckEdit(edit, m_all);
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
    arguments.AddFlag("--all", m_all,
                      "Change all elements that a path selects, not the first alone");
    m_inPlace.DeclareOptions(arguments);
  }

  bool KeepsEncoding() const override { return true; }
  bool ReplacesFiles() const override { return m_inPlace.IsAsked(); }

  ExitStatus RunOn(const Input& input, ResultWriter& results, const Session& session) override {
    const SourceEncoding encoding(input.text);
    Input decoded = {input.name, std::string()};
    std::string reason;
    if (!encoding.Decode(input.text, decoded.text, reason)) {
      ComplainAt(decoded, decoded.text.size(), reason);
      return ExitStatus::kTrouble;
    }
    XMLPtr<IXMLDOMDocument2> tree = LoadDocument(decoded);
    if (tree == nullptr) return ExitStatus::kTrouble;
    EditedText edited(decoded.text, tree, encoding);
    for (const Edit& edit : m_edits) {
      const ExitStatus status = Try(edit, edited, decoded.text, input.name, session);
      if (status != ExitStatus::kDone) return status;
    }
    return Write(edited, input, results);
  }

 private:
  /// Makes one edit. `text` is that of the file, before all edits. Effects: a message to standard
  /// error when it cannot be made, and with --verbose also when it was.
  ExitStatus Try(const Edit& edit, EditedText& edited, const std::string& text,
                 const std::string& file, const Session& session) const {
    const std::string name = std::string(edit.kind->option) + " " + edit.operands.front();
    const std::string title = name + ": ";
    const auto complainAt = [&](std::size_t offset, const std::string& reason) {
      // Lines and columns need not be those of the file any more.
      const char* const when = edited.Text() == text ? ": " : ", after the edits before it: ";
      ComplainAt({file, edited.Text()}, offset, name + when + reason);
    };
    try {
      const EditOutcome outcome = edited.Apply(edit, m_all);
      if (outcome.changed == 0) {
        ComplainAbout(file, title + (outcome.selected == 0 ? "the path selects nothing"
                                                           : "there is no such attribute"));
        return ExitStatus::kNo;
      }
      const std::string count = std::to_string(outcome.changed);
      if (session.verbose) {
        Remark(file, title + count + (outcome.changed == 1 ? " change" : " changes"));
      }
      return ExitStatus::kDone;
    } catch (const EditRefusal& refusal) {
      complainAt(refusal.Offset(), refusal.what());
    } catch (const SourceMapError& error) {
      complainAt(error.Offset(), error.what());
    } catch (const ProofFailure& failure) {
      SayUnproved(file, title, failure);
    }
    return ExitStatus::kTrouble;
  }

  static void SayUnproved(const std::string& file, const std::string& title,
                          const ProofFailure& failure) {
    ComplainAbout(file,
                  title + "the result was checked, and " + failure.what() + "; nothing is written");
  }

  ExitStatus Write(const EditedText& edited, const Input& input, ResultWriter& results) const {
    std::string bytes;
    try {
      bytes = edited.Bytes();
    } catch (const ProofFailure& failure) {
      SayUnproved(input.name, std::string(), failure);
      return ExitStatus::kTrouble;
    }
    if (m_inPlace.IsAsked()) return m_inPlace.Replace(input, bytes);
    results.Write(bytes);
    // The name of the next file begins a line.
    if (Files().size() > 1 && bytes.back() != '\n') results.EndLine();
    return ExitStatus::kDone;
  }

  std::vector<Edit> m_edits;
  bool m_all = false;
  InPlace m_inPlace;
};

std::unique_ptr<Command> Make() { return std::make_unique<EditCommand>(); }

}  // namespace

const CommandEntry kEditCommand = {
    "edit", "Change a document at paths",
    "PATH says which element to change. When a path selects several elements, only the first of\n"
    "them is changed, or all of them with --all. The path '/' stands for the root element;\n"
    "'xmldom select --help' explains paths. TEXT and VALUE are plain text, which is escaped where\n"
    "needed. XML is one element with all that it contains.\n"
    "\n"
    "Only the bytes of the edit change: comments, quotes, line breaks, the document type and the\n"
    "encoding stay as they are. What is put in is indented like what stands beside it. Each "
    "result\n"
    "is parsed and compared with what the library makes of the same edit before it is written.\n"
    "With -i the file is replaced as a whole, or stays as it is.\n"
    "\n"
    "Exit status: 0 when all edits were made; 1 when a path selects nothing or an attribute to\n"
    "remove is not there, and then nothing is written; 2 when something went wrong.\n"
    "\n"
    "Example: xmldom edit -i.old --set /config/hostname gw1 --remove //debug config.xml",
    Make};

}  // namespace tool
