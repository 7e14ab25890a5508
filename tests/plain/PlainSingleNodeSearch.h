#ifndef XMLDOM_TESTS_PLAIN_PLAINSINGLENODESEARCH_H
#define XMLDOM_TESTS_PLAIN_PLAINSINGLENODESEARCH_H

#include <xmldom/xmldom.h>

#include <climits>
#include <cstddef>
#include <map>
#include <set>
#include <utility>

/// The search for the first node that a path selects, by plain recursion and with all its repeats,
/// made of public members alone: what the library's search is compared with.
///
/// Below a matched node the children of that node are searched once more with step 0. Below
/// `mostRepeats` matched nodes that are open, the start among them, only what was not searched
/// since the matched node was opened is searched then.
class PlainSingleNodeSearch {
 public:
  static const int kEveryRepeat = INT_MAX;

  PlainSingleNodeSearch(const CXPathList& list, int mostRepeats, int mostSearches);

  /// Result: the node found, borrowed, or null.
  IXMLDOMNode* Find(IXMLDOMNode* node, int k);

  /// Whether the search was given up: the repeats multiply at every level.
  bool IsTooLong() const { return m_searches >= m_mostSearches; }
  /// Whether any search was left out.
  bool LeftOutAny() const { return m_leftOutAny; }
  /// Whether, at any time, there were more than `limit` searches for each node and step, on
  /// average.
  bool WasAbove(int limit) const { return m_mostOnAverage > limit; }

 private:
  typedef std::pair<IXMLDOMNode*, int> Search;

  IXMLDOMNode* FindAt(IXMLDOMNode* node, int k);
  IXMLDOMNode* FindBelowMatch(IXMLDOMNode* node, int k);
  IXMLDOMNode* FindAgain(IXMLDOMNode* node, int openedAt);
  IXMLDOMNode* FindAmongChildren(IXMLDOMNode* node, int k);

  const CXPathList& m_list;
  const int m_mostRepeats;
  const int m_mostSearches;
  std::set<Search> m_open;
  std::map<Search, int> m_searchedAt;  // the last time
  int m_searches;
  int m_mostOnAverage;
  int m_openMatches;
  bool m_leftOutAny;
  int m_leftOutSince;  // what was searched from then on is left out; 0 for nothing
};

#endif
