// The members that match a node with the text of a step or of a predicate. Tested by
// tests/query/NodeMatch_test.cpp and tests/query/NodeMatchOutput_test.cpp.

#include <xmldom/query/NodeMatch.h>

#include <cstring>

bool xmldom::ReportMissingStep(IXMLDOMNode* node) {
  char* name = nullptr;
  char* predicates = nullptr;
  return node->ParseXPathQuery(nullptr, &name, &predicates) != 0;
}

int StringMatchesSubString(const char* s, const char* sub, int n) {
  if (s == nullptr || sub == nullptr || n < 0) return 0;
  const std::size_t length = static_cast<std::size_t>(n);
  return std::strlen(s) == length && std::strncmp(s, sub, length) == 0;
}

int IXMLDOMNode::MatchQuery(const char* step) {
  const xmldom::XPathSteps steps(step);
  return xmldom::MatchesStep(this, steps.At(0));
}

int IXMLDOMNode::MatchesSubquery(const char* predicate) {
  if (predicate == nullptr) return 0;
  xmldom::XPathSegments segments;
  xmldom::AppendPredicate(xmldom::WholeText(predicate), &segments);
  return xmldom::HasSatisfying(this, segments.Items(), segments);
}

int IXMLDOMNode::MatchSubqueryHelper(IXMLDOMNode* candidate, const char* predicate) {
  if (candidate == nullptr || predicate == nullptr) return 0;
  xmldom::XPathSegments segments;
  xmldom::AppendPredicate(xmldom::WholeText(predicate), &segments);
  return xmldom::IsSatisfying(candidate, segments);
}
