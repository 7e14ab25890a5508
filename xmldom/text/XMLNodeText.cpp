// The text of a node: the walk that collects it, and the members that hand it out in different
// forms. Tested by tests/text/XMLNodeText_test.cpp.

#include <xmldom/dom/LogKinds.h>
#include <xmldom/dom/NodeContent.h>
#include <xmldom/dom/TreeWalk.h>
#include <xmldom/dom/XMLNode.h>
#include <xmldom/support/MemFile.h>
#include <xmldom/text/EntityTranslation.h>
#include <xmldom/text/TextOutput.h>

#include <cstdlib>
#include <new>

namespace {

/// Collects the decoded texts below the nodes it visits. Entering a node appends all its text
/// children, so they come before the texts of its other children.
class TextCollector : public xmldom::PreOrderVisitor {
 public:
  explicit TextCollector(CMemFile& out) : m_out(out) {}

  IXMLDOMNode* Enter(IXMLDOMNode* node, std::size_t depth) {
    // A text was appended with its parent; as the top node it counts by its children, like others.
    if (node->m_eNodeType == NODE_TEXT && depth != 0) return nullptr;
    AppendTextChildren(node);
    return node->m_pFirstChild;
  }

 private:
  void AppendTextChildren(const IXMLDOMNode* node) {
    for (IXMLDOMNode* child = node->m_pFirstChild; child != nullptr;
         child = child->m_pNextSibling) {
      if (child->m_eNodeType != NODE_TEXT) continue;
      if (m_out.m_uPosition != 0) xmldom::WriteLiteral(m_out, " ");
      TranslateEntities(xmldom::StoredValueOf(child), m_out);
    }
  }

  CMemFile& m_out;
};

const unsigned int kTextBufferSize = 4096;

}  // namespace

void IXMLDOMNode::GetTextHelper(CMemFile& out) const {
  IXMLDOMNode* node = xmldom::ContentOf(this);
  if (node == nullptr) return;
  TextCollector collector(out);
  xmldom::WalkTree<xmldom::SideTrail>(node, collector);
}

BSTR IXMLDOMNode::GetTextAsBSTR() const {
  CMemFile text(kTextBufferSize);
  GetTextHelper(text);
  return SysAllocStringLen(text.GetAsStr(), text.m_uLength);
}

HRESULT IXMLDOMNode::get_text(BSTR* pText) {
  if (pText == nullptr) return E_ARGUMENT;
  *pText = GetTextAsBSTR();
  return *pText != nullptr ? S_OK : S_FALSE;
}

char* IXMLDOMNode::GetTextAsStr() const {
  CMemFile text(kTextBufferSize);
  GetTextHelper(text);
  if (text.m_uLength == 0) return nullptr;
  char* copy = static_cast<char*>(std::malloc(static_cast<std::size_t>(text.m_uLength) + 1));
  if (copy == nullptr) throw std::bad_alloc();
  text.m_uPosition = 0;
  copy[text.Read(copy, text.m_uLength)] = '\0';
  return copy;
}

char* IXMLDOMNode::GetStringValue(char* buf, int size) {
  if (buf == nullptr) return nullptr;
  CMemFile text(kTextBufferSize);
  GetTextHelper(text);
  long long count = text.m_uLength;
  if (count >= size) {
    CLogger::PostLogEventF(xmldom::kLogDom, xmldom::kSeverityWarning,
                           "IXMLDOMNode::GetStringValue - buffer size overrun, string trunked, "
                           "passed size %d, required size %lld",
                           size, count + 1);
    CLogger::PostBacktrace(xmldom::kLogDom, xmldom::kSeverityWarning,
                           "IXMLDOMNode::GetStringValue - Overrun was initiated from here:");
    count = static_cast<long long>(size) - 1;
  }
  if (count < 1) {
    buf[0] = '\0';
    return nullptr;
  }
  text.m_uPosition = 0;
  buf[text.Read(buf, static_cast<unsigned int>(count))] = '\0';
  return buf;
}
