#include "fuzz/Questions.h"

#include <cstring>
#include <memory>

#include "fuzz/Check.h"

namespace fuzz {

namespace {

/// Calls a COM-style getter. Result: what it hands out, which holds a reference of its own.
/// `whenNone`: what the getter has to return when there is nothing to hand out.
template <class T>
XMLPtr<T> HandedOut(IXMLDOMNode* node, HRESULT (IXMLDOMNode::*getter)(T** out), HRESULT whenNone) {
  XMLPtr<T> handedOut;
  const HRESULT result = (node->*getter)(handedOut.Out());
  FUZZ_CHECK(result == (handedOut == nullptr ? whenNone : S_OK));
  return handedOut;
}

void AskForNeighbors(IXMLDOMNode* node, IXMLDOMNode* previous, IXMLDOMNode* last) {
  FUZZ_CHECK(HandedOut(node, &IXMLDOMNode::get_firstChild, S_FALSE) == node->m_pFirstChild);
  FUZZ_CHECK(HandedOut(node, &IXMLDOMNode::get_lastChild, S_FALSE) == last);
  FUZZ_CHECK(HandedOut(node, &IXMLDOMNode::get_nextSibling, S_FALSE) == node->m_pNextSibling);
  FUZZ_CHECK(HandedOut(node, &IXMLDOMNode::get_parentNode, S_OK) == node->m_pParent);
  FUZZ_CHECK(HandedOut(node, &IXMLDOMNode::get_ownerDocument, S_FALSE) == node->m_pOwnerDocument);
  FUZZ_CHECK(xmldom::Adopt(node->GetfirstChild()) == node->m_pFirstChild);
  VARIANT_BOOL hasChildren = VARIANT_FALSE;
  const bool expected = node->m_pFirstChild != nullptr;
  FUZZ_CHECK(node->hasChildNodes(&hasChildren) == (expected ? S_OK : S_FALSE));
  FUZZ_CHECK((hasChildren == VARIANT_TRUE) == expected);
  if (node->m_eNodeType != NODE_ATTRIBUTE) {
    FUZZ_CHECK(HandedOut(node, &IXMLDOMNode::get_previousSibling, S_FALSE) == previous);
    return;
  }
  try {
    XMLPtr<IXMLDOMNode> none;
    node->get_previousSibling(none.Out());
    FUZZ_CHECK(false);
  } catch (CLogException* thrown) {
    const std::unique_ptr<CLogException> exception(thrown);
    exception->LogMessage(1, 1, "an attribute has no previous sibling");
    FUZZ_CHECK(std::strlen(exception->GetWhere()) != 0);
    FUZZ_CHECK(std::strlen(exception->GetMessage()) != 0);
  }
}

/// All values that a node gives of itself.
void AskForValues(IXMLDOMNode* node) {
  XMLBstr name;
  FUZZ_CHECK(node->get_nodeName(name.Out()) == S_OK);
  FUZZ_CHECK(std::string(name.c_str()) == node->m_pszNodeName);
  DOMNodeType type = NODE_INVALID;
  FUZZ_CHECK(node->get_nodeType(&type) == S_OK && type == node->m_eNodeType);
  XMLBstr typeName;
  FUZZ_CHECK(node->get_nodeTypeString(typeName.Out()) == S_OK);
  XMLBstr text;
  FUZZ_CHECK(node->get_text(text.Out()) == S_OK);
  if (node->m_eNodeType == NODE_ELEMENT) FUZZ_CHECK(xmldom::Text(node) == text.c_str());
  for (const bool typed : {false, true}) {
    VARIANT value;
    VariantInit(&value);
    const HRESULT result = typed ? node->get_nodeTypedValue(&value) : node->get_nodeValue(&value);
    FUZZ_CHECK(result == S_OK || result == S_FALSE);
    VariantClear(&value);
  }
  const bool isHolder = node->m_eNodeType == NODE_ELEMENT && node->m_pFirstChild != nullptr &&
                        node->m_pFirstChild->m_eNodeType == NODE_TEXT;
  FUZZ_CHECK(node->GetStrValue() == (isHolder ? node->m_pFirstChild : node)->m_pszValue);
}

/// The list and the range of the children hold the same as the chain.
void AskForChildren(IXMLDOMNode* node, const std::vector<IXMLDOMNode*>& children) {
  XMLPtr<IXMLDOMNodeList> list;
  FUZZ_CHECK(node->get_childNodes(list.Out()) == S_OK);
  const int count = static_cast<int>(children.size());
  FUZZ_CHECK(list->m_nCount == count);
  for (int i = count - 1; i >= 0; --i) {
    FUZZ_CHECK(xmldom::Adopt(list->GetItem(i)) == children[static_cast<std::size_t>(i)]);
  }
  FUZZ_CHECK(xmldom::Adopt(list->GetItem(count)) == nullptr);
  std::size_t at = 0;
  for (const XMLPtr<IXMLDOMNode>& child : xmldom::Children(node)) {
    FUZZ_CHECK(at < children.size() && child == children[at]);
    ++at;
  }
  FUZZ_CHECK(at == children.size());
  int elements = 0;
  for (IXMLDOMNode* child : children) {
    if (child->m_eNodeType == NODE_ELEMENT) ++elements;
    const XMLPtr<IXMLDOMNode> named = xmldom::Adopt(node->GetChild(child->m_pszNodeName));
    FUZZ_CHECK(named != nullptr && std::strcmp(named->m_pszNodeName, child->m_pszNodeName) == 0);
  }
  FUZZ_CHECK(node->CountChildNodes() == elements);
  FUZZ_CHECK(xmldom::Adopt(node->GetChild("no such name")) == nullptr);
}

/// The map, the range and the iteration hold the same attributes as the chain.
void AskForAttributes(IXMLDOMNode* node) {
  XMLPtr<IXMLDOMNamedNodeMap> map;
  FUZZ_CHECK(node->get_attributes(map.Out()) == S_OK);
  IXMLDOMNode* cursor = nullptr;
  for (const XMLPtr<IXMLDOMNode>& attribute : xmldom::Attributes(node)) {
    const char* name = nullptr;
    const char* value = nullptr;
    FUZZ_CHECK(node->GetNextAttribute(cursor, name, value) == 1 && cursor == attribute);
    FUZZ_CHECK(value == attribute->m_pszValue && value == node->GetStrAttribute(name));
    FUZZ_CHECK(xmldom::Adopt(node->GetAttribute(name)) == attribute);
    FUZZ_CHECK(xmldom::HasAttribute(node, name));
    FUZZ_CHECK(xmldom::Attribute(node, name) == xmldom::Text(attribute));
    FUZZ_CHECK(xmldom::Adopt(map->GetNamedItem(name)) == attribute);
    FUZZ_CHECK(xmldom::Adopt(map->NextNode()) == attribute->m_pNextSibling);
  }
  const char* name = nullptr;
  const char* value = nullptr;
  FUZZ_CHECK(node->GetNextAttribute(cursor, name, value) == 0 && cursor == nullptr);
  char noName[] = "no such name";
  XMLPtr<IXMLDOMNode> none;
  FUZZ_CHECK(map->getNamedItem(noName, none.Out()) == S_FALSE);
  FUZZ_CHECK(none == nullptr);
  FUZZ_CHECK(xmldom::Attribute(node, noName, "otherwise") == "otherwise");
}

void AskForError(const Document& document) {
  XMLPtr<IXMLDOMParseError> error;
  FUZZ_CHECK(document->get_parseError(error.Out()) == S_OK);
  IXMLDOMParseError copy;
  copy = *error;
  long code = 0;
  const HRESULT result = copy.get_errorCode(&code);
  FUZZ_CHECK(result == (code == 0 ? S_FALSE : S_OK) && code == error->m_lErrorCode);
  long number = 0;
  FUZZ_CHECK(copy.get_filepos(&number) == S_OK && number == error->m_lFilePos);
  FUZZ_CHECK(copy.get_line(&number) == result && number == error->m_lLine);
  FUZZ_CHECK(copy.get_linepos(&number) == result && number == error->m_lLinePos);
  XMLBstr reason;
  XMLBstr source;
  XMLBstr message;
  FUZZ_CHECK(copy.get_reason(reason.Out()) == result);
  FUZZ_CHECK(copy.get_srcText(source.Out()) == result);
  FUZZ_CHECK(copy.get_errormessage(message.Out()) == result);
  if (result != S_OK) return;
  FUZZ_CHECK(std::string(reason.c_str()) == error->m_bstrReason);
  FUZZ_CHECK(std::strlen(source.c_str()) < 512 && std::strlen(message.c_str()) < 2048);
}

}  // namespace

void AskAll(const Document& document) {
  for (IXMLDOMNode* node : NodesOf(document.Get())) {
    std::vector<IXMLDOMNode*> children;
    for (IXMLDOMNode* child = node->m_pFirstChild; child != nullptr;
         child = child->m_pNextSibling) {
      children.push_back(child);
    }
    AskForValues(node);
    AskForChildren(node, children);
    if (node->m_eNodeType == NODE_ELEMENT) AskForAttributes(node);
    for (std::size_t i = 0; i < children.size(); ++i) {
      IXMLDOMNode* first = children[i]->m_pFirstChild;
      IXMLDOMNode* last = first;
      while (last != nullptr && last->m_pNextSibling != nullptr) last = last->m_pNextSibling;
      AskForNeighbors(children[i], i == 0 ? nullptr : children[i - 1], last);
    }
    for (const XMLPtr<IXMLDOMNode>& attribute : xmldom::Attributes(node)) {
      AskForNeighbors(attribute.Get(), nullptr, nullptr);
    }
  }
  XMLPtr<IXMLDOMNode> root;
  const HRESULT result = document->get_documentElement(root.Out());
  FUZZ_CHECK(result == (root == nullptr ? S_FALSE : S_OK));
  FUZZ_CHECK(root == document->m_pFirstChild);
  AskForError(document);
}

}  // namespace fuzz
