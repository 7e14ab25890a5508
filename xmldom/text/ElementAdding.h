#ifndef XMLDOM_TEXT_ELEMENTADDING_H
#define XMLDOM_TEXT_ELEMENTADDING_H

#include <xmldom/base/Characters.h>
#include <xmldom/base/Export.h>
#include <xmldom/dom/NodeArgument.h>
#include <xmldom/dom/XMLNode.h>
#include <xmldom/dom/XmlNames.h>
#include <xmldom/ptr/XMLPtr.h>
#include <xmldom/text/Escaping.h>

#include <cstring>
#include <string>

namespace xmldom {

/// Prepares the texts of an element for another child, beside which the writer indents them: where
/// a text begins with a plain character, that becomes a reference, as EscapeText makes it.
inline void PrepareTextsForElements(IXMLDOMNode* element) {
  for (IXMLDOMNode* child = element->m_pFirstChild; child != nullptr;
       child = child->m_pNextSibling) {
    const char* const value = child->m_pszValue;
    const bool isText = child->m_eNodeType == NODE_TEXT && value != nullptr && *value != '\0';
    if (!isText || *value == '&' || *value == '<') continue;
    const Character first = ReadCharacter(value, std::strlen(value));
    if (!first.isValid) continue;
    std::string prepared = DecimalReference(first.code);
    // Blanks behind it would now be a piece of their own, which a load drops.
    const char* rest = value + first.length;
    for (; *rest == ' ' || *rest == '\t'; ++rest) {
      prepared += DecimalReference(static_cast<unsigned char>(*rest));
    }
    child->SetValue((prepared + rest).c_str());
  }
}

/// Adds a new element as last child of an element, or as root of a document that has none.
/// Result: the element, in an owner; the tree has a reference of its own. Null, with nothing
/// changed, when `node` is null or of another type, when a document has a root already, and when
/// `name` is no XML name. Cost: that of IXMLDOMNode::AddChild, and linear in the children.
XMLDOM_NODISCARD inline XMLPtr<IXMLDOMNode> AddElement(NodeArgument node, const char* name) {
  if (!node || !IsXmlName(name)) return nullptr;
  const bool isEmptyDocument = node->m_eNodeType == NODE_DOCUMENT && node->m_pFirstChild == nullptr;
  if (node->m_eNodeType != NODE_ELEMENT && !isEmptyDocument) return nullptr;
  XMLPtr<IXMLDOMNode> element = xmldom::Adopt(node->AddChild(name, nullptr));
  xmldom::PrepareTextsForElements(node.Get());
  return element;
}

}  // namespace xmldom

#endif
