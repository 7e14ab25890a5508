#include "plain/PlainSelection.h"

#include <xmldom/query/XPathList.h>
#include <xmldom/xmldom.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <string>

#include "plain/PlainMatching.h"
#include "plain/PlainText.h"

namespace plain {

namespace {

void AppendStep(CXPathList& list, const std::string& text) {
  CStrListElt* step = new CStrListElt(text.data(), text.size());
  if (list.m_pFirst == nullptr) {
    list.m_pFirst = step;
  } else {
    list.m_pLast->m_pNext = step;
  }
  list.m_pLast = step;
  ++list.m_nCount;
}

}  // namespace

int ParsePath(CXPathList& list, const char* path) {
  if (path == nullptr || *path == '\0') return 0;
  if (*path == '/') {
    std::string prefix;
    while (*path == '/') prefix += *path++;
    std::free(list.m_pszPrefix);
    list.m_pszPrefix = strdup(prefix.c_str());
    list.m_bDescendant = prefix.find("//") != std::string::npos;
    list.m_bAbsolute = true;
  }
  std::string step;
  bool insideBrackets = false;
  for (; *path != '\0'; ++path) {
    if (*path == '/' && !insideBrackets) {
      AppendStep(list, step);
      step.clear();
      continue;
    }
    if (*path == '[') insideBrackets = true;
    if (*path == ']') insideBrackets = false;
    step += *path;
  }
  AppendStep(list, step);
  plain::CreateIndex(list);
  return 1;
}

void CreateIndex(CXPathList& list) {
  std::free(list.m_ppIndex);
  const std::size_t count = static_cast<std::size_t>(list.m_nCount);
  list.m_ppIndex = static_cast<char**>(std::calloc(count + 1, sizeof(char*)));
  std::size_t i = 0;
  for (CStrListElt* step = list.m_pFirst; step != nullptr; step = step->m_pNext) {
    list.m_ppIndex[i++] = step->m_pszString;
  }
}

void SelectNodesHelper(IXMLDOMNode* node, CXPathList& list, std::vector<IXMLDOMNode*>* result,
                       int step) {
  if (step == list.m_nCount) {
    result->push_back(node);
    return;
  }
  for (IXMLDOMNode* child = node->m_pFirstChild; child != nullptr; child = child->m_pNextSibling) {
    if (list.m_ppIndex == nullptr) plain::CreateIndex(list);
    const bool isThere = step >= 0 && step < list.m_nCount;
    const char* text = isThere ? list.m_ppIndex[step] : nullptr;
    if (plain::MatchQuery(child, text)) SelectNodesHelper(child, list, result, step + 1);
  }
}

void SelectNodesTraverse(IXMLDOMNode* node, CXPathList& list, std::vector<IXMLDOMNode*>* result) {
  SelectNodesHelper(node, list, result, 0);
  for (IXMLDOMNode* child = node->m_pFirstChild; child != nullptr; child = child->m_pNextSibling) {
    if (child->m_eNodeType == NODE_ELEMENT) SelectNodesTraverse(child, list, result);
  }
}

std::vector<IXMLDOMNode*> SelectNodes(IXMLDOMNode* node, const char* path) {
  CXPathList list;
  plain::ParsePath(list, path);
  std::vector<IXMLDOMNode*> result;
  IXMLDOMNode* start = list.m_bAbsolute ? node->m_pOwnerDocument : node;
  if (start == nullptr) return result;
  if (list.m_bDescendant) {
    SelectNodesTraverse(start, list, &result);
  } else {
    SelectNodesHelper(start, list, &result, 0);
  }
  return result;
}

SingleSearch::SingleSearch(CXPathList& list)
    : m_list(list), m_hasDots(false), m_leftOut(false), m_tests(0), m_openMatched(0) {
  for (int k = 0; k < list.m_nCount; ++k) m_hasDots = m_hasDots || *Step(k) == '.';
}

const char* SingleSearch::Step(int k) const {
  if (k < 0 || k >= m_list.m_nCount) return nullptr;
  const CStrListElt* step = m_list.m_pFirst;
  for (; k > 0; --k) step = step->m_pNext;
  return step->m_pszString;
}

IXMLDOMNode* SingleSearch::Search(IXMLDOMNode* node, int step, bool restarts) {
  if (++m_tests > kMostTests) return nullptr;
  const std::pair<IXMLDOMNode*, int> search(node, step);
  // Steps up may lead back to a search that is open.
  if (std::find(m_open.begin(), m_open.end(), search) != m_open.end()) return nullptr;
  m_open.push_back(search);
  IXMLDOMNode* found = SearchOpened(node, step, restarts);
  m_open.pop_back();
  return found;
}

IXMLDOMNode* SingleSearch::SearchOpened(IXMLDOMNode* node, int step, bool restarts) {
  if (step < 0 || plain::MatchQuery(node, Step(step))) {
    ++m_openMatched;
    IXMLDOMNode* found = SearchMatched(node, step, restarts);
    --m_openMatched;
    return found;
  }
  return m_list.m_bDescendant && restarts ? SearchChildren(node, 0, true) : nullptr;
}

IXMLDOMNode* SingleSearch::SearchMatched(IXMLDOMNode* node, int step, bool restarts) {
  if (step == m_list.m_nCount - 1) return node;
  const int reports = Reports();
  int next = step + 1;
  IXMLDOMNode* place = node;
  for (; next < m_list.m_nCount && *Step(next) == '.'; ++next) {
    if (Step(next)[1] == '.') place = place->m_pParent;
    if (place == nullptr) return nullptr;
  }
  IXMLDOMNode* found = SearchChildren(place, next, restarts);
  if (found != nullptr || !m_list.m_bDescendant || !restarts) return found;
  const bool isDeep = m_openMatched > kMostOpen;
  // What a path with steps up or none has searched already does not follow from its nesting.
  if (isDeep && m_hasDots) m_tests = kMostTests + 1;
  if (isDeep && Reports() != reports) m_leftOut = true;
  // Of a start whose children have been searched from the first step on, nothing is new.
  if (isDeep && step < 0 && next == 0) return nullptr;
  return SearchChildren(node, 0, !isDeep);
}

IXMLDOMNode* SingleSearch::SearchChildren(IXMLDOMNode* node, int step, bool restarts) {
  for (IXMLDOMNode* child = node->m_pFirstChild; child != nullptr; child = child->m_pNextSibling) {
    IXMLDOMNode* found = Search(child, step, restarts);
    if (found != nullptr) return found;
  }
  return nullptr;
}

}  // namespace plain
