// The command `format`: writes documents in the layout of the library.
// With -i the file is replaced, and what stands outside the root element is kept.
// Tested by tests/tool/format_test.bash and tests/tool/format_in_place_test.bash.

#include <tools/command/FileCommand.h>
#include <tools/command/Layout.h>
#include <tools/command/Rewriting.h>
#include <tools/commands/Commands.h>
#include <tools/document/DocumentFrame.h>
#include <tools/document/DocumentLoad.h>

#include <xmldom/dom/XMLDocument.h>

namespace tool {

namespace {

class FormatCommand : public FileCommand {
 public:
  FormatCommand() : FileCommand(kResults) {}

  void Check() const override { m_rewriting.Check(Files()); }

 protected:
  void DeclareOptions(Arguments& arguments) override {
    m_layout.DeclareOptions(arguments);
    m_rewriting.DeclareOptions(arguments);
  }

  bool ReplacesFiles() const override { return m_rewriting.IsAsked(); }

  ExitStatus RunOn(const Input& input, ResultWriter& results, const Session&) override {
    const XMLPtr<IXMLDOMDocument2> document = LoadDocument(input);
    if (document == nullptr) return ExitStatus::kTrouble;
    if (m_rewriting.IsAsked()) return Replace(input, *document);
    results.Write(m_layout.Write(*document));
    return ExitStatus::kDone;
  }

 private:
  ExitStatus Replace(const Input& input, IXMLDOMDocument2& document) const {
    const LossReport report = FindLoss(input.text, Surroundings::kKept);
    if (!m_rewriting.Allows(input, report)) return ExitStatus::kTrouble;
    return m_rewriting.Replace(input, Frame(input.text, report, m_layout.Write(document)));
  }

  Layout m_layout;
  Rewriting m_rewriting;
};

std::unique_ptr<Command> Make() { return std::make_unique<FormatCommand>(); }

}  // namespace

const CommandEntry kFormatCommand = {
    "format", "Write a document with an element a line, indented",
    "What stands outside the root element is left out, and so is white space between elements.\n"
    "The text of an element stands before its other children.\n"
    "With -i nothing is left out: what stands outside the root element is kept, and a file of "
    "which\n"
    "something would be lost or moved is not replaced; 'xmldom check --lossless' tells "
    "beforehand.\n"
    "Exit status: 0 when written, 2 for trouble.\n"
    "\n"
    "Example: xmldom format config.xml\n"
    "Example: xmldom format -i.old config.xml",
    Make};

}  // namespace tool
