#ifndef XMLDOM_DOM_NEWNODE_H
#define XMLDOM_DOM_NEWNODE_H

#include <xmldom/dom/XMLNode.h>

#include <cstddef>

namespace xmldom {

/// The name of every text node that the library makes.
const char* const kTextName = "#Text";

/// Makes a detached node from texts whose lengths are known. `name` must not be null; a null
/// `value` makes a node without value. Result: the node, the caller's. Effects: std::bad_alloc when
/// memory is out.
IXMLDOMNode* NewNode(IXMLDOMDocument2* document, tagDOMNodeType type, const char* name,
                     std::size_t nameLength, const char* value, std::size_t valueLength);

}  // namespace xmldom

#endif
