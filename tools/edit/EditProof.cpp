// Proves that an edit of a text did what it should, and nothing else that a parser sees.
// Tested by tests/tool/EditProof_test.cpp.

#include <tools/edit/EditProof.h>

#include <tools/document/DocumentLoad.h>
#include <tools/document/DocumentOrder.h>
#include <tools/io/SourceText.h>

#include <xmldom/diag/Compare.h>
#include <xmldom/dom/XMLDocument.h>
#include <xmldom/support/MemFile.h>
#include <xmldom/text/NodeXml.h>

#include <cstring>

namespace tool {

namespace {

const unsigned int kReportRoom = 4096;
const std::size_t kReasonLimit = 200;

XMLPtr<IXMLDOMDocument2> Load(const std::string& text) {
  LoadProblem problem;
  XMLPtr<IXMLDOMDocument2> document = LoadText(text, problem);
  if (document == nullptr) throw ProofFailure("it is not well-formed: " + problem.reason);
  return document;
}

/// Result: why two trees differ; empty when they do not.
std::string Difference(IXMLDOMDocument2& expected, IXMLDOMDocument2& found) {
  // CompareXMLNodes does not compare the names of the two nodes that it is given.
  const char* const names[] = {expected.m_pFirstChild->m_pszNodeName,
                               found.m_pFirstChild->m_pszNodeName};
  if (std::strcmp(names[0], names[1]) != 0) return "another root element";
  CMemFile report(kReportRoom);
  if (CompareXMLNodes(&expected, &found, report, 0) != 0) return std::string();
  return VisibleLine(std::string(report.GetAsStr(), report.m_uLength), kReasonLimit);
}

const char kGreater[] = "&gt;";

/// Takes the white space out of a text, and writes ">" for the reference to it. Comments,
/// instructions and CDATA sections inside the text stay as they are.
void DropWhatJoiningChanges(IXMLDOMNode* text) {
  char* to = text->m_pszValue;
  const char* const end = to + std::strlen(to);
  for (const char* from = to; from != end;) {
    bool isTag = true;
    const char* const behind = *from == '<' ? xmldom::EndOfMarkup(from, end, isTag) : from;
    if (!isTag) {
      const std::size_t length = static_cast<std::size_t>(behind - from);
      std::memmove(to, from, length);
      to += length;
      from = behind;
    } else if (std::strncmp(from, kGreater, sizeof kGreater - 1) == 0) {
      *to++ = '>';
      from += sizeof kGreater - 1;
    } else {
      if (!IsSpace(*from)) *to++ = *from;
      ++from;
    }
  }
  *to = '\0';
}

void DropInTextsOf(IXMLDOMNode* element) {
  for (IXMLDOMNode* child = element->m_pFirstChild; child != nullptr;
       child = child->m_pNextSibling) {
    if (child->m_eNodeType == NODE_TEXT) DropWhatJoiningChanges(child);
  }
}

/// Calls DropWhatJoiningChanges for the texts of `elements`, which are in the tree `expected`, and
/// in those of the elements in the same places in document order of `found`.
void DropInTexts(const Elements& elements, IXMLDOMNode* expected, IXMLDOMNode* found) {
  while (true) {
    expected = NextElement(expected);
    found = NextElement(found);
    if (expected == nullptr || found == nullptr) return;
    if (elements.count(expected) == 0) continue;
    DropInTextsOf(expected);
    DropInTextsOf(found);
  }
}

}  // namespace

XMLPtr<IXMLDOMDocument2> ProveEdit(const std::string& text, IXMLDOMDocument2& expected,
                                   const Elements& joined) {
  XMLPtr<IXMLDOMDocument2> found = Load(text);
  std::string difference = Difference(expected, *found);
  if (!difference.empty() && !joined.empty()) {
    const XMLPtr<IXMLDOMDocument2> reduced = Load(text);
    DropInTexts(joined, &expected, reduced.Get());
    difference = Difference(expected, *reduced);
  }
  if (!difference.empty()) throw ProofFailure("it is not what the edit asks for: " + difference);
  return found;
}

}  // namespace tool
