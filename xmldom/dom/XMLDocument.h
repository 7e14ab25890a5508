#ifndef XMLDOM_DOM_XMLDOCUMENT_H
#define XMLDOM_DOM_XMLDOCUMENT_H

#include <xmldom/dom/XMLNode.h>
#include <xmldom/support/variant.h>

class CXMLSax;
class IXMLDOMParseError;

namespace xmldom {
struct LoadReport;
}

/// The root of a tree: a node of type NODE_DOCUMENT that loads XML. Make one with Create().
///
/// Loading: every load empties the document first, except when a file cannot be opened. After a
/// text that does not parse, the document holds the tree that was built up to the error. Comments,
/// processing instructions and the delimiters of CDATA sections are kept as text inside the root
/// element, and dropped outside of it. With FORMATTED_LAYOUT, text is dropped where the
/// parser hands over a piece of nothing but white space.
///
/// Ownership: the document holds no references to the nodes that it hands out, nor these to it. A
/// node that was in the tree when the document was destroyed has no owner document any more, except
/// for attributes. Links dangle in such attributes, in a node that was never linked into the tree,
/// and below one that was taken out of it: docs/ownership.md has a table. A load releases the
/// former tree without clearing its links. So a former root element that somebody holds still has
/// the document as owner and as parent; no member can move it until m_pParent is set to null.
class XMLDOM_API IXMLDOMDocument2 : public IXMLDOMNode {
 public:
  /// Makes an empty document with formatted layout off and an indent of 4. Those that Create()
  /// makes differ in both.
  IXMLDOMDocument2();
  ~IXMLDOMDocument2() override;

  /// Bits of m_uFlags.
  enum {
    FORMATTED_LAYOUT = 1  ///< White space is dropped on loading, and lines are indented on writing.
  };

  unsigned int m_uFlags;  ///< FORMATTED_LAYOUT or 0.
  /// The builder of the latest load, owned; null before the first load and after ReleaseParser. A
  /// load by the builder that is here counts its nodes when it ends, also one that an application
  /// has put here with handlers of its own.
  CXMLSax* m_pSax;
  int m_nIndent;  ///< By how many blanks each level is indented on writing.

  static int m_iObjCount;  ///< How many documents exist.

  /// Makes a node that has this document as owner and hangs nowhere yet. Its type is the integer in
  /// `type`, whatever `vt` says, and is not checked. `namespaceURI` is ignored. A null `name` makes
  /// a node without name. Out: the node, the caller's. Result: S_OK; E_ARGUMENT for a null
  /// `ppNode`.
  HRESULT createNode(tagVARIANT type, char* name, char* namespaceURI, IXMLDOMNode** ppNode);

  /// Out: a new object that describes the outcome of the latest load, the caller's.
  /// Result: S_OK; E_ARGUMENT for a null `ppError`.
  HRESULT get_parseError(IXMLDOMParseError** ppError);

  /// Frees the parser and what it keeps of the text, which is up to twice its size, and keeps what
  /// get_parseError tells: its answers stay the same until the next load. m_pSax is null
  /// afterwards, as before the first load. The tree stays as it is, and the next load makes a new
  /// parser. Does nothing without a builder, nor when a handler calls it while a load of this
  /// document runs. Effects: std::bad_alloc when memory is out, and nothing is changed. What is
  /// kept is one block of less than 600 bytes, which no counter counts. Bad input: asserts, as
  /// get_parseError does, when the builder's parser was destroyed by hand.
  void ReleaseParser();

  /// Loads a text; a null one counts as empty.
  /// Result: VARIANT_TRUE when it parsed, else VARIANT_FALSE. Effects: three kinds of text do not
  /// parse and are logged when the load has ended (type 18, severity 3): one of more than INT_MAX
  /// bytes; one whose default attributes take more than 8 MiB, and more than 100 times its size
  /// unless SetMaxDefaultsFactor has set another factor; and, with versions of Expat before 2.7,
  /// which expand entities by recursion, one that declares a chain of more than 256 entities that
  /// each refer to the next. Every attribute that is read sets the error code to 0. Cost: linear in
  /// the text and in what its entities and default attributes add to it; and for each start tag, in
  /// the attributes that the document type declares for the element. Asserts when there is no
  /// memory for a parser.
  short loadXML(const char* xml);
  /// Loads a text as the function above. Out: the result of that function. Result: S_OK; S_FALSE
  /// when the text did not parse; E_ARGUMENT for a null `pbSuccess`, and nothing is loaded.
  HRESULT loadXML(char* xml, short* pbSuccess);
  /// Loads a file, up to its first NUL byte. Out: VARIANT_TRUE when it parsed, else VARIANT_FALSE.
  /// Result: S_OK; S_FALSE when it did not parse; E_FILENOTOPENED when it could not be opened or
  /// `path` is null, and the tree stays; E_ARGUMENT for a null `pbSuccess`, and nothing is loaded.
  /// Effects: those of loading a text. A CLogException* that is thrown while the file is read and
  /// parsed leaves this member; any other exception makes the result S_FALSE. When memory was out,
  /// the error code is 1 when that was before the parse began, and 35 when it was a handler that
  /// needed it. With each of the first three results errno is set: to 0 when the file was read to
  /// its end, whatever came of the text; otherwise to the reason of the system, such as ENOENT,
  /// EACCES, EISDIR for a directory or EIO; to EINVAL for a null `path`, to EFBIG for a file of
  /// more than INT_MAX bytes, and to ENOMEM when there was no memory to read it into. What was read
  /// before an error is parsed, so that errno tells of it also with S_OK.
  HRESULT load(char* path, short* pbSuccess);

  /// Out: the root element with a reference added, or null. Result: S_OK; S_FALSE when the document
  /// is empty; E_ARGUMENT for a null `ppRoot`.
  HRESULT get_documentElement(IXMLDOMNode** ppRoot);

 private:
  XMLDOM_HIDDEN void ResetBuilder();
  XMLDOM_HIDDEN void DestroyBuilder();

  // What ReleaseParser has kept of the latest load, on the C heap, or null. It holds only while
  // m_pSax is null, which an application may change.
  xmldom::LoadReport* m_pReport;
};

/// Makes an empty document with formatted layout and an indent of 2.
/// Out: the document, the caller's. Result: always true. Effects: std::bad_alloc when memory is
/// out. Bad input: `ppDoc` must not be null.
XMLDOM_API bool Create(IXMLDOMDocument2** ppDoc);

/// Sets how many times the size of a text its default attributes may take; 100 unless it is set.
/// They are those that a document type declares and the tags do not have; each takes the size of a
/// node record, and its name and its value as they are stored, with their terminators. At an
/// element with which they take more, and more than 8 MiB, the load ends with the tree up to there.
/// Its error code is 43, Expat's for too much amplification, or 35 with an Expat before 2.4.
XMLDOM_API void SetMaxDefaultsFactor(unsigned int factor);

#endif
