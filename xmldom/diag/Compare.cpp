// Comparing two trees: a walk of the first, with the second followed in step, up to the first
// difference, which is reported with the XML of both nodes. Tested by tests/diag/Compare_test.cpp.

#include <xmldom/diag/Compare.h>

#include <xmldom/base/Export.h>
#include <xmldom/base/Text.h>
#include <xmldom/dom/NodeContent.h>
#include <xmldom/dom/TreeWalk.h>
#include <xmldom/text/TextOutput.h>

namespace {

using xmldom::SameString;
using xmldom::WriteText;

/// A report is emptied at each node whose depth is 0: that is the top node, unless the caller
/// counts from below 0.
void Empty(CMemFile& report) {
  report.m_uPosition = 0;
  report.m_uLength = 0;
}

/// Writes the XML of a node below a heading. The XML is made first, so that an exception leaves no
/// heading without it.
XMLDOM_COLD void WriteXml(CMemFile& report, const char* heading, IXMLDOMNode* node) {
  const _bstr_t xml = node->Getxml();
  WriteText(report, heading);
  WriteText(report, xml);
  WriteText(report, "\n");
}

struct Pair {
  IXMLDOMNode* first;
  IXMLDOMNode* second;
};

/// Visits the nodes of the first tree and compares each with the node at the same place of the
/// second. Invariant: when the walk enters a node, m_second is the node at its place, or null when
/// the second tree has none there.
class Comparison {
 public:
  /// `second`: the top node of the second tree.
  Comparison(CMemFile& report, int topDepth, IXMLDOMNode* second)
      : m_report(report), m_topDepth(topDepth), m_second(second), m_differs(false) {}

  IXMLDOMNode* Enter(IXMLDOMNode* first, std::size_t walkDepth) {
    if (walkDepth == 0) return EnterPair(Pair{first, m_second}, m_topDepth);
    const int parentDepth = DepthOf(walkDepth) - 1;
    if (m_second == nullptr) {
      ReportNumber(parentDepth, "Node 1 has more children than Node 2\n", m_open.Top());
      return nullptr;
    }
    const Pair pair = {first, m_second};
    m_second = m_second->m_pNextSibling;
    if (!NodesEqual(pair, parentDepth)) return nullptr;
    if (first->m_eNodeType == NODE_TEXT) return nullptr;
    return EnterPair(pair, parentDepth + 1);
  }

  void Leave(IXMLDOMNode*, std::size_t walkDepth) { ClosePair(DepthOf(walkDepth)); }

  bool IsDone() const { return m_differs; }

 private:
  /// The depth that is reported for what a node holds; its parent reports what the node itself is.
  int DepthOf(std::size_t walkDepth) const { return m_topDepth + static_cast<int>(walkDepth); }

  /// Compares what two nodes hold. Result: the first child of the first, when it is next.
  IXMLDOMNode* EnterPair(const Pair& pair, int depth) {
    if (!OpenPair(pair, depth)) return nullptr;
    if (pair.first->m_pFirstChild == nullptr) ClosePair(depth);
    return pair.first->m_pFirstChild;
  }

  /// Compares the attributes of two nodes and turns to their children. Result: whether the
  /// attributes are equal.
  bool OpenPair(const Pair& pair, int depth) {
    if (depth == 0) Empty(m_report);
    if (!AttributesEqual(pair, depth)) return false;
    m_open.Push(pair);
    m_second = pair.second->m_pFirstChild;
    return true;
  }

  /// Turns from the children of the innermost pair to the siblings behind it. The children of the
  /// first node have ended, so those of the second must have too.
  void ClosePair(int depth) {
    const Pair pair = m_open.Top();
    if (m_second != nullptr) {
      ReportNumber(depth, "Node 2 has more children than Node 1\n", pair);
      return;
    }
    m_open.Pop();
    m_second = pair.second->m_pNextSibling;
  }

  bool AttributesEqual(const Pair& pair, int depth) {
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
      return ReportNumber(depth, "Node 1 has more attributes than Node 2\n", pair);
    }
    if (second != nullptr) {
      return ReportNumber(depth, "Node 2 has more attributes than Node 1\n", pair);
    }
    return true;
  }

  /// Compares two children: their types, names and, for texts, values.
  bool NodesEqual(const Pair& pair, int depth) {
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

  XMLDOM_COLD bool ReportTexts(int depth, const char* what, const char* first, const char* second,
                               const Pair& pair) {
    WriteHead(depth, what);
    WriteText(m_report, first == nullptr ? "(null)" : first);
    WriteText(m_report, " vs ");
    WriteText(m_report, second == nullptr ? "(null)" : second);
    return Dump(pair);
  }

  XMLDOM_COLD bool ReportTypes(int depth, const Pair& pair) {
    WriteHead(depth, "node type mismatch, ");
    m_report.WriteF("%d vs %d", static_cast<int>(pair.first->m_eNodeType),
                    static_cast<int>(pair.second->m_eNodeType));
    return Dump(pair);
  }

  XMLDOM_COLD bool ReportNumber(int depth, const char* what, const Pair& pair) {
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
  Comparison comparison(report, depth, pNode2);
  xmldom::WalkTree<xmldom::SideTrail>(pNode1, comparison);
  return !comparison.IsDone();
}
