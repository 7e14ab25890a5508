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
#include <utility>
#include <vector>

namespace xmldom {

/// A text that has to change.
struct PreparedText {
  IXMLDOMNode* text;             ///< The text, borrowed.
  XMLPtr<IXMLDOMNode> prepared;  ///< A node that has its new value.
};

/// Prepares the texts of an element for another child, beside which the writer indents them: where
/// a text begins with a plain character, that becomes a reference, as EscapeText makes it.
/// Result: the texts that have to change. Nothing has changed yet, because memory may be out.
inline std::vector<PreparedText> PrepareTextsForElements(IXMLDOMNode* element) {
  std::vector<PreparedText> texts;
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
    prepared += rest;
    texts.push_back(
        {child, xmldom::Adopt(new IXMLDOMNode(nullptr, nullptr, prepared.c_str(), NODE_TEXT))});
  }
  return texts;
}

/// Adds a new element as last child of an element, or as root of a document that has none.
/// Result: the element, in an owner; the tree has a reference of its own. Null, with nothing
/// changed, when `node` is null or of another type, when a document has a root already, and when
/// `name` is no XML name. Effects: std::bad_alloc when memory is out, with nothing changed. Cost:
/// that of IXMLDOMNode::AddChild, and linear in the children and their texts.
XMLDOM_NODISCARD inline XMLPtr<IXMLDOMNode> AddElement(NodeArgument node, const char* name) {
  if (!node || !IsXmlName(name)) return nullptr;
  const bool isEmptyDocument = node->m_eNodeType == NODE_DOCUMENT && node->m_pFirstChild == nullptr;
  if (node->m_eNodeType != NODE_ELEMENT && !isEmptyDocument) return nullptr;
  const std::vector<PreparedText> texts = xmldom::PrepareTextsForElements(node.Get());
  XMLPtr<IXMLDOMNode> element = xmldom::Adopt(node->AddChild(name, nullptr));
  for (const PreparedText& text : texts) {
    std::swap(text.text->m_pszValue, text.prepared->m_pszValue);
  }
  return element;
}

}  // namespace xmldom

#endif
