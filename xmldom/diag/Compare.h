#ifndef XMLDOM_DIAG_COMPARE_H
#define XMLDOM_DIAG_COMPARE_H

#include <xmldom/base/Export.h>

class CMemFile;
class IXMLDOMNode;

/// Compares two trees up to the first difference. Either node may be null.
///
/// Compared are, in their order, the attributes (names and values) and the children (types and
/// names) of every pair of elements that is reached, and the values of texts. Not compared are the
/// names and types of the two nodes themselves, and the values of nodes other than texts. A name or
/// a value that is missing equals only a missing one, and is reported as "(null)".
///
/// `depth` is the level from which the report counts. Pass 0: then the report is emptied first, and
/// a document stands for its first child.
///
/// Result: 1 when the trees are equal; 0 at the first difference, which `report` then describes,
/// with the XML of the two nodes. Effects: what writing that XML throws; the report then holds what
/// was written before. Cost: linear in the smaller tree and in the XML of the two nodes.
XMLDOM_API int CompareXMLNodes(IXMLDOMNode* pNode1, IXMLDOMNode* pNode2, CMemFile& report,
                               int depth);

#endif
