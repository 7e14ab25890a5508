// Has the library make the tree of a text, and turns its parse error into a message with a place.
// The library takes a text to end at its first NUL, so a NUL byte is refused before it is loaded.
// Tested by tests/tool/check_test.bash.

#include <tools/document/DocumentLoad.h>

#include <tools/document/EncodingAdvice.h>
#include <tools/document/SourceEncoding.h>
#include <tools/io/Diagnostics.h>
#include <tools/io/Input.h>
#include <tools/io/SourceExcerpt.h>

#include <xmldom/dom/XMLDocument.h>
#include <xmldom/parse/ParseError.h>

#include <expat.h>

#include <new>

namespace tool {

namespace {

LoadProblem ProblemOf(const IXMLDOMParseError& error, const std::string& text) {
  const SourcePosition position = {static_cast<std::size_t>(error.m_lLine),
                                   static_cast<std::size_t>(error.m_lLinePos) + 1};
  if (error.m_lErrorCode == XML_ERROR_UNKNOWN_ENCODING) {
    return {position, DescribeUnknownEncoding(text)};
  }
  std::string reason = error.m_bstrReason;
  // The source text of an error is the tag that it is about. It begins with something else when the
  // library has found no tag there; that would tell a user nothing.
  if (error.m_bstrSrcText[0] == '<') reason += NearTag(error.m_bstrSrcText);
  return {position, reason};
}

}  // namespace

XMLPtr<IXMLDOMDocument2> LoadText(const std::string& text, LoadProblem& problem) {
  const std::size_t nul = text.find('\0');
  if (nul != std::string::npos) {
    problem = {PositionOf(text, nul), "NUL byte"};
    return nullptr;
  }
  XMLPtr<IXMLDOMDocument2> document;
  Create(document.Out());
  if (document->loadXML(text.c_str()) == VARIANT_TRUE) {
    // Only a text that does not parse is asked about.
    document->ReleaseParser();
    return document;
  }

  XMLPtr<IXMLDOMParseError> error;
  document->get_parseError(error.Out());
  if (error->m_lErrorCode == XML_ERROR_NO_MEMORY) throw std::bad_alloc();
  problem = ProblemOf(*error, text);
  return nullptr;
}

bool DecodeUtf16(Input& input) {
  const SourceEncoding encoding(input.text);
  if (!encoding.IsUtf16()) return true;
  std::string reason;
  input.utf16.swap(input.text);
  const bool isDecoded = encoding.Decode(input.utf16, input.text, reason);
  if (!isDecoded) ComplainAt(input, input.text.size(), reason);
  return isDecoded;
}

XMLPtr<IXMLDOMDocument2> LoadDocument(const Input& input) {
  LoadProblem problem;
  XMLPtr<IXMLDOMDocument2> document = LoadText(input.text, problem);
  if (document == nullptr) ComplainAt(input.name, input.text, problem.position, problem.reason);
  return document;
}

}  // namespace tool
