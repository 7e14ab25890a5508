// The record of a load's outcome, and its getters. IXMLDOMDocument2::get_parseError, which fills
// it, is in XMLDocumentLoad.cpp. Tested by tests/parse/ParseError_test.cpp.

#include <xmldom/parse/ParseError.h>

#include <xmldom/base/LiveCount.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <new>

int IXMLDOMParseError::m_iObjCount = 0;

namespace {

const char* OrNull(const char* text) { return text == nullptr ? "(null)" : text; }

void Assign(BSTR& target, BSTR copy) {
  SysFreeString(target);
  target = copy;
}

}  // namespace

IXMLDOMParseError::IXMLDOMParseError()
    : m_lErrorCode(0),
      m_lFilePos(0),
      m_lLine(0),
      m_lLinePos(0),
      m_bstrReason(nullptr),
      m_bstrSrcText(nullptr) {
  xmldom::AddToCount(m_iObjCount, 1);
}

IXMLDOMParseError::~IXMLDOMParseError() {
  SysFreeString(m_bstrReason);
  SysFreeString(m_bstrSrcText);
  xmldom::AddToCount(m_iObjCount, -1);
}

IXMLDOMParseError& IXMLDOMParseError::operator=(IXMLDOMParseError& other) {
  if (this == &other) return *this;
  // Both copies are made before anything changes, because there may be no memory for the second.
  BSTR reason = SysAllocString(other.m_bstrReason);
  BSTR srcText = nullptr;
  try {
    srcText = SysAllocString(other.m_bstrSrcText);
  } catch (...) {
    SysFreeString(reason);
    throw;
  }
  m_lErrorCode = other.m_lErrorCode;
  m_lFilePos = other.m_lFilePos;
  m_lLine = other.m_lLine;
  m_lLinePos = other.m_lLinePos;
  Assign(m_bstrReason, reason);
  Assign(m_bstrSrcText, srcText);
  return *this;
}

HRESULT IXMLDOMParseError::get_errorCode(long* out) {
  if (out == nullptr) return E_ARGUMENT;
  *out = m_lErrorCode;
  return m_lErrorCode != 0 ? S_OK : S_FALSE;
}

HRESULT IXMLDOMParseError::get_filepos(long* out) {
  if (out == nullptr) return E_ARGUMENT;
  *out = m_lFilePos;
  return S_OK;
}

HRESULT IXMLDOMParseError::get_line(long* out) {
  if (out == nullptr) return E_ARGUMENT;
  *out = m_lLine;
  return m_lErrorCode != 0 ? S_OK : S_FALSE;
}

HRESULT IXMLDOMParseError::get_linepos(long* out) {
  if (out == nullptr) return E_ARGUMENT;
  *out = m_lLinePos;
  return m_lErrorCode != 0 ? S_OK : S_FALSE;
}

HRESULT IXMLDOMParseError::get_reason(char** out) {
  if (out == nullptr) return E_ARGUMENT;
  if (m_lErrorCode == 0) return S_FALSE;
  *out = SysAllocString(m_bstrReason);
  return S_OK;
}

HRESULT IXMLDOMParseError::get_srcText(char** out) {
  if (out == nullptr) return E_ARGUMENT;
  *out = m_lErrorCode != 0 ? SysAllocString(m_bstrSrcText) : nullptr;
  return m_lErrorCode != 0 ? S_OK : S_FALSE;
}

HRESULT IXMLDOMParseError::get_errormessage(char** out) {
  if (out == nullptr) return E_ARGUMENT;
  *out = nullptr;
  if (m_lErrorCode == 0) return S_FALSE;
  const std::size_t size = 2048;
  const std::unique_ptr<char, void (*)(void*)> message(static_cast<char*>(std::malloc(size)),
                                                       std::free);
  if (message == nullptr) throw std::bad_alloc();
  std::snprintf(message.get(), size, "Error %ld (%s) at line %ld, column %ld, offending tag %s",
                m_lErrorCode, OrNull(m_bstrReason), m_lLine, m_lLinePos, OrNull(m_bstrSrcText));
  *out = SysAllocString(message.get());
  return S_OK;
}
