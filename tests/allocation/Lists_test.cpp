// Lists and maps of nodes, and the stack of open elements.

#include <gtest/gtest.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include "allocation/Sweeps.h"
#include "harness/Lists.h"
#include "harness/Trees.h"

namespace {

const FailingCall kLists[] = {
    {"get_childNodes",
     [](IXMLDOMDocument2* document) {
       IXMLDOMNodeList* list = nullptr;
       Root(document)->get_childNodes(&list);
       NoteAndDrop(list);
     }},
    {"get_attributes",
     [](IXMLDOMDocument2* document) {
       IXMLDOMNamedNodeMap* map = nullptr;
       Root(document)->get_attributes(&map);
       NoteAndDrop(map);
     }},
    {"new IXMLDOMNodeList, IXMLDOMNodeList::Add",
     [](IXMLDOMDocument2* document) {
       const List list(new IXMLDOMNodeList);
       for (int i = 0; i < 300; ++i) list->Add(Root(document));
       Note(list->m_nCount);
     }},
    {"IXMLDOMNodeList::GetItem, backwards",
     [](IXMLDOMDocument2* document) {
       const List list(ChildrenOf(Root(document)));
       for (int i = list->m_nCount - 1; i >= 0; --i) Note(TakeName(list->GetItem(i)).c_str());
     }},
    {"IXMLDOMNodeList::NextNode",
     [](IXMLDOMDocument2* document) {
       const List list(ChildrenOf(Root(document)));
       while (IXMLDOMNode* node = list->NextNode()) NoteAndDrop(node);
     }},
    {"IXMLDOMNodeList::ResetCursor",
     [](IXMLDOMDocument2* document) {
       const Ref<RestartedList> list(new RestartedList);
       list->Add(Root(document));
       NoteAndDrop(list->NextNode());
       list->ResetCursor();
       NoteAndDrop(list->NextNode());
     }},
    {"GetNamedItem",
     [](IXMLDOMDocument2* document) {
       const Map map(AttributesOf(Root(document)));
       NoteAndDrop(map->GetNamedItem("w"));
       NoteAndDrop(map->GetNamedItem("none"));
     }},
    {"getNamedItem",
     [](IXMLDOMDocument2* document) {
       const Map map(AttributesOf(Root(document)));
       char name[] = "v";
       IXMLDOMNode* node = nullptr;
       map->getNamedItem(name, &node);
       NoteAndDrop(node);
     }},
    {"new IXMLDOMNodeListElt",
     [](IXMLDOMDocument2* document) { delete new IXMLDOMNodeListElt(Root(document)); }},
    {"new CNodeStackElt",
     [](IXMLDOMDocument2* document) { delete new CNodeStackElt(Root(document), nullptr); }},
    {"CNodeStack, CNodeStack::Push, CNodeStack::Pop",
     [](IXMLDOMDocument2* document) {
       CNodeStack stack;
       for (int i = 0; i < 5; ++i) stack.Push(Root(document));
       stack.Pop();
       Note(stack.m_pTop->m_pNode->m_pszNodeName);
     }},
};

class AllocationLists : public testing::TestWithParam<FailingCall> {};

TEST_P(AllocationLists, That_fail_leave_the_tree_as_it_was_and_nothing_behind) {
  FailEverywhere("lists", GetParam(), FailingCall::KEEPS_TREE);
}

INSTANTIATE_TEST_SUITE_P(All, AllocationLists, testing::ValuesIn(kLists));

}  // namespace
