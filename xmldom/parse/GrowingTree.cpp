#include <xmldom/parse/GrowingTree.h>

#include <xmldom/diag/XML.h>
#include <xmldom/dom/NodeChain.h>
#include <xmldom/dom/NodeNames.h>
#include <xmldom/dom/NodeReference.h>
#include <xmldom/dom/XMLDocument.h>
#include <xmldom/parse/NodeStack.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

namespace xmldom {

GrowingTree::GrowingTree(IXMLDOMDocument2* document, CNodeStack* stack)
    : m_document(document), m_stack(stack), m_attributeValue(1024), m_spare(nullptr) {}

GrowingTree::~GrowingTree() {
  while (m_spare != nullptr) {
    void* memory = m_spare;
    m_spare = *static_cast<void**>(memory);
    ::operator delete(memory);
  }
}

void GrowingTree::StartElement(const char* name, const char** attributes) {
  StoreText();
  NodeReference element(new IXMLDOMNode(m_document, name, nullptr, NODE_ELEMENT));
  if (attributes != nullptr && attributes[0] != nullptr) AddAttributes(element.Get(), attributes);
  IXMLDOMNode* node = element.Detach();
  Link(node);
  PushOpen(node);
}

void GrowingTree::EndElement() {
  StoreText();
  TrimText(m_open.back());
  PopOpen();
}

void GrowingTree::Finish() {
  if (HasOpenElement()) StoreText();
  for (OpenElement& element : m_open) TrimText(element);
}

void GrowingTree::AddAttributes(IXMLDOMNode* element, const char** attributes) {
  IXMLDOMNode* last = nullptr;
  for (; attributes[0] != nullptr; attributes += 2) {
    IXMLDOMNode* attribute =
        new IXMLDOMNode(m_document, attributes[0], Escaped(attributes[1]), NODE_ATTRIBUTE);
    attribute->m_pParent = element;
    AppendBehind(last, element->m_pFirstAttribute, attribute);
    last = attribute;
  }
  // As after any attribute that was added.
  CXML::ClearXMLError();
}

/// The form in which a value is stored; borrowed until the next call.
const char* GrowingTree::Escaped(const char* value) {
  if (std::strpbrk(value, "&<>\"'") == nullptr) return value;
  m_attributeValue.m_uPosition = 0;
  m_attributeValue.m_uLength = 0;
  m_attributeValue.WriteStrEntities(value);
  return m_attributeValue.GetAsStr();
}

/// Links a node as last child of the innermost open element, or of the document when none is open.
void GrowingTree::Link(IXMLDOMNode* node) {
  if (!HasOpenElement()) {
    m_document->AddChild(node);
    return;
  }
  OpenElement& parent = m_open.back();
  node->m_pParent = parent.node;
  AppendBehind(parent.lastChild, parent.node->m_pFirstChild, node);
  parent.lastChild = node;
}

/// Stores the text that was gathered: in a child of its own the first time, which gets its exact
/// size, since most texts have no tag in them.
void GrowingTree::StoreText() {
  if (m_text.empty()) return;
  OpenElement& element = m_open.back();
  if (element.text == nullptr) {
    element.text = new IXMLDOMNode(m_document, kTextName, m_text.c_str(), NODE_TEXT);
    element.textLength = element.textCapacity = m_text.size();
    Link(element.text);
  } else {
    GrowText(element);
  }
  m_text.clear();
}

void GrowingTree::GrowText(OpenElement& element) {
  char*& value = element.text->m_pszValue;
  const std::size_t length = element.textLength + m_text.size();
  if (length > element.textCapacity) {
    const std::size_t capacity = std::max(length, element.textCapacity * 2);
    void* grown = std::realloc(value, capacity + 1);
    if (grown == nullptr) throw std::bad_alloc();
    value = static_cast<char*>(grown);
    element.textCapacity = capacity;
  }
  std::memcpy(value + element.textLength, m_text.c_str(), m_text.size() + 1);
  element.textLength = length;
}

void GrowingTree::TrimText(OpenElement& element) {
  if (element.textCapacity == element.textLength) return;
  void* value = std::realloc(element.text->m_pszValue, element.textLength + 1);
  if (value != nullptr) element.text->m_pszValue = static_cast<char*>(value);
  element.textCapacity = element.textLength;
}

/// A document has as many stack elements as elements, but few at a time: their memory is used
/// again.
void GrowingTree::PushOpen(IXMLDOMNode* node) {
  if (m_spare == nullptr) {
    m_spare = ::operator new(sizeof(CNodeStackElt));
    *static_cast<void**>(m_spare) = nullptr;
  }
  m_open.push_back(OpenElement{node, nullptr, nullptr, 0, 0});
  void* memory = m_spare;
  m_spare = *static_cast<void**>(memory);
  m_stack->m_pTop = new (memory) CNodeStackElt(node, m_stack->m_pTop);
}

void GrowingTree::PopOpen() {
  m_open.pop_back();
  CNodeStackElt* top = m_stack->m_pTop;
  m_stack->m_pTop = top->m_pNext;
  top->m_pNext = nullptr;
  top->~CNodeStackElt();
  *reinterpret_cast<void**>(top) = m_spare;
  m_spare = top;
}

}  // namespace xmldom
