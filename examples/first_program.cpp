#include <xmldom/xmldom.h>

#include <cstdio>

int main() {
  IXMLDOMDocument2* document = nullptr;
  Create(&document);
  if (!document->loadXML("<switch><port name='wan' speed='100'>down</port>"
                         "<port name='lan' speed='1000'>up</port></switch>")) {
    std::fprintf(stderr, "not well-formed\n");
    Release(document);
    return 1;
  }

  IXMLDOMNode* port = document->SelectSingleNode("/switch/port[@speed=1000]");
  if (port != nullptr) {
    BSTR state = port->GetTextAsBSTR();
    std::printf("%s is %s\n", port->GetStrAttribute("name"), state);  // borrows the name
    SysFreeString(state);
    Release(port);
  }

  BSTR xml = document->GetXML();
  std::printf("%s", xml);
  SysFreeString(xml);
  Release(document);
}
