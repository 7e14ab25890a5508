#ifndef XMLDOM_TOOLS_EDIT_EDITPROOF_H
#define XMLDOM_TOOLS_EDIT_EDITPROOF_H

#include <xmldom/xmldom_ptr.h>

#include <stdexcept>
#include <string>

class IXMLDOMDocument2;

namespace tool {

/// A text that was made by an edit does not hold what the edit asks for; the text says why.
class ProofFailure : public std::runtime_error {
 public:
  explicit ProofFailure(const std::string& reason) : std::runtime_error(reason) {}
};

/// Parses a text that was spliced, and compares its tree with `expected`, the tree in which the
/// library has made the same edit: the names of the root elements, and with CompareXMLNodes all
/// that is below them.
///
/// `joinsTexts`: an element was taken out between texts. The library drops a piece of white space
/// alone, and joining two texts changes which pieces there are; and where the two would become
/// "]]>", a reference takes the place of the last character. So white space in texts is then not
/// compared, and `expected` loses it; and the reference counts as the character.
///
/// Result: the tree of the text. Effects: throws a ProofFailure when it differs, or when the text
/// is not well-formed. Cost: linear in both trees.
XMLPtr<IXMLDOMDocument2> ProveEdit(const std::string& text, IXMLDOMDocument2& expected,
                                   bool joinsTexts);

}  // namespace tool

#endif
