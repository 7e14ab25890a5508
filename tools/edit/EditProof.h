#ifndef XMLDOM_TOOLS_EDIT_EDITPROOF_H
#define XMLDOM_TOOLS_EDIT_EDITPROOF_H

#include <xmldom/xmldom_ptr.h>

#include <stdexcept>
#include <string>
#include <unordered_set>

class IXMLDOMDocument2;
class IXMLDOMNode;

namespace tool {

/// A text that was made by an edit does not hold what the edit asks for; the text says why.
class ProofFailure : public std::runtime_error {
 public:
  explicit ProofFailure(const std::string& reason) : std::runtime_error(reason) {}
};

/// Elements of a tree, in no order; borrowed.
using Elements = std::unordered_set<const IXMLDOMNode*>;

/// Parses a text that was spliced, and compares its tree with `expected`, the tree in which the
/// library has made the same edit: the names of the root elements, and with CompareXMLNodes all
/// that is below them.
///
/// `joined`: the elements of `expected` out of which an element was taken, which joins the texts
/// around it. The library drops a piece of white space alone, and joining two texts changes which
/// pieces there are; where two texts would become "]]>", a reference takes the place of the last
/// character. In the texts of these elements, outside of markup, white space is therefore not
/// compared, and "&gt;" counts as ">". Effects: `expected` may lose this white space and these
/// references.
///
/// Result: the tree of the text. Effects: throws a ProofFailure when it differs, or when the text
/// is not well-formed. Cost: linear in both trees.
XMLPtr<IXMLDOMDocument2> ProveEdit(const std::string& text, IXMLDOMDocument2& expected,
                                   const Elements& joined);

}  // namespace tool

#endif
