#ifndef XMLDOM_DOM_XMLNODE_H
#define XMLDOM_DOM_XMLNODE_H

// The node class. It is one class, and so one long header; its members are grouped by subject, and
// the heading of each group names the sources that define them.

#include <xmldom/base/Export.h>
#include <xmldom/dom/DOMNodeType.h>
#include <xmldom/dom/DebugSwitches.h>
#include <xmldom/dom/Release.h>
#include <xmldom/dom/Results.h>
#include <xmldom/support/RefCountedObject.h>
#include <xmldom/support/bstr.h>

// The library's own build names the exception where it says what may leave a member.
#ifdef XMLDOM_BUILDS_LIBRARY
#include <xmldom/support/LogException.h>
#endif

class CMemFile;
class CXPathList;
class IXMLDOMDocument2;
class IXMLDOMNamedNodeMap;
class IXMLDOMNodeList;

namespace xmldom {
struct Uncounted;
}

/// One node of a tree: an element, an attribute, a text or a document.
///
/// Ownership: a new node has one reference, which belongs to its creator. Linking the node into a
/// tree passes that reference to the tree. A node holds one reference to its next sibling, one to
/// its first child and one to its first attribute; it holds none to its parent and its owner
/// document. Members that hand a node out add a reference for the caller, unless they say
/// otherwise; drop it with Release(). When the last reference to a node is dropped, the node is
/// destroyed, and with it everything below it and all siblings that follow it, except nodes that
/// somebody else still refers to.
///
/// Text: names and values are stored escaped, as they stand in XML. References such as `&amp;` stay
/// as they are until the text is read.
///
/// Derived classes: a node of a derived class is destroyed through its own destructor, once, after
/// the node that links to it; its siblings are destroyed before its children, and these before its
/// attributes. Such a destructor may use the node's own fields only, because the tree around the
/// node is being taken apart.
///
/// Stack: no member recurses, however deep or wide a tree is. Destruction is the exception: it goes
/// one level deeper for each node of a derived class that is destroyed together with another one
/// above or before it.
///
/// Threads: each thread may use documents of its own without a lock. A document with its nodes and
/// lists belongs to one thread at a time, since even reading changes reference counts. Passing it
/// to another thread takes what passing any data takes, such as a queue with a lock.
class XMLDOM_API IXMLDOMNode : public CRefCountedObject {
 public:
  // ---- Record
  //
  // Applications may read the fields, and the members below write them. An application that changes
  // links or owners by hand must know two things, which no member can notice in constant time:
  //  - Each thread caches the last nodes of some long chains, and nodes from which it finds the one
  //    before another. It uses a cached node only while that node names the parent of the chain; it
  //    takes it for the last one, or for the one before another, only while a node of the chain
  //    links to it.
  //    So a single node may be taken out by hand, but whoever cuts several neighbours off, also one
  //    after the other, must change the parent of each of them. Otherwise a new node may be linked
  //    behind the former last node, and a node that was cut off may be found before another. A node
  //    that still names a parent must not name a next sibling that is gone. Where the parents have
  //    to stay, or there are none, call RecurseSetDocument: it makes the thread forget all that it
  //    has cached.
  //  - insertBefore and replaceChild also give this node's owner document to the siblings that
  //    follow the new child. They look at the next sibling only, and pass over all of them when
  //    that one has the owner already. They visit all of them once any of these has been called:
  //    RecurseClearDocument; RecurseSetDocument for a node that has a parent or siblings that
  //    follow; AddSibling for one without parent or without owner; AddChild or appendChild for one
  //    without parent that has siblings that follow.

  char* m_pszNodeName;             ///< C heap; "#Text" for texts, "Document Root" for documents.
  char* m_pszValue;                ///< C heap, or null.
  IXMLDOMNode* m_pNextSibling;     ///< Next in the chain of children, or of attributes.
  IXMLDOMNode* m_pFirstChild;      ///< The first of its children, in document order.
  IXMLDOMNode* m_pFirstAttribute;  ///< The first of its attributes, in document order.
  IXMLDOMNode* m_pParent;          ///< Holds no reference; may dangle once the tree is gone.
  IXMLDOMDocument2* m_pOwnerDocument;  ///< Holds no reference. That of a document is itself.
  tagDOMNodeType m_eNodeType;          ///< The type of this node.

  /// How many nodes exist, documents included. Threads: all share this counter and those of the
  /// other classes, and may change them at the same time. A load adds its nodes when it ends, and a
  /// destruction in groups, so that a thread may read an older number while others are at work.
  static int m_iObjCount;

  // ---- Lifetime (XMLNodeLifetime.cpp)

  /// Makes a node without links. Name and value are copied; a null one stays null.
  /// Effects: std::bad_alloc when memory is out.
  IXMLDOMNode(IXMLDOMDocument2* doc, const char* name, const char* value, tagDOMNodeType type);

  /// Makes a node of type NODE_INVALID without name and value that is its own owner document, from
  /// which the constructor of a document goes on.
  IXMLDOMNode();

  /// When this node has an owner document: sets the owner document of all nodes below and of all
  /// following siblings to null, and the parent of these siblings and of the children. Then drops
  /// the references that this node holds. Cost: linear in what is destroyed; nothing is allocated.
  ~IXMLDOMNode() override;

  /// Releases attributes, children and following siblings in this order, and frees the value. The
  /// name is freed only when `bFreeName` is true. Type, parent and owner document stay.
  void ClearNode(bool bFreeName);

  /// Sets the owner document of this node, of its following siblings and of all nodes below them.
  /// Attributes keep theirs.
  /// Effects: when this node has a parent or siblings that follow, later insertions anywhere visit
  /// the siblings that follow the new node. When nodes without parent are inserted in a row in
  /// front of the same siblings, only the first insertion visits these. The thread forgets what it
  /// has cached of chains. Cost: linear in the nodes visited.
  void RecurseSetDocument(IXMLDOMDocument2* doc);

  /// Sets the owner document of this node, of its following siblings and of all nodes below them to
  /// null. `depth` is the level at which this node counts, and nodes up to level 1 also lose their
  /// parent. A node without owner counts as cleared: it and all below it stay as they are. So do
  /// all children of a node whose first child has no owner. Attributes are not visited. Effects:
  /// those that RecurseSetDocument has for a node with a parent. Cost: linear in the nodes visited.
  void RecurseClearDocument(int depth);

  // ---- COM-style accessors (XMLNode.cpp)
  //
  // Each returns E_ARGUMENT for a null out-pointer, and does nothing else then. Where a node is
  // handed out, the out-pointer receives it with a reference added, or null when there is none. A
  // member whose comment says "Asserts." ends the program when it is called on a null pointer.

  /// Result: S_OK, also when there is no parent.
  HRESULT get_parentNode(IXMLDOMNode** out);
  /// Asserts. Result: S_OK; S_FALSE when there is none.
  HRESULT get_firstChild(IXMLDOMNode** out);
  /// Result: S_OK; S_FALSE when there is none. Cost: as for building (below).
  HRESULT get_lastChild(IXMLDOMNode** out);
  /// Asserts. Result: S_OK; S_FALSE when there is none.
  HRESULT get_nextSibling(IXMLDOMNode** out);
  /// Result: S_OK; S_FALSE for a first child and for a node without parent.
  /// Effects: throws a CLogException* when the parent does not list this node among its children,
  /// as for an attribute. Cost: constant among the first children, for the last one while the end
  /// of the chain is cached (see building, below), and close behind the place among the same
  /// children where this thread looked for a previous sibling, or edited, last; going backwards,
  /// the logarithm of their number on average; otherwise linear in the preceding siblings.
  HRESULT get_previousSibling(IXMLDOMNode** out);
  /// Asserts. Out: the name as a new BSTR, the caller's; null for a node without name.
  /// Result: S_OK.
  HRESULT get_nodeName(char** out);
  /// Asserts. Out: the type. Result: S_OK.
  HRESULT get_nodeType(DOMNodeType* out);
  /// Asserts. Out: VARIANT_TRUE when there are children, else VARIANT_FALSE. Result: S_OK; S_FALSE
  /// when there are none.
  HRESULT hasChildNodes(VARIANT_BOOL* out) const;
  /// Result: S_OK; S_FALSE when there is none.
  HRESULT get_ownerDocument(IXMLDOMDocument2** out);
  /// Asserts. Out: a new map of the attributes as they are now, the caller's; null when this is no
  /// element. Result: S_OK; S_FALSE when this is no element. Cost: linear in the attributes.
  HRESULT get_attributes(IXMLDOMNamedNodeMap** out);
  /// Asserts. Out: a new list of the children as they are now, the caller's. Result: S_OK.
  /// Cost: linear in the children.
  HRESULT get_childNodes(IXMLDOMNodeList** out);

  // ---- Direct lookups (XMLNodeLookup.cpp)
  //
  // Names are compared byte by byte, and a null name finds nothing. A lookup by name that finds
  // nothing sets the error code that CXML::GetXMLError returns; one that succeeds does not change
  // it. Cost: linear in the children or attributes that are searched.

  /// Result: the attribute of that name with a reference added; null when there is none (error code
  /// 2).
  IXMLDOMNode* GetAttribute(const char* name);
  /// Result: the first child of that name, of any type, with a reference added; null when there is
  /// none (error code 4).
  IXMLDOMNode* GetChild(const char* name);
  /// Result: the stored value of the attribute of that name, borrowed until it changes; null when
  /// the attribute has no value, or when there is no such attribute (error code 2).
  const char* GetStrAttribute(const char* name);
  /// Result: for an element whose first child is a text, the stored value of that text; for any
  /// other node its own stored value. Borrowed until it changes; may be null.
  const char* GetStrValue() const;
  /// Goes through the attributes one by one; the first call takes a null `cursor`.
  /// Result: 1 when there is a further attribute; 0 behind the last one, and the next call then
  /// starts again. Out: the attribute, without a reference added, its name and its value, both
  /// borrowed; all null behind the last one.
  int GetNextAttribute(IXMLDOMNode*& cursor, const char*& name, const char*& value);
  /// Result: how many children are elements. Cost: linear in the children.
  int CountChildNodes();
  /// Result: 1 when the name is "curPage" or "numPages", the attributes that GetXMLHelper writes
  /// for a page; else 0.
  int IsPageAttribute(const char* name) const;
  /// Result: the first child with a reference added; null when there is none.
  IXMLDOMNode* GetfirstChild();

  // ---- Building (XMLNodeBuild.cpp)
  //
  // A new node is linked behind the last child, sibling or attribute, and gets this node's owner
  // document. Names and values are copied as they are, so they must be escaped already. The type of
  // this node is not checked.
  // Effects: std::bad_alloc when memory is out, and the tree is unchanged.
  // Bad input: names must not be null.
  // Cost: constant when the end of the chain is cached, and when the chain is short; otherwise
  // linear in the chain. A thread caches the ends of up to 8 chains, those that it has added to or
  // asked for the last child; docs/limits.md tells when it forgets one.

  /// Links a node that hangs nowhere as last child. The node, its following siblings and all nodes
  /// below them, attributes aside, get this node's owner document.
  /// Result: 1; 0 for a null `child`. Ownership: the tree takes the caller's reference over.
  /// Effects: when siblings follow it, later insertions anywhere visit the siblings that follow the
  /// new node. Cost: in addition linear in the nodes that get the owner.
  int AddChild(IXMLDOMNode* child);
  /// Adds a new element as last child. Result: the element with a reference added.
  IXMLDOMNode* AddChild(const char* name, const char* value);
  /// Adds a new element behind the last sibling that follows this node, with the same parent.
  /// Result: the element with a reference added. Effects: when this node has no parent or no owner
  /// document, later insertions anywhere visit the siblings that follow the new node, because the
  /// sibling made here may be in a second chain, now or later, whose nodes have another owner.
  IXMLDOMNode* AddSibling(const char* name, const char* value);
  /// Adds a new text as last child; a null text makes a text without value. Result: 1.
  int AddTextChild(const char* text);
  /// Adds a new attribute. Result: 1, and the error code is 0 then; 0 when there is one of that
  /// name, which keeps its value, and the error code is 1 then. Deliberate: a call with result 0
  /// adds a reference to the existing attribute, which nobody drops.
  int AddAttribute(const char* name, const char* value);
  /// Sets the value of an attribute, and adds the attribute when there is none of that name. A null
  /// `value` makes it an attribute without value.
  /// Result: 1. Effects: adding an attribute sets the error code to 0; changing one leaves it
  /// alone. Deliberate: changing a value adds a reference to the attribute, which nobody drops.
  int SetAttribute(const char* name, const char* value);
  /// Appends `len` bytes of `text` to this node's value, or as many as stand before its terminator.
  /// Bad input: a `len` below 1 and a null text do nothing. Cost: linear in the value.
  void AppendValue(const char* text, int len);
  /// Sets the value of this node when it is a text, otherwise that of its first child when that is
  /// a text. A null `text` removes the value. Effects: when neither is a text, nothing but a log
  /// event (type 18, severity 3).
  void SetValue(const char* text);

  // ---- Editing (XMLNodeEdit.cpp)
  //
  // A new child that has a parent is taken out of there first. A document as new child stands for
  // its first child. The out-pointer may be null; it receives a node without a reference added.
  // Result: E_ARGUMENT, with nothing changed, when there is no new child, or when this node is the
  // new child or hangs below it. Ownership: insertBefore and replaceChild take a new child that has
  // no parent away from the siblings that follow it, and release these when the child is in place.
  // When nobody but these siblings refers to this node, it is destroyed with them. Effects: throws
  // a CLogException* when the parent of a node does not list it among its children. Cost: that of
  // get_previousSibling for the places, and linear in the subtree of the new child. insertBefore
  // and replaceChild also visit the siblings that follow the place and all nodes below them, when
  // these may need this node's owner document: always when this node has no owner, and, once one
  // of the calls has been made that are named above (Record), unless the new child has no parent
  // and the call just before inserted in front of the same siblings.

  /// Moves a node to the end of the children. Out: the node, which the tree owns. Result: S_OK.
  /// Deliberate: when the new child is a document, its root element gets a further reference, which
  /// nobody drops.
  HRESULT appendChild(IXMLDOMNode* newChild, IXMLDOMNode** out);
  /// Moves a node before `refChild`. Out: the node, which the tree owns; null when this node was
  /// destroyed with the siblings of the new child. Result: S_OK, also when the node stands there
  /// already; S_FALSE when `refChild` has this node as parent but is not among its children;
  /// E_ARGUMENT when `refChild` is null or has another parent.
  HRESULT insertBefore(IXMLDOMNode* newChild, IXMLDOMNode* refChild, IXMLDOMNode** out);
  /// Puts a node in the place of `oldChild`. Out: `oldChild`; the reference that the tree held on
  /// it passes to the caller. A node that is replaced by itself stays, and so does the tree's
  /// reference. Result: S_OK; E_ARGUMENT when `oldChild` is null or has another parent.
  /// Bad input: an `oldChild` that has this node as parent but is not among its children, as an
  /// attribute of it, ends in the exception after the new child was taken out of its tree. The new
  /// child then has no parent and no owner, its former followers without a parent are released, and
  /// the reference that its tree held is the caller's.
  HRESULT replaceChild(IXMLDOMNode* newChild, IXMLDOMNode* oldChild, IXMLDOMNode** out);
  /// Takes a child out of the tree. Out: the child; the reference that the tree held on it passes
  /// to the caller. Result: S_OK; E_ARGUMENT when `oldChild` is null or has another parent.
  HRESULT removeChild(IXMLDOMNode* oldChild, IXMLDOMNode** out);
  /// Takes this node out of its tree; the reference that the tree held on it passes to the caller.
  /// A node without parent stays as it is. Deliberate: only the node itself loses its owner
  /// document, not the nodes below it.
  void RemoveNodeFromTree();

  // ---- Type and typed value (XMLNode.cpp, XMLNodeType.cpp)
  //
  // A VARIANT that is written to must be valid, because what it held is freed: call VariantInit for
  // a new one first.

  /// Asserts. Out: the stored value of an attribute, text, processing instruction or comment as
  /// VT_BSTR; VT_EMPTY for any other type; unchanged for a number that is no node type.
  /// Result: S_OK; E_ARGUMENT for a null `pVal`.
  HRESULT get_nodeValue(VARIANT* pVal);
  /// Asserts. Out: for an element its text as VT_BSTR, otherwise as get_nodeValue. Result: S_OK;
  /// E_ARGUMENT for a null `pVal`.
  HRESULT get_nodeTypedValue(VARIANT* pVal);
  /// Result: the name of the type as a new BSTR, the caller's.
  /// Effects: throws a CLogException* for a type that has no name.
  BSTR GetNodeTypeString() const;
  /// Out: GetNodeTypeString(). Result: S_OK; E_ARGUMENT for a null `pType`.
  HRESULT get_nodeTypeString(BSTR* pType);

  // ---- Text (XMLNodeText.cpp)
  //
  // The text of a node is made of the values of all text nodes below it, with references decoded
  // and pieces joined by one blank. The texts that are children of a node come before those below
  // its other children. Attributes are left out. Effects: those of TranslateEntities for each
  // piece. Cost: linear in the nodes below and in their text, when the text holds no references.

  /// Appends the text to `out`.
  void GetTextHelper(CMemFile& out) const;
  /// Result: the text as a new BSTR, the caller's; empty when there is none.
  BSTR GetTextAsBSTR() const;
  /// Out: the text as a new BSTR, the caller's. Result: S_OK; E_ARGUMENT for a null `pText`.
  HRESULT get_text(BSTR* pText);
  /// Result: the text on the C heap, the caller's (free); null when it is empty.
  char* GetTextAsStr() const;
  /// Copies the text into `buf`, which has `size` bytes, and terminates it; a longer text is cut
  /// off. Result: `buf`; null when nothing was copied, and `buf` holds an empty text then. Effects:
  /// a text that is cut off is logged (type 18, severity 4), with a backtrace. Bad input: a null
  /// `buf` gives null, and nothing is logged. For a `size` below 1 the first byte is written all
  /// the same.
  char* GetStringValue(char* buf, int size);

  // ---- XML text (XMLWriter.cpp, XMLNodeXML.cpp)
  //
  // Names and values are written as they are stored, and the texts of a node before its other
  // children. The owner document says whether and how far lines are indented; when the node or any
  // node below it has none, it is two blanks a level throughout. Effects: std::length_error for a
  // text of 4 GiB or more. Cost: linear in the nodes below, their text and the indentation.

  /// Appends this node's XML to `out`. The other arguments:
  /// - `iDepth` is the nesting level at which this node is written.
  /// - `pPagedNode` is the node of which only one page is written: the children at the positions
  ///   `nFirst` (counted from 1) to `nFirst` + `nCount` - 1, which are numbered. Null for none.
  /// - `nCurPage` and `nNumPages` are page attributes for that node; a negative one is left out.
  /// - `pszPadTemplate` is the tag of the rows that fill up the last page; null for none. They are
  ///   written from the last child to the end of the page, however far behind it that is: whoever
  ///   takes the numbers from a request has to check them first.
  /// - `bMasked` leaves all values out.
  /// - `bIndexed` writes the number `nIndex` into the tag of this node.
  ///
  /// Effects: page attributes that the node has already are not written when new ones are, and are
  /// logged (type 11, severity 10).
  void GetXMLHelper(CMemFile& out, int iDepth, IXMLDOMNode* pPagedNode, int nFirst, int nCount,
                    int nCurPage, int nNumPages, const char* pszPadTemplate, bool bMasked,
                    bool bIndexed, int nIndex) const;
  /// Result: the XML as a new BSTR, the caller's.
  BSTR GetXML();
  /// Out: the XML as a new BSTR, the caller's. Result: S_OK; E_ARGUMENT for a null `pXml`.
  HRESULT get_xml(BSTR* pXml);
  /// Result: the XML.
  _bstr_t Getxml();
  /// Result: the XML with all values left out, which shows the structure alone.
  _bstr_t GetMaskedXML();
  /// Result: the XML, in which the node that `pszXPath` selects is written as the paged node of
  /// GetXMLHelper; with a null path there is no such node.
  /// Effects: a path that selects nothing is logged (type 18, severity 4), and no node is paged.
  /// Deliberate: the body of that event is a BSTR that is not freed, for the sink to keep.
  _bstr_t GetFilteredXML(const char* pszXPath, int nFirst, int nCount, int nCurPage, int nNumPages,
                         const char* pszPadTemplate);

  // ---- Place in the tree (NodePlace.cpp)

  /// Empties `out` and writes the path of this node into it: the names of the elements from the top
  /// of the tree down to this node, each behind a '/'. Such a path is meant for messages; it need
  /// not select the node. Cost: linear in the depth.
  void GetPathToNode(CMemFile& out);
  /// Appends the path of `pNode` to `out`; nothing for null.
  void GetPathToNodeHelper(IXMLDOMNode* pNode, CMemFile& out);

  // ---- Steps of a path (XMLNodeStep.cpp, XMLNodeMatch.cpp)

  /// Splits a step into its name and its predicates, which begin with the first '['.
  /// Out: copies on the C heap, the caller's (free); without predicates the second is null.
  /// Result: 1; 0 with a log event (type 18, severity 3) when an argument is null.
  int ParseXPathQuery(const char* query, char** name, char** predicates);
  /// Splits one predicate into the name that it tests and the value that it asks for. The name of
  /// an element keeps the path in front of it, that of an attribute does not. Out: copies on the C
  /// heap, the caller's (free), or null. Result: 1; 0 when an argument is null.
  int ParseXPathSubquery(const char* subquery, bool* hasPath, char** elementName,
                         char** attributeName, char** value, bool* quoted);
  /// Result: 1 when this is an element that has the name of the step and satisfies all its
  /// predicates; else 0. Effects: malformed predicates, and a null step, are logged (type 18,
  /// severity 3). Cost: linear in the nodes and texts that the predicates look at.
  int MatchQuery(const char* step);
  /// Result: 1 when a child or an attribute of this node satisfies the predicate, which is the text
  /// between the brackets; 0 when none does, and for null.
  int MatchesSubquery(const char* predicate);
  /// Result: 1 when `candidate` satisfies the predicate; 0 when it does not, and for null.
  int MatchSubqueryHelper(IXMLDOMNode* candidate, const char* predicate);

  // ---- Selection (XMLNodeSelect.cpp)
  //
  // A path that begins with '/' starts at the owner document, and any other at this node. One that
  // begins with "//" is searched for at every element below. A null or empty path selects this
  // node. Effects: those of MatchQuery for each node that is tested.

  /// Result: a new list of all selected nodes, the caller's; never null.
  /// Cost: no node is tested more often than the path has steps. The text of an element with more
  /// than a few nodes below it is read once for all predicates, unless reading it logs or prints.
  IXMLDOMNodeList* SelectNodes(const char* path);
  IXMLDOMNodeList* SelectNodes(_bstr_t path);
  /// Out: the list of SelectNodes. Result: S_OK, also for an empty list; E_ARGUMENT for a null
  /// `out`.
  HRESULT selectNodes2(char* path, IXMLDOMNodeList** out);
  /// Result: the first node that a depth-first search meets, with a reference added; null when
  /// there is none. Behind "//" with several steps this need be the first neither in document order
  /// nor in the list of SelectNodes. The path "/" selects this node. The steps "." and ".." mean
  /// the node itself and its parent here, and nowhere else. Cost: each node is tested at most once
  /// with each step, as long as no test logs or prints anything. Otherwise each is tested up to 64
  /// times with each step, on average where the path has steps "." or "..", which also take memory
  /// for each node.
  IXMLDOMNode* SelectSingleNode(const char* path);
  IXMLDOMNode* SelectSingleNode(_bstr_t path);
  /// Out: the node of SelectSingleNode. Result: S_OK; S_FALSE when there is none; E_ARGUMENT for a
  /// null `out`.
  HRESULT selectSingleNode2(const char* path, IXMLDOMNode** out);
  /// Adds to `result` what the steps of `list`, from the one at `step` on, select from `node`
  /// downwards. When no step is left, that is `node` itself. Bad input: a null `node` or `result`
  /// adds nothing.
  void SelectNodesHelper(IXMLDOMNode* node, CXPathList& list, IXMLDOMNodeList* result, int step);
  /// Calls SelectNodesHelper with all steps for `node` and for every element below it, in document
  /// order.
  void SelectNodesTraverse(IXMLDOMNode* node, CXPathList& list, IXMLDOMNodeList* result);
  /// Searches for one node that the steps of `list`, from the one at `step` on, select at `node`;
  /// with a `step` of -1 the search starts below `node`. Result: the first that is met, with a
  /// reference added; null when there is none, and for a null `node`.
  IXMLDOMNode* SelectSingleNodeHelper(IXMLDOMNode* node, CXPathList& list, int step);

  // ---- Editing at a path (XMLNodePathEdit.cpp)
  //
  // `pcszXPath` selects one node, the target, as SelectSingleNode does; but "/" called at a
  // document selects its root element. `pcszContent` is XML, whose root element is the new node.
  // Result: 1 when the edit was made. 0, with nothing changed, when an argument is null, the path
  // selects nothing or the content does not parse, each of which is logged; also 0, without a log
  // event, when the edit needs a parent of the target and there is none.
  // Effects: a CLogException* may leave these members. Any other exception ends in the handler for
  // unexpected exceptions, which ends the program. Deliberate: when the edit itself fails, the
  // exception leaves Append, Insert and Remove with their reference to the target kept, and Append
  // and Insert also with that to the document of the content; nobody drops these.

  /// Puts the content in the place of the target.
  /// Effects: a CLogException* is logged (type 25, severity 1) before it leaves this member.
  int ReplaceChildAtXPath(const char* pcszXPath, const char* pcszContent)
      XMLDOM_THROWS(CLogException*);
  /// Adds the content as last child of the target.
  int AppendChildAtXPath(const char* pcszXPath, const char* pcszContent)
      XMLDOM_THROWS(CLogException*);
  /// Adds the content before the target. Refuses "/" and "/*", with a log event.
  int InsertBeforeXPath(const char* pcszXPath, const char* pcszContent)
      XMLDOM_THROWS(CLogException*);
  /// Removes the target.
  int RemoveChildAtXPath(const char* pcszXPath) XMLDOM_THROWS(CLogException*);

 private:
  friend struct xmldom::Uncounted;

  // Makes a node like the one without arguments, but does not count it.
  XMLDOM_HIDDEN explicit IXMLDOMNode(const xmldom::Uncounted&);
};

/// Drops the reference that the caller holds through `p`, and sets `p` to null. A null pointer is
/// left alone.
XMLDOM_API void Release(IXMLDOMNode*& p);

/// Result: 1 when `s` has exactly `n` bytes and they equal the first `n` bytes of `sub`; else 0,
/// also when either is null.
XMLDOM_API int StringMatchesSubString(const char* s, const char* sub, int n);

#endif
