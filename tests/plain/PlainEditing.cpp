#include "plain/PlainEditing.h"

#include <xmldom/support/LogException.h>
#include <xmldom/xmldom.h>

#include "plain/PlainBuilding.h"
#include "plain/PlainLifetime.h"

namespace plain {

namespace {

/// Whether `wanted` is `node` or hangs below it.
bool Contains(const IXMLDOMNode* node, const IXMLDOMNode* wanted) {
  if (node == wanted) return true;
  for (const IXMLDOMNode* first : {node->m_pFirstChild, node->m_pFirstAttribute}) {
    for (const IXMLDOMNode* below = first; below != nullptr; below = below->m_pNextSibling) {
      if (Contains(below, wanted)) return true;
    }
  }
  return false;
}

/// The node that an edit moves for `newChild`, or null.
IXMLDOMNode* NodeToMove(IXMLDOMNode* newChild) {
  const bool isDocument = newChild != nullptr && newChild->m_eNodeType == NODE_DOCUMENT;
  return isDocument ? newChild->m_pFirstChild : newChild;
}

/// Frees the place of a node before a call gives it another next sibling: of one that has no
/// parent, the siblings that follow are given back.
void Detach(IXMLDOMNode* node) {
  plain::RemoveNodeFromTree(node);
  Release(node->m_pNextSibling);
}

/// The node before one that is not the first child of its parent.
IXMLDOMNode* GetPreviousSibling(const IXMLDOMNode* node) {
  for (IXMLDOMNode* previous = node->m_pParent->m_pFirstChild; previous != nullptr;
       previous = previous->m_pNextSibling) {
    if (previous->m_pNextSibling == node) return previous;
  }
  throw Exception("IXMLDOMNode::get_previousSibling", "Call failed, no previous sibling", nullptr);
}

}  // namespace

void RemoveNodeFromTree(IXMLDOMNode* node) {
  if (node->m_pParent == nullptr) return;
  if (node->m_pParent->m_pFirstChild == node) {
    node->m_pParent->m_pFirstChild = node->m_pNextSibling;
  } else {
    GetPreviousSibling(node)->m_pNextSibling = node->m_pNextSibling;
  }
  node->m_pOwnerDocument = nullptr;
  node->m_pNextSibling = nullptr;
  node->m_pParent = nullptr;
}

HRESULT appendChild(IXMLDOMNode* node, IXMLDOMNode* newChild, IXMLDOMNode** out) {
  IXMLDOMNode* moved = NodeToMove(newChild);
  if (moved == nullptr || Contains(moved, node)) return E_ARGUMENT;
  if (moved->m_pParent == nullptr) {
    // What follows a node without parent comes along.
    for (IXMLDOMNode* next = moved->m_pNextSibling; next != nullptr; next = next->m_pNextSibling) {
      if (Contains(next, node)) return E_ARGUMENT;
    }
  }
  if (moved != newChild) moved->AddRef();
  plain::RemoveNodeFromTree(moved);
  plain::AddChild(node, moved);
  *out = moved;
  return S_OK;
}

HRESULT insertBefore(IXMLDOMNode* node, IXMLDOMNode* newChild, IXMLDOMNode* refChild,
                     IXMLDOMNode** out) {
  if (newChild == nullptr || refChild == nullptr || refChild->m_pParent != node) return E_ARGUMENT;
  IXMLDOMNode* previous = nullptr;
  IXMLDOMNode* child = node->m_pFirstChild;
  while (child != nullptr && child != refChild) {
    previous = child;
    child = child->m_pNextSibling;
  }
  if (child == nullptr) return S_FALSE;
  IXMLDOMNode* moved = NodeToMove(newChild);
  if (moved == nullptr || Contains(moved, node)) return E_ARGUMENT;
  *out = moved;
  if (moved == refChild || moved == previous) return S_OK;
  Detach(moved);
  moved->m_pNextSibling = refChild;
  moved->m_pParent = node;
  plain::RecurseSetDocument(moved, node->m_pOwnerDocument);
  (previous == nullptr ? node->m_pFirstChild : previous->m_pNextSibling) = moved;
  return S_OK;
}

HRESULT replaceChild(IXMLDOMNode* node, IXMLDOMNode* newChild, IXMLDOMNode* oldChild,
                     IXMLDOMNode** out) {
  if (oldChild == nullptr || oldChild->m_pParent != node) return E_ARGUMENT;
  IXMLDOMNode* moved = NodeToMove(newChild);
  if (moved == nullptr || Contains(moved, node)) return E_ARGUMENT;
  if (moved != oldChild) {
    Detach(moved);
    if (node->m_pFirstChild == oldChild) {
      node->m_pFirstChild = moved;
    } else {
      GetPreviousSibling(oldChild)->m_pNextSibling = moved;
    }
    moved->m_pNextSibling = oldChild->m_pNextSibling;
    moved->m_pParent = node;
    plain::RecurseSetDocument(moved, node->m_pOwnerDocument);
    oldChild->m_pNextSibling = nullptr;
    oldChild->m_pParent = nullptr;
    plain::RecurseSetDocument(oldChild, nullptr);
  }
  *out = oldChild;
  return S_OK;
}

HRESULT removeChild(IXMLDOMNode* node, IXMLDOMNode* oldChild, IXMLDOMNode** out) {
  if (oldChild == nullptr || oldChild->m_pParent != node) return E_ARGUMENT;
  plain::RemoveNodeFromTree(oldChild);
  *out = oldChild;
  return S_OK;
}

}  // namespace plain
