// The members that hand out XML text: each runs the writer into a buffer and copies the result.
// Tested by tests/text/XMLNodeXML_test.cpp.

#include <xmldom/dom/LogKinds.h>
#include <xmldom/dom/XMLNode.h>
#include <xmldom/ptr/XMLPtr.h>
#include <xmldom/support/LogException.h>
#include <xmldom/support/MemFile.h>

namespace {

const unsigned int kXmlBufferSize = 16384;
const unsigned int kMaskedBufferSize = 4096;

BSTR TextOf(CMemFile& buffer) { return SysAllocStringLen(buffer.GetAsStr(), buffer.m_uLength); }

// Tells the log how a node in an event becomes text, if it can be told: the log of another support
// layer may know by itself.
template <class Log>
auto SetRenderer(int) -> decltype(Log::SetNodeRenderer(nullptr)) {
  Log::SetNodeRenderer([](IXMLDOMNode* node) { return node->GetXML(); });
}
template <class Log>
void SetRenderer(long) {}

struct RendererRegistration {
  RendererRegistration() { SetRenderer<CLogger>(0); }
} l_rendererRegistration;

}  // namespace

void SetDispAddr(bool on) { g_bDispAddr = on; }

BSTR IXMLDOMNode::GetXML() {
  CMemFile xml(kXmlBufferSize);
  GetXMLHelper(xml, 0, nullptr, 0, 0, -1, -1, nullptr, false, false, 0);
  return TextOf(xml);
}

HRESULT IXMLDOMNode::get_xml(BSTR* pXml) {
  if (pXml == nullptr) return E_ARGUMENT;
  *pXml = GetXML();
  return S_OK;
}

_bstr_t IXMLDOMNode::Getxml() {
  BSTR xml = nullptr;
  if (get_xml(&xml) < 0) throw Exception("IXMLDOMNode::Getxml", "Call failed", Getxml());
  return _bstr_t(xml, false);
}

_bstr_t IXMLDOMNode::GetMaskedXML() {
  CMemFile xml(kMaskedBufferSize);
  GetXMLHelper(xml, 0, nullptr, 0, 0, -1, -1, nullptr, true, false, 0);
  return _bstr_t(TextOf(xml), false);
}

_bstr_t IXMLDOMNode::GetFilteredXML(const char* pszXPath, int nFirst, int nCount, int nCurPage,
                                    int nNumPages, const char* pszPadTemplate) {
  CMemFile xml(kXmlBufferSize);
  const XMLPtr<IXMLDOMNode> paged =
      xmldom::Adopt(pszXPath == nullptr ? nullptr : SelectSingleNode(pszXPath));
  if (pszXPath != nullptr && !paged) {
    // Deliberate: this text is not freed, so that a sink may keep it.
    BSTR whole = GetXML();
    CLogger::PostLogEventFB(xmldom::kLogDom, xmldom::kSeverityWarning,
                            "IXMLDOMNode::GetFilteredXML - can't match xpath %s", whole, pszXPath);
  }
  GetXMLHelper(xml, 0, paged.Get(), nFirst, nCount, nCurPage, nNumPages, pszPadTemplate, false,
               false, 0);
  return _bstr_t(TextOf(xml), false);
}
