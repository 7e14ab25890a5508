#ifndef XMLDOM_QUERY_NODEMATCH_H
#define XMLDOM_QUERY_NODEMATCH_H

#include <xmldom/dom/XMLNode.h>
#include <xmldom/query/XPathStep.h>

namespace xmldom {

/// Whether all predicates of a step hold for an element.
bool HoldAllPredicates(IXMLDOMNode* node, const XPathStep& step);

/// Reports a step that there is none of. Result: false.
bool FailAtMissingStep(IXMLDOMNode* node);

/// What IXMLDOMNode::MatchQuery decides, for a step that is split already. Names are compared
/// first, and on the spot: that settles most nodes of a search.
inline bool MatchesStep(IXMLDOMNode* node, const XPathStep& step) {
  if (node->m_eNodeType != NODE_ELEMENT) return false;
  if (step.IsMissing()) return FailAtMissingStep(node);
  if (!step.NameMatches(node->m_pszNodeName)) return false;
  return !step.HasPredicates() || HoldAllPredicates(node, step);
}

}  // namespace xmldom

#endif
