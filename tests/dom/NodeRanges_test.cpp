#include <xmldom/dom/NodeRanges.h>

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr_names.h>

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

#include "harness/Allocation.h"
#include "harness/CompactXml.h"
#include "harness/LogCapture.h"
#include "harness/NodeWalks.h"
#include "harness/Trees.h"

namespace {

// ---- What is walked

TEST(NodeRanges, Children_are_all_children_in_document_order) {
  Document document = Load("<a>text<b/><c/>tail</a>");
  EXPECT_EQ("#Text b c ", Names(Children(Root(document))));
  EXPECT_EQ("a ", Names(Children(document.Get())));
  EXPECT_EQ("", Names(Children(At(document, {0, 1}))));
}

TEST(NodeRanges, Attributes_are_all_attributes_in_document_order) {
  Document document = Load("<a x='1' y='2'><b z='3'/>text</a>");
  EXPECT_EQ("x y ", Names(Attributes(Root(document))));
  EXPECT_EQ("", Names(Attributes(document.Get())));
  EXPECT_EQ("", Names(Attributes(At(document, {0, 1}))));
}

TEST(NodeRanges, Selected_are_all_selected_nodes) {
  Document document = Load("<a><b/><c/><b><b/></b></a>");
  EXPECT_EQ("b b ", Names(Selected(Root(document), "b")));
  EXPECT_EQ("b b b ", Names(Selected(document.Get(), "//b")));
  EXPECT_EQ(3, Selected(document.Get(), "//b").Count());
}

TEST(NodeRanges, Listed_are_the_nodes_of_a_list) {
  Document document = Load("<a x='1'><b/><c/></a>");
  XMLPtr<IXMLDOMNodeList> list;
  Root(document)->get_childNodes(list.Out());
  EXPECT_EQ("b c ", Names(Listed(list)));
  EXPECT_EQ("b c ", Names(Listed(list.Get())));
  XMLPtr<IXMLDOMNamedNodeMap> map;
  Root(document)->get_attributes(map.Out());
  EXPECT_EQ("x ", Names(Listed(map)));
  EXPECT_EQ(1, list->GetRefCount());
  EXPECT_EQ("b c ", Names(Listed(std::move(list))));
  EXPECT_FALSE(list);
}

TEST(NodeRanges, take_pointers_of_every_kind) {
  Document document = Load("<a x='1'><b/></a>");
  const XMLPtr<IXMLDOMDocument2> owner = Share(document.Get());
  const NodePtr root = Share(Root(document));
  EXPECT_EQ("a ", Names(Children(owner)));
  EXPECT_EQ("b ", Names(Children(root)));
  EXPECT_EQ("x ", Names(Attributes(root)));
  EXPECT_EQ("b ", Names(Selected(owner, "//b")));
  EXPECT_EQ("b ", Names(Children(Share(Root(document)))));
}

TEST(NodeRanges, a_null_node_is_an_empty_range) {
  const NodePtr none;
  EXPECT_EQ("", Names(Children(NoNode())));
  EXPECT_EQ("", Names(Children(none)));
  EXPECT_EQ("", Names(Children(nullptr)));
  EXPECT_EQ("", Names(Attributes(NoNode())));
  EXPECT_EQ("", Names(Attributes(none)));
  EXPECT_EQ("", Names(Selected(NoNode(), "a")));
  EXPECT_EQ("", Names(Selected(none, "a")));
  EXPECT_EQ("", Names(Listed(nullptr)));
}

TEST(NodeRanges, are_walked_as_often_as_one_likes) {
  Document document = Load("<a x='1'><b/><c/></a>");
  const XMLNodes nodes = Selected(Root(document), "*");
  EXPECT_EQ("b c ", Names(nodes));
  EXPECT_EQ("b c ", Names(nodes));
  const XMLNodeChain children = Children(Root(document));
  EXPECT_EQ("b c ", Names(children));
  Root(document)->AddTextChild("text");
  EXPECT_EQ("b c #Text ", Names(children));
  EXPECT_EQ("b c #Text ", Names(XMLNodeChain(children)));
  EXPECT_EQ("2 2 1 ", Counts(At(document, {0, 0})));
}

TEST(NodeRanges, keep_the_node_whose_children_or_attributes_they_are) {
  const auto load = [] { return Adopt(Load("<a x='1' y='2'><b/><c/></a>").Detach()); };
  EXPECT_EQ("x y ", Names(Attributes(load()->m_pFirstChild)));
  EXPECT_EQ("b c ", Names(Children(load()->m_pFirstChild)));
  const int documents = IXMLDOMDocument2::m_iObjCount;
  for (auto attribute : Attributes(load()->m_pFirstChild)) {
    EXPECT_EQ(documents, IXMLDOMDocument2::m_iObjCount);
    EXPECT_NE(nullptr, attribute->GetStrValue());
  }
}

TEST(NodeRanges, a_walk_leaves_the_cursor_of_the_list_alone) {
  Document document = Load("<a><b/><c/></a>");
  const XMLPtr<IXMLDOMNodeList> list = Adopt(Root(document)->SelectNodes("*"));
  const NodePtr first = Adopt(list->NextNode());
  EXPECT_EQ("b c ", Names(Listed(list)));
  const NodePtr second = Adopt(list->NextNode());
  EXPECT_STREQ("c", second->m_pszNodeName);
}

// ---- Failed selections

TEST(NodeRanges, Selected_tells_nothing_found_from_nothing_searched) {
  Document document = Load("<a><b/></a>");
  const Node alone = NewElement(nullptr, "a");
  const struct {
    IXMLDOMNode* node;
    const char* path;
    int count;
    bool failed;
  } rows[] = {
      {document, "//b", 1, false}, {document, "//c", 0, false}, {alone, "b", 0, false},
      {alone, nullptr, 1, false},  // the node itself
      {alone, "", 1, false},       {alone, "/a", 0, true},      {alone, "//a", 0, true},
      {nullptr, "a", 0, true},     {nullptr, nullptr, 0, true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(Text(row.path));
    const XMLNodes nodes = Selected(row.node, row.path);
    EXPECT_EQ(row.count, nodes.Count());
    EXPECT_EQ(row.failed, nodes.Failed());
  }
}

TEST(NodeRanges, Selected_leaves_malformed_predicates_to_the_log) {
  Document document = Load("<a><b/></a>");
  LogCapture log;
  const XMLNodes nodes = Selected(Root(document), "b[c");
  EXPECT_EQ(0, nodes.Count());
  EXPECT_FALSE(nodes.Failed());
  EXPECT_FALSE(log.Events().empty());
}

TEST(NodeRanges, Selected_without_memory_leaves_nothing_behind) {
  Document document = Load("<a><b/></a>");
  EXPECT_LT(0, CountFailingAllocations(
                   [&document] { EXPECT_EQ(1, Selected(Root(document), "b").Count()); }));
  EXPECT_EQ("1 ", Counts(At(document, {0, 0})));
}

TEST(NodeRanges, Listed_tells_no_list_from_an_empty_one) {
  EXPECT_TRUE(Listed(nullptr).Failed());
  EXPECT_FALSE(Listed(Adopt(new IXMLDOMNodeList)).Failed());
}

// ---- References

TEST(NodeRanges, a_walk_holds_the_node_in_hand_and_the_next) {
  Document document = Load("<a><b/><c/><d/></a>");
  const char* const counts[] = {"2 2 1 ", "1 2 2 ", "1 1 2 "};
  int i = 0;
  for (NodePtr child : Children(Root(document))) {
    EXPECT_EQ(counts[i++], Counts(At(document, {0, 0})));
  }
  EXPECT_EQ(3, i);
  EXPECT_EQ("1 1 1 ", Counts(At(document, {0, 0})));
  EXPECT_EQ(1, Root(document)->GetRefCount());
}

TEST(NodeRanges, a_walk_along_a_list_adds_one_reference_to_the_node_in_hand) {
  Document document = Load("<a><b/><c/></a>");
  const char* const counts[] = {"3 2 ", "2 3 "};  // the list has one of each
  int i = 0;
  for (NodePtr child : Selected(Root(document), "*")) {
    EXPECT_EQ(counts[i++], Counts(At(document, {0, 0})));
  }
  EXPECT_EQ(2, i);
  EXPECT_EQ("1 1 ", Counts(At(document, {0, 0})));
}

// ---- Iterators

template <class Range>
void ExpectStandardIterators(const Range& range, const std::vector<std::string>& names) {
  typedef std::iterator_traits<typename Range::iterator> Traits;
  EXPECT_TRUE(
      (std::is_base_of<std::forward_iterator_tag, typename Traits::iterator_category>::value));
  EXPECT_TRUE((std::is_same<NodePtr, typename Traits::value_type>::value));
  EXPECT_TRUE((std::is_signed<typename Traits::difference_type>::value));

  const std::vector<NodePtr> nodes(range.begin(), range.end());
  ASSERT_EQ(names.size(), nodes.size());
  EXPECT_EQ(static_cast<std::ptrdiff_t>(names.size()), std::distance(range.begin(), range.end()));
  for (std::size_t i = 0; i < names.size(); ++i) {
    const auto hasName = [&](const NodePtr& node) { return names[i] == node->m_pszNodeName; };
    const auto found = std::find_if(range.begin(), range.end(), hasName);
    ASSERT_TRUE(found != range.end());
    EXPECT_EQ(nodes[i], *found);  // read a second time
    EXPECT_EQ(nodes[i].Get(), found->Get());
    const auto copy = found;
    EXPECT_TRUE(copy == found);
    EXPECT_EQ(nodes[i], *copy);
  }
  auto iterator = range.begin();
  EXPECT_EQ(nodes[0], *iterator++);
  EXPECT_EQ(nodes[1], *iterator);
  auto other = iterator;
  EXPECT_TRUE(++other != iterator);
  iterator = other;
  EXPECT_TRUE(iterator == other);
  EXPECT_TRUE(typename Range::iterator() == range.end());
}

TEST(NodeRanges, have_forward_iterators) {
  Document document = Load("<a x='1' y='2'><b/><c/><d/></a>");
  const NodePtr root = Share(Root(document));
  ExpectStandardIterators(Children(root), {"b", "c", "d"});
  ExpectStandardIterators(Attributes(root), {"x", "y"});
  ExpectStandardIterators(Selected(root, "*"), {"b", "c", "d"});
  EXPECT_EQ("1 1 1 ", Counts(At(document, {0, 0})));
  EXPECT_EQ("1 1 ", Counts(Root(document)->m_pFirstAttribute));
}

TEST(NodeRanges, copies_of_an_iterator_walk_by_themselves) {
  Document document = Load("<a><b/><c/><d/></a>");
  const XMLNodeChain children = Children(Root(document));
  auto first = children.begin();
  EXPECT_STREQ("b", (*first)->m_pszNodeName);
  auto second = first;
  Remove(Root(document), At(document, {0, 0}));
  EXPECT_STREQ("c", (*++first)->m_pszNodeName);
  EXPECT_STREQ("c", (*++second)->m_pszNodeName);
  EXPECT_STREQ("d", (*++first)->m_pszNodeName);
  EXPECT_TRUE(++first == children.end());
  EXPECT_STREQ("c", (*second)->m_pszNodeName);
}

TEST(NodeRanges, a_range_that_nobody_walks_releases_what_it_holds) {
  Document document = Load("<a x='1'><b/></a>");
  Children(Root(document));
  Attributes(Root(document));
  Selected(Root(document), "b");
  EXPECT_EQ("1 ", Counts(At(document, {0, 0})));
  EXPECT_EQ("1 ", Counts(Root(document)->m_pFirstAttribute));
}

TEST(NodeRanges, leaving_a_loop_early_releases_what_it_holds) {
  Document document = Load("<a x='1' y='2'><b/><c/></a>");
  for (NodePtr child : Children(Root(document))) {
    for (NodePtr attribute : Attributes(Root(document))) {
      if (attribute->m_pNextSibling != nullptr) break;
    }
    if (child->m_pNextSibling != nullptr) break;
  }
  const auto firstSelected = [](IXMLDOMNode* node) -> NodePtr {
    for (NodePtr found : Selected(node, "*")) return found;
    return nullptr;
  };
  EXPECT_STREQ("b", firstSelected(Root(document))->m_pszNodeName);
  EXPECT_EQ("1 1 ", Counts(At(document, {0, 0})));
  EXPECT_EQ("1 1 ", Counts(Root(document)->m_pFirstAttribute));
}

TEST(NodeRanges, an_exception_in_a_loop_releases_what_it_holds) {
  Document document = Load("<a x='1' y='2'><b/><c/></a>");
  const auto throwIn = [](IXMLDOMNode* node) {
    for (NodePtr child : Children(node)) {
      for (NodePtr attribute : Attributes(node)) {
        for (NodePtr selected : Selected(node, "*")) throw std::runtime_error("in the loop");
      }
    }
  };
  EXPECT_THROW(throwIn(Root(document)), std::runtime_error);
  EXPECT_EQ("1 1 ", Counts(At(document, {0, 0})));
  EXPECT_EQ("1 1 ", Counts(Root(document)->m_pFirstAttribute));
}

TEST(NodeRanges, a_walk_outlives_what_it_hangs_below) {
  const auto load = [] { return Adopt(Load("<a><b/><c/></a>").Detach()); };
  EXPECT_EQ("a ", Names(Children(load())));
  EXPECT_EQ("b c ", Names(Selected(load(), "a/*")));
  XMLPtr<IXMLDOMDocument2> document = load();
  EXPECT_EQ("bc",
            NamesWithEdits(Children(document->m_pFirstChild),
                           [&document](IXMLDOMNode*, const std::string&) { document.Reset(); }));
}

}  // namespace
