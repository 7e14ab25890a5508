// The operand PATH of the commands that search, and the search itself.
// A path is checked before a file is read, because the library does not report malformed ones.
// Tested by tests/tool/select_test.bash and tests/tool/path_test.bash.

#include <tools/command/Query.h>

#include <tools/command/Arguments.h>
#include <tools/command/Command.h>
#include <tools/io/SourceExcerpt.h>

#include <xmldom/dom/XMLDocument.h>
#include <xmldom/xmldom_ptr.h>

namespace tool {

void CheckPath(const std::string& path, bool single) {
  // Users get a message also where the library would ignore a part of the path.
  const xmldom::PathRules rules = {single ? xmldom::PathUse::kSelectOne : xmldom::PathUse::kSelect,
                                   true, true, "with --first"};
  const xmldom::PathProblem problem = xmldom::CheckPathBy(path, rules);
  if (!problem) return;
  throw UsageError(DescribeProblem("path", path, PositionOf(path, problem.offset), problem.reason));
}

void Query::DeclareArguments(Arguments& arguments) {
  arguments.AddOperand("PATH", m_path, "What to select, such as /config/interface[@name='eth0']");
  if (m_kind == kFirst) return;
  arguments.AddFlag("--first", m_first,
                    "Select only the first node; steps . and .. are understood then");
}

void Query::Check() const { CheckPath(m_path, m_first); }

std::size_t Query::Search(IXMLDOMDocument2* document,
                          const std::function<void(IXMLDOMNode*)>& visit) const {
  if (m_first) {
    const XMLPtr<IXMLDOMNode> node = xmldom::Adopt(document->SelectSingleNode(m_path.c_str()));
    if (node == nullptr) return 0;
    visit(node.Get());
    return 1;
  }
  const XMLNodes nodes = xmldom::Selected(document, m_path.c_str());
  for (XMLPtr<IXMLDOMNode> node : nodes) visit(node.Get());
  return static_cast<std::size_t>(nodes.Count());
}

}  // namespace tool
