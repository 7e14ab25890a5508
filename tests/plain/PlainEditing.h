#ifndef XMLDOM_TESTS_PLAIN_PLAINEDITING_H
#define XMLDOM_TESTS_PLAIN_PLAINEDITING_H

#include <xmldom/dom/Results.h>

class IXMLDOMNode;

// What the members of IXMLDOMNode of the same names do: the owners of all that moves, and of all
// that follows it, are set by walking it.

namespace plain {

void RemoveNodeFromTree(IXMLDOMNode* node);
HRESULT appendChild(IXMLDOMNode* node, IXMLDOMNode* newChild, IXMLDOMNode** out);
HRESULT insertBefore(IXMLDOMNode* node, IXMLDOMNode* newChild, IXMLDOMNode* refChild,
                     IXMLDOMNode** out);
HRESULT replaceChild(IXMLDOMNode* node, IXMLDOMNode* newChild, IXMLDOMNode* oldChild,
                     IXMLDOMNode** out);
HRESULT removeChild(IXMLDOMNode* node, IXMLDOMNode* oldChild, IXMLDOMNode** out);

}  // namespace plain

#endif
