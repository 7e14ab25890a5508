// Lists of nodes: singly linked, with a cursor that hands them out one by one. Links are made in
// blocks. Tested by tests/dom/XMLNodeList_test.cpp.

#include <xmldom/dom/XMLNodeList.h>

#include <xmldom/base/LiveCount.h>
#include <xmldom/dom/XMLNode.h>

#include <algorithm>
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

XMLDOM_COLD XMLDOM_NOINLINE void IXMLDOMNodeList::AddBlock() {
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

void IXMLDOMNodeList::ResetCursor() {
  m_pCursor = nullptr;
  m_nCursorIndex = CURSOR_FRESH;
}
