#ifndef XMLDOM_DOM_NODERANGES_H
#define XMLDOM_DOM_NODERANGES_H

#include <xmldom/base/Export.h>
#include <xmldom/dom/XMLNode.h>
#include <xmldom/dom/XMLNodeList.h>
#include <xmldom/ptr/XMLPtr.h>

#include <cstddef>
#include <iterator>
#include <utility>

// Ranges for loops such as `for (XMLPtr<IXMLDOMNode> child : xmldom::Children(node))`. A loop may
// be left at any point, by an exception too, and releases then what it holds. A null node, plain or
// XMLPtr, makes an empty range.
//
// A range can be walked any number of times, also when it is const. Its iterators are forward
// iterators, which hand nodes out with a reference added, so that a node may be kept. They belong
// to the range and must not be used after its end.

/// What `operator->` of the iterators returns: `iterator->Get()` is the plain pointer.
class XMLNodeArrow {
 public:
  /// Takes the node over.
  explicit XMLNodeArrow(XMLPtr<IXMLDOMNode>&& node) noexcept : m_node(std::move(node)) {}
  /// The node, for as long as this lives.
  const XMLPtr<IXMLDOMNode>* operator->() const noexcept { return &m_node; }

 private:
  XMLPtr<IXMLDOMNode> m_node;
};

/// The children or the attributes of a node, as they are linked when they are visited. Children()
/// and Attributes() make such a range.
///
/// Ownership: the range holds a reference to the node whose children or attributes it is, and so
/// keeps these. It does not keep the document, because the link from a node to its document may
/// dangle: when the document is destroyed, the walk goes on without one.
/// During a walk the next node is held too. Each node that is handed out has a reference of its
/// own.
///
/// Edits during a walk: it counts the nodes when it begins and visits at most as many, so that it
/// ends whatever the body of the loop does. In detail:
/// * The present node and those before it may be removed, replaced, moved and destroyed, with all
///   that is below them.
/// * Nodes that are put in before the present one, directly behind it or at the end are not
///   visited. One directly behind it is when the next node or what follows that has changed too.
/// * A node that is removed or moved away before its turn is not visited. The walk goes on behind
///   the present node, where that is now; when that has gone too, behind the one that was visited
///   before it; and it ends when all three have gone.
/// * A node that is put in further on is visited, as is one that is moved there. For each such node
///   one at the end is left out; for each that was removed before its turn one that was added at
///   the end may be visited.
/// * Deliberate: to move the next node before the present one makes the same chain as to move the
///   present one behind it. The walk goes on with both, so that it visits the present one again.
///
/// For a loop over the nodes as they were, whatever its body does, walk a list: Listed() with that
/// of get_childNodes, or Selected().
///
/// Cost: to begin a walk is linear in the nodes, also when the loop is left early. Then AddRef and
/// RealRelease once for each node. To go on after an edit of the next node or of what follows it is
/// linear in the nodes between those where that happened last and now; when the present node has
/// gone too, in the nodes that follow as well. Nothing is allocated.
class XMLNodeChain {
 public:
  /// Visits the nodes of one walk. An iterator whose node has been destroyed may go on, but not be
  /// read again.
  class Iterator {
   public:
    typedef std::forward_iterator_tag iterator_category;  ///< It may be copied and walked again.
    typedef XMLPtr<IXMLDOMNode> value_type;               ///< A node with a reference of its own.
    typedef std::ptrdiff_t difference_type;               ///< What algorithms count in.
    typedef XMLNodeArrow pointer;                         ///< What operator -> hands out.
    typedef XMLPtr<IXMLDOMNode> reference;                ///< What operator * hands out.

    /// The end of every walk.
    Iterator() noexcept
        : m_head(nullptr),
          m_parent(nullptr),
          m_before(nullptr),
          m_node(nullptr),
          m_follower(nullptr),
          m_left(0) {}

    /// A copy visits the same nodes on its own.
    Iterator(const Iterator&) = default;
    /// A moved iterator may only be assigned to or destroyed.
    Iterator(Iterator&&) = default;
    /// As for the constructors.
    Iterator& operator=(const Iterator&) = default;
    /// As for the constructors.
    Iterator& operator=(Iterator&&) = default;

    XMLDOM_ALWAYS_INLINE ~Iterator() {}

    /// At the node to which `head` links. Cost: linear in the nodes.
    explicit Iterator(IXMLDOMNode* const* head) noexcept : Iterator() {
      m_head = head;
      m_node = head != nullptr ? *head : nullptr;
      if (m_node == nullptr) return;
      m_parent = m_node->m_pParent;
      m_held = xmldom::Share(m_node);
      FetchNext();
      for (const IXMLDOMNode* node = m_node; node != nullptr; node = node->m_pNextSibling) ++m_left;
    }

    /// The node.
    XMLPtr<IXMLDOMNode> operator*() const noexcept {
      return m_held ? XMLPtr<IXMLDOMNode>(std::move(m_held)) : xmldom::Share(m_node);
    }
    /// A member of the node.
    XMLNodeArrow operator->() const noexcept { return XMLNodeArrow(**this); }

    /// Goes on to the next node.
    Iterator& operator++() noexcept {
      IXMLDOMNode* next = m_next.Get();
      // A node that has neither parent nor follower changed is where it was.
      if (next != nullptr && (next->m_pParent != m_parent || next->m_pNextSibling != m_follower)) {
        const Place place = FindPlace(*m_head, m_place.Get(), m_parent, m_before, m_node, next);
        m_place = xmldom::Share(place.node);
        m_next = xmldom::Share(place.next);
        m_before = place.node;
        next = place.next;
      } else {
        m_before = m_node;
      }
      m_held = std::move(m_next);
      m_node = nullptr;
      if (next != nullptr && --m_left != 0) {
        m_node = next;
        FetchNext();
      }
      return *this;
    }
    /// Goes on to the next, and returns a copy of the iterator as it was.
    Iterator operator++(int) noexcept {
      Iterator before(*this);
      ++*this;
      return before;
    }

    /// Whether both are at the same node, or both at the end.
    friend bool operator==(const Iterator& a, const Iterator& b) noexcept {
      return a.m_node == b.m_node;
    }
    friend bool operator!=(const Iterator& a, const Iterator& b) noexcept {
      return a.m_node != b.m_node;
    }

   private:
    /// A place in the chain: a node, or null for the one before the first, and the node behind it.
    struct Place {
      IXMLDOMNode* node;
      IXMLDOMNode* next;
    };

    void FetchNext() noexcept {
      m_next = xmldom::Share(m_node->m_pNextSibling);
      m_follower = m_next ? m_next->m_pNextSibling : nullptr;
    }

    /// Where the walk goes on when `next` may have gone; null for one that has. It stays the next
    /// node when it follows `before`, because `present` was moved then. Otherwise the walk goes on
    /// behind `present` where that is now, or behind `before` when `present` has gone. These two
    /// may have been destroyed: only their addresses are compared. The search begins at `known`,
    /// which was found last, if that has still its parent.
    XMLDOM_COLD XMLDOM_NOINLINE static Place FindPlace(IXMLDOMNode* head, IXMLDOMNode* known,
                                                       const IXMLDOMNode* parent,
                                                       const IXMLDOMNode* before,
                                                       const IXMLDOMNode* present,
                                                       IXMLDOMNode* next) noexcept {
      if (next != nullptr && next->m_pParent != parent) next = nullptr;
      Place place = {nullptr, before == nullptr ? head : nullptr};
      if (next != nullptr && place.next == next) return place;
      const Place none = place;
      IXMLDOMNode* from = known != nullptr && known->m_pParent == parent ? known : head;
      for (;;) {
        for (IXMLDOMNode* node = from; node != nullptr; node = node->m_pNextSibling) {
          if (node != before && node != present) continue;
          place = Place{node, node->m_pNextSibling};
          if (node == present || (next != nullptr && place.next == next)) return place;
        }
        if (from == head) break;
        from = head;
        place = none;
      }
      return place;
    }

    IXMLDOMNode* const* m_head;          // the link to the first node
    const IXMLDOMNode* m_parent;         // that of the nodes of this chain
    const IXMLDOMNode* m_before;         // visited before m_node; may have been destroyed
    IXMLDOMNode* m_node;                 // the present node; null at the end
    mutable XMLPtr<IXMLDOMNode> m_held;  // the present node, until it has been handed out once
    XMLPtr<IXMLDOMNode> m_next;          // the node behind it, from before the body runs
    const IXMLDOMNode* m_follower;       // behind m_next at that time; may have been destroyed
    XMLPtr<IXMLDOMNode> m_place;         // what FindPlace found last
    std::size_t m_left;                  // how many nodes may still be visited, this one included
  };
  typedef Iterator iterator;        ///< The name by which the standard library asks for it.
  typedef Iterator const_iterator;  ///< The same, since walking changes no range.

  /// The nodes of `node` that begin with its link `first`; none when `node` is null.
  XMLNodeChain(const IXMLDOMNode* node, IXMLDOMNode* IXMLDOMNode::*first) noexcept
      : m_node(xmldom::Share(node)), m_head(node != nullptr ? &(node->*first) : nullptr) {}

  /// Begins a walk. Cost: linear in the nodes.
  Iterator begin() const noexcept { return Iterator(m_head); }
  Iterator end() const noexcept { return Iterator(); }

 private:
  XMLPtr<const IXMLDOMNode> m_node;
  IXMLDOMNode* const* m_head;
};

/// The nodes of a list. Listed() and Selected() make such a range. A walk does not move the cursor
/// of the list.
///
/// Ownership: it holds one reference to the list, which holds one to each of its nodes.
/// Edits during a walk: the nodes are those of the list, whatever happens to the tree; nodes that
/// have been removed from the tree since are visited too. Nodes that are added to the list during a
/// walk are not visited by it. Cost: AddRef and RealRelease once for each node.
class XMLNodes {
 public:
  /// Follows the links of the list.
  class Iterator {
   public:
    typedef std::forward_iterator_tag iterator_category;  ///< It may be copied and walked again.
    typedef XMLPtr<IXMLDOMNode> value_type;               ///< A node with a reference of its own.
    typedef std::ptrdiff_t difference_type;               ///< What algorithms count in.
    typedef XMLNodeArrow pointer;                         ///< What operator -> hands out.
    typedef XMLPtr<IXMLDOMNode> reference;                ///< What operator * hands out.

    /// The end of every walk.
    Iterator() noexcept : m_link(nullptr), m_left(0) {}

    /// At a link, the first of `count` to be visited.
    Iterator(const IXMLDOMNodeListElt* link, int count) noexcept
        : m_link(count > 0 ? link : nullptr), m_left(count) {}

    /// The node of the link.
    XMLPtr<IXMLDOMNode> operator*() const noexcept { return xmldom::Share(m_link->m_pNode); }
    /// A member of the node.
    XMLNodeArrow operator->() const noexcept { return XMLNodeArrow(**this); }

    /// Goes on to the next link.
    Iterator& operator++() noexcept {
      m_link = --m_left > 0 ? m_link->m_pNext : nullptr;
      return *this;
    }
    /// Goes on to the next, and returns a copy of the iterator as it was.
    Iterator operator++(int) noexcept {
      const Iterator before(*this);
      ++*this;
      return before;
    }

    /// Whether both are at the same link, or both at the end.
    friend bool operator==(const Iterator& a, const Iterator& b) noexcept {
      return a.m_link == b.m_link;
    }
    friend bool operator!=(const Iterator& a, const Iterator& b) noexcept {
      return a.m_link != b.m_link;
    }

   private:
    const IXMLDOMNodeListElt* m_link;
    int m_left;  // how many links may still be visited, this one included
  };
  typedef Iterator iterator;        ///< The name by which the standard library asks for it.
  typedef Iterator const_iterator;  ///< The same, since walking changes no range.

  /// Makes a range of the nodes of `list`; null makes an empty range that has failed.
  explicit XMLNodes(XMLPtr<IXMLDOMNodeList>&& list) noexcept : m_list(std::move(list)) {}

  /// Whether there is no list, because nothing was searched.
  bool Failed() const noexcept { return !m_list; }
  /// How many nodes there are; 0 when there is no list.
  int Count() const noexcept { return m_list ? m_list->m_nCount : 0; }

  /// Begins a walk, which visits as many nodes as the list counts now.
  Iterator begin() const noexcept {
    return m_list ? Iterator(m_list->m_pHead, m_list->m_nCount) : Iterator();
  }
  Iterator end() const noexcept { return Iterator(); }

 private:
  XMLPtr<IXMLDOMNodeList> m_list;
};

namespace xmldom {

/// The children of a node, in document order, texts included.
inline XMLNodeChain Children(const IXMLDOMNode* node) noexcept {
  return XMLNodeChain(node, &IXMLDOMNode::m_pFirstChild);
}
template <class T>
XMLNodeChain Children(const XMLPtr<T>& node) noexcept {
  return xmldom::Children(node.Get());
}

/// The attributes of a node, in document order.
inline XMLNodeChain Attributes(const IXMLDOMNode* node) noexcept {
  return XMLNodeChain(node, &IXMLDOMNode::m_pFirstAttribute);
}
template <class T>
XMLNodeChain Attributes(const XMLPtr<T>& node) noexcept {
  return xmldom::Attributes(node.Get());
}

/// The nodes of a list or of a map, such as those that get_childNodes and get_attributes make.
/// Result: Failed() for a null list. Ownership: takes a reference of its own, or that of an XMLPtr
/// that is moved in.
inline XMLNodes Listed(XMLPtr<IXMLDOMNodeList> list) noexcept { return XMLNodes(std::move(list)); }
inline XMLNodes Listed(IXMLDOMNodeList* list) noexcept { return XMLNodes(xmldom::Share(list)); }

/// The nodes that SelectNodes(path) selects from a node at the time of the call.
/// Result: an empty range when nothing matches. Failed() when nothing was searched: for a null
/// node, and for a path that begins with '/' from a node without owner document. A path with
/// malformed predicates also matches nothing; only the log tells (see MatchQuery). Effects: those
/// of SelectNodes. Cost: that of SelectNodes.
inline XMLNodes Selected(IXMLDOMNode* node, const char* path) {
  const bool isAbsolute = path != nullptr && *path == '/';
  if (node == nullptr || (isAbsolute && node->m_pOwnerDocument == nullptr)) {
    return XMLNodes(nullptr);
  }
  return XMLNodes(xmldom::Adopt(node->SelectNodes(path)));
}
template <class T>
XMLNodes Selected(const XMLPtr<T>& node, const char* path) {
  return xmldom::Selected(node.Get(), path);
}

}  // namespace xmldom

#endif
