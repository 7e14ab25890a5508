#ifndef XMLDOM_TESTS_PLAIN_PLAINSELECTION_H
#define XMLDOM_TESTS_PLAIN_PLAINSELECTION_H

#include <vector>

class CXPathList;
class IXMLDOMNode;

namespace plain {

/// What CXPathList::ParsePath does, on the public fields of a list.
int ParsePath(CXPathList& list, const char* path);

/// What CXPathList::CreateIndex does.
void CreateIndex(CXPathList& list);

/// What the members of IXMLDOMNode of the same names do, by recursion; the nodes are borrowed.
std::vector<IXMLDOMNode*> SelectNodes(IXMLDOMNode* node, const char* path);
void SelectNodesHelper(IXMLDOMNode* node, CXPathList& list, std::vector<IXMLDOMNode*>* result,
                       int step);
void SelectNodesTraverse(IXMLDOMNode* node, CXPathList& list, std::vector<IXMLDOMNode*>* result);

}  // namespace plain

#endif
