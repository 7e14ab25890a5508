#include <xmldom/dom/XMLNode.h>

#include <xmldom/dom/NodeChain.h>
#include <xmldom/dom/NodeTypes.h>
#include <xmldom/dom/TreeWalk.h>
#include <xmldom/dom/XMLDocument.h>
#include <xmldom/dom/XMLNodeList.h>
#include <xmldom/support/HeapString.h>
#include <xmldom/support/LogException.h>
#include <xmldom/support/variant.h>

#include <cassert>
#include <typeinfo>

int IXMLDOMNode::m_iObjCount = 0;

void Release(IXMLDOMNode*& p) { Release<IXMLDOMNode>(p); }

namespace {

using xmldom::OwnerLinkTrail;
using xmldom::PreOrderVisitor;
using xmldom::WalkChain;

/// Gives all nodes one owner.
struct OwnerSetter : PreOrderVisitor {
  IXMLDOMDocument2* owner;

  explicit OwnerSetter(IXMLDOMDocument2* document) : owner(document) {}

  IXMLDOMNode* Enter(IXMLDOMNode* node, std::size_t) {
    node->m_pOwnerDocument = owner;
    return node->m_pFirstChild;
  }

  void Leave(IXMLDOMNode* node, std::size_t) { node->m_pOwnerDocument = owner; }
};

/// Clears the owner of all nodes that have one.
struct OwnerClearer : PreOrderVisitor {
  int topDepth;

  explicit OwnerClearer(int depth) : topDepth(depth) {}

  IXMLDOMNode* Enter(IXMLDOMNode* node, std::size_t depth) {
    if (node->m_pOwnerDocument == nullptr) return nullptr;
    node->m_pOwnerDocument = nullptr;
    if (static_cast<long long>(depth) + topDepth <= 1) node->m_pParent = nullptr;
    IXMLDOMNode* child = node->m_pFirstChild;
    return child == nullptr || child->m_pOwnerDocument == nullptr ? nullptr : child;
  }

  void Leave(IXMLDOMNode* node, std::size_t) { node->m_pOwnerDocument = nullptr; }
};

// How far a node stands below the one whose destruction clears owner documents: only the first two
// levels lose their parents, all others are alike.
const int kUncleared = -1;
const int kDeepest = 2;

/// Clears the nodes of a chain that is `depth` levels below the destroyed node.
void ClearChain(IXMLDOMNode* head, int depth) {
  OwnerClearer clearer(depth);
  WalkChain<OwnerLinkTrail>(head, clearer);
}

/// Whether dropping one reference destroys the node by nothing but its own destructor.
bool EndsWithLastReference(const IXMLDOMNode* node) {
  return node->GetRefCount() == 1 && typeid(*node) == typeid(IXMLDOMNode);
}

/// Releases next sibling, first child and first attribute of `top`, each to its end before the
/// next, as destructors would that call each other and that clear owner documents before they do.
///
/// A node whose last reference goes is taken apart here. Nobody else can see it any more, so that
/// its record carries what the walk has to know: the parent link the way back, the type its depth
/// below the node that clears. One that stays, because somebody else refers to it, is cleared with
/// all that it keeps alive. One of a derived class goes through its own destructor.
void ReleaseLinks(IXMLDOMNode* top) {
  IXMLDOMNode* node = top;
  const int topDepth = top->m_pOwnerDocument != nullptr ? 0 : kUncleared;
  int chainDepth = topDepth;  // of the siblings that follow the node entered last
  top->m_pOwnerDocument = nullptr;
  for (;;) {
    IXMLDOMNode* target = nullptr;
    int targetDepth = kUncleared;
    if (node->m_pNextSibling != nullptr) {
      target = node->m_pNextSibling;
      node->m_pNextSibling = nullptr;
      targetDepth = chainDepth;
    } else if (node->m_pFirstChild != nullptr) {
      target = node->m_pFirstChild;
      node->m_pFirstChild = nullptr;
      const int depth = node == top ? topDepth : static_cast<int>(node->m_eNodeType);
      if (depth != kUncleared && target->m_pOwnerDocument != nullptr) {
        targetDepth = depth == kDeepest ? kDeepest : depth + 1;
      }
    } else if (node->m_pFirstAttribute != nullptr) {
      target = node->m_pFirstAttribute;
      node->m_pFirstAttribute = nullptr;
    } else if (node != top) {
      IXMLDOMNode* finished = node;
      node = node->m_pParent;
      finished->IXMLDOMNode::~IXMLDOMNode();
      CRefCountedObject::operator delete(finished);
      continue;
    } else {
      return;
    }

    if (!EndsWithLastReference(target)) {
      if (targetDepth != kUncleared) ClearChain(target, targetDepth);
      target->RealRelease();
      continue;
    }
    const bool hasOwner = target->m_pOwnerDocument != nullptr;
    // One that nothing has cleared so far begins to clear, itself and its siblings.
    if (targetDepth == kUncleared && hasOwner) targetDepth = 0;
    chainDepth = targetDepth;
    target->m_eNodeType = static_cast<tagDOMNodeType>(hasOwner ? targetDepth : kUncleared);
    target->m_pOwnerDocument = nullptr;
    target->m_pParent = node;
    node = target;
  }
}

}  // namespace

IXMLDOMNode::IXMLDOMNode(IXMLDOMDocument2* doc, const char* name, const char* value,
                         tagDOMNodeType type)
    : m_pszNodeName(xmldom::CopyString(name)),
      m_pszValue(nullptr),
      m_pNextSibling(nullptr),
      m_pFirstChild(nullptr),
      m_pFirstAttribute(nullptr),
      m_pParent(nullptr),
      m_pOwnerDocument(doc),
      m_eNodeType(type) {
  try {
    m_pszValue = xmldom::CopyString(value);
  } catch (...) {
    std::free(m_pszNodeName);
    throw;
  }
  ++m_iObjCount;
}

IXMLDOMNode::IXMLDOMNode()
    : m_pszNodeName(nullptr),
      m_pszValue(nullptr),
      m_pNextSibling(nullptr),
      m_pFirstChild(nullptr),
      m_pFirstAttribute(nullptr),
      m_pParent(nullptr),
      m_pOwnerDocument(reinterpret_cast<IXMLDOMDocument2*>(this)),
      m_eNodeType(NODE_INVALID) {
  ++m_iObjCount;
}

IXMLDOMNode::~IXMLDOMNode() {
  xmldom::ForgetChainEnds();
  ReleaseLinks(this);
  std::free(m_pszNodeName);
  m_pszNodeName = nullptr;
  std::free(m_pszValue);
  m_pszValue = nullptr;
  --m_iObjCount;
}

void IXMLDOMNode::ClearNode(bool bFreeName) {
  xmldom::ForgetChainEnds();
  // Deliberate: the reverse of the order of destruction.
  Release(m_pFirstAttribute);
  Release(m_pFirstChild);
  Release(m_pNextSibling);
  if (bFreeName) {
    std::free(m_pszNodeName);
    m_pszNodeName = nullptr;
  }
  std::free(m_pszValue);
  m_pszValue = nullptr;
}

void IXMLDOMNode::RecurseSetDocument(IXMLDOMDocument2* doc) {
  if (m_pFirstChild == nullptr && m_pNextSibling == nullptr) {
    m_pOwnerDocument = doc;
    return;
  }
  OwnerSetter setter(doc);
  WalkChain<OwnerLinkTrail>(this, setter);
}

void IXMLDOMNode::RecurseClearDocument(int depth) {
  if (this == nullptr || m_pOwnerDocument == nullptr) return;
  ClearChain(this, depth);
}

namespace {

/// Hands `node` out through `out`, which is not null, with a reference added.
template <class T>
HRESULT HandOut(T* node, T** out) {
  *out = node;
  if (node == nullptr) return S_FALSE;
  node->AddRef();
  return S_OK;
}

/// Makes a list of class List that holds the chain, and stores it in `out`.
template <class List>
void ListChain(IXMLDOMNode* head, List** out) {
  List* list = new List;
  try {
    for (IXMLDOMNode* node = head; node != nullptr; node = node->m_pNextSibling) list->Add(node);
  } catch (...) {
    Release(list);
    throw;
  }
  *out = list;
}

}  // namespace

HRESULT IXMLDOMNode::get_parentNode(IXMLDOMNode** out) {
  if (out == nullptr) return E_ARGUMENT;
  HandOut(m_pParent, out);
  return S_OK;
}

HRESULT IXMLDOMNode::get_firstChild(IXMLDOMNode** out) {
  assert(this);
  if (out == nullptr) return E_ARGUMENT;
  return HandOut(m_pFirstChild, out);
}

HRESULT IXMLDOMNode::get_lastChild(IXMLDOMNode** out) {
  if (out == nullptr) return E_ARGUMENT;
  return HandOut(m_pFirstChild == nullptr ? nullptr : xmldom::LastOf(m_pFirstChild), out);
}

HRESULT IXMLDOMNode::get_nextSibling(IXMLDOMNode** out) {
  assert(this);
  if (out == nullptr) return E_ARGUMENT;
  return HandOut(m_pNextSibling, out);
}

HRESULT IXMLDOMNode::get_previousSibling(IXMLDOMNode** out) {
  if (out == nullptr) return E_ARGUMENT;
  if (m_pParent == nullptr || m_pParent->m_pFirstChild == this) {
    *out = nullptr;
    return S_FALSE;
  }
  IXMLDOMNode* node = m_pParent->m_pFirstChild;
  while (node != nullptr && node->m_pNextSibling != this) node = node->m_pNextSibling;
  if (node == nullptr) {
    throw Exception("IXMLDOMNode::get_previousSibling", "Call failed, no previous sibling",
                    nullptr);
  }
  return HandOut(node, out);
}

HRESULT IXMLDOMNode::get_nodeName(char** out) {
  assert(this);
  if (out == nullptr) return E_ARGUMENT;
  *out = SysAllocString(m_pszNodeName);
  return S_OK;
}

HRESULT IXMLDOMNode::get_nodeType(DOMNodeType* out) {
  assert(this);
  if (out == nullptr) return E_ARGUMENT;
  *out = m_eNodeType;
  return S_OK;
}

HRESULT IXMLDOMNode::hasChildNodes(VARIANT_BOOL* out) const {
  assert(this);
  if (out == nullptr) return E_ARGUMENT;
  *out = m_pFirstChild != nullptr ? VARIANT_TRUE : VARIANT_FALSE;
  return m_pFirstChild != nullptr ? S_OK : S_FALSE;
}

HRESULT IXMLDOMNode::get_ownerDocument(IXMLDOMDocument2** out) {
  if (out == nullptr) return E_ARGUMENT;
  return HandOut(m_pOwnerDocument, out);
}

HRESULT IXMLDOMNode::get_attributes(IXMLDOMNamedNodeMap** out) {
  assert(this);
  if (out == nullptr) return E_ARGUMENT;
  if (m_eNodeType != NODE_ELEMENT) {
    *out = nullptr;
    return S_FALSE;
  }
  ListChain(m_pFirstAttribute, out);
  return S_OK;
}

HRESULT IXMLDOMNode::get_childNodes(IXMLDOMNodeList** out) {
  assert(this);
  if (out == nullptr) return E_ARGUMENT;
  ListChain(m_pFirstChild, out);
  return S_OK;
}

HRESULT IXMLDOMNode::get_nodeValue(VARIANT* pVal) {
  assert(this);
  if (pVal == nullptr) return E_ARGUMENT;
  switch (xmldom::ValueKindOf(m_eNodeType)) {
    case xmldom::VALUE_NONE:
    case xmldom::VALUE_TEXT:
      VariantChangeType(pVal, pVal, 0, VT_EMPTY);
      break;
    case xmldom::VALUE_STORED: {
      _variant_t value(m_pszValue);
      VariantCopy(pVal, &value);
      break;
    }
    case xmldom::VALUE_UNKNOWN:
      break;
  }
  return S_OK;
}

HRESULT IXMLDOMNode::get_nodeTypedValue(VARIANT* pVal) {
  assert(this);
  if (pVal == nullptr) return E_ARGUMENT;
  if (xmldom::ValueKindOf(m_eNodeType) != xmldom::VALUE_TEXT) return get_nodeValue(pVal);
  _variant_t text;
  text.bstrVal = GetTextAsBSTR();
  text.vt = VT_BSTR;
  VariantCopy(pVal, &text);
  return S_OK;
}
