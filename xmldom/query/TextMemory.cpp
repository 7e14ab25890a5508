// Reading the text of an element in one walk that notes where the text of each element below begins
// and ends. Tested by tests/query/NestedTexts_test.cpp.

#include <xmldom/query/TextMemory.h>

#include <xmldom/dom/NodeContent.h>
#include <xmldom/dom/ReportCount.h>
#include <xmldom/dom/TreeWalk.h>

namespace xmldom {

/// Collects a text into m_text, and remembers its parts.
class TextMemory::Reader {
 public:
  explicit Reader(TextMemory& memory) : m_memory(memory), m_nodes(0), m_emptyTexts(0) {}

  IXMLDOMNode* Enter(IXMLDOMNode* node, std::size_t depth) {
    ++m_nodes;
    if (node->m_pFirstChild == nullptr || (node->m_eNodeType == NODE_TEXT && depth != 0)) {
      return nullptr;
    }
    m_open.Push(OpenNode{m_memory.m_text.m_uLength, m_nodes, Obstacles()});
    if (!AppendTexts(node->m_pFirstChild, m_memory.m_text)) ++m_emptyTexts;
    return node->m_pFirstChild;
  }

  void Leave(IXMLDOMNode* node, std::size_t) {
    const OpenNode open = m_open.Pop();
    if (m_nodes - open.nodes <= kFewNodes || Obstacles() != open.obstacles) return;
    SearchRecord& record = m_memory.m_places.At(node, 0);
    if (record.visit != 0) return;
    const std::size_t end = m_memory.m_text.m_uLength;
    // Before the first text is a blank, when anything stands before that.
    const std::size_t begin = open.begin + (open.begin != 0 && open.begin != end);
    const std::size_t kept = m_memory.m_kept.m_uLength;
    m_memory.m_ranges.Push(Range{kept + begin, kept + end});
    record.visit = m_memory.m_ranges.Size();
  }

  bool IsDone() const { return false; }

 private:
  /// A node that is being read, and what was so before it.
  struct OpenNode {
    std::size_t begin;
    std::size_t nodes;
    unsigned long obstacles;
  };

  /// How much there has been that keeps a text from being remembered: reports, and empty texts,
  /// whose blanks depend on what stands before them.
  unsigned long Obstacles() const { return m_reports.Now() + m_emptyTexts; }

  TextMemory& m_memory;
  ReportCount m_reports;
  std::size_t m_nodes;
  unsigned long m_emptyTexts;
  Stack<OpenNode, 32> m_open;
};

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
  IXMLDOMNode* content = ContentOf(element);
  if (content != nullptr) {
    Reader reader(*this);
    WalkTree<SideTrail>(content, reader);
  }
  const char* text = m_text.GetAsStr();
  if (m_ranges.Size() != known) m_kept.Write(text, m_text.m_uLength);
  return TextRange{text, text + m_text.m_uLength};
}

}  // namespace xmldom
