#include "plain/PlainBuilding.h"

#include <xmldom/xmldom.h>

#include <cstdlib>
#include <cstring>

#include "plain/PlainLifetime.h"

namespace plain {

namespace {

void Append(IXMLDOMNode*& head, IXMLDOMNode* node) {
  if (head == nullptr) {
    head = node;
    return;
  }
  IXMLDOMNode* last = head;
  while (last->m_pNextSibling != nullptr) last = last->m_pNextSibling;
  last->m_pNextSibling = node;
}

/// The attribute of that name with a reference added.
IXMLDOMNode* GetAttribute(IXMLDOMNode* node, const char* name) {
  for (IXMLDOMNode* attribute = node->m_pFirstAttribute; attribute != nullptr;
       attribute = attribute->m_pNextSibling) {
    if (std::strcmp(attribute->m_pszNodeName, name) != 0) continue;
    attribute->AddRef();
    return attribute;
  }
  return nullptr;
}

char* Copy(const char* text) { return text == nullptr ? nullptr : strdup(text); }

}  // namespace

int AddChild(IXMLDOMNode* node, IXMLDOMNode* child) {
  child->m_pParent = node;
  plain::RecurseSetDocument(child, node->m_pOwnerDocument);
  Append(node->m_pFirstChild, child);
  return 1;
}

IXMLDOMNode* AddChild(IXMLDOMNode* node, const char* name, const char* value) {
  IXMLDOMNode* child = new IXMLDOMNode(node->m_pOwnerDocument, name, value, NODE_ELEMENT);
  child->m_pParent = node;
  Append(node->m_pFirstChild, child);
  child->AddRef();
  return child;
}

IXMLDOMNode* AddSibling(IXMLDOMNode* node, const char* name, const char* value) {
  IXMLDOMNode* sibling = new IXMLDOMNode(node->m_pOwnerDocument, name, value, NODE_ELEMENT);
  sibling->m_pParent = node->m_pParent;
  Append(node->m_pNextSibling, sibling);
  sibling->AddRef();
  return sibling;
}

int AddTextChild(IXMLDOMNode* node, const char* text) {
  return plain::AddChild(node, new IXMLDOMNode(node->m_pOwnerDocument, "#Text", text, NODE_TEXT));
}

int AddAttribute(IXMLDOMNode* node, const char* name, const char* value) {
  if (GetAttribute(node, name) != nullptr) {
    CXML::SetXMLError(1);
    return 0;
  }
  IXMLDOMNode* attribute = new IXMLDOMNode(node->m_pOwnerDocument, name, value, NODE_ATTRIBUTE);
  attribute->m_pParent = node;
  CXML::ClearXMLError();
  Append(node->m_pFirstAttribute, attribute);
  return 1;
}

int SetAttribute(IXMLDOMNode* node, const char* name, const char* value) {
  IXMLDOMNode* attribute = GetAttribute(node, name);
  if (attribute == nullptr) return plain::AddAttribute(node, name, value);
  std::free(attribute->m_pszValue);
  attribute->m_pszValue = Copy(value);
  return 1;
}

void AppendValue(IXMLDOMNode* node, const char* text, int length) {
  if (length <= 0) return;
  const std::size_t added = static_cast<std::size_t>(length);
  if (node->m_pszValue == nullptr) {
    node->m_pszValue = static_cast<char*>(std::calloc(added + 1, 1));
    std::strncpy(node->m_pszValue, text, added);
    return;
  }
  char* value = static_cast<char*>(std::calloc(std::strlen(node->m_pszValue) + added + 1, 1));
  std::strcpy(value, node->m_pszValue);
  std::strncat(value, text, added);
  std::free(node->m_pszValue);
  node->m_pszValue = value;
}

void SetValue(IXMLDOMNode* node, const char* text) {
  IXMLDOMNode* target = node->m_eNodeType == NODE_TEXT ? node : node->m_pFirstChild;
  if (target == nullptr || target->m_eNodeType != NODE_TEXT) {
    CLogger::PostLogEvent(LOG_TYPE_DOM, LOG_SEVERITY_ERROR,
                          "IXMLDOMNode::SetValue - SetValue called on non-leaf node", node);
    return;
  }
  char* copy = Copy(text);
  std::free(target->m_pszValue);
  target->m_pszValue = copy;
}

}  // namespace plain
