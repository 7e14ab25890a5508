#ifndef XMLDOM_DOM_CHAINMARKS_H
#define XMLDOM_DOM_CHAINMARKS_H

#include <xmldom/dom/XMLNode.h>

// The node before another among the children of a node. Siblings are linked forwards only, so that
// finding it may need a walk from the first child.

namespace xmldom {

/// The node before `node`, borrowed. `node` must have a parent that exists, and must not be its
/// first child. Null when the parent does not list `node` among its children.
/// Effects: the thread caches what was found, and some of the nodes that a long search has passed,
/// the marks, from which the next search begins. Nothing is allocated.
/// Cost: constant close to the first child, close behind what the thread found last, and for the
/// last child whose place is cached; going backwards, the logarithm of the number of children on
/// average; otherwise linear in the siblings before `node`.
IXMLDOMNode* FindBefore(IXMLDOMNode* node);

/// The node before `node`, as FindBefore. Effects: throws the CLogException* of get_previousSibling
/// when there is none.
IXMLDOMNode* PreviousOf(IXMLDOMNode* node);

}  // namespace xmldom

#endif
