#include <tools/command/Layout.h>

#include <tools/command/Arguments.h>

#include <xmldom/dom/XMLDocument.h>

namespace tool {

void Layout::DeclareOptions(Arguments& arguments) {
  arguments.AddFlag("--indent-off", m_indentOff, "Begin every line at the first column");
}

std::string Layout::Write(IXMLDOMDocument2& document) const {
  // Only now: while loading, the flag lets the white space between elements go.
  if (m_indentOff) document.m_uFlags &= ~static_cast<unsigned>(document.FORMATTED_LAYOUT);
  return std::string(document.Getxml());
}

}  // namespace tool
