#ifndef XMLDOM_TOOLS_DOCUMENT_DOCUMENTSHAPE_H
#define XMLDOM_TOOLS_DOCUMENT_DOCUMENTSHAPE_H

#include <cstddef>
#include <map>
#include <vector>

class IXMLDOMNode;

namespace tool {

/// The shape of a tree: its elements, of which those that have the same name below the same merged
/// parent are merged into one. A list of a thousand <item> elements so becomes one element `item`,
/// which has all children and attributes that occur in any of them.
/// Names are borrowed from the tree.
class DocumentShape {
 public:
  static const std::size_t kNone = static_cast<std::size_t>(-1);

  /// A merged element. The last four are positions in Elements(), or kNone.
  struct Element {
    const char* name;
    std::size_t count;  ///< How many elements of the tree are merged here.
    // Whether any of them holds such a thing. White space between tags is no text.
    bool hasText;
    bool hasComment;
    bool hasInstruction;
    std::vector<const char*> attributes;  ///< Names of all attributes, as they first occur.
    std::size_t hiddenLevels;             ///< How many levels below it are not shown.
    std::size_t parent;
    std::size_t firstChild;
    std::size_t lastChild;
    std::size_t nextSibling;
  };

  /// Merges `root` and what is below it, down to the level `levels`; the root is at level 1.
  /// Cost: linear in the nodes and the bytes of their texts and names, and for each element and
  /// attribute the logarithm of the number of merged ones, in comparisons; the stack does not grow.
  DocumentShape(const IXMLDOMNode* root, std::size_t levels);

  /// All merged elements: the root is the first, and each stands behind its parent.
  const std::vector<Element>& Elements() const { return m_elements; }

 private:
  /// What is looked up: an element by its merged parent and name, or the name of an attribute by
  /// the merged element that has it.
  struct Key {
    std::size_t parent;
    bool isAttribute;
    const char* name;

    bool operator<(const Key& other) const;
  };

  /// Adds what a text of the tree holds to a merged element: the library keeps comments, processing
  /// instructions and CDATA sections as texts, with their marks.
  static void MergeText(Element& element, const char* text);
  /// Adds `node` to the merged element it belongs to. Result: the position of that element.
  std::size_t Merge(std::size_t parent, const IXMLDOMNode* node);
  /// Makes a new merged element, the last child of `parent`. Result: its position.
  std::size_t Append(std::size_t parent, const char* name);

  std::vector<Element> m_elements;
  std::map<Key, std::size_t> m_positions;  // unused values for attributes
};

}  // namespace tool

#endif
