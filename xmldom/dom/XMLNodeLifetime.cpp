#include <xmldom/base/Text.h>
#include <xmldom/dom/NewNode.h>
#include <xmldom/dom/NodeChain.h>
#include <xmldom/dom/NodeOwners.h>
#include <xmldom/dom/NodeReference.h>
#include <xmldom/dom/TreeWalk.h>
#include <xmldom/dom/XMLDocument.h>
#include <xmldom/dom/XMLNode.h>

#include <cstdint>
#include <cstdlib>
#include <typeinfo>

// How nodes come and go. Destroying one takes everything below it apart without the call stack and
// without allocating.

int IXMLDOMNode::m_iObjCount = 0;

void Release(IXMLDOMNode*& p) { Release<IXMLDOMNode>(p); }

namespace {

using xmldom::InPlaceTrail;
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

/// Clears the nodes of a chain that is `depth` levels below the destroyed node.
void ClearChain(IXMLDOMNode* head, int depth) {
  OwnerClearer clearer(depth);
  WalkChain<InPlaceTrail>(head, clearer);
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

/// What the node whose destruction clears owner documents clears of a node: those up to one level
/// below it lose owner and parent, deeper ones their owner alone, and all others nothing.
enum Clearing { CLEARING_TOP, CLEARING_CHILD, CLEARING_DEEPER, CLEARING_NOTHING };

/// What the owner link of a dying node carries, which nobody else has a use for any more: the node
/// to go back to when it is gone, null for the one where the walk began, and how it was cleared.
/// All other fields are as they are described for a node that is destroyed.
class WayBack {
 public:
  static void Set(IXMLDOMNode* node, IXMLDOMNode* back, Clearing clearing) {
    node->m_pOwnerDocument = reinterpret_cast<IXMLDOMDocument2*>(
        reinterpret_cast<std::uintptr_t>(back) | static_cast<std::uintptr_t>(clearing));
  }

  static IXMLDOMNode* NodeOf(const IXMLDOMNode* node) {
    return reinterpret_cast<IXMLDOMNode*>(Bits(node) & ~kClearingBits);
  }

  static Clearing ClearingOf(const IXMLDOMNode* node) {
    return static_cast<Clearing>(Bits(node) & kClearingBits);
  }

 private:
  static const std::uintptr_t kClearingBits = 3;
  static_assert(alignof(IXMLDOMNode) > kClearingBits, "addresses of nodes need two free bits");

  static std::uintptr_t Bits(const IXMLDOMNode* node) {
    return reinterpret_cast<std::uintptr_t>(node->m_pOwnerDocument);
  }
};

/// Takes the link of a dying node that is released next, its next sibling before its first child
/// before its first attribute, or null. `siblings` is how what follows the node is cleared.
/// Out: how the target is cleared, if it has an owner.
inline IXMLDOMNode* TakeLink(IXMLDOMNode* node, Clearing siblings, Clearing& clearing) {
  IXMLDOMNode* target = node->m_pNextSibling;
  if (target != nullptr) {
    node->m_pNextSibling = nullptr;
    clearing = siblings;
    return target;
  }
  clearing = CLEARING_NOTHING;
  target = node->m_pFirstChild;
  if (target != nullptr) {
    node->m_pFirstChild = nullptr;
    const Clearing above = WayBack::ClearingOf(node);
    if (above != CLEARING_NOTHING && target->m_pOwnerDocument != nullptr) {
      clearing = above == CLEARING_TOP ? CLEARING_CHILD : CLEARING_DEEPER;
    }
    return target;
  }
  target = node->m_pFirstAttribute;
  node->m_pFirstAttribute = nullptr;
  return target;
}

/// Releases a node that stays, because somebody else refers to it, or that has a destructor of its
/// own. Not inlined: it is rare, and the loop around it is not.
__attribute__((noinline)) void ReleaseOther(IXMLDOMNode* node, Clearing clearing) {
  if (clearing != CLEARING_NOTHING) ClearChain(node, clearing);
  node->RealRelease();
}

/// Releases next sibling, first child and first attribute of `top`, each to its end before the
/// next, as destructors would that call each other and that clear owner documents before they do.
///
/// A node whose last reference goes is taken apart here. One that stays, because somebody else
/// refers to it, is cleared with all that it keeps alive. One of a derived class goes through its
/// own destructor.
///
/// Not inlined into the destructor: it runs once per node, and most nodes have nothing to release.
__attribute__((noinline)) void ReleaseLinks(IXMLDOMNode* top) {
  IXMLDOMNode* node = top;
  Clearing siblings = top->m_pOwnerDocument != nullptr ? CLEARING_TOP : CLEARING_NOTHING;
  if (siblings == CLEARING_TOP) top->m_pParent = nullptr;
  WayBack::Set(top, nullptr, siblings);
  for (;;) {
    Clearing clearing;
    IXMLDOMNode* target = TakeLink(node, siblings, clearing);
    if (target == nullptr) {
      IXMLDOMNode* finished = node;
      node = WayBack::NodeOf(finished);
      if (node == nullptr) break;
      Destroy(finished);
    } else if (!EndsWithLastReference(*target)) {
      ReleaseOther(target, clearing);
    } else if (IsBare(*target)) {
      Destroy(target);
    } else {
      const bool hasOwner = target->m_pOwnerDocument != nullptr;
      // One that nothing has cleared so far begins to clear, itself and its siblings.
      if (clearing == CLEARING_NOTHING && hasOwner) clearing = CLEARING_TOP;
      siblings = clearing;
      if (!hasOwner) clearing = CLEARING_NOTHING;
      if (clearing <= CLEARING_CHILD) target->m_pParent = nullptr;
      WayBack::Set(target, node, clearing);
      node = target;
    }
  }
  top->m_pOwnerDocument = nullptr;
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
  xmldom::InvalidateChainEnds();
  if (!IsBare(*this)) ReleaseLinks(this);
  std::free(m_pszNodeName);
  std::free(m_pszValue);
  --m_iObjCount;
}

void IXMLDOMNode::ClearNode(bool bFreeName) {
  xmldom::InvalidateChainEnds();
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
