// The operand PATH of the commands that search, and the search itself.
// Tested by tests/tool/select_test.bash and tests/tool/path_test.bash.

#include <tools/command/Query.h>

#include <tools/command/Arguments.h>
#include <tools/command/CheckedPath.h>
#include <tools/document/PathSearch.h>

#include <xmldom/dom/XMLDocument.h>

namespace tool {

void Query::DeclareArguments(Arguments& arguments) {
  arguments.AddOperand("PATH", m_path, "What to select, such as /config/interface[@name='eth0']");
  if (m_kind == kFirstElement) return;
  arguments.AddFlag("--first", m_first,
                    "Select only the first node; steps . and .. are understood then");
}

std::vector<IXMLDOMNode*> Query::Select(IXMLDOMDocument2* document) const {
  return tool::Select(Path(), document, !m_first);
}

SearchPath Query::Path() const {
  const PathPurpose purpose = m_first ? PathPurpose::kFirst : PathPurpose::kAll;
  if (m_kind == kAll) return CheckedPath(m_path, purpose);
  return CheckedElementPath(m_path, purpose,
                            "an element is needed here; an attribute has no children");
}

}  // namespace tool
