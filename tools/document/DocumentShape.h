#ifndef XMLDOM_TOOLS_DOCUMENT_DOCUMENTSHAPE_H
#define XMLDOM_TOOLS_DOCUMENT_DOCUMENTSHAPE_H

#include <cstddef>
#include <functional>
#include <unordered_map>
#include <vector>

class IXMLDOMNode;

namespace tool {

/// The elements of a tree, merged: those of one name below the same merged parent are one.
/// Names are borrowed from the tree.
class DocumentShape {
 public:
  static const std::size_t kNone = static_cast<std::size_t>(-1);

  /// Links are positions in Elements(), or kNone.
  struct Element {
    const char* name;
    std::size_t count;  ///< How many are merged here.
    bool hasText;
    std::vector<const char*> attributes;  ///< Of any of them, in the order of the first.
    std::size_t hiddenLevels;             ///< How many levels below are left out.
    std::size_t parent;
    std::size_t firstChild;
    std::size_t lastChild;
    std::size_t nextSibling;
  };

  /// Merges the tree below and with `root`, down to the level `levels`; the root is at level 1.
  /// Cost: linear in the nodes and the bytes of their names; the stack does not grow.
  DocumentShape(const IXMLDOMNode* root, std::size_t levels);

  /// The root first, every element behind its parent.
  const std::vector<Element>& Elements() const { return m_elements; }

 private:
  struct Key {
    std::size_t parent;
    bool isAttribute;
    const char* name;

    bool operator==(const Key& other) const;
  };
  struct KeyHash {
    std::size_t operator()(const Key& key) const;
  };

  std::size_t Merge(std::size_t parent, const IXMLDOMNode* node);
  std::size_t Append(std::size_t parent, const char* name);

  std::vector<Element> m_elements;
  std::unordered_map<Key, std::size_t, KeyHash> m_positions;  // 0 for attributes
};

}  // namespace tool

#endif
