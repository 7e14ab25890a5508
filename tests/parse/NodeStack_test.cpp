#include <gtest/gtest.h>
#include <xmldom/parse/NodeStack.h>
#include <xmldom/xmldom.h>

#include "harness/SmallStack.h"
#include "harness/Trees.h"

TEST(NodeStack, Is_born_empty_and_counted) {
  const CNodeStack stack;
  EXPECT_EQ(nullptr, stack.m_pTop);
  EXPECT_EQ(1, CNodeStack::m_iObjCount);
  EXPECT_EQ(0, CNodeStackElt::m_iObjCount);
}

TEST(NodeStack, Has_the_latest_node_on_top) {
  const Document document = Load("<a><b/></a>");
  CNodeStack stack;
  stack.Push(Root(document));
  stack.Push(At(document, {0, 0}));
  EXPECT_EQ(At(document, {0, 0}), stack.m_pTop->m_pNode);
  EXPECT_EQ(Root(document), stack.m_pTop->m_pNext->m_pNode);
  EXPECT_EQ(nullptr, stack.m_pTop->m_pNext->m_pNext);
  EXPECT_EQ(2, CNodeStackElt::m_iObjCount);
}

TEST(NodeStack, Takes_no_reference_on_its_nodes) {
  const Document document = Load("<a/>");
  CNodeStack stack;
  stack.Push(Root(document));
  EXPECT_EQ(1, Root(document)->GetRefCount());
}

TEST(NodeStack, Pops_the_top_and_keeps_what_lies_below) {
  const Document document = Load("<a><b/></a>");
  CNodeStack stack;
  stack.Push(Root(document));
  CNodeStackElt* below = stack.m_pTop;
  stack.Push(At(document, {0, 0}));
  stack.Pop();
  EXPECT_EQ(below, stack.m_pTop);
  EXPECT_EQ(Root(document), stack.m_pTop->m_pNode);
  EXPECT_EQ(1, CNodeStackElt::m_iObjCount);
}

TEST(NodeStack, Is_empty_after_its_last_pop) {
  CNodeStack stack;
  stack.Push(nullptr);
  stack.Pop();
  EXPECT_EQ(nullptr, stack.m_pTop);
  EXPECT_EQ(0, CNodeStackElt::m_iObjCount);
}

TEST(NodeStack, Stays_as_it_is_when_popped_empty) {
  CNodeStack stack;
  stack.Pop();
  EXPECT_EQ(nullptr, stack.m_pTop);
}

TEST(NodeStack, Takes_its_elements_along) {
  {
    CNodeStack stack;
    for (int count = 0; count < 3; ++count) stack.Push(nullptr);
  }
  EXPECT_EQ(0, CNodeStack::m_iObjCount);
  EXPECT_EQ(0, CNodeStackElt::m_iObjCount);
}

TEST(NodeStack, Of_a_hundred_thousand_elements_goes_on_a_small_stack) {
  OnSmallStack([] {
    CNodeStack stack;
    for (int count = 0; count < 100000; ++count) stack.Push(nullptr);
  });
  EXPECT_EQ(0, CNodeStackElt::m_iObjCount);
}

TEST(NodeStackElt, Takes_the_elements_below_along) {
  CNodeStackElt* bottom = new CNodeStackElt(nullptr, nullptr);
  CNodeStackElt* middle = new CNodeStackElt(nullptr, bottom);
  delete new CNodeStackElt(nullptr, middle);
  EXPECT_EQ(0, CNodeStackElt::m_iObjCount);
}

TEST(NodeStackElt, Spares_the_elements_below_when_it_is_cut_off) {
  CNodeStackElt* bottom = new CNodeStackElt(nullptr, nullptr);
  CNodeStackElt* top = new CNodeStackElt(nullptr, bottom);
  top->m_pNext = nullptr;
  delete top;
  EXPECT_EQ(1, CNodeStackElt::m_iObjCount);
  delete bottom;
}
