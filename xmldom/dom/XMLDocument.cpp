// The document as a node: making it, making nodes for it, and its root element. Loading, which
// needs the parser, is in parse/XMLDocumentLoad.cpp. Tested by tests/dom/XMLDocument_test.cpp.

#include <xmldom/dom/XMLDocument.h>

#include <xmldom/base/LiveCount.h>
#include <xmldom/base/Text.h>
#include <xmldom/support/LogException.h>

int IXMLDOMDocument2::m_iObjCount = 0;

IXMLDOMDocument2::IXMLDOMDocument2()
    : m_uFlags(0), m_pSax(nullptr), m_nIndent(4), m_pReport(nullptr) {
  m_pOwnerDocument = this;
  m_pszNodeName = xmldom::CopyString("Document Root");
  m_eNodeType = NODE_DOCUMENT;
  xmldom::AddToCount(m_iObjCount, 1);
}

IXMLDOMDocument2::~IXMLDOMDocument2() {
  DestroyBuilder();
  xmldom::AddToCount(m_iObjCount, -1);
}

bool Create(IXMLDOMDocument2** ppDoc) {
  IXMLDOMDocument2* document = new IXMLDOMDocument2;
  document->m_uFlags |= IXMLDOMDocument2::FORMATTED_LAYOUT;
  document->m_nIndent = 2;
  *ppDoc = document;
  return true;
}

HRESULT IXMLDOMDocument2::createNode(tagVARIANT type, char* name, char*, IXMLDOMNode** ppNode) {
  if (ppNode == nullptr) return E_ARGUMENT;
  *ppNode = new IXMLDOMNode(this, name, nullptr, static_cast<tagDOMNodeType>(type.lVal));
  return S_OK;
}

HRESULT IXMLDOMDocument2::get_documentElement(IXMLDOMNode** ppRoot) {
  if (ppRoot == nullptr) return E_ARGUMENT;
  IXMLDOMNode* root = nullptr;
  const HRESULT result = get_firstChild(&root);
  if (result < 0) throw Exception("IXMLDOMNode::GetfirstChild", "Call failed", Getxml());
  *ppRoot = root;
  return result;
}
