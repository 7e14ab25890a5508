#ifndef XMLDOM_TOOLS_EDIT_EDITSTEP_H
#define XMLDOM_TOOLS_EDIT_EDITSTEP_H

#include <tools/document/SourceEncoding.h>
#include <tools/document/SourceMap.h>
#include <tools/document/Splice.h>
#include <tools/edit/Edit.h>

#include <xmldom/xmldom_ptr.h>

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

class IXMLDOMDocument2;
class IXMLDOMNode;

namespace tool {

/// An edit cannot be made in a document; the text says why.
class EditRefusal : public std::runtime_error {
 public:
  EditRefusal(std::size_t offset, const std::string& reason)
      : std::runtime_error(reason), m_offset(offset) {}

  /// The place in the text that is edited.
  std::size_t Offset() const { return m_offset; }

 private:
  std::size_t m_offset;
};

/// An element at which an edit is made, and where it stands.
struct EditTarget {
  XMLPtr<IXMLDOMNode> node;
  const SourcePlace* place;
};

/// What one edit works on: a text with its tree and their map, and the elements to be edited in
/// both. Its members are for the functions of EditKind.
class EditStep {
 public:
  /// `source`, in UTF-8, is what `document` was loaded from. All are borrowed, and the document is
  /// changed.
  EditStep(const Edit& madeEdit, const std::string& source, IXMLDOMDocument2& document,
           const SourceEncoding& sourceEncoding);

  EditStep(const EditStep&) = delete;
  EditStep& operator=(const EditStep&) = delete;

  /// Finds the elements that the path selects, or with `all` unset only the first of them. They are
  /// in the order in which they stand in the text, each of them once. For an edit that takes the
  /// content of an element along, those inside another one are left out.
  /// Effects: throws an EditRefusal for an element that does not stand in the text itself.
  void SelectTargets(bool all);

  /// How many elements the edit changes. The `splice` of its kind may remove targets where there is
  /// nothing to change.
  std::size_t Count() const { return targets.size(); }

  /// Throws an EditRefusal at the begin of an element.
  [[noreturn]] static void Refuse(const EditTarget& target, const std::string& reason);

  /// The place of a node of the tree, as it is before the edit.
  const SourcePlace* PlaceOf(const IXMLDOMNode* node) const { return map.Find(node); }

  /// The document type of the text, with its declarations.
  std::string DocumentType() const;

  const Edit& edit;
  const std::string& text;
  IXMLDOMDocument2& tree;
  const SourceEncoding& encoding;
  const SourceMap map;
  std::vector<EditTarget> targets;
  Splices splices;

  /// For edits with XML: the fragment as it is put into the text.
  std::string fragment;
  /// What copies of the fragment were loaded into. It has to live as long as the tree: attributes
  /// that have moved from it still refer to it as owner document.
  XMLPtr<IXMLDOMDocument2> copies;
};

}  // namespace tool

#endif
