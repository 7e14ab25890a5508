#ifndef XMLDOM_DOM_XMLNODE_H
#define XMLDOM_DOM_XMLNODE_H

#include <xmldom/base/Export.h>
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

/// What a node is. The library itself creates elements, attributes, texts and documents;
/// IXMLDOMDocument2::createNode stores any number. "Value" is what get_nodeValue gives.
typedef enum tagDOMNodeType : int {
  NODE_INVALID = 0,                 ///< A node made without arguments; has no value.
  NODE_ELEMENT = 1,                 ///< Its value is its text, as get_nodeTypedValue has it.
  NODE_ATTRIBUTE = 2,               ///< Has a value.
  NODE_TEXT = 3,                    ///< Has a value; its name is "#Text".
  NODE_CDATA_SECTION = 4,           ///< Has no value.
  NODE_ENTITY_REFERENCE = 5,        ///< Has no value.
  NODE_ENTITY = 6,                  ///< Has no value.
  NODE_PROCESSING_INSTRUCTION = 7,  ///< Has a value.
  NODE_COMMENT = 8,                 ///< Has a value.
  NODE_DOCUMENT = 9,                ///< An IXMLDOMDocument2; has no value.
  NODE_DOCUMENT_TYPE = 10,          ///< Has no value.
  NODE_DOCUMENT_FRAGMENT = 11,      ///< Has no value.
  NODE_NOTATION = 12                ///< Has no value.
} DOMNodeType;

/// One node of a tree: element, attribute, text or document.
///
/// References: a node is born with one, its creator's; linking it into a tree hands that one to the
/// tree. A node holds one reference to its next sibling, its first child and its first attribute;
/// parent and owner document hold none. Whatever hands a node out adds a reference unless it says
/// otherwise; drop it with Release(). The last release of a node destroys what hangs below it and
/// all siblings that follow it, but for nodes that somebody else still refers to.
/// Text is stored escaped, as XML writes it: references stay references until text is read.
/// Derived classes: a node of one is destroyed once, through its destructor, where its turn comes:
/// after the node that links to it, siblings before children before attributes. That destructor may
/// use the node's own fields only, because the tree around it is being taken apart.
/// Stack: no member recurses, whatever the depth or the breadth of the tree; only destruction goes
/// one level deeper for each node of a derived class that dies with another one above or before it.
/// Threads: one at a time uses the library, also for trees of its own: all share its counters.
class XMLDOM_API IXMLDOMNode : public CRefCountedObject {
 public:
  // ---- Record
  //
  // Applications may read the fields; the members below write them. Those who change links or
  // owners themselves must know two things, which no member can notice in constant time:
  //  - What is added to a chain may come to hang behind its former last node, when links in the
  //    middle were cut by hand and the chain has kept its head and its last two nodes. Any release
  //    of a node, and any that is taken out with a member, makes the next call look anew.
  //  - insertBefore and replaceChild give the siblings that follow the owner document too, but look
  //    at the next sibling alone to tell whether they lack it. After RecurseSetDocument for any
  //    node that has a parent, they visit them all.

  char* m_pszNodeName;             ///< C heap; "#Text" for texts, "Document Root" for documents.
  char* m_pszValue;                ///< C heap, or null.
  IXMLDOMNode* m_pNextSibling;     ///< Next in the chain of children, or of attributes.
  IXMLDOMNode* m_pFirstChild;      ///< Head of the chain of children, in document order.
  IXMLDOMNode* m_pFirstAttribute;  ///< Head of the chain of attributes, in document order.
  IXMLDOMNode* m_pParent;          ///< Not referenced; may dangle once the tree is gone.
  IXMLDOMDocument2* m_pOwnerDocument;  ///< Not referenced. A document's own is itself.
  tagDOMNodeType m_eNodeType;          ///< What this is.

  static int m_iObjCount;  ///< Live nodes, documents included.

  // ---- Lifetime (XMLNodeLifetime.cpp)

  /// A detached node. Name and value are copied; null stays null.
  /// Effects: std::bad_alloc when memory is out.
  IXMLDOMNode(IXMLDOMDocument2* doc, const char* name, const char* value, tagDOMNodeType type);

  /// A node of type NODE_INVALID without name or value that is its own owner document: the base of
  /// a document.
  IXMLDOMNode();

  /// Clears the owner document of all nodes below and of the following siblings, and the parent of
  /// those siblings and of the level below; then drops the references that this node holds.
  /// Cost: linear in what is destroyed; nothing is allocated.
  ~IXMLDOMNode() override;

  /// Releases attributes, children and following siblings, and frees the value, and the name if
  /// `bFreeName`. Type, parent and owner document stay.
  void ClearNode(bool bFreeName);

  /// Sets the owner document of this node, of its following siblings and of all below them.
  /// Attributes keep theirs. Cost: linear in the nodes visited. For a node that has a parent, it
  /// also makes later insertions visit the siblings that follow the new node.
  void RecurseSetDocument(IXMLDOMDocument2* doc);

  /// Clears the owner document of this node, of its following siblings and of all below them, and
  /// the parent of those no more than one level below depth 0; `depth` is the level of this node.
  /// A node without owner counts as cleared: it is passed over with all below it, and so is a
  /// chain of children whose first has none. Attributes are not visited.
  /// Cost: linear in the nodes visited.
  void RecurseClearDocument(int depth);

  // ---- COM-style accessors (XMLNode.cpp)
  //
  // Each returns E_ARGUMENT for a null out-pointer and does nothing else then. Out-pointers receive
  // a node with a reference added, or null. Those marked "asserts" abort on a null `this`.

  /// Result: S_OK, also when there is no parent.
  HRESULT get_parentNode(IXMLDOMNode** out);
  /// Asserts. Result: S_OK; S_FALSE when there is none.
  HRESULT get_firstChild(IXMLDOMNode** out);
  /// Result: S_OK; S_FALSE when there is none. Cost: linear in the children.
  HRESULT get_lastChild(IXMLDOMNode** out);
  /// Asserts. Result: S_OK; S_FALSE when there is none.
  HRESULT get_nextSibling(IXMLDOMNode** out);
  /// Result: S_OK; S_FALSE for a first child and for a node without parent.
  /// Effects: throws a CLogException* when the parent does not list this node among its children,
  /// as for an attribute. Cost: linear in the preceding siblings.
  HRESULT get_previousSibling(IXMLDOMNode** out);
  /// Asserts. Out: a new BSTR, the caller's; null for a node without name. Result: S_OK.
  HRESULT get_nodeName(char** out);
  /// Asserts. Result: S_OK.
  HRESULT get_nodeType(DOMNodeType* out);
  /// Asserts. Out: VARIANT_TRUE or VARIANT_FALSE. Result: S_OK; S_FALSE when there are none.
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
  // Names are compared exactly; a null one finds nothing. A lookup that fails sets CXML's error
  // code; one that succeeds leaves it alone. Cost: linear in the chain that is searched.

  /// The attribute of that name with a reference added, or null (error code 2).
  IXMLDOMNode* GetAttribute(const char* name);
  /// The first child of that name, of any type, with a reference added, or null (error code 4).
  IXMLDOMNode* GetChild(const char* name);
  /// The stored value of the attribute of that name, borrowed until it changes; null when the
  /// attribute has no value or is missing (error code 2).
  const char* GetStrAttribute(const char* name);
  /// The stored value that stands for this node, borrowed until it changes; may be null. It is that
  /// of the first child for an element whose first child is a text, and else the node's own.
  const char* GetStrValue() const;
  /// Steps through the attributes; start with a null `cursor`. Adds no reference.
  /// Result: 1 and the next attribute's name and value, borrowed; 0 with both null at the end,
  /// after which the next call starts again.
  int GetNextAttribute(IXMLDOMNode*& cursor, const char*& name, const char*& value);
  /// How many children are elements.
  int CountChildNodes();
  /// 1 for "curPage" and "numPages", else 0.
  int IsPageAttribute(const char* name) const;
  /// The first child with a reference added, or null.
  IXMLDOMNode* GetfirstChild();

  // ---- Building (XMLNodeBuild.cpp)
  //
  // New nodes go to the end of their chain and get this node's owner document; names and values
  // are copied and must be stored escaped. No node type is checked. Names must not be null.
  // Effects: std::bad_alloc when memory is out, the tree unchanged.
  // Cost: constant for a chain that grew recently, as long as nothing is destroyed or taken out of
  // a tree in between; otherwise linear in the chain.

  /// Links a detached node as last child; the tree takes the caller's reference over. The node, its
  /// following siblings and all below get this node's owner document, attributes aside.
  /// Result: 1; 0 for a null `child`.
  int AddChild(IXMLDOMNode* child);
  /// Adds a new element as last child. Result: the element with a reference added.
  IXMLDOMNode* AddChild(const char* name, const char* value);
  /// Adds a new element at the end of the sibling chain that follows this node, under the same
  /// parent. Result: the element with a reference added.
  IXMLDOMNode* AddSibling(const char* name, const char* value);
  /// Adds a new text as last child; a null text makes a text without value. Result: 1.
  int AddTextChild(const char* text);
  /// Adds a new attribute. Result: 1 (error code 0); 0 when one of that name exists, which keeps
  /// its value (error code 1). Deliberate: a refused call leaves the existing attribute with one
  /// reference more.
  int AddAttribute(const char* name, const char* value);
  /// Sets the value of an attribute, and adds it when it is missing; null stores no value.
  /// Result: 1. Effects: the error code changes only when an attribute is added (0).
  /// Deliberate: each replacement leaves the attribute with one reference more.
  int SetAttribute(const char* name, const char* value);
  /// Appends up to `len` bytes of `text`, or those before its first NUL, to this node's value.
  /// A `len` below 1 and a null text do nothing. Cost: linear in the value.
  void AppendValue(const char* text, int len);
  /// Sets the value of this text, or of the text that is this node's first child; null stores none.
  /// Effects: on any other node only a log event (type 18, severity 3).
  void SetValue(const char* text);

  // ---- Editing (XMLNodeEdit.cpp)
  //
  // A new child that hangs elsewhere is taken out of there first; a document stands for its first
  // child. The out-pointer may be null; it receives a node without a new reference.
  // Result: E_ARGUMENT, with nothing changed, when there is no new child, or when it would come to
  // hang below itself.
  // Effects: throws a CLogException* when a parent does not list a node that names it.
  // Cost: linear in the children passed on the way, and in the subtree of the new child; also in
  // the siblings that follow it and all below them, where insertBefore and replaceChild have to
  // give them this node's owner document: below a node without one, and, unless the last call put a
  // node in front of the same siblings, once RecurseSetDocument or RecurseClearDocument has been
  // called for any node that has a parent.
  //
  // insertBefore and replaceChild drop the siblings that follow a new child without parent, when it
  // is in place. Where they alone have kept this node, it is destroyed with them.

  /// Moves a node to the end of the children. Out: the node, which the tree owns. Result: S_OK.
  /// Deliberate: the root element of a document ends with one reference more.
  HRESULT appendChild(IXMLDOMNode* newChild, IXMLDOMNode** out);
  /// Moves a node before `refChild`. Out: the node, which the tree owns; null when this node was
  /// destroyed with the siblings of the new child. Result: S_OK, also when it
  /// stands there already; S_FALSE when `refChild` names this node as parent but is no child;
  /// E_ARGUMENT when `refChild` is null or has another parent.
  HRESULT insertBefore(IXMLDOMNode* newChild, IXMLDOMNode* refChild, IXMLDOMNode** out);
  /// Puts a node in the place of `oldChild`. Out: `oldChild`, and with it the reference that the
  /// tree held; replaced by itself it stays, and so does that reference. Result: S_OK; E_ARGUMENT
  /// when `oldChild` is null or has another parent.
  HRESULT replaceChild(IXMLDOMNode* newChild, IXMLDOMNode* oldChild, IXMLDOMNode** out);
  /// Takes a child out of the tree. Out: the child, and with it the reference that the tree held.
  /// Result: S_OK; E_ARGUMENT when `oldChild` is null or has another parent.
  HRESULT removeChild(IXMLDOMNode* oldChild, IXMLDOMNode** out);
  /// Takes this node out of where it hangs; the reference that the tree held passes to the caller.
  /// A node without parent stays as it is. Deliberate: only the node itself loses its owner
  /// document.
  void RemoveNodeFromTree();

  // ---- Type and typed value (XMLNode.cpp, XMLNodeType.cpp)
  //
  // What a VARIANT held is freed when it is written, so that a new one needs VariantInit first.

  /// Asserts. Out: the stored value of an attribute, text, processing instruction or comment as
  /// VT_BSTR; VT_EMPTY for any other type; untouched for a type above NODE_NOTATION.
  /// Result: S_OK; E_ARGUMENT for a null `pVal`.
  HRESULT get_nodeValue(VARIANT* pVal);
  /// Asserts. Out: as get_nodeValue, but for an element its text. Result: as get_nodeValue.
  HRESULT get_nodeTypedValue(VARIANT* pVal);
  /// Result: the name of the type as a new BSTR, the caller's.
  /// Effects: throws a CLogException* for a type that has no name.
  BSTR GetNodeTypeString() const;
  /// Out: GetNodeTypeString(). Result: S_OK; E_ARGUMENT for a null `pType`.
  HRESULT get_nodeTypeString(BSTR* pType);

  // ---- Text (XMLNodeText.cpp)
  //
  // The decoded text of all text nodes below: those of a node itself first, then those of its other
  // children, pieces joined by one blank. Attributes have no part in it.
  // Effects: those of TranslateEntities for each piece.
  // Cost: linear in the nodes below and in their text, when it holds no references.

  /// Appends the text to `out`.
  void GetTextHelper(CMemFile& out) const;
  /// Result: the text as a new BSTR, the caller's; empty when there is none.
  BSTR GetTextAsBSTR() const;
  /// Out: the text as a new BSTR, the caller's. Result: S_OK; E_ARGUMENT for a null `pText`.
  HRESULT get_text(BSTR* pText);
  /// Result: the text on the C heap, the caller's (free); null when it is empty.
  char* GetTextAsStr() const;
  /// Copies as much of the text as fits `size` bytes with a terminator into `buf`.
  /// Result: `buf`; null when nothing was copied, `buf` then holds an empty text.
  /// Effects: a text that does not fit is logged (type 18, severity 4), with a backtrace.
  /// Bad input: a null `buf` gives null; its first byte is written even for a `size` below 1.
  char* GetStringValue(char* buf, int size);

  // ---- XML text (XMLWriter.cpp, XMLNodeXML.cpp)
  //
  // Names and values are written as stored; texts stand before other children. A node indents as
  // its owner document says; when it or any node below it has none, all indent by two blanks a
  // level.
  // Effects: std::length_error for a text of 4 GiB or more.
  // Cost: linear in the nodes below, their text and the indentation.

  /// Appends this node's XML to `out`.
  /// `iDepth`: nesting level of this node. `bMasked`: leave all values out.
  /// `pPagedNode`: the node of which only the children at positions `nFirst` (from 1) to
  /// `nFirst` + `nCount` - 1 are written, numbered; null for none. `nCurPage`, `nNumPages`: page
  /// attributes for that node; a negative one means none. `pszPadTemplate`: tag of the rows that
  /// fill up the last page; null for none. `bIndexed`, `nIndex`: number this node.
  /// Effects: stored page attributes that the new ones replace are left out and logged (type 11,
  /// severity 10).
  void GetXMLHelper(CMemFile& out, int iDepth, IXMLDOMNode* pPagedNode, int nFirst, int nCount,
                    int nCurPage, int nNumPages, const char* pszPadTemplate, bool bMasked,
                    bool bIndexed, int nIndex) const;
  /// Result: the XML as a new BSTR, the caller's.
  BSTR GetXML();
  /// Out: the XML as a new BSTR, the caller's. Result: S_OK; E_ARGUMENT for a null `pXml`.
  HRESULT get_xml(BSTR* pXml);
  /// Result: the XML.
  _bstr_t Getxml();
  /// Result: the XML without any value: the structure alone.
  _bstr_t GetMaskedXML();
  /// Result: the XML with the node that `pszXPath` selects paged as GetXMLHelper says; a null path
  /// pages nothing.
  /// Effects: a path that selects nothing is logged (type 18, severity 4), and nothing is paged.
  /// Deliberate: the body of that event is a BSTR that is not freed, for the sink to keep.
  _bstr_t GetFilteredXML(const char* pszXPath, int nFirst, int nCount, int nCurPage, int nNumPages,
                         const char* pszPadTemplate);

  // ---- Place in the tree (XMLNodePath.cpp)

  /// Writes the names of the elements from the top of the tree down to this node into `out`, which
  /// is emptied first, each behind a '/': for messages, not for selecting. Cost: linear in the
  /// depth.
  void GetPathToNode(CMemFile& out);
  /// Appends the path of `pNode` to `out`; null has an empty one.
  void GetPathToNodeHelper(IXMLDOMNode* pNode, CMemFile& out);

  // ---- Steps of a path (XMLNodeStep.cpp, XMLNodeMatch.cpp)

  /// Splits a step into its name and the text of its predicates, from the first '[' on.
  /// Out: copies on the C heap, the caller's (free); no predicates give null.
  /// Result: 1; 0 with a log event (type 18, severity 3) when an argument is null.
  int ParseXPathQuery(const char* query, char** name, char** predicates);
  /// Splits one predicate into the name it tests and the value it wants. An element's name keeps
  /// the path in front of it, an attribute's does not.
  /// Out: copies on the C heap, the caller's (free), or null. Result: 1; 0 when an argument is
  /// null.
  int ParseXPathSubquery(const char* subquery, bool* hasPath, char** elementName,
                         char** attributeName, char** value, bool* quoted);
  /// 1 when this is an element that satisfies the whole step, else 0.
  /// Effects: malformed predicates, and a null step, are logged (type 18, severity 3).
  int MatchQuery(const char* step);
  /// 1 when a child or an attribute satisfies the predicate (the text between the brackets); 0
  /// when none does, and for null.
  int MatchesSubquery(const char* predicate);
  /// 1 when `candidate` satisfies the predicate; 0 when it does not, and for null.
  int MatchSubqueryHelper(IXMLDOMNode* candidate, const char* predicate);

  // ---- Selection (XMLNodeSelect.cpp)
  //
  // A path that begins with '/' starts at the owner document, any other at this node; one that
  // begins with "//" is searched for at every element below. A null or empty path selects the node
  // itself. Effects: those of MatchQuery for each node that is tested.

  /// Result: a new list of all selected nodes, the caller's; never null.
  /// Cost: no node is tested more often than the path has steps.
  IXMLDOMNodeList* SelectNodes(const char* path);
  IXMLDOMNodeList* SelectNodes(_bstr_t path);
  /// Out: the list of SelectNodes. Result: S_OK, also for an empty list; E_ARGUMENT for a null
  /// `out`.
  HRESULT selectNodes2(char* path, IXMLDOMNodeList** out);
  /// Result: the first selected node with a reference added, or null; "/" selects this node. Only
  /// here do steps "." and ".." mean the node itself and its parent.
  /// Cost: each node is tested at most once with each step, unless a test logs or prints something:
  /// then up to 64 times, on average where the path has such steps. These take memory for each
  /// node.
  IXMLDOMNode* SelectSingleNode(const char* path);
  IXMLDOMNode* SelectSingleNode(_bstr_t path);
  /// Out: the node of SelectSingleNode. Result: S_OK; S_FALSE when there is none; E_ARGUMENT for a
  /// null `out`.
  HRESULT selectSingleNode2(const char* path, IXMLDOMNode** out);
  /// Adds what the steps of `list` from `step` on select from `node` downwards to `result`; with no
  /// step left, `node` itself. Bad input: a null `node` or `result` adds nothing.
  void SelectNodesHelper(IXMLDOMNode* node, CXPathList& list, IXMLDOMNodeList* result, int step);
  /// Does so with all steps for `node` and every element below it, in document order.
  void SelectNodesTraverse(IXMLDOMNode* node, CXPathList& list, IXMLDOMNodeList* result);
  /// The first node that the steps of `list` from `step` on select at `node`, with a reference
  /// added, or null; a `step` of -1 starts below `node`. A null `node` gives null.
  IXMLDOMNode* SelectSingleNodeHelper(IXMLDOMNode* node, CXPathList& list, int step);

  // ---- Editing at a path (XMLNodePathEdit.cpp)
  //
  // `pcszXPath` selects one node, the target; "/" stands for this node, and at a document for its
  // root element. `pcszContent` is XML, whose root element is what the edit puts in place.
  // Result: 1 when it was done. 0, with nothing changed, when an argument is null, the path selects
  // nothing or the content does not parse, each logged; and, not logged, when the target has no
  // parent that the edit needs.
  // Effects: only a CLogException* leaves these members. Any other exception ends in the handler
  // for unexpected exceptions, and so ends the program. Deliberate: when the edit itself fails, the
  // exception leaves Append, Insert and Remove with the reference that the call took on the target,
  // and Append and Insert with the one on the document that holds the content.

  /// Puts the content in the place of the target.
  /// Effects: a CLogException* on the way is logged (type 25, severity 1) and passes on.
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
};

/// Drops the reference that `p` holds and nulls `p`; a null pointer is left alone.
XMLDOM_API void Release(IXMLDOMNode*& p);

/// Switches the notice about path debugging; queries print nothing either way.
/// Effects: a log event (type 18, severity 7).
XMLDOM_API void SetDebugXPATH(bool on);

/// Switches the debug line that reading a text with references prints to standard output, with all
/// that was collected so far; on by default. Off, reading prints and formats nothing, so that its
/// cost is linear; unknown references are logged all the same.
/// Effects: a log event (type 18, severity 7).
XMLDOM_API void SetDebugEntities(bool on);

/// Switches the debug decoration of written start tags: the node's address and reference count.
XMLDOM_API void SetDispAddr(bool on);

/// Whether start tags carry the debug decoration.
extern XMLDOM_API bool g_bDispAddr;

/// 1 when `s` has `n` bytes and they equal the first `n` of `sub`, else 0; a null text equals none.
XMLDOM_API int StringMatchesSubString(const char* s, const char* sub, int n);

#endif
