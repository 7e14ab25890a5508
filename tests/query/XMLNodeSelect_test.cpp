#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "harness/Allocation.h"
#include "harness/LinearTime.h"
#include "harness/LogCapture.h"
#include "harness/RefusingLog.h"
#include "harness/SmallStack.h"
#include "harness/StdoutCapture.h"
#include "harness/Trees.h"

namespace {

typedef std::vector<LoggedEvent> Events;
typedef std::vector<std::string> Names;

const char kTermination[] = "IXMLDOMNode::MatchQuery - unexpected termination while expecting ']'";

const char* const kNoPath = nullptr;

/// The nodes of a list by their attributes `id`, or else by their names.
Names NamesOf(IXMLDOMNodeList* list) {
  Names names;
  for (const IXMLDOMNodeListElt* link = list->m_pHead; link != nullptr; link = link->m_pNext) {
    const char* id = link->m_pNode->GetStrAttribute("id");
    names.push_back(id == nullptr ? link->m_pNode->m_pszNodeName : id);
  }
  EXPECT_EQ(static_cast<int>(names.size()), list->m_nCount);
  return names;
}

Names Select(IXMLDOMNode* node, const char* path) {
  return NamesOf(Ref<IXMLDOMNodeList>(node->SelectNodes(path)));
}

const char kNested[] = "<r><a id='a1'><a id='a2'/></a><a id='a3'/></r>";

const char kFamily[] =
    "<r id='r'>text"
    "<a id='a1'><b id='b1'/><b id='b2'><c id='c1'/></b></a>"
    "<b id='b3'><a id='a2'><b id='b4'/></a></b>"
    "<a id='a3' k='1'>text<b id='b5'>b</b></a>"
    "</r>";

struct Selection {
  const char* path;
  Names names;
};

void ExpectSelections(IXMLDOMNode* node, const std::vector<Selection>& rows) {
  for (const Selection& row : rows) {
    SCOPED_TRACE(row.path);
    EXPECT_EQ(row.names, Select(node, row.path));
  }
}

}  // namespace

// A predicate on an attribute reads no text, so that a search need not keep to the order of events.
TEST(XMLNodeSelect, An_element_among_attributes_is_not_read) {
  const Document document = Load("<r><a k='1'/></r>");
  Node element = NewElement(document, "k");
  element->AddTextChild("&foo;");
  At(document, {0, 0})->m_pFirstAttribute->m_pNextSibling = element.Detach();
  const LogCapture log;
  EXPECT_EQ(Names(), Select(document, "//a[@k='&foo;']"));
  EXPECT_EQ(Events(), log.Events());
}

TEST(XMLNodeSelect, An_absolute_path_starts_at_the_children_of_the_document) {
  Document document = Load(kFamily);
  for (IXMLDOMNode* node : {static_cast<IXMLDOMNode*>(document), At(document, {0, 1, 1, 0}),
                            At(document, {0, 0}), Root(document)->m_pFirstAttribute}) {
    SCOPED_TRACE(node->m_pszNodeName);
    ExpectSelections(node, {{"/r", {"r"}},
                            {"/r/a", {"a1", "a3"}},
                            {"/*/*/b", {"b1", "b2", "b5"}},
                            {"/r/b/a/b", {"b4"}},
                            {"/r/a[@k=1]/b[@id='b5']", {"b5"}},
                            {"/a", {}},
                            {"/r/r", {}},
                            {"/r/a/b/c/d", {}}});
  }
}

TEST(XMLNodeSelect, A_relative_path_starts_at_the_children_of_the_node) {
  Document document = Load(kFamily);
  ExpectSelections(document, {{"r/a", {"a1", "a3"}}, {"a", {}}});
  ExpectSelections(
      At(document, {0, 1}),
      {{"b", {"b1", "b2"}}, {"*", {"b1", "b2"}}, {"b/c", {"c1"}}, {"a", {}}, {"a/b", {}}});
}

TEST(XMLNodeSelect, A_descendant_path_is_matched_below_every_element_of_the_document) {
  Document document = Load(kFamily);
  for (IXMLDOMNode* node : {static_cast<IXMLDOMNode*>(document), At(document, {0, 1, 1, 0})}) {
    SCOPED_TRACE(node->m_pszNodeName);
    ExpectSelections(node, {{"//r", {"r"}},
                            {"//c", {"c1"}},
                            {"//a/b", {"b1", "b2", "b5", "b4"}},
                            {"//b/a", {"a2"}},
                            {"///b/a", {"a2"}},
                            {"//r/b/a/b", {"b4"}},
                            {"//d", {}},
                            {"//c/d", {}}});
  }
}

TEST(XMLNodeSelect, A_descendant_selection_is_grouped_by_context_not_in_document_order) {
  Document document = Load(kNested);
  ExpectSelections(
      document,
      {{"//a", {"a1", "a3", "a2"}}, {"/r/a", {"a1", "a3"}}, {"//*", {"r", "a1", "a3", "a2"}}});
}

TEST(XMLNodeSelect, Predicates_of_a_descendant_selection_print_in_the_order_of_the_contexts) {
  const Document document =
      Load("<r><a><n>&lt;1</n><a><n>&lt;2</n></a></a><a><n>&lt;3</n></a></r>");
  StdoutCapture output;
  Ref<IXMLDOMNodeList>(document->SelectNodes("//a[n='x']"));
  EXPECT_EQ(
      "Translate Entities: from <&lt;1> to <<1>\n"
      "Translate Entities: from <&lt;3> to <<3>\n"
      "Translate Entities: from <&lt;2> to <<2>\n",
      output.Take());
}

TEST(XMLNodeSelect, Two_slashes_inside_a_path_are_an_empty_step) {
  Document document = Load(kFamily);
  ExpectSelections(document, {{"/r//b", {}}, {"r//a", {}}, {"/r/", {}}, {"r/a/", {}}});
}

TEST(XMLNodeSelect, An_empty_path_selects_the_node_itself) {
  Document document = Load(kFamily);
  ExpectSelections(At(document, {0, 1}), {{"", {"a1"}}, {kNoPath, {"a1"}}});
  EXPECT_EQ(Names{"#Text"}, Select(At(document, {0, 0}), ""));
  EXPECT_EQ(Names{"Document Root"}, Select(document, ""));
}

TEST(XMLNodeSelect, Slashes_alone_select_no_element_with_a_name) {
  Document document = Load(kFamily);
  ExpectSelections(document, {{"/", {}}, {"//", {}}, {"///", {}}});
  Node unnamed(Root(document)->AddChild("", nullptr));
  ExpectSelections(document, {{"/", {}}, {"//", {""}}, {"/r/", {""}}});
}

TEST(XMLNodeSelect, Dots_are_names_to_a_list_selection) {
  Document document = Load(kFamily);
  LogCapture log;
  ExpectSelections(Root(document), {{".", {}}, {"..", {}}, {"a/..", {}}, {"./a", {}}});
  EXPECT_EQ(Events(), log.Events());
  Node dots(Root(document)->AddChild("..", nullptr));
  ExpectSelections(Root(document), {{"..", {".."}}});
}

TEST(XMLNodeSelect, Texts_attributes_and_other_nodes_are_never_selected) {
  Document document = Load("<r k='1'>text</r>");
  Root(document)->AddChild(new IXMLDOMNode(document, "a", nullptr, NODE_COMMENT));
  ExpectSelections(document,
                   {{"/r/*", {}}, {"/r/#Text", {}}, {"/r/k", {}}, {"/r/@k", {}}, {"//a", {}}});
}

TEST(XMLNodeSelect, Only_elements_are_searched_for_descendants) {
  Document document = Load("<r/>");
  IXMLDOMNode* const comment = new IXMLDOMNode(document, "comment", nullptr, NODE_COMMENT);
  Root(document)->AddChild(comment);
  Node hidden(comment->AddChild("a", nullptr));
  ExpectSelections(document, {{"//a", {}}});
  ExpectSelections(comment, {{"a", {"a"}}});
}

TEST(XMLNodeSelect, The_wrapped_path_selects_alike) {
  Document document = Load(kNested);
  EXPECT_EQ((Names{"a1", "a3", "a2"}),
            NamesOf(Ref<IXMLDOMNodeList>(document->SelectNodes(_bstr_t("//a")))));
  EXPECT_EQ(Names{"r"}, NamesOf(Ref<IXMLDOMNodeList>(Root(document)->SelectNodes(_bstr_t()))));
}

TEST(XMLNodeSelect, selectNodes2_hands_the_list_out) {
  Document document = Load(kNested);
  char path[] = "//a";
  char missing[] = "//b";
  Ref<IXMLDOMNodeList> list;
  EXPECT_EQ(S_OK, document->selectNodes2(path, list.Out()));
  EXPECT_EQ((Names{"a1", "a3", "a2"}), NamesOf(list));
  EXPECT_EQ(S_OK, document->selectNodes2(missing, list.Out()));
  EXPECT_EQ(Names(), NamesOf(list));
  EXPECT_EQ(S_OK, Root(document)->selectNodes2(nullptr, list.Out()));
  EXPECT_EQ(Names{"r"}, NamesOf(list));
}

TEST(XMLNodeSelect, selectNodes2_refuses_a_null_out_pointer) {
  Document document = Load(kNested);
  char path[] = "//a[";
  LogCapture log;
  EXPECT_EQ(E_ARGUMENT, document->selectNodes2(path, nullptr));
  EXPECT_EQ(Events(), log.Events());
}

TEST(XMLNodeSelect, A_list_holds_one_reference_to_each_node_and_is_the_callers) {
  Document document = Load(kNested);
  IXMLDOMNodeList* list = document->SelectNodes("/r/a");
  EXPECT_EQ(1, list->GetRefCount());
  EXPECT_EQ(2, At(document, {0, 0})->GetRefCount());
  EXPECT_EQ(2, At(document, {0, 1})->GetRefCount());
  EXPECT_EQ(1, At(document, {0, 0, 0})->GetRefCount());
  Release(list);
  EXPECT_EQ(1, At(document, {0, 0})->GetRefCount());
}

TEST(XMLNodeSelect, A_list_outlives_the_tree) {
  Document document = Load(kNested);
  Ref<IXMLDOMNodeList> list(document->SelectNodes("//a"));
  document.Reset();
  EXPECT_EQ((Names{"a1", "a3", "a2"}), NamesOf(list));
}

TEST(XMLNodeSelect, A_malformed_step_is_logged_for_each_element_of_the_name) {
  Document document = Load(kNested);
  LogCapture log;
  ExpectSelections(document, {{"//a[", {}}});
  EXPECT_EQ(Events(3, Event(18, 3, kTermination)), log.Events());
}

TEST(XMLNodeSelect, An_absolute_path_selects_nothing_from_a_node_without_owner) {
  Node root(new IXMLDOMNode(nullptr, "r", nullptr, NODE_ELEMENT));
  Node child(root->AddChild("a", nullptr));
  LogCapture log;
  ExpectSelections(root, {{"/r", {}}, {"/", {}}, {"//a", {}}, {"//a[", {}}, {"a", {"a"}}});
  EXPECT_EQ(Events(), log.Events());
}

TEST(XMLNodeSelect, A_path_list_lives_as_long_as_its_selection) {
  Document document = Load(kNested);
  const int before = CXPathList::m_iObjCount;
  int meanwhile = 0;
  CLogger::SetSink(
      [](const CLogEvent&, void* count) { *static_cast<int*>(count) = CXPathList::m_iObjCount; },
      &meanwhile);
  ExpectSelections(document, {{"/r/a[", {}}});
  CLogger::SetSink(nullptr, nullptr);
  EXPECT_EQ(before + 1, meanwhile);
  EXPECT_EQ(before, CXPathList::m_iObjCount);
}

TEST(XMLNodeSelect, An_exception_of_the_log_passes_through_a_list_selection) {
  Document document = Load(kNested);
  char path[] = "/r/a[";
  IXMLDOMNodeList* list = nullptr;
  RefusingLog log;
  EXPECT_EQ(kTermination, ThrownMessage([&] { document->SelectNodes(path); }));
  EXPECT_EQ(kTermination, ThrownMessage([&] { document->SelectNodes(_bstr_t(path)); }));
  EXPECT_EQ(kTermination, ThrownMessage([&] { document->selectNodes2(path, &list); }));
  EXPECT_EQ(nullptr, list);
}

TEST(XMLNodeSelect, An_exception_drops_what_was_selected_so_far) {
  Document document = Load("<r><a><n>1</n></a><a><n/></a></r>");
  At(document, {0, 1, 0})->AddTextChild("&foo;");
  RefusingLog log;
  EXPECT_NE("", ThrownMessage([&] { document->SelectNodes("/r/a[n=1]"); }));
  EXPECT_EQ(1, At(document, {0, 0})->GetRefCount());
}

TEST(XMLNodeSelect, A_list_selection_without_memory_leaves_nothing_behind) {
  Document document = Load(kFamily);
  EXPECT_LT(0, CountFailingAllocations([&] {
              Ref<IXMLDOMNodeList> list(document->SelectNodes("//a[@id='a2' or @x/y='']/b"));
            }));
  EXPECT_EQ(1, Root(document)->GetRefCount());
}

TEST(XMLNodeSelect, Many_siblings_are_selected) {
  const int count = 100000;
  Document document = Load("<r>" + Repeat("<a/>", count) + "</r>");
  EXPECT_EQ(count, Ref<IXMLDOMNodeList>(document->SelectNodes("/r/a"))->m_nCount);
  EXPECT_EQ(count, Ref<IXMLDOMNodeList>(document->SelectNodes("//a"))->m_nCount);
}

TEST(XMLNodeSelect, Many_levels_are_selected) {
  const int count = 100000;
  Document document = Load(Repeat("<a>", count) + Repeat("</a>", count));
  int descendants = 0;
  int lowest = 0;
  OnSmallStack([&] {
    descendants = Ref<IXMLDOMNodeList>(document->SelectNodes("//a/a"))->m_nCount;
    lowest = Ref<IXMLDOMNodeList>(document->SelectNodes(Repeat("/a", count).c_str()))->m_nCount;
  });
  EXPECT_EQ(count - 1, descendants);
  EXPECT_EQ(1, lowest);
}

// Those below the first child are listed behind its siblings, although they are found before them.
TEST(XMLNodeSelect, Siblings_are_put_before_what_was_found_earlier_in_linear_time) {
  ExpectLinearTime(100000, [](int count) {
    const std::string some = Repeat("<a/>", count);
    const Document document = Load("<r><a>" + some + "</a>" + some + "</r>");
    int selected = 0;
    const double seconds = OnSmallStack(
        [&] { selected = Ref<IXMLDOMNodeList>(document->SelectNodes("//a"))->m_nCount; });
    EXPECT_EQ(2 * count + 1, selected);
    return seconds;
  });
}
