#include <xmldom/query/Selecting.h>

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <string>

#include "harness/Trees.h"

namespace {

using xmldom::Select;
using xmldom::SelectOne;

std::string Names(const XMLNodes& nodes) {
  std::string names;
  for (XMLPtr<IXMLDOMNode> node : nodes) names += std::string(node->m_pszNodeName) + " ";
  return names;
}

TEST(Selecting, SelectOne_owns_the_node_that_it_finds) {
  Document document = Load("<a><b/></a>");
  {
    const XMLPtr<IXMLDOMNode> node = SelectOne(document, "/a/b");
    ASSERT_TRUE(node);
    EXPECT_STREQ("b", node->m_pszNodeName);
    EXPECT_EQ(2, node->GetRefCount());
  }
  EXPECT_EQ(1, At(document, {0, 0})->GetRefCount());
}

TEST(Selecting, A_result_that_is_not_kept_is_released) {
  Document document = Load("<a><b/><b/></a>");
  EXPECT_STREQ("b", SelectOne(document, "//b")->m_pszNodeName);
  EXPECT_EQ(2, Select(document, "//b").Count());
  static_cast<void>(SelectOne(document, "//b"));
  EXPECT_EQ(1, At(document, {0, 0})->GetRefCount());
}

TEST(Selecting, SelectOne_is_empty_when_nothing_is_selected) {
  Document document = Load("<a><b/></a>");
  EXPECT_FALSE(SelectOne(document, "/a/c"));
  EXPECT_FALSE(SelectOne(NoNode(), "//b"));
  EXPECT_FALSE(SelectOne(XMLPtr<IXMLDOMDocument2>(), "//b"));
  EXPECT_FALSE(SelectOne(NewElement(nullptr, "x").Get(), "/x"));
}

TEST(Selecting, An_empty_path_selects_the_node_itself) {
  Document document = Load("<a/>");
  EXPECT_EQ(Root(document), SelectOne(Root(document), "").Get());
  EXPECT_EQ(Root(document), SelectOne(Root(document), nullptr).Get());
  EXPECT_EQ("a ", Names(Select(Root(document), "")));
}

TEST(Selecting, Select_is_a_range_over_all_nodes) {
  Document document = Load("<a><b/><c/><b/></a>");
  EXPECT_EQ("b b ", Names(Select(document, "//b")));
  EXPECT_EQ("b b ", Names(Select(xmldom::Share(Root(document)), "b")));
  EXPECT_EQ("", Names(Select(document, "//d")));
  EXPECT_EQ("", Names(Select(nullptr, "//b")));
}

TEST(Selecting, The_tree_may_change_while_the_loop_runs) {
  Document document = Load("<a><b/><b/><b/></a>");
  for (XMLPtr<IXMLDOMNode> node : Select(document, "//b")) {
    XMLPtr<IXMLDOMNode> removed;
    Root(document)->removeChild(node.Get(), removed.Out());
  }
  EXPECT_EQ("<a/>\n", XmlOf(document));
}

}  // namespace
