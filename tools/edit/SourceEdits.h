#ifndef XMLDOM_TOOLS_EDIT_SOURCEEDITS_H
#define XMLDOM_TOOLS_EDIT_SOURCEEDITS_H

namespace tool {

class EditStep;

// The edits in the bytes of a text: each adds what it replaces to `step.splices`, for all targets.
// What is put in gets the layout of what stands beside it, but no white space in an element that
// holds text or keeps its white space. Effects: an EditRefusal is thrown when the edit cannot be
// made. Cost: linear in the children of the targets and in what is put in.

/// Behind the last child of the element, or what else it holds last. In an element that is empty
/// and begins its line, on a line of its own, one step further in.
void SpliceAppend(EditStep& step);
void SpliceInsertBefore(EditStep& step);
void SpliceInsertAfter(EditStep& step);
void SpliceReplace(EditStep& step);
/// The element goes with its lines when nothing else stands on them, or only other targets do.
/// Where the texts around it would become "]]>", "&gt;" takes the place of the last character;
/// where "\r" and "\n" would become one line end, the second becomes "\r\n".
void SpliceRemove(EditStep& step);
/// In the place of the content, which may hold no element.
void SpliceSetText(EditStep& step);
/// The quotes stay, unless only the other ones spare a reference. A new attribute stands behind the
/// others, as they do behind each other.
void SpliceSetAttribute(EditStep& step);
/// The attribute goes with the white space before it. Elements that do not have it are no targets
/// any more.
void SpliceRemoveAttribute(EditStep& step);
void SpliceRename(EditStep& step);

}  // namespace tool

#endif
