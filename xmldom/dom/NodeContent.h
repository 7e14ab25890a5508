#ifndef XMLDOM_DOM_NODECONTENT_H
#define XMLDOM_DOM_NODECONTENT_H

#include <xmldom/dom/XMLDocument.h>

#include <cstddef>

namespace xmldom {

/// Whether this is a document, or a node made without arguments: a node that is its own owner
/// document. Reading such a node means reading its first child.
inline bool IsOwnDocument(const IXMLDOMNode* node) {
  return static_cast<const void*>(node->m_pOwnerDocument) == static_cast<const void*>(node);
}

/// The stored value that stands for a node: that of the first child for an element whose first
/// child is a text, otherwise the node's own. Borrowed; may be null.
inline const char* StoredValueOf(const IXMLDOMNode* node) {
  if (node->m_eNodeType == NODE_ELEMENT && node->m_pFirstChild != nullptr &&
      node->m_pFirstChild->m_eNodeType == NODE_TEXT) {
    return node->m_pFirstChild->m_pszValue;
  }
  return node->m_pszValue;
}

/// The node that is read when `node` is to be read: for a document its first child, otherwise the
/// node itself. Borrowed; null for null and for an empty document.
inline IXMLDOMNode* ContentOf(const IXMLDOMNode* node) {
  while (node != nullptr && IsOwnDocument(node)) node = node->m_pFirstChild;
  return const_cast<IXMLDOMNode*>(node);
}

/// The result of AppendTexts when there was nothing to append.
const std::size_t kNoText = static_cast<std::size_t>(-1);

/// Appends the decoded values of the texts among a node, which may be null, and its later siblings,
/// with a blank before each unless the position of the file is 0. Result: where in the file the
/// first of them that is not empty begins, or kNoText. Effects: those of TranslateEntities for
/// each. Defined in text/TextCollector.cpp.
std::size_t AppendTexts(const IXMLDOMNode* node, CMemFile& out);

/// What get_nodeValue and get_nodeTypedValue give for the nodes of a type.
enum ValueKind {
  VALUE_NONE,    // both give an empty value
  VALUE_STORED,  // both give the stored value
  VALUE_TEXT,    // the value is empty, the typed value is the text of the node
  VALUE_UNKNOWN  // there is no such type; the caller's record stays as it was
};

/// The kind for a type, which may be any number. Defined in XMLNodeType.cpp.
ValueKind ValueKindOf(tagDOMNodeType type);

}  // namespace xmldom

#endif
