#ifndef XMLDOM_TESTS_PLAIN_PLAINCOMPARISON_H
#define XMLDOM_TESTS_PLAIN_PLAINCOMPARISON_H

class CMemFile;
class IXMLDOMNode;

namespace plain {

/// What CompareXMLNodes does, by recursion.
int CompareXMLNodes(IXMLDOMNode* node1, IXMLDOMNode* node2, CMemFile& report, int depth);

}  // namespace plain

#endif
