#ifndef XMLDOM_DOM_NODEMATCH_H
#define XMLDOM_DOM_NODEMATCH_H

#include <xmldom/query/XPathStep.h>

class IXMLDOMNode;

namespace xmldom {

/// What IXMLDOMNode::MatchQuery decides, for a step that is split already.
bool MatchesStep(IXMLDOMNode* node, const XPathStep& step);

}  // namespace xmldom

#endif
