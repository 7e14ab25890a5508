#ifndef XMLDOM_TEXT_NODELAYOUT_H
#define XMLDOM_TEXT_NODELAYOUT_H

#include <xmldom/dom/XMLDocument.h>

namespace xmldom {

/// How a document lays its nodes out when they are written.
struct Layout {
  bool indents;  // tags are indented
  int width;     // blanks a level
};

/// The layout of a new document. Nodes are written with it when their owners cannot tell another.
const Layout kUsualLayout = {true, 2};

/// The layout that the owner of a node asks for; the usual one when it has no owner. The owner must
/// be alive. Its type is tested because a node made by the default constructor is its own owner
/// without being a document.
inline Layout LayoutOf(const IXMLDOMNode* node) {
  const IXMLDOMDocument2* document = node->m_pOwnerDocument;
  if (document == nullptr || document->m_eNodeType != NODE_DOCUMENT) return kUsualLayout;
  return Layout{(document->m_uFlags & IXMLDOMDocument2::FORMATTED_LAYOUT) != 0,
                document->m_nIndent};
}

/// Whether a node or any below it has no owner. Cost: linear in these nodes.
/// Effects: std::bad_alloc when memory is out.
bool MissesOwner(IXMLDOMNode* node);

}  // namespace xmldom

#endif
