#include "plain/PlainLifetime.h"

#include <xmldom/xmldom.h>

#include <cstdlib>

#include "soak/Forest.h"

namespace plain {

namespace {

void ReleaseLink(IXMLDOMNode*& node) {
  if (node == nullptr) return;
  RealRelease(node);
  node = nullptr;
}

}  // namespace

void RealRelease(IXMLDOMNode* node) {
  if (node->GetRefCount() > 1) {
    node->RealRelease();
    return;
  }
  // A destructor of a derived class runs before that of the node class.
  if (WitnessNode* witness = dynamic_cast<WitnessNode*>(node)) witness->Announce();
  RecurseClearDocument(node, 0);
  ReleaseLink(node->m_pNextSibling);
  ReleaseLink(node->m_pFirstChild);
  ReleaseLink(node->m_pFirstAttribute);
  // Nothing hangs at it any more: name, value, counter and memory are left.
  node->RealRelease();
}

void ClearNode(IXMLDOMNode* node, bool freeName) {
  ReleaseLink(node->m_pFirstAttribute);
  ReleaseLink(node->m_pFirstChild);
  ReleaseLink(node->m_pNextSibling);
  if (freeName) {
    std::free(node->m_pszNodeName);
    node->m_pszNodeName = nullptr;
  }
  std::free(node->m_pszValue);
  node->m_pszValue = nullptr;
}

void RecurseSetDocument(IXMLDOMNode* node, IXMLDOMDocument2* document) {
  for (; node != nullptr; node = node->m_pNextSibling) {
    node->m_pOwnerDocument = document;
    RecurseSetDocument(node->m_pFirstChild, document);
  }
}

void RecurseClearDocument(IXMLDOMNode* node, int depth) {
  if (node == nullptr || node->m_pOwnerDocument == nullptr) return;
  node->m_pOwnerDocument = nullptr;
  if (depth <= 1) node->m_pParent = nullptr;
  for (;;) {
    for (IXMLDOMNode* next = node->m_pNextSibling; next != nullptr; next = next->m_pNextSibling) {
      RecurseClearDocument(next, depth);
    }
    IXMLDOMNode* child = node->m_pFirstChild;
    if (child == nullptr || child->m_pOwnerDocument == nullptr) return;
    ++depth;
    child->m_pOwnerDocument = nullptr;
    if (depth <= 1) child->m_pParent = nullptr;
    node = child;
  }
}

}  // namespace plain
