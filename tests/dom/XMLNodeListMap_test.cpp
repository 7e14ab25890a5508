#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <string>

#include "harness/Lists.h"
#include "harness/Trees.h"

namespace {

TEST(XMLNodeListMap, GetNamedItem_finds_exactly_that_name) {
  Document document = Load("<a x='1' xy='2' X='3'/>");
  Map map = AttributesOf(Root(document));
  const struct {
    const char* name;
    const char* found;
  } rows[] = {{"x", "x"},      {"X", "X"},         {"xy", "xy"}, {"y", "(null)"},
              {"", "(null)"},  {"xyz", "(null)"},  {"x", "x"},   {"XY", "(null)"},
              {"1", "(null)"}, {nullptr, "(null)"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(Text(row.name));
    EXPECT_EQ(row.found, TakeName(map->GetNamedItem(row.name)));
  }
}

TEST(XMLNodeListMap, GetNamedItem_finds_the_first_of_several) {
  Node first = NewElement(nullptr, "x");
  Node second = NewElement(nullptr, "x");
  Map map(new IXMLDOMNamedNodeMap);
  map->Add(first);
  map->Add(second);
  Node found(map->GetNamedItem("x"));
  EXPECT_EQ(first.Get(), found.Get());
}

TEST(XMLNodeListMap, GetNamedItem_passes_over_nodes_without_name) {
  Node nameless(new IXMLDOMNode);
  Node named = NewElement(nullptr, "x");
  Map map(new IXMLDOMNamedNodeMap);
  map->Add(nameless);
  map->Add(named);
  EXPECT_EQ("x", TakeName(map->GetNamedItem("x")));
}

TEST(XMLNodeListMap, GetNamedItem_finds_no_node_without_name_for_a_null_name) {
  Node nameless(new IXMLDOMNode);
  Map map(new IXMLDOMNamedNodeMap);
  map->Add(nameless);
  EXPECT_EQ(nullptr, map->GetNamedItem(nullptr));
  EXPECT_EQ(2, nameless->GetRefCount());
}

TEST(XMLNodeListMap, GetNamedItem_adds_a_reference_to_that_node_alone) {
  Document document = Load("<a x='1' y='2'/>");
  Map map = AttributesOf(Root(document));
  Node found(map->GetNamedItem("y"));
  EXPECT_EQ(3, found->GetRefCount());
  EXPECT_EQ(2, Root(document)->m_pFirstAttribute->GetRefCount());
}

TEST(XMLNodeListMap, GetNamedItem_restarts_and_moves_the_iteration) {
  Document document = Load("<a x='1' y='2' z='3'/>");
  Map map = AttributesOf(Root(document));
  TakeName(map->GetItem(2));
  EXPECT_EQ("x", TakeName(map->GetNamedItem("x")));
  EXPECT_EQ(0, map->m_nCursorIndex);
  EXPECT_EQ("y", TakeName(map->NextNode()));
}

TEST(XMLNodeListMap, GetNamedItem_that_misses_ends_the_iteration) {
  Document document = Load("<a x='1' y='2'/>");
  Map map = AttributesOf(Root(document));
  EXPECT_EQ(nullptr, map->GetNamedItem("z"));
  EXPECT_EQ(-2, map->m_nCursorIndex);
  EXPECT_EQ(nullptr, map->NextNode());
  EXPECT_EQ(2, Root(document)->m_pFirstAttribute->GetRefCount());
}

TEST(XMLNodeListMap, getNamedItem_reports_hit_and_miss) {
  Document document = Load("<a x='1'/>");
  Map map = AttributesOf(Root(document));
  char name[] = "x";
  Node found;
  EXPECT_EQ(S_OK, map->getNamedItem(name, found.Out()));
  EXPECT_EQ(Root(document)->m_pFirstAttribute, found.Get());
  EXPECT_EQ(3, found->GetRefCount());
  char other[] = "y";
  IXMLDOMNode* none = found;
  EXPECT_EQ(S_FALSE, map->getNamedItem(other, &none));
  EXPECT_EQ(nullptr, none);
}

TEST(XMLNodeListMap, getNamedItem_refuses_a_null_out_pointer) {
  Document document = Load("<a x='1' y='2'/>");
  Map map = AttributesOf(Root(document));
  TakeName(map->GetItem(1));
  char name[] = "x";
  EXPECT_EQ(E_ARGUMENT, map->getNamedItem(name, nullptr));
  EXPECT_EQ(1, map->m_nCursorIndex);
}

}  // namespace
