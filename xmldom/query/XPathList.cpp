// Cutting a path into steps, which are kept in a linked list and an index of their texts. Tested by
// tests/query/XPathList_test.cpp.

#include <xmldom/query/XPathList.h>

#include <xmldom/base/LiveCount.h>
#include <xmldom/base/Text.h>

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <new>
#include <stdexcept>

int CStrListElt::m_iObjCount = 0;
int CXPathList::m_iObjCount = 0;

CStrListElt::CStrListElt(const char* text, std::size_t length)
    : m_pszString(xmldom::CopyString(text, length)), m_pNext(nullptr) {
  xmldom::AddToCount(m_iObjCount, 1);
}

CStrListElt::~CStrListElt() {
  std::free(m_pszString);
  xmldom::AddToCount(m_iObjCount, -1);
  // A loop, so that long chains need no deep recursion: each step is deleted without successor.
  while (m_pNext != nullptr) {
    CStrListElt* next = m_pNext;
    m_pNext = next->m_pNext;
    next->m_pNext = nullptr;
    delete next;
  }
}

CXPathList::CXPathList()
    : m_pszPrefix(nullptr),
      m_pFirst(nullptr),
      m_pLast(nullptr),
      m_nCount(0),
      m_ppIndex(nullptr),
      m_bDescendant(false),
      m_bAbsolute(false) {
  xmldom::AddToCount(m_iObjCount, 1);
}

CXPathList::~CXPathList() {
  delete m_pFirst;
  std::free(m_pszPrefix);
  std::free(m_ppIndex);
  xmldom::AddToCount(m_iObjCount, -1);
}

int CXPathList::ParsePath(const char* path) {
  if (path == nullptr || *path == '\0') return 0;

  // When memory runs out below, steps have been appended that the old index does not hold. Without
  // an index, the next query builds one.
  std::free(m_ppIndex);
  m_ppIndex = nullptr;

  const std::size_t prefixLength = std::strspn(path, "/");
  if (prefixLength != 0) {
    char* prefix = xmldom::CopyString(path, prefixLength);
    std::free(m_pszPrefix);
    m_pszPrefix = prefix;
    m_bAbsolute = true;
    m_bDescendant = prefixLength >= 2;
  }

  const char* step = path + prefixLength;
  bool insideBrackets = false;
  for (const char* p = step;; ++p) {
    if (*p == '\0' || (*p == '/' && !insideBrackets)) {
      AppendStep(step, static_cast<std::size_t>(p - step));
      if (*p == '\0') break;
      step = p + 1;
    } else if (*p == '[') {
      insideBrackets = true;
    } else if (*p == ']') {
      insideBrackets = false;
    }
  }
  CreateIndex();
  return 1;
}

int CXPathList::ParsePath(_bstr_t path) { return ParsePath(static_cast<char*>(path)); }

void CXPathList::AppendStep(const char* text, std::size_t length) {
  if (m_nCount == INT_MAX) throw std::length_error("CXPathList: more than INT_MAX steps");
  CStrListElt* step = new CStrListElt(text, length);
  if (m_pFirst == nullptr) {
    m_pFirst = step;
  } else {
    m_pLast->m_pNext = step;
  }
  m_pLast = step;
  ++m_nCount;
}

void CXPathList::CreateIndex() {
  std::free(m_ppIndex);
  m_ppIndex = nullptr;
  // An application may have changed the steps and their count. The index gets room for all steps
  // that are linked, and for as many entries as the count says, because readers go by the count.
  std::size_t steps = 0;
  for (const CStrListElt* step = m_pFirst; step != nullptr; step = step->m_pNext) ++steps;
  const std::size_t size = std::max(steps, static_cast<std::size_t>(std::max(m_nCount, 0)));
  // A block of no bytes may be a null pointer, which would say that there is no index.
  m_ppIndex = static_cast<char**>(std::calloc(std::max<std::size_t>(size, 1), sizeof(char*)));
  if (m_ppIndex == nullptr) throw std::bad_alloc();
  char** entry = m_ppIndex;
  for (const CStrListElt* step = m_pFirst; step != nullptr; step = step->m_pNext) {
    *entry++ = step->m_pszString;
  }
}
