#ifndef XMLDOM_PARSE_XMLSAX_H
#define XMLDOM_PARSE_XMLSAX_H

#include <xmldom/base/Export.h>
#include <xmldom/dom/Results.h>
#include <xmldom/parse/ExpatImpl.h>
#include <xmldom/parse/NodeStack.h>

class IXMLDOMDocument2;
class IXMLDOMNode;

namespace xmldom {
class EntityNesting;
class GrowingTree;
struct LoadReport;
}  // namespace xmldom

class CXMLSax;

// Applications use the instance of the library, so that a parser and the trampolines that were
// installed on it never come from two different ones.
extern template class XMLDOM_API CExpatImpl<CXMLSax>;

/// Builds the tree of a document from the events of an Expat parser. A document makes a builder for
/// each load and keeps it until the next, or until ReleaseParser, because get_parseError asks its
/// parser.
///
/// Applications may also use a builder themselves, for one load, or call its handlers by hand with
/// a stack in m_pNodeStack.
///
/// While a load runs, code of an application runs only in handlers that it has installed on m_p
/// with Expat's functions (XML_SetCommentHandler and the like), and in what these call. A handler
/// may load, build, change and release other documents; query and read the tree that grows, which
/// holds all but the text since the last tag; take references to its nodes, and release its own. It
/// must not change that tree, release the document or load into it, nor call ReleaseParser of the
/// document in a parse that the application runs itself. Nothing may be thrown out of such a
/// handler, since it is Expat that calls it: one of a class that derives from CExpatImpl may throw,
/// and so may a log sink, whose events a load posts when it has ended. After memory has run out for
/// the tree, such a handler may be called again, with null as its user data.
class XMLDOM_API CXMLSax : public CExpatImpl<CXMLSax> {
 public:
  /// Makes a builder for `document`, on which it takes no reference. CreateParser must be called
  /// before a load.
  explicit CXMLSax(IXMLDOMDocument2* document);
  ~CXMLSax();

  CXMLSax(const CXMLSax&) = delete;
  CXMLSax& operator=(const CXMLSax&) = delete;

  CNodeStack* m_pNodeStack;       ///< The open elements, the builder's; null before a load.
  IXMLDOMDocument2* m_pDocument;  ///< The document that is filled.
  int m_bFirstElement;            ///< Not 0 from the beginning of a load to its first start tag.

  static int m_iObjCount;  ///< Live builders.

  /// Adds an element and opens it; does nothing without a stack. `attributes` is name, value, name,
  /// value, ..., null, or null. Effects: std::bad_alloc when memory is out.
  void OnStartElement(const char* name, const char** attributes);
  /// Closes the innermost open element, whatever its name; does nothing when none is open.
  void OnEndElement(const char* name);
  /// Appends text or other markup, as written, to the text of the innermost open element; does
  /// nothing when none is open, nor for white space alone when the document has formatted layout.
  /// Effects: std::bad_alloc when memory is out.
  void OnDefault(const char* text, int length);

  /// Empties the document and loads a text; null counts as empty. Result: whether it parsed.
  /// Effects: those of IXMLDOMDocument2::loadXML.
  bool LoadXML(const char* text);
  /// Empties the document and loads a file. Result: S_OK; S_FALSE when it did not parse;
  /// E_FILENOTOPENED when it could not be opened, and the document stays as it was.
  /// Effects: those of IXMLDOMDocument2::load: errno is set; a CLogException* passes through; any
  /// other exception gives S_FALSE.
  HRESULT LoadFromFile(const char* path);

  /// Writes the tag at the parser's current position into `buffer`, at most `size` - 1 bytes of it;
  /// "undefined" when Expat has no input. A `size` below 1 writes nothing. Result: `buffer`.
  char* GetErrorTag(char* buffer, int size);
  /// Writes reason, tag, line and column into `buffer` as one text, at most `size` - 1 bytes of it,
  /// which has several lines when the tag has. Result: `buffer`.
  char* GetErrorStr(char* buffer, int size);

 private:
  friend class IXMLDOMDocument2;
  friend class xmldom::GrowingTree;

  XMLDOM_HIDDEN XML_Error LoadError();
  XMLDOM_HIDDEN void FillReport(xmldom::LoadReport* report, char* tag);
  XMLDOM_HIDDEN void StartLoad();
  XMLDOM_HIDDEN HRESULT ReadAndParse(const char* path, int* error);
  XMLDOM_HIDDEN bool ParseWhole(const char* text, unsigned long long length, bool isInBuffer);
  XMLDOM_HIDDEN void Refuse(const char* format, unsigned long long number);
  XMLDOM_HIDDEN void PostRefusal() const;
  XMLDOM_HIDDEN void EndParse();
  XMLDOM_HIDDEN bool Drops(const char* text, int length) const;
  XMLDOM_HIDDEN void WatchProlog(const char* text, int length);
  XMLDOM_HIDDEN void CountDefault(const IXMLDOMNode& attribute);
  XMLDOM_HIDDEN void StartElementByHand(const char* name, const char** attributes);
  XMLDOM_HIDDEN void AppendTextByHand(const char* text, int length);

  // What Expat does not know of, or has another code for: XML_ERROR_NO_MEMORY from the beginning of
  // a load to the beginning of its parse, because nothing else can end a load there; that of an
  // amplification when the load was ended for its default attributes; otherwise XML_ERROR_NONE.
  XML_Error m_error;
  // Not null while a load runs its parse; the second only where Expat expands entities by
  // recursion.
  xmldom::GrowingTree* m_pTree;
  xmldom::EntityNesting* m_pEntityNesting;
  // The format and the number of the event of a text that was refused; null when it was not.
  const char* m_refusal;
  unsigned long long m_refusalNumber;
  unsigned long long m_textSize;      // in bytes
  unsigned long long m_defaultsSize;  // what the default attributes take so far, in bytes
};

#endif
