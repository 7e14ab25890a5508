#ifndef XMLDOM_DOM_NODEREFERENCE_H
#define XMLDOM_DOM_NODEREFERENCE_H

#include <xmldom/dom/XMLNode.h>

namespace xmldom {

/// Owns one reference to a node, or none, and drops it at the end.
class NodeReference {
 public:
  /// Takes the caller's reference over.
  explicit NodeReference(IXMLDOMNode* node) : m_node(node) {}
  ~NodeReference() {
    if (m_node != nullptr) Release(m_node);
  }

  NodeReference(const NodeReference&) = delete;
  NodeReference& operator=(const NodeReference&) = delete;

  IXMLDOMNode* Get() const { return m_node; }
  IXMLDOMNode* operator->() const { return m_node; }

  /// Takes another reference over.
  void Reset(IXMLDOMNode* node) {
    Release(m_node);
    m_node = node;
  }

  /// Hands the reference to the caller.
  IXMLDOMNode* Detach() {
    IXMLDOMNode* node = m_node;
    m_node = nullptr;
    return node;
  }

 private:
  IXMLDOMNode* m_node;
};

}  // namespace xmldom

#endif
