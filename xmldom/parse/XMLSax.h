#ifndef XMLDOM_PARSE_XMLSAX_H
#define XMLDOM_PARSE_XMLSAX_H

#include <xmldom/base/Export.h>
#include <xmldom/dom/Results.h>
#include <xmldom/parse/ExpatImpl.h>
#include <xmldom/parse/NodeStack.h>

class IXMLDOMDocument2;

namespace xmldom {
class EntityNesting;
class GrowingTree;
}  // namespace xmldom

class CXMLSax;

// The library's own instance serves everybody, so that a parser and its handlers never come from
// two.
extern template class XMLDOM_API CExpatImpl<CXMLSax>;

/// Builds the tree of a document from Expat's events. A document makes one for each load and keeps
/// it until the next, so that its parse error can be asked for.
///
/// While a load runs, code of an application runs only in handlers that it has installed on m_p
/// with Expat's functions (XML_SetCommentHandler and the like), and in what these call. A handler
/// may load, build, change and release other documents; query and read the tree that grows, which
/// holds all but the text since the last tag; take references to its nodes, and release its own. It
/// must not change that tree, release the document or load into it. Nothing may be thrown out of
/// such a handler, since it is Expat that calls it: one of a class that derives from CExpatImpl may
/// throw, and so may a log sink, whose events a load posts when it has ended.
class XMLDOM_API CXMLSax : public CExpatImpl<CXMLSax> {
 public:
  /// A builder without parser; `document` is not referenced.
  explicit CXMLSax(IXMLDOMDocument2* document);
  ~CXMLSax();

  CXMLSax(const CXMLSax&) = delete;
  CXMLSax& operator=(const CXMLSax&) = delete;

  CNodeStack* m_pNodeStack;       ///< The open elements; null before a load.
  IXMLDOMDocument2* m_pDocument;  ///< The document being filled.
  int m_bFirstElement;            ///< True until the first start tag of a load.

  static int m_iObjCount;  ///< Live builders.

  /// Opens an element: `attributes` is name, value, name, value, ..., null.
  void OnStartElement(const char* name, const char** attributes);
  /// Closes the innermost open element; the name is not looked at.
  void OnEndElement(const char* name);
  /// Appends text or other markup, as written, to the text of the innermost open element.
  void OnDefault(const char* text, int length);

  /// Empties the document and loads a text; null counts as empty. Result: whether it parsed.
  bool LoadXML(const char* text);
  /// Empties the document and loads a file. Result: S_OK; S_FALSE when it did not parse;
  /// E_FILENOTOPENED when it could not be opened, the document then stays as it was.
  /// Effects: a CLogException* passes through; any other exception gives S_FALSE.
  HRESULT LoadFromFile(const char* path);

  /// Fills `buffer` with the tag around the current position, cut to `size` - 1 bytes; "undefined"
  /// when Expat has none. A `size` below 1 writes nothing. Result: `buffer`.
  char* GetErrorTag(char* buffer, int size);
  /// Fills `buffer` with reason, tag (which may have several lines), line and column, cut to `size`
  /// - 1 bytes. Result: `buffer`.
  char* GetErrorStr(char* buffer, int size);

 private:
  friend class IXMLDOMDocument2;

  /// What became of a text.
  struct Outcome {
    bool parsed;
    bool nestsTooDeep;          ///< Refused for a chain of entities.
    unsigned long long excess;  ///< The size of a text that was refused for it, else 0.
  };

  XMLDOM_HIDDEN XML_Error LoadError();
  XMLDOM_HIDDEN void StartLoad();
  XMLDOM_HIDDEN Outcome ParseWhole(const char* text, unsigned long long length);
  XMLDOM_HIDDEN static void Post(const Outcome& outcome);
  XMLDOM_HIDDEN void EndParse();
  XMLDOM_HIDDEN bool Drops(const char* text, int length) const;
  XMLDOM_HIDDEN void WatchProlog(const char* text, int length);
  XMLDOM_HIDDEN void StartElementByHand(const char* name, const char** attributes);
  XMLDOM_HIDDEN void AppendTextByHand(const char* text, int length);

  // From the start of a load to its parse XML_ERROR_NO_MEMORY, the only reason why it could end
  // there; else XML_ERROR_NONE.
  XML_Error m_errorBeforeParse;
  // Both only while a parse runs:
  xmldom::GrowingTree* m_pTree;
  xmldom::EntityNesting* m_pEntityNesting;
};

#endif
