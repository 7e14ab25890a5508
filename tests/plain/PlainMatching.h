#ifndef XMLDOM_TESTS_PLAIN_PLAINMATCHING_H
#define XMLDOM_TESTS_PLAIN_PLAINMATCHING_H

class IXMLDOMNode;

// What the members of IXMLDOMNode of the same names do: texts are cut where they are read.

namespace plain {

int StringMatchesSubString(const char* s, const char* sub, int n);
int ParseXPathQuery(const char* query, char** name, char** predicates);
int MatchQuery(IXMLDOMNode* node, const char* step);
int MatchesSubquery(IXMLDOMNode* node, const char* predicate);
int MatchSubqueryHelper(IXMLDOMNode* candidate, const char* predicate);

}  // namespace plain

#endif
