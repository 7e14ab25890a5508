#include <tools/command/Query.h>

#include <tools/Owned.h>
#include <tools/command/Arguments.h>
#include <tools/command/Command.h>
#include <tools/document/PathCheck.h>
#include <tools/io/SourceText.h>

#include <xmldom/dom/XMLDocument.h>
#include <xmldom/dom/XMLNodeList.h>

namespace tool {

void CheckPath(const std::string& path, bool single) {
  const PathProblem problem = FindPathProblem(path, single);
  if (problem.reason.empty()) return;
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
    const Owned<IXMLDOMNode> node(document->SelectSingleNode(m_path.c_str()));
    if (node == nullptr) return 0;
    visit(node.get());
    return 1;
  }
  const Owned<IXMLDOMNodeList> nodes(document->SelectNodes(m_path.c_str()));
  for (const IXMLDOMNodeListElt* link = nodes->m_pHead; link != nullptr; link = link->m_pNext) {
    visit(link->m_pNode);
  }
  return static_cast<std::size_t>(nodes->m_nCount);
}

}  // namespace tool
