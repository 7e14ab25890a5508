// Edits a document at paths, with XML for what comes in, and shows what has changed.

#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include <cstdio>
#include <string>

#include "data_file.h"

namespace {

// What cannot be done says why in the log. Without a function of ours it goes to standard error.
void Show(const CLogEvent& event, void*) { std::printf("log: %s\n", event.title); }

bool Edit(IXMLDOMDocument2* document) {
  // The fragment is XML: what may hold '&' or '<' is escaped, by xmldom::EscapeText where it comes
  // from outside.
  return document->ReplaceChildAtXPath("//rule[@id=20]/note", "<note>Web &amp; mail</note>") == 1 &&
         document->AppendChildAtXPath("//rule[@id=20]", "<service>imaps</service>") == 1 &&
         document->InsertBeforeXPath("//rule[@id=30]", "<rule id='25' action='drop'/>") == 1 &&
         document->RemoveChildAtXPath("//rule[@id=40]") == 1;
}

void PrintFirewall(IXMLDOMDocument2* document) {
  IXMLDOMNode* firewall = document->SelectSingleNode("/device/firewall");
  if (firewall == nullptr) return;
  // The member of this name would leave the attribute with one reference more.
  if (!xmldom::SetAttribute(firewall, "default", "reject")) std::printf("not set\n");
  BSTR xml = nullptr;
  if (firewall->get_xml(&xml) == S_OK) std::printf("%s", xml);
  SysFreeString(xml);
  Release(firewall);
}

}  // namespace

int main() {
  CLogger::SetSink(Show, nullptr);
  IXMLDOMDocument2* document = nullptr;
  Create(&document);
  std::string path = DataFile("device.xml");
  short loaded = VARIANT_FALSE;
  bool edited = false;
  if (document->load(&path[0], &loaded) == S_OK) {
    try {
      edited = Edit(document);
      const int removed = document->RemoveChildAtXPath("//rule[@id=40]");  // it is not there now
      std::printf("removed again: %d\n", removed);
    } catch (CLogException* exception) {  // a tree that contradicts itself
      exception->LogMessage(LOG_TYPE_EXCEPTION, LOG_SEVERITY_ALERT, "edit_at_path");
      delete exception;
    }
    PrintFirewall(document);
  }
  Release(document);
  return edited ? 0 : 1;
}
