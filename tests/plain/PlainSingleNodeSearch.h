#ifndef XMLDOM_TESTS_PLAIN_PLAINSINGLENODESEARCH_H
#define XMLDOM_TESTS_PLAIN_PLAINSINGLENODESEARCH_H

#include <xmldom/xmldom.h>

#include <climits>
#include <cstddef>
#include <map>
#include <set>
#include <utility>

namespace plain {

/// What IXMLDOMNode::SelectSingleNodeHelper does, by recursion and with all repeats: below a
/// matched node, in a path that begins with "//", the children of that node are searched once more
/// with step 0. Where `mostRepeats` matched nodes are open above it, the start among them, only
/// what was not tested since the matched node was opened is searched then.
class SingleNodeSearch {
 public:
  static const int kEveryRepeat = INT_MAX;
  /// The numbers of the library's search: how many repeats there are above each other, and how
  /// often a node is tested with a step.
  static const int kMostRepeats = 6;
  static const int kMostTests = 64;

  SingleNodeSearch(const CXPathList& list, int mostRepeats, int mostSearches);

  /// Result: the node found, borrowed, or null.
  IXMLDOMNode* Find(IXMLDOMNode* node, int k);

  /// Whether the search was given up: the repeats multiply at every level.
  bool IsTooLong() const { return m_searches >= m_mostSearches; }
  /// Whether any search was left out.
  bool LeftOutAny() const { return m_leftOutAny; }
  /// Whether, at any time, there were more than `limit` searches for each node and step, on
  /// average.
  bool WasAbove(int limit) const { return m_mostOnAverage > limit; }
  /// Whether the library's search has to do the same, because the search was not given up, and no
  /// limit on the tests was reached.
  bool IsComparable() const { return !IsTooLong() && !WasAbove(kMostTests - 1); }

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

}  // namespace plain

#endif
