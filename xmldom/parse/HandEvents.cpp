// What the builder's handlers do when an application calls them by hand, or parses with the builder
// without a load: they use the members of the node class as an application would, and expect
// nothing of the tree, which may change between two calls. Tested by
// tests/parse/XMLSaxHandlers_test.cpp.

#include <xmldom/base/Export.h>
#include <xmldom/dom/NewNode.h>
#include <xmldom/dom/NodeChain.h>
#include <xmldom/dom/XMLDocument.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/ptr/XMLPtr.h>
#include <xmldom/support/MemFile.h>

namespace {

/// The innermost open element, borrowed; null when none is open, or there is no stack.
IXMLDOMNode* OpenElement(const CNodeStack* stack) {
  return stack == nullptr || stack->m_pTop == nullptr ? nullptr : stack->m_pTop->m_pNode;
}

}  // namespace

XMLDOM_COLD void CXMLSax::StartElementByHand(const char* name, const char** attributes) {
  if (m_pNodeStack == nullptr) return;
  IXMLDOMNode* parent = m_bFirstElement ? nullptr : OpenElement(m_pNodeStack);
  m_bFirstElement = false;
  if (parent == nullptr) parent = m_pDocument;

  XMLPtr<IXMLDOMNode> element =
      xmldom::Adopt(new IXMLDOMNode(m_pDocument, name, nullptr, NODE_ELEMENT));
  for (; attributes != nullptr && attributes[0] != nullptr; attributes += 2) {
    CMemFile value(64);
    value.WriteStrEntities(attributes[1]);
    element->AddAttribute(attributes[0], value.GetAsStr());
  }
  IXMLDOMNode* node = element.Detach();
  parent->AddChild(node);
  m_pNodeStack->Push(node);
}

XMLDOM_COLD void CXMLSax::AppendTextByHand(const char* text, int length) {
  IXMLDOMNode* parent = OpenElement(m_pNodeStack);
  if (parent == nullptr || Drops(text, length)) return;
  IXMLDOMNode* existing = xmldom::FindInChain(parent->m_pFirstChild, xmldom::kTextName);
  if (existing != nullptr) {
    existing->AppendValue(text, length);
    return;
  }
  XMLPtr<IXMLDOMNode> created =
      xmldom::Adopt(new IXMLDOMNode(m_pDocument, xmldom::kTextName, nullptr, NODE_TEXT));
  created->AppendValue(text, length);
  parent->AddChild(created.Detach());
}
