#ifndef XMLDOM_PARSE_DOCUMENTLOADING_H
#define XMLDOM_PARSE_DOCUMENTLOADING_H

#include <xmldom/base/Characters.h>
#include <xmldom/base/Export.h>
#include <xmldom/dom/Results.h>
#include <xmldom/dom/XMLDocument.h>
#include <xmldom/parse/ParseError.h>
#include <xmldom/ptr/XMLPtr.h>

#include <cerrno>
#include <cstddef>
#include <string>
#include <system_error>

namespace xmldom {

/// Why a document could not be loaded. It converts to true when there is an error. Reason and tag
/// come from outside in part, may have several lines and are not shortened: OneLine() makes them
/// fit a log.
struct LoadError {
  std::error_code system;  ///< Why a file could not be opened or read; no error otherwise.
  long code = 0;           ///< The parser's code of the error; 0 when it has not seen the text.
  std::string reason;      ///< What is wrong, in words.
  long line = 0;           ///< The line of the error, counted from 1; 0 when it has no place.
  long column = 0;         ///< The column of the error, counted from 0, in characters.
  std::string tag;         ///< The tag at the error, up to 511 bytes as they stand in the text.

  /// Whether there is an error.
  explicit operator bool() const noexcept { return !reason.empty(); }
};

/// Makes one line of an error, for logs and terminals: "line 2, column 18: mismatched tag, at
/// </prt>". What is not printable in the tag is escaped (see OneLine for texts).
/// Result: at most `limit` bytes; empty when there is no error.
inline std::string OneLine(const LoadError& error, std::size_t limit = 256) {
  std::string line;
  if (error.line > 0) {
    line = "line " + std::to_string(error.line) + ", column " + std::to_string(error.column) + ": ";
  }
  line += error.reason;
  if (!error.tag.empty()) line += ", at " + error.tag;
  return OneLine(TextArgument(line), limit);
}

/// What a load has made: a document, or an error.
struct LoadResult {
  XMLPtr<IXMLDOMDocument2> document;  ///< The document; null when the load failed.
  LoadError error;                    ///< Why it failed.

  /// Whether the load succeeded.
  explicit operator bool() const noexcept { return static_cast<bool>(document); }
};

/// Ends a load of `result.document`. A document that was loaded gives its parser and the parser's
/// copy of the text back. One that was not loaded is described by `result.error`, and its memory is
/// freed.
inline void FinishLoad(LoadResult& result, bool isLoaded) {
  if (isLoaded) {
    result.document->ReleaseParser();
    return;
  }
  XMLPtr<IXMLDOMParseError> error;
  result.document->get_parseError(error.Out());
  result.error.code = error->m_lErrorCode;
  result.error.line = error->m_lLine;
  result.error.column = error->m_lLinePos;
  if (error->m_bstrReason != nullptr) result.error.reason = error->m_bstrReason;
  if (error->m_bstrSrcText != nullptr) result.error.tag = error->m_bstrSrcText;
  if (result.error.reason.empty()) result.error.reason = "the text could not be loaded";
  result.document.Reset();
}

/// Loads a text that comes from outside.
/// Result: a new document, or why there is none. Bad input: a text that holds a NUL byte, at which
/// IXMLDOMDocument2::loadXML would end it, is refused; a null one counts as empty.
/// Effects and cost: those of IXMLDOMDocument2::loadXML.
XMLDOM_NODISCARD inline LoadResult LoadText(const std::string& text) {
  LoadResult result;
  const std::size_t nul = text.find('\0');
  if (nul != std::string::npos) {
    result.error.reason = "NUL byte";
    result.error.line = 1;
    for (std::size_t at = 0; at < nul; at += ReadCharacter(&text[at], nul - at).length) {
      const bool isPair = text[at] == '\r' && text[at + 1] == '\n';
      const bool isLineEnd = (text[at] == '\n' || text[at] == '\r') && !isPair;
      result.error.line += isLineEnd ? 1 : 0;
      result.error.column = isLineEnd ? 0 : result.error.column + (isPair ? 0 : 1);
    }
    return result;
  }
  Create(result.document.Out());
  xmldom::FinishLoad(result, result.document->loadXML(text.c_str()) == VARIANT_TRUE);
  return result;
}
XMLDOM_NODISCARD inline LoadResult LoadText(const char* text) {
  return xmldom::LoadText(std::string(text == nullptr ? "" : text));
}

/// Loads a file. A NUL byte in it ends the text.
/// Result: a new document, or why there is none; `error.system` gives the system's reason when the
/// file could not be opened or read, also when a part of it could be read.
/// Bad input: an empty path gives ENOENT, one with a NUL byte EINVAL.
/// Effects and cost: those of IXMLDOMDocument2::load.
XMLDOM_NODISCARD inline LoadResult LoadFile(TextArgument path) {
  LoadResult result;
  std::string name(path.Data(), path.Size());
  int reason = EINVAL;
  if (name.find('\0') == std::string::npos) {
    Create(result.document.Out());
    short isLoaded = VARIANT_FALSE;
    errno = 0;
    const HRESULT outcome = result.document->load(&name[0], &isLoaded);
    // A file that could be read only in part may have parsed all the same.
    reason = errno != 0 ? errno : outcome == E_FILENOTOPENED ? ENOENT : 0;
    if (reason == 0) xmldom::FinishLoad(result, outcome == S_OK);
  }
  if (reason != 0) {
    result.document.Reset();
    result.error.system = std::error_code(reason, std::generic_category());
    result.error.reason = result.error.system.message();
  }
  return result;
}

}  // namespace xmldom

#endif
