// Maps of attributes: lists whose nodes are found by name. Tested by
// tests/dom/XMLNodeListMap_test.cpp.

#include <xmldom/base/Text.h>
#include <xmldom/dom/XMLNode.h>
#include <xmldom/dom/XMLNodeList.h>

IXMLDOMNamedNodeMap::~IXMLDOMNamedNodeMap() {}

IXMLDOMNode* IXMLDOMNamedNodeMap::GetNamedItem(const char* name) {
  ResetCursor();
  for (;;) {
    IXMLDOMNode* node = NextNode();
    if (node == nullptr) return nullptr;
    if (name != nullptr && xmldom::SameString(node->m_pszNodeName, name)) return node;
    Release(node);
  }
}

HRESULT IXMLDOMNamedNodeMap::getNamedItem(char* name, IXMLDOMNode** out) {
  if (out == nullptr) return E_ARGUMENT;
  *out = GetNamedItem(name);
  return *out != nullptr ? S_OK : S_FALSE;
}
