// The members that hand out the text of a node, in different forms. Tested by
// tests/text/XMLNodeText_test.cpp.

#include <xmldom/dom/LogKinds.h>
#include <xmldom/dom/XMLNode.h>
#include <xmldom/text/TextCollector.h>

#include <cstring>

using xmldom::TextCollector;

void IXMLDOMNode::GetTextHelper(CMemFile& out) const { TextCollector(this, &out).Flush(); }

BSTR IXMLDOMNode::GetTextAsBSTR() const {
  TextCollector text(this);
  return SysAllocStringLen(text.Data(), static_cast<unsigned int>(text.Length()));
}

HRESULT IXMLDOMNode::get_text(BSTR* pText) {
  if (pText == nullptr) return E_ARGUMENT;
  *pText = GetTextAsBSTR();
  return *pText != nullptr ? S_OK : S_FALSE;
}

char* IXMLDOMNode::GetTextAsStr() const { return TextCollector(this).TakeText(); }

char* IXMLDOMNode::GetStringValue(char* buf, int size) {
  if (buf == nullptr) return nullptr;
  TextCollector text(this);
  long long count = static_cast<long long>(text.Length());
  if (count >= size) {
    CLogger::PostLogEventF(xmldom::kLogDom, xmldom::kSeverityWarning,
                           "IXMLDOMNode::GetStringValue - buffer size overrun, string trunked, "
                           "passed size %d, required size %lld",
                           size, count + 1);
    CLogger::PostBacktrace(xmldom::kLogDom, xmldom::kSeverityWarning,
                           "IXMLDOMNode::GetStringValue - Overrun was initiated from here:");
    count = static_cast<long long>(size) - 1;
  }
  if (count < 1) {
    buf[0] = '\0';
    return nullptr;
  }
  std::memcpy(buf, text.Data(), static_cast<std::size_t>(count));
  buf[count] = '\0';
  return buf;
}
