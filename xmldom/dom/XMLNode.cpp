// The COM-style accessors of a node, which hand out its neighbours, and its values. They read the
// fields of the node and its links, and store results through out-pointers. Tested by
// tests/dom/XMLNode_test.cpp and tests/dom/XMLNodeType_test.cpp.

#include <xmldom/dom/XMLNode.h>

#include <xmldom/dom/ChainMarks.h>
#include <xmldom/dom/NodeChain.h>
#include <xmldom/dom/NodeContent.h>
#include <xmldom/dom/XMLDocument.h>
#include <xmldom/dom/XMLNodeList.h>
#include <xmldom/support/variant.h>

#include <cassert>

namespace {

/// Stores `node`, which may be null, in `out`, which is not, and adds a reference to it.
/// Result: S_OK; S_FALSE when there is no node.
template <class T>
HRESULT HandOut(T* node, T** out) {
  *out = node;
  if (node == nullptr) return S_FALSE;
  node->AddRef();
  return S_OK;
}

/// Makes a new list of the class List that holds the nodes of a chain, and stores it in `out`.
template <class List>
void ListChain(IXMLDOMNode* head, List** out) {
  List* list = new List;
  try {
    for (IXMLDOMNode* node = head; node != nullptr; node = node->m_pNextSibling) list->Add(node);
  } catch (...) {
    Release(list);
    throw;
  }
  *out = list;
}

}  // namespace

HRESULT IXMLDOMNode::get_parentNode(IXMLDOMNode** out) {
  if (out == nullptr) return E_ARGUMENT;
  HandOut(m_pParent, out);
  return S_OK;
}

HRESULT IXMLDOMNode::get_firstChild(IXMLDOMNode** out) {
  assert(this);
  if (out == nullptr) return E_ARGUMENT;
  return HandOut(m_pFirstChild, out);
}

HRESULT IXMLDOMNode::get_lastChild(IXMLDOMNode** out) {
  if (out == nullptr) return E_ARGUMENT;
  return HandOut(m_pFirstChild == nullptr ? nullptr : xmldom::LastOfChain(m_pFirstChild, this),
                 out);
}

HRESULT IXMLDOMNode::get_nextSibling(IXMLDOMNode** out) {
  assert(this);
  if (out == nullptr) return E_ARGUMENT;
  return HandOut(m_pNextSibling, out);
}

HRESULT IXMLDOMNode::get_previousSibling(IXMLDOMNode** out) {
  if (out == nullptr) return E_ARGUMENT;
  if (m_pParent == nullptr || m_pParent->m_pFirstChild == this) {
    *out = nullptr;
    return S_FALSE;
  }
  return HandOut(xmldom::PreviousOf(this), out);
}

HRESULT IXMLDOMNode::get_nodeName(char** out) {
  assert(this);
  if (out == nullptr) return E_ARGUMENT;
  *out = SysAllocString(m_pszNodeName);
  return S_OK;
}

HRESULT IXMLDOMNode::get_nodeType(DOMNodeType* out) {
  assert(this);
  if (out == nullptr) return E_ARGUMENT;
  *out = m_eNodeType;
  return S_OK;
}

HRESULT IXMLDOMNode::hasChildNodes(VARIANT_BOOL* out) const {
  assert(this);
  if (out == nullptr) return E_ARGUMENT;
  *out = m_pFirstChild != nullptr ? VARIANT_TRUE : VARIANT_FALSE;
  return m_pFirstChild != nullptr ? S_OK : S_FALSE;
}

HRESULT IXMLDOMNode::get_ownerDocument(IXMLDOMDocument2** out) {
  if (out == nullptr) return E_ARGUMENT;
  return HandOut(m_pOwnerDocument, out);
}

HRESULT IXMLDOMNode::get_attributes(IXMLDOMNamedNodeMap** out) {
  assert(this);
  if (out == nullptr) return E_ARGUMENT;
  if (m_eNodeType != NODE_ELEMENT) {
    *out = nullptr;
    return S_FALSE;
  }
  ListChain(m_pFirstAttribute, out);
  return S_OK;
}

HRESULT IXMLDOMNode::get_childNodes(IXMLDOMNodeList** out) {
  assert(this);
  if (out == nullptr) return E_ARGUMENT;
  ListChain(m_pFirstChild, out);
  return S_OK;
}

HRESULT IXMLDOMNode::get_nodeValue(VARIANT* pVal) {
  assert(this);
  if (pVal == nullptr) return E_ARGUMENT;
  switch (xmldom::ValueKindOf(m_eNodeType)) {
    case xmldom::VALUE_NONE:
    case xmldom::VALUE_TEXT:
      VariantChangeType(pVal, pVal, 0, VT_EMPTY);
      break;
    case xmldom::VALUE_STORED: {
      _variant_t value(m_pszValue);
      VariantCopy(pVal, &value);
      break;
    }
    case xmldom::VALUE_UNKNOWN:
      break;
  }
  return S_OK;
}

HRESULT IXMLDOMNode::get_nodeTypedValue(VARIANT* pVal) {
  assert(this);
  if (pVal == nullptr) return E_ARGUMENT;
  if (xmldom::ValueKindOf(m_eNodeType) != xmldom::VALUE_TEXT) return get_nodeValue(pVal);
  _variant_t text;
  text.bstrVal = GetTextAsBSTR();
  text.vt = VT_BSTR;
  VariantCopy(pVal, &text);
  return S_OK;
}
