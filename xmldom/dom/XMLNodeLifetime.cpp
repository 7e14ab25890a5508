#include <xmldom/HeapString.h>
#include <xmldom/dom/NewNode.h>
#include <xmldom/dom/NodeChain.h>
#include <xmldom/dom/NodeOwners.h>
#include <xmldom/dom/NodeReference.h>
#include <xmldom/dom/TreeWalk.h>
#include <xmldom/dom/XMLDocument.h>
#include <xmldom/dom/XMLNode.h>

#include <cstdlib>
#include <typeinfo>

// How nodes come and go. Destroying one takes everything below it apart without the call stack and
// without allocating.

int IXMLDOMNode::m_iObjCount = 0;

void Release(IXMLDOMNode*& p) { Release<IXMLDOMNode>(p); }

namespace {

using xmldom::OwnerLinkTrail;
using xmldom::PreOrderVisitor;
using xmldom::WalkChain;

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
bool EndsWithLastReference(const IXMLDOMNode& node) {
  return node.GetRefCount() == 1 && &typeid(node) == &typeid(IXMLDOMNode);
}

bool IsBare(const IXMLDOMNode& node) {
  return node.m_pNextSibling == nullptr && node.m_pFirstChild == nullptr &&
         node.m_pFirstAttribute == nullptr;
}

// On a layer without the first of the two, memory of one kind would be given back as another.
static_assert(sizeof(CRefCountedObject::operator new(0)) == sizeof(void*),
              "CRefCountedObject needs the operator new that goes with its operator delete");

/// Destroys a bare node of no derived class.
inline void Destroy(IXMLDOMNode* node) {
  node->IXMLDOMNode::~IXMLDOMNode();
  CRefCountedObject::operator delete(node);
}

/// Releases next sibling, first child and first attribute of `top`, each to its end before the
/// next, as destructors would that call each other and that clear owner documents before they do.
///
/// A node whose last reference goes is taken apart here. Nobody else can see it any more, so that
/// its record carries what the walk has to know: the parent link the way back, the type its depth
/// below the node that clears. One that stays, because somebody else refers to it, is cleared with
/// all that it keeps alive. One of a derived class goes through its own destructor.
///
/// Apart from the destructor, which so stays short where this calls it for each node.
__attribute__((noinline)) void ReleaseLinks(IXMLDOMNode* top) {
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
      Destroy(finished);
      continue;
    } else {
      return;
    }

    if (!EndsWithLastReference(*target)) {
      if (targetDepth != kUncleared) ClearChain(target, targetDepth);
      target->RealRelease();
      continue;
    }
    if (IsBare(*target)) {
      Destroy(target);
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

namespace xmldom {

IXMLDOMNode* NewNode(IXMLDOMDocument2* document, tagDOMNodeType type, const char* name,
                     std::size_t nameLength, const char* value, std::size_t valueLength) {
  NodeReference node(new IXMLDOMNode(document, nullptr, nullptr, type));
  node->m_pszNodeName = CopyString(name, nameLength);
  if (value != nullptr) node->m_pszValue = CopyString(value, valueLength);
  return node.Detach();
}

}  // namespace xmldom

IXMLDOMNode::~IXMLDOMNode() {
  xmldom::ForgetChainEnds();
  if (!IsBare(*this)) ReleaseLinks(this);
  std::free(m_pszNodeName);
  std::free(m_pszValue);
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
  xmldom::NoteOwnersDiffer(this);
  xmldom::SetOwners(this, doc);
}

void IXMLDOMNode::RecurseClearDocument(int depth) {
  if (this == nullptr || m_pOwnerDocument == nullptr) return;
  xmldom::NoteOwnersDiffer(this);
  ClearChain(this, depth);
}
