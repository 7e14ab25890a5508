// The command `select`: writes the nodes that a path selects as XML, or how many there are.
// With --source a map of the file tells where the bytes of each node are.
// Tested by tests/tool/select_test.bash.

#include <tools/command/Arguments.h>
#include <tools/command/FileCommand.h>
#include <tools/command/Query.h>
#include <tools/command/ResultNotice.h>
#include <tools/commands/Commands.h>
#include <tools/document/DocumentLoad.h>
#include <tools/document/SourceEncoding.h>
#include <tools/document/SourceMap.h>
#include <tools/io/Diagnostics.h>

#include <xmldom/dom/XMLDocument.h>

#include <cstring>

namespace tool {

namespace {

class SelectCommand : public FileCommand {
 public:
  SelectCommand() : FileCommand(kResults) {}

  void Check() const override { m_query.Check(); }

 protected:
  void DeclareOptions(Arguments& arguments) override {
    m_query.DeclareArguments(arguments);
    arguments.AddFlag("--count", m_count, "Write only how many nodes are selected");
    arguments.AddFlag("--source", m_fromSource,
                      "Write the bytes of the file from the beginning of each node to its end");
  }

  bool KeepsEncoding() const override { return WritesSource(); }

  ExitStatus RunOn(const Input& input, ResultWriter& results, const Session&) override {
    if (WritesSource()) return RunOnSource(input, results);
    const XMLPtr<IXMLDOMDocument2> document = LoadDocument(input);
    if (document == nullptr) return ExitStatus::kTrouble;
    const std::vector<IXMLDOMNode*> nodes = m_query.Select(document.Get());
    if (m_count) {
      results.Write(std::to_string(nodes.size()));
      results.EndLine();
      return nodes.empty() ? ExitStatus::kNo : ExitStatus::kDone;
    }
    const ExitStatus status = nodes.empty() ? ExitStatus::kNo : ExitStatus::kDone;
    const SourceEncoding encoding(input.text);
    std::size_t refused = 0;
    for (IXMLDOMNode* node : nodes) {
      const ResultProblem problem = Write(*node, encoding, results);
      // The place of one costs as much as a load, so that only the first is told of by itself.
      if (problem.element != nullptr && ++refused == 1) ComplainOfResult(problem, input, *document);
    }
    if (refused == 0) return status;
    if (refused > 1) {
      ComplainAbout(input.name, std::to_string(refused - 1) +
                                    (refused == 2 ? " other element is" : " other elements are") +
                                    " not written for such a reason");
    }
    return ExitStatus::kTrouble;
  }

 private:
  bool WritesSource() const { return m_fromSource && !m_count; }

  /// Writes an element as lines, or an attribute as it stands in a tag. Result: why an element is
  /// not written.
  static ResultProblem Write(IXMLDOMNode& node, const SourceEncoding& encoding,
                             ResultWriter& results) {
    if (node.m_eNodeType == NODE_ATTRIBUTE) {
      const char* const value = node.m_pszValue == nullptr ? "" : node.m_pszValue;
      results.Write(std::string(node.m_pszNodeName) + "='" + value + "'");
      results.EndLine();
      return {};
    }
    const _bstr_t xml = node.Getxml();
    const ResultProblem problem = CheckResult(encoding, xml, node, ResultKind::kFragment);
    if (problem.element == nullptr) results.Write(xml, std::strlen(xml));
    return problem;
  }

  /// Writes the bytes of nodes as they stand in the file, and tells of each node that does not
  /// stand there.
  ExitStatus RunOnSource(const Input& input, ResultWriter& results) const {
    const SourceEncoding encoding(input.text);
    Input source = {input.name, input.text};
    if (!DecodeUtf16(source)) return ExitStatus::kTrouble;
    const XMLPtr<IXMLDOMDocument2> document = LoadDocument(source);
    if (document == nullptr) return ExitStatus::kTrouble;
    const std::vector<IXMLDOMNode*> nodes = m_query.Select(document.Get());
    if (nodes.empty()) return ExitStatus::kNo;
    const SourceMap map(source.text, *document);
    ExitStatus status = ExitStatus::kDone;
    for (const IXMLDOMNode* node : nodes) {
      const SourcePlace& place = *map.Find(node);
      if (place.IsWritten()) {
        // Text in any other encoding has been searched as it stands.
        const std::string line = source.text.substr(place.begin, place.end - place.begin) + '\n';
        results.Write(encoding.IsUtf16() ? encoding.EncodePart(line) : line);
        continue;
      }
      ComplainAt(source, place.begin,
                 place.origin == SourcePlace::kFromEntity
                     ? "what is selected is not written here, an entity brings it"
                     : "what is selected is not written here, the document type supplies it");
      status = ExitStatus::kTrouble;
    }
    return status;
  }

  Query m_query{Query::kAll};
  bool m_count = false;
  bool m_fromSource = false;
};

std::unique_ptr<Command> Make() { return std::make_unique<SelectCommand>(); }

}  // namespace

const CommandEntry kSelectCommand = {
    "select", "Write the nodes that a path selects, as XML",
    "A path is a row of element names with '/' between them, from the root element down; '*'\n"
    "stands for any name, and '//' at the beginning searches at every depth. A name may be "
    "followed\n"
    "by conditions: [child='text'], [child=number], [@attribute='text'], [a/b/c='text']; [child],\n"
    "[@attribute], [a/b] for what exists; [2] and [last()] for a position, among what is left of\n"
    "the children of one element. A path that ends in /@attribute selects attributes.\n"
    "Exit status: 0 when something is selected, 1 when nothing is, 2 for trouble.\n"
    "\n"
    "Example: xmldom select \"//interface[@name='eth0']\" config.xml",
    Make};

}  // namespace tool
