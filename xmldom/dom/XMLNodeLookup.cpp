// Lookups that return their result directly. Those by name search one chain, and set the error code
// of CXML when they find nothing. Tested by tests/dom/XMLNodeLookup_test.cpp.

#include <xmldom/dom/NodeChain.h>
#include <xmldom/dom/NodeContent.h>
#include <xmldom/dom/XMLError.h>
#include <xmldom/dom/XMLNode.h>
#include <xmldom/support/LogException.h>

namespace {

/// Looks for a name in a chain. Result: the node with a reference added; null when there is none.
/// Effects: sets the error code to `missing` when there is none.
IXMLDOMNode* LookUp(IXMLDOMNode* head, const char* name, int missing) {
  IXMLDOMNode* node = xmldom::FindInChain(head, name);
  if (node == nullptr) {
    CXML::SetXMLError(missing);
  } else {
    node->AddRef();
  }
  return node;
}

}  // namespace

IXMLDOMNode* IXMLDOMNode::GetAttribute(const char* name) {
  return LookUp(m_pFirstAttribute, name, CXML::NO_SUCH_ATTRIBUTE);
}

IXMLDOMNode* IXMLDOMNode::GetChild(const char* name) {
  return LookUp(m_pFirstChild, name, CXML::NO_SUCH_CHILD);
}

const char* IXMLDOMNode::GetStrAttribute(const char* name) {
  IXMLDOMNode* attribute = GetAttribute(name);
  if (attribute == nullptr) return nullptr;
  const char* value = attribute->GetStrValue();
  Release(attribute);
  return value;
}

const char* IXMLDOMNode::GetStrValue() const { return xmldom::StoredValueOf(this); }

int IXMLDOMNode::GetNextAttribute(IXMLDOMNode*& cursor, const char*& name, const char*& value) {
  cursor = cursor == nullptr ? m_pFirstAttribute : cursor->m_pNextSibling;
  if (cursor == nullptr) {
    name = nullptr;
    value = nullptr;
    return 0;
  }
  name = cursor->m_pszNodeName;
  value = cursor->GetStrValue();
  return 1;
}

int IXMLDOMNode::CountChildNodes() {
  int count = 0;
  for (const IXMLDOMNode* child = m_pFirstChild; child != nullptr; child = child->m_pNextSibling) {
    if (child->m_eNodeType == NODE_ELEMENT) ++count;
  }
  return count;
}

int IXMLDOMNode::IsPageAttribute(const char* name) const {
  return xmldom::SameString(name, "curPage") || xmldom::SameString(name, "numPages");
}

IXMLDOMNode* IXMLDOMNode::GetfirstChild() {
  IXMLDOMNode* child = nullptr;
  if (get_firstChild(&child) < 0) {
    throw Exception("IXMLDOMNode::GetfirstChild", "Call failed", Getxml());
  }
  return child;
}
