#ifndef XMLDOM_DOM_NODERANGES_H
#define XMLDOM_DOM_NODERANGES_H

#include <xmldom/dom/XMLNode.h>
#include <xmldom/dom/XMLNodeList.h>
#include <xmldom/ptr/XMLPtr.h>

#include <utility>

// Ranges for loops such as `for (XMLPtr<IXMLDOMNode> child : xmldom::Children(node))`. A loop may
// be left at any point, by an exception too, and releases then what it holds. A null node, plain or
// XMLPtr, makes an empty range.

/// The children or the attributes of a node, which are visited as they are linked at that time.
/// Children() and Attributes() make such a range. It can be walked once.
///
/// Ownership: the range holds one reference, to the node that comes next. Each node that it hands
/// out has a reference, which the variable of the loop drops. Nothing else keeps the nodes alive:
/// neither their parent nor their document. Edits during the loop: the next node is fetched before
/// the body of the loop runs for the present one. So the present node and those before it may be
/// removed, replaced, moved and destroyed, with all that is below them. A node that is linked
/// directly behind the present one is not visited. Deliberate: the next node is visited even when
/// the body takes it out of the tree; the loop then goes on with the siblings that follow it where
/// it is, and ends when there are none. For edits beyond that walk a list (Listed, Selected). Cost:
/// AddRef and RealRelease once for each node; nothing is allocated.
class XMLNodeChain {
 public:
  /// For a range-for only: reading it hands its node out, and it cannot be read twice.
  class Iterator {
   public:
    /// At a node; null is the end.
    explicit Iterator(XMLPtr<IXMLDOMNode>&& node) noexcept : m_next(std::move(node)) {}

    /// Hands the node out, and goes on to the next. Operator ++ therefore does nothing.
    XMLPtr<IXMLDOMNode> operator*() noexcept {
      XMLPtr<IXMLDOMNode> node(std::move(m_next));
      m_next = xmldom::Share(node->m_pNextSibling);
      return node;
    }
    Iterator& operator++() noexcept { return *this; }
    bool operator!=(const Iterator& other) const noexcept { return m_next != other.m_next; }

   private:
    XMLPtr<IXMLDOMNode> m_next;
  };

  /// Adds a reference to the first node, so that the range may outlive the parent of that node.
  explicit XMLNodeChain(IXMLDOMNode* first) noexcept : m_first(xmldom::Share(first)) {}

  /// Moves the reference to the first node from the range to the iterator.
  Iterator begin() noexcept { return Iterator(std::move(m_first)); }
  /// The end, which is null.
  Iterator end() const noexcept { return Iterator(nullptr); }

 private:
  XMLPtr<IXMLDOMNode> m_first;
};

/// The nodes of a list. Listed() and Selected() make such a range. It can be walked any number of
/// times, and does not move the cursor of the list.
///
/// Ownership: it holds one reference to the list, which holds one to each of its nodes.
/// Edits during the loop: the nodes are those of the list, whatever happens to the tree; nodes that
/// have been removed from the tree since are visited too. Cost: AddRef and RealRelease once for
/// each node.
class XMLNodes {
 public:
  /// Follows the links of the list.
  class Iterator {
   public:
    /// At a link; null is the end.
    explicit Iterator(const IXMLDOMNodeListElt* link) noexcept : m_link(link) {}

    /// The node of the link, with a reference added.
    XMLPtr<IXMLDOMNode> operator*() const noexcept { return xmldom::Share(m_link->m_pNode); }
    Iterator& operator++() noexcept {
      m_link = m_link->m_pNext;
      return *this;
    }
    bool operator!=(const Iterator& other) const noexcept { return m_link != other.m_link; }

   private:
    const IXMLDOMNodeListElt* m_link;
  };

  /// Makes a range of the nodes of `list`; null makes an empty range that has failed.
  explicit XMLNodes(XMLPtr<IXMLDOMNodeList>&& list) noexcept : m_list(std::move(list)) {}

  /// Whether there is no list, because nothing was searched.
  bool Failed() const noexcept { return !m_list; }
  /// How many nodes there are; 0 when there is no list.
  int Count() const noexcept { return m_list ? m_list->m_nCount : 0; }

  /// The first link and the end, which is null.
  Iterator begin() const noexcept { return Iterator(m_list ? m_list->m_pHead : nullptr); }
  Iterator end() const noexcept { return Iterator(nullptr); }

 private:
  XMLPtr<IXMLDOMNodeList> m_list;
};

namespace xmldom {

/// The children of a node, in document order, texts included.
inline XMLNodeChain Children(const IXMLDOMNode* node) noexcept {
  return XMLNodeChain(node == nullptr ? nullptr : node->m_pFirstChild);
}
template <class T>
XMLNodeChain Children(const XMLPtr<T>& node) noexcept {
  return xmldom::Children(node.Get());
}

/// The attributes of a node, in document order.
inline XMLNodeChain Attributes(const IXMLDOMNode* node) noexcept {
  return XMLNodeChain(node == nullptr ? nullptr : node->m_pFirstAttribute);
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
