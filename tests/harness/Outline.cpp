#include "harness/Outline.h"

#include <xmldom/xmldom.h>

#include "harness/Trees.h"

namespace {

std::string OutlineChain(const IXMLDOMNode* head) {
  std::string line;
  for (const IXMLDOMNode* node = head; node != nullptr; node = node->m_pNextSibling) {
    if (node != head) line += ' ';
    line += Outline(node);
  }
  return line;
}

}  // namespace

std::string Outline(const IXMLDOMNode* node) {
  if (node->m_eNodeType == NODE_DOCUMENT) return OutlineChain(node->m_pFirstChild);
  std::string line = Text(node->m_pszNodeName);
  if (node->m_eNodeType == NODE_ATTRIBUTE) line += '=';
  if (node->m_pszValue != nullptr) line += "'" + std::string(node->m_pszValue) + "'";
  if (node->m_pFirstAttribute != nullptr) line += "(" + OutlineChain(node->m_pFirstAttribute) + ")";
  if (node->m_pFirstChild != nullptr) line += "[" + OutlineChain(node->m_pFirstChild) + "]";
  return line;
}
