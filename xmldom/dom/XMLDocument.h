#ifndef XMLDOM_DOM_XMLDOCUMENT_H
#define XMLDOM_DOM_XMLDOCUMENT_H

#include <xmldom/dom/XMLNode.h>
#include <xmldom/support/variant.h>

class CXMLSax;
class IXMLDOMParseError;

/// The root of a tree: a node of type NODE_DOCUMENT that loads XML. Make one with Create().
///
/// Every load empties the document first, except when a file cannot be opened. A text that does not
/// parse leaves the tree built up to the error. Comments, processing instructions and CDATA
/// delimiters inside the root element are kept as text; what stands outside it is dropped, and so
/// are runs of white space alone.
/// References: the document does not keep the nodes alive that were handed out, nor they it. A node
/// that outlives its document has no owner, but for the first attribute of an element, whose links
/// dangle then. A load lets go of the former tree without clearing its links: a root element that
/// is held keeps its owner, and the document as its parent, so that no call can move it before
/// m_pParent is set to null.
class XMLDOM_API IXMLDOMDocument2 : public IXMLDOMNode {
 public:
  /// An empty document with formatted layout off and an indent of 4; Create() sets both otherwise.
  IXMLDOMDocument2();
  ~IXMLDOMDocument2() override;

  /// Bits of m_uFlags.
  enum {
    FORMATTED_LAYOUT = 1  ///< Drop white space on loading, indent on writing.
  };

  unsigned int m_uFlags;  ///< FORMATTED_LAYOUT or 0.
  CXMLSax* m_pSax;  ///< The builder of the latest load, the document's; null before the first.
  int m_nIndent;    ///< Blanks a level when written.

  static int m_iObjCount;  ///< Live documents.

  /// Makes a detached node of this document. The type is the integer in `type`, stored unchecked,
  /// whatever `vt` says; `namespaceURI` is ignored; a null `name` makes a node without name.
  /// Out: the node, the caller's. Result: S_OK; E_ARGUMENT for a null `ppNode`.
  HRESULT createNode(tagVARIANT type, char* name, char* namespaceURI, IXMLDOMNode** ppNode);

  /// Out: a new object that tells the outcome of the latest load, the caller's.
  /// Result: S_OK; E_ARGUMENT for a null `ppError`.
  HRESULT get_parseError(IXMLDOMParseError** ppError);

  /// Loads a text; null counts as empty. Result: VARIANT_TRUE when it parsed, else VARIANT_FALSE.
  /// Effects: a text over INT_MAX bytes does not parse, nor one that declares a chain of more than
  /// 256 entities that each refer to the next where Expat expands them by recursion (before 2.7).
  /// Either is logged when the load has ended (type 18, severity 3). Attributes clear the error
  /// code. Cost: linear in the text.
  short loadXML(const char* xml);
  /// Loads a text as the other one does. Out: what that returns. Result: S_OK; S_FALSE when it did
  /// not parse; E_ARGUMENT for a null `pbSuccess`, and nothing is loaded.
  HRESULT loadXML(char* xml, short* pbSuccess);
  /// Loads a file; a NUL byte ends it. Out: whether it parsed. Result: S_OK; S_FALSE when it did
  /// not parse; E_FILENOTOPENED when it could not be opened or `path` is null, the tree then stays;
  /// E_ARGUMENT for a null `pbSuccess`, and nothing is loaded. Effects: those of loading a text. A
  /// CLogException* passes through; any other exception while it is read and parsed gives S_FALSE:
  /// out of memory then has the code 1 before the parse has begun, and 35 within it.
  HRESULT load(char* path, short* pbSuccess);

  /// Out: the root element with a reference added, or null. Result: S_OK; S_FALSE when the document
  /// is empty; E_ARGUMENT for a null `ppRoot`.
  HRESULT get_documentElement(IXMLDOMNode** ppRoot);

 private:
  XMLDOM_HIDDEN void ResetBuilder();
  XMLDOM_HIDDEN void DestroyBuilder();
};

/// Makes an empty document with formatted layout and an indent of 2.
/// Out: the document, the caller's. Result: always true. Effects: std::bad_alloc when memory is
/// out. Bad input: `ppDoc` must not be null.
XMLDOM_API bool Create(IXMLDOMDocument2** ppDoc);

#endif
