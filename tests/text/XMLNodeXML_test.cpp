#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#include "harness/Allocation.h"
#include "harness/LogCapture.h"
#include "harness/RefusingLog.h"
#include "harness/Trees.h"

namespace {

typedef std::vector<LoggedEvent> Events;

const char kStripping[] =
    "IXMLDOMNode::GetXMLHelper - paged attributes already present in data class, stripping old "
    "values";

const char kPlain[] = "<p a='1'>\n  <list>\n    <row/>\n    <row/>\n  </list>\n  <q>x</q>\n</p>\n";

/// Keeps the texts that come with log events, as GetFilteredXML leaves one to its sink.
class BodyKeeper {
 public:
  BodyKeeper() : m_body(nullptr) { CLogger::SetSink(Keep, this); }
  ~BodyKeeper() {
    CLogger::SetSink(nullptr, nullptr);
    SysFreeString(m_body);
  }

  BodyKeeper(const BodyKeeper&) = delete;
  BodyKeeper& operator=(const BodyKeeper&) = delete;

  const std::vector<LoggedEvent>& GetEvents() const { return m_events; }

  /// The text of the last event, the keeper's.
  BSTR Body() const { return m_body; }

 private:
  static void Keep(const CLogEvent& event, void* context) {
    BodyKeeper* keeper = static_cast<BodyKeeper*>(context);
    keeper->m_events.push_back(event.body == nullptr
                                   ? Event(event.type, event.severity, event.title)
                                   : Event(event.type, event.severity, event.title, event.body));
    // The string itself is posted, so the event's text is what has to be given back.
    keeper->m_body = const_cast<char*>(event.body);
  }

  std::vector<LoggedEvent> m_events;
  BSTR m_body;
};

LoggedEvent NoMatch(const std::string& path, const std::string& xml) {
  return Event(18, 4, "IXMLDOMNode::GetFilteredXML - can't match xpath " + path, xml);
}

std::string Filtered(IXMLDOMNode* node, const char* path) {
  return Text(node->GetFilteredXML(path, 2, 2, 1, 3, "<row/>"));
}

const char kFiltered[] =
    "<p a='1'>\n  <list curPage = '1' numPages = '3'>\n    <row index='002'/>\n"
    "<row index='003'/>\n  </list>\n  <q>x</q>\n</p>\n";

}  // namespace

// ---- Plain

TEST(XMLNodeXML, Every_plain_entry_point_gives_the_same_text) {
  Document document = Load(kPlain);
  for (IXMLDOMNode* node : {static_cast<IXMLDOMNode*>(document), Root(document)}) {
    SCOPED_TRACE(node->m_pszNodeName);
    EXPECT_EQ(kPlain, TakeBstr(node->GetXML()));
    BSTR text = nullptr;
    EXPECT_EQ(S_OK, node->get_xml(&text));
    EXPECT_EQ(kPlain, TakeBstr(text));
    EXPECT_EQ(kPlain, Text(node->Getxml()));
    EXPECT_EQ(kPlain, Text(node->GetFilteredXML(nullptr, 2, 2, 1, 3, "<row/>")));
  }
}

TEST(XMLNodeXML, GetXML_gives_a_new_string_each_time) {
  Document document = Load("<p/>");
  const long before = GetNumBSTRsAllocated();
  BSTR first = document->GetXML();
  BSTR second = document->GetXML();
  EXPECT_NE(first, second);
  EXPECT_EQ(before + 2, GetNumBSTRsAllocated());
  SysFreeString(first);
  SysFreeString(second);
}

TEST(XMLNodeXML, An_empty_document_gives_an_empty_text) {
  Document document = NewDocument();
  EXPECT_EQ("", TakeBstr(document->GetXML()));
  EXPECT_EQ("", Text(document->Getxml()));
  EXPECT_EQ("", Text(document->GetMaskedXML()));
  EXPECT_EQ("", Text(document->GetFilteredXML(nullptr, 1, 1, 1, 1, nullptr)));
}

TEST(XMLNodeXML, get_xml_refuses_a_null_out_pointer) {
  Document document = Load("<p/>");
  const long before = GetNumBSTRsAllocated();
  EXPECT_EQ(E_ARGUMENT, document->get_xml(nullptr));
  EXPECT_EQ(before, GetNumBSTRsAllocated());
}

TEST(XMLNodeXML, A_removed_node_still_gives_its_text) {
  Document document = Load(kPlain);
  Node list(document->SelectSingleNode("/p/list"));
  document.Reset();
  EXPECT_EQ("<list>\n  <row/>\n  <row/>\n</list>\n<q>x</q>\n",
            XmlOf(list) + XmlOf(list->m_pNextSibling));
}

TEST(XMLNodeXML, What_was_written_loads_again) {
  const char* const xml = "<p a='&lt;&apos;'>\n  <q>&amp;lt; &#233;</q>\n  <r/>\n</p>\n";
  Document document = Load(xml);
  Document again = Load(XmlOf(document));
  EXPECT_EQ(xml, XmlOf(again));
}

// ---- Masked

TEST(XMLNodeXML, GetMaskedXML_leaves_out_every_value) {
  Document document = Load("<p a='1' b=''><q c='2'>x</q>text<r/></p>");
  EXPECT_EQ("<p a='' b=''>\n  \n  <q c=''></q>\n  <r></r>\n</p>\n", Text(document->GetMaskedXML()));
}

TEST(XMLNodeXML, GetMaskedXML_never_writes_the_empty_form) {
  Document document = Load("<p/>");
  EXPECT_EQ("<p></p>\n", Text(document->GetMaskedXML()));
}

// ---- Filtered

TEST(XMLNodeXML, GetFilteredXML_pages_the_selected_node_alone) {
  Document document = Load(kPlain);
  LogCapture log;
  for (const char* path : {"/p/list", "//list", "/p/*[row='']"}) {
    SCOPED_TRACE(path);
    EXPECT_EQ(kFiltered, Filtered(document, path));
    EXPECT_EQ(kFiltered, Filtered(Root(document), path));
  }
  EXPECT_EQ(kFiltered, Filtered(Root(document), "list"));
  EXPECT_EQ(Events(), log.Events());
}

TEST(XMLNodeXML, GetFilteredXML_pages_the_first_of_several) {
  Document document = Load("<p><l><r/></l><l><r/></l></p>");
  EXPECT_EQ("<p>\n  <l>\n    <r index='001'/>\n  </l>\n  <l>\n    <r/>\n  </l>\n</p>\n",
            Text(document->GetFilteredXML("//l", 1, 1, -1, -1, nullptr)));
}

TEST(XMLNodeXML, GetFilteredXML_hands_its_numbers_on_as_they_are) {
  Document document = Load("<l><r/><r/></l>");
  EXPECT_EQ("<l curPage = '0' numPages = '0'>\n  <r index='001'/>\n</l>\n",
            Text(document->GetFilteredXML("/l", -3, 5, 0, 0, nullptr)));
  EXPECT_EQ("<l>\n</l>\n", Text(document->GetFilteredXML("/l", 1, -1, 0, -1, "<r/>")));
}

TEST(XMLNodeXML, GetFilteredXML_can_page_the_node_itself) {
  Document document = Load("<list><row/><row/></list>");
  for (const char* path : {"", "/", "/list"}) {
    SCOPED_TRACE(path);
    EXPECT_EQ(
        "<list curPage = '1' numPages = '3'>\n  <row index='002'/>\n<row index='003'/>\n</list>\n",
        Filtered(Root(document), path));
  }
}

TEST(XMLNodeXML, GetFilteredXML_of_a_document_as_paged_node_pages_nothing) {
  Document document = Load(kPlain);
  LogCapture log;
  EXPECT_EQ(kPlain, Filtered(document, ""));
  EXPECT_EQ(kPlain, Filtered(document, "/"));
  EXPECT_EQ(Events(), log.Events());
}

TEST(XMLNodeXML, GetFilteredXML_of_a_node_elsewhere_pages_nothing) {
  Document document = Load(kPlain);
  LogCapture log;
  EXPECT_EQ("<q>x</q>\n", Filtered(At(document, {0, 1}), "/p/list"));
  EXPECT_EQ("<q>x</q>\n", Filtered(At(document, {0, 1}), "../list"));
  EXPECT_EQ(Events(), log.Events());
}

TEST(XMLNodeXML, GetFilteredXML_drops_the_reference_to_the_selected_node) {
  Document document = Load(kPlain);
  Filtered(document, "/p/list");
  EXPECT_EQ(1, At(document, {0, 0})->GetRefCount());
}

TEST(XMLNodeXML, GetFilteredXML_without_path_posts_nothing) {
  Document document = Load("<list curPage='8'/>");
  LogCapture log;
  EXPECT_EQ("<list curPage='8'/>\n", Filtered(document, nullptr));
  EXPECT_EQ(Events(), log.Events());
}

TEST(XMLNodeXML, GetFilteredXML_strips_stored_page_attributes_with_a_log_event_each) {
  const std::string stored = "<list curPage='8' numPages='9'>\n  <row/>\n</list>\n";
  Document document = Load(stored);
  LogCapture log;
  EXPECT_EQ(
      "<list curPage = '1' numPages = '3'>\n<row index='002'/>\n<row index='003'/>\n</list>\n",
      Filtered(document, "/list"));
  EXPECT_EQ(Events(2, Event(11, 10, kStripping, stored)), log.Events());
}

// Deliberate: when nothing matches, the text that goes with the log event is a string of its own
// that GetFilteredXML does not free. It belongs to the sink from then on.

TEST(XMLNodeXML, GetFilteredXML_that_matches_nothing_logs_and_writes_the_whole_node) {
  Document document = Load(kPlain);
  for (const char* path : {"/p/none", "none", "//", "%s%n"}) {
    SCOPED_TRACE(path);
    BodyKeeper log;
    EXPECT_EQ(kPlain, Filtered(document, path));
    EXPECT_EQ(Events{NoMatch(path, kPlain)}, log.GetEvents());
  }
}

TEST(XMLNodeXML, GetFilteredXML_leaves_one_string_to_the_log) {
  Document document = Load("<p/>");
  const long before = GetNumBSTRsAllocated();
  BodyKeeper log;
  Filtered(document, "/none");
  EXPECT_EQ(before + 1, GetNumBSTRsAllocated());
  EXPECT_EQ("<p/>\n", Text(log.Body()));
}

TEST(XMLNodeXML, GetFilteredXML_attaches_the_text_of_its_own_node_not_of_the_document) {
  Document document = Load(kPlain);
  BodyKeeper log;
  EXPECT_EQ("<q>x</q>\n", Filtered(At(document, {0, 1}), "/none"));
  EXPECT_EQ(Events{NoMatch("/none", "<q>x</q>\n")}, log.GetEvents());
}

TEST(XMLNodeXML, GetFilteredXML_matches_no_absolute_path_at_a_node_without_owner) {
  Node node(new IXMLDOMNode(nullptr, "p", nullptr, NODE_ELEMENT));
  BodyKeeper log;
  EXPECT_EQ("<p/>\n", Filtered(node, "/p"));
  EXPECT_EQ(Events{NoMatch("/p", "<p/>\n")}, log.GetEvents());
}

TEST(XMLNodeXML, GetFilteredXML_logs_a_malformed_path_and_then_that_nothing_matches) {
  Document document = Load("<p/>");
  BodyKeeper log;
  EXPECT_EQ("<p/>\n", Filtered(document, "/p["));
  EXPECT_EQ(
      (Events{Event(18, 3, "IXMLDOMNode::MatchQuery - unexpected termination while expecting ']'"),
              NoMatch("/p[", "<p/>\n")}),
      log.GetEvents());
}

TEST(XMLNodeXML, GetFilteredXML_logs_a_long_path_whole) {
  const std::string path(100000, 'x');
  Document document = Load("<p/>");
  BodyKeeper log;
  EXPECT_EQ("<p/>\n", Filtered(document, path.c_str()));
  EXPECT_TRUE(Events{NoMatch(path, "<p/>\n")} == log.GetEvents());
}

TEST(XMLNodeXML, An_exception_of_the_log_passes_through_GetFilteredXML) {
  Document document = Load("<list curPage='8'/>");
  RefusingLog log;
  EXPECT_EQ(kStripping, ThrownMessage([&] { Filtered(document, "/list"); }));
  EXPECT_EQ(1, Root(document)->GetRefCount());
}

TEST(XMLNodeXML, GetFilteredXML_without_memory_leaves_nothing_behind) {
  Document document = Load(kPlain);
  EXPECT_LT(0, CountFailingAllocations([&] { Filtered(document, "//row/../../list[row='']"); }));
  EXPECT_EQ(1, At(document, {0, 0})->GetRefCount());
}

// ---- The address decoration

TEST(XMLNodeXML, SetDispAddr_decorates_every_start_tag_of_every_entry_point) {
  Document document = Load("<p a='1'><q/></p>");
  IXMLDOMNode* const root = Root(document);
  char p[80];
  char q[80];
  std::snprintf(p, sizeof p, "<p  addr='%p'  refcount='1'", static_cast<void*>(root));
  std::snprintf(q, sizeof q, "<q  addr='%p'  refcount='1'", static_cast<void*>(At(root, {0})));
  SetDispAddr(true);
  EXPECT_TRUE(g_bDispAddr);
  const std::string plain = XmlOf(document);
  const std::string masked = Text(document->GetMaskedXML());
  const std::string filtered = Text(document->GetFilteredXML(nullptr, 0, 0, -1, -1, nullptr));
  SetDispAddr(false);
  EXPECT_FALSE(g_bDispAddr);
  EXPECT_EQ(std::string(p) + " a='1'>\n  " + q + "/>\n</p>\n", plain);
  EXPECT_EQ(std::string(p) + " a=''>  " + q + "></q>\n</p>\n", masked);
  EXPECT_EQ(plain, filtered);
  EXPECT_EQ("<p a='1'>\n  <q/>\n</p>\n", XmlOf(document));
}

TEST(XMLNodeXML, The_reference_that_GetFilteredXML_holds_is_counted_in_the_decoration) {
  Document document = Load("<p/>");
  char expected[80];
  std::snprintf(expected, sizeof expected, "<p  addr='%p'  refcount='2'/>\n",
                static_cast<void*>(Root(document)));
  SetDispAddr(true);
  const std::string filtered = Text(document->GetFilteredXML("/p", 1, 1, -1, -1, nullptr));
  SetDispAddr(false);
  EXPECT_EQ(expected, filtered);
}
