// Calls that make nodes and store values.

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include "allocation/Sweeps.h"
#include "harness/Trees.h"

namespace {

IXMLDOMNode* NewText(IXMLDOMDocument2* owner) {
  return new IXMLDOMNode(owner, "#Text", "a text of its own", NODE_TEXT);
}

const FailingCall kBuilding[] = {
    {"Create",
     [](IXMLDOMDocument2*) {
       IXMLDOMDocument2* document = nullptr;
       Create(&document);
       Drop(document);
     }},
    {"new IXMLDOMDocument2", [](IXMLDOMDocument2*) { Drop(new IXMLDOMDocument2); }},
    {"new IXMLDOMNode", [](IXMLDOMDocument2* document) { Drop(NewText(document)); }},
    {"new IXMLDOMNode, without anything", [](IXMLDOMDocument2*) { Drop(new IXMLDOMNode); }},
    {"Release",
     [](IXMLDOMDocument2* document) {
       IXMLDOMNode* node = NewText(document);
       Release(node);
       Note(node == nullptr);
     }},
    {"AddRef, RealRelease, GetRefCount",
     [](IXMLDOMDocument2* document) {
       Note(Root(document)->AddRef());
       Note(Root(document)->GetRefCount());
       Note(Root(document)->RealRelease());
     }},
    {"createNode",
     [](IXMLDOMDocument2* document) {
       VARIANT type;
       type.vt = VT_I4;
       type.lVal = NODE_TEXT;
       char name[] = "n";
       IXMLDOMNode* node = nullptr;
       Note(document->createNode(type, name, nullptr, &node));
       NoteAndDrop(node);
     }},
    {"createNode, without name",
     [](IXMLDOMDocument2* document) {
       VARIANT type;
       type.vt = VT_I4;
       type.lVal = NODE_COMMENT;
       IXMLDOMNode* node = nullptr;
       document->createNode(type, nullptr, nullptr, &node);
       NoteAndDrop(node);
     }},
    {"AddChild, a node",
     [](IXMLDOMDocument2* document) { Root(document)->AddChild(NewText(document)); }},
    {"AddChild", [](IXMLDOMDocument2* document) { Drop(Root(document)->AddChild("n", "v")); }},
    {"AddChild, many",
     [](IXMLDOMDocument2* document) {
       Ref<IXMLDOMDocument2> other;
       Create(other.Out());
       const Node root(other->AddChild("root", nullptr));
       for (int i = 0; i < 8; ++i) Node(root->AddChild("n", "v"))->AddAttribute("k", "1");
       Note(Root(document)->m_pszNodeName);
     }},
    {"AddSibling",
     [](IXMLDOMDocument2* document) { Drop(Root(document)->m_pFirstChild->AddSibling("n", "v")); }},
    {"AddTextChild", [](IXMLDOMDocument2* document) { Root(document)->AddTextChild("v"); }},
    {"AddTextChild, without text",
     [](IXMLDOMDocument2* document) { Root(document)->AddTextChild(nullptr); }},
    {"AddAttribute", [](IXMLDOMDocument2* document) { Root(document)->AddAttribute("n", "v"); }},
    {"AddAttribute, there",
     [](IXMLDOMDocument2* document) {
       Note(Root(document)->AddAttribute("v", "new"));
       Drop(Root(document)->m_pFirstAttribute);  // each refusal keeps a reference
     }},
    {"SetAttribute, new",
     [](IXMLDOMDocument2* document) { Root(document)->SetAttribute("n", "v"); }},
    {"SetAttribute, there",
     [](IXMLDOMDocument2* document) {
       Root(document)->SetAttribute("v", "new");
       Drop(Root(document)->m_pFirstAttribute);  // each replacement keeps a reference
     }},
    {"AppendValue, new",
     [](IXMLDOMDocument2* document) { Root(document)->AppendValue("more", 4); }},
    {"AppendValue, there",
     [](IXMLDOMDocument2* document) { Root(document)->m_pFirstChild->AppendValue("more", 4); }},
    {"SetValue", [](IXMLDOMDocument2* document) { Root(document)->SetValue("new"); }},
    {"SetValue, not on a leaf", [](IXMLDOMDocument2* document) { document->SetValue("new"); }},
    {"ClearNode",
     [](IXMLDOMDocument2* document) {
       const Node node(Keep(At(document, {0, 1})));
       node->ClearNode(false);
     }},
    {"RecurseSetDocument, RecurseClearDocument",
     [](IXMLDOMDocument2* document) {
       Root(document)->m_pFirstChild->RecurseClearDocument(2);
       Root(document)->m_pFirstChild->RecurseSetDocument(document);
     }},
    {"a document that was loaded, released",
     [](IXMLDOMDocument2*) {
       Document document;
       Create(document.Out());
       if (document->loadXML("<a b='c'>t<d/></a>") != VARIANT_TRUE) NoteFailure();
     }},
};

class AllocationBuilding : public testing::TestWithParam<FailingCall> {};

TEST_P(AllocationBuilding, That_fails_leaves_the_tree_as_it_was_and_nothing_behind) {
  FailEverywhere("building", GetParam(), FailingCall::KEEPS_TREE);
}

INSTANTIATE_TEST_SUITE_P(All, AllocationBuilding, testing::ValuesIn(kBuilding));

}  // namespace
