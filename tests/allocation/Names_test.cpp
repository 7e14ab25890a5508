// The short calls that look at single characters, and at names.

#include <gtest/gtest.h>
#include <xmldom/dom/XmlNames.h>
#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include <string>

#include "allocation/Sweeps.h"
#include "harness/Trees.h"

namespace {

/// A name that only the parser knows to be one.
const char* const kBeyondAscii = "\xc3\xa9t\xc3\xa9-of-a-name-that-is-no-short-string";

const FailingCall kCharacters[] = {
    {"xmldom::VisibleCharacter",
     [](IXMLDOMDocument2*) {
       Note(xmldom::VisibleCharacter("\xc3\xa9").c_str());
       Note(xmldom::VisibleCharacter("\xf3\xa0\x80\x81").c_str());
     }},
    {"xmldom::OneLine, of a text",
     [](IXMLDOMDocument2*) {
       Note(xmldom::OneLine("a text of some length\nwith \xf3\xa0\x80\x81 in it", 30).c_str());
     }},
    {"xmldom::FindForbidden",
     [](IXMLDOMDocument2*) { Note(static_cast<long>(xmldom::FindForbidden("a text\x01"))); }},
    {"xmldom::DecimalReference",
     [](IXMLDOMDocument2*) { Note(xmldom::DecimalReference(0x10FFFF).c_str()); }},
    {"xmldom::IsXmlName, ASCII", [](IXMLDOMDocument2*) { Note(xmldom::IsXmlName("name")); }},
    {"xmldom::IsXmlName, no name",
     [](IXMLDOMDocument2*) { Note(xmldom::IsXmlName("\xc3\x97-is-no-letter")); }},
};

/// A name is not refused because memory is out, which is an exception.
void Expect(bool isTaken) {
  if (!isTaken) NoteFault("taken for no name");
}

const FailingCall kNames[] = {
    {"xmldom::IsXmlName", [](IXMLDOMDocument2*) { Expect(xmldom::IsXmlName(kBeyondAscii)); }},
    {"xmldom::AddElement, a name beyond ASCII",
     [](IXMLDOMDocument2* document) {
       Expect(xmldom::AddElement(Root(document), kBeyondAscii) != nullptr);
     }},
    {"xmldom::SetAttribute, a name beyond ASCII",
     [](IXMLDOMDocument2* document) {
       Expect(bool(xmldom::SetAttribute(Root(document), kBeyondAscii, "value")));
     }},
};

class AllocationNames : public testing::TestWithParam<FailingCall> {};

TEST_P(AllocationNames, That_are_looked_at_leave_the_tree_as_it_was_and_nothing_behind) {
  FailEverywhere("characters and names", GetParam(), FailingCall::KEEPS_TREE, On::TREES,
                 AllocationFailure::EVERYBODY);
}

INSTANTIATE_TEST_SUITE_P(Characters, AllocationNames, testing::ValuesIn(kCharacters));
INSTANTIATE_TEST_SUITE_P(Names, AllocationNames, testing::ValuesIn(kNames));

}  // namespace
