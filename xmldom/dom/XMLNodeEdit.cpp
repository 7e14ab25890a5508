// Moving, inserting, replacing and removing nodes that are in a tree. Each member tests its
// arguments first, then takes the new child out of where it is, and links it last. Tested by
// tests/dom/XMLNodeEdit_test.cpp, XMLNodeEditInPlace_test.cpp and XMLNodeEditRefusals_test.cpp.

#include <xmldom/dom/ChainMarks.h>
#include <xmldom/dom/NodeCache.h>
#include <xmldom/dom/NodeChain.h>
#include <xmldom/dom/NodeOwners.h>
#include <xmldom/dom/TreeWalk.h>
#include <xmldom/dom/XMLNode.h>
#include <xmldom/ptr/XMLPtr.h>

namespace {

/// Looks for one node among those that it visits. Attributes are searched too: usually nothing
/// hangs below them, but nothing forbids it. Their chains are collected on the way and walked
/// afterwards.
class NodeFinder : public xmldom::PreOrderVisitor {
 public:
  explicit NodeFinder(const IXMLDOMNode* wanted) : m_wanted(wanted), m_found(false) {}

  IXMLDOMNode* Enter(IXMLDOMNode* node, std::size_t) {
    m_found = node == m_wanted;
    if (node->m_pFirstAttribute != nullptr) m_attributeChains.Push(node->m_pFirstAttribute);
    return node->m_pFirstChild;
  }

  bool IsDone() const { return m_found; }

  /// Walks the chains of attributes that were collected. Result: whether the node has been found,
  /// there or before.
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

/// Whether a node is no document and has no parent, no sibling that follows and nothing below it.
/// Then only its own links have to be set to put it in place.
bool IsFreeLeaf(const IXMLDOMNode* node) {
  return node->m_pParent == nullptr && node->m_pNextSibling == nullptr && IsLeaf(node) &&
         node->m_eNodeType != NODE_DOCUMENT;
}

/// What becomes of the siblings that follow a new child which has no parent: appendChild links them
/// with it, the other members leave them behind.
enum Followers { FOLLOWERS_STAY, FOLLOWERS_MOVE };

/// Whether `node` is `top` or hangs below it; or, unless `top` moves alone, the same for a sibling
/// that follows `top`. Not inlined: most new children are leaves.
XMLDOM_NOINLINE bool IsAmong(IXMLDOMNode* top, const IXMLDOMNode* node, bool movesAlone) {
  NodeFinder finder(node);
  if (movesAlone) {
    xmldom::WalkTree<xmldom::SideTrail>(top, finder);
  } else {
    xmldom::WalkChain<xmldom::SideTrail>(top, finder);
  }
  return finder.FinishAttributes();
}

/// Whether an edit that moves `top` would move `node` too: `node` is `top` or hangs below it, or
/// the same holds for a sibling that moves along. The search goes downwards from `top`, because the
/// parent link of a node that has outlived its tree may dangle. Cost: linear in what is below
/// `top`.
bool MovesWith(IXMLDOMNode* top, const IXMLDOMNode* node, Followers followers) {
  const bool movesAlone =
      followers == FOLLOWERS_STAY || top->m_pParent != nullptr || top->m_pNextSibling == nullptr;
  return movesAlone && IsLeaf(top) ? top == node : IsAmong(top, node, movesAlone);
}

/// The node that an edit puts in place for `newChild`: of a document its first child, otherwise the
/// node itself. Null when there is none, or when `parent` would come to hang below it.
IXMLDOMNode* NodeToPlace(IXMLDOMNode* newChild, const IXMLDOMNode* parent, Followers followers) {
  if (newChild != nullptr && newChild->m_eNodeType == NODE_DOCUMENT) {
    newChild = newChild->m_pFirstChild;
  }
  return newChild == nullptr || MovesWith(newChild, parent, followers) ? nullptr : newChild;
}

/// The node before `node`, which must have a parent; borrowed. Null for a first child.
/// Effects: throws a CLogException* when the parent does not list `node` among its children.
IXMLDOMNode* PreviousOrNull(IXMLDOMNode* node) {
  return node->m_pParent->m_pFirstChild == node ? nullptr : xmldom::PreviousOf(node);
}

/// Takes `node` out of the chain of its parent. It keeps its owner.
void UnlinkAndNote(IXMLDOMNode* previous, IXMLDOMNode* node) {
  if (xmldom::OwnerGeneration() != 0) xmldom::NoteChange(node);
  xmldom::Unlink(previous, node);
}

/// Takes a node out of its tree, or out of the chain that it heads when it has no parent.
/// Result: the siblings that follow a node without parent, with the reference that the node held on
/// them; null when there are none.
IXMLDOMNode* Detach(IXMLDOMNode* node) {
  node->RemoveNodeFromTree();
  IXMLDOMNode* followers = node->m_pNextSibling;
  if (followers != nullptr) xmldom::ForgetFollowers(node);
  node->m_pNextSibling = nullptr;
  return followers;
}

/// Releases the siblings that a new child has left behind. To be called when everything is linked,
/// because `parent` may be one of them, or hang below one, and be destroyed with them.
/// Result: whether `parent` still exists.
bool DropFollowers(IXMLDOMNode* followers, IXMLDOMNode* parent) {
  if (followers == nullptr) return true;
  parent->AddRef();
  followers->RealRelease();
  return parent->RealRelease() != 0;
}

/// Gives a detached node its parent and its next sibling. The caller links the node before it.
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
  const bool isFirst = refChild == m_pFirstChild;
  IXMLDOMNode* previous = isFirst ? nullptr : xmldom::FindBefore(refChild);
  if (!isFirst && previous == nullptr) return S_FALSE;

  // The quick way for most new children: nothing has to be searched or taken out, and the siblings
  // that follow are known to have the owner.
  if (IsFreeLeaf(newChild) && xmldom::IsSurelyOwned(refChild, m_pOwnerDocument)) {
    newChild->m_pParent = this;
    newChild->m_pOwnerDocument = m_pOwnerDocument;
    newChild->m_pNextSibling = refChild;
    xmldom::LinkBehind(previous, this, newChild);
    StoreIn(out, newChild);
    return S_OK;
  }
  IXMLDOMNode* node = NodeToPlace(newChild, this, FOLLOWERS_STAY);
  if (node == nullptr) return E_ARGUMENT;
  // A node that is `refChild`, or stands directly before it, is in its place already.
  if (node != refChild && node != previous) {
    IXMLDOMNode* followers = Detach(node);
    PlaceBefore(node, this, refChild);
    xmldom::LinkBehind(previous, this, node);
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
    // Released when the previous sibling of `oldChild` cannot be found, which throws.
    XMLPtr<IXMLDOMNode> followers = xmldom::Adopt(Detach(node));
    IXMLDOMNode* previous = PreviousOrNull(oldChild);
    PlaceBefore(node, this, oldChild->m_pNextSibling);
    UnlinkAndNote(previous, oldChild);
    xmldom::LinkBehind(previous, this, node);
    // Unlink has dropped what was noted of owners, so it is noted again. SetOwners drops it once
    // more when a node that loses its owner there may also follow `node` or be below it.
    xmldom::NoteOwned(node);
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
  IXMLDOMNode* const previous = PreviousOrNull(this);
  m_pOwnerDocument = nullptr;
  UnlinkAndNote(previous, this);
}
