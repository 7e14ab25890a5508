#include <xmldom/diag/Compare.h>

#include <xmldom/base/Text.h>
#include <xmldom/dom/NodeContent.h>
#include <xmldom/dom/TreeWalk.h>
#include <xmldom/text/TextOutput.h>

namespace {

using xmldom::SameString;
using xmldom::WriteText;

/// A report begins at depth 0, from wherever the count started.
void Empty(CMemFile& report) {
  report.m_uPosition = 0;
  report.m_uLength = 0;
}

/// Writes the XML of a node below a heading. A node that cannot be written has no heading either.
__attribute__((cold)) void WriteXml(CMemFile& report, const char* heading, IXMLDOMNode* node) {
  const _bstr_t xml = node->Getxml();
  WriteText(report, heading);
  WriteText(report, xml);
  WriteText(report, "\n");
}

struct Pair {
  IXMLDOMNode* first;
  IXMLDOMNode* second;
};

/// Walks the first tree, and the second in step with it, up to the first difference.
class Comparison {
 public:
  Comparison(CMemFile& report, int topDepth)
      : m_report(report), m_topDepth(topDepth), m_second(nullptr), m_differs(false) {}

  /// Compares two nodes and all below. Result: whether they are equal.
  bool Compare(const Pair& top) {
    if (OpenPair(top, m_topDepth)) {
      xmldom::WalkChain<xmldom::SideTrail>(top.first->m_pFirstChild, *this);
      if (!m_differs) ClosePair(m_topDepth);
    }
    return !m_differs;
  }

  IXMLDOMNode* Enter(IXMLDOMNode* first, std::size_t walkDepth) {
    const int depth = m_topDepth + static_cast<int>(walkDepth);
    if (m_second == nullptr) {
      ReportCount(depth, "Node 1 has more children than Node 2\n", m_open.Top());
      return nullptr;
    }
    const Pair pair = {first, m_second};
    m_second = m_second->m_pNextSibling;
    if (!ComparesAsChild(pair, depth)) return nullptr;
    if (first->m_eNodeType == NODE_TEXT) return nullptr;
    if (!OpenPair(pair, depth + 1)) return nullptr;
    if (first->m_pFirstChild == nullptr) ClosePair(depth + 1);
    return first->m_pFirstChild;
  }

  void Leave(IXMLDOMNode*, std::size_t walkDepth) {
    ClosePair(m_topDepth + static_cast<int>(walkDepth) + 1);
  }

  bool IsDone() const { return m_differs; }

 private:
  /// Compares the attributes of two nodes and turns to their children. Result: whether the
  /// attributes are equal.
  bool OpenPair(const Pair& pair, int depth) {
    if (depth == 0) Empty(m_report);
    if (!ComparesAttributes(pair, depth)) return false;
    m_open.Push(pair);
    m_second = pair.second->m_pFirstChild;
    return true;
  }

  /// Turns back from the children of the innermost pair: those of the first node have ended.
  void ClosePair(int depth) {
    const Pair pair = m_open.Top();
    if (m_second != nullptr) {
      ReportCount(depth, "Node 2 has more children than Node 1\n", pair);
      return;
    }
    m_open.Pop();
    m_second = pair.second->m_pNextSibling;
  }

  bool ComparesAttributes(const Pair& pair, int depth) {
    const IXMLDOMNode* first = pair.first->m_pFirstAttribute;
    const IXMLDOMNode* second = pair.second->m_pFirstAttribute;
    for (; first != nullptr && second != nullptr;
         first = first->m_pNextSibling, second = second->m_pNextSibling) {
      if (!SameString(first->m_pszNodeName, second->m_pszNodeName)) {
        return ReportTexts(depth, "Attribute name mismatch, ", first->m_pszNodeName,
                           second->m_pszNodeName, pair);
      }
      if (!SameString(xmldom::StoredValueOf(first), xmldom::StoredValueOf(second))) {
        return ReportTexts(depth, "Attribute value mismatch, ", xmldom::StoredValueOf(first),
                           xmldom::StoredValueOf(second), pair);
      }
    }
    if (first != nullptr) {
      return ReportCount(depth, "Node 1 has more attributes than Node 2\n", pair);
    }
    if (second != nullptr) {
      return ReportCount(depth, "Node 2 has more attributes than Node 1\n", pair);
    }
    return true;
  }

  /// Compares what a parent says of two of its children.
  bool ComparesAsChild(const Pair& pair, int depth) {
    const IXMLDOMNode* first = pair.first;
    const IXMLDOMNode* second = pair.second;
    if (first->m_eNodeType != second->m_eNodeType) {
      return ReportTypes(depth, pair);
    }
    if (!SameString(first->m_pszNodeName, second->m_pszNodeName)) {
      return ReportTexts(depth, "node name mismatch, ", first->m_pszNodeName, second->m_pszNodeName,
                         pair);
    }
    if (first->m_eNodeType == NODE_TEXT &&
        !SameString(xmldom::StoredValueOf(first), xmldom::StoredValueOf(second))) {
      return ReportTexts(depth, "text value mismatch, ", xmldom::StoredValueOf(first),
                         xmldom::StoredValueOf(second), pair);
    }
    return true;
  }

  // The reports return false, for the comparison that they end. Texts are written piece by piece,
  // since they can be longer than a format takes.

  void WriteHead(int depth, const char* what) {
    m_report.WriteF("Failed at depth %d: %s", depth, what);
  }

  __attribute__((cold)) bool ReportTexts(int depth, const char* what, const char* first,
                                         const char* second, const Pair& pair) {
    WriteHead(depth, what);
    WriteText(m_report, first == nullptr ? "(null)" : first);
    WriteText(m_report, " vs ");
    WriteText(m_report, second == nullptr ? "(null)" : second);
    return Dump(pair);
  }

  __attribute__((cold)) bool ReportTypes(int depth, const Pair& pair) {
    WriteHead(depth, "node type mismatch, ");
    m_report.WriteF("%d vs %d", static_cast<int>(pair.first->m_eNodeType),
                    static_cast<int>(pair.second->m_eNodeType));
    return Dump(pair);
  }

  __attribute__((cold)) bool ReportCount(int depth, const char* what, const Pair& pair) {
    WriteHead(depth, what);
    return Dump(pair);
  }

  bool Dump(const Pair& pair) {
    m_differs = true;
    WriteXml(m_report, "-----\nNode 1:\n", pair.first);
    WriteXml(m_report, "-----\nNode 2:\n", pair.second);
    return false;
  }

  CMemFile& m_report;
  int m_topDepth;
  xmldom::Stack<Pair, 32> m_open;  // whose children are being compared, innermost last
  IXMLDOMNode* m_second;           // what the next node of the first tree is compared with
  bool m_differs;
};

/// Reports that only one of the two nodes is there.
int ReportMissing(CMemFile& report, int depth, const char* which, IXMLDOMNode* present) {
  report.WriteF("Failed at depth %d: %s\n", depth, which);
  WriteXml(report, "-----\n", present);
  return 0;
}

}  // namespace

int CompareXMLNodes(IXMLDOMNode* pNode1, IXMLDOMNode* pNode2, CMemFile& report, int depth) {
  if (depth == 0) {
    Empty(report);
    pNode1 = xmldom::ContentOf(pNode1);
    pNode2 = xmldom::ContentOf(pNode2);
  }
  if (pNode1 == nullptr && pNode2 == nullptr) return 1;
  if (pNode1 == nullptr) {
    return ReportMissing(report, depth, "pNode1 NULL, pNode2 Non-NULL", pNode2);
  }
  if (pNode2 == nullptr) {
    return ReportMissing(report, depth, "pNode1 Non-NULL, pNode2 NULL", pNode1);
  }
  return Comparison(report, depth).Compare(Pair{pNode1, pNode2});
}
