#ifndef XMLDOM_TOOLS_EDIT_EDITEDTEXT_H
#define XMLDOM_TOOLS_EDIT_EDITEDTEXT_H

#include <tools/document/SourceEncoding.h>
#include <tools/edit/Edit.h>

#include <xmldom/xmldom_ptr.h>

#include <cstddef>
#include <functional>
#include <string>

class IXMLDOMDocument2;

namespace tool {

/// What an edit has done.
struct EditOutcome {
  std::size_t selected;  ///< How many elements the path selects.
  std::size_t changed;   ///< At how many of them the edit was made.
};

/// The text of a document while it is edited, with its tree. Every edit is made in both, and the
/// text that it gives has to parse to the tree that it gives (see ProveEdit).
class EditedText {
 public:
  /// `text` is in UTF-8, as `encoding` has decoded it, and `tree` was loaded from it.
  EditedText(const std::string& text, XMLPtr<IXMLDOMDocument2> tree,
             const SourceEncoding& encoding);

  /// Makes an edit at the first element that its path selects, or at all of them; the path "/"
  /// selects the root element. All are edited in one pass, also elements that stand in each other;
  /// --remove and --replace, which take the content of an element along, edit the outer ones alone.
  /// Effects: throws an EditRefusal, a ProofFailure or a SourceMapError when the edit cannot be
  /// made; nothing is changed then. Cost: linear in the text, before and after, apart from sorting
  /// the elements that are edited.
  EditOutcome Apply(const Edit& edit, bool all);

  /// The text as it is now, in UTF-8.
  const std::string& Text() const { return m_text; }

  /// The text as it is now, in the encoding of the document.
  /// Effects: throws a ProofFailure when these bytes do not give the text again.
  std::string Bytes() const;

  /// For tests of the proof: is called with each text that was spliced, before it is proved, and
  /// may change it.
  void SetFault(const std::function<void(std::string&)>& fault) { m_fault = fault; }

 private:
  std::string m_text;
  XMLPtr<IXMLDOMDocument2> m_tree;
  SourceEncoding m_encoding;
  std::function<void(std::string&)> m_fault;
};

}  // namespace tool

#endif
