// Calls that move, replace and remove nodes, and look at their neighbours.

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include "allocation/Sweeps.h"
#include "harness/Trees.h"

namespace {

/// A document that stands for its root element, which a call moves. Attributes would keep their
/// owner.
const char* const kOther = "<n>t<m/></n>";

const FailingCall kEditing[] = {
    {"appendChild",
     [](IXMLDOMDocument2* document) {
       Root(document)->appendChild(At(document, {0, 1}), nullptr);
     }},
    {"appendChild, deep",
     [](IXMLDOMDocument2* document) {
       At(document, {0, 3})->appendChild(At(document, {0, 4}), nullptr);
     }},
    {"appendChild, a new node",
     [](IXMLDOMDocument2* document) {
       Node node(new IXMLDOMNode(nullptr, "n", nullptr, NODE_ELEMENT));
       node->AddTextChild("t");
       if (Root(document)->appendChild(node, nullptr) == S_OK) node.Detach();
     }},
    {"insertBefore",
     [](IXMLDOMDocument2* document) {
       Root(document)->insertBefore(At(document, {0, 3}), At(document, {0, 1}), nullptr);
     }},
    {"insertBefore, deep",
     [](IXMLDOMDocument2* document) {
       Root(document)->insertBefore(At(document, {0, 4}), At(document, {0, 1}), nullptr);
     }},
    {"insertBefore, another parent",
     [](IXMLDOMDocument2* document) {
       Note(Root(document)->insertBefore(At(document, {0, 4}), At(document, {0, 2, 0}), nullptr));
     }},
    {"insertBefore, a node with followers",
     [](IXMLDOMDocument2* document) {
       Node node(new IXMLDOMNode(document, "n", nullptr, NODE_ELEMENT));
       Drop(node->AddSibling("m", nullptr));
       Root(document)->insertBefore(node, At(document, {0, 1}), nullptr);
       node.Detach();
     }},
    {"replaceChild",
     [](IXMLDOMDocument2* document) {
       IXMLDOMNode* replaced = nullptr;
       Root(document)->replaceChild(At(document, {0, 3}), At(document, {0, 1}), &replaced);
       NoteAndDrop(replaced);
     }},
    {"replaceChild, deep",
     [](IXMLDOMDocument2* document) {
       IXMLDOMNode* replaced = nullptr;
       Root(document)->replaceChild(At(document, {0, 4}), At(document, {0, 1}), &replaced);
       Drop(replaced);
     }},
    {"replaceChild, by itself",
     [](IXMLDOMDocument2* document) {
       IXMLDOMNode* replaced = nullptr;
       IXMLDOMNode* const same = At(document, {0, 1});
       Note(Root(document)->replaceChild(same, same, &replaced));
     }},
    {"removeChild",
     [](IXMLDOMDocument2* document) {
       IXMLDOMNode* removed = nullptr;
       Root(document)->removeChild(At(document, {0, 4}), &removed);
       Drop(removed);
     }},
    {"removeChild, another parent",
     [](IXMLDOMDocument2* document) {
       Note(Root(document)->removeChild(At(document, {0, 2, 0}), nullptr));
     }},
    {"RemoveNodeFromTree",
     [](IXMLDOMDocument2* document) {
       IXMLDOMNode* const node = At(document, {0, 2});
       node->RemoveNodeFromTree();
       Drop(node);
     }},
    {"a cycle that is refused",
     [](IXMLDOMDocument2* document) {
       Note(At(document, {0, 4})->appendChild(Root(document), nullptr));
     }},
    {"RemoveNodeFromTree, an exception",
     [](IXMLDOMDocument2* document) { Root(document)->m_pFirstAttribute->RemoveNodeFromTree(); }},
    {"get_previousSibling, an exception",
     [](IXMLDOMDocument2* document) {
       IXMLDOMNode* node = nullptr;
       Root(document)->m_pFirstAttribute->get_previousSibling(&node);
     }},
    {"get_parentNode, get_nextSibling, get_previousSibling",
     [](IXMLDOMDocument2* document) {
       IXMLDOMNode* const node = At(document, {0, 2});
       Node found;
       node->get_parentNode(found.Out());
       Note(found->m_pszNodeName);
       node->get_nextSibling(found.Out());
       Note(found->m_pszNodeName);
       node->get_previousSibling(found.Out());
       Note(found->m_pszNodeName);
     }},
    {"get_firstChild, get_lastChild, hasChildNodes",
     [](IXMLDOMDocument2* document) {
       IXMLDOMNode* const node = At(document, {0, 2});
       Node found;
       node->get_firstChild(found.Out());
       Note(found->m_pszNodeName);
       node->get_lastChild(found.Out());
       Note(found->m_pszNodeName);
       VARIANT_BOOL has = VARIANT_FALSE;
       node->hasChildNodes(&has);
       Note(has);
     }},
    {"get_ownerDocument",
     [](IXMLDOMDocument2* document) {
       Document owner;
       Note(Root(document)->get_ownerDocument(owner.Out()));
     }},
    {"get_documentElement",
     [](IXMLDOMDocument2* document) {
       IXMLDOMNode* root = nullptr;
       document->get_documentElement(&root);
       NoteAndDrop(root);
     }},
    {"GetAttribute, GetChild, GetfirstChild, CountChildNodes",
     [](IXMLDOMDocument2* document) {
       IXMLDOMNode* const root = Root(document);
       NoteAndDrop(root->GetAttribute("w"));
       NoteAndDrop(root->GetChild("c"));
       NoteAndDrop(root->GetChild("none"));
       NoteAndDrop(root->GetfirstChild());
       Note(root->CountChildNodes());
     }},
    {"get_nodeType, IsPageAttribute, StringMatchesSubString",
     [](IXMLDOMDocument2* document) {
       DOMNodeType type = NODE_INVALID;
       Root(document)->get_nodeType(&type);
       Note(type);
       Note(Root(document)->IsPageAttribute("curPage"));
       Note(StringMatchesSubString("name", "names", 4));
     }},
    {"GetStrAttribute, GetStrValue, GetNextAttribute",
     [](IXMLDOMDocument2* document) {
       IXMLDOMNode* const root = Root(document);
       Note(root->GetStrAttribute("v"));
       Note(root->GetStrValue());
       IXMLDOMNode* cursor = nullptr;
       const char* name = nullptr;
       const char* value = nullptr;
       while (root->GetNextAttribute(cursor, name, value) == 1) Note(value);
     }},
};

class AllocationEditing : public testing::TestWithParam<FailingCall> {};

TEST_P(AllocationEditing, That_fails_leaves_the_tree_as_it_was_and_nothing_behind) {
  FailEverywhere("editing", GetParam(), FailingCall::KEEPS_TREE);
}

INSTANTIATE_TEST_SUITE_P(All, AllocationEditing, testing::ValuesIn(kEditing));

// A document as new child: its root element keeps a reference, which is dropped here.
TEST(AllocationEditing, Of_a_document_as_new_child_leaves_both_trees_as_they_were) {
  const FailingCall call = {"appendChild, a document", [](IXMLDOMDocument2* document) {
                              Document other;
                              Create(other.Out());
                              if (other->loadXML(kOther) != VARIANT_TRUE) return NoteFailure();
                              IXMLDOMNode* const root = Root(other);
                              Root(document)->appendChild(other, nullptr);
                              Drop(root);
                            }};
  FailEverywhere("editing", call, FailingCall::KEEPS_TREE);
}

}  // namespace
