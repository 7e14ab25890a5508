#ifndef XMLDOM_DOM_NODEARGUMENT_H
#define XMLDOM_DOM_NODEARGUMENT_H

#include <xmldom/dom/XMLDocument.h>
#include <xmldom/dom/XMLNode.h>
#include <xmldom/ptr/XMLPtr.h>

#include <type_traits>

namespace xmldom {

/// A node as an argument of a function: a plain pointer to a node or to a document, an XMLPtr of
/// either, or null. `NodeType` is IXMLDOMNode, or const IXMLDOMNode for a function that only reads.
/// Ownership: no reference is added; the node must outlive the call.
template <class NodeType>
class AnyNode {
 public:
  /// A plain pointer, or what converts to one.
  template <
      class Pointer,
      typename std::enable_if<std::is_convertible<const Pointer&, NodeType*>::value, int>::type = 0>
  AnyNode(const Pointer& node) noexcept : m_node(node) {}

  /// An XMLPtr.
  template <class T,
            typename std::enable_if<std::is_convertible<T*, NodeType*>::value, int>::type = 0>
  AnyNode(const XMLPtr<T>& node) noexcept : m_node(node.Get()) {}

  /// Result: the node, or null.
  NodeType* Get() const noexcept { return m_node; }
  /// The node. Bad input: it is not tested whether there is one.
  NodeType* operator->() const noexcept { return m_node; }
  /// Whether there is a node.
  explicit operator bool() const noexcept { return m_node != nullptr; }

 private:
  NodeType* m_node;
};

/// A node that a function may change.
typedef AnyNode<IXMLDOMNode> NodeArgument;
/// A node that a function only reads.
typedef AnyNode<const IXMLDOMNode> ConstNodeArgument;

}  // namespace xmldom

#endif
