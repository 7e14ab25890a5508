// Proves that an edit of a text did what it should, and nothing else that a parser sees.
// Tested by tests/tool/EditProof_test.cpp.

#include <tools/edit/EditProof.h>

#include <tools/document/DocumentLoad.h>
#include <tools/document/DocumentOrder.h>
#include <tools/io/SourceText.h>

#include <xmldom/diag/Compare.h>
#include <xmldom/dom/XMLDocument.h>
#include <xmldom/support/MemFile.h>

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

/// Takes the white space out of a text, and writes ">" for the reference to it.
void Reduce(IXMLDOMNode* text) {
  char* to = text->m_pszValue;
  for (const char* from = to; *from != '\0'; ++from) {
    if (IsSpace(*from)) continue;
    const bool isReference = std::strncmp(from, kGreater, sizeof kGreater - 1) == 0;
    *to++ = isReference ? '>' : *from;
    if (isReference) from += sizeof kGreater - 2;
  }
  *to = '\0';
}

/// Takes out of all texts of a tree what may change when two of them are joined.
void ReduceTexts(IXMLDOMNode* document) {
  for (IXMLDOMNode* node = document; node != nullptr; node = NextNode(node, document)) {
    if (node->m_eNodeType == NODE_TEXT) Reduce(node);
  }
}

}  // namespace

XMLPtr<IXMLDOMDocument2> ProveEdit(const std::string& text, IXMLDOMDocument2& expected,
                                   bool joinsTexts) {
  XMLPtr<IXMLDOMDocument2> found = Load(text);
  std::string difference = Difference(expected, *found);
  if (!difference.empty() && joinsTexts) {
    const XMLPtr<IXMLDOMDocument2> reduced = Load(text);
    ReduceTexts(reduced.Get());
    ReduceTexts(&expected);
    difference = Difference(expected, *reduced);
  }
  if (!difference.empty()) throw ProofFailure("it is not what the edit asks for: " + difference);
  return found;
}

}  // namespace tool
