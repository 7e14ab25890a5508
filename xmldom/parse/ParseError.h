#ifndef XMLDOM_PARSE_PARSEERROR_H
#define XMLDOM_PARSE_PARSEERROR_H

#include <xmldom/base/Export.h>
#include <xmldom/dom/Release.h>
#include <xmldom/dom/Results.h>
#include <xmldom/support/RefCountedObject.h>
#include <xmldom/support/bstr.h>

/// The outcome of a load, as IXMLDOMDocument2::get_parseError found it. It does not change when the
/// document loads again.
///
/// Every getter returns E_ARGUMENT for a null out-pointer, and does nothing else then. Texts that
/// are handed out are new BSTRs and belong to the caller.
class XMLDOM_API IXMLDOMParseError : public CRefCountedObject {
 public:
  /// Makes the record of a load without error: all numbers are 0, and there are no texts.
  IXMLDOMParseError();
  ~IXMLDOMParseError() override;

  /// Copies numbers and texts. Effects: std::bad_alloc when memory is out, with nothing changed.
  IXMLDOMParseError& operator=(IXMLDOMParseError& other);

  long m_lErrorCode;   ///< Expat's code of the error; 0 without error.
  long m_lFilePos;     ///< The length of Expat's current event: 0 once a load has ended.
  long m_lLine;        ///< The line where the parse ended, counted from 1.
  long m_lLinePos;     ///< The column where the parse ended, counted from 0, in characters.
  BSTR m_bstrReason;   ///< Expat's text for the code; null without error.
  BSTR m_bstrSrcText;  ///< The tag at which the parse ended; null when nothing was ever loaded.

  static int m_iObjCount;  ///< Live error objects.

  /// Result: S_OK; S_FALSE when there was no error. Out: the code, 0 without error.
  HRESULT get_errorCode(long* out);
  /// Result: S_OK. Out: m_lFilePos. Deliberate: unlike the other numbers, this one
  /// comes with S_OK without an error too.
  HRESULT get_filepos(long* out);
  /// Result: S_OK; S_FALSE when there was no error. Out: the line, in both cases.
  HRESULT get_line(long* out);
  /// Result: S_OK; S_FALSE when there was no error. Out: the column, in both cases.
  HRESULT get_linepos(long* out);
  /// Result: S_OK; S_FALSE when there was no error. Out: the reason. Deliberate: without an error
  /// `*out` is left alone, while the two texts below become null.
  HRESULT get_reason(char** out);
  /// Result: S_OK; S_FALSE when there was no error. Out: the first 511 bytes of the tag at the
  /// error; null without an error.
  HRESULT get_srcText(char** out);
  /// Result: S_OK; S_FALSE when there was no error. Out: code, reason, line, column and tag in one
  /// text of at most 2047 bytes, which has several lines when the tag has; null without an error.
  /// The tag stands in it as it came, control characters too: xmldom::OneLine makes it fit for a
  /// log.
  HRESULT get_errormessage(char** out);
};

#endif
