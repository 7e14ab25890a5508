// Makes paths that select one node each, with positions where a name is not enough.
// The children of a node are numbered once, so that the paths of many siblings cost no more. Their
// names are sorted: somebody else has chosen them, also so that a hash table would find them
// slowly. Tested by tests/tool/PathSearch_test.cpp, tests/tool/node_path_test.bash and
// tests/tool/HostileNames_test.cpp.

#include <tools/document/ExactPaths.h>

#include <tools/document/DocumentOrder.h>

#include <map>
#include <vector>

namespace tool {

std::string ExactPaths::PathTo(const IXMLDOMNode* node) {
  std::vector<const IXMLDOMNode*> elements;
  const bool isAttribute = node->m_eNodeType == NODE_ATTRIBUTE;
  for (const IXMLDOMNode* element = isAttribute ? node->m_pParent : node;
       element->m_eNodeType == NODE_ELEMENT; element = element->m_pParent) {
    elements.push_back(element);
  }
  std::string path;
  for (auto element = elements.rbegin(); element != elements.rend(); ++element) {
    NumberChildren((*element)->m_pParent);
    path += '/';
    path += (*element)->m_pszNodeName;
    const auto position = m_positions.find(*element);
    if (position != m_positions.end()) path += '[' + std::to_string(position->second) + ']';
  }
  if (isAttribute) path += std::string("/@") + node->m_pszNodeName;
  return path;
}

void ExactPaths::NumberChildren(const IXMLDOMNode* parent) {
  struct Namesakes {
    const IXMLDOMNode* first;
    std::size_t count;
  };
  if (!m_numbered.insert(parent).second) return;
  std::map<std::string, Namesakes> byName;
  for (const IXMLDOMNode* child = ElementFrom(parent->m_pFirstChild); child != nullptr;
       child = ElementFrom(child->m_pNextSibling)) {
    Namesakes& namesakes = byName.emplace(child->m_pszNodeName, Namesakes{child, 0}).first->second;
    ++namesakes.count;
    if (namesakes.count == 1) continue;
    if (namesakes.count == 2) m_positions[namesakes.first] = 1;
    m_positions[child] = namesakes.count;
  }
}

}  // namespace tool
