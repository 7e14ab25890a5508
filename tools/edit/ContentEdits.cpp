// The edits in the bytes of a text that put elements in or take elements or texts out.
// Tested by tests/tool/Edit_test.cpp.

#include <tools/edit/SourceEdits.h>

#include <tools/document/Indentation.h>
#include <tools/edit/EditStep.h>
#include <tools/edit/Fragment.h>
#include <tools/io/SourceText.h>

#include <xmldom/dom/XMLDocument.h>

#include <algorithm>

namespace tool {

namespace {

const char kDefaultStep[] = "  ";

bool IsRoot(const EditTarget& target) {
  return target.node->m_pParent->m_eNodeType == NODE_DOCUMENT;
}

/// Whether white space may be put between what an element holds.
bool HasLayout(const SourcePlace& element) {
  return !element.holdsCharacters && !element.keepsSpace;
}

std::string NameOf(const EditStep& step, const SourcePlace& element) {
  const SourceRange name = StartTag(step.text, element.begin).Name();
  return step.text.substr(name.begin, name.end - name.begin);
}

/// Gives a content to an element that has none, or nothing but white space.
void Fill(EditStep& step, const SourcePlace& element, const std::string& content) {
  if (!element.IsEmptyTag()) {
    step.splices.Replace(element.innerBegin, element.innerEnd, content);
    return;
  }
  // The tag is opened: its end becomes that of a start tag.
  std::size_t end = element.end - 2;
  while (IsSpace(step.text[end - 1])) --end;
  step.splices.Replace(end, element.end, ">" + content + "</" + NameOf(step, element) + ">");
}

/// By how much an element that begins its line stands further in than the element around it.
std::string StepBefore(const EditStep& step, const EditTarget& target) {
  const std::string indent = IndentBefore(step.text, target.place->begin);
  if (IsRoot(target)) return kDefaultStep;
  // No more is looked at of the indentation around than fits here: many elements may share it.
  const std::size_t outer = step.PlaceOf(target.node->m_pParent)->begin;
  const std::size_t begin = outer - std::min(outer, indent.size() + 1);
  const std::string before = step.text.substr(begin, outer - begin);
  const std::string outerIndent = IndentBefore(before, before.size());
  const bool isInside = indent.compare(0, outerIndent.size(), outerIndent) == 0;
  if (isInside && BeginsLine(step.text, outer)) return indent.substr(outerIndent.size());
  return indent.find('\t') == std::string::npos ? kDefaultStep : "\t";
}

/// Appends to an element that is empty or holds nothing but white space.
void AppendToBlank(EditStep& step, const EditTarget& target) {
  const SourcePlace& element = *target.place;
  const std::string content =
      step.text.substr(element.innerBegin, element.innerEnd - element.innerBegin);
  if (!BeginsLine(step.text, element.begin)) {
    Fill(step, element, step.fragment + content);
    return;
  }
  const std::string lineEnd = LineEndBefore(step.text, element.begin);
  const std::string indent = IndentBefore(step.text, element.begin);
  const bool hasLines = content.find_first_of("\r\n") != std::string::npos;
  Fill(step, element,
       lineEnd + indent + StepBefore(step, target) + step.fragment +
           (hasLines ? content : lineEnd + indent));
}

/// Where the first thing in an element's content stands whose layout others may follow: its last
/// child element, or what is not white space.
std::size_t NeighborIn(const EditStep& step, const EditTarget& target) {
  std::size_t neighbor = 0;
  for (const IXMLDOMNode* child = target.node->m_pFirstChild; child != nullptr;
       child = child->m_pNextSibling) {
    const SourcePlace& place = *step.PlaceOf(child);
    if (child->m_eNodeType == NODE_ELEMENT && place.IsWritten()) neighbor = place.begin;
  }
  if (neighbor != 0) return neighbor;
  neighbor = target.place->innerBegin;
  while (neighbor < target.place->innerEnd && IsSpace(step.text[neighbor])) ++neighbor;
  return neighbor;
}

void AppendAt(EditStep& step, const EditTarget& target) {
  const SourcePlace& element = *target.place;
  const std::size_t neighbor = NeighborIn(step, target);
  if (element.keepsSpace || element.holdsCharacters) {
    if (element.IsEmptyTag()) {
      Fill(step, element, step.fragment);
    } else {
      step.splices.Insert(element.innerEnd, step.fragment);
    }
  } else if (neighbor == element.innerEnd) {
    AppendToBlank(step, target);
  } else {
    std::size_t end = element.innerEnd;
    while (IsSpace(step.text[end - 1])) --end;
    step.splices.Insert(end, SeparatorBefore(step.text, neighbor) + step.fragment);
  }
}

/// What separates a target from its neighbors.
std::string SeparatorOf(const EditStep& step, const EditTarget& target) {
  if (!HasLayout(*step.PlaceOf(target.node->m_pParent))) return std::string();
  return SeparatorBefore(step.text, target.place->begin);
}

void RequireParent(const EditTarget& target) {
  if (IsRoot(target)) EditStep::Refuse(target, "nothing can stand beside the root element");
}

/// Whether nothing but blanks stands between two places of a line.
bool AreNeighbors(const std::string& text, std::size_t end, std::size_t begin) {
  while (end < begin && (text[end] == ' ' || text[end] == '\t')) ++end;
  return end == begin;
}

void RequireText(const EditTarget& target) {
  for (const IXMLDOMNode* child = target.node->m_pFirstChild; child != nullptr;
       child = child->m_pNextSibling) {
    if (child->m_eNodeType == NODE_ELEMENT) {
      EditStep::Refuse(target, "the element holds elements, which a text cannot replace");
    }
  }
}

/// Takes parts out of a text, in their order. Where the text in front of a gap and the text behind
/// it would read as something else together, the text behind it is written in another way: the last
/// character of "]]>" as "&gt;", the "\n" behind a "\r" as "\r\n".
class Removal {
 public:
  explicit Removal(EditStep& step) : m_step(step), m_end(0) {}

  void Remove(std::size_t begin, std::size_t end) {
    KeepUpTo(begin);
    m_step.splices.Remove(begin, end);
    m_end = end;
  }

  /// To be called when all parts were taken out.
  void Finish() { KeepUpTo(m_step.text.size()); }

 private:
  /// Closes the gap that ends at m_end; the text behind it is kept up to `end`.
  void KeepUpTo(std::size_t end) {
    const std::string kept = m_step.text.substr(m_end, std::min<std::size_t>(end - m_end, 2));
    const std::size_t found = (m_lastKept + kept).find("]]>");
    if (found != std::string::npos) {
      const std::size_t last = m_end + found + 2 - m_lastKept.size();
      m_step.splices.Replace(last, last + 1, "&gt;");
    } else if (!m_lastKept.empty() && m_lastKept.back() == '\r' && !kept.empty() &&
               kept[0] == '\n') {
      m_step.splices.Replace(m_end, m_end + 1, "\r\n");
    }
    const std::size_t begin = std::max(m_end, end - std::min<std::size_t>(end, 2));
    m_lastKept += m_step.text.substr(begin, end - begin);
    m_lastKept.erase(0, m_lastKept.size() - std::min<std::size_t>(m_lastKept.size(), 2));
  }

  EditStep& m_step;
  std::size_t m_end;       // of the part that was taken out last
  std::string m_lastKept;  // the last two bytes, or fewer, that are kept in front of m_end
};

}  // namespace

void SpliceAppend(EditStep& step) {
  PrepareFragment(step);
  for (const EditTarget& target : step.targets) AppendAt(step, target);
}

void SpliceInsertBefore(EditStep& step) {
  PrepareFragment(step);
  for (const EditTarget& target : step.targets) {
    RequireParent(target);
    step.splices.Insert(target.place->begin, step.fragment + SeparatorOf(step, target));
  }
}

void SpliceInsertAfter(EditStep& step) {
  PrepareFragment(step);
  for (const EditTarget& target : step.targets) {
    RequireParent(target);
    step.splices.Insert(target.place->end, SeparatorOf(step, target) + step.fragment);
  }
}

void SpliceReplace(EditStep& step) {
  PrepareFragment(step);
  for (const EditTarget& target : step.targets) {
    step.splices.Replace(target.place->begin, target.place->end, step.fragment);
  }
}

void SpliceRemove(EditStep& step) {
  Removal removal(step);
  for (std::size_t i = 0; i < step.targets.size();) {
    const EditTarget& first = step.targets[i];
    if (IsRoot(first)) EditStep::Refuse(first, "a document cannot be without its root element");
    // The line goes too when nothing but targets stands on it, so those beside each other on it are
    // taken as one.
    std::size_t end = i + 1;
    while (end < step.targets.size() && AreNeighbors(step.text, step.targets[end - 1].place->end,
                                                     step.targets[end].place->begin)) {
      ++end;
    }
    const SourceRange all = {first.place->begin, step.targets[end - 1].place->end};
    const SourceRange lines = WithLines(step.text, all);
    const bool keepsSpace = step.PlaceOf(first.node->m_pParent)->keepsSpace;
    if (!keepsSpace && lines.end != all.end) {
      removal.Remove(lines.begin, lines.end);
      i = end;
    }
    for (; i < end; ++i) removal.Remove(step.targets[i].place->begin, step.targets[i].place->end);
  }
  removal.Finish();
}

void SpliceSetText(EditStep& step) {
  const std::string text = step.encoding.Escape(step.edit.operands[1]);
  for (const EditTarget& target : step.targets) {
    RequireText(target);
    if (!text.empty() || !target.place->IsEmptyTag()) Fill(step, *target.place, text);
  }
}

}  // namespace tool
