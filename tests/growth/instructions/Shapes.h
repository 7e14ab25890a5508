#ifndef XMLDOM_TESTS_GROWTH_INSTRUCTIONS_SHAPES_H
#define XMLDOM_TESTS_GROWTH_INSTRUCTIONS_SHAPES_H

#include <xmldom/xmldom.h>

#include <string>

#include "growth/instructions/Growth.h"
#include "harness/Trees.h"

// Trees that rows of several subjects begin with, and the exceptions that they share.

const char* const kAdditions = "Additions";
const char* const kLookups = "Lookups by name";

inline Document Wide(int size) { return Load("<r>" + Times(size, "<a/>") + "</r>"); }

inline std::string Records(int size) { return "<r>" + Times(size, "<a b='c'>t</a>") + "</r>"; }

inline std::string Levels(int size) { return Times(size, "<a>") + Times(size, "</a>"); }

inline Document Deep(int size) { return Load(Levels(size)); }

/// A name that begins otherwise than most others, so that comparing them costs the same wherever.
inline std::string NameOf(int i) { return char('A' + i % 26) + std::to_string(i); }

inline std::string Attributes(int size) {
  std::string text;
  for (int i = 0; i < size; ++i) text += " k" + std::to_string(i) + "='v'";
  return text;
}

inline Document WithAttributes(int size) { return Load("<r" + Attributes(size) + "/>"); }

/// Texts that no load would leave apart.
inline Document WithTextsBetweenElements(int size) {
  Document document = Load("<r/>");
  for (int i = 0; i < size; ++i) {
    Root(document)->AddTextChild("t");
    Node(Root(document)->AddChild("a", nullptr));
  }
  return document;
}

inline IXMLDOMNode* LastChild(IXMLDOMNode* node) {
  Node last;
  node->get_lastChild(last.Out());
  return last;
}

inline Node NewNode() { return Node(new IXMLDOMNode(nullptr, "n", nullptr, NODE_ELEMENT)); }

inline void Replace(IXMLDOMNode* list, IXMLDOMNode* child) {
  Node node(NewNode());
  Node replaced;
  Require(list->replaceChild(node, child, replaced.Out()) == S_OK);
  node.Detach();
}

inline void ReplaceEach(IXMLDOMNode* root) {
  IXMLDOMNode* present = root->m_pFirstChild;
  const Counted counted;
  while (present != nullptr) {
    IXMLDOMNode* const next = present->m_pNextSibling;
    Replace(root, present);
    present = next;
  }
}

#endif
