// Operations that change trees, and look at the neighbours of a node.

#include <xmldom/xmldom_ptr.h>

#include "growth/instructions/Shapes.h"

namespace {

const Growing kEditing[] = {
    {"appendChild", "n nodes from one parent to another", 1000,
     [](int size) {
       Document document = Load("<r><a>" + Times(size, "<b/>") + "</a><a/></r>");
       IXMLDOMNode* const from = At(document, {0, 0});
       IXMLDOMNode* const to = At(document, {0, 1});
       const Counted counted;
       while (from->m_pFirstChild != nullptr) {
         Require(to->appendChild(from->m_pFirstChild, nullptr) == S_OK);
       }
     },
     nullptr},
    {"appendChild", "a tree of n levels, back and forth", 1000,
     [](int size) {
       Document document = Load("<r><b/><c>" + Levels(size) + "</c></r>");
       const Counted counted;
       IXMLDOMNode* const to = At(document, {0, 0});
       IXMLDOMNode* const tree = At(document, {0, 1});
       for (int i = 0; i < 8; ++i) {
         Require((i % 2 == 0 ? to : Root(document))->appendChild(tree, nullptr) == S_OK);
       }
     },
     nullptr},
    {"insertBefore", "n nodes before the first", 500,
     [](int size) {
       Document document = Load("<r><a/></r>");
       const Counted counted;
       for (int i = 0; i < size; ++i) {
         Node node(NewNode());
         Require(Root(document)->insertBefore(node, Root(document)->m_pFirstChild, nullptr) ==
                 S_OK);
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
       Require(Root(document)->insertBefore(node, last, nullptr) == S_OK);
       node.Detach();
     },
     nullptr},
    {"replaceChild", "each of n", 500,
     [](int size) {
       Document document = Wide(size);
       ReplaceEach(Root(document));
     },
     nullptr},
    {"removeChild", "n nodes from the first on", 1000,
     [](int size) {
       Document document = Wide(size);
       IXMLDOMNode* const root = Root(document);
       const Counted counted;
       while (root->m_pFirstChild != nullptr) {
         Node removed;
         Require(root->removeChild(root->m_pFirstChild, removed.Out()) == S_OK);
       }
     },
     nullptr},
    {"removeChild", "the last of n", 1000,
     [](int size) {
       Document document = Wide(size);
       IXMLDOMNode* const last = LastChild(Root(document));
       const Counted counted;
       Node removed;
       Require(Root(document)->removeChild(last, removed.Out()) == S_OK);
     },
     nullptr},
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
    {"GetAttribute", "n that are not among n", 300,
     [](int size) {
       Document document = Load("<r/>");
       for (int i = 0; i < size; ++i) Root(document)->AddAttribute(NameOf(i).c_str(), "v");
       const Counted counted;
       for (int i = 0; i < size; ++i) {
         Require(Root(document)->GetAttribute(NameOf(size + i).c_str()) == nullptr);
       }
     },
     kLookups},
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
         Require(Root(document)->removeChild(node.Get(), removed.Out()) == S_OK);
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
    {"xmldom::SetAttribute", "a new one behind n", 1000,
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
       Document document = WithTextsBetweenElements(size);
       const Counted counted;
       Require(bool(xmldom::SetText(Root(document), "one")));
     },
     nullptr},
};

}  // namespace

std::vector<Growing> EditingRows() {
  return std::vector<Growing>(std::begin(kEditing), std::end(kEditing));
}
