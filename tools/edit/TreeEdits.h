#ifndef XMLDOM_TOOLS_EDIT_TREEEDITS_H
#define XMLDOM_TOOLS_EDIT_TREEEDITS_H

namespace tool {

class EditStep;

// The edits in the tree of a document, at all targets, with the calls of the library. They do not
// look at what was spliced, so that each way shows whether the other one is right. The tree gets
// what a load makes of a text: values of attributes with references for markup alone, and default
// attributes behind all others. Cost: linear in the children of the parents of the targets and in
// what is put in.

void ChangeAppend(EditStep& step);
void ChangeInsertBefore(EditStep& step);
void ChangeInsertAfter(EditStep& step);
void ChangeReplace(EditStep& step);
void ChangeRemove(EditStep& step);
void ChangeSetText(EditStep& step);
void ChangeSetAttribute(EditStep& step);
void ChangeRemoveAttribute(EditStep& step);
/// Default attributes of the element go with its old name, and come with its new one. Cost: linear
/// in the attributes, and for each of them the logarithm of the number of those that stand in the
/// tag, in comparisons of names.
void ChangeRename(EditStep& step);

}  // namespace tool

#endif
