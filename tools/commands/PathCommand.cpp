// The command `path`: writes where in the tree the nodes stand that a path selects.
// The paths have positions, so that each selects its node alone.
// Tested by tests/tool/node_path_test.bash.

#include <tools/command/FileCommand.h>
#include <tools/command/Query.h>
#include <tools/commands/Commands.h>
#include <tools/document/DocumentLoad.h>
#include <tools/document/ExactPaths.h>

#include <xmldom/dom/XMLDocument.h>

namespace tool {

namespace {

class PathCommand : public FileCommand {
 public:
  PathCommand() : FileCommand(kResults) {}

  void Check() const override { m_query.Check(); }

 protected:
  void DeclareOptions(Arguments& arguments) override { m_query.DeclareArguments(arguments); }

  ExitStatus RunOn(const Input& input, ResultWriter& results, const Session&) override {
    const XMLPtr<IXMLDOMDocument2> document = LoadDocument(input);
    if (document == nullptr) return ExitStatus::kTrouble;
    ExactPaths paths;
    const std::vector<IXMLDOMNode*> nodes = m_query.Select(document.Get());
    for (const IXMLDOMNode* node : nodes) {
      results.Write(paths.PathTo(node));
      results.EndLine();
    }
    return nodes.empty() ? ExitStatus::kNo : ExitStatus::kDone;
  }

 private:
  Query m_query{Query::kAll};
};

std::unique_ptr<Command> Make() { return std::make_unique<PathCommand>(); }

}  // namespace

const CommandEntry kPathCommand = {
    "path", "Write where the nodes stand that a path selects",
    "The names of the elements from the root down to each selected node, each behind a '/', with\n"
    "positions where there are several of a name: a path that selects that node alone.\n"
    "'xmldom select --help' explains paths.\n"
    "Exit status: 0 when something is selected, 1 when nothing is, 2 for trouble.\n"
    "\n"
    "Example: xmldom path //address config.xml",
    Make};

}  // namespace tool
