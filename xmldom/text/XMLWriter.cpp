#include <xmldom/text/XMLWriter.h>

#include <xmldom/dom/LogKinds.h>
#include <xmldom/dom/NodeContent.h>
#include <xmldom/dom/TreeWalk.h>
#include <xmldom/text/TextOutput.h>

#include <algorithm>
#include <climits>

bool g_bDispAddr = false;

namespace {

using xmldom::WriteBlanks;
using xmldom::WriteLiteral;
using xmldom::WriteText;

/// What GetXMLHelper was asked for, beside the node and its depth.
struct WriterArguments {
  IXMLDOMNode* pagedNode;
  int first;
  int count;
  int currentPage;
  int numPages;
  const char* padTemplate;
  bool masked;
};

/// How a document lays its nodes out.
struct Layout {
  bool indents;
  int width;
};

// As every document has it.
const Layout kUsualLayout = {true, 2};

/// How a node's owner lays it out. The type tells a document from the bare base of one, which is
/// its own owner too.
Layout LayoutOf(const IXMLDOMNode* node) {
  const IXMLDOMDocument2* document = node->m_pOwnerDocument;
  if (document == nullptr || document->m_eNodeType != NODE_DOCUMENT) return kUsualLayout;
  return Layout{(document->m_uFlags & IXMLDOMDocument2::FORMATTED_LAYOUT) != 0,
                document->m_nIndent};
}

/// What is known of the owner links of the nodes that are written.
enum OwnerLinks {
  OWNERS_NOT_KNOWN,  // they are read up to the first that is null, which ends the walk
  OWNERS_NAMED,      // they are read
  OWNERS_MISSING     // a node has none, so that others may be dangling: they are not read
};

/// Looks for a node without owner.
class MissingOwnerSearch : public xmldom::PreOrderVisitor {
 public:
  MissingOwnerSearch() : m_found(false) {}

  IXMLDOMNode* Enter(IXMLDOMNode* node, std::size_t) {
    m_found = node->m_pOwnerDocument == nullptr;
    return node->m_pFirstChild;
  }

  bool IsDone() const { return m_found; }

 private:
  bool m_found;
};

/// Whether a node or any below it has no owner.
bool MissesOwner(IXMLDOMNode* node) {
  MissingOwnerSearch search;
  xmldom::WalkTree<xmldom::SideTrail>(node, search);
  return search.IsDone();
}

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
  Writer(CMemFile& out, int depth, OwnerLinks owners, const WriterArguments& arguments)
      : m_text(out),
        m_topDepth(depth),
        m_owners(owners),
        m_foundMissing(false),
        m_arguments(arguments),
        m_pagedLevel(kNoLevel),
        m_position(0) {}

  /// Writes everything of the top node that stands before its other children.
  /// Result: the first child, when there are other children to write.
  IXMLDOMNode* EnterTop(IXMLDOMNode* node, bool indexed, int index) {
    return Open(node, m_topDepth, indexed, index);
  }

  void LeaveTop(IXMLDOMNode* node) { Close(node, m_topDepth); }

  void Finish() { m_text.Flush(); }

  IXMLDOMNode* Enter(IXMLDOMNode* node, std::size_t depth) {
    const bool indexed = LevelOf(depth) == m_pagedLevel;
    if (indexed) {
      ++m_position;
      const long long end = static_cast<long long>(m_arguments.first) + m_arguments.count;
      if (m_position < m_arguments.first || m_position >= end) return nullptr;
    }
    if (node->m_eNodeType == NODE_TEXT) return nullptr;
    return Open(node, LevelOf(depth), indexed, indexed ? m_position : 0);
  }

  void Leave(IXMLDOMNode* node, std::size_t depth) { Close(node, LevelOf(depth)); }

  /// Whether the walk has to end, because a node has no owner.
  bool IsDone() const { return m_foundMissing; }

 private:
  // The chain that is walked stands one level below the top node.
  long long LevelOf(std::size_t depth) const {
    return m_topDepth + static_cast<long long>(depth) + 1;
  }

  bool IsPaged(const IXMLDOMNode* node) const { return node == m_arguments.pagedNode; }

  __attribute__((noinline)) IXMLDOMNode* Open(IXMLDOMNode* node, long long level, bool indexed,
                                              int index) {
    if (m_owners == OWNERS_NOT_KNOWN && node->m_pOwnerDocument == nullptr) {
      m_foundMissing = true;
      return nullptr;
    }
    WriteIndent(node, level);
    WriteLiteral(m_text, "<");
    WriteText(m_text, node->m_pszNodeName);
    WriteDecorations(node, indexed, index);
    WriteAttributes(node, IsPaged(node) && WritePageAttributes());

    const ChildKinds kinds = KindsOf(node);
    if (m_arguments.masked) WriteLiteral(m_text, ">");
    if (kinds.texts == 0 && !kinds.others) {
      CloseEmpty(node);
      return nullptr;
    }
    if (kinds.texts != 0) {
      if (!m_arguments.masked) WriteLiteral(m_text, ">");
      WriteTexts(node, kinds, (level + 1) * LayoutHere(node).width);
    }
    if (!kinds.others) {
      if (HasRowsOfPage(node)) WriteRowsOfPage();
      if (kinds.IsMultiLine()) WriteIndent(node, level);
      WriteEndTag(node);
      return nullptr;
    }
    if (kinds.texts == 0 && !m_arguments.masked) WriteLiteral(m_text, ">\n");
    if (IsPaged(node)) {
      m_pagedLevel = level + 1;
      m_position = 0;
    }
    return node->m_pFirstChild;
  }

  void Close(IXMLDOMNode* node, long long level) {
    if (IsPaged(node)) EndPage();
    WriteIndent(node, level);
    WriteEndTag(node);
  }

  Layout LayoutHere(const IXMLDOMNode* node) const {
    return m_owners == OWNERS_MISSING ? kUsualLayout : LayoutOf(node);
  }

  void WriteIndent(const IXMLDOMNode* node, long long level) {
    const Layout layout = LayoutHere(node);
    if (layout.indents) WriteBlanks(m_text, level * layout.width);
  }

  void CloseEmpty(IXMLDOMNode* node) {
    if (HasRowsOfPage(node)) {
      if (!m_arguments.masked) WriteLiteral(m_text, ">\n");
      WriteRowsOfPage();
    } else if (!m_arguments.masked) {
      WriteLiteral(m_text, "/>\n");
      return;
    }
    WriteEndTag(node);
  }

  void WriteDecorations(const IXMLDOMNode* node, bool indexed, int index) {
    if (g_bDispAddr) WriteDebugDecoration(node);
    if (indexed) m_text.Flush().WriteF(" index='%03d'", index);
  }

  __attribute__((cold)) void WriteDebugDecoration(const IXMLDOMNode* node) {
    m_text.Flush().WriteF("  addr='%p'  refcount='%d'", static_cast<const void*>(node),
                          node->GetRefCount());
  }

  /// Result: whether page attributes were written.
  __attribute__((cold)) bool WritePageAttributes() {
    if (m_arguments.currentPage < 0 || m_arguments.numPages < 0) return false;
    m_text.Flush().WriteF(" curPage = '%d' numPages = '%d'", m_arguments.currentPage,
                          m_arguments.numPages);
    return true;
  }

  __attribute__((cold)) void ReportStripped(IXMLDOMNode* node) {
    m_text.Flush();
    CLogger::PostLogEvent(xmldom::kLogData, xmldom::kSeverityTrace,
                          "IXMLDOMNode::GetXMLHelper - paged attributes already present in "
                          "data class, stripping old values",
                          node);
  }

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
      if (!m_arguments.masked) WriteText(m_text, xmldom::StoredValueOf(attribute));
      WriteLiteral(m_text, "'");
    }
  }

  /// Texts, and what hangs below them, are not walked.
  void NoteOwnersOfText(IXMLDOMNode* text) {
    if (m_owners != OWNERS_NOT_KNOWN) return;
    if (text->m_pOwnerDocument == nullptr ||
        (text->m_pFirstChild != nullptr && MissesOwner(text))) {
      m_foundMissing = true;
    }
  }

  void WriteTexts(const IXMLDOMNode* node, const ChildKinds& kinds, long long blanks) {
    for (IXMLDOMNode* child = node->m_pFirstChild; child != nullptr;
         child = child->m_pNextSibling) {
      if (child->m_eNodeType != NODE_TEXT) continue;
      NoteOwnersOfText(child);
      if (kinds.IsMultiLine()) {
        // Deliberate: the texts are indented also when the layout does not indent.
        WriteLiteral(m_text, "\n");
        WriteBlanks(m_text, blanks);
      }
      if (!m_arguments.masked) WriteText(m_text, xmldom::StoredValueOf(child));
    }
    if (kinds.IsMultiLine()) WriteLiteral(m_text, "\n");
  }

  /// Whether a node without other children is filled with placeholder rows.
  bool HasRowsOfPage(const IXMLDOMNode* node) const {
    return IsPaged(node) && m_arguments.padTemplate != nullptr && m_arguments.count >= 1;
  }

  __attribute__((cold)) void WriteRowsOfPage() {
    Pad(m_text.Flush(), m_arguments.padTemplate, 0, m_arguments.count);
  }

  /// Positions are counted up to the last child, so the page is filled up behind it.
  __attribute__((cold)) void EndPage() {
    const long long last = static_cast<long long>(m_arguments.first) - 1 + m_arguments.count;
    Pad(m_text.Flush(), m_arguments.padTemplate, m_position,
        static_cast<int>(std::max<long long>(INT_MIN, std::min<long long>(INT_MAX, last))));
    m_pagedLevel = kNoLevel;
  }

  void WriteEndTag(const IXMLDOMNode* node) {
    WriteLiteral(m_text, "</");
    WriteText(m_text, node->m_pszNodeName);
    WriteLiteral(m_text, ">\n");
  }

  static const long long kNoLevel = LLONG_MIN;

  xmldom::TextBuffer m_text;
  int m_topDepth;
  OwnerLinks m_owners;
  bool m_foundMissing;
  WriterArguments m_arguments;
  long long m_pagedLevel;  // of the children of the paged node, while they are written
  int m_position;          // of the child of the paged node that was met last
};

/// Result: false when a node without owner was met, which ends the walk; true when all is written.
bool Write(CMemFile& out, IXMLDOMNode* node, int depth, OwnerLinks owners,
           const WriterArguments& arguments, bool indexed, int index) {
  Writer writer(out, depth, owners, arguments);
  IXMLDOMNode* below = writer.EnterTop(node, indexed, index);
  if (below != nullptr) {
    xmldom::WalkChain<xmldom::SideTrail>(below, writer);
    if (!writer.IsDone()) writer.LeaveTop(node);
  }
  writer.Finish();
  return !writer.IsDone();
}

}  // namespace

void IXMLDOMNode::GetXMLHelper(CMemFile& out, int iDepth, IXMLDOMNode* pPagedNode, int nFirst,
                               int nCount, int nCurPage, int nNumPages, const char* pszPadTemplate,
                               bool bMasked, bool bIndexed, int nIndex) const {
  IXMLDOMNode* node = xmldom::ContentOf(this);
  if (node == nullptr) return;
  const WriterArguments arguments = {pPagedNode, nFirst,         nCount, nCurPage,
                                     nNumPages,  pszPadTemplate, bMasked};
  const bool indexed = bIndexed && node == this;
  const unsigned int length = out.m_uLength;
  const unsigned int position = out.m_uPosition;
  // A page is written once, because it can post log events, and skips nodes.
  OwnerLinks owners = OWNERS_NOT_KNOWN;
  if (pPagedNode != nullptr) owners = MissesOwner(node) ? OWNERS_MISSING : OWNERS_NAMED;
  if (Write(out, node, iDepth, owners, arguments, indexed, indexed ? nIndex : 0)) return;
  out.m_uLength = length;
  out.m_uPosition = position;
  Write(out, node, iDepth, OWNERS_MISSING, arguments, indexed, indexed ? nIndex : 0);
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
