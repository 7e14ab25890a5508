#ifndef XMLDOM_TESTS_PLAIN_PLAINWRITER_H
#define XMLDOM_TESTS_PLAIN_PLAINWRITER_H

class CMemFile;
class IXMLDOMNode;

namespace plain {

/// What IXMLDOMNode::GetXMLHelper does, by recursion.
void GetXMLHelper(const IXMLDOMNode* node, CMemFile& out, int depth, IXMLDOMNode* pagedNode,
                  int first, int count, int currentPage, int numPages, const char* padTemplate,
                  bool masked, bool indexed, int index);

/// What Pad does.
void Pad(CMemFile& out, const char* padTemplate, int from, int to);

}  // namespace plain

#endif
