#ifndef XMLDOM_TOOLS_DOCUMENT_RESULTCHECK_H
#define XMLDOM_TOOLS_DOCUMENT_RESULTCHECK_H

#include <string>

class IXMLDOMNode;

namespace tool {

class SourceEncoding;

// The library writes texts as they are stored, and stores the pieces of an element's text joined,
// without those that are white space alone. At a place where something was dropped, or an element
// stood, the characters on both sides can become "]]>" together. What is written is then no XML, or
// XML with other elements: "<a>]]<b/>></a>" does the one,
// "<a><![CDATA[]]", a line end, "><b/><![CDATA[]]></a>" the other.

/// What XML that was written of a tree is meant to be.
enum class ResultKind {
  kDocument,  ///< A document with its document type, which is loaded as it is.
  kFragment,  ///< Elements alone: whoever puts them into a document declares their entities.
  kMasked     ///< A document without texts and values.
};

/// What is wrong with written XML.
struct ResultProblem {
  const IXMLDOMNode* element = nullptr;  ///< Of which it was written; null when nothing is wrong.
  std::string reason;  ///< What becomes of that element, as the end of a sentence.
};

/// Parses XML that the library has written of the element `root`, with or without a frame around
/// it, and compares it with the tree: the names of all elements, in their order, and the text of
/// each of them with its comments, references and so on, but without white space.
/// Result: the first problem, or none. The XML is then well-formed, has the elements of the tree,
/// and no text of the tree changes the markup behind it: any part of the tree can be written too.
/// Effects: std::bad_alloc. Cost: linear, with what the entities of a frame expand to; no tree is
/// made, and the stack does not grow.
ResultProblem FindResultProblem(const char* xml, const IXMLDOMNode& root, ResultKind kind);

/// Whether FindResultProblem can find anything but references to entities that are declared
/// elsewhere.
/// `source` is the encoding of the text that the tree was loaded from, and `xml` is all or a part
/// of the tree, NUL-terminated. Cost: linear in `xml`; nothing is parsed and no memory taken.
bool NeedsResultCheck(const SourceEncoding& source, const char* xml, ResultKind kind);

/// Does what FindResultProblem does where NeedsResultCheck asks for it, so that most XML is not
/// parsed.
ResultProblem CheckResult(const SourceEncoding& source, const char* xml, const IXMLDOMNode& root,
                          ResultKind kind);

}  // namespace tool

#endif
