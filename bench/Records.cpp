#include "Records.h"

#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include <cstring>
#include <iostream>
#include <stdexcept>

namespace bench {

namespace {

static_assert(sizeof(IXMLDOMNode) == 10 * sizeof(void*), "as in bench/destruction/orders.c");

long LengthOf(const char* text) {
  return text == nullptr ? -1 : static_cast<long>(std::strlen(text));
}

void PrintRecord(const IXMLDOMNode* node, int depth) {
  std::cout << depth << ' ' << (node->m_eNodeType == NODE_ATTRIBUTE) << ' '
            << LengthOf(node->m_pszNodeName) << ' ' << LengthOf(node->m_pszValue) << '\n';
}

}  // namespace

void PrintRecords(const std::string& text) {
  const XMLPtr<IXMLDOMDocument2> document = xmldom::Adopt(new IXMLDOMDocument2);
  if (document->loadXML(text.c_str()) != VARIANT_TRUE) {
    throw std::runtime_error("a document does not load");
  }
  int depth = 0;
  for (const IXMLDOMNode* node = document->m_pFirstChild; node != nullptr;) {
    PrintRecord(node, depth);
    for (const IXMLDOMNode* attribute = node->m_pFirstAttribute; attribute != nullptr;
         attribute = attribute->m_pNextSibling) {
      PrintRecord(attribute, depth + 1);
    }
    if (node->m_pFirstChild != nullptr) {
      node = node->m_pFirstChild;
      ++depth;
      continue;
    }
    for (; node != nullptr && node->m_pNextSibling == nullptr; --depth) {
      node = depth == 0 ? nullptr : node->m_pParent;
    }
    if (node != nullptr) node = node->m_pNextSibling;
  }
}

}  // namespace bench
