// Making a node from texts whose lengths are known, as the parser has them. The constructors of a
// node, which take NUL-terminated texts, are in XMLNodeLifetime.cpp. Tested by
// tests/parse/XMLSax_test.cpp and tests/failure/Loading_test.cpp.

#include <xmldom/dom/NewNode.h>

#include <xmldom/base/LiveCount.h>
#include <xmldom/base/Text.h>

namespace xmldom {

IXMLDOMNode* NewNode(IXMLDOMDocument2* document, tagDOMNodeType type, const char* name,
                     std::size_t nameLength, const char* value, std::size_t valueLength) {
  IXMLDOMNode* node = Uncounted().NewNode();
  node->m_pOwnerDocument = document;
  node->m_eNodeType = type;
  try {
    node->m_pszNodeName = CopyString(name, nameLength);
    if (value != nullptr) node->m_pszValue = CopyString(value, valueLength);
  } catch (...) {
    AddToCount(IXMLDOMNode::m_iObjCount, 1);  // The destructor takes it off again.
    node->RealRelease();
    throw;
  }
  return node;
}

}  // namespace xmldom
