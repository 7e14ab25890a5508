#ifndef XMLDOM_TESTS_PLAIN_PLAINLIFETIME_H
#define XMLDOM_TESTS_PLAIN_PLAINLIFETIME_H

class IXMLDOMDocument2;
class IXMLDOMNode;

namespace plain {

/// What RealRelease does to a node, with the described destructors behind it; they call each other.
void RealRelease(IXMLDOMNode* node);

/// What IXMLDOMNode::ClearNode does.
void ClearNode(IXMLDOMNode* node, bool freeName);

/// What IXMLDOMNode::RecurseSetDocument does, by recursion.
void RecurseSetDocument(IXMLDOMNode* node, IXMLDOMDocument2* document);

/// What IXMLDOMNode::RecurseClearDocument does, by recursion.
void RecurseClearDocument(IXMLDOMNode* node, int depth);

}  // namespace plain

#endif
