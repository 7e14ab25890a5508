#include <xmldom/dom/NewNode.h>
#include <xmldom/dom/NodeChain.h>
#include <xmldom/dom/NodeReference.h>
#include <xmldom/dom/XMLDocument.h>
#include <xmldom/parse/EntityNesting.h>
#include <xmldom/parse/GrowingTree.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/support/MemFile.h>

#include <cctype>

// What the builder makes of Expat's events. While a parse runs they go to the growing tree; called
// by anybody else, they take the ordinary members of the node class.

using xmldom::NodeReference;

// Here, where the trampolines meet the handlers.
template class CExpatImpl<CXMLSax>;

namespace {

/// Apart from IsBlank, which so needs no registers of its own.
__attribute__((noinline)) bool IsBlankInLocale(const char* text, const char* end) {
  while (text < end && std::isspace(static_cast<unsigned char>(*text))) ++text;
  return text >= end;
}

bool IsBlank(const char* text, int length) {
  // ASCII is the same in every locale: that spares most calls.
  const char* const end = text + length;
  for (; text < end; ++text) {
    const unsigned char c = static_cast<unsigned char>(*text);
    if (c >= 0x80) return IsBlankInLocale(text, end);
    if (c != ' ' && (c < '\t' || c > '\r')) return false;
  }
  return true;
}

// For whoever calls a handler by hand:

/// Adds an element with its attributes. Result: the element, borrowed.
__attribute__((cold)) IXMLDOMNode* AddElement(IXMLDOMDocument2* document, IXMLDOMNode* parent,
                                              const char* name, const char** attributes) {
  NodeReference element(new IXMLDOMNode(document, name, nullptr, NODE_ELEMENT));
  CMemFile value(1024);
  for (; attributes != nullptr && attributes[0] != nullptr; attributes += 2) {
    value.m_uPosition = 0;
    value.m_uLength = 0;
    value.WriteStrEntities(attributes[1]);
    element->AddAttribute(attributes[0], value.GetAsStr());
  }
  IXMLDOMNode* node = element.Detach();
  parent->AddChild(node);
  return node;
}

/// Appends to the text of an element.
__attribute__((cold)) void AppendText(IXMLDOMDocument2* document, IXMLDOMNode* parent,
                                      const char* text, int length) {
  IXMLDOMNode* existing = xmldom::FindInChain(parent->m_pFirstChild, xmldom::kTextName);
  if (existing != nullptr) {
    existing->AppendValue(text, length);
    return;
  }
  NodeReference created(new IXMLDOMNode(document, xmldom::kTextName, nullptr, NODE_TEXT));
  created->AppendValue(text, length);
  parent->AddChild(created.Detach());
}

}  // namespace

IXMLDOMNode* CXMLSax::TopNode() const {
  if (m_pNodeStack == nullptr || m_pNodeStack->m_pTop == nullptr) return nullptr;
  return m_pNodeStack->m_pTop->m_pNode;
}

void CXMLSax::OnStartElement(const char* name, const char** attributes) {
  if (m_pNodeStack == nullptr) return;
  if (m_pTree != nullptr) {
    m_bFirstElement = false;
    m_pTree->StartElement(name, attributes);
    return;
  }
  IXMLDOMNode* parent = m_bFirstElement ? nullptr : TopNode();
  m_bFirstElement = false;
  if (parent == nullptr) parent = m_pDocument;
  m_pNodeStack->Push(AddElement(m_pDocument, parent, name, attributes));
}

void CXMLSax::OnEndElement(const char*) {
  if (m_pTree == nullptr) {
    if (m_pNodeStack != nullptr) m_pNodeStack->Pop();
  } else if (m_pTree->HasOpenElement()) {
    m_pTree->EndElement();
  }
}

void CXMLSax::OnDefault(const char* text, int length) {
  if (m_pTree == nullptr || !m_pTree->HasOpenElement()) {
    OnOtherDefault(text, length);
  } else if (!Drops(text, length)) {
    m_pTree->AppendText(text, static_cast<std::size_t>(length));
  }
}

bool CXMLSax::Drops(const char* text, int length) const {
  return (m_pDocument->m_uFlags & IXMLDOMDocument2::FORMATTED_LAYOUT) != 0 && IsBlank(text, length);
}

/// What stands outside the root element, or comes from somebody who calls the handler by hand.
__attribute__((noinline)) void CXMLSax::OnOtherDefault(const char* text, int length) {
  IXMLDOMNode* parent = TopNode();
  if (parent == nullptr) {
    if (m_pEntityNesting != nullptr && m_bFirstElement) WatchProlog(text, length);
  } else if (!Drops(text, length)) {
    AppendText(m_pDocument, parent, text, length);
  }
}

/// Stops the parser at declarations that it could only expand with a large stack. It may still be
/// told the rest of the piece that it is at.
void CXMLSax::WatchProlog(const char* text, int length) {
  if (!m_pEntityNesting->Observe(text, length)) XML_StopParser(m_p, XML_FALSE);
}
