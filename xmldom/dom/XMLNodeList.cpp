// Lists of nodes and maps of attributes: singly linked lists with a cursor. Links are made in
// blocks, and the first request for an item before the cursor makes an index of the links. Tested
// by tests/dom/XMLNodeList_test.cpp.

#include <xmldom/dom/XMLNodeList.h>

#include <xmldom/base/LiveCount.h>
#include <xmldom/base/Text.h>
#include <xmldom/dom/XMLNode.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <new>

int IXMLDOMNodeListElt::m_iObjCount = 0;
int IXMLDOMNodeList::m_iObjCount = 0;

namespace {

// In links. Each block has twice the size of the one before, up to the largest.
const unsigned kSmallestBlock = 8;
const unsigned kLargestBlock = 512;

}  // namespace

/// The head of a block of memory; its links follow it directly, and are used from the last one
/// down. Blocks live as long as their list.
struct IXMLDOMNodeList::Block {
  Block* next;
  unsigned size;  // in links
};

IXMLDOMNodeListElt::IXMLDOMNodeListElt(IXMLDOMNode* node) : m_pNode(node), m_pNext(nullptr) {
  m_pNode->AddRef();
  xmldom::AddToCount(m_iObjCount, 1);
}

IXMLDOMNodeListElt::~IXMLDOMNodeListElt() {
  if (m_pNode != nullptr) m_pNode->RealRelease();
  xmldom::AddToCount(m_iObjCount, -1);
}

IXMLDOMNodeList::IXMLDOMNodeList()
    : m_pHead(nullptr),
      m_pTail(nullptr),
      m_pCursor(nullptr),
      m_nCount(0),
      m_nCursorIndex(CURSOR_FRESH),
      m_pBlocks(nullptr),
      m_nUnusedLinks(0),
      m_ppIndex(nullptr),
      m_nIndexed(0),
      m_nIndexCapacity(0) {
  xmldom::AddToCount(m_iObjCount, 1);
}

IXMLDOMNodeList::~IXMLDOMNodeList() {
  while (m_pHead != nullptr) {
    IXMLDOMNodeListElt* link = m_pHead;
    m_pHead = link->m_pNext;
    link->~IXMLDOMNodeListElt();
  }
  while (m_pBlocks != nullptr) {
    Block* block = m_pBlocks;
    m_pBlocks = block->next;
    ::operator delete(block);
  }
  std::free(m_ppIndex);
  xmldom::AddToCount(m_iObjCount, -1);
}

void IXMLDOMNodeList::AddBlock() {
  const unsigned size =
      m_pBlocks == nullptr ? kSmallestBlock : std::min(2 * m_pBlocks->size, kLargestBlock);
  Block* block =
      static_cast<Block*>(::operator new(sizeof(Block) + size * sizeof(IXMLDOMNodeListElt)));
  block->next = m_pBlocks;
  block->size = size;
  m_pBlocks = block;
  m_nUnusedLinks = size;
}

int IXMLDOMNodeList::Add(IXMLDOMNode* node) {
  if (node == nullptr) return 0;
  if (m_nUnusedLinks == 0) AddBlock();
  --m_nUnusedLinks;
  void* memory = reinterpret_cast<IXMLDOMNodeListElt*>(m_pBlocks + 1) + m_nUnusedLinks;
  IXMLDOMNodeListElt* link = new (memory) IXMLDOMNodeListElt(node);
  if (m_pHead == nullptr) {
    m_pHead = link;
  } else {
    // An application may have linked nodes behind the tail, or have set it to null.
    if (m_pTail == nullptr) m_pTail = m_pHead;
    while (m_pTail->m_pNext != nullptr) m_pTail = m_pTail->m_pNext;
    m_pTail->m_pNext = link;
    m_pTail = link;
  }
  ++m_nCount;
  return node->GetRefCount();
}

IXMLDOMNode* IXMLDOMNodeList::NextNode() {
  if (m_nCursorIndex == CURSOR_EXHAUSTED) return nullptr;
  m_pCursor = m_nCursorIndex == CURSOR_FRESH ? m_pHead : m_pCursor->m_pNext;
  if (m_pCursor == nullptr) {
    m_nCursorIndex = CURSOR_EXHAUSTED;
    return nullptr;
  }
  ++m_nCursorIndex;
  m_pCursor->m_pNode->AddRef();
  return m_pCursor->m_pNode;
}

IXMLDOMNode* IXMLDOMNodeList::GetItem(int index) {
  if (index < 0 || index >= m_nCount) return nullptr;
  if (m_nCursorIndex == CURSOR_EXHAUSTED || index < m_nCursorIndex) GoBackTo(index);
  IXMLDOMNode* node = nullptr;
  if (m_nCursorIndex == CURSOR_FRESH) {
    node = NextNode();
  } else {
    node = m_pCursor->m_pNode;
    node->AddRef();
  }
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

void IXMLDOMNodeList::ResetCursor() {
  m_pCursor = nullptr;
  m_nCursorIndex = CURSOR_FRESH;
}

IXMLDOMNamedNodeMap::~IXMLDOMNamedNodeMap() {}

IXMLDOMNode* IXMLDOMNamedNodeMap::GetNamedItem(const char* name) {
  ResetCursor();
  for (;;) {
    IXMLDOMNode* node = NextNode();
    if (node == nullptr) return nullptr;
    if (name != nullptr && xmldom::SameString(node->m_pszNodeName, name)) return node;
    Release(node);
  }
}

HRESULT IXMLDOMNamedNodeMap::getNamedItem(char* name, IXMLDOMNode** out) {
  if (out == nullptr) return E_ARGUMENT;
  *out = GetNamedItem(name);
  return *out != nullptr ? S_OK : S_FALSE;
}
