// What the default attributes of a load may take. A document type that declares many of them for an
// element makes a tree far larger than its text, and Expat's own protection does not count them.
// Tested by tests/parse/DefaultAttributes_test.cpp.

#include <xmldom/base/Export.h>
#include <xmldom/dom/XMLDocument.h>
#include <xmldom/parse/XMLSax.h>

#include <atomic>
#include <cstring>

namespace {

// What default attributes may take, in bytes, whatever the size of the text.
const unsigned long long kFreeSize = 8 << 20;
// How many times the size of the text they may take, where that is more.
std::atomic<unsigned int> l_maxFactor(100);

// Older headers of Expat do not name it.
const XML_Error kAmplificationError = static_cast<XML_Error>(43);

}  // namespace

void SetMaxDefaultsFactor(unsigned int factor) {
  l_maxFactor.store(factor, std::memory_order_relaxed);
}

/// Counts what a default attribute takes, and ends the load when all of them together take too much
/// for the text.
XMLDOM_COLD void CXMLSax::CountDefault(const IXMLDOMNode& attribute) {
  m_defaultsSize += sizeof attribute + std::strlen(attribute.m_pszNodeName) + 1 +
                    std::strlen(attribute.m_pszValue) + 1;
  if (m_defaultsSize <= kFreeSize) return;
  if (m_defaultsSize <= m_textSize * l_maxFactor.load(std::memory_order_relaxed)) return;
  Refuse("CXMLSax - default attributes of %llu bytes are too many", m_defaultsSize);
  // An Expat that has no text for the code leaves it at its own, which is that of a stopped parser.
  if (XML_ErrorString(kAmplificationError) != nullptr) m_error = kAmplificationError;
  XML_StopParser(m_p, XML_FALSE);
}
