#ifndef XMLDOM_TESTS_PLAIN_PLAINTEXT_H
#define XMLDOM_TESTS_PLAIN_PLAINTEXT_H

class CMemFile;
class IXMLDOMNode;

namespace plain {

/// How many log events and printed lines there have been of these and other plain functions.
int& Reports();

/// What SetDebugEntities switches.
bool& PrintsDebugLines();

/// What TranslateEntities does.
int TranslateEntities(const char* in, CMemFile& out);

/// What IXMLDOMNode::GetStrValue does.
const char* GetStrValue(const IXMLDOMNode* node);

/// What IXMLDOMNode::GetTextHelper does, by recursion.
void GetTextHelper(const IXMLDOMNode* node, CMemFile& out);

/// What IXMLDOMNode::GetTextAsStr does.
char* GetTextAsStr(const IXMLDOMNode* node);

/// What IXMLDOMNode::GetStringValue does.
char* GetStringValue(const IXMLDOMNode* node, char* buffer, int size);

}  // namespace plain

#endif
