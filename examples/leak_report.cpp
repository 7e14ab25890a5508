// Finds what has not been released: the leak report counts the live objects of each class and the
// strings that nobody has freed. It goes to the log.

#include <xmldom/xmldom.h>

#include <cstdio>

namespace {

void PrintReport(const CLogEvent& event, void*) {
  if (event.type == LOG_TYPE_LEAKS) std::printf("%s", event.body);
}

}  // namespace

int main() {
  CLogger::SetSink(PrintReport, nullptr);

  IXMLDOMDocument2* document = nullptr;
  Create(&document);
  const short loaded = document->loadXML("<ports><port n='1'/><port n='2'/></ports>");
  CXML::CheckLeaks("loaded");  // the nodes, and what the document has built them with

  IXMLDOMNode* port = document->SelectSingleNode("//port[@n=2]");
  BSTR xml = document->GetXML();
  Release(document);
  // The port outlives its document, with its attribute; and there is a string.
  CXML::CheckLeaks("document released");

  Release(port);
  SysFreeString(xml);
  const long strings = CXML::CheckLeaks("all released");
  return loaded == VARIANT_TRUE && strings == 0 && IXMLDOMNode::m_iObjCount == 0 ? 0 : 1;
}
