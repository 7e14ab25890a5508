#ifndef XMLDOM_DOM_NEWNODE_H
#define XMLDOM_DOM_NEWNODE_H

#include <xmldom/dom/XMLNode.h>

#include <cstddef>

namespace xmldom {

/// A detached node, as its constructor makes it, for texts whose lengths are known; a null value
/// stays null. Result: the caller's. Effects: std::bad_alloc when memory is out.
IXMLDOMNode* NewNode(IXMLDOMDocument2* document, tagDOMNodeType type, const char* name,
                     std::size_t nameLength, const char* value, std::size_t valueLength);

}  // namespace xmldom

#endif
