// The option --indent-off of the commands that write documents, and the writing itself.
// A flag of the document decides whether the library indents what it writes.
// Tested by tests/tool/format_test.bash.

#include <tools/command/Layout.h>

#include <tools/command/Arguments.h>

#include <xmldom/dom/XMLDocument.h>

namespace tool {

void Layout::DeclareOptions(Arguments& arguments) {
  arguments.AddFlag("--indent-off", m_indentOff, "Begin every line at the first column");
}

std::string Layout::Write(IXMLDOMDocument2& document) const {
  // The flag is cleared here and not before: while a document is loaded, the same flag makes the
  // library drop white space between elements, which has to happen in either layout.
  if (m_indentOff) document.m_uFlags &= ~static_cast<unsigned>(document.FORMATTED_LAYOUT);
  return std::string(document.Getxml());
}

}  // namespace tool
