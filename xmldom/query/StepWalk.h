#ifndef XMLDOM_QUERY_STEPWALK_H
#define XMLDOM_QUERY_STEPWALK_H

#include <xmldom/query/XPathStep.h>

class IXMLDOMNode;
class IXMLDOMNodeList;

// The walks that SelectNodes and SelectSingleNode share. With a list, each adds all nodes that it
// finds, and its result is null. Without one it ends at the first, which is its result, borrowed.

namespace xmldom {

/// Finds what the steps from `firstStep` on select, one level a step, in document order. The first
/// level is the chain of siblings that starts at `head`.
IXMLDOMNode* WalkSteps(IXMLDOMNode* head, const XPathSteps& steps, int firstStep,
                       IXMLDOMNodeList* list);

/// Finds what a step selects in the chain of siblings that starts at `head` and everywhere below,
/// in one walk in document order, because that is how a loaded tree lies in memory.
///
/// With a list, only elements are gone below. The nodes that are selected from one element stand
/// together in the list, before those from the elements below it. So each chain of children that is
/// open remembers the link behind which its next node belongs. When memory is out, what has been
/// found so far is in the list.
IXMLDOMNode* WalkEverywhere(IXMLDOMNode* head, const XPathStep& step, IXMLDOMNodeList* list);

}  // namespace xmldom

#endif
