// Merges the elements of a tree that have the same name below the same merged parent.
// One walk over the tree; a sorted map finds the merged element by its parent and its name. Names
// are what somebody else has chosen, also so that a hash table would find them slowly. Tested by
// tests/tool/tree_test.bash and tests/tool/HostileNames_test.cpp.

#include <tools/document/DocumentShape.h>

#include <xmldom/dom/XMLNode.h>

#include <algorithm>
#include <cstring>

namespace tool {

bool DocumentShape::Key::operator<(const Key& other) const {
  if (parent != other.parent) return parent < other.parent;
  if (isAttribute != other.isAttribute) return isAttribute < other.isAttribute;
  return std::strcmp(name, other.name) < 0;
}

DocumentShape::DocumentShape(const IXMLDOMNode* root, std::size_t levels) {
  const IXMLDOMNode* node = root;
  std::size_t level = 1;  // of `node`
  // The merged element for the parent of `node`, or for its nearest ancestor that is shown.
  std::size_t parent = kNone;
  for (;;) {
    if (node->m_eNodeType == NODE_TEXT) {
      if (level - 1 <= levels) MergeText(m_elements[parent], node->m_pszValue);
    } else if (level > levels) {
      std::size_t& hidden = m_elements[parent].hiddenLevels;
      hidden = std::max(hidden, level - levels);
    }
    const bool isShown = node->m_eNodeType != NODE_TEXT && level <= levels;
    const std::size_t merged = isShown ? Merge(parent, node) : parent;

    if (node->m_pFirstChild != nullptr) {
      node = node->m_pFirstChild;
      parent = merged;
      ++level;
      continue;
    }
    while (node != root && node->m_pNextSibling == nullptr) {
      node = node->m_pParent;
      --level;
      if (level <= levels) parent = m_elements[parent].parent;
    }
    if (node == root) return;
    node = node->m_pNextSibling;
  }
}

void DocumentShape::MergeText(Element& element, const char* text) {
  static const struct {
    const char* begin;
    const char* end;
    bool Element::*kind;
    bool mayBeEmpty;  // whether it counts also when nothing stands between the marks
  } kMarks[] = {{"<!--", "-->", &Element::hasComment, true},
                {"<?", "?>", &Element::hasInstruction, true},
                {"<![CDATA[", "]]>", &Element::hasText, false},
                {"", "<", &Element::hasText, false}};
  while (text != nullptr && *text != '\0') {
    for (const auto& marks : kMarks) {
      const std::size_t length = std::strlen(marks.begin);
      if (std::strncmp(text, marks.begin, length) != 0) continue;
      const char* const content = text + length;
      // A '<' that begins no mark counts as plain text.
      const char* const end = std::strstr(length == 0 ? content + 1 : content, marks.end);
      if (marks.mayBeEmpty || end != content) element.*marks.kind = true;
      // The next mark begins where plain text ends, and behind any other.
      text = end == nullptr || length == 0 ? end : end + std::strlen(marks.end);
      break;
    }
  }
}

std::size_t DocumentShape::Merge(std::size_t parent, const IXMLDOMNode* node) {
  const auto placed = m_positions.emplace(Key{parent, false, node->m_pszNodeName}, 0);
  if (placed.second) placed.first->second = Append(parent, node->m_pszNodeName);
  const std::size_t position = placed.first->second;
  Element& element = m_elements[position];
  ++element.count;
  for (const IXMLDOMNode* attribute = node->m_pFirstAttribute; attribute != nullptr;
       attribute = attribute->m_pNextSibling) {
    const bool isNew = m_positions.emplace(Key{position, true, attribute->m_pszNodeName}, 0).second;
    if (isNew) element.attributes.push_back(attribute->m_pszNodeName);
  }
  return position;
}

std::size_t DocumentShape::Append(std::size_t parent, const char* name) {
  const std::size_t position = m_elements.size();
  m_elements.push_back({name, 0, false, false, false, {}, 0, parent, kNone, kNone, kNone});
  if (parent == kNone) return position;
  std::size_t& lastChild = m_elements[parent].lastChild;
  if (lastChild == kNone) {
    m_elements[parent].firstChild = position;
  } else {
    m_elements[lastChild].nextSibling = position;
  }
  lastChild = position;
  return position;
}

}  // namespace tool
