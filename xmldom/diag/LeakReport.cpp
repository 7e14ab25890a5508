// The leak report: one table of all counters of live objects, in the order of the report. Tested by
// tests/diag/LeakReport_test.cpp.

#include <xmldom/base/LiveCount.h>
#include <xmldom/dom/LogKinds.h>
#include <xmldom/dom/XMLDocument.h>
#include <xmldom/dom/XMLError.h>
#include <xmldom/dom/XMLNodeList.h>
#include <xmldom/parse/ParseError.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/query/XPathList.h>
#include <xmldom/support/MemFile.h>

namespace {

struct LiveCount {
  const int* count;
  const char* what;
};

// Read in this order by whoever compares two reports.
const LiveCount l_aLiveCounts[] = {
    {&IXMLDOMNode::m_iObjCount, "XML nodes"},
    {&CNodeStack::m_iObjCount, "Node Stacks"},
    {&CNodeStackElt::m_iObjCount, "Node Stack Elements"},
    {&CXMLSax::m_iObjCount, "XML SAXes"},
    {&IXMLDOMDocument2::m_iObjCount, "XML documents"},
    {&CXPathList::m_iObjCount, "StrLists"},
    {&CStrListElt::m_iObjCount, "StrListElt's"},
    {&IXMLDOMNodeList::m_iObjCount, "IXMLDOMNodeLists"},
    {&IXMLDOMNodeListElt::m_iObjCount, "NodeListElt's"},
    {&IXMLDOMParseError::m_iObjCount, "XML Parse Error Objects"},
};

}  // namespace

long CXML::CheckLeaks(const char* where) {
  CMemFile report(16384);
  if (where != nullptr) report.WriteF("\nCheckLeaks - %s:\n", where);
  for (const LiveCount& live : l_aLiveCounts) {
    const int count = xmldom::ReadCount(*live.count);
    if (count > 0) report.WriteF("%d %s in memory\n", count, live.what);
  }
  if (GetNumBSTRsAllocated() > 0) {
    report.WriteF("There're %ld outstanding bstrs\n", GetNumBSTRsAllocated());
  }
  if (where != nullptr) {
    CLogger::PostLogEventFB(xmldom::kLogLeaks, xmldom::kSeverityDebug, "CXML::CheckLeaks - %s",
                            report.GetAsStr(), where);
  } else {
    CLogger::PostLogEvent(xmldom::kLogLeaks, xmldom::kSeverityDebug, "CXML::CheckLeaks",
                          report.GetAsStr());
  }
  return GetNumBSTRsAllocated();
}
