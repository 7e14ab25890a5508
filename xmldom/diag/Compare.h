#ifndef XMLDOM_DIAG_COMPARE_H
#define XMLDOM_DIAG_COMPARE_H

#include <xmldom/base/Export.h>

class CMemFile;
class IXMLDOMNode;

/// Compares two trees, either of which may be null: attributes with their values, in order, and
/// children with their types and names, in order, and the values of texts. The names and types of
/// the two nodes themselves are not compared, nor values of nodes that are no texts. Texts that are
/// missing equal only each other, and are reported as "(null)".
///
/// `depth` is the level that the report counts from. At 0 the report is emptied first, and a
/// document stands for its first child. Result: 1 when they are equal; 0 at the first difference,
/// with an account of it in `report`. Cost: linear in the smaller tree, and in the XML of the two
/// nodes that are reported.
XMLDOM_API int CompareXMLNodes(IXMLDOMNode* pNode1, IXMLDOMNode* pNode2, CMemFile& report,
                               int depth);

#endif
