// The command `format`: writes documents in the layout of the library.
// With -i the file is replaced, and what stands outside the root element is kept.
// Tested by tests/tool/format_test.bash and tests/tool/format_in_place_test.bash.

#include <tools/command/Arguments.h>
#include <tools/command/FileCommand.h>
#include <tools/command/InPlace.h>
#include <tools/command/Layout.h>
#include <tools/command/LossNotice.h>
#include <tools/command/ResultNotice.h>
#include <tools/commands/Commands.h>
#include <tools/document/DocumentFrame.h>
#include <tools/document/DocumentLoad.h>
#include <tools/document/LossCheck.h>
#include <tools/document/SourceEncoding.h>
#include <tools/io/Diagnostics.h>

#include <xmldom/dom/XMLDocument.h>

namespace tool {

namespace {

class FormatCommand : public FileCommand {
 public:
  FormatCommand() : FileCommand(kResults) {}

  void Check() const override {
    m_inPlace.Check(Files());
    if (m_isLossy && !m_inPlace.IsAsked()) throw UsageError("--lossy is for -i");
  }

 protected:
  void DeclareOptions(Arguments& arguments) override {
    m_layout.DeclareOptions(arguments);
    m_inPlace.DeclareOptions(arguments);
    arguments.AddFlag("--lossy", m_isLossy,
                      "Replace the file even if something of it is lost or moved");
    m_notice.DeclareOptions(arguments);
  }

  bool ReplacesFiles() const override { return m_inPlace.IsAsked(); }

  ExitStatus RunOn(const Input& input, ResultWriter& results, const Session&) override {
    const XMLPtr<IXMLDOMDocument2> document = LoadDocument(input);
    if (document == nullptr) return ExitStatus::kTrouble;
    if (m_inPlace.IsAsked()) return Replace(input, *document);
    const std::string xml = m_layout.Write(*document);
    const ResultProblem problem = CheckResult(SourceEncoding(input.text), xml.c_str(),
                                              *document->m_pFirstChild, ResultKind::kFragment);
    if (ComplainOfResult(problem, input, *document)) return ExitStatus::kTrouble;
    results.Write(xml);
    m_notice.Say(input, FindLoss(input, Surroundings::kDropped));
    return ExitStatus::kDone;
  }

 private:
  ExitStatus Replace(const Input& input, IXMLDOMDocument2& document) const {
    const LossReport report = FindLoss(input, Surroundings::kKept);
    if (report.reason != nullptr && !m_isLossy) {
      ComplainAt(input, report.offset, report.reason);
      Complain("nothing is replaced; --lossy does it all the same");
      return ExitStatus::kTrouble;
    }
    const std::string result = Frame(input.text, report, m_layout.Write(document));
    // The only copy of a document may be replaced, so every result is parsed, also where nothing is
    // known to go wrong. Entities are declared in the frame.
    if (result != input.text) {
      const ResultProblem problem =
          FindResultProblem(result.c_str(), *document.m_pFirstChild, ResultKind::kDocument);
      if (ComplainOfResult(problem, input, document)) return ExitStatus::kTrouble;
    }
    const ExitStatus status = m_inPlace.Replace(input, result);
    if (status == ExitStatus::kDone) m_notice.Say(input, report);
    return status;
  }

  Layout m_layout;
  InPlace m_inPlace;
  bool m_isLossy = false;
  LossNotice m_notice;
};

std::unique_ptr<Command> Make() { return std::make_unique<FormatCommand>(); }

}  // namespace

const CommandEntry kFormatCommand = {
    "format", "Write a document with an element a line, indented",
    "What stands outside the root element is left out, and so is white space between elements.\n"
    "The text of an element stands before its other children. The first thing of a file that is\n"
    "lost or moved so is told on standard error.\n"
    "With -i what stands outside the root element is kept, and a file of which something would be\n"
    "lost or moved is not replaced; 'xmldom check --lossless' tells beforehand.\n"
    "What would not load again, or with other elements, is never written.\n"
    "Exit status: 0 when written, 2 for trouble.\n"
    "\n"
    "Example: xmldom format config.xml\n"
    "Example: xmldom format -i.old config.xml",
    Make};

}  // namespace tool
