// What the builder does at each event of a parse that it runs: it hands the event to the growing
// tree, and watches the declarations before the root element. Handlers that are called while no
// load runs are in HandEvents.cpp. Tested by tests/parse/XMLSaxEvents_test.cpp.

#include <xmldom/base/Export.h>
#include <xmldom/dom/XMLDocument.h>
#include <xmldom/parse/EntityNesting.h>
#include <xmldom/parse/GrowingTree.h>
#include <xmldom/parse/XMLSax.h>

#include <cctype>

// The trampolines are instantiated here, in the source of the handlers, so that the compiler can
// put the handlers into them.
template class CExpatImpl<CXMLSax>;

namespace {

/// A function of its own, because IsBlank seldom needs it and would save registers for it at every
/// call.
XMLDOM_NOINLINE bool IsBlankInLocale(const char* text, const char* end) {
  while (text < end && std::isspace(static_cast<unsigned char>(*text))) ++text;
  return text >= end;
}

/// Whether a text holds nothing but white space, as isspace sees it in the current locale.
bool IsBlank(const char* text, int length) {
  // The locale decides only about bytes outside ASCII, so that isspace is seldom called.
  const char* const end = text + length;
  for (; text < end; ++text) {
    const unsigned char c = static_cast<unsigned char>(*text);
    if (c >= 0x80) return IsBlankInLocale(text, end);
    if (c != ' ' && (c < '\t' || c > '\r')) return false;
  }
  return true;
}

}  // namespace

void CXMLSax::OnStartElement(const char* name, const char** attributes) {
  if (m_pTree == nullptr) {
    StartElementByHand(name, attributes);
    return;
  }
  m_bFirstElement = false;
  m_pTree->StartElement(name, attributes);
}

void CXMLSax::OnEndElement(const char*) {
  if (m_pTree == nullptr) {
    if (m_pNodeStack != nullptr) m_pNodeStack->Pop();
  } else if (m_pTree->HasOpenElement()) {
    m_pTree->EndElement();
  }
}

void CXMLSax::OnDefault(const char* text, int length) {
  if (m_pTree == nullptr) {
    AppendTextByHand(text, length);
  } else if (!m_pTree->HasOpenElement()) {
    WatchProlog(text, length);
  } else if (!Drops(text, length)) {
    m_pTree->AppendText(text, static_cast<std::size_t>(length));
  }
}

/// Whether a text inside an element is left out of the tree.
bool CXMLSax::Drops(const char* text, int length) const {
  return (m_pDocument->m_uFlags & IXMLDOMDocument2::FORMATTED_LAYOUT) != 0 && IsBlank(text, length);
}

/// Reads what stands outside the root element, and stops the parser at a chain of entities that it
/// could only expand with a large stack. Expat may still pass the rest of the piece that it is
/// converting.
XMLDOM_COLD void CXMLSax::WatchProlog(const char* text, int length) {
  if (m_pEntityNesting == nullptr || !m_bFirstElement) return;
  if (m_pEntityNesting->Observe(text, length)) return;
  Refuse("CXMLSax - more than %llu entities refer to each other in a chain",
         xmldom::EntityChains::kMost);
  XML_StopParser(m_p, XML_FALSE);
}
