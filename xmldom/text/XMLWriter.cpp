// A tree as XML text. One walk writes the start tag and the texts of a node on its way down, and
// the end tag on its way back; of one node, the paged one, it writes only some children.
// Tested by tests/text/XMLWriter_test.cpp and tests/text/XMLWriterPaging_test.cpp.

#include <xmldom/text/XMLWriter.h>

#include <xmldom/base/Export.h>
#include <xmldom/dom/LogKinds.h>
#include <xmldom/dom/NodeContent.h>
#include <xmldom/dom/TreeWalk.h>
#include <xmldom/text/NodeLayout.h>
#include <xmldom/text/TextOutput.h>

#include <algorithm>
#include <climits>

bool g_bDispAddr = false;

namespace {

using xmldom::Layout;
using xmldom::WriteBlanks;
using xmldom::WriteLiteral;
using xmldom::WriteText;

/// What GetXMLHelper was asked for.
struct WriterArguments {
  int depth;
  IXMLDOMNode* pagedNode;
  int first;
  int count;
  int currentPage;
  int numPages;
  const char* padTemplate;
  bool masked;
  const int* topIndex;  // the number that the top node is decorated with, or null
};

/// What is known of the owner links of the nodes that are written. Where a node has no owner, it
/// was removed from its tree, and the nodes below it may still name the old owner, which may be
/// gone. So no owner link is read then.
enum OwnerLinks {
  OWNERS_NOT_KNOWN,  // each link is tested before it is followed; the first null ends the walk
  OWNERS_NAMED,      // every node names its owner
  OWNERS_MISSING     // a node has no owner: everything gets the usual layout
};

/// Which kinds of children a node has.
struct ChildKinds {
  int texts;    // counted up to 2: more make no difference
  bool others;  // any child that is no text

  bool IsMultiLine() const { return others || texts > 1; }
};

ChildKinds KindsOf(const IXMLDOMNode* node) {
  ChildKinds kinds = {0, false};
  for (const IXMLDOMNode* child = node->m_pFirstChild; child != nullptr;
       child = child->m_pNextSibling) {
    if (child->m_eNodeType != NODE_TEXT) {
      kinds.others = true;
    } else if (kinds.texts < 2) {
      ++kinds.texts;
    }
    if (kinds.others && kinds.texts != 0) break;
  }
  return kinds;
}

/// Writes the nodes it walks.
class Writer {
 public:
  Writer(CMemFile& out, OwnerLinks owners, const WriterArguments& arguments)
      : m_text(out),
        m_owners(owners),
        m_metMissingOwner(false),
        m_arguments(arguments),
        m_pagedLevel(kNoLevel),
        m_position(0) {}

  IXMLDOMNode* Enter(IXMLDOMNode* node, std::size_t depth) {
    if (depth == 0) return Open(node, m_arguments.depth, m_arguments.topIndex);
    const int* index = nullptr;
    if (LevelOf(depth) == m_pagedLevel) {
      ++m_position;
      const long long end = static_cast<long long>(m_arguments.first) + m_arguments.count;
      if (m_position < m_arguments.first || m_position >= end) return nullptr;
      index = &m_position;
    }
    if (node->m_eNodeType == NODE_TEXT) return nullptr;
    return Open(node, LevelOf(depth), index);
  }

  void Leave(IXMLDOMNode* node, std::size_t depth) {
    if (IsPaged(node)) EndPage();
    WriteIndent(node, LevelOf(depth));
    WriteEndTag(node);
  }

  /// Whether a node without owner was met while it was not known whether there is any.
  bool IsDone() const { return m_metMissingOwner; }

  void Finish() { m_text.Flush(); }

 private:
  long long LevelOf(std::size_t depth) const {
    return m_arguments.depth + static_cast<long long>(depth);
  }

  bool IsPaged(const IXMLDOMNode* node) const { return node == m_arguments.pagedNode; }

  /// Writes everything of a node that stands before its other children. `index`: its number in the
  /// page, or null. Result: the first child, when there are other children to write.
  XMLDOM_NOINLINE IXMLDOMNode* Open(IXMLDOMNode* node, long long level, const int* index) {
    if (node->m_pOwnerDocument == nullptr && m_owners == OWNERS_NOT_KNOWN) {
      m_metMissingOwner = true;
      return nullptr;
    }
    WriteIndent(node, level);
    WriteLiteral(m_text, "<");
    WriteText(m_text, node->m_pszNodeName);
    if (__atomic_load_n(&g_bDispAddr, __ATOMIC_RELAXED)) WriteDebugDecoration(node);
    if (index != nullptr) m_text.Flush().WriteF(" index='%03d'", *index);
    WriteAttributes(node, IsPaged(node) && WritePageAttributes());

    const ChildKinds kinds = KindsOf(node);
    if (EndStartTag(node, kinds)) return nullptr;
    if (kinds.texts != 0) WriteTexts(node, kinds, (level + 1) * LayoutHere(node).width);
    if (!kinds.others) {
      if (HasPlaceholders(node)) WritePlaceholders();
      if (kinds.IsMultiLine()) WriteIndent(node, level);
      WriteEndTag(node);
      return nullptr;
    }
    if (IsPaged(node)) {
      m_pagedLevel = level + 1;
      m_position = 0;
    }
    return node->m_pFirstChild;
  }

  Layout LayoutHere(const IXMLDOMNode* node) const {
    return m_owners == OWNERS_MISSING ? xmldom::kUsualLayout : xmldom::LayoutOf(node);
  }

  void WriteIndent(const IXMLDOMNode* node, long long level) {
    const Layout layout = LayoutHere(node);
    if (layout.indents) WriteBlanks(m_text, level * layout.width);
  }

  /// Result: whether the tag ends the element too.
  bool EndStartTag(const IXMLDOMNode* node, const ChildKinds& kinds) {
    // Deliberate: a masked tag ends neither its element nor its line.
    if (m_arguments.masked || kinds.texts != 0) {
      WriteLiteral(m_text, ">");
      return false;
    }
    if (kinds.others || HasPlaceholders(node)) {
      WriteLiteral(m_text, ">\n");
      return false;
    }
    WriteLiteral(m_text, "/>\n");
    return true;
  }

  void WriteEndTag(const IXMLDOMNode* node) {
    WriteLiteral(m_text, "</");
    WriteText(m_text, node->m_pszNodeName);
    WriteLiteral(m_text, ">\n");
  }

  /// Writes the value of an attribute or a text, unless values are left out.
  void WriteValue(const IXMLDOMNode* node) {
    if (!m_arguments.masked) WriteText(m_text, xmldom::StoredValueOf(node));
  }

  XMLDOM_COLD void WriteDebugDecoration(const IXMLDOMNode* node) {
    m_text.Flush().WriteF("  addr='%p'  refcount='%d'", static_cast<const void*>(node),
                          node->GetRefCount());
  }

  /// `paged`: page attributes were written, which replace the stored ones.
  void WriteAttributes(IXMLDOMNode* node, bool paged) {
    for (const IXMLDOMNode* attribute = node->m_pFirstAttribute; attribute != nullptr;
         attribute = attribute->m_pNextSibling) {
      if (paged && node->IsPageAttribute(attribute->m_pszNodeName)) {
        ReportStripped(node);
        continue;
      }
      WriteLiteral(m_text, " ");
      WriteText(m_text, attribute->m_pszNodeName);
      WriteLiteral(m_text, "='");
      WriteValue(attribute);
      WriteLiteral(m_text, "'");
    }
  }

  void WriteTexts(const IXMLDOMNode* node, const ChildKinds& kinds, long long blanks) {
    for (IXMLDOMNode* child = node->m_pFirstChild; child != nullptr;
         child = child->m_pNextSibling) {
      if (child->m_eNodeType != NODE_TEXT) continue;
      if (child->m_pOwnerDocument == nullptr || child->m_pFirstChild != nullptr) TestOwners(child);
      if (kinds.IsMultiLine()) {
        // Deliberate: the texts are indented also when the layout does not indent.
        WriteLiteral(m_text, "\n");
        WriteBlanks(m_text, blanks);
      }
      WriteValue(child);
    }
    if (kinds.IsMultiLine()) WriteLiteral(m_text, "\n");
  }

  /// Tests the owner links of a text and of what an application has put below it: nodes that the
  /// walk does not come to.
  XMLDOM_COLD void TestOwners(IXMLDOMNode* text) {
    if (m_owners == OWNERS_NOT_KNOWN && xmldom::MissesOwner(text)) m_metMissingOwner = true;
  }

  /// Result: whether page attributes were written.
  XMLDOM_COLD bool WritePageAttributes() {
    if (m_arguments.currentPage < 0 || m_arguments.numPages < 0) return false;
    m_text.Flush().WriteF(" curPage = '%d' numPages = '%d'", m_arguments.currentPage,
                          m_arguments.numPages);
    return true;
  }

  /// Logs that a stored page attribute of the node is not written.
  XMLDOM_COLD void ReportStripped(IXMLDOMNode* node) {
    m_text.Flush();
    CLogger::PostLogEvent(xmldom::kLogData, xmldom::kSeverityTrace,
                          "IXMLDOMNode::GetXMLHelper - paged attributes already present in "
                          "data class, stripping old values",
                          node);
  }

  /// Whether a node without other children is filled with placeholder rows.
  bool HasPlaceholders(const IXMLDOMNode* node) const {
    return IsPaged(node) && m_arguments.padTemplate != nullptr && m_arguments.count >= 1;
  }

  XMLDOM_COLD void WritePlaceholders() {
    Pad(m_text.Flush(), m_arguments.padTemplate, 0, m_arguments.count);
  }

  /// Fills the page up. All children of the paged node have been counted by now, also those behind
  /// the page.
  XMLDOM_COLD void EndPage() {
    const long long last = static_cast<long long>(m_arguments.first) - 1 + m_arguments.count;
    Pad(m_text.Flush(), m_arguments.padTemplate, m_position,
        static_cast<int>(std::max<long long>(INT_MIN, std::min<long long>(INT_MAX, last))));
    m_pagedLevel = kNoLevel;
  }

  static const long long kNoLevel = LLONG_MIN;

  xmldom::TextBuffer m_text;
  OwnerLinks m_owners;
  bool m_metMissingOwner;
  const WriterArguments m_arguments;
  long long m_pagedLevel;  // of the children of the paged node, while they are written
  int m_position;          // of the child of the paged node that was met last, counted from 1
};

/// Appends the XML of a node. Result: false when a node without owner ended the walk, with the rest
/// missing; it does so only for OWNERS_NOT_KNOWN.
bool Write(CMemFile& out, IXMLDOMNode* top, OwnerLinks owners, const WriterArguments& arguments) {
  Writer writer(out, owners, arguments);
  xmldom::WalkTree<xmldom::SideTrail>(top, writer);
  writer.Finish();
  return !writer.IsDone();
}

}  // namespace

void IXMLDOMNode::GetXMLHelper(CMemFile& out, int iDepth, IXMLDOMNode* pPagedNode, int nFirst,
                               int nCount, int nCurPage, int nNumPages, const char* pszPadTemplate,
                               bool bMasked, bool bIndexed, int nIndex) const {
  IXMLDOMNode* top = xmldom::ContentOf(this);
  if (top == nullptr) return;
  const int* topIndex = bIndexed && top == this ? &nIndex : nullptr;
  const WriterArguments arguments = {iDepth,    pPagedNode,     nFirst,  nCount,  nCurPage,
                                     nNumPages, pszPadTemplate, bMasked, topIndex};
  OwnerLinks owners = OWNERS_NOT_KNOWN;
  if (pPagedNode != nullptr) {
    // The owners are looked at beforehand, because writing a page twice would post its log events
    // twice, and because its walk leaves nodes out.
    owners = xmldom::MissesOwner(top) ? OWNERS_MISSING : OWNERS_NAMED;
  }
  const unsigned int length = out.m_uLength;
  const unsigned int position = out.m_uPosition;
  if (Write(out, top, owners, arguments)) return;
  out.m_uLength = length;
  out.m_uPosition = position;
  Write(out, top, OWNERS_MISSING, arguments);
}

void Pad(CMemFile& out, const char* pszPadTemplate, int nFrom, int nTo) {
  if (pszPadTemplate == nullptr || nTo <= nFrom) return;
  const char* tail = pszPadTemplate;
  while (*tail != '\0' && *tail != '>' && !(tail[0] == '/' && tail[1] == '>')) ++tail;
  for (int i = nFrom; i < nTo; ++i) {
    xmldom::WriteBytes(out, pszPadTemplate, static_cast<std::size_t>(tail - pszPadTemplate));
    out.WriteF(" index='%03d'", i + 1);
    WriteText(out, tail);
    WriteLiteral(out, "\n");
  }
}

void PrintSpaces(CMemFile& out, int n) {
  if (n != 0) out.WriteF("%*s", n, " ");
}
