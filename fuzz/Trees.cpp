#include "fuzz/Trees.h"

#include <expat.h>

#include <cstdio>

#include "fuzz/Check.h"

namespace fuzz {

BalanceCheck::~BalanceCheck() {
  const std::string changes = Balance::Now().ChangesSince(m_before);
  std::fputs(changes.c_str(), stderr);
  FUZZ_CHECK(changes.empty());
}

Document::Document(Layout layout) {
  Create(m_document.Out());
  if (layout == AS_IT_STANDS) m_document->m_uFlags &= ~IXMLDOMDocument2::FORMATTED_LAYOUT;
}

Document::Layout Document::LayoutOf() const {
  return (m_document->m_uFlags & IXMLDOMDocument2::FORMATTED_LAYOUT) != 0 ? FORMATTED
                                                                          : AS_IT_STANDS;
}

std::string XmlOf(IXMLDOMNode* node) { return static_cast<char*>(node->Getxml()); }

bool Equal(IXMLDOMNode* first, IXMLDOMNode* second) {
  CMemFile report(256);
  const bool equal = CompareXMLNodes(first, second, report, 0) == 1;
  if (!equal) std::fprintf(stderr, "%s\n", report.GetAsStr());
  return equal;
}

std::vector<IXMLDOMNode*> NodesOf(IXMLDOMNode* top) {
  std::vector<IXMLDOMNode*> nodes;
  std::vector<IXMLDOMNode*> waiting(1, top);
  while (!waiting.empty()) {
    IXMLDOMNode* node = waiting.back();
    waiting.pop_back();
    nodes.push_back(node);
    FUZZ_CHECK(node->m_eNodeType == NODE_ATTRIBUTE ||
               node->m_pOwnerDocument == top->m_pOwnerDocument);
    for (IXMLDOMNode* head : {node->m_pFirstChild, node->m_pFirstAttribute}) {
      for (IXMLDOMNode* link = head; link != nullptr; link = link->m_pNextSibling) {
        FUZZ_CHECK(link->m_pParent == node);
        waiting.push_back(link);
      }
    }
  }
  return nodes;
}

namespace {

const char kBlanks[] = " \t\r\n";

void AppendStableForm(const IXMLDOMNode* node, std::string* form) {
  std::string value = node->m_pszValue == nullptr ? "" : node->m_pszValue;
  if (node->m_eNodeType == NODE_TEXT) {
    const std::size_t first = value.find_first_not_of(kBlanks);
    if (first == std::string::npos) return;
    value = value.substr(first, value.find_last_not_of(kBlanks) - first + 1);
  }
  *form += node->m_pszNodeName + ("=" + value) + "\n(";
  for (const IXMLDOMNode* attribute = node->m_pFirstAttribute; attribute != nullptr;
       attribute = attribute->m_pNextSibling) {
    AppendStableForm(attribute, form);
  }
  for (bool texts : {true, false}) {
    for (const IXMLDOMNode* child = node->m_pFirstChild; child != nullptr;
         child = child->m_pNextSibling) {
      if ((child->m_eNodeType == NODE_TEXT) == texts) AppendStableForm(child, form);
    }
  }
  *form += ")\n";
}

/// Whether a written document that does not load is one that cannot: it refers to an entity whose
/// declaration is gone, or pieces of text have come together as the end of a CDATA section.
bool IsLossOfForm(const std::string& xml, IXMLDOMDocument2* document) {
  if (xml.find("]]>") != std::string::npos) return true;
  XMLPtr<IXMLDOMParseError> error;
  document->get_parseError(error.Out());
  XMLBstr reason;
  error->get_reason(reason.Out());
  return std::string(reason.c_str()) == XML_ErrorString(XML_ERROR_UNDEFINED_ENTITY);
}

}  // namespace

std::string StableForm(const Document& document) {
  std::string form;
  AppendStableForm(document.Get(), &form);
  return form;
}

bool CheckRewriting(const Document& document) {
  const std::string written = xmldom::Xml(document.Get());
  Document loaded(document.LayoutOf());
  if (!loaded.Load(written)) {
    FUZZ_CHECK(IsLossOfForm(written, loaded.Get()));
    return false;
  }
  const std::string rewritten = xmldom::Xml(loaded.Get());
  Document again(document.LayoutOf());
  const bool parsed = again.Load(rewritten);
  if (!parsed && IsLossOfForm(rewritten, again.Get())) return false;
  FUZZ_CHECK(parsed);
  FUZZ_CHECK(StableForm(loaded) == StableForm(again));
  return true;
}

}  // namespace fuzz
