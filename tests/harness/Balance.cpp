#include "harness/Balance.h"

#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

namespace {

const char* const kNames[] = {
    "IXMLDOMNode", "IXMLDOMDocument2",  "IXMLDOMNodeList", "IXMLDOMNodeListElt", "CXPathList",
    "CStrListElt", "IXMLDOMParseError", "CXMLSax",         "CNodeStack",         "CNodeStackElt",
    "BSTRs",
};

}  // namespace

Balance Balance::Now() {
  const long counts[kCounts] = {
      IXMLDOMNode::m_iObjCount,        IXMLDOMDocument2::m_iObjCount, IXMLDOMNodeList::m_iObjCount,
      IXMLDOMNodeListElt::m_iObjCount, CXPathList::m_iObjCount,       CStrListElt::m_iObjCount,
      IXMLDOMParseError::m_iObjCount,  CXMLSax::m_iObjCount,          CNodeStack::m_iObjCount,
      CNodeStackElt::m_iObjCount,      GetNumBSTRsAllocated(),
  };
  Balance balance;
  for (int i = 0; i < kCounts; ++i) balance.m_counts[i] = counts[i];
  return balance;
}

std::string Balance::ChangesSince(const Balance& before) const {
  std::string changes;
  for (int i = 0; i < kCounts; ++i) {
    const long change = m_counts[i] - before.m_counts[i];
    if (change != 0) changes += std::string(kNames[i]) + ": " + std::to_string(change) + "\n";
  }
  return changes;
}
