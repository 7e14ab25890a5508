#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <string>
#include <utility>
#include <vector>

// The same loops written by hand and with the smart pointers. Callgrind counts the instructions of
// each function whose name begins with "Count"; `check` compares those of a pair.
//
// By hand means as well as can be done by hand, with the same references and just as safe against
// edits in the loop, but for exceptions.

namespace {

const int kRows = 400;
const int kWalks = 4;  // of one selection, which takes longer than a walk

/// Calls that do something else would be counted for nothing.
void Require(bool condition) {
  if (!condition) std::abort();
}

/// What a loop does with a node, here as for a listing: its type, its name and its value.
__attribute__((noinline)) void Visit(IXMLDOMNode* node, long& sum) {
  BSTR type = node->GetNodeTypeString();
  BSTR name = nullptr;
  node->get_nodeName(&name);
  _variant_t value;
  node->get_nodeValue(&value);
  sum += *type + *name + value.vt;
  SysFreeString(name);
  SysFreeString(type);
}

/// The node behind `present`, or behind `before` when that one is not in the chain any more; null
/// when neither is, with a reference.
__attribute__((cold, noinline)) IXMLDOMNode* FollowerByHand(IXMLDOMNode* first,
                                                            const IXMLDOMNode* present,
                                                            const IXMLDOMNode* before) {
  IXMLDOMNode* follower = before == nullptr ? first : nullptr;
  for (IXMLDOMNode* node = first; node != nullptr; node = node->m_pNextSibling) {
    if (node == before || node == present) follower = node->m_pNextSibling;
  }
  if (follower != nullptr) follower->AddRef();
  return follower;
}

/// Visits a chain of siblings, and at most as many nodes as it has at first. When the next node may
/// have been taken out, the walk goes on behind the present one or the one before it. This is short
/// enough for its callers to have it in place.
inline __attribute__((always_inline)) void WalkByHand(IXMLDOMNode* owner, IXMLDOMNode* const& first,
                                                      long& sum) {
  std::size_t left = 0;
  for (const IXMLDOMNode* node = first; node != nullptr; node = node->m_pNextSibling) ++left;
  IXMLDOMNode* node = first;
  if (node == nullptr) return;
  owner->AddRef();
  const IXMLDOMNode* const parent = node->m_pParent;
  const IXMLDOMNode* before = nullptr;
  node->AddRef();
  while (node != nullptr) {
    IXMLDOMNode* next = --left != 0 ? node->m_pNextSibling : nullptr;
    const IXMLDOMNode* follower = nullptr;
    if (next != nullptr) {
      next->AddRef();
      follower = next->m_pNextSibling;
    }
    Visit(node, sum);
    if (next != nullptr && (next->m_pParent != parent || next->m_pNextSibling != follower)) {
      Release<IXMLDOMNode>(next);
      next = FollowerByHand(first, node, before);
    }
    before = node;
    Release<IXMLDOMNode>(node);
    node = next;
  }
  owner->RealRelease();
}

}  // namespace

#define COUNTED extern "C" __attribute__((noinline)) long

COUNTED CountChildrenByHand(IXMLDOMNode* node) {
  long sum = 0;
  WalkByHand(node, node->m_pFirstChild, sum);
  return sum;
}

COUNTED CountChildrenByPointer(IXMLDOMNode* node) {
  long sum = 0;
  for (XMLPtr<IXMLDOMNode> child : xmldom::Children(node)) Visit(child.Get(), sum);
  return sum;
}

COUNTED CountListByHand(IXMLDOMNode* node) {
  long sum = 0;
  IXMLDOMNodeList* list = node->SelectNodes("row");
  for (int walk = 0; walk < kWalks; ++walk) {
    for (IXMLDOMNodeListElt* link = list->m_pHead; link != nullptr; link = link->m_pNext) {
      IXMLDOMNode* row = link->m_pNode;
      row->AddRef();
      Visit(row, sum);
      Release<IXMLDOMNode>(row);
    }
  }
  Release(list);
  return sum;
}

COUNTED CountListByPointer(IXMLDOMNode* node) {
  long sum = 0;
  const XMLNodes rows = xmldom::Selected(node, "row");
  for (int walk = 0; walk < kWalks; ++walk) {
    for (XMLPtr<IXMLDOMNode> row : rows) Visit(row.Get(), sum);
  }
  return sum;
}

COUNTED CountAttributesByHand(IXMLDOMNode* node) {
  long sum = 0;
  for (IXMLDOMNode* row = node->m_pFirstChild; row != nullptr; row = row->m_pNextSibling) {
    WalkByHand(row, row->m_pFirstAttribute, sum);
  }
  return sum;
}

COUNTED CountAttributesByPointer(IXMLDOMNode* node) {
  long sum = 0;
  for (IXMLDOMNode* row = node->m_pFirstChild; row != nullptr; row = row->m_pNextSibling) {
    for (XMLPtr<IXMLDOMNode> attribute : xmldom::Attributes(row)) Visit(attribute.Get(), sum);
  }
  return sum;
}

COUNTED CountSiblingsByHand(IXMLDOMNode* node) {
  long sum = 0;
  IXMLDOMNode* child = nullptr;
  node->get_firstChild(&child);
  while (child != nullptr) {
    Visit(child, sum);
    IXMLDOMNode* next = nullptr;
    child->get_nextSibling(&next);
    Release<IXMLDOMNode>(child);
    child = next;
  }
  return sum;
}

COUNTED CountSiblingsByPointer(IXMLDOMNode* node) {
  long sum = 0;
  XMLPtr<IXMLDOMNode> child;
  node->get_firstChild(child.Out());
  while (child) {
    Visit(child.Get(), sum);
    XMLPtr<IXMLDOMNode> next;
    child->get_nextSibling(next.Out());
    child = std::move(next);
  }
  return sum;
}

COUNTED CountInPlaceByHand(IXMLDOMNode* node) {
  long sum = 0;
  IXMLDOMNode* child = nullptr;
  node->get_firstChild(&child);
  while (child != nullptr) {
    Visit(child, sum);
    IXMLDOMNode* next = nullptr;
    child->get_nextSibling(&next);
    IXMLDOMNode* former = child;
    child = next;
    Release<IXMLDOMNode>(former);
  }
  return sum;
}

COUNTED CountInPlaceByPointer(IXMLDOMNode* node) {
  long sum = 0;
  XMLPtr<IXMLDOMNode> child;
  node->get_firstChild(child.Out());
  while (child) {
    Visit(child.Get(), sum);
    child->get_nextSibling(child.Out());
  }
  return sum;
}

COUNTED CountTextsByHand(IXMLDOMNode* node) {
  long sum = 0;
  for (IXMLDOMNode* row = node->m_pFirstChild; row != nullptr; row = row->m_pNextSibling) {
    BSTR name = nullptr;
    row->get_nodeName(&name);
    char* text = row->GetTextAsStr();
    sum += *name + (text != nullptr ? *text : '\0');
    std::free(text);
    SysFreeString(name);
  }
  return sum;
}

COUNTED CountTextsByPointer(IXMLDOMNode* node) {
  long sum = 0;
  for (IXMLDOMNode* row = node->m_pFirstChild; row != nullptr; row = row->m_pNextSibling) {
    XMLBstr name;
    row->get_nodeName(name.Out());
    const XMLHeapStr text = xmldom::AdoptHeapStr(row->GetTextAsStr());
    sum += *name.Get() + *text.c_str();
  }
  return sum;
}

COUNTED CountKeptByHand(IXMLDOMNode* node) {
  std::vector<IXMLDOMNode*> kept;
  kept.reserve(kRows);
  for (IXMLDOMNode* row = node->m_pFirstChild; row != nullptr; row = row->m_pNextSibling) {
    row->AddRef();
    kept.push_back(row);
  }
  long sum = 0;
  for (IXMLDOMNode* row : kept) Visit(row, sum);
  for (IXMLDOMNode* row : kept) row->RealRelease();
  return sum;
}

COUNTED CountKeptByPointer(IXMLDOMNode* node) {
  std::vector<XMLPtr<IXMLDOMNode>> kept;
  kept.reserve(kRows);
  for (IXMLDOMNode* row = node->m_pFirstChild; row != nullptr; row = row->m_pNextSibling) {
    kept.push_back(xmldom::Share(row));
  }
  long sum = 0;
  for (const XMLPtr<IXMLDOMNode>& row : kept) Visit(row.Get(), sum);
  return sum;
}

// The short calls: one node and its text, and all nodes and an attribute of each.

COUNTED CountShortCallsByHand(IXMLDOMNode* node) {
  long sum = 0;
  for (int i = 0; i < kRows; ++i) {
    IXMLDOMNode* row = node->SelectSingleNode("row");
    if (row == nullptr) continue;
    CMemFile text(256);
    row->GetTextHelper(text);
    sum += static_cast<long>(std::string(text.GetAsStr(), text.m_uLength).size());
    Release(row);
  }
  IXMLDOMNodeList* rows = node->SelectNodes("row");
  for (IXMLDOMNodeListElt* link = rows->m_pHead; link != nullptr; link = link->m_pNext) {
    IXMLDOMNode* row = link->m_pNode;
    row->AddRef();
    CMemFile value(256);
    IXMLDOMNode* attribute = row->m_pFirstAttribute;
    while (attribute != nullptr && std::strcmp(attribute->m_pszNodeName, "a") != 0) {
      attribute = attribute->m_pNextSibling;
    }
    if (attribute != nullptr) TranslateEntities(attribute->m_pszValue, value);
    sum += static_cast<long>(std::string(value.GetAsStr(), value.m_uLength).size());
    Release(row);
  }
  Release(rows);
  return sum;
}

COUNTED CountShortCallsByPointer(IXMLDOMNode* node) {
  long sum = 0;
  for (int i = 0; i < kRows; ++i) {
    const XMLPtr<IXMLDOMNode> row = xmldom::SelectOne(node, "row");
    sum += static_cast<long>(xmldom::Text(row).size());
  }
  for (XMLPtr<IXMLDOMNode> row : xmldom::Select(node, "row")) {
    sum += static_cast<long>(xmldom::Attribute(row, "a").size());
  }
  return sum;
}

int main() {
  std::string text = "<table>";
  for (int i = 0; i < kRows; ++i) text += "<row a='1' b='2' c='3'>cell</row>";
  text += "</table>";
  const XMLPtr<IXMLDOMDocument2> document = [&text] {
    XMLPtr<IXMLDOMDocument2> loaded;
    Create(loaded.Out());
    Require(loaded->loadXML(text.c_str()) == VARIANT_TRUE);
    return loaded;
  }();
  IXMLDOMNode* table = document->m_pFirstChild;

  typedef long (*Counted)(IXMLDOMNode*);
  const Counted pairs[][2] = {
      {CountChildrenByHand, CountChildrenByPointer},
      {CountAttributesByHand, CountAttributesByPointer},
      {CountListByHand, CountListByPointer},
      {CountSiblingsByHand, CountSiblingsByPointer},
      {CountInPlaceByHand, CountInPlaceByPointer},
      {CountTextsByHand, CountTextsByPointer},
      {CountKeptByHand, CountKeptByPointer},
      {CountShortCallsByHand, CountShortCallsByPointer},
  };
  for (int round = 0; round < 2; ++round) {
    for (const auto& pair : pairs) {
      const long byHand = pair[0](table);
      Require(byHand > 0 && pair[1](table) == byHand);
    }
  }
  return 0;
}
