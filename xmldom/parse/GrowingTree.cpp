// Building the tree of a load. Nodes are appended behind the last one, which is remembered, and
// texts are collected before they are stored, so that no chain is searched and no text copied again
// and again. Tested by tests/parse/XMLSax_test.cpp and tests/growth/Growth_test.cpp.

#include <xmldom/parse/GrowingTree.h>

#include <xmldom/base/LiveCount.h>
#include <xmldom/dom/NewNode.h>
#include <xmldom/dom/NodeChain.h>
#include <xmldom/dom/XMLDocument.h>
#include <xmldom/dom/XMLError.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/ptr/XMLPtr.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

namespace xmldom {

GrowingTree::GrowingTree(CXMLSax* builder, bool countsAtOnce)
    : m_builder(builder),
      m_document(builder->m_pDocument),
      m_stack(builder->m_pNodeStack),
      m_attributeValue(1024),
      m_countsAtOnce(countsAtOnce),
      m_uncountedNodes(0),
      m_uncountedElements(0),
      m_spare(nullptr) {}

GrowingTree::~GrowingTree() {
  Count();
  while (m_spare != nullptr) {
    void* memory = m_spare;
    m_spare = *static_cast<void**>(memory);
    ::operator delete(memory);
  }
}

/// Adds what has been made to the counters.
XMLDOM_NOINLINE void GrowingTree::Count() {
  AddToCount(IXMLDOMNode::m_iObjCount, m_uncountedNodes);
  AddToCount(CNodeStackElt::m_iObjCount, m_uncountedElements);
  m_uncountedNodes = m_uncountedElements = 0;
}

void GrowingTree::StartElement(const char* name, const char** attributes) {
  if (!m_text.empty()) StoreText(*Top());
  XMLPtr<IXMLDOMNode> element =
      Adopt(NewNode(m_document, NODE_ELEMENT, name, std::strlen(name), nullptr, 0));
  ++m_uncountedNodes;
  if (attributes != nullptr && attributes[0] != nullptr) AddAttributes(element.Get(), attributes);
  IXMLDOMNode* node = element.Detach();
  Link(node);
  PushOpen(node);
}

XMLDOM_NOINLINE void GrowingTree::EndElement() {
  OpenElement& element = *Top();
  if (!m_text.empty()) StoreText(element);
  if (element.textCapacity != element.textLength) TrimText(element);
  PopOpen();
}

void GrowingTree::Finish() {
  if (!m_text.empty()) StoreText(*Top());
  for (CNodeStackElt* open = m_stack->m_pTop; open != nullptr; open = open->m_pNext) {
    TrimText(static_cast<OpenElement&>(*open));
  }
}

/// Adds the attributes of an element that has none yet.
void GrowingTree::AddAttributes(IXMLDOMNode* element, const char** attributes) {
  IXMLDOMNode* last = nullptr;
  // How many names and values the tag has; the attributes behind these are default attributes.
  int written = XML_GetSpecifiedAttributeCount(m_builder->m_p);
  for (; attributes[0] != nullptr; attributes += 2) {
    const char* value = attributes[1];
    // Most values need no escaping; strcspn then returns their length, which NewNode needs.
    std::size_t length = std::strcspn(value, "&<>\"'");
    if (value[length] != '\0') {
      value = Escaped(value);
      length = m_attributeValue.m_uLength;
    }
    IXMLDOMNode* attribute = NewNode(m_document, NODE_ATTRIBUTE, attributes[0],
                                     std::strlen(attributes[0]), value, length);
    ++m_uncountedNodes;
    attribute->m_pParent = element;
    AppendBehind(last, element->m_pFirstAttribute, attribute);
    last = attribute;
    if ((written -= 2) < 0) m_builder->CountDefault(*attribute);
  }
  // Adding an attribute clears the error code.
  CXML::ClearXMLError();
}

/// Writes the form in which a value is stored into m_attributeValue. Result: that form, borrowed
/// until the next call.
const char* GrowingTree::Escaped(const char* value) {
  m_attributeValue.m_uPosition = 0;
  m_attributeValue.m_uLength = 0;
  m_attributeValue.WriteStrEntities(value);
  return m_attributeValue.GetAsStr();
}

/// Links a node as last child of the innermost open element, or of the document when none is open.
void GrowingTree::Link(IXMLDOMNode* node) {
  OpenElement* parent = Top();
  if (parent == nullptr) {
    m_document->AddChild(node);
    return;
  }
  node->m_pParent = parent->m_pNode;
  AppendBehind(parent->lastChild, parent->m_pNode->m_pFirstChild, node);
  parent->lastChild = node;
}

/// Stores the text that has been collected. The first piece of an element's text gets a child and
/// exactly the memory that it needs, because most texts have no tag in them and do not grow.
void GrowingTree::StoreText(OpenElement& element) {
  if (element.text == nullptr) {
    element.text = NewNode(m_document, NODE_TEXT, kTextName, std::strlen(kTextName), m_text.data(),
                           m_text.size());
    ++m_uncountedNodes;
    element.textLength = element.textCapacity = m_text.size();
    Link(element.text);
  } else {
    GrowText(element);
  }
  m_text.clear();
}

/// Appends the text that has been collected to the child that holds the element's text. The memory
/// at least doubles each time, so that all pieces together are copied in linear time.
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

/// Gives back the memory that a text does not need. The text stays as it is when that fails.
void GrowingTree::TrimText(OpenElement& element) {
  if (element.textCapacity == element.textLength) return;
  void* value = std::realloc(element.text->m_pszValue, element.textLength + 1);
  if (value != nullptr) element.text->m_pszValue = static_cast<char*>(value);
  element.textCapacity = element.textLength;
}

/// Puts an open element on the stack. Its memory is that of a popped one if possible: over a load
/// there are as many stack elements as elements, but only as many at a time as the tree is deep.
void GrowingTree::PushOpen(IXMLDOMNode* node) {
  void* memory = m_spare;
  if (memory != nullptr) {
    m_spare = *static_cast<void**>(memory);
  } else {
    memory = ::operator new(sizeof(OpenElement));
  }
  OpenElement* element = new (memory) OpenElement;
  element->m_pNode = node;
  element->m_pNext = m_stack->m_pTop;
  m_stack->m_pTop = element;
  ++m_uncountedElements;
  if (m_countsAtOnce) Count();
}

/// Takes the innermost element from the stack and keeps its memory. Its destructor would count it.
void GrowingTree::PopOpen() {
  OpenElement* top = Top();
  m_stack->m_pTop = top->m_pNext;
  --m_uncountedElements;
  if (m_countsAtOnce) Count();
  *reinterpret_cast<void**>(top) = m_spare;
  m_spare = top;
}

}  // namespace xmldom
