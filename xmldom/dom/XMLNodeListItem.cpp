// The nodes of a list by their position. The cursor goes forwards along the links; the first
// request for an item before the cursor makes an index of them. Tested by
// tests/dom/XMLNodeListItem_test.cpp.

#include <xmldom/dom/XMLNode.h>
#include <xmldom/dom/XMLNodeList.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>

IXMLDOMNode* IXMLDOMNodeList::GetItem(int index) {
  if (index < 0 || index >= m_nCount) return nullptr;
  if (m_nCursorIndex == CURSOR_EXHAUSTED || index < m_nCursorIndex) GoBackTo(index);
  IXMLDOMNode* node = nullptr;
  if (m_nCursorIndex != CURSOR_FRESH) {
    node = m_pCursor->m_pNode;
    node->AddRef();
  }
  // A fresh cursor is at -1, so that this also goes to the first node; nothing is released then.
  while (m_nCursorIndex < index) {
    Release(node);
    node = NextNode();
    if (node == nullptr) return nullptr;
  }
  return node;
}

/// Moves the cursor back: to the link at `index`, or before the first link when that is as near or
/// there is no index that leads to the link.
void IXMLDOMNodeList::GoBackTo(int index) {
  ResetCursor();
  if (index == 0) return;
  if (!IsIndexTrue(index)) m_nIndexed = 0;
  if (!IndexLinksUpTo(index)) return;
  m_pCursor = m_ppIndex[index];
  m_nCursorIndex = index;
}

/// Whether the entry of the index for `index`, or else its last entry, is still that link, as far
/// as constant time can tell: the links are public, so that an application may have changed them.
bool IXMLDOMNodeList::IsIndexTrue(int index) const {
  if (m_nIndexed == 0) return true;
  if (m_nIndexed > m_nCount || m_ppIndex[0] != m_pHead) return false;
  const int used = std::min(index, m_nIndexed - 1);
  return used == 0 || m_ppIndex[used - 1]->m_pNext == m_ppIndex[used];
}

/// Makes entries of the index up to that for `index`. Result: false when there is no such link,
/// because the count was raised by hand, or memory is out.
bool IXMLDOMNodeList::IndexLinksUpTo(int index) {
  if (index >= m_nIndexCapacity) {
    const std::size_t capacity = static_cast<std::size_t>(m_nCount);
    if (capacity > SIZE_MAX / sizeof *m_ppIndex) return false;
    void* grown = std::realloc(m_ppIndex, capacity * sizeof *m_ppIndex);
    if (grown == nullptr) return false;
    m_ppIndex = static_cast<IXMLDOMNodeListElt**>(grown);
    m_nIndexCapacity = m_nCount;
  }
  IXMLDOMNodeListElt* link = m_nIndexed == 0 ? m_pHead : m_ppIndex[m_nIndexed - 1]->m_pNext;
  for (; m_nIndexed <= index && link != nullptr; link = link->m_pNext) {
    m_ppIndex[m_nIndexed++] = link;
  }
  return m_nIndexed > index;
}
