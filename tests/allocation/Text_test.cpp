// Calls that read texts and values.

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <cstdlib>

#include "allocation/Sweeps.h"
#include "harness/Trees.h"

namespace {

void NoteValue(VARIANT& value) {
  Note(value.vt);
  if (value.vt == VT_BSTR) Note(value.bstrVal);
}

const FailingCall kText[] = {
    {"GetTextAsBSTR", [](IXMLDOMDocument2* document) { NoteAndFree(document->GetTextAsBSTR()); }},
    {"GetTextAsStr",
     [](IXMLDOMDocument2* document) {
       char* const text = document->GetTextAsStr();
       Note(text);
       std::free(text);
     }},
    {"get_text",
     [](IXMLDOMDocument2* document) {
       BSTR text = nullptr;
       document->get_text(&text);
       NoteAndFree(text);
     }},
    {"GetTextHelper",
     [](IXMLDOMDocument2* document) {
       CMemFile out(4);
       Root(document)->GetTextHelper(out);
       Note(out.GetAsStr());
     }},
    {"GetStringValue",
     [](IXMLDOMDocument2* document) {
       char buffer[8192];
       Note(document->GetStringValue(buffer, sizeof buffer));
     }},
    {"GetStringValue, cut off",
     [](IXMLDOMDocument2* document) {
       char buffer[4];
       Note(document->GetStringValue(buffer, sizeof buffer));
     }},
    {"get_nodeValue",
     [](IXMLDOMDocument2* document) {
       _variant_t value("old");
       Root(document)->m_pFirstChild->get_nodeValue(&value);
       NoteValue(value);
     }},
    {"get_nodeTypedValue",
     [](IXMLDOMDocument2* document) {
       _variant_t value("old");
       Root(document)->get_nodeTypedValue(&value);
       NoteValue(value);
     }},
    {"get_nodeTypedValue, of an attribute",
     [](IXMLDOMDocument2* document) {
       _variant_t value;
       Root(document)->m_pFirstAttribute->get_nodeTypedValue(&value);
       NoteValue(value);
     }},
    {"get_nodeName",
     [](IXMLDOMDocument2* document) {
       BSTR name = nullptr;
       Root(document)->get_nodeName(&name);
       NoteAndFree(name);
     }},
    {"GetNodeTypeString",
     [](IXMLDOMDocument2* document) { NoteAndFree(document->GetNodeTypeString()); }},
    {"get_nodeTypeString",
     [](IXMLDOMDocument2* document) {
       BSTR type = nullptr;
       Root(document)->get_nodeTypeString(&type);
       NoteAndFree(type);
     }},
    {"GetNodeTypeString, an exception",
     [](IXMLDOMDocument2*) {
       const Node node(new IXMLDOMNode(nullptr, "n", nullptr, static_cast<tagDOMNodeType>(99)));
       NoteAndFree(node->GetNodeTypeString());
     }},
    {"TranslateEntities",
     [](IXMLDOMDocument2*) {
       CMemFile out(1);
       Note(TranslateEntities("a &lt; b &#233; &amp;&amp; c", out));
       Note(out.GetAsStr());
     }},
    {"TranslateEntities, unknown ones",
     [](IXMLDOMDocument2*) {
       CMemFile out(1);
       Note(TranslateEntities("1 &one; 2 &two; 3", out));
       Note(out.GetAsStr());
     }},
};

class AllocationText : public testing::TestWithParam<FailingCall> {};

TEST_P(AllocationText, That_fails_leaves_the_tree_as_it_was_and_nothing_behind) {
  FailEverywhere("text", GetParam(), FailingCall::KEEPS_TREE);
}

INSTANTIATE_TEST_SUITE_P(All, AllocationText, testing::ValuesIn(kText));

}  // namespace
