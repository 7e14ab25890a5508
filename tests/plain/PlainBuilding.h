#ifndef XMLDOM_TESTS_PLAIN_PLAINBUILDING_H
#define XMLDOM_TESTS_PLAIN_PLAINBUILDING_H

class IXMLDOMNode;

// What the members of IXMLDOMNode of the same names do that build and edit: every append walks its
// chain from the head.

namespace plain {

int AddChild(IXMLDOMNode* node, IXMLDOMNode* child);
IXMLDOMNode* AddChild(IXMLDOMNode* node, const char* name, const char* value);
IXMLDOMNode* AddSibling(IXMLDOMNode* node, const char* name, const char* value);
int AddTextChild(IXMLDOMNode* node, const char* text);
int AddAttribute(IXMLDOMNode* node, const char* name, const char* value);
int SetAttribute(IXMLDOMNode* node, const char* name, const char* value);
void AppendValue(IXMLDOMNode* node, const char* text, int length);
void SetValue(IXMLDOMNode* node, const char* text);

}  // namespace plain

#endif
