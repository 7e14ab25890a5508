// The members of the document that use its builder: every load makes a new one, which then stays to
// tell the outcome, unless ReleaseParser puts a report in its place. Tested by
// tests/parse/XMLDocumentLoad_test.cpp, tests/parse/XMLDocumentLoadFile_test.cpp,
// tests/parse/LoadReport_test.cpp and, for get_parseError, tests/parse/ParseError_test.cpp.

#include <xmldom/dom/XMLDocument.h>

#include <xmldom/parse/LoadReport.h>
#include <xmldom/parse/ParseError.h>
#include <xmldom/parse/XMLSax.h>

#include <cstdlib>
#include <cstring>
#include <new>

/// Destroys the builder, or what is kept of it.
void IXMLDOMDocument2::DestroyBuilder() {
  delete m_pSax;
  m_pSax = nullptr;
  std::free(m_pReport);
  m_pReport = nullptr;
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
    xmldom::LoadReport asked;
    char tag[xmldom::kReportedTagSize];
    const xmldom::LoadReport* report = m_pReport;
    if (m_pSax != nullptr) {
      m_pSax->FillReport(&asked, tag);
      report = &asked;
    }
    if (report != nullptr) {
      error->m_lErrorCode = report->errorCode;
      error->m_lFilePos = report->filePos;
      error->m_lLine = report->line;
      error->m_lLinePos = report->linePos;
      error->m_bstrReason =
          SysAllocString(XML_ErrorString(static_cast<XML_Error>(report->errorCode)));
      error->m_bstrSrcText = SysAllocString(report->tag);
    }
  } catch (...) {
    Release(error);
    throw;
  }
  *ppError = error;
  return S_OK;
}

void IXMLDOMDocument2::ReleaseParser() {
  if (m_pSax == nullptr || m_pSax->m_pTree != nullptr) return;
  xmldom::LoadReport report;
  char tag[xmldom::kReportedTagSize];
  m_pSax->FillReport(&report, tag);
  // The tag is stored behind the report, in one block with it.
  const std::size_t tagSize = std::strlen(tag) + 1;
  void* block = std::malloc(sizeof report + tagSize);
  if (block == nullptr) throw std::bad_alloc();
  report.tag = static_cast<char*>(block) + sizeof report;
  std::memcpy(block, &report, sizeof report);
  std::memcpy(static_cast<char*>(block) + sizeof report, tag, tagSize);
  DestroyBuilder();
  m_pReport = static_cast<xmldom::LoadReport*>(block);
}
