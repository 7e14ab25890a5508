// Reading the text of an element in one walk that notes where the text of each element below begins
// and ends. Tested by tests/query/TextMemory_test.cpp.

#include <xmldom/query/TextMemory.h>

#include <xmldom/dom/NodeContent.h>
#include <xmldom/dom/ReportCount.h>
#include <xmldom/dom/XMLNode.h>

namespace xmldom {

namespace {

/// Elements with no more nodes below them are not remembered.
const std::size_t kFewNodes = 32;

/// A node that is being read.
struct OpenNode {
  IXMLDOMNode* node;
  std::size_t begin;      // of its first text that is not empty; kNoText before that was read
  std::size_t nodes;      // how many had been read before it
  unsigned long reports;  // their number before it
};

}  // namespace

TextMemory::TextMemory() : m_text(4096), m_kept(4096) {}

TextRange TextMemory::TextOf(IXMLDOMNode* element) {
  const std::size_t known = m_ranges.Size();
  const std::size_t number = known == 0 ? 0 : m_places.At(element, 0).visit;
  if (number != 0) {
    const Range& range = m_ranges.Items()[number - 1];
    const char* texts = m_kept.GetAsStr();
    return TextRange{texts + range.begin, texts + range.end};
  }
  m_text.m_uPosition = m_text.m_uLength = 0;
  const char* text = "";
  IXMLDOMNode* content = ContentOf(element);
  if (content != nullptr) text = Read(content);
  if (m_ranges.Size() != known) {
    m_kept.Write(text, m_text.m_uLength);
    m_kept.Write("", 1);  // a NUL, so that a number ends where its text does
  }
  return TextRange{text, text + m_text.m_uLength};
}

/// Reads the text of a node into m_text, and remembers where its parts will be in m_kept. Result:
/// the text.
const char* TextMemory::Read(IXMLDOMNode* top) {
  const ReportCount reports;
  std::size_t nodes = 0;
  std::size_t begun = 0;  // how many of the open nodes, from the outermost on, have a text
  Stack<OpenNode, 16> open;
  IXMLDOMNode* node = top;
  do {
    if (node == nullptr) {
      const OpenNode closed = open.Pop();
      if (begun > open.Size()) begun = open.Size();
      const bool isSilent = reports.Now() == closed.reports;
      if (isSilent && nodes - closed.nodes > kFewNodes) Remember(closed.node, closed.begin);
      node = closed.node->m_pNextSibling;
      continue;
    }
    ++nodes;
    // The texts were read with their parent.
    const bool isRead = node->m_eNodeType == NODE_TEXT && !open.IsEmpty();
    if (node->m_pFirstChild == nullptr || isRead) {
      node = node->m_pNextSibling;
    } else {
      open.Push(OpenNode{node, kNoText, nodes, reports.Now()});
      node = node->m_pFirstChild;
      const std::size_t begin = AppendTexts(node, m_text);
      if (begin == kNoText) continue;
      for (; begun < open.Size(); ++begun) open.Items()[begun].begin = begin;
    }
  } while (!open.IsEmpty());
  return m_text.GetAsStr();
}

/// Remembers a part of m_text that begins at `begin` and ends where the text ends now.
void TextMemory::Remember(IXMLDOMNode* element, std::size_t begin) {
  std::size_t& number = m_places.At(element, 0).visit;
  if (number != 0) return;
  const std::size_t end = m_text.m_uLength;
  // Nothing but blanks is read of empty texts with nothing before them.
  if (begin == kNoText) begin = end;
  m_ranges.Push(Range{m_kept.m_uLength + begin, m_kept.m_uLength + end});
  number = m_ranges.Size();
}

}  // namespace xmldom
