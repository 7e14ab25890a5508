#include "plain/PlainList.h"

#include <xmldom/xmldom.h>

#include <cstring>

namespace plain {

NodeList::NodeList() : head(nullptr), tail(nullptr), cursor(nullptr), count(0), cursorIndex(-1) {
  ++IXMLDOMNodeList::m_iObjCount;
}

NodeList::~NodeList() {
  while (head != nullptr) {
    Link* link = head;
    head = link->next;
    link->node->RealRelease();
    --IXMLDOMNodeListElt::m_iObjCount;
    delete link;
  }
  --IXMLDOMNodeList::m_iObjCount;
}

int NodeList::Add(IXMLDOMNode* node) {
  Link* link = new Link{node, nullptr};
  const int references = node->AddRef();
  ++IXMLDOMNodeListElt::m_iObjCount;
  ++count;
  if (head == nullptr) {
    head = link;
    return references;
  }
  if (tail == nullptr) tail = head;
  while (tail->next != nullptr) tail = tail->next;
  tail->next = link;
  tail = link;
  return references;
}

IXMLDOMNode* NodeList::NextNode() {
  if (cursorIndex == -2) return nullptr;
  cursor = cursorIndex == -1 ? head : cursor->next;
  if (cursor == nullptr) {
    cursorIndex = -2;
    return nullptr;
  }
  ++cursorIndex;
  cursor->node->AddRef();
  return cursor->node;
}

IXMLDOMNode* NodeList::GetItem(int index) {
  if (index < 0 || index >= count) return nullptr;
  IXMLDOMNode* node = nullptr;
  if (cursorIndex == -2 || index < cursorIndex) {
    cursor = nullptr;
    cursorIndex = -1;
    node = NextNode();
  } else if (cursorIndex == -1) {
    node = NextNode();
  } else {
    node = cursor->node;
    node->AddRef();
  }
  // The count may have been raised by hand.
  while (node != nullptr && cursorIndex < index) {
    node->RealRelease();
    node = NextNode();
  }
  return node;
}

IXMLDOMNode* NodeList::GetNamedItem(const char* name) {
  cursor = nullptr;
  cursorIndex = -1;
  for (IXMLDOMNode* node = NextNode(); node != nullptr; node = NextNode()) {
    if (std::strcmp(node->m_pszNodeName, name) == 0) return node;
    node->RealRelease();
  }
  return nullptr;
}

}  // namespace plain
