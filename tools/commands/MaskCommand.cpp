// The command `mask`: writes documents without texts and values of attributes.
// The library does all of it.
// Tested by tests/tool/mask_test.bash.

#include <tools/command/FileCommand.h>
#include <tools/command/LossNotice.h>
#include <tools/command/ResultNotice.h>
#include <tools/commands/Commands.h>
#include <tools/document/DocumentLoad.h>
#include <tools/document/LossCheck.h>
#include <tools/document/SourceEncoding.h>

#include <xmldom/dom/XMLDocument.h>

#include <cstring>

namespace tool {

namespace {

class MaskCommand : public FileCommand {
 public:
  MaskCommand() : FileCommand(kChanges) {}

 protected:
  void DeclareOptions(Arguments& arguments) override { m_notice.DeclareOptions(arguments); }

  ExitStatus RunOn(const Input& input, ResultWriter& results, const Session&) override {
    const XMLPtr<IXMLDOMDocument2> document = LoadDocument(input);
    if (document == nullptr) return ExitStatus::kTrouble;
    const _bstr_t xml = document->GetMaskedXML();
    const ResultProblem problem =
        CheckResult(SourceEncoding(input.text), xml, *document->m_pFirstChild, ResultKind::kMasked);
    if (ComplainOfResult(problem, input, *document)) return ExitStatus::kTrouble;
    results.Write(xml, std::strlen(xml));
    m_notice.Say(input, FindLoss(input, Surroundings::kDropped, Values::kMasked));
    return ExitStatus::kDone;
  }

 private:
  LossNotice m_notice;
};

std::unique_ptr<Command> Make() { return std::make_unique<MaskCommand>(); }

}  // namespace

const CommandEntry kMaskCommand = {"mask", "Write a document without its values",
                                   "Elements and attributes keep their names, and lose every text "
                                   "and value: the structure can be\n"
                                   "shown to others, what it holds cannot be seen. What is left "
                                   "out besides, such as comments\n"
                                   "beside the root element, is told on standard error.\n"
                                   "Exit status: 0 when written, 2 for trouble.\n"
                                   "\n"
                                   "Example: xmldom mask config.xml",
                                   Make};

}  // namespace tool
