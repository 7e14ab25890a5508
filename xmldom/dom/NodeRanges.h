#ifndef XMLDOM_DOM_NODERANGES_H
#define XMLDOM_DOM_NODERANGES_H

#include <xmldom/dom/XMLNode.h>
#include <xmldom/dom/XMLNodeList.h>
#include <xmldom/ptr/XMLPtr.h>

#include <utility>

// What a range-for goes through: `for (XMLPtr<IXMLDOMNode> child : Children(node))`. A loop may be
// left at any point, by an exception too: what it holds is released then. A null node, plain or
// XMLPtr, is an empty range.

/// A chain of siblings as it is found on the way; Children and Attributes make it. It is walked
/// once.
///
/// References: a walk holds one reference to the node that comes next, and what it hands out has
/// one, which the loop's variable drops. Nothing else keeps the nodes: neither their parent nor
/// their document.
/// Edits: the walk is one node ahead, so that the node in hand, and those before it, may be
/// removed, replaced, moved and destroyed, with all that hangs below them. What is put in directly
/// behind the node in hand is passed over. Deliberate: the node that comes next has been fetched
/// already, so that it is visited even when it is taken out in between; the walk then goes on from
/// where it hangs, and ends when it hangs nowhere. To edit more than that, walk a list (Listed,
/// Selected). Cost: AddRef and RealRelease once for each node; nothing is allocated.
class XMLNodeChain {
 public:
  /// Serves a range-for alone: reading it takes the node out of it.
  class Iterator {
   public:
    /// At a node; null is the end.
    explicit Iterator(XMLPtr<IXMLDOMNode>&& node) noexcept : m_next(std::move(node)) {}

    /// Reading hands the node out and goes on to the next, where ++ stays.
    XMLPtr<IXMLDOMNode> operator*() noexcept {
      XMLPtr<IXMLDOMNode> node(std::move(m_next));
      m_next = Share(node->m_pNextSibling);
      return node;
    }
    Iterator& operator++() noexcept { return *this; }
    bool operator!=(const Iterator& other) const noexcept { return m_next != other.m_next; }

   private:
    XMLPtr<IXMLDOMNode> m_next;
  };

  /// Adds a reference to the first node, so that the range may outlive what it hangs below.
  explicit XMLNodeChain(IXMLDOMNode* first) noexcept : m_first(Share(first)) {}

  /// Takes the first node out of the range.
  Iterator begin() noexcept { return Iterator(std::move(m_first)); }
  /// Where the loop stops.
  Iterator end() const noexcept { return Iterator(nullptr); }

 private:
  XMLPtr<IXMLDOMNode> m_first;
};

/// The children of a node, in document order, texts included.
inline XMLNodeChain Children(const IXMLDOMNode* node) noexcept {
  return XMLNodeChain(node == nullptr ? nullptr : node->m_pFirstChild);
}
template <class T>
XMLNodeChain Children(const XMLPtr<T>& node) noexcept {
  return Children(node.Get());
}

/// The attributes of a node, in document order.
inline XMLNodeChain Attributes(const IXMLDOMNode* node) noexcept {
  return XMLNodeChain(node == nullptr ? nullptr : node->m_pFirstAttribute);
}
template <class T>
XMLNodeChain Attributes(const XMLPtr<T>& node) noexcept {
  return Attributes(node.Get());
}

/// The nodes of a list; Listed and Selected make it. It can be walked any number of times, and
/// leaves the list's cursor alone.
///
/// References: it holds one reference to the list, which holds one to each of its nodes.
/// Edits: whatever happens to the tree, the nodes are those that the list was made of; those that
/// have been removed since are among them.
/// Cost: AddRef and RealRelease once for each node.
class XMLNodes {
 public:
  /// Goes along the links of the list.
  class Iterator {
   public:
    /// At a link; null is the end.
    explicit Iterator(const IXMLDOMNodeListElt* link) noexcept : m_link(link) {}

    /// What a range-for asks for: the node has a reference added.
    XMLPtr<IXMLDOMNode> operator*() const noexcept { return Share(m_link->m_pNode); }
    Iterator& operator++() noexcept {
      m_link = m_link->m_pNext;
      return *this;
    }
    bool operator!=(const Iterator& other) const noexcept { return m_link != other.m_link; }

   private:
    const IXMLDOMNodeListElt* m_link;
  };

  /// The nodes of `list`; null makes a range that has failed.
  explicit XMLNodes(XMLPtr<IXMLDOMNodeList>&& list) noexcept : m_list(std::move(list)) {}

  /// Whether there is no list: then no node has been looked at.
  bool Failed() const noexcept { return !m_list; }
  /// How many nodes there are.
  int Count() const noexcept { return m_list ? m_list->m_nCount : 0; }

  /// For the loop.
  Iterator begin() const noexcept { return Iterator(m_list ? m_list->m_pHead : nullptr); }
  Iterator end() const noexcept { return Iterator(nullptr); }

 private:
  XMLPtr<IXMLDOMNodeList> m_list;
};

/// The nodes of a list or of a map, such as get_childNodes makes of the children as they are now.
/// Takes a reference of its own, or that of a pointer that is moved.
/// Result: Failed() for a null list.
inline XMLNodes Listed(XMLPtr<IXMLDOMNodeList> list) noexcept { return XMLNodes(std::move(list)); }
inline XMLNodes Listed(IXMLDOMNodeList* list) noexcept { return XMLNodes(Share(list)); }

/// The nodes that SelectNodes(path) selects from a node, as they are now.
/// Result: empty when nothing matches, and Failed() when nothing was searched: for a null node, and
/// for an absolute path from a node without owner document, which has nowhere to start. Predicates
/// that are malformed match nothing; the log alone tells (see MatchQuery).
/// Effects: those of SelectNodes. Cost: that of SelectNodes; the walk then is along a list.
inline XMLNodes Selected(IXMLDOMNode* node, const char* path) {
  const bool isAbsolute = path != nullptr && *path == '/';
  if (node == nullptr || (isAbsolute && node->m_pOwnerDocument == nullptr)) {
    return XMLNodes(nullptr);
  }
  return XMLNodes(Adopt(node->SelectNodes(path)));
}
template <class T>
XMLNodes Selected(const XMLPtr<T>& node, const char* path) {
  return Selected(node.Get(), path);
}

#endif
