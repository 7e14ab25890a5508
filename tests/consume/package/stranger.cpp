#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include <cstdio>
#include <cstring>

namespace {

void Keep(const CLogEvent& event, void* context) {
  std::snprintf(static_cast<char*>(context), 64, "%s", event.body == nullptr ? "" : event.body);
}

}  // namespace

int main() {
  char logged[64] = "";
  CLogger::SetSink(Keep, logged);

  IXMLDOMDocument2* document = nullptr;
  Create(&document);
  const bool parsed = document->loadXML("<a><b c='1'>d</b></a>") == VARIANT_TRUE;
  const bool atEnd = parsed && document->m_pSax->GetErrorCode() == XML_ERROR_NONE;

  // The log names a node by its XML, which the support library asks the other one for.
  CLogger::PostLogEvent(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "a node", document);
  Release(document);
  CLogger::SetSink(nullptr, nullptr);

  const char expected[] = "<a>\n  <b c='1'>d</b>\n</a>\n";
  const bool same = std::strcmp(logged, expected) == 0;
  std::printf("parsed %d, at the end %d, logged as written %d\n", parsed, atEnd, same);
  return parsed && atEnd && same ? 0 : 1;
}
