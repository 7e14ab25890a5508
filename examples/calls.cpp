// One call of each kind that README.md lists. Prints what each gives.

#include <xmldom/xmldom.h>

#include <cstdio>
#include <cstdlib>

namespace {

void Print(const char* what, const char* text) {
  std::printf("%s: %s\n", what, text == nullptr ? "(null)" : text);
}

void PrintAndFree(const char* what, BSTR text) {
  Print(what, text);
  SysFreeString(text);
}

void Build(IXMLDOMDocument2* document) {
  IXMLDOMNode* device = document->AddChild("device", nullptr);
  device->AddAttribute("id", "7");
  IXMLDOMNode* name = device->AddChild("name", nullptr);
  name->AddTextChild("fish &amp; chips");
  PrintAndFree("built", document->GetXML());
  Release(name);
  Release(device);
}

void Read(IXMLDOMDocument2* document) {
  IXMLDOMNode* name = document->SelectSingleNode("//device[@id=7]/name");
  char* text = name->GetTextAsStr();
  Print("text", text);
  std::free(text);

  CMemFile path(64);
  name->GetPathToNode(path);
  Print("path", path.GetAsStr());

  VARIANT value;
  VariantInit(&value);
  name->get_nodeTypedValue(&value);
  Print("typed value", value.bstrVal);
  VariantClear(&value);
  Release(name);

  IXMLDOMNodeList* names = document->SelectNodes("//name");
  std::printf("names: %d\n", names->m_nCount);
  Release(names);
}

void Edit(IXMLDOMDocument2* document) {
  document->AppendChildAtXPath("/device", "<port n='1'/>");
  document->AppendChildAtXPath("/device", "<port n='2'/>");
  document->ReplaceChildAtXPath("/device/name", "<name>plaice</name>");
  document->RemoveChildAtXPath("/device/port[@n=1]");
  PrintAndFree("edited", document->GetXML());
}

void Write(IXMLDOMDocument2* document) {
  Print("masked", document->GetMaskedXML());
  Print("paged", document->GetFilteredXML("/device", 2, 2, 1, 1, "<row/>"));
}

void Compare(IXMLDOMDocument2* document) {
  IXMLDOMDocument2* other = nullptr;
  Create(&other);
  if (!other->loadXML("<device id='8'/>")) std::abort();
  CMemFile report(1024);
  std::printf("equal: %d\n", CompareXMLNodes(document, other, report, 0));
  Release(other);
}

void Fail(IXMLDOMDocument2* document) {
  document->loadXML("<a><b></a>");
  IXMLDOMParseError* error = nullptr;
  document->get_parseError(&error);
  BSTR message = nullptr;
  error->get_errormessage(&message);
  PrintAndFree("error", message);
  Release(error);
}

void Show(const CLogEvent& event, void*) { Print("log", event.title); }

}  // namespace

int main() {
  CLogger::SetSink(Show, nullptr);
  IXMLDOMDocument2* document = nullptr;
  Create(&document);
  Build(document);
  Read(document);
  Edit(document);
  Write(document);
  Compare(document);
  Fail(document);
  Release(document);
  return CXML::CheckLeaks("the end") == 0 ? 0 : 1;
}
