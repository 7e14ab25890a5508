#include "plain/PlainWriter.h"

#include <xmldom/xmldom.h>

#include <cstring>
#include <string>

#include "plain/PlainText.h"

namespace plain {

namespace {

/// What a nested call is given unchanged.
struct Arguments {
  IXMLDOMNode* pagedNode;
  int first;
  int count;
  int currentPage;
  int numPages;
  const char* padTemplate;
  bool masked;
  bool usualLayout;
};

void Write(CMemFile& out, const char* text) {
  if (text != nullptr) out.Write(text, static_cast<unsigned int>(std::strlen(text)));
}

bool IsDocument(const IXMLDOMNode* node) {
  return node->m_pOwnerDocument == static_cast<const void*>(node);
}

/// Whether a node or any below it has no owner: it was taken out of its tree, and what hangs below
/// may name an owner that is gone.
bool NamesNoOwner(const IXMLDOMNode* node) {
  if (node->m_pOwnerDocument == nullptr) return true;
  for (IXMLDOMNode* child = node->m_pFirstChild; child != nullptr; child = child->m_pNextSibling) {
    if (NamesNoOwner(child)) return true;
  }
  return false;
}

bool Indents(const IXMLDOMNode* node, const Arguments& arguments) {
  if (arguments.usualLayout) return true;
  return (node->m_pOwnerDocument->m_uFlags & IXMLDOMDocument2::FORMATTED_LAYOUT) != 0;
}

int WidthOf(const IXMLDOMNode* node, const Arguments& arguments) {
  return arguments.usualLayout ? 2 : node->m_pOwnerDocument->m_nIndent;
}

void WriteBlanks(CMemFile& out, int count) {
  if (count > 0) Write(out, std::string(static_cast<std::size_t>(count), ' ').c_str());
}

void WriteIndent(CMemFile& out, const IXMLDOMNode* node, int depth, const Arguments& arguments) {
  if (Indents(node, arguments)) WriteBlanks(out, depth * WidthOf(node, arguments));
}

void WriteAttributes(CMemFile& out, IXMLDOMNode* node, const Arguments& arguments) {
  const bool hasPageAttributes =
      node == arguments.pagedNode && arguments.currentPage >= 0 && arguments.numPages >= 0;
  if (hasPageAttributes) {
    out.WriteF(" curPage = '%d' numPages = '%d'", arguments.currentPage, arguments.numPages);
  }
  for (IXMLDOMNode* attribute = node->m_pFirstAttribute; attribute != nullptr;
       attribute = attribute->m_pNextSibling) {
    if (hasPageAttributes && node->IsPageAttribute(attribute->m_pszNodeName) != 0) {
      CLogger::PostLogEvent(LOG_TYPE_DATA, LOG_SEVERITY_TRACE,
                            "IXMLDOMNode::GetXMLHelper - paged attributes already present in "
                            "data class, stripping old values",
                            node);
      continue;
    }
    Write(out, " ");
    Write(out, attribute->m_pszNodeName);
    Write(out, "='");
    if (!arguments.masked) Write(out, plain::GetStrValue(attribute));
    Write(out, "'");
  }
}

void WriteEndTag(CMemFile& out, const IXMLDOMNode* node) {
  Write(out, "</");
  Write(out, node->m_pszNodeName);
  Write(out, ">\n");
}

bool HasPlaceholders(const IXMLDOMNode* node, const Arguments& arguments) {
  return node == arguments.pagedNode && arguments.padTemplate != nullptr && arguments.count >= 1;
}

void WriteTexts(CMemFile& out, const IXMLDOMNode* node, int depth, bool onLines,
                const Arguments& arguments) {
  for (IXMLDOMNode* child = node->m_pFirstChild; child != nullptr; child = child->m_pNextSibling) {
    if (child->m_eNodeType != NODE_TEXT) continue;
    if (onLines) {
      Write(out, "\n");
      WriteBlanks(out, (depth + 1) * WidthOf(node, arguments));
    }
    if (!arguments.masked) Write(out, plain::GetStrValue(child));
  }
  if (onLines) Write(out, "\n");
}

void WriteNode(CMemFile& out, IXMLDOMNode* node, int depth, const Arguments& arguments,
               bool indexed, int index);

void WriteOthers(CMemFile& out, IXMLDOMNode* node, int depth, const Arguments& arguments) {
  int counter = 0;
  for (IXMLDOMNode* child = node->m_pFirstChild; child != nullptr; child = child->m_pNextSibling) {
    const bool isText = child->m_eNodeType == NODE_TEXT;
    if (node != arguments.pagedNode) {
      if (!isText) WriteNode(out, child, depth + 1, arguments, false, 0);
      continue;
    }
    ++counter;
    if (counter < arguments.first || counter >= arguments.first + arguments.count) continue;
    if (!isText) WriteNode(out, child, depth + 1, arguments, true, counter);
  }
  if (node == arguments.pagedNode && arguments.padTemplate != nullptr) {
    plain::Pad(out, arguments.padTemplate, counter, arguments.first - 1 + arguments.count);
  }
}

void WriteNode(CMemFile& out, IXMLDOMNode* node, int depth, const Arguments& arguments,
               bool indexed, int index) {
  if (IsDocument(node)) {
    if (node->m_pFirstChild != nullptr) {
      WriteNode(out, node->m_pFirstChild, depth, arguments, false, 0);
    }
    return;
  }
  WriteIndent(out, node, depth, arguments);
  Write(out, "<");
  Write(out, node->m_pszNodeName);
  if (g_bDispAddr) {
    out.WriteF("  addr='%p'  refcount='%d'", static_cast<void*>(node), node->GetRefCount());
  }
  if (indexed) out.WriteF(" index='%03d'", index);
  WriteAttributes(out, node, arguments);

  int texts = 0;
  bool others = false;
  for (IXMLDOMNode* child = node->m_pFirstChild; child != nullptr; child = child->m_pNextSibling) {
    if (child->m_eNodeType == NODE_TEXT) ++texts;
    if (child->m_eNodeType != NODE_TEXT) others = true;
  }
  bool isOpen = true;
  if (arguments.masked) {
    Write(out, ">");
    isOpen = false;
  }
  if (texts == 0 && !others) {
    if (HasPlaceholders(node, arguments)) {
      if (isOpen) Write(out, ">\n");
      plain::Pad(out, arguments.padTemplate, 0, arguments.count);
    } else if (isOpen) {
      Write(out, "/>\n");
      return;
    }
    WriteEndTag(out, node);
    return;
  }
  const bool onLines = others || texts > 1;
  if (texts >= 1) {
    if (isOpen) Write(out, ">");
    isOpen = false;
    WriteTexts(out, node, depth, onLines, arguments);
    if (!others && HasPlaceholders(node, arguments)) {
      plain::Pad(out, arguments.padTemplate, 0, arguments.count);
    }
  }
  if (others) {
    if (isOpen) Write(out, ">\n");
    WriteOthers(out, node, depth, arguments);
  }
  if (onLines) WriteIndent(out, node, depth, arguments);
  WriteEndTag(out, node);
}

}  // namespace

void GetXMLHelper(const IXMLDOMNode* node, CMemFile& out, int depth, IXMLDOMNode* pagedNode,
                  int first, int count, int currentPage, int numPages, const char* padTemplate,
                  bool masked, bool indexed, int index) {
  const IXMLDOMNode* top = node;
  if (IsDocument(node)) top = node->m_pFirstChild;
  if (top == nullptr) return;
  const Arguments arguments = {pagedNode, first,       count,  currentPage,
                               numPages,  padTemplate, masked, NamesNoOwner(top)};
  WriteNode(out, const_cast<IXMLDOMNode*>(node), depth, arguments, indexed, index);
}

void Pad(CMemFile& out, const char* padTemplate, int from, int to) {
  CMemFile prefix(4096);
  const char* tail = padTemplate;
  while (*tail != '\0' && *tail != '>' && !(tail[0] == '/' && tail[1] == '>')) {
    prefix.Write(tail, 1);
    ++tail;
  }
  for (int i = from + 1; i <= to; ++i) {
    Write(out, prefix.GetAsStr());
    out.WriteF(" index='%03d'", i);
    Write(out, tail);
    Write(out, "\n");
  }
}

}  // namespace plain
