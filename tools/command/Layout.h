#ifndef XMLDOM_TOOLS_COMMAND_LAYOUT_H
#define XMLDOM_TOOLS_COMMAND_LAYOUT_H

#include <string>

class IXMLDOMDocument2;

namespace tool {

class Arguments;

/// How a command lays out the documents that it writes.
class Layout {
 public:
  /// Declares the option.
  void DeclareOptions(Arguments& arguments);

  /// Result: the XML of the document, with a line for each element.
  std::string Write(IXMLDOMDocument2& document) const;

 private:
  bool m_indentOff = false;
};

}  // namespace tool

#endif
