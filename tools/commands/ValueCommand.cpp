// The command `value`: writes the text, or an attribute, of the nodes that a path selects.
// References in texts and values are decoded.
// Tested by tests/tool/value_test.bash.

#include <tools/command/Arguments.h>
#include <tools/command/FileCommand.h>
#include <tools/command/Query.h>
#include <tools/commands/Commands.h>
#include <tools/document/DocumentLoad.h>

#include <xmldom/dom/XMLDocument.h>
#include <xmldom/support/MemFile.h>
#include <xmldom/text/EntityTranslation.h>

namespace tool {

namespace {

const unsigned int kTextRoom = 4096;

class ValueCommand : public FileCommand {
 public:
  ValueCommand() : FileCommand(kResults) {}

  void Check() const override { m_query.Check(); }

 protected:
  void DeclareOptions(Arguments& arguments) override {
    m_query.DeclareArguments(arguments);
    arguments.AddText("--attr", "NAME", m_attribute,
                      "Write this attribute instead; nodes without it are passed over");
    arguments.AddFlag("-0,--null", m_endWithNul, "End each value with a NUL, not a line feed");
  }

  ExitStatus RunOn(const Input& input, ResultWriter& results, const Session&) override {
    const XMLPtr<IXMLDOMDocument2> document = LoadDocument(input);
    if (document == nullptr) return ExitStatus::kTrouble;
    if (m_endWithNul) results.SetTerminator('\0');
    ExitStatus status = ExitStatus::kNo;
    CMemFile text(kTextRoom);
    m_query.Search(document.Get(), [&](IXMLDOMNode* node) {
      text.m_uPosition = text.m_uLength = 0;
      if (!Collect(node, text)) return;
      results.Write(text.GetAsStr(), text.m_uLength);
      results.EndLine();
      status = ExitStatus::kDone;
    });
    return status;
  }

 private:
  /// Appends the text of a node, or its attribute that is asked for, with references decoded.
  /// Result: false when the node has no such attribute.
  bool Collect(IXMLDOMNode* node, CMemFile& text) const {
    if (!m_attribute.isGiven) {
      node->GetTextHelper(text);
      return true;
    }
    const char* stored = node->GetStrAttribute(m_attribute.text.c_str());
    if (stored == nullptr) return false;
    TranslateEntities(stored, text);
    return true;
  }

  Query m_query{Query::kAll};
  OptionalText m_attribute;
  bool m_endWithNul = false;
};

std::unique_ptr<Command> Make() { return std::make_unique<ValueCommand>(); }

}  // namespace

const CommandEntry kValueCommand = {
    "value", "Write the text of the nodes that a path selects",
    "References such as &amp; are written as what they stand for. 'xmldom select --help' explains\n"
    "paths.\n"
    "Exit status: 0 when there is a value, 1 when there is none, 2 for trouble.\n"
    "\n"
    "Example: xmldom value --attr name //interface config.xml",
    Make};

}  // namespace tool
