// Adding children, texts, siblings and attributes to a node, and changing values. New nodes go to
// the end of their chain, which NodeChain.h knows for chains that grew recently. Tested by
// tests/dom/XMLNodeBuild_test.cpp and tests/dom/XMLNodeBuildValues_test.cpp.

#include <xmldom/base/Text.h>
#include <xmldom/dom/LogKinds.h>
#include <xmldom/dom/NewNode.h>
#include <xmldom/dom/NodeChain.h>
#include <xmldom/dom/NodeOwners.h>
#include <xmldom/dom/XMLError.h>
#include <xmldom/dom/XMLNode.h>

#include <cstdlib>
#include <cstring>
#include <new>

int IXMLDOMNode::AddChild(IXMLDOMNode* child) {
  if (child == nullptr) return 0;
  child->m_pParent = this;
  if (child->m_pNextSibling != nullptr) xmldom::NoteOwnersChange(true);
  xmldom::SetOwners(child, m_pOwnerDocument);
  xmldom::AppendToChain(m_pFirstChild, child);
  return 1;
}

IXMLDOMNode* IXMLDOMNode::AddChild(const char* name, const char* value) {
  IXMLDOMNode* child = new IXMLDOMNode(m_pOwnerDocument, name, value, NODE_ELEMENT);
  child->m_pParent = this;
  xmldom::AppendToChain(m_pFirstChild, child);
  child->AddRef();
  return child;
}

IXMLDOMNode* IXMLDOMNode::AddSibling(const char* name, const char* value) {
  IXMLDOMNode* sibling = new IXMLDOMNode(m_pOwnerDocument, name, value, NODE_ELEMENT);
  sibling->m_pParent = m_pParent;
  xmldom::NoteOwnersChange(m_pParent == nullptr || m_pOwnerDocument == nullptr);
  xmldom::AppendToChain(m_pNextSibling, sibling);
  sibling->AddRef();
  return sibling;
}

int IXMLDOMNode::AddTextChild(const char* text) {
  return AddChild(new IXMLDOMNode(m_pOwnerDocument, xmldom::kTextName, text, NODE_TEXT));
}

int IXMLDOMNode::AddAttribute(const char* name, const char* value) {
  if (GetAttribute(name) != nullptr) {
    CXML::SetXMLError(CXML::DUPLICATE_ATTRIBUTE);
    return 0;
  }
  IXMLDOMNode* attribute = new IXMLDOMNode(m_pOwnerDocument, name, value, NODE_ATTRIBUTE);
  attribute->m_pParent = this;
  CXML::ClearXMLError();
  xmldom::AppendToChain(m_pFirstAttribute, attribute);
  return 1;
}

int IXMLDOMNode::SetAttribute(const char* name, const char* value) {
  IXMLDOMNode* attribute = xmldom::FindInChain(m_pFirstAttribute, name);
  if (attribute == nullptr) return AddAttribute(name, value);
  char* copy = xmldom::CopyString(value);
  std::free(attribute->m_pszValue);
  attribute->m_pszValue = copy;
  attribute->AddRef();  // Deliberate: see the header.
  return 1;
}

void IXMLDOMNode::AppendValue(const char* text, int len) {
  if (len <= 0 || text == nullptr) return;
  const std::size_t oldLength = m_pszValue == nullptr ? 0 : std::strlen(m_pszValue);
  const std::size_t added = strnlen(text, static_cast<std::size_t>(len));
  char* value = static_cast<char*>(std::malloc(oldLength + added + 1));
  if (value == nullptr) throw std::bad_alloc();
  if (oldLength != 0) std::memcpy(value, m_pszValue, oldLength);
  std::memcpy(value + oldLength, text, added);
  value[oldLength + added] = '\0';
  std::free(m_pszValue);
  m_pszValue = value;
}

void IXMLDOMNode::SetValue(const char* text) {
  IXMLDOMNode* target = m_eNodeType == NODE_TEXT ? this : m_pFirstChild;
  if (target == nullptr || target->m_eNodeType != NODE_TEXT) {
    CLogger::PostLogEvent(xmldom::kLogDom, xmldom::kSeverityError,
                          "IXMLDOMNode::SetValue - SetValue called on non-leaf node", this);
    return;
  }
  char* copy = xmldom::CopyString(text);
  std::free(target->m_pszValue);
  target->m_pszValue = copy;
}
