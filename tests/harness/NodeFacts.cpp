#include "harness/NodeFacts.h"

#include <xmldom/xmldom.h>

#include "harness/Trees.h"

namespace {

std::string ReferencesInChain(const IXMLDOMNode* head) {
  std::string line;
  for (const IXMLDOMNode* node = head; node != nullptr; node = node->m_pNextSibling) {
    if (node != head) line += ' ';
    line += References(node);
  }
  return line;
}

std::string FaultsBelow(const IXMLDOMDocument2* document, const IXMLDOMNode* node, int* count) {
  std::string faults;
  ++*count;
  if (node->GetRefCount() != 1) faults += Text(node->m_pszNodeName) + " is held elsewhere\n";
  for (const IXMLDOMNode* first : {node->m_pFirstAttribute, node->m_pFirstChild}) {
    for (const IXMLDOMNode* below = first; below != nullptr; below = below->m_pNextSibling) {
      const std::string name = Text(below->m_pszNodeName);
      if (below->m_pParent != node) faults += name + " has another parent\n";
      if (below->m_pOwnerDocument != document) faults += name + " has another owner\n";
      faults += FaultsBelow(document, below, count);
    }
  }
  return faults;
}

std::string NameUnlessOwned(const IXMLDOMDocument2* owner, const IXMLDOMNode* node) {
  return node->m_pOwnerDocument == owner ? "" : Text(node->m_pszNodeName) + " ";
}

}  // namespace

std::string References(const IXMLDOMNode* node) {
  std::string line = Text(node->m_pszNodeName) + std::to_string(node->GetRefCount());
  if (node->m_pFirstAttribute != nullptr) {
    line += "(" + ReferencesInChain(node->m_pFirstAttribute) + ")";
  }
  if (node->m_pFirstChild != nullptr) line += "[" + ReferencesInChain(node->m_pFirstChild) + "]";
  return line;
}

std::string NotOwnedBy(const IXMLDOMDocument2* owner, const IXMLDOMNode* node) {
  std::string names = NameUnlessOwned(owner, node);
  for (const IXMLDOMNode* child = node->m_pFirstChild; child != nullptr;
       child = child->m_pNextSibling) {
    names += NotOwnedBy(owner, child);
  }
  return names;
}

std::string AttributesNotOwnedBy(const IXMLDOMDocument2* owner, const IXMLDOMNode* node) {
  std::string names;
  for (const IXMLDOMNode* attribute = node->m_pFirstAttribute; attribute != nullptr;
       attribute = attribute->m_pNextSibling) {
    names += NameUnlessOwned(owner, attribute);
  }
  for (const IXMLDOMNode* child = node->m_pFirstChild; child != nullptr;
       child = child->m_pNextSibling) {
    names += AttributesNotOwnedBy(owner, child);
  }
  return names;
}

std::string Faults(const IXMLDOMDocument2* document, int nodesBefore) {
  int count = 0;
  std::string faults = FaultsBelow(document, document, &count);
  const int alive = IXMLDOMNode::m_iObjCount - nodesBefore;
  if (alive != count) {
    faults += "of " + std::to_string(alive) + " live nodes, " + std::to_string(count) +
              " are in the tree\n";
  }
  return faults;
}
