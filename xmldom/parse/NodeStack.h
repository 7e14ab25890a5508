#ifndef XMLDOM_PARSE_NODESTACK_H
#define XMLDOM_PARSE_NODESTACK_H

#include <xmldom/base/Export.h>

#include <cstddef>
#include <new>

class IXMLDOMNode;

/// One open element, while its document is being built.
class XMLDOM_API CNodeStackElt {
 public:
  /// Takes no reference on `node`.
  CNodeStackElt(IXMLDOMNode* node, CNodeStackElt* next);
  /// Destroys the elements below this one too: null m_pNext first to keep them.
  ~CNodeStackElt();

  CNodeStackElt(const CNodeStackElt&) = delete;
  CNodeStackElt& operator=(const CNodeStackElt&) = delete;

  /// A load derives from this class what it has to know of an open element, and gives such objects
  /// back through this class, which has no virtual destructor: memory is released without its size.
  static void* operator new(std::size_t size) { return ::operator new(size); }
  static void* operator new(std::size_t, void* memory) noexcept { return memory; }
  static void operator delete(void* p) { ::operator delete(p); }

  IXMLDOMNode* m_pNode;    ///< The element; not referenced.
  CNodeStackElt* m_pNext;  ///< The element around this one.

  static int m_iObjCount;  ///< Live stack elements.
};

/// The open elements of a load, innermost on top.
class XMLDOM_API CNodeStack {
 public:
  /// An empty stack.
  CNodeStack();
  ~CNodeStack();

  CNodeStack(const CNodeStack&) = delete;
  CNodeStack& operator=(const CNodeStack&) = delete;

  void Push(IXMLDOMNode* node);  ///< Puts an element on top; takes no reference.
  /// Drops the top; an empty stack stays as it is.
  void Pop();

  CNodeStackElt* m_pTop;  ///< Null when empty.

  static int m_iObjCount;  ///< Live stacks.
};

#endif
