// Calls that take a path, or a part of one.

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <cstdlib>
#include <memory>

#include "allocation/Sweeps.h"
#include "harness/Trees.h"

namespace {

struct Free {
  void operator()(char* text) const { std::free(text); }
};

const FailingCall kSelecting[] = {
    {"SelectNodes",
     [](IXMLDOMDocument2* document) { NoteAndDrop(document->SelectNodes("/r/a[@k='1']")); }},
    {"SelectNodes, everywhere",
     [](IXMLDOMDocument2* document) { NoteAndDrop(document->SelectNodes("//d/*")); }},
    {"SelectNodes, by text",
     [](IXMLDOMDocument2* document) { NoteAndDrop(document->SelectNodes("//*[b='y']")); }},
    {"SelectNodes, of a wrapped path",
     [](IXMLDOMDocument2* document) { NoteAndDrop(document->SelectNodes(_bstr_t("//b"))); }},
    {"SelectNodes, malformed",
     [](IXMLDOMDocument2* document) { NoteAndDrop(document->SelectNodes("//a[@k='1")); }},
    {"selectNodes2",
     [](IXMLDOMDocument2* document) {
       char path[] = "//b";
       IXMLDOMNodeList* list = nullptr;
       document->selectNodes2(path, &list);
       NoteAndDrop(list);
     }},
    {"SelectSingleNode",
     [](IXMLDOMDocument2* document) { NoteAndDrop(document->SelectSingleNode("//e[@f='3']")); }},
    {"SelectSingleNode, of a wrapped path",
     [](IXMLDOMDocument2* document) { NoteAndDrop(document->SelectSingleNode(_bstr_t("/r/c"))); }},
    {"SelectSingleNode, more steps and segments than have room without the heap",
     [](IXMLDOMDocument2* document) {
       NoteAndDrop(document->SelectSingleNode("/r/././././d/e[@f='3'][../a/b/c/d/e='1']"));
     }},
    {"SelectSingleNode, up and down",
     [](IXMLDOMDocument2* document) { NoteAndDrop(document->SelectSingleNode("//b/../../c")); }},
    {"SelectSingleNode, nothing",
     [](IXMLDOMDocument2* document) {
       NoteAndDrop(document->SelectSingleNode("//d/x[b='&amp;']"));
     }},
    {"SelectSingleNode, by text, everywhere",
     [](IXMLDOMDocument2* document) {
       NoteAndDrop(document->SelectSingleNode("//*[d='none']/d[e='z']"));
     }},
    {"SelectSingleNode, malformed",
     [](IXMLDOMDocument2* document) { NoteAndDrop(document->SelectSingleNode("//a[@k='1")); }},
    {"selectSingleNode2",
     [](IXMLDOMDocument2* document) {
       IXMLDOMNode* node = nullptr;
       document->selectSingleNode2("/r/a/b", &node);
       NoteAndDrop(node);
     }},
    {"SelectNodesHelper",
     [](IXMLDOMDocument2* document) {
       CXPathList steps;
       steps.ParsePath("r/a/b");
       const Ref<IXMLDOMNodeList> list(new IXMLDOMNodeList);
       document->SelectNodesHelper(document, steps, list, 0);
       Note(list->m_nCount);
     }},
    {"SelectNodesTraverse",
     [](IXMLDOMDocument2* document) {
       CXPathList steps;
       steps.ParsePath("d/d");
       const Ref<IXMLDOMNodeList> list(new IXMLDOMNodeList);
       document->SelectNodesTraverse(document, steps, list);
       Note(list->m_nCount);
     }},
    {"SelectSingleNodeHelper",
     [](IXMLDOMDocument2* document) {
       CXPathList steps;
       steps.ParsePath("d/../d/e");
       NoteAndDrop(document->SelectSingleNodeHelper(Root(document), steps, -1));
     }},
    {"MatchQuery",
     [](IXMLDOMDocument2* document) { Note(Root(document)->MatchQuery("r[@v='1'][a='x']")); }},
    {"MatchQuery, more segments than have room without the heap",
     [](IXMLDOMDocument2* document) { Note(Root(document)->MatchQuery("r[a/b/c/d/e/f='1']")); }},
    {"MatchQuery, malformed",
     [](IXMLDOMDocument2* document) { Note(Root(document)->MatchQuery("r[@v='1']x")); }},
    {"MatchesSubquery",
     [](IXMLDOMDocument2* document) { Note(Root(document)->MatchesSubquery("a/b='y'")); }},
    {"MatchesSubquery, more segments than have room without the heap",
     [](IXMLDOMDocument2* document) { Note(Root(document)->MatchesSubquery("r/a/b/c/d/e='1'")); }},
    {"MatchSubqueryHelper",
     [](IXMLDOMDocument2* document) {
       Note(document->MatchSubqueryHelper(At(document, {0, 2, 1}), "b='<'"));
     }},
    {"ParseXPathQuery",
     [](IXMLDOMDocument2* document) {
       char* name = nullptr;
       char* predicates = nullptr;
       Note(document->ParseXPathQuery("name[@k='1']", &name, &predicates));
       const std::unique_ptr<char, Free> ownedName(name);
       const std::unique_ptr<char, Free> ownedPredicates(predicates);
       Note(name);
       Note(predicates);
     }},
    {"ParseXPathSubquery",
     [](IXMLDOMDocument2* document) {
       bool hasPath = false;
       bool isQuoted = false;
       char* element = nullptr;
       char* attribute = nullptr;
       char* value = nullptr;
       Note(document->ParseXPathSubquery("a/b/@c='1'", &hasPath, &element, &attribute, &value,
                                         &isQuoted));
       const std::unique_ptr<char, Free> ownedElement(element);
       const std::unique_ptr<char, Free> ownedAttribute(attribute);
       const std::unique_ptr<char, Free> ownedValue(value);
       Note(element);
       Note(attribute);
       Note(value);
     }},
    {"CXPathList, CXPathList::ParsePath",
     [](IXMLDOMDocument2*) {
       CXPathList list;
       list.ParsePath("//first[a='/']/second//third");
       list.ParsePath("fourth");
       Note(list.m_nCount);
       Note(list.m_pszPrefix);
     }},
    {"CXPathList::ParsePath, of a wrapped path",
     [](IXMLDOMDocument2*) {
       CXPathList list;
       list.ParsePath(_bstr_t("/a/b"));
       Note(list.m_nCount);
     }},
    {"CXPathList::CreateIndex",
     [](IXMLDOMDocument2*) {
       CXPathList list;
       list.ParsePath("a/b/c");
       list.m_nCount = 5;
       list.CreateIndex();
       Note(list.m_ppIndex[2]);
     }},
    {"new CStrListElt", [](IXMLDOMDocument2*) { delete new CStrListElt("step", 4); }},
};

class AllocationSelection : public testing::TestWithParam<FailingCall> {};

TEST_P(AllocationSelection, That_fails_leaves_the_tree_as_it_was_and_nothing_behind) {
  FailEverywhere("selection", GetParam(), FailingCall::KEEPS_TREE);
}

INSTANTIATE_TEST_SUITE_P(All, AllocationSelection, testing::ValuesIn(kSelecting));

}  // namespace
