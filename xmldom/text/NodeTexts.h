#ifndef XMLDOM_TEXT_NODETEXTS_H
#define XMLDOM_TEXT_NODETEXTS_H

#include <xmldom/base/TextArgument.h>
#include <xmldom/dom/NodeArgument.h>
#include <xmldom/dom/XMLNode.h>
#include <xmldom/support/MemFile.h>
#include <xmldom/text/EntityTranslation.h>

#include <cstddef>
#include <cstring>
#include <string>

namespace xmldom {

// Reading texts as copies of one's own, which nobody has to free. References in what is stored are
// decoded. Bad input: a null node has no text and no attributes. Effects: those of
// TranslateEntities where a text holds references: call SetDebugEntities(false) when the program
// starts, so that nothing is printed. The error code of lookups is left alone.

/// Result: the decoded text of a node. That of an element or a document is the text of all nodes
/// below, as IXMLDOMNode::GetTextAsBSTR gives it; that of an attribute or a text is its own value.
inline std::string Text(ConstNodeArgument node) {
  if (!node) return std::string();
  CMemFile text(256);
  if (node->m_eNodeType == NODE_ATTRIBUTE || node->m_eNodeType == NODE_TEXT) {
    TranslateEntities(node->m_pszValue, text);
  } else {
    node->GetTextHelper(text);
  }
  return std::string(text.GetAsStr(), text.m_uLength);
}

/// Result: the attribute of that name, borrowed; null when there is none, for a null name too. No
/// reference is added. Cost: linear in the attributes.
inline IXMLDOMNode* FindAttribute(ConstNodeArgument node, const char* name) noexcept {
  if (!node || name == nullptr) return nullptr;
  IXMLDOMNode* attribute = node->m_pFirstAttribute;
  while (attribute != nullptr && (attribute->m_pszNodeName == nullptr ||
                                  std::strcmp(attribute->m_pszNodeName, name) != 0)) {
    attribute = attribute->m_pNextSibling;
  }
  return attribute;
}

/// Whether a node has an attribute of that name. Cost: linear in the attributes.
inline bool HasAttribute(ConstNodeArgument node, const char* name) noexcept {
  return xmldom::FindAttribute(node, name) != nullptr;
}

/// Result: the decoded value of an attribute; `otherwise` when there is none of that name, for
/// which HasAttribute asks. Cost: linear in the attributes and in the value.
inline std::string Attribute(ConstNodeArgument node, const char* name,
                             TextArgument otherwise = "") {
  const IXMLDOMNode* attribute = xmldom::FindAttribute(node, name);
  if (attribute == nullptr) return std::string(otherwise.Data(), otherwise.Size());
  return xmldom::Text(attribute);
}

}  // namespace xmldom

#endif
