// A plug-in that uses the libraries: it has a parser of its own, and smart pointers.

#include <xmldom/parse/ExpatImpl.h>
#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include <cstring>
#include <stdexcept>

// Not local to this file, as a class in a header is not.
class Refuser : public CExpatImpl<Refuser> {
 public:
  void OnStartElement(const char*, const char**) { throw std::runtime_error("refused"); }
  void OnEndElement(const char*) {}
  void OnDefault(const char*, int) {}
};

namespace {

bool Refuses() {
  Refuser refuser;
  refuser.CreateParser();
  bool refused = false;
  try {
    refuser.Parse("<a/>", -1, true);
  } catch (const std::runtime_error&) {
    refused = true;
  }
  refuser.DestroyParser();
  return refused;
}

}  // namespace

/// Result: whether all went well.
extern "C" __attribute__((visibility("default"))) bool Work() {
  XMLPtr<IXMLDOMDocument2> document;
  Create(document.Out());
  if (!document->loadXML("<a><b>1</b></a>")) return false;
  document->AppendChildAtXPath("/a", "<b>2</b>");
  int count = 0;
  for (const XMLPtr<IXMLDOMNode>& node : xmldom::Children(document->m_pFirstChild)) {
    count += node->GetStrValue() != nullptr;
  }
  const XMLBstr text = xmldom::AdoptBstr(document->GetXML());
  return count == 2 && std::strstr(text.c_str(), "<b>2</b>") != nullptr && Refuses();
}
