#ifndef XMLDOM_TEXT_TEXTSTORING_H
#define XMLDOM_TEXT_TEXTSTORING_H

#include <xmldom/base/Export.h>
#include <xmldom/base/TextArgument.h>
#include <xmldom/dom/NodeArgument.h>
#include <xmldom/dom/XMLNode.h>
#include <xmldom/dom/XmlNames.h>
#include <xmldom/ptr/XMLPtr.h>
#include <xmldom/text/Escaping.h>
#include <xmldom/text/NodeTexts.h>

#include <cstddef>
#include <string>
#include <utility>

namespace xmldom {

/// What came of storing a text. It converts to true when the text was stored; otherwise nothing has
/// changed.
struct StoreResult {
  /// Why a text was not stored.
  enum Problem {
    kNone,       ///< It was stored.
    kNoNode,     ///< The node is null.
    kWrongType,  ///< A node of this type cannot have such a text.
    kForbidden,  ///< The text holds a character that XML cannot hold, at `offset`.
    kNoName      ///< What should name the attribute is no XML name.
  };

  Problem problem;     ///< Why the text was not stored.
  std::size_t offset;  ///< Where the forbidden character stands in the text, in bytes; else 0.

  /// Whether the text was stored.
  explicit operator bool() const noexcept { return problem == kNone; }

  /// Result: the problem in words; an empty text when there is none.
  const char* Reason() const noexcept {
    static const char* const kReasons[] = {
        "", "there is no node", "a node of this type cannot have such a text",
        "XML cannot hold a character of the text", "the attribute has no XML name"};
    return kReasons[problem];
  }
};

/// Makes `escaped` the value of an attribute. The value comes from another node, because it has to
/// be on the C heap, and is exchanged, so that nothing changes when there is no memory for it.
inline void ReplaceValue(IXMLDOMNode* attribute, const char* escaped) {
  const XMLPtr<IXMLDOMNode> other =
      xmldom::Adopt(new IXMLDOMNode(nullptr, nullptr, escaped, NODE_ATTRIBUTE));
  std::swap(attribute->m_pszValue, other->m_pszValue);
  // The analyzer does not see that the smart pointer gives the node back.
}  // NOLINT(clang-analyzer-cplusplus.NewDeleteLeaks)

/// Result: the first text among the children of an element, borrowed; null when there is none.
/// Out: whether there are children of other types.
inline IXMLDOMNode* FindTextChild(const IXMLDOMNode* element, bool& hasOthers) noexcept {
  IXMLDOMNode* text = nullptr;
  hasOthers = false;
  for (IXMLDOMNode* child = element->m_pFirstChild; child != nullptr;
       child = child->m_pNextSibling) {
    if (child->m_eNodeType != NODE_TEXT) hasOthers = true;
    if (child->m_eNodeType == NODE_TEXT && text == nullptr) text = child;
  }
  return text;
}

/// Takes all texts out of an element, but not `kept`.
inline void RemoveOtherTexts(IXMLDOMNode* element, const IXMLDOMNode* kept) {
  for (IXMLDOMNode* child = element->m_pFirstChild; child != nullptr;) {
    IXMLDOMNode* const next = child->m_pNextSibling;
    XMLPtr<IXMLDOMNode> removed;
    if (child->m_eNodeType == NODE_TEXT && child != kept) {
      element->removeChild(child, removed.Out());
    }
    child = next;
  }
}

/// Adds a text to an element that has none, before its other children, where a load puts it.
inline void AddFirstText(IXMLDOMNode* element, const char* escaped) {
  IXMLDOMNode* const first = element->m_pFirstChild;
  XMLPtr<IXMLDOMNode> text =
      xmldom::Adopt(new IXMLDOMNode(element->m_pOwnerDocument, "#Text", escaped, NODE_TEXT));
  // A first child that names another parent is refused as a place.
  if (first == nullptr || element->insertBefore(text.Get(), first, nullptr) != S_OK) {
    element->AddChild(text.Get());
  }
  text.Detach();
}

/// Makes `text` the only text of an element; an empty one leaves it without texts.
inline StoreResult SetElementText(IXMLDOMNode* element, TextArgument text) {
  bool hasOthers = false;
  IXMLDOMNode* present = xmldom::FindTextChild(element, hasOthers);
  const EscapedText escaped =
      EscapeText(text, hasOthers ? TextPlace::kBesideElements : TextPlace::kAlone);
  if (!escaped) return StoreResult{StoreResult::kForbidden, escaped.refusedAt};
  if (escaped.text.empty()) {
    present = nullptr;
  } else if (present != nullptr) {
    present->SetValue(escaped.text.c_str());
  } else {
    xmldom::AddFirstText(element, escaped.text.c_str());
    return StoreResult{StoreResult::kNone, 0};
  }
  xmldom::RemoveOtherTexts(element, present);
  return StoreResult{StoreResult::kNone, 0};
}

/// Makes `text` the value of a text node.
inline StoreResult SetTextOfText(IXMLDOMNode* node, TextArgument text) {
  const IXMLDOMNode* const parent = node->m_pParent;
  const bool isAlone =
      parent == nullptr || (parent->m_pFirstChild == node && node->m_pNextSibling == nullptr);
  const EscapedText escaped =
      EscapeText(text, isAlone ? TextPlace::kAlone : TextPlace::kBesideElements);
  if (!escaped) return StoreResult{StoreResult::kForbidden, escaped.refusedAt};
  node->SetValue(escaped.text.c_str());
  return StoreResult{StoreResult::kNone, 0};
}

/// Makes `text` the value of an attribute.
inline StoreResult SetAttributeText(IXMLDOMNode* attribute, TextArgument text) {
  const EscapedText escaped = EscapeAttribute(text);
  if (!escaped) return StoreResult{StoreResult::kForbidden, escaped.refusedAt};
  xmldom::ReplaceValue(attribute, escaped.text.c_str());
  return StoreResult{StoreResult::kNone, 0};
}

/// Sets the text of an element, of an attribute or of a text node. It is escaped, so that it reads
/// back the same, also after the document was written, and loaded with formatted layout.
///
/// An element has this one text afterwards: other texts are removed, its other children stay, and
/// an empty text leaves it without texts. Xml and GetXML write a text before the other children.
/// Add elements beside it with AddElement, which keeps its blanks; AddChild and appendChild do not.
/// A load joins a text node with the other texts of its element. Result: whether the text was
/// stored, and if not, why; kWrongType for any other type of node, documents among them. Nothing
/// has changed then. Bad input: a text node must not have outlived the element that it names as
/// parent. Effects: a CLogException* where the links around a text that has to be removed
/// contradict each other. Borrowed values of the node are freed. Cost: linear in the text and the
/// children; for each text beyond the first that an element has, which no load makes, linear in the
/// children once more.
XMLDOM_NODISCARD inline StoreResult SetText(NodeArgument node, TextArgument text) {
  if (!node) return StoreResult{StoreResult::kNoNode, 0};
  switch (node->m_eNodeType) {
    case NODE_ELEMENT:
      return xmldom::SetElementText(node.Get(), text);
    case NODE_TEXT:
      return xmldom::SetTextOfText(node.Get(), text);
    case NODE_ATTRIBUTE:
      return xmldom::SetAttributeText(node.Get(), text);
    default:
      return StoreResult{StoreResult::kWrongType, 0};
  }
}

/// Sets an attribute of an element, and adds it when there is none of that name. The value is
/// escaped, so that it reads back the same, also after the document was written and loaded. Unlike
/// IXMLDOMNode::SetAttribute it leaves no reference behind.
/// Result: whether the value was stored, and if not, why; kWrongType when `node` is no element.
/// Nothing has changed then. Effects: std::bad_alloc when memory is out, with nothing changed.
/// Adding an attribute sets the error code of lookups to 0. Borrowed values of the attribute are
/// freed. Cost: linear in the attributes and the value.
XMLDOM_NODISCARD inline StoreResult SetAttribute(NodeArgument node, const char* name,
                                                 TextArgument text) {
  if (!node) return StoreResult{StoreResult::kNoNode, 0};
  if (node->m_eNodeType != NODE_ELEMENT) return StoreResult{StoreResult::kWrongType, 0};
  IXMLDOMNode* const attribute = xmldom::FindAttribute(node.Get(), name);
  if (attribute != nullptr) return xmldom::SetAttributeText(attribute, text);
  if (!IsXmlName(name)) return StoreResult{StoreResult::kNoName, 0};
  const EscapedText escaped = EscapeAttribute(text);
  if (!escaped) return StoreResult{StoreResult::kForbidden, escaped.refusedAt};
  node->AddAttribute(name, escaped.text.c_str());
  return StoreResult{StoreResult::kNone, 0};
}

}  // namespace xmldom

#endif
