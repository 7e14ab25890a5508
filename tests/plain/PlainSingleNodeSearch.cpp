#include "plain/PlainSingleNodeSearch.h"

#include <algorithm>

#include "plain/PlainMatching.h"

namespace plain {

namespace {

/// The step of that number, or null.
const char* StepAt(const CXPathList& list, int k) {
  return k >= 0 && k < list.m_nCount ? list.m_ppIndex[k] : nullptr;
}

}  // namespace

SingleNodeSearch::SingleNodeSearch(const CXPathList& list, int mostRepeats, int mostSearches)
    : m_list(list),
      m_mostRepeats(mostRepeats),
      m_mostSearches(mostSearches),
      m_searches(0),
      m_mostOnAverage(0),
      m_openMatches(0),
      m_leftOutAny(false),
      m_leftOutSince(0) {}

IXMLDOMNode* SingleNodeSearch::Find(IXMLDOMNode* node, int k) {
  const Search search(node, k);
  if (IsTooLong()) return nullptr;
  // A search that is met again while it is open yields nothing.
  if (m_open.count(search) != 0) return nullptr;
  if (m_leftOutSince != 0 && m_searchedAt[search] >= m_leftOutSince) {
    m_leftOutAny = true;
    return nullptr;
  }
  m_searchedAt[search] = ++m_searches;
  m_mostOnAverage = std::max(m_mostOnAverage, m_searches / static_cast<int>(m_searchedAt.size()));
  m_open.insert(search);
  IXMLDOMNode* found = FindAt(node, k);
  m_open.erase(search);
  return found;
}

IXMLDOMNode* SingleNodeSearch::FindAt(IXMLDOMNode* node, int k) {
  if (k >= 0 && !plain::MatchQuery(node, StepAt(m_list, k))) {
    return m_list.m_bDescendant ? FindAmongChildren(node, 0) : nullptr;
  }
  if (k == m_list.m_nCount - 1) return node;
  ++m_openMatches;
  IXMLDOMNode* found = FindBelowMatch(node, k);
  --m_openMatches;
  return found;
}

IXMLDOMNode* SingleNodeSearch::FindBelowMatch(IXMLDOMNode* node, int k) {
  const int openedAt = m_searches;
  IXMLDOMNode* arrived = node;
  int next = k + 1;
  for (; next < m_list.m_nCount && next >= 0 && StepAt(m_list, next)[0] == '.'; ++next) {
    if (StepAt(m_list, next)[1] == '.') arrived = arrived->m_pParent;
    if (arrived == nullptr) return nullptr;
  }
  if (IXMLDOMNode* found = FindAmongChildren(arrived, next)) return found;
  return m_list.m_bDescendant ? FindAgain(node, openedAt) : nullptr;
}

IXMLDOMNode* SingleNodeSearch::FindAgain(IXMLDOMNode* node, int openedAt) {
  const int matchesAbove = m_openMatches - 1;
  if (matchesAbove < m_mostRepeats || m_leftOutSince != 0) return FindAmongChildren(node, 0);
  m_leftOutSince = openedAt;
  IXMLDOMNode* found = FindAmongChildren(node, 0);
  m_leftOutSince = 0;
  return found;
}

IXMLDOMNode* SingleNodeSearch::FindAmongChildren(IXMLDOMNode* node, int k) {
  for (IXMLDOMNode* child = node->m_pFirstChild; child != nullptr; child = child->m_pNextSibling) {
    if (IXMLDOMNode* found = Find(child, k)) return found;
  }
  return nullptr;
}

}  // namespace plain
