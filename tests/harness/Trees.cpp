#include "harness/Trees.h"

#include <gtest/gtest.h>

#include <cstdlib>

Document NewDocument() {
  IXMLDOMDocument2* document = nullptr;
  Create(&document);
  return Document(document);
}

Document Load(const std::string& xml) {
  Document document = NewDocument();
  EXPECT_EQ(VARIANT_TRUE, document->loadXML(xml.c_str())) << "does not parse: " << xml;
  return document;
}

IXMLDOMNode* Root(IXMLDOMDocument2* document) { return document->m_pFirstChild; }

IXMLDOMNode* At(IXMLDOMNode* node, std::initializer_list<int> positions) {
  for (int position : positions) {
    node = node == nullptr ? nullptr : node->m_pFirstChild;
    for (; position > 0 && node != nullptr; --position) node = node->m_pNextSibling;
  }
  EXPECT_NE(nullptr, node) << "no node at this position";
  return node;
}

Node NewElement(IXMLDOMDocument2* owner, const char* name) {
  return Node(new IXMLDOMNode(owner, name, nullptr, NODE_ELEMENT));
}

Node Keep(IXMLDOMNode* node) {
  node->AddRef();
  return Node(node);
}

IXMLDOMNode* NoNode() {
  static IXMLDOMNode* volatile none = nullptr;
  return none;
}

std::string Repeat(const std::string& text, int count) {
  std::string repeated;
  for (int i = 0; i < count; ++i) repeated += text;
  return repeated;
}

std::string Bush(int depth, int width) {
  if (depth == 1) return "<a/>";
  return "<a>" + Repeat(Bush(depth - 1, width), width) + "</a>";
}

std::string AllBytes() {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
  return bytes;
}

std::string TakeBstr(BSTR text) {
  const std::string copy = Text(text);
  SysFreeString(text);
  return copy;
}

std::string TakeHeap(char* text) {
  const std::string copy = Text(text);
  std::free(text);
  return copy;
}

std::string Text(const char* text) { return text == nullptr ? "(null)" : text; }

std::string XmlOf(IXMLDOMNode* node) { return TakeBstr(node->GetXML()); }
