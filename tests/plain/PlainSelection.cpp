#include "plain/PlainSelection.h"

#include <xmldom/query/XPathList.h>
#include <xmldom/xmldom.h>

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

}  // namespace plain
