// The place of a node in its tree, as a path of element names. The parents are pushed on a stack
// and written from the top of the tree down. Tested by tests/text/NodePlace_test.cpp.

#include <xmldom/dom/TreeWalk.h>
#include <xmldom/dom/XMLNode.h>
#include <xmldom/text/TextOutput.h>

void IXMLDOMNode::GetPathToNode(CMemFile& out) {
  out.m_uLength = 0;
  out.m_uPosition = 0;
  GetPathToNodeHelper(this, out);
}

void IXMLDOMNode::GetPathToNodeHelper(IXMLDOMNode* pNode, CMemFile& out) {
  xmldom::SideTrail fromNodeUp;
  for (; pNode != nullptr; pNode = pNode->m_pParent) fromNodeUp.Push(pNode);
  while (!fromNodeUp.IsEmpty()) {
    const IXMLDOMNode* node = fromNodeUp.Pop();
    if (node->m_eNodeType != NODE_ELEMENT) continue;
    xmldom::WriteLiteral(out, "/");
    xmldom::WriteText(out, node->m_pszNodeName);
  }
}
