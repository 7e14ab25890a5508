#ifndef XMLDOM_TOOLS_DOCUMENT_SOURCEMAP_H
#define XMLDOM_TOOLS_DOCUMENT_SOURCEMAP_H

#include <tools/document/StartTag.h>

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

class IXMLDOMDocument2;
class IXMLDOMNode;

namespace tool {

/// Where a node of a tree stands in the text that the tree was loaded from, by offsets of bytes.
///
///     node       begin to end                      innerBegin to innerEnd
///     element    from '<' of its start tag to      its content; empty, at `end`, for an
///                '>' of its end tag                empty-element tag such as <a/>
///     attribute  its name to its closing quote     its value, without the quotes
///     text       from the first character that     the same
///                the library keeps to the last
///     document   the whole text                    the same
///
/// An element has one text at most, which also holds what stands behind its child elements.
struct SourcePlace {
  enum Origin : std::uint8_t {
    kWritten,          ///< It stands in the text itself, at this place.
    kFromEntity,       ///< An entity brings it: the place is that of the reference to the entity.
    kFromDocumentType  ///< A default attribute: the place is the start tag of its element.
  };

  std::uint32_t begin;
  std::uint32_t end;
  std::uint32_t innerBegin;
  std::uint32_t innerEnd;
  Origin origin;
  bool holdsCharacters;  ///< For an element: whether its content holds more than white space,
                         ///< markup and child elements. References and CDATA sections count.
  bool keepsSpace;       ///< For an element: whether xml:space='preserve' holds in it.

  bool IsWritten() const { return origin == kWritten; }
  /// For an element that is written: whether it is an empty-element tag.
  bool IsEmptyTag() const { return innerBegin == end; }
};

/// The parser does not find in a text what a tree holds, so that no place can be told.
class SourceMapError : public std::runtime_error {
 public:
  SourceMapError(std::size_t offset, const std::string& reason)
      : std::runtime_error(reason), m_offset(offset) {}

  /// Where in the text both differ.
  std::size_t Offset() const { return m_offset; }

 private:
  std::size_t m_offset;
};

/// The places of all nodes of a tree in the text that it was loaded from.
///
/// The text is in UTF-8 or in another encoding in which ASCII characters are single bytes; the
/// places are offsets into these bytes.
class SourceMap {
 public:
  /// Parses `text` once more, in step with a walk over the tree of `document`, which LoadText has
  /// made of the same text and which has not been changed since. Nodes that are added to the tree
  /// later have no place.
  /// Effects: throws a SourceMapError where the parser and the tree differ, in the names or number
  /// of elements and attributes, or in where there are texts.
  /// Cost: linear in the text; 48 bytes a node at most, also while it is made. The stack does not
  /// grow.
  SourceMap(const std::string& text, IXMLDOMDocument2& document);

  /// The place of a node of the tree. Result: borrowed from the map; null for any other node.
  /// Cost: constant, by a hash table of the addresses of the nodes.
  const SourcePlace* Find(const IXMLDOMNode* node) const;

  /// The document type, from "<!DOCTYPE" to its '>'; empty without one.
  SourceRange DocumentType() const { return m_documentType; }

  /// How many bytes of memory the map takes.
  std::size_t Size() const;

 private:
  friend class SourceMapBuilder;

  struct Entry {
    const IXMLDOMNode* node;
    SourcePlace place;
  };

  std::size_t SlotOf(const IXMLDOMNode* node) const;

  std::vector<Entry> m_entries;
  // Open addressing: each slot holds the number of an entry, counted from 1, or 0. It has a power
  // of two of slots, and at least a quarter of them is free.
  std::vector<std::uint32_t> m_slots;
  SourceRange m_documentType;
};

}  // namespace tool

#endif
