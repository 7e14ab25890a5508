// Operations that build, edit and release trees.

#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include "growth/instructions/Growth.h"
#include "harness/Trees.h"

namespace {

const char* const kAdditions = "Additions";
const char* const kLookups = "Lookups by name";

Document Wide(int size) { return Load("<r>" + Times(size, "<a/>") + "</r>"); }

Document Deep(int size) { return Load(Times(size, "<a>") + Times(size, "</a>")); }

std::string Attributes(int size) {
  std::string text;
  for (int i = 0; i < size; ++i) text += " k" + std::to_string(i) + "='v'";
  return text;
}

Document WithAttributes(int size) { return Load("<r" + Attributes(size) + "/>"); }

IXMLDOMNode* LastChild(IXMLDOMNode* node) {
  Node last;
  node->get_lastChild(last.Out());
  return last;
}

Node NewNode() { return Node(new IXMLDOMNode(nullptr, "n", nullptr, NODE_ELEMENT)); }

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
    {"AddChild and removeChild", "a queue of n", 500,
     [](int size) {
       Document document = Wide(size);
       const Counted counted;
       for (int i = 0; i < size; ++i) {
         Node(Root(document)->AddChild("n", nullptr));
         Node removed;
         Root(document)->removeChild(Root(document)->m_pFirstChild, removed.Out());
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
    {"AddChild, a node", "with n siblings behind it", 1000,
     [](int size) {
       Document document = Load("<r/>");
       Node head(NewNode());
       for (int i = 0; i < size; ++i) Node(head->AddSibling("m", nullptr));
       const Counted counted;
       Root(document)->AddChild(head.Detach());
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
         Root(document)->AddAttribute(("k" + std::to_string(i)).c_str(), "v");
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

const Growing kEditing[] = {
    {"appendChild", "n nodes from one parent to another", 1000,
     [](int size) {
       Document document = Load("<r><a>" + Times(size, "<b/>") + "</a><a/></r>");
       IXMLDOMNode* const from = At(document, {0, 0});
       IXMLDOMNode* const to = At(document, {0, 1});
       const Counted counted;
       while (from->m_pFirstChild != nullptr) to->appendChild(from->m_pFirstChild, nullptr);
     },
     kAdditions},
    {"appendChild", "a tree of n levels", 1000,
     [](int size) {
       Document document =
           Load("<r><b/><c>" + Times(size, "<a>") + Times(size, "</a>") + "</c></r>");
       const Counted counted;
       At(document, {0, 0})->appendChild(At(document, {0, 1}), nullptr);
     },
     nullptr},
    {"insertBefore", "n nodes before the first", 500,
     [](int size) {
       Document document = Load("<r><a/></r>");
       const Counted counted;
       for (int i = 0; i < size; ++i) {
         Node node(NewNode());
         Root(document)->insertBefore(node, Root(document)->m_pFirstChild, nullptr);
         node.Detach();
       }
     },
     nullptr},
    {"insertBefore", "before the last of n", 1000,
     [](int size) {
       Document document = Wide(size);
       IXMLDOMNode* const last = LastChild(Root(document));
       Node node(NewNode());
       const Counted counted;
       Root(document)->insertBefore(node, last, nullptr);
       node.Detach();
     },
     nullptr},
    {"insertBefore", "n nodes before the last of n", 500,
     [](int size) {
       Document document = Wide(size);
       IXMLDOMNode* const last = LastChild(Root(document));
       const Counted counted;
       for (int i = 0; i < size; ++i) {
         Node node(NewNode());
         Root(document)->insertBefore(node, last, nullptr);
         node.Detach();
       }
     },
     kLookups},
    {"replaceChild", "each of n", 500,
     [](int size) {
       Document document = Wide(size);
       IXMLDOMNode* const root = Root(document);
       IXMLDOMNode* present = root->m_pFirstChild;
       const Counted counted;
       while (present != nullptr) {
         IXMLDOMNode* const next = present->m_pNextSibling;
         Node node(NewNode());
         Node replaced;
         root->replaceChild(node, present, replaced.Out());
         node.Detach();
         present = next;
       }
     },
     kLookups},
    {"removeChild", "n nodes from the first on", 1000,
     [](int size) {
       Document document = Wide(size);
       IXMLDOMNode* const root = Root(document);
       const Counted counted;
       while (root->m_pFirstChild != nullptr) {
         Node removed;
         root->removeChild(root->m_pFirstChild, removed.Out());
       }
     },
     nullptr},
    {"removeChild", "the last of n", 1000,
     [](int size) {
       Document document = Wide(size);
       IXMLDOMNode* const last = LastChild(Root(document));
       const Counted counted;
       Node removed;
       Root(document)->removeChild(last, removed.Out());
     },
     nullptr},
    {"removeChild", "n nodes from the last on", 500,
     [](int size) {
       Document document = Wide(size);
       std::vector<IXMLDOMNode*> nodes;
       for (IXMLDOMNode* node = Root(document)->m_pFirstChild; node != nullptr;
            node = node->m_pNextSibling) {
         nodes.push_back(node);
       }
       const Counted counted;
       for (; !nodes.empty(); nodes.pop_back()) {
         Node removed;
         Root(document)->removeChild(nodes.back(), removed.Out());
       }
     },
     kLookups},
    {"RemoveNodeFromTree", "with n levels below", 1000,
     [](int size) {
       Document document = Deep(size);
       Node root(Root(document));
       const Counted counted;
       root->RemoveNodeFromTree();
     },
     nullptr},
    {"get_previousSibling", "from the last of n", 1000,
     [](int size) {
       Document document = Wide(size);
       IXMLDOMNode* const last = LastChild(Root(document));
       const Counted counted;
       Node previous;
       last->get_previousSibling(previous.Out());
     },
     nullptr},
    {"get_previousSibling", "from the last of n to the first", 500,
     [](int size) {
       Document document = Wide(size);
       Node node(Keep(LastChild(Root(document))));
       const Counted counted;
       while (node != nullptr) node->get_previousSibling(node.Out());
     },
     kLookups},
    {"get_nextSibling", "from the first of n to the last", 1000,
     [](int size) {
       Document document = Wide(size);
       Node node(Keep(Root(document)->m_pFirstChild));
       const Counted counted;
       while (node != nullptr) node->get_nextSibling(node.Out());
     },
     nullptr},
    {"get_lastChild, CountChildNodes, GetChild", "n children", 1000,
     [](int size) {
       Document document = Wide(size);
       const Counted counted;
       LastChild(Root(document));
       Require(Root(document)->CountChildNodes() == size);
       Require(Root(document)->GetChild("none") == nullptr);
     },
     nullptr},
    {"GetAttribute, GetStrAttribute", "n attributes", 1000,
     [](int size) {
       Document document = WithAttributes(size);
       const Counted counted;
       Require(Root(document)->GetAttribute("none") == nullptr);
       Require(Root(document)->GetStrAttribute("none") == nullptr);
     },
     nullptr},
    {"GetNextAttribute", "through n attributes", 1000,
     [](int size) {
       Document document = WithAttributes(size);
       const Counted counted;
       IXMLDOMNode* cursor = nullptr;
       const char* name = nullptr;
       const char* value = nullptr;
       while (Root(document)->GetNextAttribute(cursor, name, value) == 1) {
       }
     },
     nullptr},
    {"ReplaceChildAtXPath", "the last of n, by n bytes", 500,
     [](int size) {
       Document document = Load("<r>" + Times(size, "<a/>") + "<b/></r>");
       const std::string content = "<n>" + Times(size, "<m/>") + "</n>";
       const Counted counted;
       Require(document->ReplaceChildAtXPath("/r/b", content.c_str()) == 1);
     },
     nullptr},
    {"AppendChildAtXPath, InsertBeforeXPath, RemoveChildAtXPath", "the last of n", 500,
     [](int size) {
       Document document = Load("<r>" + Times(size, "<a/>") + "<b/></r>");
       const Counted counted;
       Require(document->AppendChildAtXPath("//b", "<n/>") == 1);
       Require(document->InsertBeforeXPath("//b", "<n/>") == 1);
       Require(document->RemoveChildAtXPath("//b") == 1);
     },
     nullptr},
    {"xmldom::Children", "n children that are removed in the loop", 500,
     [](int size) {
       Document document = Wide(size);
       const Counted counted;
       for (const XMLPtr<IXMLDOMNode>& node : xmldom::Children(Root(document))) {
         Node removed;
         Root(document)->removeChild(node.Get(), removed.Out());
       }
     },
     nullptr},
    {"xmldom::AddElement", "n children of one element", 500,
     [](int size) {
       Document document = Load("<r/>");
       const Counted counted;
       for (int i = 0; i < size; ++i) Require(bool(xmldom::AddElement(Root(document), "n")));
     },
     "AddElement"},
    {"xmldom::SetAttribute", "the last of n", 1000,
     [](int size) {
       Document document = WithAttributes(size);
       const Counted counted;
       Require(bool(xmldom::SetAttribute(Root(document), "new", "value")));
     },
     nullptr},
    {"xmldom::SetText", "n bytes to be escaped", 1000,
     [](int size) {
       Document document = Load("<r><a/></r>");
       const std::string text = Times(size, "<&\t");
       const Counted counted;
       Require(bool(xmldom::SetText(Root(document), text)));
     },
     nullptr},
    {"xmldom::SetText", "n texts that are removed", 300,
     [](int size) {
       Document document = Load("<r/>");
       for (int i = 0; i < size; ++i) {
         Root(document)->AddTextChild("t");
         Node(Root(document)->AddChild("a", nullptr));
       }
       const Counted counted;
       Require(bool(xmldom::SetText(Root(document), "one")));
     },
     "Several texts"},
};

}  // namespace

std::vector<Growing> BuildingRows() {
  std::vector<Growing> rows(std::begin(kBuilding), std::end(kBuilding));
  rows.insert(rows.end(), std::begin(kEditing), std::end(kEditing));
  return rows;
}
