#include <xmldom/diag/XML.h>
#include <xmldom/dom/NodeChain.h>
#include <xmldom/dom/NodeNames.h>
#include <xmldom/dom/NodeReference.h>
#include <xmldom/dom/XMLDocument.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/support/Logger.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <cstring>
#include <new>

// What the builder makes of Expat's events. While a parse runs it knows the end of every chain and
// the length of every text that can still grow, so that a load is linear whatever its shape; called
// by anybody else, the events take the ordinary members of the node class.

using xmldom::NodeReference;

namespace {

bool IsBlank(const char* text, int length) {
  for (int i = 0; i < length; ++i) {
    if (!std::isspace(static_cast<unsigned char>(text[i]))) return false;
  }
  return true;
}

bool NeedsEscapes(const char* value) { return std::strpbrk(value, "&<>\"'") != nullptr; }

}  // namespace

IXMLDOMNode* CXMLSax::TopNode() const {
  if (m_pNodeStack == nullptr || m_pNodeStack->m_pTop == nullptr) return nullptr;
  return m_pNodeStack->m_pTop->m_pNode;
}

void CXMLSax::OnStartElement(const char* name, const char** attributes) {
  if (m_pNodeStack == nullptr) return;
  NodeReference element(new IXMLDOMNode(m_pDocument, name, nullptr, NODE_ELEMENT));
  AddAttributes(element.Get(), attributes);
  LinkElement(element.Get());
  IXMLDOMNode* linked = element.Detach();
  m_pNodeStack->Push(linked);
  if (m_isParsing) m_openElements.push_back(OpenElement{linked, nullptr, nullptr, 0, 0});
}

void CXMLSax::AddAttributes(IXMLDOMNode* element, const char** attributes) {
  if (attributes == nullptr || attributes[0] == nullptr) return;
  IXMLDOMNode* last = nullptr;
  for (const char** pair = attributes; pair[0] != nullptr; pair += 2) {
    const char* value = pair[1];
    if (NeedsEscapes(value)) {
      m_attributeValue.m_uPosition = 0;
      m_attributeValue.m_uLength = 0;
      m_attributeValue.WriteStrEntities(value);
      value = m_attributeValue.GetAsStr();
    }
    if (!m_isParsing) {
      element->AddAttribute(pair[0], value);
      continue;
    }
    // Expat has refused a second attribute of the same name already.
    IXMLDOMNode* attribute = new IXMLDOMNode(m_pDocument, pair[0], value, NODE_ATTRIBUTE);
    attribute->m_pParent = element;
    xmldom::AppendToChain(element->m_pFirstAttribute, attribute, last);
    last = attribute;
  }
  if (m_isParsing) CXML::ClearXMLError();
}

void CXMLSax::LinkElement(IXMLDOMNode* element) {
  IXMLDOMNode* parent = m_bFirstElement ? nullptr : TopNode();
  m_bFirstElement = false;
  if (parent == nullptr) {
    m_pDocument->AddChild(element);
  } else if (!m_isParsing) {
    parent->AddChild(element);
  } else {
    OpenElement& open = m_openElements.back();
    element->m_pParent = parent;
    xmldom::AppendToChain(parent->m_pFirstChild, element, open.lastChild);
    open.lastChild = element;
  }
}

void CXMLSax::OnEndElement(const char*) {
  if (TopNode() == nullptr) return;
  if (m_isParsing) {
    TrimText(m_openElements.back());
    m_openElements.pop_back();
  }
  m_pNodeStack->Pop();
}

void CXMLSax::OnDefault(const char* text, int length) {
  IXMLDOMNode* parent = TopNode();
  if (parent == nullptr) {
    if (m_isParsing && m_bFirstElement) WatchProlog(text, length);
    return;
  }
  const bool formatted = (m_pDocument->m_uFlags & IXMLDOMDocument2::FORMATTED_LAYOUT) != 0;
  if (formatted && IsBlank(text, length)) return;
  if (m_isParsing) {
    AppendText(m_openElements.back(), text, static_cast<std::size_t>(length));
    return;
  }
  IXMLDOMNode* existing = xmldom::FindInChain(parent->m_pFirstChild, xmldom::kTextName);
  if (existing != nullptr) {
    existing->AppendValue(text, length);
    return;
  }
  NodeReference created(new IXMLDOMNode(m_pDocument, xmldom::kTextName, nullptr, NODE_TEXT));
  created->AppendValue(text, length);
  parent->AddChild(created.Detach());
}

/// Stops the parser at declarations that it could only expand with a large stack.
void CXMLSax::WatchProlog(const char* text, int length) {
  if (m_entityNesting.Allows(text, length)) return;
  CLogger::PostLogEventF(LOG_TYPE_DOM, LOG_SEVERITY_ERROR,
                         "CXMLSax - more than %d entities refer to other entities",
                         xmldom::EntityNesting::kMost);
  XML_StopParser(m_p, XML_FALSE);
}

/// Appends to the one text child of an open element, which its first piece makes. The first piece
/// gets its exact size, since most texts have no other.
void CXMLSax::AppendText(OpenElement& element, const char* text, std::size_t length) {
  NodeReference created(nullptr);
  IXMLDOMNode* node = element.text;
  if (node == nullptr) {
    created.Reset(new IXMLDOMNode(m_pDocument, xmldom::kTextName, nullptr, NODE_TEXT));
    node = created.Get();
  }

  const std::size_t needed = element.length + length;
  if (node->m_pszValue == nullptr || needed > element.capacity) {
    const std::size_t capacity = std::max(needed, element.capacity * 2);
    char* value = static_cast<char*>(std::realloc(node->m_pszValue, capacity + 1));
    if (value == nullptr) throw std::bad_alloc();
    node->m_pszValue = value;
    element.capacity = capacity;
  }
  std::memcpy(node->m_pszValue + element.length, text, length);
  node->m_pszValue[needed] = '\0';
  element.length = needed;

  if (element.text == nullptr) {
    node->m_pParent = element.node;
    xmldom::AppendToChain(element.node->m_pFirstChild, node, element.lastChild);
    element.text = created.Detach();
    element.lastChild = node;
  }
}

/// Cuts the text of an element that is done to its exact size.
void CXMLSax::TrimText(OpenElement& element) {
  if (element.text == nullptr || element.capacity == element.length) return;
  void* value = std::realloc(element.text->m_pszValue, element.length + 1);
  if (value != nullptr) element.text->m_pszValue = static_cast<char*>(value);
  element.capacity = element.length;
}
