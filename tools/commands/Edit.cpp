// The six kinds of edits: how each checks its operands, and how it changes a document.
// A table, EditKinds, binds both to the option of the command line.
// Tested by tests/tool/Edit_test.cpp and tests/tool/edit_test.bash.

#include <tools/commands/Edit.h>

#include <tools/command/Command.h>
#include <tools/command/Query.h>
#include <tools/document/DocumentLoad.h>
#include <tools/document/LossCheck.h>
#include <tools/document/PathSearch.h>
#include <tools/io/SourceExcerpt.h>
#include <tools/io/SourceText.h>

#include <xmldom/dom/XMLDocument.h>
#include <xmldom/xmldom_ptr.h>

namespace tool {

namespace {

// For an edit, this path means the root element, whatever its name; a search of the library would
// select the document.
const char kRootPath[] = "/";

// ---- Checks of operands, before any file is read

/// The path of an edit. Effects: throws a UsageError when something is wrong with it.
SearchPath PathOf(const Edit& edit) {
  return CheckedElementPath(
      edit.operands.front(), PathPurpose::kFirst,
      "an element is needed here; --set-attr PATH NAME VALUE sets an attribute of it");
}

/// Throws a UsageError that shows the byte at `offset` of an operand, which messages call `what`.
[[noreturn]] void RefuseOperand(const std::string& what, const std::string& operand,
                                std::size_t offset, const std::string& reason) {
  throw UsageError(DescribeProblem(what, operand, PositionOf(operand, offset), reason));
}

/// For an edit that has no operand but the path.
void CheckNothing(const Edit&, bool) {}

/// Throws when the XML of an edit is not well-formed, or would be changed by the library although
/// nothing may be lost.
void CheckContent(const Edit& edit, bool isCareful) {
  const std::string& xml = edit.operands[1];
  LoadProblem problem;
  if (LoadText(xml, problem) == nullptr) {
    throw UsageError(DescribeProblem("XML", xml, problem.position, problem.reason));
  }
  if (!isCareful) return;
  const LossReport report = FindLoss(xml, Surroundings::kDropped);
  if (report.reason != nullptr) RefuseOperand("XML", xml, report.offset, report.reason);
}

/// Throws when a text holds a character that cannot stand in an XML document.
void RequireCharacters(const std::string& what, const std::string& text) {
  const std::size_t at = xmldom::FindForbidden(text);
  if (at != std::string::npos) RefuseOperand(what, text, at, "no XML document can hold this");
}

void CheckText(const Edit& edit, bool) { RequireCharacters("text", edit.operands[1]); }

void CheckAttribute(const Edit& edit, bool) {
  const std::string& name = edit.operands[1];
  if (!xmldom::IsXmlName(name)) {
    throw UsageError("'" + VisibleLine(name, name.size()) + "' cannot be the name of an attribute");
  }
  RequireCharacters("value", edit.operands[2]);
}

// ---- The edits

bool IsRoot(const IXMLDOMNode* element) { return element->m_pParent->m_eNodeType == NODE_DOCUMENT; }

bool HasChild(const IXMLDOMNode* element, bool (*isWanted)(const IXMLDOMNode* child)) {
  const IXMLDOMNode* child = element->m_pFirstChild;
  while (child != nullptr && !isWanted(child)) child = child->m_pNextSibling;
  return child != nullptr;
}

bool IsText(const IXMLDOMNode* node) { return node->m_eNodeType == NODE_TEXT; }

bool IsElement(const IXMLDOMNode* node) { return node->m_eNodeType == NODE_ELEMENT; }

/// Loads the XML of an edit. Result: its root element, borrowed from a document in
/// `edited.contents`; the edit moves it into the edited document.
IXMLDOMNode* LoadContent(const Edit& edit, EditedDocument& edited) {
  LoadProblem problem;
  edited.contents.push_back(LoadText(edit.operands[1], problem));
  return edited.contents.back()->m_pFirstChild;
}

void Append(const Edit& edit, IXMLDOMNode* target, EditedDocument& edited) {
  if (edited.isCareful && HasChild(target, IsText)) {
    throw EditRefusal("the element holds text, which would change; --lossy does it all the same");
  }
  target->appendChild(LoadContent(edit, edited), nullptr);
}

void InsertBefore(const Edit& edit, IXMLDOMNode* target, EditedDocument& edited) {
  if (IsRoot(target)) throw EditRefusal("nothing can stand beside the root element");
  target->m_pParent->insertBefore(LoadContent(edit, edited), target, nullptr);
}

void Replace(const Edit& edit, IXMLDOMNode* target, EditedDocument& edited) {
  XMLPtr<IXMLDOMNode> replaced;
  target->m_pParent->replaceChild(LoadContent(edit, edited), target, replaced.Out());
}

void RemoveFrom(IXMLDOMNode* parent, IXMLDOMNode* child) {
  XMLPtr<IXMLDOMNode> removed;
  parent->removeChild(child, removed.Out());
}

void Remove(const Edit&, IXMLDOMNode* target, EditedDocument&) {
  if (IsRoot(target)) throw EditRefusal("a document cannot be without its root element");
  RemoveFrom(target->m_pParent, target);
}

/// Throws when a text could not be stored, which the checks of operands have left no reason for.
void Require(const xmldom::StoreResult& result) {
  if (!result) throw EditRefusal(result.Reason());
}

void SetText(const Edit& edit, IXMLDOMNode* target, EditedDocument&) {
  if (HasChild(target, IsElement)) {
    throw EditRefusal("the element holds elements, which a text cannot replace");
  }
  Require(xmldom::SetText(target, edit.operands[1]));
}

void SetAttribute(const Edit& edit, IXMLDOMNode* target, EditedDocument&) {
  Require(xmldom::SetAttribute(target, edit.operands[1].c_str(), edit.operands[2]));
}

}  // namespace

const std::vector<EditKind>& EditKinds() {
  static const std::vector<EditKind> kinds = {
      {"--append", "PATH XML", 2, "Add the XML as last child", CheckContent, Append},
      {"--insert-before", "PATH XML", 2, "Put the XML before the element", CheckContent,
       InsertBefore},
      {"--replace", "PATH XML", 2, "Put the XML in the place of the element", CheckContent,
       Replace},
      {"--remove", "PATH", 1, "Remove the element", CheckNothing, Remove},
      {"--set", "PATH TEXT", 2, "Set the text of an element that holds no elements", CheckText,
       SetText},
      {"--set-attr", "PATH NAME VALUE", 3, "Set an attribute, or add it", CheckAttribute,
       SetAttribute}};
  return kinds;
}

void CheckEdit(const Edit& edit, bool isCareful) {
  try {
    if (edit.operands.front() != kRootPath) PathOf(edit);
    edit.kind->check(edit, isCareful);
  } catch (const UsageError& error) {
    throw UsageError(std::string(edit.kind->option) + ": " + error.what());
  }
}

bool ApplyEdit(const Edit& edit, EditedDocument& edited) {
  IXMLDOMDocument2& document = *edited.document;
  IXMLDOMNode* const selected = edit.operands.front() == kRootPath
                                    ? document.m_pFirstChild
                                    : SelectFirst(PathOf(edit), &document);
  if (selected == nullptr) return false;
  selected->AddRef();
  const XMLPtr<IXMLDOMNode> target = xmldom::Adopt(selected);
  edit.kind->apply(edit, target.Get(), edited);
  return true;
}

}  // namespace tool
