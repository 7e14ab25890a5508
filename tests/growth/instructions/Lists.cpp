// Lists of nodes, and ranges for loops over them.

#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include "growth/instructions/Shapes.h"
#include "harness/Lists.h"
#include "harness/Trees.h"

namespace {

void AddTo(IXMLDOMNodeList* list, IXMLDOMNode* node, int size) {
  for (int i = 0; i < size; ++i) list->Add(node);
}

const char* const kLoops = "A loop over";

/// Takes a node and the one behind it, if there is one, out of their tree.
void RemoveWithNext(IXMLDOMNode* node) {
  for (IXMLDOMNode* gone : {node->m_pNextSibling, node}) {
    if (gone == nullptr) continue;
    gone->RemoveNodeFromTree();
    gone->RealRelease();
  }
}

const Growing kLists[] = {
    {"get_childNodes, NextNode", "n children", 500,
     [](int size) {
       Document document = Load(Records(size));
       const Counted counted;
       const List list(ChildrenOf(Root(document)));
       while (Node(list->NextNode()) != nullptr) {
       }
     },
     nullptr},
    {"IXMLDOMNodeList::Add", "n nodes", 1000,
     [](int size) {
       Document document = NewDocument();
       const Counted counted;
       const List list(new IXMLDOMNodeList);
       AddTo(list, document, size);
     },
     nullptr},
    {"IXMLDOMNodeList::GetItem", "n items, forwards and backwards", 1000,
     [](int size) {
       Document document = NewDocument();
       const List list(new IXMLDOMNodeList);
       AddTo(list, document, size);
       const Counted counted;
       for (int i = 0; i < size; ++i) Node(list->GetItem(i));
       for (int i = size - 1; i >= 0; --i) Node(list->GetItem(i));
     },
     nullptr},
    {"IXMLDOMNodeList::GetItem", "n items, from both ends in turns", 500,
     [](int size) {
       Document document = NewDocument();
       const List list(new IXMLDOMNodeList);
       AddTo(list, document, size);
       const Counted counted;
       for (int i = 0; i < size / 2; ++i) {
         Node(list->GetItem(i));
         Node(list->GetItem(size - 1 - i));
       }
     },
     "Items of a list"},
    {"get_attributes, GetNamedItem, getNamedItem", "none of n", 500,
     [](int size) {
       Document document = WithAttributes(size);
       const Counted counted;
       const Map map(AttributesOf(Root(document)));
       Require(Node(map->GetNamedItem("none")) == nullptr);
       char name[] = "none";
       Node node;
       Require(map->getNamedItem(name, node.Out()) == S_FALSE);
     },
     nullptr},
    {"GetNamedItem", "each of n", 300,
     [](int size) {
       Document document = Load("<r/>");
       for (int i = 0; i < size; ++i) Root(document)->AddAttribute(NameOf(i).c_str(), "v");
       const Map map(AttributesOf(Root(document)));
       const Counted counted;
       for (int i = 0; i < size; ++i) {
         Require(Node(map->GetNamedItem(NameOf(i).c_str())) != nullptr);
       }
     },
     kLookups},
    {"xmldom::Listed", "n children that are removed in the loop", 500,
     [](int size) {
       Document document = Wide(size);
       const Counted counted;
       for (const XMLPtr<IXMLDOMNode>& node : xmldom::Listed(ChildrenOf(Root(document)))) {
         node->RemoveNodeFromTree();
         node->RealRelease();
       }
     },
     nullptr},
    {"xmldom::Attributes", "n attributes", 500,
     [](int size) {
       Document document = WithAttributes(size);
       const Counted counted;
       int visited = 0;
       for (const XMLPtr<IXMLDOMNode>& attribute : xmldom::Attributes(Root(document))) {
         visited += attribute->m_eNodeType == NODE_ATTRIBUTE;
       }
       Require(visited == size);
     },
     nullptr},
    {"xmldom::Children", "n children, two of them removed at each step", 300,
     [](int size) {
       Document document = Wide(size + 1);
       const Counted counted;
       for (const XMLPtr<IXMLDOMNode>& node : xmldom::Children(Root(document))) {
         RemoveWithNext(node.Get());
       }
     },
     kLoops},
    {"xmldom::Listed", "n children, two of them removed at each step", 300,
     [](int size) {
       Document document = Wide(size + 1);
       const Counted counted;
       for (const XMLPtr<IXMLDOMNode>& node : xmldom::Listed(ChildrenOf(Root(document)))) {
         if (node->m_pParent != nullptr) RemoveWithNext(node.Get());
       }
     },
     nullptr},
};

}  // namespace

std::vector<Growing> ListRows() {
  return std::vector<Growing>(std::begin(kLists), std::end(kLists));
}
