// The members of the document that use its builder: every load makes a new one, which then stays to
// tell the outcome. Tested by tests/parse/XMLDocumentLoad_test.cpp,
// tests/parse/XMLDocumentLoadFile_test.cpp and, for get_parseError,
// tests/parse/ParseError_test.cpp.

#include <xmldom/dom/XMLDocument.h>

#include <xmldom/parse/ParseError.h>
#include <xmldom/parse/XMLSax.h>

void IXMLDOMDocument2::DestroyBuilder() {
  delete m_pSax;
  m_pSax = nullptr;
}

void IXMLDOMDocument2::ResetBuilder() {
  DestroyBuilder();
  m_pSax = new CXMLSax(this);
  // The result is not looked at: when there is no parser, the load that follows asserts.
  m_pSax->CreateParser();
}

short IXMLDOMDocument2::loadXML(const char* xml) {
  ResetBuilder();
  return m_pSax->LoadXML(xml) ? VARIANT_TRUE : VARIANT_FALSE;
}

HRESULT IXMLDOMDocument2::loadXML(char* xml, short* pbSuccess) {
  if (pbSuccess == nullptr) return E_ARGUMENT;
  *pbSuccess = loadXML(static_cast<const char*>(xml));
  return *pbSuccess == VARIANT_TRUE ? S_OK : S_FALSE;
}

// A log function may release the document in the last act of a load; nothing of the document is
// used after it.
HRESULT IXMLDOMDocument2::load(char* path, short* pbSuccess) {
  if (pbSuccess == nullptr) return E_ARGUMENT;
  ResetBuilder();
  const HRESULT result = m_pSax->LoadFromFile(path);
  *pbSuccess = result == S_OK ? VARIANT_TRUE : VARIANT_FALSE;
  return result;
}

HRESULT IXMLDOMDocument2::get_parseError(IXMLDOMParseError** ppError) {
  if (ppError == nullptr) return E_ARGUMENT;
  IXMLDOMParseError* error = new IXMLDOMParseError;
  try {
    if (m_pSax != nullptr) {
      char tag[512];
      error->m_lErrorCode = m_pSax->LoadError();
      error->m_lFilePos = m_pSax->GetCurrentByteCount();
      error->m_lLine = m_pSax->GetCurrentLineNumber();
      error->m_lLinePos = m_pSax->GetCurrentColumnNumber();
      error->m_bstrReason =
          SysAllocString(XML_ErrorString(static_cast<XML_Error>(error->m_lErrorCode)));
      error->m_bstrSrcText = SysAllocString(m_pSax->GetErrorTag(tag, sizeof tag));
    }
  } catch (...) {
    Release(error);
    throw;
  }
  *ppError = error;
  return S_OK;
}
