#include "plain/PlainComparison.h"

#include <xmldom/xmldom.h>

#include <cstring>

namespace plain {

namespace {

const char* Shown(const char* text) { return text == nullptr ? "(null)" : text; }

bool Same(const char* a, const char* b) {
  if (a == nullptr || b == nullptr) return a == b;
  return std::strcmp(a, b) == 0;
}

void Dump(CMemFile& report, IXMLDOMNode* node1, IXMLDOMNode* node2) {
  report.WriteF("-----\nNode 1:\n%s\n", static_cast<char*>(node1->Getxml()));
  report.WriteF("-----\nNode 2:\n%s\n", static_cast<char*>(node2->Getxml()));
}

IXMLDOMNode* DocumentElement(IXMLDOMNode* node) {
  const bool isDocument =
      node != nullptr && node->m_pOwnerDocument == static_cast<const void*>(node);
  return isDocument ? node->m_pFirstChild : node;
}

int CompareAttributes(IXMLDOMNode* node1, IXMLDOMNode* node2, CMemFile& report, int depth) {
  IXMLDOMNode* a = node1->m_pFirstAttribute;
  IXMLDOMNode* b = node2->m_pFirstAttribute;
  while (a != nullptr && b != nullptr) {
    if (!Same(a->m_pszNodeName, b->m_pszNodeName)) {
      report.WriteF("Failed at depth %d: Attribute name mismatch, %s vs %s", depth,
                    Shown(a->m_pszNodeName), Shown(b->m_pszNodeName));
      Dump(report, node1, node2);
      return 0;
    }
    if (!Same(a->GetStrValue(), b->GetStrValue())) {
      report.WriteF("Failed at depth %d: Attribute value mismatch, %s vs %s", depth,
                    Shown(a->GetStrValue()), Shown(b->GetStrValue()));
      Dump(report, node1, node2);
      return 0;
    }
    a = a->m_pNextSibling;
    b = b->m_pNextSibling;
  }
  if (a == nullptr && b == nullptr) return 1;
  report.WriteF(a != nullptr ? "Failed at depth %d: Node 1 has more attributes than Node 2\n"
                             : "Failed at depth %d: Node 2 has more attributes than Node 1\n",
                depth);
  Dump(report, node1, node2);
  return 0;
}

int CompareChild(IXMLDOMNode* a, IXMLDOMNode* b, CMemFile& report, int depth) {
  if (a->m_eNodeType != b->m_eNodeType) {
    report.WriteF("Failed at depth %d: node type mismatch, %d vs %d", depth,
                  static_cast<int>(a->m_eNodeType), static_cast<int>(b->m_eNodeType));
    Dump(report, a, b);
    return 0;
  }
  if (!Same(a->m_pszNodeName, b->m_pszNodeName)) {
    report.WriteF("Failed at depth %d: node name mismatch, %s vs %s", depth,
                  Shown(a->m_pszNodeName), Shown(b->m_pszNodeName));
    Dump(report, a, b);
    return 0;
  }
  if (a->m_eNodeType != NODE_TEXT) return plain::CompareXMLNodes(a, b, report, depth + 1);
  if (Same(a->GetStrValue(), b->GetStrValue())) return 1;
  report.WriteF("Failed at depth %d: text value mismatch, %s vs %s", depth, Shown(a->GetStrValue()),
                Shown(b->GetStrValue()));
  Dump(report, a, b);
  return 0;
}

int CompareMissing(IXMLDOMNode* node1, IXMLDOMNode* node2, CMemFile& report, int depth) {
  if (node1 == nullptr && node2 == nullptr) return 1;
  IXMLDOMNode* present = node1 != nullptr ? node1 : node2;
  report.WriteF(node1 == nullptr ? "Failed at depth %d: pNode1 NULL, pNode2 Non-NULL\n"
                                 : "Failed at depth %d: pNode1 Non-NULL, pNode2 NULL\n",
                depth);
  report.WriteF("-----\n%s\n", static_cast<char*>(present->Getxml()));
  return 0;
}

}  // namespace

int CompareXMLNodes(IXMLDOMNode* node1, IXMLDOMNode* node2, CMemFile& report, int depth) {
  if (depth == 0) {
    report.m_uPosition = 0;
    report.m_uLength = 0;
    node1 = DocumentElement(node1);
    node2 = DocumentElement(node2);
  }
  if (node1 == nullptr || node2 == nullptr) return CompareMissing(node1, node2, report, depth);
  if (CompareAttributes(node1, node2, report, depth) == 0) return 0;
  IXMLDOMNode* a = node1->m_pFirstChild;
  IXMLDOMNode* b = node2->m_pFirstChild;
  while (a != nullptr && b != nullptr) {
    if (CompareChild(a, b, report, depth) == 0) return 0;
    a = a->m_pNextSibling;
    b = b->m_pNextSibling;
  }
  if (a == nullptr && b == nullptr) return 1;
  report.WriteF(a != nullptr ? "Failed at depth %d: Node 1 has more children than Node 2\n"
                             : "Failed at depth %d: Node 2 has more children than Node 1\n",
                depth);
  Dump(report, node1, node2);
  return 0;
}

}  // namespace plain
