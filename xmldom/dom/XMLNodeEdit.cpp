#include <xmldom/dom/NodeChain.h>
#include <xmldom/dom/NodeOwners.h>
#include <xmldom/dom/TreeWalk.h>
#include <xmldom/dom/XMLNode.h>
#include <xmldom/ptr/XMLPtr.h>
#include <xmldom/support/LogException.h>

namespace {

/// Looks for one node among those it walks. Attributes have nothing below them in an ordinary tree,
/// but nothing forbids it: their chains are walked afterwards, like those of children.
class NodeFinder : public xmldom::PreOrderVisitor {
 public:
  explicit NodeFinder(const IXMLDOMNode* wanted) : m_wanted(wanted), m_found(false) {}

  IXMLDOMNode* Enter(IXMLDOMNode* node, std::size_t) {
    m_found = node == m_wanted;
    if (node->m_pFirstAttribute != nullptr) m_attributeChains.Push(node->m_pFirstAttribute);
    return node->m_pFirstChild;
  }

  bool IsDone() const { return m_found; }

  /// Walks the attributes that were met. Result: whether the node was found at last.
  bool FinishAttributes() {
    while (!m_found && !m_attributeChains.IsEmpty()) {
      xmldom::WalkChain<xmldom::SideTrail>(m_attributeChains.Pop(), *this);
    }
    return m_found;
  }

 private:
  const IXMLDOMNode* m_wanted;
  bool m_found;
  xmldom::Stack<IXMLDOMNode*, 8> m_attributeChains;
};

bool IsLeaf(const IXMLDOMNode* node) {
  return node->m_pFirstChild == nullptr && node->m_pFirstAttribute == nullptr;
}

/// What comes to hang below the parent along with a new child that has none so far.
enum Followers { FOLLOWERS_STAY, FOLLOWERS_MOVE };

/// Whether `node` would move along with `top`: it is `top`, hangs below it, or, where those move,
/// follows it in a chain that has no parent to stay with. Looks downwards, because the parent link
/// of a node that has outlived its tree may be stale.
bool MovesWith(IXMLDOMNode* top, const IXMLDOMNode* node, Followers followers) {
  const bool movesAlone =
      followers == FOLLOWERS_STAY || top->m_pParent != nullptr || top->m_pNextSibling == nullptr;
  if (movesAlone && IsLeaf(top)) return top == node;
  NodeFinder finder(node);
  if (movesAlone) {
    xmldom::WalkTree<xmldom::SideTrail>(top, finder);
  } else {
    xmldom::WalkChain<xmldom::SideTrail>(top, finder);
  }
  return finder.FinishAttributes();
}

/// The node that an edit puts in place for `newChild`: a document stands for its first child. Null
/// when there is nothing that may stand below `parent`.
IXMLDOMNode* NodeToPlace(IXMLDOMNode* newChild, const IXMLDOMNode* parent, Followers followers) {
  if (newChild != nullptr && newChild->m_eNodeType == NODE_DOCUMENT) {
    newChild = newChild->m_pFirstChild;
  }
  return newChild == nullptr || MovesWith(newChild, parent, followers) ? nullptr : newChild;
}

/// The node before `node`, whose parent lists it but not as its first child; borrowed.
IXMLDOMNode* PreviousOf(IXMLDOMNode* node, const char* where) {
  IXMLDOMNode* previous = nullptr;
  if (node->get_previousSibling(&previous) != S_OK) {
    throw Exception(where, "get_previousSibling failed", nullptr);
  }
  previous->RealRelease();
  return previous;
}

/// Takes a node out of where it hangs. Result: the siblings that followed a node without parent,
/// with the reference that it held.
IXMLDOMNode* Detach(IXMLDOMNode* node) {
  node->RemoveNodeFromTree();
  IXMLDOMNode* followers = node->m_pNextSibling;
  node->m_pNextSibling = nullptr;
  return followers;
}

/// Drops the siblings that a new child has left behind, once everything is in place: the parent may
/// be among them, or hang below one of them. Result: whether the parent is still there.
bool DropFollowers(IXMLDOMNode* followers, IXMLDOMNode* parent) {
  if (followers == nullptr) return true;
  parent->AddRef();
  followers->RealRelease();
  return parent->RealRelease() != 0;
}

/// Puts a detached node under `parent`, before `next`.
void PlaceBefore(IXMLDOMNode* node, IXMLDOMNode* parent, IXMLDOMNode* next) {
  node->m_pParent = parent;
  xmldom::LinkBefore(node, next, parent->m_pOwnerDocument);
}

void StoreIn(IXMLDOMNode** out, IXMLDOMNode* node) {
  if (out != nullptr) *out = node;
}

}  // namespace

HRESULT IXMLDOMNode::appendChild(IXMLDOMNode* newChild, IXMLDOMNode** out) {
  IXMLDOMNode* node = NodeToPlace(newChild, this, FOLLOWERS_MOVE);
  if (node == nullptr) return E_ARGUMENT;
  // Deliberate: the root element of a document keeps the reference of this lookup.
  if (node != newChild) newChild->GetfirstChild();
  node->RemoveNodeFromTree();
  AddChild(node);
  StoreIn(out, node);
  return S_OK;
}

HRESULT IXMLDOMNode::insertBefore(IXMLDOMNode* newChild, IXMLDOMNode* refChild, IXMLDOMNode** out) {
  if (newChild == nullptr || refChild == nullptr || refChild->m_pParent != this) return E_ARGUMENT;
  IXMLDOMNode* previous = nullptr;
  IXMLDOMNode* child = m_pFirstChild;
  for (; child != nullptr && child != refChild; child = child->m_pNextSibling) previous = child;
  if (child == nullptr) return S_FALSE;

  IXMLDOMNode* node = NodeToPlace(newChild, this, FOLLOWERS_STAY);
  if (node == nullptr) return E_ARGUMENT;
  if (node != refChild && node != previous) {
    IXMLDOMNode* followers = Detach(node);
    PlaceBefore(node, this, refChild);
    if (previous == nullptr) {
      xmldom::PrependToChain(m_pFirstChild, node);
    } else {
      previous->m_pNextSibling = node;
    }
    if (!DropFollowers(followers, this)) node = nullptr;
  }
  StoreIn(out, node);
  return S_OK;
}

HRESULT IXMLDOMNode::replaceChild(IXMLDOMNode* newChild, IXMLDOMNode* oldChild, IXMLDOMNode** out) {
  if (oldChild == nullptr || oldChild->m_pParent != this) return E_ARGUMENT;
  IXMLDOMNode* node = NodeToPlace(newChild, this, FOLLOWERS_STAY);
  if (node == nullptr) return E_ARGUMENT;
  if (node != oldChild) {
    XMLPtr<IXMLDOMNode> followers = Adopt(Detach(node));
    IXMLDOMNode** link = &m_pFirstChild;
    if (m_pFirstChild != oldChild) {
      link = &PreviousOf(oldChild, "IXMLDOMNode::replaceChild")->m_pNextSibling;
    }
    xmldom::InvalidateChainEnds();
    PlaceBefore(node, this, oldChild->m_pNextSibling);
    *link = node;
    oldChild->m_pNextSibling = nullptr;
    oldChild->m_pParent = nullptr;
    xmldom::SetOwners(oldChild, nullptr);
    DropFollowers(followers.Detach(), this);
  }
  StoreIn(out, oldChild);
  return S_OK;
}

HRESULT IXMLDOMNode::removeChild(IXMLDOMNode* oldChild, IXMLDOMNode** out) {
  if (oldChild == nullptr || oldChild->m_pParent != this) return E_ARGUMENT;
  oldChild->RemoveNodeFromTree();
  StoreIn(out, oldChild);
  return S_OK;
}

void IXMLDOMNode::RemoveNodeFromTree() {
  if (m_pParent == nullptr) return;
  xmldom::InvalidateChainEnds();
  if (m_pParent->m_pFirstChild == this) {
    m_pParent->m_pFirstChild = m_pNextSibling;
  } else {
    PreviousOf(this, "IXMLDOMNode::RemoveNodeFromTree")->m_pNextSibling = m_pNextSibling;
  }
  m_pOwnerDocument = nullptr;
  m_pNextSibling = nullptr;
  m_pParent = nullptr;
}
