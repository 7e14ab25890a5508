#ifndef XMLDOM_QUERY_NODEMATCH_H
#define XMLDOM_QUERY_NODEMATCH_H

#include <xmldom/dom/XMLNode.h>
#include <xmldom/query/XPathStep.h>

namespace xmldom {

/// Whether all predicates of a step hold for an element. A malformed predicate makes the step fail
/// and is reported (type 18, severity 3) when the predicates before it hold.
/// Cost: linear in the candidates of the predicates and in their texts, which the table of the step
/// remembers for elements with others below them.
bool AllPredicatesHold(IXMLDOMNode* node, const XPathStep& step);

/// Whether a child or an attribute of a node satisfies a predicate, whose first segment is given,
/// with the table that it is in. Cost: as above.
bool HasSatisfying(IXMLDOMNode* node, const XPathSegment* predicate, const XPathSegments& segments);

/// Whether a child or an attribute itself satisfies the predicate that begins a table.
bool IsSatisfying(IXMLDOMNode* candidate, const XPathSegments& segments);

/// Reports that a node was tested with the missing step. Result: false.
bool ReportMissingStep(IXMLDOMNode* node);

/// Whether a node matches a step, as IXMLDOMNode::MatchQuery tells for the text of a step. Inline
/// up to the predicates, because most nodes that a search tests differ in the name.
inline bool MatchesStep(IXMLDOMNode* node, const XPathStep& step) {
  if (node->m_eNodeType != NODE_ELEMENT) return false;
  if (step.IsMissing()) return ReportMissingStep(node);
  if (!step.NameMatches(node->m_pszNodeName)) return false;
  return !step.HasPredicates() || AllPredicatesHold(node, step);
}

}  // namespace xmldom

#endif
