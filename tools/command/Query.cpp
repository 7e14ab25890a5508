// The operand PATH of the commands that search, and the search itself.
// A path is checked before a file is read, because the library does not report malformed ones.
// Tested by tests/tool/select_test.bash and tests/tool/path_test.bash.

#include <tools/command/Query.h>

#include <tools/command/Arguments.h>
#include <tools/command/Command.h>
#include <tools/document/PathSearch.h>
#include <tools/io/SourceExcerpt.h>

#include <xmldom/dom/XMLDocument.h>

namespace tool {

namespace {

[[noreturn]] void RefusePath(const std::string& what, const std::string& path, std::size_t offset,
                             const std::string& reason) {
  throw UsageError(DescribeProblem(what, path, PositionOf(path, offset), reason));
}

}  // namespace

SearchPath CheckedPath(const std::string& text, PathPurpose purpose, const std::string& what) {
  SearchPath path;
  const xmldom::PathProblem problem = ReadPath(text, purpose, path);
  if (problem) RefusePath(what, text, problem.offset, problem.reason);
  return path;
}

SearchPath CheckedElementPath(const std::string& text, PathPurpose purpose,
                              const std::string& reason) {
  SearchPath path = CheckedPath(text, purpose);
  if (!path.attribute.empty()) RefusePath("path", text, text.rfind('@'), reason);
  return path;
}

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
