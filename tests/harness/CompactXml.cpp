#include "harness/CompactXml.h"

#include <xmldom/xmldom.h>

#include "harness/Trees.h"

namespace {

/// Whether a node is shown as its value; one with children or attributes is shown as an element.
bool IsPlainText(const IXMLDOMNode* node) {
  return node->m_eNodeType == NODE_TEXT && node->m_pFirstChild == nullptr &&
         node->m_pFirstAttribute == nullptr;
}

std::string Value(const IXMLDOMNode* node) {
  return node->m_pszValue == nullptr ? "" : node->m_pszValue;
}

std::string XmlOfChildren(const IXMLDOMNode* parent) {
  std::string xml;
  bool followsText = false;
  for (const IXMLDOMNode* child = parent->m_pFirstChild; child != nullptr;
       child = child->m_pNextSibling) {
    const bool isText = IsPlainText(child);
    if (isText && (followsText || child->m_pszValue == nullptr)) xml += "<?text?>";
    xml += CompactXml(child);
    followsText = isText;
  }
  return xml;
}

}  // namespace

std::string CompactXml(const IXMLDOMNode* node) {
  if (node->m_eNodeType == NODE_DOCUMENT) return XmlOfChildren(node);
  if (IsPlainText(node)) return Value(node);
  std::string xml = "<" + Text(node->m_pszNodeName);
  for (const IXMLDOMNode* attribute = node->m_pFirstAttribute; attribute != nullptr;
       attribute = attribute->m_pNextSibling) {
    xml += " " + Text(attribute->m_pszNodeName) + "='" + Value(attribute) + "'";
  }
  std::string content = XmlOfChildren(node);
  if (node->m_pszValue != nullptr) content = "<?value " + Value(node) + "?>" + content;
  if (content.empty()) return xml + "/>";
  return xml + ">" + content + "</" + Text(node->m_pszNodeName) + ">";
}
