#ifndef XMLDOM_DOM_XMLNODELIST_H
#define XMLDOM_DOM_XMLNODELIST_H

#include <xmldom/base/Export.h>
#include <xmldom/dom/Release.h>
#include <xmldom/dom/Results.h>
#include <xmldom/support/RefCountedObject.h>

class IXMLDOMNode;

/// One link of a node list.
class XMLDOM_API IXMLDOMNodeListElt {
 public:
  /// Takes a reference on `node`, which must not be null.
  explicit IXMLDOMNodeListElt(IXMLDOMNode* node);
  /// Releases the node; the next link is not touched.
  ~IXMLDOMNodeListElt();

  IXMLDOMNodeListElt(const IXMLDOMNodeListElt&) = delete;
  IXMLDOMNodeListElt& operator=(const IXMLDOMNodeListElt&) = delete;

  IXMLDOMNode* m_pNode;         ///< Holds a reference.
  IXMLDOMNodeListElt* m_pNext;  ///< The link behind it, or null.

  static int m_iObjCount;  ///< Live links.
};

/// A snapshot of nodes: it holds a reference to each and does not follow the tree.
///
/// References: the receiver of a list drops its one reference with Release(). Nodes handed out have
/// a reference added.
/// Iteration: a list has one cursor, which all its users share.
class XMLDOM_API IXMLDOMNodeList : public CRefCountedObject {
 public:
  /// An empty list.
  IXMLDOMNodeList();
  ~IXMLDOMNodeList() override;

  /// Appends a node. Result: the node's reference count; 0 for null, which is not added.
  /// Effects: std::bad_alloc when memory is out, the list unchanged.
  int Add(IXMLDOMNode* node);

  /// The next node of the iteration with a reference added; null at the end.
  IXMLDOMNode* NextNode();

  /// The node at `index`, counted from 0, with a reference added, and the cursor with it; null when
  /// there is none, and the cursor stays.
  /// Cost: linear in the distance from a cursor that stands before it; constant for an earlier
  /// index, but for the first such request, which makes an index of the links up to there.
  IXMLDOMNode* GetItem(int index);

  IXMLDOMNodeListElt* m_pHead;    ///< The first link; null when empty.
  IXMLDOMNodeListElt* m_pTail;    ///< A hint: the last link, one before it, or null.
  IXMLDOMNodeListElt* m_pCursor;  ///< The link of the node handed out last, or null.
  int m_nCount;                   ///< How many nodes it holds.
  int m_nCursorIndex;             ///< From 0; CURSOR_FRESH or CURSOR_EXHAUSTED when at no node.

  /// Values of m_nCursorIndex for a cursor that is at no node.
  enum {
    CURSOR_FRESH = -1,     ///< Before the first.
    CURSOR_EXHAUSTED = -2  ///< Behind the last: NextNode gives null until GetItem moves it back.
  };

  static int m_iObjCount;  ///< Live lists, maps included.

 protected:
  void ResetCursor();  ///< Lets the iteration begin again.

 private:
  // Links are made in blocks, so that a long list costs few allocations.
  struct Block;

  XMLDOM_HIDDEN void AddBlock();
  XMLDOM_HIDDEN void GoBackTo(int index);
  XMLDOM_HIDDEN bool IndexLinksUpTo(int index);

  Block* m_pBlocks;                // newest first
  unsigned m_nUnusedLinks;         // of the newest block
  IXMLDOMNodeListElt** m_ppIndex;  // the first links; null until a request goes backwards
  int m_nIndexed;
  int m_nIndexCapacity;
};

/// The attributes of a node, as a list that can be asked by name.
class XMLDOM_API IXMLDOMNamedNodeMap : public IXMLDOMNodeList {
 public:
  ~IXMLDOMNamedNodeMap() override;

  /// The first node of exactly that name with a reference added, or null, also for a null name.
  /// Restarts the iteration, which goes on behind the node found. Cost: linear in the list.
  IXMLDOMNode* GetNamedItem(const char* name);

  /// Out: GetNamedItem(name). Result: S_OK; S_FALSE when there is none; E_ARGUMENT for a null
  /// `out`.
  HRESULT getNamedItem(char* name, IXMLDOMNode** out);
};

#endif
