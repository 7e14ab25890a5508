// Making, clearing and destroying nodes. The destructor takes everything below a node apart in a
// loop, which needs neither the call stack nor memory. Tested by tests/dom/XMLNodeLifetime_test.cpp
// and tests/dom/XMLNodeLifetimeDestruction_test.cpp.

#include <xmldom/base/LiveCount.h>
#include <xmldom/base/Text.h>
#include <xmldom/dom/NewNode.h>
#include <xmldom/dom/NodeCache.h>
#include <xmldom/dom/NodeOwners.h>
#include <xmldom/dom/TreeWalk.h>
#include <xmldom/dom/XMLDocument.h>
#include <xmldom/dom/XMLNode.h>

#include <cstdint>
#include <cstdlib>
#include <typeinfo>

int IXMLDOMNode::m_iObjCount = 0;

void Release(IXMLDOMNode*& p) { Release<IXMLDOMNode>(p); }

namespace {

using xmldom::InPlaceTrail;
using xmldom::PreOrderVisitor;
using xmldom::WalkChain;

/// Clears the owner of every node that it visits, and the parent of those at most one level deep.
/// A node without owner counts as cleared already: it is not changed, and nothing below it is
/// visited. Leave clears the owner again, because the walk keeps its trail in the owner links.
struct OwnerClearer : PreOrderVisitor {
  int topDepth;  // the depth of the chain where the walk begins

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

/// Clears the nodes of a chain, which is at the given depth, and those below.
void ClearChain(IXMLDOMNode* head, int depth) {
  OwnerClearer clearer(depth);
  WalkChain<InPlaceTrail>(head, clearer);
}

/// Whether dropping one reference destroys the node, and does so with the destructor of this class,
/// not with that of a derived one.
bool EndsWithLastReference(const IXMLDOMNode& node) {
  return node.GetRefCount() == 1 && &typeid(node) == &typeid(IXMLDOMNode);
}

/// Whether a node refers to no other.
bool IsBare(const IXMLDOMNode& node) {
  return node.m_pNextSibling == nullptr && node.m_pFirstChild == nullptr &&
         node.m_pFirstAttribute == nullptr;
}

// Destroy() calls CRefCountedObject's operator delete. On a support layer without the matching
// operator new, nodes would come from the global one; this makes that a compile error.
static_assert(sizeof(CRefCountedObject::operator new(0)) == sizeof(void*),
              "CRefCountedObject needs the operator new that goes with its operator delete");

/// Frees the name and the value of a node. Many nodes have no value, and a call takes longer than
/// the test.
XMLDOM_ALWAYS_INLINE inline void FreeTexts(IXMLDOMNode* node) {
  std::free(node->m_pszNodeName);
  if (node->m_pszValue != nullptr) std::free(node->m_pszValue);
}

/// Destroys a bare node of no derived class as its destructor would, but leaves two things to the
/// caller, who does them once for many nodes: counting it, and making cached pointers to it
/// invalid.
inline void Destroy(IXMLDOMNode* node) {
  FreeTexts(node);
  node->CRefCountedObject::~CRefCountedObject();
  CRefCountedObject::operator delete(node);
}

// The model of destruction
//
// The destructor of a node that has an owner first clears: it sets the owner of every node below it
// and of its following siblings to null, and the parent of those siblings and of its children too.
// Then it releases its next sibling, its first child and its first attribute, each of which may be
// destroyed in the same way before the next. A node that has been cleared has no owner, and so its
// own destructor clears nothing.
//
// The loop below destroys nodes in that order, but clears each of them only when its turn comes,
// instead of visiting all of them beforehand. For this it must know how the clearing would have
// left the node.

/// What the clearing destructor above a node does to it.
enum Clearing {
  CLEARING_TOP,     // the node itself and its siblings: they lose owner and parent
  CLEARING_CHILD,   // one level below: they lose owner and parent
  CLEARING_DEEPER,  // further below: they lose their owner alone
  CLEARING_NOTHING  // no destructor above clears the node
};

/// What the loop keeps in the owner link of a node that it is taking apart, which nobody reads any
/// more: the node to return to when this one is gone (null for the node where the loop began), and
/// in the two lowest bits how this node was cleared. All other fields of such a node hold what they
/// hold in any node that is being destroyed.
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

/// Takes the link that a dying node releases next out of it: the next sibling, then the first
/// child, then the first attribute. `siblings` says how the siblings that follow the node are
/// cleared. Result: the node that was linked to, or null when no link is left. Out: how that node
/// is cleared, if it has an owner.
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
  // Clearing does not visit attributes.
  target = node->m_pFirstAttribute;
  node->m_pFirstAttribute = nullptr;
  return target;
}

/// The nodes that the loop destroys. They are counted together. While nothing is cached, those of a
/// region of memory are forgotten together too, because doing so for each would take noticeably
/// longer.
class Destroyed {
 public:
  /// `top` itself is forgotten already; `isCached` is what ForgetNode gave for it.
  Destroyed(const IXMLDOMNode* top, bool isCached)
      : m_region(isCached ? xmldom::kNoRegion : xmldom::RegionOf(top)), m_number(0) {}

  /// Destroys a bare node of no derived class.
  void Add(IXMLDOMNode* node) {
    if (xmldom::RegionOf(node) != m_region) {
      m_region = xmldom::ForgetNode(node) ? xmldom::kNoRegion : xmldom::RegionOf(node);
    }
    ++m_number;
    Destroy(node);
  }

  /// Counts the nodes that have been destroyed so far. To be called before code of an application
  /// runs, which may read the counter and change what is cached.
  void Count() {
    m_region = xmldom::kNoRegion;
    xmldom::AddToCount(IXMLDOMNode::m_iObjCount, -m_number);
    m_number = 0;
  }

 private:
  std::uintptr_t m_region;  // that ForgetNode need not be called for; kNoRegion for none
  int m_number;             // destroyed and not counted yet
};

/// Releases a node that the loop does not take apart: one that stays, because somebody else refers
/// to it, or one of a derived class. Not inlined: most loops never come here.
XMLDOM_NOINLINE void ReleaseOther(IXMLDOMNode* node, Clearing clearing) {
  if (clearing != CLEARING_NOTHING) ClearChain(node, clearing);
  node->RealRelease();
}

/// Releases next sibling, first child and first attribute of `top`, and leaves everything as if
/// each destructor had cleared what is below it and had then called the next (see the model above).
///
/// A node whose last reference goes is taken apart by this loop. A node that stays is cleared with
/// all that it keeps alive. A node of a derived class is destroyed by its own destructor. `top` is
/// forgotten already; `isCached` is what ForgetNode gave for it.
///
/// Not inlined into the destructor: it runs once per node, and most nodes have nothing to release.
XMLDOM_NOINLINE void ReleaseLinks(IXMLDOMNode* top, bool isCached) {
  IXMLDOMNode* node = top;
  Clearing siblings = top->m_pOwnerDocument != nullptr ? CLEARING_TOP : CLEARING_NOTHING;
  if (siblings == CLEARING_TOP) top->m_pParent = nullptr;
  WayBack::Set(top, nullptr, siblings);
  Destroyed destroyed(top, isCached);
  for (;;) {
    Clearing clearing;
    IXMLDOMNode* target = TakeLink(node, siblings, clearing);
    if (target == nullptr) {
      target = node;
      node = WayBack::NodeOf(target);
      if (node == nullptr) break;
    } else if (!EndsWithLastReference(*target)) {
      destroyed.Count();
      ReleaseOther(target, clearing);
      continue;
    } else if (!IsBare(*target)) {
      const bool hasOwner = target->m_pOwnerDocument != nullptr;
      // The destructor of a node that still has an owner clears; its siblings are cleared with it.
      if (clearing == CLEARING_NOTHING && hasOwner) clearing = CLEARING_TOP;
      siblings = clearing;
      if (!hasOwner) clearing = CLEARING_NOTHING;
      if (clearing <= CLEARING_CHILD) target->m_pParent = nullptr;
      WayBack::Set(target, node, clearing);
      node = target;
      continue;
    }
    destroyed.Add(target);
  }
  destroyed.Count();
  top->m_pOwnerDocument = nullptr;
}

/// Does all that the destructor of a node does. Not inlined: there are two destructors, of which
/// one also frees the memory.
XMLDOM_NOINLINE void End(IXMLDOMNode* node) {
  const bool isCached = xmldom::ForgetNode(node);
  const bool isBare = IsBare(*node);
  // A bare node without parent, as a member leaves it that took it out, heads no chain.
  if (!isBare || node->m_pParent != nullptr) xmldom::NoteChange(node->m_pParent);
  if (!isBare) ReleaseLinks(node, isCached);
  FreeTexts(node);
  xmldom::AddToCount(IXMLDOMNode::m_iObjCount, -1);
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
  xmldom::AddToCount(m_iObjCount, 1);
}

IXMLDOMNode::IXMLDOMNode() : IXMLDOMNode(xmldom::Uncounted()) {
  xmldom::AddToCount(m_iObjCount, 1);
}

IXMLDOMNode::IXMLDOMNode(const xmldom::Uncounted&)
    : m_pszNodeName(nullptr),
      m_pszValue(nullptr),
      m_pNextSibling(nullptr),
      m_pFirstChild(nullptr),
      m_pFirstAttribute(nullptr),
      m_pParent(nullptr),
      m_pOwnerDocument(reinterpret_cast<IXMLDOMDocument2*>(this)),
      m_eNodeType(NODE_INVALID) {}

IXMLDOMNode::~IXMLDOMNode() { End(this); }

void IXMLDOMNode::ClearNode(bool bFreeName) {
  xmldom::ForgetNode(this);
  xmldom::NoteChange(m_pParent);
  xmldom::ForgetFollowers(this);
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
  xmldom::ForgetAll();
  // The nodes of a tree that is linked nowhere get one owner together.
  xmldom::NoteOwnersChange(m_pParent != nullptr || m_pNextSibling != nullptr);
  xmldom::SetOwners(this, doc);
}

void IXMLDOMNode::RecurseClearDocument(int depth) {
  if (this == nullptr || m_pOwnerDocument == nullptr) return;
  xmldom::ForgetAll();
  xmldom::NoteOwnersChange(true);
  ClearChain(this, depth);
}
