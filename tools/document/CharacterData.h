#ifndef XMLDOM_TOOLS_DOCUMENT_CHARACTERDATA_H
#define XMLDOM_TOOLS_DOCUMENT_CHARACTERDATA_H

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

class IXMLDOMNode;

namespace tool {

/// The character data of elements, as the XML standard defines it: all text between the tags of an
/// element, that of the elements below it included, in the order of the file. References and
/// entities are replaced by what they stand for, CDATA sections are unwrapped, each line end is a
/// line feed, white space stays as it is. Comments and processing instructions are left out, and so
/// are references to entities whose text is not in the file. The tree of the library tells less: it
/// puts the texts of an element before its child elements, drops white space alone, and keeps the
/// marks of comments and CDATA sections.
class CharacterData {
 public:
  /// Reads the character data of `elements`, any of the tree that `document` is the top of. `text`
  /// is what that tree was made from.
  /// Effects: std::bad_alloc when memory is out; std::runtime_error for a text that does not parse.
  /// Cost: one pass of the parser, and memory for the character data once, however the elements are
  /// nested. The stack does not grow with their depth.
  CharacterData(const std::string& text, IXMLDOMNode* document,
                const std::vector<IXMLDOMNode*>& elements);

  /// Result: the character data of one of these elements, in UTF-8.
  std::string Of(const IXMLDOMNode* element) const;

 private:
  class Reader;

  /// Where the character data of an element stands in m_text.
  struct Range {
    std::size_t begin;
    std::size_t end;
  };

  std::string m_text;  // all character data inside the elements, in the order of the file
  std::unordered_map<const IXMLDOMNode*, Range> m_ranges;
};

}  // namespace tool

#endif
