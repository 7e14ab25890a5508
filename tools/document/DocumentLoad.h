#ifndef XMLDOM_TOOLS_DOCUMENT_DOCUMENTLOAD_H
#define XMLDOM_TOOLS_DOCUMENT_DOCUMENTLOAD_H

#include <tools/io/SourceText.h>

#include <xmldom/xmldom_ptr.h>

#include <string>

class IXMLDOMDocument2;

namespace tool {

struct Input;

/// What is wrong with a text that is not well-formed, and where.
struct LoadProblem {
  SourcePosition position;
  std::string reason;
};

/// Makes the tree of a text.
/// Result: the document; null when the text is not well-formed. Out: `problem` then says why.
/// Throws: std::bad_alloc also when it is the parser that has no memory, because that says nothing
/// of the text.
XMLPtr<IXMLDOMDocument2> LoadText(const std::string& text, LoadProblem& problem);

/// Turns an input in UTF-16, at whose NUL bytes the library would take the text to end, into UTF-8.
/// One in any other encoding stays as it is. Result: false when it is not right UTF-16. Effects:
/// what is wrong is then written to standard error, with the place.
bool DecodeUtf16(Input& input);

/// Makes the tree of an input. Bad input: one in UTF-16 is refused, see DecodeUtf16.
/// Result: the document; null when the input is not well-formed. Effects: what is wrong is then
/// written to standard error, with the place.
XMLPtr<IXMLDOMDocument2> LoadDocument(const Input& input);

}  // namespace tool

#endif
