#ifndef XMLDOM_PARSE_PARSEERROR_H
#define XMLDOM_PARSE_PARSEERROR_H

#include <xmldom/base/Export.h>
#include <xmldom/dom/Release.h>
#include <xmldom/dom/Results.h>
#include <xmldom/support/RefCountedObject.h>
#include <xmldom/support/bstr.h>

/// The outcome of a load, as it was when the document was asked.
///
/// Each getter returns E_ARGUMENT for a null out-pointer and does nothing else then. Texts handed
/// out are new BSTRs, the caller's.
class XMLDOM_API IXMLDOMParseError : public CRefCountedObject {
 public:
  /// No error: all numbers 0, no texts.
  IXMLDOMParseError();
  ~IXMLDOMParseError() override;

  /// Copies the record, texts included.
  IXMLDOMParseError& operator=(IXMLDOMParseError& other);

  long m_lErrorCode;   ///< Expat's error code; 0 means no error.
  long m_lFilePos;     ///< Length of the event at the error, in bytes.
  long m_lLine;        ///< Line of the error, from 1.
  long m_lLinePos;     ///< Column of the error, from 0, in characters.
  BSTR m_bstrReason;   ///< Expat's text for the code, or null.
  BSTR m_bstrSrcText;  ///< The tag at the error, or null.

  static int m_iObjCount;  ///< Live error objects.

  /// Result: S_OK; S_FALSE when there was no error.
  HRESULT get_errorCode(long* out);
  /// Deliberate: the only number that is S_OK without an error too. Result: S_OK.
  HRESULT get_filepos(long* out);
  /// Result: S_OK; S_FALSE when there was no error.
  HRESULT get_line(long* out);
  /// Result: S_OK; S_FALSE when there was no error.
  HRESULT get_linepos(long* out);
  /// Result: S_OK; S_FALSE when there was no error.
  /// Deliberate: without an error `*out` is left alone; the other texts become null.
  HRESULT get_reason(char** out);
  /// Out: the tag at the error, at most 511 bytes of it. Result: S_OK; S_FALSE when there was none.
  HRESULT get_srcText(char** out);
  /// Out: code, reason, position and tag, which may have several lines. Result: S_OK; S_FALSE when
  /// there was none.
  HRESULT get_errormessage(char** out);
};

#endif
