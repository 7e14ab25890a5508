#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "harness/Allocation.h"
#include "harness/LogCapture.h"
#include "harness/RefusingLog.h"
#include "harness/StdoutCapture.h"
#include "harness/Trees.h"

namespace {

typedef std::vector<LoggedEvent> Events;

const LoggedEvent kNullQuery =
    Event(18, 3, "IXMLDOMNode::ParseXPathQuery - called with NULL query or name");
const LoggedEvent kTermination =
    Event(18, 3, "IXMLDOMNode::MatchQuery - unexpected termination while expecting ']'");

const char* const kNoPath = nullptr;

/// The node found by its attribute `id`, or else by its name.
std::string SelectSingle(IXMLDOMNode* node, const char* path) {
  Node found(node->SelectSingleNode(path));
  if (found == nullptr) return "(null)";
  const char* id = found->GetStrAttribute("id");
  return id == nullptr ? found->m_pszNodeName : id;
}

const char kNested[] = "<r><a id='a1'><a id='a2'/></a><a id='a3'/></r>";

const char kFamily[] =
    "<r id='r'>text"
    "<a id='a1'><b id='b1'/><b id='b2'><c id='c1'/></b></a>"
    "<b id='b3'><a id='a2'><b id='b4'/></a></b>"
    "<a id='a3' k='1'>text<b id='b5'>b</b></a>"
    "</r>";

struct SingleSelection {
  const char* path;
  const char* name;
};

void ExpectSingleSelections(IXMLDOMNode* node, const std::vector<SingleSelection>& rows) {
  for (const SingleSelection& row : rows) {
    SCOPED_TRACE(row.path);
    EXPECT_EQ(row.name, SelectSingle(node, row.path));
  }
}

}  // namespace

TEST(XMLNodeSelectSingle, A_single_selection_is_the_first_in_document_order) {
  Document document = Load(kFamily);
  for (IXMLDOMNode* node : {static_cast<IXMLDOMNode*>(document), At(document, {0, 1, 1, 0})}) {
    SCOPED_TRACE(node->m_pszNodeName);
    ExpectSingleSelections(node, {{"/r", "r"},
                                  {"/r/a", "a1"},
                                  {"/r/a[@k=1]", "a3"},
                                  {"/r/a[b='b']/b", "b5"},
                                  {"//a", "a1"},
                                  {"//b", "b1"},
                                  {"//b/a", "a2"},
                                  {"//a/b/c", "c1"},
                                  {"///b/a/*", "b4"},
                                  {"/a", "(null)"},
                                  {"//d", "(null)"},
                                  {"//c/c", "(null)"}});
  }
  EXPECT_EQ("a1", SelectSingle(Load(kNested), "//a"));
}

TEST(XMLNodeSelectSingle, A_single_descendant_selection_looks_into_nodes_of_every_type) {
  Document document = Load("<r/>");
  IXMLDOMNode* const comment = new IXMLDOMNode(document, "comment", nullptr, NODE_COMMENT);
  Root(document)->AddChild(comment);
  Node hidden(comment->AddChild("a", nullptr));
  ExpectSingleSelections(document, {{"//a", "a"}, {"//comment", "(null)"}, {"//*/*", "(null)"}});
}

TEST(XMLNodeSelectSingle, A_relative_path_never_selects_the_node_itself) {
  Document document = Load(kFamily);
  ExpectSingleSelections(At(document, {0, 1}),
                         {{"b", "b1"}, {"b/c", "c1"}, {"a", "(null)"}, {"a/b", "(null)"}});
}

TEST(XMLNodeSelectSingle, An_empty_single_path_selects_the_node_itself) {
  Document document = Load(kFamily);
  ExpectSingleSelections(At(document, {0, 1}), {{"", "a1"}, {kNoPath, "a1"}});
  EXPECT_EQ("#Text", SelectSingle(At(document, {0, 0}), ""));
  EXPECT_EQ("Document Root", SelectSingle(document, ""));
}

TEST(XMLNodeSelectSingle, One_slash_alone_selects_the_node_and_not_its_document) {
  Document document = Load(kFamily);
  EXPECT_EQ("Document Root", SelectSingle(document, "/"));
  EXPECT_EQ("a1", SelectSingle(At(document, {0, 1}), "/"));
  EXPECT_EQ("#Text", SelectSingle(At(document, {0, 0}), "/"));
  ExpectSingleSelections(At(document, {0, 1}), {{"//", "(null)"}, {"/ ", "(null)"}});
}

TEST(XMLNodeSelectSingle, A_step_that_begins_with_one_dot_stays) {
  Document document = Load(kFamily);
  LogCapture log;
  ExpectSingleSelections(
      At(document, {0, 1}),
      {{"./b", "b1"}, {"././b/./c", "c1"}, {".x/b", "b1"}, {".[", "(null)"}, {"./a", "(null)"}});
  EXPECT_EQ("a1", SelectSingle(document, "/./r/./a"));
}

TEST(XMLNodeSelectSingle, A_step_that_begins_with_two_dots_moves_up) {
  Document document = Load(kFamily);
  ExpectSingleSelections(At(document, {0, 1}), {{"../a", "a1"},
                                                {"../b", "b3"},
                                                {"../../r", "r"},
                                                {"..x/b", "b3"},
                                                {"../b/a/../a/b", "b4"},
                                                {"b/../../b", "b3"},
                                                {"../c", "(null)"},
                                                {"../../../r", "(null)"}});
  ExpectSingleSelections(document, {{"..", "(null)"}, {"../r", "(null)"}, {"/../r", "(null)"}});
}

TEST(XMLNodeSelectSingle, Dots_work_in_a_descendant_selection) {
  Document document = Load(kFamily);
  ExpectSingleSelections(document, {{"//c/../../b", "b1"},
                                    {"//c/../../../b", "b3"},
                                    {"//a[@k]/../b", "(null)"},
                                    {"//a[@k=1]/../b", "b3"},
                                    {"//b/./a", "a2"},
                                    {"//../r", "(null)"}});
}

TEST(XMLNodeSelectSingle, Up_from_an_attribute_stands_its_element) {
  Document document = Load(kFamily);
  EXPECT_EQ("a1", SelectSingle(Root(document)->m_pFirstAttribute, "../a"));
}

TEST(XMLNodeSelectSingle, A_path_that_ends_in_dots_selects_nothing_and_is_logged_for_each_element) {
  Document document = Load(kFamily);
  const struct {
    const char* path;
    int events;
  } rows[] = {{".", 2}, {"..", 3}, {"./.", 2}, {"b/.", 1}, {"b/..", 4}, {"../..", 1}, {"c/.", 0}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.path);
    LogCapture log;
    EXPECT_EQ("(null)", SelectSingle(At(document, {0, 1}), row.path));
    EXPECT_EQ(Events(static_cast<std::size_t>(row.events), kNullQuery), log.Events());
  }
}

TEST(XMLNodeSelectSingle, A_failed_descendant_selection_says_what_it_says_twice) {
  // The search at the start and the restart below it are the same search.
  Document document = Load("<a/>");
  LogCapture log;
  EXPECT_EQ("(null)", SelectSingle(document, "//a["));
  EXPECT_EQ(Events(2, kTermination), log.Events());
}

TEST(XMLNodeSelectSingle, The_wrapped_single_path_selects_alike) {
  Document document = Load(kNested);
  EXPECT_EQ(At(document, {0, 0}), Node(document->SelectSingleNode(_bstr_t("//a"))).Get());
  EXPECT_EQ(Root(document), Node(Root(document)->SelectSingleNode(_bstr_t("/"))).Get());
  EXPECT_EQ(Root(document), Node(Root(document)->SelectSingleNode(_bstr_t())).Get());
}

TEST(XMLNodeSelectSingle, selectSingleNode2_hands_the_node_out) {
  Document document = Load(kNested);
  Node node;
  EXPECT_EQ(S_OK, document->selectSingleNode2("//a", node.Out()));
  EXPECT_EQ(At(document, {0, 0}), node.Get());
  EXPECT_EQ(S_OK, Root(document)->selectSingleNode2("/", node.Out()));
  EXPECT_EQ(Root(document), node.Get());
  EXPECT_EQ(S_OK, Root(document)->selectSingleNode2(nullptr, node.Out()));
  EXPECT_EQ(Root(document), node.Get());
}

TEST(XMLNodeSelectSingle, selectSingleNode2_hands_null_out_when_nothing_matches) {
  Document document = Load(kNested);
  IXMLDOMNode* node = document;
  EXPECT_EQ(S_FALSE, document->selectSingleNode2("//b", &node));
  EXPECT_EQ(nullptr, node);
}

TEST(XMLNodeSelectSingle, selectSingleNode2_refuses_a_null_out_pointer) {
  Document document = Load(kNested);
  LogCapture log;
  EXPECT_EQ(E_ARGUMENT, document->selectSingleNode2("//a[", nullptr));
  EXPECT_EQ(Events(), log.Events());
}

TEST(XMLNodeSelectSingle, A_selected_node_has_one_reference_more) {
  Document document = Load(kNested);
  for (const char* path : {"", "/", "/r", "//r", "a/../../r"}) {
    SCOPED_TRACE(path);
    Node found(Root(document)->SelectSingleNode(path));
    EXPECT_EQ(Root(document), found.Get());
    EXPECT_EQ(2, Root(document)->GetRefCount());
  }
  EXPECT_EQ(1, Root(document)->GetRefCount());
}

TEST(XMLNodeSelectSingle, An_absolute_path_selects_nothing_from_a_node_without_owner) {
  Node root(new IXMLDOMNode(nullptr, "r", nullptr, NODE_ELEMENT));
  Node child(root->AddChild("a", nullptr));
  LogCapture log;
  ExpectSingleSelections(
      root, {{"/r", "(null)"}, {"//a", "(null)"}, {"/.", "(null)"}, {"/", "r"}, {"a", "a"}});
  EXPECT_EQ(Events(), log.Events());
}

TEST(XMLNodeSelectSingle, SetDebugXPATH_only_logs_that_it_cannot_help) {
  Document document = Load(kNested);
  LogCapture log;
  StdoutCapture out;
  SetDebugXPATH(true);
  EXPECT_EQ(3, Ref<IXMLDOMNodeList>(document->SelectNodes("//a"))->m_nCount);
  ExpectSingleSelections(document, {{"//a", "a1"}});
  SetDebugXPATH(false);
  EXPECT_EQ("", out.Take());
  EXPECT_EQ(
      (Events{Event(18, 7, "XPathDebug has been enabled, but DOM was built without DBG_XPATH"),
              Event(18, 7, "XPathDebug has been disabled, but DOM was built without DBG_XPATH")}),
      log.Events());
}

TEST(XMLNodeSelectSingle, An_exception_of_the_log_passes_through_a_single_selection) {
  Document document = Load(kNested);
  const char path[] = "/r/a[";
  IXMLDOMNode* node = nullptr;
  RefusingLog log;
  EXPECT_EQ(kTermination.title, ThrownMessage([&] { document->SelectSingleNode(path); }));
  EXPECT_EQ(kTermination.title, ThrownMessage([&] { document->SelectSingleNode(_bstr_t(path)); }));
  EXPECT_EQ(kTermination.title, ThrownMessage([&] { document->selectSingleNode2(path, &node); }));
  EXPECT_EQ(nullptr, node);
}

TEST(XMLNodeSelectSingle, A_single_selection_without_memory_leaves_nothing_behind) {
  Document document = Load(kFamily);
  for (const char* path : {"//b/c", "//c/../../../b", "/r/a[x/y='']"}) {
    SCOPED_TRACE(path);
    EXPECT_LT(0, CountFailingAllocations([&] { Node node(document->SelectSingleNode(path)); }));
  }
  EXPECT_EQ(1, Root(document)->GetRefCount());
}
