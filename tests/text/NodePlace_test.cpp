#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <string>

#include "harness/LinearTime.h"
#include "harness/NodeFacts.h"
#include "harness/SmallStack.h"
#include "harness/Trees.h"

namespace {

/// What GetPathToNode leaves in a buffer that held `before`.
std::string PathTo(IXMLDOMNode* node, const std::string& before = "") {
  CMemFile out(16);
  out.Write(before.data(), static_cast<unsigned int>(before.size()));
  node->GetPathToNode(out);
  return std::string(out.GetAsStr(), out.m_uLength);
}

TEST(NodePlace, Names_the_elements_from_the_top_down) {
  Document document = Load("<config><network v='1'><port>80</port><port/></network></config>");
  IXMLDOMNode* network = At(document, {0, 0});
  const struct {
    const char* what;
    IXMLDOMNode* node;
    const char* path;
  } rows[] = {
      {"the document", document, ""},
      {"the root", Root(document), "/config"},
      {"an element", network, "/config/network"},
      {"a first child", At(network, {0}), "/config/network/port"},
      {"another of the same name", At(network, {1}), "/config/network/port"},
      {"a text", At(network, {0, 0}), "/config/network/port"},
      {"an attribute", network->m_pFirstAttribute, "/config/network"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    EXPECT_EQ(row.path, PathTo(row.node));
  }
  EXPECT_EQ("config1[network1(v1)[port1[#Text1] port1]]", References(Root(document)));
}

TEST(NodePlace, Of_a_detached_node_is_its_own_name_if_it_is_an_element) {
  for (int type = NODE_INVALID; type <= NODE_NOTATION + 1; ++type) {
    SCOPED_TRACE(type);
    Node node(new IXMLDOMNode(nullptr, "n", "v", static_cast<DOMNodeType>(type)));
    EXPECT_EQ(type == NODE_ELEMENT ? "/n" : "", PathTo(node));
  }
}

TEST(NodePlace, Leaves_out_what_is_no_element_on_the_way) {
  Node top = NewElement(nullptr, "a");
  IXMLDOMNode* comment = new IXMLDOMNode(nullptr, "c", nullptr, NODE_COMMENT);
  top->AddChild(comment);
  Node below(comment->AddChild("b", nullptr));
  EXPECT_EQ("/a", PathTo(comment));
  EXPECT_EQ("/a/b", PathTo(below));
}

TEST(NodePlace, Starts_at_a_removed_node) {
  Document document = Load("<a><b><c/></b></a>");
  Node removed;
  Root(document)->removeChild(At(document, {0, 0}), removed.Out());
  EXPECT_EQ("/b/c", PathTo(At(removed, {0})));
}

TEST(NodePlace, Holds_names_as_they_stand) {
  for (const char* name : {"", "%s%n", "a/b", "\xff"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(std::string("/") + name, PathTo(NewElement(nullptr, name)));
  }
  const std::string longName(100000, 'n');
  EXPECT_TRUE("/" + longName == PathTo(NewElement(nullptr, longName.c_str())));
}

TEST(NodePlace, Replaces_what_the_buffer_held) {
  EXPECT_EQ("/a", PathTo(NewElement(nullptr, "a"), "something longer"));
  EXPECT_EQ("", PathTo(NewDocument(), "something longer"));
}

TEST(NodePlace, Empties_a_buffer_that_was_read) {
  Node node(new IXMLDOMNode(nullptr, "n", nullptr, NODE_TEXT));
  CMemFile out(16);
  out.Write("0123456789", 10);
  out.m_uPosition = 4;
  node->GetPathToNode(out);
  EXPECT_EQ(0u, out.m_uLength);
  EXPECT_EQ(0u, out.m_uPosition);
}

TEST(NodePlace, The_helper_appends_the_path_of_its_argument) {
  Document document = Load("<a><b/></a>");
  Node other = NewElement(nullptr, "other");
  CMemFile out(16);
  out.Write("at ", 3);
  other->GetPathToNodeHelper(At(document, {0, 0}), out);
  EXPECT_STREQ("at /a/b", out.GetAsStr());
  other->GetPathToNodeHelper(Root(document), out);
  EXPECT_STREQ("at /a/b/a", out.GetAsStr());
}

TEST(NodePlace, Of_a_deep_node_needs_no_stack) {
  ExpectLinearTime(100000, [](int count) {
    Document document = Load(Repeat("<ab>", count) + Repeat("</ab>", count));
    IXMLDOMNode* deepest = document;
    while (deepest->m_pFirstChild != nullptr) deepest = deepest->m_pFirstChild;
    std::string path;
    const double seconds = OnSmallStack([&] { path = PathTo(deepest); });
    EXPECT_TRUE(Repeat("/ab", count) == path);
    return seconds;
  });
}

}  // namespace
