#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include "harness/FailingCall.h"
#include "harness/Trees.h"

// Memory that is out at any point of a call that changes a tree: what the call was about to change
// is as it was before.

namespace {

void Drop(CRefCountedObject* object) {
  if (object != nullptr) object->RealRelease();
}

const FailingCall kBuilding[] = {
    {"Create",
     [](IXMLDOMDocument2*) {
       IXMLDOMDocument2* document = nullptr;
       Create(&document);
       Drop(document);
     }},
    {"createNode",
     [](IXMLDOMDocument2* document) {
       VARIANT type;
       type.vt = VT_I4;
       type.lVal = NODE_TEXT;
       char name[] = "n";
       IXMLDOMNode* node = nullptr;
       document->createNode(type, name, nullptr, &node);
       Drop(node);
     }},
    {"AddChild", [](IXMLDOMDocument2* document) { Drop(Root(document)->AddChild("n", "v")); }},
    {"AddSibling",
     [](IXMLDOMDocument2* document) { Drop(Root(document)->m_pFirstChild->AddSibling("n", "v")); }},
    {"AddTextChild", [](IXMLDOMDocument2* document) { Root(document)->AddTextChild("v"); }},
    {"AddAttribute", [](IXMLDOMDocument2* document) { Root(document)->AddAttribute("n", "v"); }},
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
    {"xmldom::SetText, there",
     [](IXMLDOMDocument2* document) {
       EXPECT_TRUE(xmldom::SetText(Root(document), "a text longer than a short string"));
     }},
    {"xmldom::SetText, new",
     [](IXMLDOMDocument2* document) {
       EXPECT_TRUE(xmldom::SetText(At(document, {0, 4}), "a text longer than a short string"));
     }},
    {"xmldom::SetAttribute, new",
     [](IXMLDOMDocument2* document) {
       EXPECT_TRUE(xmldom::SetAttribute(Root(document), "n", "v"));
     }},
    {"xmldom::SetAttribute, there",
     [](IXMLDOMDocument2* document) {
       EXPECT_TRUE(xmldom::SetAttribute(Root(document), "v", "new"));
     }},
};

const FailingCall kEditing[] = {
    {"appendChild",
     [](IXMLDOMDocument2* document) {
       Root(document)->appendChild(At(document, {0, 1}), nullptr);
     }},
    {"appendChild, deep",
     [](IXMLDOMDocument2* document) {
       At(document, {0, 3})->appendChild(At(document, {0, 4}), nullptr);
     }},
    {"insertBefore, deep",
     [](IXMLDOMDocument2* document) {
       Root(document)->insertBefore(At(document, {0, 4}), At(document, {0, 1}), nullptr);
     }},
    {"replaceChild, deep",
     [](IXMLDOMDocument2* document) {
       IXMLDOMNode* replaced = nullptr;
       Root(document)->replaceChild(At(document, {0, 4}), At(document, {0, 1}), &replaced);
       Drop(replaced);
     }},
    {"removeChild",
     [](IXMLDOMDocument2* document) {
       IXMLDOMNode* removed = nullptr;
       Root(document)->removeChild(At(document, {0, 4}), &removed);
       Drop(removed);
     }},
    {"a cycle that is refused",
     [](IXMLDOMDocument2* document) {
       At(document, {0, 4})->appendChild(Root(document), nullptr);
     }},
    {"an exception of their own",
     [](IXMLDOMDocument2* document) { Root(document)->m_pFirstAttribute->RemoveNodeFromTree(); }},
};

const FailingCall kEditingAtPaths[] = {
    {"ReplaceChildAtXPath",
     [](IXMLDOMDocument2* document) {
       document->ReplaceChildAtXPath("/r/a[b='y']", kDeepXml.c_str());
     }},
    {"AppendChildAtXPath",
     [](IXMLDOMDocument2* document) { document->AppendChildAtXPath("//b", kDeepXml.c_str()); }},
    {"InsertBeforeXPath",
     [](IXMLDOMDocument2* document) { document->InsertBeforeXPath("//e", kDeepXml.c_str()); }},
    {"RemoveChildAtXPath",
     [](IXMLDOMDocument2* document) {
       document->RemoveChildAtXPath("//b[.='&lt;']/..");
       document->RemoveChildAtXPath("/r/a");
     }},
    {"content that does not parse",
     [](IXMLDOMDocument2* document) { document->ReplaceChildAtXPath("/", "<n><m>"); }},
    {"paths that select nothing",
     [](IXMLDOMDocument2* document) {
       document->InsertBeforeXPath("/x", "<n/>");
       document->InsertBeforeXPath("/", "<n/>");
     }},
    {"an exception of the edit",
     [](IXMLDOMDocument2* document) {
       Root(document)->m_pFirstAttribute->ReplaceChildAtXPath("/", "<n v='1'/>");
     }},
};

class FailureBuilding : public testing::TestWithParam<FailingCall> {};

TEST_P(FailureBuilding, Of_each_allocation_leaves_the_tree_as_it_was_and_nothing_behind) {
  ExpectWholeTreeAfterEachFailure(GetParam(), FailingCall::KEEPS_TREE);
}

INSTANTIATE_TEST_SUITE_P(Building, FailureBuilding, testing::ValuesIn(kBuilding));
INSTANTIATE_TEST_SUITE_P(Editing, FailureBuilding, testing::ValuesIn(kEditing));
INSTANTIATE_TEST_SUITE_P(EditingAtPaths, FailureBuilding, testing::ValuesIn(kEditingAtPaths));

}  // namespace
