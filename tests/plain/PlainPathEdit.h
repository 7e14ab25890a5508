#ifndef XMLDOM_TESTS_PLAIN_PLAINPATHEDIT_H
#define XMLDOM_TESTS_PLAIN_PLAINPATHEDIT_H

class IXMLDOMNode;

// What the members of IXMLDOMNode of the same names do, with every reference given back where its
// turn comes.

namespace plain {

int ReplaceChildAtXPath(IXMLDOMNode* node, const char* path, const char* content);
int AppendChildAtXPath(IXMLDOMNode* node, const char* path, const char* content);
int InsertBeforeXPath(IXMLDOMNode* node, const char* path, const char* content);
int RemoveChildAtXPath(IXMLDOMNode* node, const char* path);

}  // namespace plain

#endif
