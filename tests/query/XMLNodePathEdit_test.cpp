#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <ostream>
#include <string>

#include "harness/CompactXml.h"
#include "harness/LinearTime.h"
#include "harness/LogCapture.h"
#include "harness/NodeFacts.h"
#include "harness/SmallStack.h"
#include "harness/Trees.h"

// Edits at a path that are done. Those that are not stand in XMLNodePathEditFailures_test.cpp.

namespace {

const char kXml[] = "<r><a k='1'><b/></a><a><b>t</b></a><c/></r>";

int Replace(IXMLDOMNode* node, const char* path) {
  return node->ReplaceChildAtXPath(path, "<n v='2'>t<m/></n>");
}

int Append(IXMLDOMNode* node, const char* path) {
  return node->AppendChildAtXPath(path, "<n v='2'>t<m/></n>");
}

int Insert(IXMLDOMNode* node, const char* path) {
  return node->InsertBeforeXPath(path, "<n v='2'>t<m/></n>");
}

int Remove(IXMLDOMNode* node, const char* path) { return node->RemoveChildAtXPath(path); }

/// An edit of kXml, at the document or at the child of the root that has the position.
struct Row {
  const char* name;
  int (*edit)(IXMLDOMNode* node, const char* path);
  int position;
  const char* path;
  const char* references;
};

const int kDocument = -1;

std::ostream& operator<<(std::ostream& out, const Row& row) { return out << row.name; }

const Row kRows[] = {
    {"replace the first that matches", Replace, kDocument, "//a",
     "r1[n1(v1)[#Text1 m1] a1[b1[#Text1]] c1]"},
    {"replace a middle child", Replace, kDocument, "/r/a[b='t']",
     "r1[a1(k1)[b1] n1(v1)[#Text1 m1] c1]"},
    {"replace the last child", Replace, kDocument, "r/c",
     "r1[a1(k1)[b1] a1[b1[#Text1]] n1(v1)[#Text1 m1]]"},
    {"replace below", Replace, 0, "b", "r1[a1(k1)[n1(v1)[#Text1 m1]] a1[b1[#Text1]] c1]"},
    {"replace above", Replace, 0, "../c", "r1[a1(k1)[b1] a1[b1[#Text1]] n1(v1)[#Text1 m1]]"},
    {"replace absolutely from an element", Replace, 2, "/r/a",
     "r1[n1(v1)[#Text1 m1] a1[b1[#Text1]] c1]"},
    {"replace the element itself", Replace, 1, "/", "r1[a1(k1)[b1] n1(v1)[#Text1 m1] c1]"},
    {"replace the element at an empty path", Replace, 1, "", "r1[a1(k1)[b1] n1(v1)[#Text1 m1] c1]"},
    {"replace the root", Replace, kDocument, "/", "n1(v1)[#Text1 m1]"},
    {"replace the root by its path", Replace, kDocument, "/r", "n1(v1)[#Text1 m1]"},

    {"append to the first that matches", Append, kDocument, "//a",
     "r1[a1(k1)[b1 n1(v1)[#Text1 m1]] a1[b1[#Text1]] c1]"},
    {"append to an empty element", Append, kDocument, "/r/c",
     "r1[a1(k1)[b1] a1[b1[#Text1]] c1[n1(v1)[#Text1 m1]]]"},
    {"append to text", Append, 1, "b", "r1[a1(k1)[b1] a1[b1[#Text1 n1(v1)[#Text1 m1]]] c1]"},
    {"append to the element itself", Append, 0, "/",
     "r1[a1(k1)[b1 n1(v1)[#Text1 m1]] a1[b1[#Text1]] c1]"},
    {"append to the element at an empty path", Append, 0, "",
     "r1[a1(k1)[b1 n1(v1)[#Text1 m1]] a1[b1[#Text1]] c1]"},
    {"append to the root", Append, kDocument, "/",
     "r1[a1(k1)[b1] a1[b1[#Text1]] c1 n1(v1)[#Text1 m1]]"},
    {"append to the document", Append, kDocument, "",
     "r1[a1(k1)[b1] a1[b1[#Text1]] c1] n1(v1)[#Text1 m1]"},

    {"insert before the first that matches", Insert, kDocument, "//a",
     "r1[n1(v1)[#Text1 m1] a1(k1)[b1] a1[b1[#Text1]] c1]"},
    {"insert before a middle child", Insert, kDocument, "/r/a[b='t']",
     "r1[a1(k1)[b1] n1(v1)[#Text1 m1] a1[b1[#Text1]] c1]"},
    {"insert before the last child", Insert, kDocument, "/r/c",
     "r1[a1(k1)[b1] a1[b1[#Text1]] n1(v1)[#Text1 m1] c1]"},
    {"insert before the root", Insert, kDocument, "/r",
     "n1(v1)[#Text1 m1] r1[a1(k1)[b1] a1[b1[#Text1]] c1]"},
    {"insert before any root", Insert, kDocument, "*",
     "n1(v1)[#Text1 m1] r1[a1(k1)[b1] a1[b1[#Text1]] c1]"},
    {"insert before any element", Insert, kDocument, "//*",
     "n1(v1)[#Text1 m1] r1[a1(k1)[b1] a1[b1[#Text1]] c1]"},
    {"insert before the element at an empty path", Insert, 2, "",
     "r1[a1(k1)[b1] a1[b1[#Text1]] n1(v1)[#Text1 m1] c1]"},

    {"remove the first that matches", Remove, kDocument, "//a", "r1[a1[b1[#Text1]] c1]"},
    {"remove a middle child", Remove, kDocument, "/r/a[b='t']", "r1[a1(k1)[b1] c1]"},
    {"remove the last child", Remove, kDocument, "/r/c", "r1[a1(k1)[b1] a1[b1[#Text1]]]"},
    {"remove an only child", Remove, 0, "b", "r1[a1(k1) a1[b1[#Text1]] c1]"},
    {"remove the element itself", Remove, 0, "/", "r1[a1[b1[#Text1]] c1]"},
    {"remove the element at an empty path", Remove, 0, "", "r1[a1[b1[#Text1]] c1]"},
    {"remove the root", Remove, kDocument, "/", ""},
    {"remove the root by its path", Remove, kDocument, "/r", ""},
};

class XMLNodePathEdit : public testing::TestWithParam<Row> {};

INSTANTIATE_TEST_SUITE_P(All, XMLNodePathEdit, testing::ValuesIn(kRows));

// No reference of the call is left on any node: what an edit puts in place has the tree's alone.
TEST_P(XMLNodePathEdit, Gives_1_logs_nothing_and_leaves_the_references_of_the_tree_alone) {
  const Row& row = GetParam();
  LogCapture log;
  Document document = Load(kXml);
  // While the test holds the node that it calls, that node may leave the tree.
  Node node = Keep(row.position == kDocument ? document : At(document, {0, row.position}));
  EXPECT_EQ(1, row.edit(node, row.path));
  EXPECT_TRUE(log.Events().empty());
  node.Reset();
  const std::string inside = *row.references == '\0' ? "" : "[" + std::string(row.references) + "]";
  EXPECT_EQ("Document Root1" + inside, References(document));
  EXPECT_EQ("", NotOwnedBy(document, document));
  EXPECT_EQ("", AttributesNotOwnedBy(document, document));
}

// ---- What leaves the tree

TEST(XMLNodePathEditTargets, A_replaced_node_that_somebody_holds_lives_on_without_owner) {
  Document document = Load(kXml);
  Node replaced = Keep(At(document, {0, 1}));
  EXPECT_EQ(1, document->ReplaceChildAtXPath("/r/a[b='t']", "<n/>"));
  EXPECT_EQ("a1[b1[#Text1]]", References(replaced));
  EXPECT_EQ(nullptr, replaced->m_pParent);
  EXPECT_EQ("", NotOwnedBy(nullptr, replaced));
}

TEST(XMLNodePathEditTargets, A_removed_node_that_somebody_holds_lives_on_and_alone_has_no_owner) {
  Document document = Load(kXml);
  Node removed = Keep(At(document, {0, 1}));
  EXPECT_EQ(1, document->RemoveChildAtXPath("/r/a[b='t']"));
  EXPECT_EQ("a1[b1[#Text1]]", References(removed));
  EXPECT_EQ(nullptr, removed->m_pParent);
  EXPECT_EQ("a ", NotOwnedBy(document, removed));
}

TEST(XMLNodePathEditTargets, An_edit_that_destroys_the_node_it_is_called_on_gets_through) {
  Document document = Load(kXml);
  EXPECT_EQ(1, At(document, {0, 0})->ReplaceChildAtXPath("/", "<n/>"));
  EXPECT_EQ(1, At(document, {0, 1})->RemoveChildAtXPath("/"));
  EXPECT_EQ("<r><n/><c/></r>", CompactXml(document));
}

// ---- What comes into the tree

TEST(XMLNodePathEditContent, Only_the_root_element_is_put_in_place) {
  const char* const rows[] = {
      "<n/>",
      "<?xml version='1.0'?><n/>",
      "<!--before--><n/><!--after-->",
      "<!DOCTYPE n><n/>",
      " \n<n/> \n",
  };
  for (const char* content : rows) {
    SCOPED_TRACE(content);
    Document document = Load("<r><a/></r>");
    EXPECT_EQ(1, document->AppendChildAtXPath("/", content));
    EXPECT_EQ(1, document->InsertBeforeXPath("//a", content));
    EXPECT_EQ(1, document->ReplaceChildAtXPath("//a", content));
    EXPECT_EQ("<r><n/><n/><n/></r>", CompactXml(document));
  }
}

TEST(XMLNodePathEditContent, Texts_and_values_are_kept_as_written) {
  Document document = Load("<r/>");
  EXPECT_EQ(1, document->AppendChildAtXPath("/", "<n v='&lt;&#65;'>&amp;&#66;<m/></n>"));
  EXPECT_EQ("<r><n v='&lt;A'>&amp;&#66;<m/></n></r>", CompactXml(document));
}

TEST(XMLNodePathEditContent, All_attributes_below_get_the_owner_of_the_place) {
  Document document = Load("<r><a/><b/></r>");
  const char content[] = "<n v='1' w='2'><m v='3'><o v='4'/></m><m w='5'/></n>";
  EXPECT_EQ(1, document->AppendChildAtXPath("/r/a", content));
  EXPECT_EQ(1, document->InsertBeforeXPath("/r/b", content));
  EXPECT_EQ(1, document->ReplaceChildAtXPath("/r/b", content));
  EXPECT_EQ("", NotOwnedBy(document, document));
  EXPECT_EQ("", AttributesNotOwnedBy(document, document));
}

TEST(XMLNodePathEditContent, At_a_node_without_owner_nothing_gets_one) {
  Document document = Load("<r><p><a/><b/></p></r>");
  Node parent;
  Root(document)->removeChild(At(document, {0, 0}), parent.Out());
  EXPECT_EQ(1, parent->AppendChildAtXPath("/", "<n v='1'><m w='2'/></n>"));
  EXPECT_EQ(1, parent->ReplaceChildAtXPath("a", "<n v='1'><m w='2'/></n>"));
  EXPECT_EQ(1, parent->InsertBeforeXPath("b", "<n v='1'><m w='2'/></n>"));
  EXPECT_EQ("<p><n v='1'><m w='2'/></n><n v='1'><m w='2'/></n><b/><n v='1'><m w='2'/></n></p>",
            CompactXml(parent));
  EXPECT_EQ("", NotOwnedBy(nullptr, parent));
  EXPECT_EQ("", AttributesNotOwnedBy(nullptr, parent));
}

TEST(XMLNodePathEditContent, Wide_and_deep_content_needs_no_stack) {
  for (bool isWide : {true, false}) {
    SCOPED_TRACE(isWide);
    ExpectLinearTime(100000, [isWide](int count) {
      const std::string content = isWide ? "<n>" + Repeat("<m v='1'/>", count) + "</n>"
                                         : Repeat("<n v='1'>", count) + Repeat("</n>", count);
      Document document = Load("<r><a/></r>");
      const double seconds = OnSmallStack([&] {
        EXPECT_EQ(1, document->AppendChildAtXPath("/r/a", content.c_str()));
        EXPECT_EQ(1, document->ReplaceChildAtXPath("/r/a", content.c_str()));
        EXPECT_EQ(1, document->InsertBeforeXPath("/r/n", content.c_str()));
        EXPECT_EQ(1, document->RemoveChildAtXPath("/r/n"));
      });
      EXPECT_EQ(document.Get(), At(document, {0, 0, 0})->m_pFirstAttribute->m_pOwnerDocument);
      return seconds;
    });
  }
}

}  // namespace
