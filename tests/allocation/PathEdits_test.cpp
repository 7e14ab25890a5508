// Calls that edit a tree at a path.

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include "allocation/Sweeps.h"
#include "harness/Trees.h"

namespace {

/// Notes that an edit was made, or that it has told that it was not.
void Expect(int result) {
  Note(result);
  if (result == 0) NoteFailure();
}

const FailingCall kPathEdits[] = {
    {"ReplaceChildAtXPath",
     [](IXMLDOMDocument2* document) {
       Expect(document->ReplaceChildAtXPath("/r/a[b='y']", kDeepXml.c_str()));
     }},
    {"ReplaceChildAtXPath, the root",
     [](IXMLDOMDocument2* document) { Expect(document->ReplaceChildAtXPath("/", "<n>t</n>")); }},
    {"AppendChildAtXPath",
     [](IXMLDOMDocument2* document) {
       Expect(document->AppendChildAtXPath("//b", kDeepXml.c_str()));
     }},
    {"InsertBeforeXPath",
     [](IXMLDOMDocument2* document) {
       Expect(document->InsertBeforeXPath("//e", kDeepXml.c_str()));
     }},
    {"RemoveChildAtXPath",
     [](IXMLDOMDocument2* document) { Expect(document->RemoveChildAtXPath("/r/a[b='y']")); }},
    {"RemoveChildAtXPath, up",
     [](IXMLDOMDocument2* document) { Expect(document->RemoveChildAtXPath("//b[.='&lt;']/..")); }},
    {"RemoveChildAtXPath, deep",
     [](IXMLDOMDocument2* document) { Expect(document->RemoveChildAtXPath("/r/d")); }},
    {"ReplaceChildAtXPath, content that does not parse",
     [](IXMLDOMDocument2* document) { Note(document->ReplaceChildAtXPath("/", "<n><m>")); }},
    {"AppendChildAtXPath, content that does not parse",
     [](IXMLDOMDocument2* document) { Note(document->AppendChildAtXPath("/r", "<n>&e;</n>")); }},
    {"InsertBeforeXPath, paths that select nothing",
     [](IXMLDOMDocument2* document) {
       Note(document->InsertBeforeXPath("/x", "<n/>"));
       Note(document->InsertBeforeXPath("/", "<n/>"));
     }},
    {"RemoveChildAtXPath, a path that selects nothing",
     [](IXMLDOMDocument2* document) { Note(document->RemoveChildAtXPath("//part[@number='x']")); }},
    {"AppendChildAtXPath, null",
     [](IXMLDOMDocument2* document) { Note(document->AppendChildAtXPath(nullptr, "<n/>")); }},
    {"ReplaceChildAtXPath, an exception of the edit",
     [](IXMLDOMDocument2* document) {
       Root(document)->m_pFirstAttribute->ReplaceChildAtXPath("/", "<n v='1'/>");
     }},
};

class AllocationPathEdits : public testing::TestWithParam<FailingCall> {};

TEST_P(AllocationPathEdits, That_fail_leave_the_tree_as_it_was_and_nothing_behind) {
  FailEverywhere("edits at paths", GetParam(), FailingCall::KEEPS_TREE);
}

INSTANTIATE_TEST_SUITE_P(All, AllocationPathEdits, testing::ValuesIn(kPathEdits));

}  // namespace
