#ifndef XMLDOM_TOOLS_COMMAND_LAYOUT_H
#define XMLDOM_TOOLS_COMMAND_LAYOUT_H

#include <string>

class IXMLDOMDocument2;

namespace CLI {
class App;
}

namespace tool {

/// How a command lays out the documents that it writes.
class Layout {
 public:
  /// Describes the option.
  void Describe(CLI::App& arguments);

  /// Result: the document's XML, laid out.
  std::string Write(IXMLDOMDocument2& document) const;

 private:
  bool m_indentOff = false;
};

}  // namespace tool

#endif
