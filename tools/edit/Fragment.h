#ifndef XMLDOM_TOOLS_EDIT_FRAGMENT_H
#define XMLDOM_TOOLS_EDIT_FRAGMENT_H

#include <cstddef>
#include <string>

namespace tool {

class EditStep;

// The XML that an edit puts into a document: one element with all that it contains.

/// Checks a fragment before the document is known: it has to be well-formed, and nothing but white
/// space may stand beside its element. References to entities that the document may declare are
/// passed over. Effects: throws a UsageError that shows the place in the fragment.
void CheckFragment(const std::string& xml);

/// Makes the fragment of a step from the XML of its edit: the element alone, with the line ends of
/// the document at its first target, and references for what its encoding cannot hold.
/// Effects: throws an EditRefusal when the fragment does not fit the document, because it refers to
/// an entity that is not declared there, or holds a character at a place where no reference can
/// stand for it.
void PrepareFragment(EditStep& step);

/// Loads as many copies of the prepared fragment as the step has targets. They become the children
/// of the root element of `step.copies`, and get the default attributes of the document.
/// Cost: linear in what is put into the document.
void LoadCopies(EditStep& step);

}  // namespace tool

#endif
