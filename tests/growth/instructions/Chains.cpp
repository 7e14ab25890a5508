// Edits at the ends of long chains of children, going backwards over these, and places in random
// order.

#include <algorithm>
#include <random>

#include "growth/instructions/Shapes.h"

namespace {

const char* const kBefore = "The node before another";

void InsertBefore(IXMLDOMNode* list, IXMLDOMNode* child) {
  Node node(NewNode());
  Require(list->insertBefore(node, child, nullptr) == S_OK);
  node.Detach();
}

void InsertBeforeLast(IXMLDOMNode* list) { InsertBefore(list, LastChild(list)); }

void Remove(IXMLDOMNode* list, IXMLDOMNode* child) {
  Node removed;
  Require(list->removeChild(child, removed.Out()) == S_OK);
}

std::vector<IXMLDOMNode*> AllChildren(IXMLDOMNode* list) {
  std::vector<IXMLDOMNode*> children;
  for (IXMLDOMNode* node = list->m_pFirstChild; node != nullptr; node = node->m_pNextSibling) {
    children.push_back(node);
  }
  return children;
}

/// Calls `edit` with a list of `size` children and each of these, in the same random order each
/// time, so that the counts can be compared.
void EditInRandomOrder(int size, void (*edit)(IXMLDOMNode* list, IXMLDOMNode* child)) {
  Document document = Wide(size);
  std::vector<IXMLDOMNode*> children = AllChildren(Root(document));
  std::shuffle(children.begin(), children.end(), std::mt19937());
  const Counted counted;
  for (IXMLDOMNode* child : children) edit(Root(document), child);
}

/// Removes all children, of which there are `count`, from the last on.
void RemoveInReverse(IXMLDOMNode* list, int count) {
  std::vector<IXMLDOMNode*> children = AllChildren(list);
  Require(children.size() == static_cast<std::size_t>(count));
  const Counted counted;
  for (; !children.empty(); children.pop_back()) Remove(list, children.back());
}

const Growing kChains[] = {
    {"AddChild, AddTextChild, AddAttribute", "n records of one element", 300,
     // Each record has chains of its own, which must not take the place of the long one.
     [](int size) {
       Document document = Load("<r/>");
       const Counted counted;
       for (int i = 0; i < size; ++i) {
         const Node record(Root(document)->AddChild("record", nullptr));
         for (const char* name : {"a", "b", "c"}) {
           record->AddAttribute(name, "1");
           Node(record->AddChild(name, nullptr))->AddTextChild("t");
         }
       }
     },
     nullptr},
    {"AddChild", "n children, while other lists come and go", 500,
     [](int size) {
       Document document = Load("<r/>");
       const Counted counted;
       for (int i = 0; i < size; ++i) {
         Node(Root(document)->AddChild("n", nullptr));
         const Node other(NewNode());
         for (int j = 0; j < 3; ++j) Node(other->AddChild("n", nullptr));
       }
     },
     nullptr},
    {"insertBefore", "n nodes before the last of n", 500,
     [](int size) {
       Document document = Wide(size);
       const Counted counted;
       for (int i = 0; i < size; ++i) InsertBeforeLast(Root(document));
     },
     nullptr},
    {"insertBefore, AddTextChild", "n nodes before the last of n and behind it, in turns", 500,
     [](int size) {
       Document document = Wide(size);
       const Counted counted;
       for (int i = 0; i < size; ++i) {
         InsertBeforeLast(Root(document));
         Root(document)->AddTextChild("t");
       }
     },
     nullptr},
    {"replaceChild", "n times the last of n", 500,
     [](int size) {
       Document document = Wide(size);
       const Counted counted;
       for (int i = 0; i < size; ++i) {
         Node node(NewNode());
         Node replaced;
         Require(Root(document)->replaceChild(node, LastChild(Root(document)), replaced.Out()) ==
                 S_OK);
         node.Detach();
       }
     },
     nullptr},
    {"removeChild", "n nodes, the last each time", 500,
     [](int size) {
       Document document = Wide(size);
       const Counted counted;
       for (int i = 0; i < size; ++i) Remove(Root(document), LastChild(Root(document)));
     },
     nullptr},
    {"removeChild", "n nodes from the last on", 500,
     [](int size) {
       Document document = Wide(size);
       RemoveInReverse(Root(document), size);
     },
     nullptr},
    {"removeChild", "n nodes with texts from the last on", 500,
     [](int size) {
       Document document = Load("<r>" + Times(size, "<a>t</a>") + "</r>");
       RemoveInReverse(Root(document), size);
     },
     nullptr},
    {"AddChild, removeChild", "a queue of n", 500,
     [](int size) {
       Document document = Wide(size);
       const Counted counted;
       for (int i = 0; i < size; ++i) {
         Node(Root(document)->AddChild("n", nullptr));
         Remove(Root(document), Root(document)->m_pFirstChild);
       }
     },
     nullptr},
    {"AddChild, AddTextChild, removeChild", "a queue of n with texts", 500,
     [](int size) {
       Document document = Wide(size);
       const Counted counted;
       for (int i = 0; i < size; ++i) {
         Node(Root(document)->AddChild("n", nullptr))->AddTextChild("t");
         Remove(Root(document), Root(document)->m_pFirstChild);
       }
     },
     nullptr},
    {"get_previousSibling", "from the last of n to the first", 500,
     [](int size) {
       Document document = Wide(size);
       Node node(Keep(LastChild(Root(document))));
       const Counted counted;
       while (node != nullptr) node->get_previousSibling(node.Out());
     },
     nullptr},
};

const Growing kPlaces[] = {
    {"get_previousSibling", "of each of n, in random order", 300,
     [](int size) {
       EditInRandomOrder(size, [](IXMLDOMNode*, IXMLDOMNode* child) {
         Node previous;
         child->get_previousSibling(previous.Out());
       });
     },
     kBefore},
    {"get_previousSibling", "from the last to the first of two lists of n, in turns", 300,
     [](int size) {
       Document document = Load("<r>" + Times(2, "<l>" + Times(size, "<a/>") + "</l>") + "</r>");
       const std::vector<IXMLDOMNode*> children = AllChildren(At(document, {0, 0}));
       const std::vector<IXMLDOMNode*> others = AllChildren(At(document, {0, 1}));
       const Counted counted;
       for (std::size_t i = children.size(); i-- > 0;) {
         for (IXMLDOMNode* node : {children[i], others[i]}) {
           Node previous;
           node->get_previousSibling(previous.Out());
         }
       }
     },
     kBefore},
    {"insertBefore", "before each of n, in random order", 300,
     [](int size) { EditInRandomOrder(size, InsertBefore); }, kBefore},
    {"replaceChild", "each of n, in random order", 300,
     [](int size) { EditInRandomOrder(size, Replace); }, kBefore},
    {"removeChild", "n nodes in random order", 300,
     [](int size) { EditInRandomOrder(size, Remove); }, kBefore},
    {"RemoveNodeFromTree", "n nodes in random order", 300,
     [](int size) {
       EditInRandomOrder(size, [](IXMLDOMNode*, IXMLDOMNode* child) {
         child->RemoveNodeFromTree();
         child->RealRelease();
       });
     },
     kBefore},
};

}  // namespace

std::vector<Growing> ChainRows() {
  std::vector<Growing> rows(std::begin(kChains), std::end(kChains));
  rows.insert(rows.end(), std::begin(kPlaces), std::end(kPlaces));
  return rows;
}
