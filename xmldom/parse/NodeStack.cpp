// The stack of open elements, a linked list. A load puts elements of a derived class on it, see
// GrowingTree.h. Tested by tests/parse/NodeStack_test.cpp.

#include <xmldom/parse/NodeStack.h>

#include <xmldom/base/LiveCount.h>

int CNodeStackElt::m_iObjCount = 0;
int CNodeStack::m_iObjCount = 0;

CNodeStackElt::CNodeStackElt(IXMLDOMNode* node, CNodeStackElt* next)
    : m_pNode(node), m_pNext(next) {
  xmldom::AddToCount(m_iObjCount, 1);
}

CNodeStackElt::~CNodeStackElt() {
  xmldom::AddToCount(m_iObjCount, -1);
  // A loop, not a recursion: there can be more open elements than the call stack has room for.
  while (m_pNext != nullptr) {
    CNodeStackElt* below = m_pNext;
    m_pNext = below->m_pNext;
    below->m_pNext = nullptr;
    delete below;
  }
}

CNodeStack::CNodeStack() : m_pTop(nullptr) { xmldom::AddToCount(m_iObjCount, 1); }

CNodeStack::~CNodeStack() {
  delete m_pTop;
  xmldom::AddToCount(m_iObjCount, -1);
}

void CNodeStack::Push(IXMLDOMNode* node) { m_pTop = new CNodeStackElt(node, m_pTop); }

void CNodeStack::Pop() {
  if (m_pTop == nullptr) return;
  CNodeStackElt* top = m_pTop;
  m_pTop = top->m_pNext;
  top->m_pNext = nullptr;
  delete top;
}
