// Asks a document: one node by its path, all nodes of a path, values as numbers, decoded text.

#include <xmldom/xmldom.h>

#include <cstdio>
#include <string>

#include "data_file.h"

namespace {

// One node, or none. Decoding a text that holds references ("&#233;", "&amp;") also prints a line
// of its own, which begins with "Translate Entities:".
void PrintText(IXMLDOMDocument2* document, const char* path) {
  IXMLDOMNode* node = nullptr;
  if (document->selectSingleNode2(path, &node) != S_OK) {
    std::printf("%s: none\n", path);
    return;
  }
  BSTR text = nullptr;
  if (node->get_text(&text) == S_OK) std::printf("%s: %s\n", path, text);
  SysFreeString(text);
  Release(node);
}

// All nodes. The list holds a reference to each and hands out another, which is ours to release.
void PrintNames(IXMLDOMDocument2* document, char* path) {
  IXMLDOMNodeList* list = nullptr;
  if (document->selectNodes2(path, &list) != S_OK) return;
  std::printf("%s: %d\n", path, list->m_nCount);
  while (IXMLDOMNode* node = list->NextNode()) {
    const char* name = node->GetStrAttribute("name");  // borrowed; null when it is missing
    std::printf("  %s\n", name == nullptr ? "(no name)" : name);
    Release(node);
  }
  Release(list);
}

// The text as a number. A text that is none would leave E_FAIL.
HRESULT GetNumber(IXMLDOMNode* node, int* number) {
  VARIANT value;
  VariantInit(&value);
  HRESULT result = node->get_nodeTypedValue(&value);
  if (result == S_OK) result = VariantChangeType(&value, &value, 0, VT_I4);
  if (result == S_OK) *number = value.lVal;
  VariantClear(&value);
  return result;
}

}  // namespace

int main() {
  IXMLDOMDocument2* document = nullptr;
  Create(&document);
  std::string file = DataFile("device.xml");
  short loaded = VARIANT_FALSE;
  const HRESULT result = document->load(&file[0], &loaded);
  if (result == S_OK) {
    PrintText(document, "/device/identity/hostname");
    PrintText(document, "//rule[@id=30]/note");
    PrintText(document, "//rule[@id=31]/note");

    char modern[] = "//interface[@enabled='yes'][address/@family='ipv6']";
    PrintNames(document, modern);
    char powered[] = "//interface[ports/port/@poe='yes']";
    PrintNames(document, powered);

    int least = 65536;
    IXMLDOMNodeList* sizes = document->SelectNodes("//mtu");
    while (IXMLDOMNode* size = sizes->NextNode()) {
      int bytes = 0;
      if (GetNumber(size, &bytes) == S_OK && bytes < least) least = bytes;
      Release(size);
    }
    Release(sizes);
    std::printf("least mtu: %d\n", least);
  }
  Release(document);
  return result == S_OK ? 0 : 1;
}
