#ifndef XMLDOM_DOM_NEWNODE_H
#define XMLDOM_DOM_NEWNODE_H

#include <xmldom/dom/XMLNode.h>

#include <cstddef>

namespace xmldom {

/// The name of every text node that the library makes.
const char* const kTextName = "#Text";

/// What makes nodes that are not counted yet.
struct Uncounted {
  /// Makes a node without name and value. Result: the node, the caller's, who has to count it.
  IXMLDOMNode* NewNode() const { return new IXMLDOMNode(*this); }
};

/// Makes a detached node from texts whose lengths are known. `name` must not be null; a null
/// `value` makes a node without value. Result: the node, the caller's, who has to add it to
/// IXMLDOMNode::m_iObjCount. Effects: std::bad_alloc when memory is out.
IXMLDOMNode* NewNode(IXMLDOMDocument2* document, tagDOMNodeType type, const char* name,
                     std::size_t nameLength, const char* value, std::size_t valueLength);

}  // namespace xmldom

#endif
