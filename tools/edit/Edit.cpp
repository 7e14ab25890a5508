// The kinds of edits: how each checks its operands, and how it is made in the text and in the tree.
// A table, EditKinds, binds all that to the option of the command line.
// Tested by tests/tool/Edit_test.cpp and tests/tool/edit_test.bash.

#include <tools/edit/Edit.h>

#include <tools/command/CheckedPath.h>
#include <tools/command/Command.h>
#include <tools/edit/Fragment.h>
#include <tools/edit/SourceEdits.h>
#include <tools/edit/TreeEdits.h>
#include <tools/io/SourceExcerpt.h>
#include <tools/io/SourceText.h>

#include <xmldom/xmldom_ptr.h>

namespace tool {

namespace {

/// For an edit that has no operand but the path.
void CheckNothing(const Edit&) {}

void CheckXml(const Edit& edit) { CheckFragment(edit.operands[1]); }

/// Throws when a text holds a character that cannot stand in an XML document.
void RequireCharacters(const std::string& what, const std::string& text) {
  const std::size_t at = xmldom::FindForbidden(text);
  if (at == std::string::npos) return;
  throw UsageError(
      DescribeProblem(what, text, PositionOf(text, at), "no XML document can hold this"));
}

void CheckText(const Edit& edit) { RequireCharacters("text", edit.operands[1]); }

void RequireName(const std::string& what, const std::string& name) {
  if (xmldom::IsXmlName(name)) return;
  throw UsageError("'" + VisibleLine(name, name.size()) + "' cannot be the name of " + what);
}

void CheckAttributeName(const Edit& edit) { RequireName("an attribute", edit.operands[1]); }

void CheckAttribute(const Edit& edit) {
  CheckAttributeName(edit);
  RequireCharacters("value", edit.operands[2]);
}

void CheckElementName(const Edit& edit) { RequireName("an element", edit.operands[1]); }

}  // namespace

const std::vector<EditKind>& EditKinds() {
  static const std::vector<EditKind> kinds = {
      {"--append", "PATH XML", 2, "Add the XML as last child", false, false, CheckXml, SpliceAppend,
       ChangeAppend},
      {"--insert-before", "PATH XML", 2, "Put the XML before the element", false, false, CheckXml,
       SpliceInsertBefore, ChangeInsertBefore},
      {"--insert-after", "PATH XML", 2, "Put the XML behind the element", false, false, CheckXml,
       SpliceInsertAfter, ChangeInsertAfter},
      {"--replace", "PATH XML", 2, "Put the XML in the place of the element", true, false, CheckXml,
       SpliceReplace, ChangeReplace},
      {"--remove", "PATH", 1, "Remove the element", true, true, CheckNothing, SpliceRemove,
       ChangeRemove},
      {"--rename", "PATH NAME", 2, "Give the element another name", false, false, CheckElementName,
       SpliceRename, ChangeRename},
      {"--set", "PATH TEXT", 2, "Set the text of an element that holds no elements", false, false,
       CheckText, SpliceSetText, ChangeSetText},
      {"--set-attr", "PATH NAME VALUE", 3, "Set an attribute, or add it", false, false,
       CheckAttribute, SpliceSetAttribute, ChangeSetAttribute},
      {"--remove-attr", "PATH NAME", 2, "Remove an attribute", false, false, CheckAttributeName,
       SpliceRemoveAttribute, ChangeRemoveAttribute}};
  return kinds;
}

SearchPath PathOf(const Edit& edit, bool all) {
  return CheckedElementPath(
      edit.operands.front(), all ? PathPurpose::kAll : PathPurpose::kFirst,
      "an element is needed here; --set-attr PATH NAME VALUE sets an attribute of it");
}

void CheckEdit(const Edit& edit, bool all) {
  try {
    if (edit.operands.front() != kRootPath) PathOf(edit, all);
    edit.kind->check(edit);
  } catch (const UsageError& error) {
    throw UsageError(std::string(edit.kind->option) + ": " + error.what());
  }
}

}  // namespace tool
