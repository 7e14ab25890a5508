// Operations that build and release trees.

#include "growth/instructions/Shapes.h"

namespace {

const Growing kBuilding[] = {
    {"AddChild", "n children of one element", 1000,
     [](int size) {
       Document document = Load("<r/>");
       const Counted counted;
       for (int i = 0; i < size; ++i) Node(Root(document)->AddChild("n", "v"));
     },
     nullptr},
    {"AddChild", "n children of each of 20 elements, in turns", 100,
     [](int size) {
       Document document = Load("<r>" + Times(20, "<a/>") + "</r>");
       const Counted counted;
       for (int i = 0; i < size; ++i) {
         for (IXMLDOMNode* node = Root(document)->m_pFirstChild; node != nullptr;
              node = node->m_pNextSibling) {
           Node(node->AddChild("n", "v"));
         }
       }
     },
     kAdditions},
    {"get_lastChild", "n times of each of 20 lists of n, in turns", 100,
     [](int size) {
       Document document = Load("<r>" + Times(20, "<l>" + Times(size, "<a/>") + "</l>") + "</r>");
       const Counted counted;
       for (int i = 0; i < size; ++i) {
         for (IXMLDOMNode* node = Root(document)->m_pFirstChild; node != nullptr;
              node = node->m_pNextSibling) {
           LastChild(node);
         }
       }
     },
     kAdditions},
    {"AddChild, a node", "a tree of n levels", 1000,
     [](int size) {
       Document document = Load("<r/>");
       Document other = Deep(size);
       IXMLDOMNode* const root = Root(other);
       root->RemoveNodeFromTree();
       const Counted counted;
       Root(document)->AddChild(root);
     },
     nullptr},
    {"AddSibling", "n times to the first", 1000,
     [](int size) {
       Document document = Load("<r><a/></r>");
       IXMLDOMNode* const first = At(document, {0, 0});
       const Counted counted;
       for (int i = 0; i < size; ++i) Node(first->AddSibling("n", nullptr));
     },
     nullptr},
    {"AddTextChild", "n texts of one element", 1000,
     [](int size) {
       Document document = Load("<r/>");
       const Counted counted;
       for (int i = 0; i < size; ++i) Root(document)->AddTextChild("v");
     },
     nullptr},
    {"AddAttribute", "n attributes of one element", 300,
     [](int size) {
       Document document = Load("<r/>");
       const Counted counted;
       for (int i = 0; i < size; ++i) {
         Root(document)->AddAttribute(NameOf(i).c_str(), "v");
       }
     },
     kLookups},
    {"SetAttribute", "the last of n", 1000,
     [](int size) {
       Document document = WithAttributes(size);
       const Counted counted;
       Root(document)->SetAttribute(("k" + std::to_string(size - 1)).c_str(), "new");
     },
     nullptr},
    {"SetValue", "n bytes", 20000,
     [](int size) {
       Document document = Load("<r>t</r>");
       const std::string text(static_cast<std::size_t>(size), 'x');
       const Counted counted;
       Root(document)->SetValue(text.c_str());
     },
     nullptr},
    {"AppendValue", "to n bytes", 20000,
     [](int size) {
       Document document = Load("<r>" + Times(size, "x") + "</r>");
       const Counted counted;
       At(document, {0, 0})->AppendValue("more", 4);
     },
     nullptr},
    {"AppendValue", "n pieces to one text", 300,
     [](int size) {
       Document document = Load("<r>t</r>");
       IXMLDOMNode* const text = At(document, {0, 0});
       const Counted counted;
       for (int i = 0; i < size; ++i) text->AppendValue("0123456789", 10);
     },
     "AppendValue"},
    {"createNode", "a name of n bytes", 20000,
     [](int size) {
       Document document = Load("<r/>");
       std::string name(static_cast<std::size_t>(size), 'n');
       VARIANT type;
       type.vt = VT_I4;
       type.lVal = NODE_ELEMENT;
       const Counted counted;
       Node node;
       document->createNode(type, &name[0], nullptr, node.Out());
     },
     nullptr},
    {"Release", "n levels", 1000,
     [](int size) {
       Document document = Deep(size);
       const Counted counted;
       document.Reset();
     },
     nullptr},
    {"Release", "n siblings with attributes and texts", 1000,
     [](int size) {
       Document document = Load("<r>" + Times(size, "<a b='c'>t</a>") + "</r>");
       const Counted counted;
       document.Reset();
     },
     nullptr},
    {"ClearNode", "n attributes", 1000,
     [](int size) {
       Document document = WithAttributes(size);
       const Counted counted;
       Root(document)->ClearNode(false);
     },
     nullptr},
};

// From the first of these on, the library no longer knows the owners of siblings without visiting
// them.
const Growing kOwners[] = {
    {"AddChild, a node", "with n siblings behind it", 1000,
     [](int size) {
       Document document = Load("<r/>");
       Node head(NewNode());
       for (int i = 0; i < size; ++i) Node(head->AddSibling("m", nullptr));
       const Counted counted;
       Root(document)->AddChild(head.Detach());
     },
     nullptr},
    {"RecurseSetDocument, RecurseClearDocument", "n levels", 1000,
     [](int size) {
       Document document = Deep(size);
       const Counted counted;
       Root(document)->RecurseClearDocument(0);
       Root(document)->RecurseSetDocument(document);
     },
     nullptr},
    {"RecurseSetDocument, RecurseClearDocument", "n siblings", 1000,
     [](int size) {
       Document document = Wide(size);
       const Counted counted;
       Root(document)->m_pFirstChild->RecurseClearDocument(2);
       Root(document)->m_pFirstChild->RecurseSetDocument(document);
     },
     nullptr},
    {"replaceChild", "each of n, after RecurseClearDocument", 500,
     [](int size) {
       Document document = Wide(size);
       ReplaceEach(Root(document));
     },
     "Owners"},
};

}  // namespace

std::vector<Growing> OwnerRows() {
  return std::vector<Growing>(std::begin(kOwners), std::end(kOwners));
}

std::vector<Growing> BuildingRows() {
  return std::vector<Growing>(std::begin(kBuilding), std::end(kBuilding));
}
