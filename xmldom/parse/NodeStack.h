#ifndef XMLDOM_PARSE_NODESTACK_H
#define XMLDOM_PARSE_NODESTACK_H

#include <xmldom/base/Export.h>

#include <cstddef>
#include <new>

class IXMLDOMNode;

namespace xmldom {
class GrowingTree;
}

/// An element of the stack of open elements.
class XMLDOM_API CNodeStackElt {
 public:
  /// Stands for `node`, on which it takes no reference, on top of `next`.
  CNodeStackElt(IXMLDOMNode* node, CNodeStackElt* next);
  /// Destroys the elements below this one too; set m_pNext to null before to keep them.
  ~CNodeStackElt();

  CNodeStackElt(const CNodeStackElt&) = delete;
  CNodeStackElt& operator=(const CNodeStackElt&) = delete;

  /// Deliberate: the size is not used when memory is released. A load puts objects of a derived
  /// class on the stack, which are deleted through this class, whose destructor is not virtual.
  static void* operator new(std::size_t size) { return ::operator new(size); }
  static void* operator new(std::size_t, void* memory) noexcept { return memory; }
  static void operator delete(void* p) { ::operator delete(p); }

  IXMLDOMNode* m_pNode;    ///< The node that is open; no reference is held.
  CNodeStackElt* m_pNext;  ///< The next element further out; null for the outermost.

  static int m_iObjCount;  ///< Live stack elements.

 private:
  friend class xmldom::GrowingTree;

  // A load counts its elements itself.
  CNodeStackElt() {}
};

/// The elements of a document that have been opened and not yet closed while it is built, the
/// innermost on top.
class XMLDOM_API CNodeStack {
 public:
  /// Makes an empty stack.
  CNodeStack();
  ~CNodeStack();

  CNodeStack(const CNodeStack&) = delete;
  CNodeStack& operator=(const CNodeStack&) = delete;

  void Push(IXMLDOMNode* node);  ///< Puts an element on top; takes no reference.
  /// Removes the top; does nothing when the stack is empty.
  void Pop();

  CNodeStackElt* m_pTop;  ///< The innermost open element; null when the stack is empty.

  static int m_iObjCount;  ///< Live stacks.
};

#endif
