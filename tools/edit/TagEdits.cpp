// The edits in the bytes of a text that change the tags of elements: their names and attributes.
// Tested by tests/tool/Edit_test.cpp.

#include <tools/edit/SourceEdits.h>

#include <tools/document/DocumentLoad.h>
#include <tools/document/StartTag.h>
#include <tools/edit/EditStep.h>
#include <tools/io/SourceText.h>

#include <xmldom/dom/XMLDocument.h>
#include <xmldom/text/Escaping.h>
#include <xmldom/text/NodeTexts.h>

namespace tool {

namespace {

const char kSupplied[] = "the document type supplies the attribute, which cannot be removed";

/// Throws when the encoding of the document cannot hold a name, for which no reference can stand.
void RequireName(const EditStep& step, const std::string& name) {
  if (step.encoding.FindForeign(name) == std::string::npos) return;
  EditStep::Refuse(step.targets.front(), step.encoding.Refusal() + ": '" + name + "'");
}

/// The value in quotes: in `quote`, unless the value holds that and not the other kind.
std::string Quoted(const EditStep& step, const std::string& value, char quote) {
  const char other = quote == '"' ? '\'' : '"';
  const auto holds = [&value](char c) { return value.find(c) != std::string::npos; };
  if (holds(quote) && !holds(other)) quote = other;
  std::string written;
  for (const char c : value) {
    const bool isPlain = c == '>' || (c != quote && (c == '"' || c == '\''));
    const char* reference = isPlain ? nullptr : xmldom::AttributeReference(c);
    if (reference == nullptr) {
      written += c;
    } else {
      written += reference;
    }
  }
  return quote + step.encoding.WithReferences(written) + quote;
}

/// The last attribute that stands in the tag of an element; null when there is none.
const SourcePlace* LastWritten(const EditStep& step, const EditTarget& target) {
  const SourcePlace* last = nullptr;
  for (const IXMLDOMNode* attribute = target.node->m_pFirstAttribute; attribute != nullptr;
       attribute = attribute->m_pNextSibling) {
    const SourcePlace* place = step.PlaceOf(attribute);
    if (place->IsWritten()) last = place;
  }
  return last;
}

std::size_t SpaceBefore(const std::string& text, std::size_t at) {
  while (IsSpace(text[at - 1])) --at;
  return at;
}

void AddAttribute(EditStep& step, const EditTarget& target) {
  const std::string& name = step.edit.operands[1];
  const std::string& value = step.edit.operands[2];
  const SourcePlace* last = LastWritten(step, target);
  if (last == nullptr) {
    const std::size_t end = StartTag(step.text, target.place->begin).Name().end;
    step.splices.Insert(end, " " + name + "=" + Quoted(step, value, '"'));
    return;
  }
  const std::size_t space = SpaceBefore(step.text, last->begin);
  step.splices.Insert(last->end, step.text.substr(space, last->begin - space) + name + "=" +
                                     Quoted(step, value, step.text[last->innerEnd]));
}

/// Throws when the document type supplies the attribute that is removed, which would be there
/// again.
void RequireNotSupplied(const EditStep& step) {
  const std::string type = step.DocumentType();
  if (type.empty() || step.targets.empty()) return;
  std::string bare = type + "<x>";
  for (const EditTarget& target : step.targets)
    bare += std::string("<") + target.node->m_pszNodeName + "/>";
  LoadProblem problem;
  const XMLPtr<IXMLDOMDocument2> document = LoadText(bare + "</x>", problem);
  if (document == nullptr) return;
  const IXMLDOMNode* element = document->m_pFirstChild->m_pFirstChild;
  for (const EditTarget& target : step.targets) {
    if (xmldom::HasAttribute(element, step.edit.operands[1].c_str())) {
      EditStep::Refuse(target, kSupplied);
    }
    element = element->m_pNextSibling;
  }
}

}  // namespace

void SpliceSetAttribute(EditStep& step) {
  RequireName(step, step.edit.operands[1]);
  for (const EditTarget& target : step.targets) {
    const IXMLDOMNode* attribute =
        xmldom::FindAttribute(target.node, step.edit.operands[1].c_str());
    const SourcePlace* place = attribute == nullptr ? nullptr : step.PlaceOf(attribute);
    if (place == nullptr || !place->IsWritten()) {
      AddAttribute(step, target);
    } else {
      step.splices.Replace(place->innerBegin - 1, place->end,
                           Quoted(step, step.edit.operands[2], step.text[place->innerEnd]));
    }
  }
}

void SpliceRemoveAttribute(EditStep& step) {
  std::size_t kept = 0;
  for (std::size_t i = 0; i < step.targets.size(); ++i) {
    const EditTarget target = step.targets[i];
    const IXMLDOMNode* attribute =
        xmldom::FindAttribute(target.node, step.edit.operands[1].c_str());
    if (attribute == nullptr) continue;
    const SourcePlace& place = *step.PlaceOf(attribute);
    if (!place.IsWritten()) EditStep::Refuse(target, kSupplied);
    step.splices.Remove(SpaceBefore(step.text, place.begin), place.end);
    step.targets[kept++] = target;
  }
  step.targets.resize(kept);
  RequireNotSupplied(step);
}

void SpliceRename(EditStep& step) {
  const std::string& name = step.edit.operands[1];
  RequireName(step, name);
  for (const EditTarget& target : step.targets) {
    const SourcePlace& place = *target.place;
    const SourceRange old = StartTag(step.text, place.begin).Name();
    step.splices.Replace(old.begin, old.end, name);
    if (place.IsEmptyTag()) continue;
    const std::size_t begin = place.innerEnd + 2;  // behind "</"
    step.splices.Replace(begin, begin + (old.end - old.begin), name);
  }
}

}  // namespace tool
