#ifndef XMLDOM_DOM_XMLNODELIST_H
#define XMLDOM_DOM_XMLNODELIST_H

#include <xmldom/base/Export.h>
#include <xmldom/dom/Release.h>
#include <xmldom/dom/Results.h>
#include <xmldom/support/RefCountedObject.h>

class IXMLDOMNode;

/// One link of a node list. A list makes and destroys its own links.
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

/// A snapshot of nodes: it holds a reference to each and does not follow later changes of the tree.
///
/// Ownership: the receiver of a list drops its one reference with Release(). Nodes that members
/// hand out have a reference added. Iteration: a list has one cursor, which all its users share.
///
/// Changes by hand: the fields are public, and members follow them as they stand, with one
/// exception. The first request for an earlier item makes an index of the links, and later ones go
/// by it. It is dropped, and the links are followed, when the list has another head, when the link
/// before the requested one does not link to it any more, and when `m_nCount` is less than the
/// number of indexed links. Other changes cannot be noticed in constant time: after a change in the
/// middle of the list, GetItem may answer as if the links behind it had not been changed. A link
/// must stay in memory for as long as the list lives, even when it was taken out.
class XMLDOM_API IXMLDOMNodeList : public CRefCountedObject {
 public:
  /// An empty list.
  IXMLDOMNodeList();
  ~IXMLDOMNodeList() override;

  /// Appends a node. Result: the node's reference count; 0 for null, which is not added.
  /// Effects: std::bad_alloc when memory is out, the list unchanged.
  int Add(IXMLDOMNode* node);

  /// Result: the next node of the iteration with a reference added; null at the end.
  IXMLDOMNode* NextNode();

  /// Moves the cursor to the node at `index`, counted from 0.
  /// Result: the node with a reference added; null when there is none, and the cursor stays.
  /// Cost: linear in the distance when the cursor stands before the node. Constant when it stands
  /// behind the node; only the first such request, which makes the index, is linear in `index`.
  IXMLDOMNode* GetItem(int index);

  IXMLDOMNodeListElt* m_pHead;    ///< The first link; null when empty.
  IXMLDOMNodeListElt* m_pTail;    ///< Where Add looks for the end: any link of the list, or null.
  IXMLDOMNodeListElt* m_pCursor;  ///< The link of the node handed out last, or null.
  int m_nCount;                   ///< How many nodes it holds.
  int m_nCursorIndex;             ///< From 0; CURSOR_FRESH or CURSOR_EXHAUSTED when at no node.

  /// Values of m_nCursorIndex for a cursor that is at no node.
  enum {
    CURSOR_FRESH = -1,     ///< Before the first node.
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
  XMLDOM_HIDDEN bool IsIndexTrue(int index) const;
  XMLDOM_HIDDEN bool IndexLinksUpTo(int index);

  Block* m_pBlocks;                // newest first
  unsigned m_nUnusedLinks;         // how many links of the newest block are still to be made
  IXMLDOMNodeListElt** m_ppIndex;  // the links by position; null until a request goes backwards
  int m_nIndexed;                  // how many entries, from the head on, have been made
  int m_nIndexCapacity;            // how many entries there is memory for
};

/// The attributes of a node, as a list that can be asked by name.
class XMLDOM_API IXMLDOMNamedNodeMap : public IXMLDOMNodeList {
 public:
  ~IXMLDOMNamedNodeMap() override;

  /// Looks for the first node of exactly that name. The iteration is restarted, and goes on behind
  /// the node that was found.
  /// Result: the node with a reference added; null when there is none, and for a null name.
  /// Cost: linear in the list.
  IXMLDOMNode* GetNamedItem(const char* name);

  /// Does what GetNamedItem(name) does. Out: its result. Result: S_OK; S_FALSE when there is no
  /// such node; E_ARGUMENT for a null `out`, and nothing is done.
  HRESULT getNamedItem(char* name, IXMLDOMNode** out);
};

#endif
