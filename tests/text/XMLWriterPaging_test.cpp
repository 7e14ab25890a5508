#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <vector>

#include "harness/LogCapture.h"
#include "harness/RefusingLog.h"
#include "harness/Trees.h"
#include "harness/Writing.h"

// The writer's pages: one node of which only some children are written, numbered and filled up.

namespace {

const char kStripping[] =
    "IXMLDOMNode::GetXMLHelper - paged attributes already present in data class, stripping old "
    "values";

Writing Page(IXMLDOMNode* node, int first, int count, const char* padTemplate = nullptr) {
  Writing how;
  how.paged = node;
  how.first = first;
  how.count = count;
  how.padTemplate = padTemplate;
  return how;
}

Writing Pages(IXMLDOMNode* node, int current, int count) {
  Writing how = Page(node, 1, 9);
  how.currentPage = current;
  how.numPages = count;
  return how;
}

/// A list of `count` rows named row.
Document Rows(int count) { return Load("<list>" + Repeat("<row/>", count) + "</list>"); }

}  // namespace

// ---- Which children are written

TEST(XMLWriterPaging, The_children_of_the_page_are_written_and_numbered) {
  Document document = Rows(4);
  const struct {
    int first;
    int count;
    const char* written;
  } rows[] = {
      {1, 4,
       "<list>\n  <row index='001'/>\n  <row index='002'/>\n  <row index='003'/>\n"
       "  <row index='004'/>\n</list>\n"},
      {2, 2, "<list>\n  <row index='002'/>\n  <row index='003'/>\n</list>\n"},
      {4, 9, "<list>\n  <row index='004'/>\n</list>\n"},
      {-1, 3, "<list>\n  <row index='001'/>\n</list>\n"},
      {0, 2, "<list>\n  <row index='001'/>\n</list>\n"},
      {4, INT_MAX, "<list>\n  <row index='004'/>\n</list>\n"},
      {5, 2, "<list>\n</list>\n"},
      {1, 0, "<list>\n</list>\n"},
      {1, -1, "<list>\n</list>\n"},
      {-5, 2, "<list>\n</list>\n"},
      {INT_MAX, INT_MAX, "<list>\n</list>\n"},
      {INT_MIN, INT_MIN, "<list>\n</list>\n"},
      {INT_MIN, INT_MAX, "<list>\n</list>\n"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::to_string(row.first) + ", " + std::to_string(row.count));
    EXPECT_EQ(row.written, Write(document, Page(Root(document), row.first, row.count)));
  }
}

TEST(XMLWriterPaging, Texts_count_as_positions_and_are_all_written) {
  Document document = Load("<list>x</list>");
  Root(document)->AddTextChild("y");
  Node row(Root(document)->AddChild("row", nullptr));
  Root(document)->AddTextChild("z");
  Node last(Root(document)->AddChild("row", nullptr));
  EXPECT_EQ("<list>\n  x\n  y\n  z\n  <row index='003'/>\n</list>\n",
            Write(document, Page(Root(document), 2, 3)));
  EXPECT_EQ("<list>\n  x\n  y\n  z\n  <row index='005'/>\n</list>\n",
            Write(document, Page(Root(document), 4, 2)));
}

TEST(XMLWriterPaging, Only_the_children_of_the_paged_node_are_chosen_and_numbered) {
  Document document = Load("<p><list><row><c/><c/></row><row/></list><list><row/></list></p>");
  EXPECT_EQ(
      "<p>\n  <list>\n    <row index='001'>\n      <c/>\n      <c/>\n    </row>\n  </list>\n"
      "  <list>\n    <row/>\n  </list>\n</p>\n",
      Write(document, Page(At(document, {0, 0}), 1, 1)));
}

TEST(XMLWriterPaging, A_paged_node_that_is_not_written_changes_nothing) {
  Document document = Rows(2);
  Document other = Rows(1);
  Writing how = Page(Root(other), 2, 1, "<row/>");
  how.currentPage = 1;
  how.numPages = 1;
  EXPECT_EQ("<list>\n  <row/>\n  <row/>\n</list>\n", Write(document, how));
  how.paged = document;
  EXPECT_EQ("<list>\n  <row/>\n  <row/>\n</list>\n", Write(document, how));
}

TEST(XMLWriterPaging, Without_paged_node_the_other_numbers_mean_nothing) {
  Document document = Rows(1);
  Writing how = Page(nullptr, 5, 1, "<pad/>");
  how.currentPage = 1;
  how.numPages = 2;
  EXPECT_EQ("<list>\n  <row/>\n</list>\n", Write(document, how));
}

// ---- Placeholders

TEST(XMLWriterPaging, The_last_page_is_filled_up_with_rows_that_are_not_indented) {
  Document document = Rows(3);
  const struct {
    int first;
    int count;
    const char* written;
  } rows[] = {
      {3, 2, "<list>\n  <row index='003'/>\n<row index='004'/>\n</list>\n"},
      {1, 3, "<list>\n  <row index='001'/>\n  <row index='002'/>\n  <row index='003'/>\n</list>\n"},
      {5, 2, "<list>\n<row index='004'/>\n<row index='005'/>\n<row index='006'/>\n</list>\n"},
      {1, 1, "<list>\n  <row index='001'/>\n</list>\n"},
      {1, 0, "<list>\n</list>\n"},
      {1, -4, "<list>\n</list>\n"},
      {INT_MIN, INT_MIN, "<list>\n</list>\n"},
      {INT_MIN, INT_MAX, "<list>\n</list>\n"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::to_string(row.first) + ", " + std::to_string(row.count));
    EXPECT_EQ(row.written, Write(document, Page(Root(document), row.first, row.count, "<row/>")));
  }
}

TEST(XMLWriterPaging, Placeholders_follow_the_number_of_all_children) {
  Document document = Load("<list>x<row/></list>");
  EXPECT_EQ("<list>\n  x\n  <row index='002'/>\n<row index='003'/>\n</list>\n",
            Write(document, Page(Root(document), 1, 3, "<row/>")));
}

TEST(XMLWriterPaging, An_empty_node_is_filled_from_one_whatever_the_first_position) {
  Document document = Load("<p><list/></p>");
  IXMLDOMNode* const list = At(document, {0, 0});
  EXPECT_EQ("<list>\n<row index='001'/>\n<row index='002'/>\n</list>\n",
            Write(list, Page(list, 7, 2, "<row/>")));
  EXPECT_EQ("<p>\n  <list>\n<row index='001'/>\n</list>\n</p>\n",
            Write(document, Page(list, 1, 1, "<row/>")));
}

TEST(XMLWriterPaging, An_empty_node_without_rows_to_fill_stays_empty) {
  Document document = Load("<list/>");
  EXPECT_EQ("<list/>\n", Write(document, Page(Root(document), 1, 0, "<row/>")));
  EXPECT_EQ("<list/>\n", Write(document, Page(Root(document), 1, -1, "<row/>")));
  EXPECT_EQ("<list/>\n", Write(document, Page(Root(document), 1, 2, nullptr)));
  EXPECT_EQ("<list/>\n", Write(document, Page(nullptr, 1, 2, "<row/>")));
}

TEST(XMLWriterPaging, A_node_with_texts_alone_is_filled_from_one_behind_them) {
  Document document = Load("<p><list>x</list></p>");
  IXMLDOMNode* const list = At(document, {0, 0});
  EXPECT_EQ("<p>\n  <list>x<row index='001'/>\n</list>\n</p>\n",
            Write(document, Page(list, 4, 1, "<row/>")));
  list->AddTextChild("y");
  EXPECT_EQ("<p>\n  <list>\n    x\n    y\n<row index='001'/>\n  </list>\n</p>\n",
            Write(document, Page(list, 4, 1, "<row/>")));
  EXPECT_EQ("<p>\n  <list>\n    x\n    y\n  </list>\n</p>\n",
            Write(document, Page(list, 4, 0, "<row/>")));
}

TEST(XMLWriterPaging, Masked_pages_are_filled_too) {
  Document document = Load("<p><list/></p>");
  Writing how = Page(At(document, {0, 0}), 1, 2, "<row/>");
  how.masked = true;
  EXPECT_EQ("<p>  <list><row index='001'/>\n<row index='002'/>\n</list>\n</p>\n",
            Write(document, how));
  Document rows = Rows(1);
  how.paged = Root(rows);
  EXPECT_EQ("<list>  <row index='001'></row>\n<row index='002'/>\n</list>\n", Write(rows, how));
}

// ---- Page attributes

TEST(XMLWriterPaging, Page_attributes_are_written_when_both_are_there) {
  Document document = Load("<list a='1'/>");
  const struct {
    int current;
    int pages;
    const char* written;
  } rows[] = {
      {2, 3, "<list curPage = '2' numPages = '3' a='1'/>\n"},
      {0, 0, "<list curPage = '0' numPages = '0' a='1'/>\n"},
      {INT_MAX, 1, "<list curPage = '2147483647' numPages = '1' a='1'/>\n"},
      {-1, 3, "<list a='1'/>\n"},
      {2, -1, "<list a='1'/>\n"},
      {-1, -1, "<list a='1'/>\n"},
      {INT_MIN, INT_MIN, "<list a='1'/>\n"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::to_string(row.current) + " of " + std::to_string(row.pages));
    EXPECT_EQ(row.written, Write(document, Pages(Root(document), row.current, row.pages)));
  }
}

TEST(XMLWriterPaging, Page_attributes_go_to_the_paged_node_alone_behind_its_number) {
  Document document = Load("<p><list><row/></list></p>");
  Writing how = Pages(At(document, {0, 0}), 2, 3);
  EXPECT_EQ("<p>\n  <list curPage = '2' numPages = '3'>\n    <row index='001'/>\n  </list>\n</p>\n",
            Write(document, how));
  how.indexed = true;
  how.index = 4;
  EXPECT_EQ("<list index='004' curPage = '2' numPages = '3'>\n  <row index='001'/>\n</list>\n",
            Write(At(document, {0, 0}), how));
}

TEST(XMLWriterPaging, Page_attributes_are_not_masked) {
  Document document = Load("<list a='1'/>");
  Writing how = Pages(Root(document), 2, 3);
  how.masked = true;
  EXPECT_EQ("<list curPage = '2' numPages = '3' a=''></list>\n", Write(document, how));
}

TEST(XMLWriterPaging, A_page_is_written_as_a_whole) {
  Document document = Rows(4);
  Writing how = Page(Root(document), 3, 2, "<row/>");
  how.currentPage = 2;
  how.numPages = 2;
  EXPECT_EQ(
      "<list curPage = '2' numPages = '2'>\n  <row index='003'/>\n  <row index='004'/>\n"
      "</list>\n",
      Write(document, how));
}

TEST(XMLWriterPaging, Stored_page_attributes_are_left_out_and_logged_one_by_one) {
  Document document = Load("<list numPages='9' a='1' curPage='8' curpage='7' CurPage=''/>");
  const std::string stored = XmlOf(Root(document));
  LogCapture log;
  EXPECT_EQ("<list curPage = '2' numPages = '3' a='1' curpage='7' CurPage=''/>\n",
            Write(document, Pages(Root(document), 2, 3)));
  EXPECT_EQ(std::vector<LoggedEvent>(2, Event(11, 10, kStripping, stored)), log.Events());
  EXPECT_EQ(stored, XmlOf(Root(document)));
}

TEST(XMLWriterPaging, Stored_page_attributes_are_logged_when_masked_too) {
  Document document = Load("<list curPage='8'>text</list>");
  Writing how = Pages(Root(document), 2, 3);
  how.masked = true;
  LogCapture log;
  EXPECT_EQ("<list curPage = '2' numPages = '3'></list>\n", Write(document, how));
  EXPECT_EQ(
      (std::vector<LoggedEvent>{Event(11, 10, kStripping, "<list curPage='8'>text</list>\n")}),
      log.Events());
}

TEST(XMLWriterPaging, Stored_page_attributes_stay_where_no_new_ones_are_written) {
  const char* const xml = "<list curPage='8'>\n  <row numPages='9'/>\n</list>\n";
  Document document = Load(xml);
  LogCapture log;
  EXPECT_EQ(xml, Write(document));
  EXPECT_EQ("<list curPage='8'>\n  <row index='001' numPages='9'/>\n</list>\n",
            Write(document, Pages(Root(document), -1, 3)));
  EXPECT_TRUE(log.Events().empty());
}

TEST(XMLWriterPaging, An_exception_of_the_log_passes_through) {
  Document document = Load("<list curPage='8'/>");
  RefusingLog log;
  EXPECT_EQ(kStripping, ThrownMessage([&] { Write(document, Pages(Root(document), 2, 3)); }));
}

namespace {

/// A sink that is told the buffer that the writer writes into.
struct BufferReader {
  CMemFile* out;
  std::vector<std::string> seen;  // what the buffer held at each event
};

void ReadBuffer(const CLogEvent&, void* context) {
  BufferReader* reader = static_cast<BufferReader*>(context);
  reader->seen.push_back(reader->out->GetAsStr());
}

void MarkBuffer(const CLogEvent&, void* context) {
  static_cast<CMemFile*>(context)->WriteF("(event)");
}

void ThrowAnything(const CLogEvent&, void*) { throw 1; }

/// Sends events to a sink while it lives.
struct SinkScope {
  SinkScope(LogSink sink, void* context) { CLogger::SetSink(sink, context); }
  ~SinkScope() { CLogger::SetSink(nullptr, nullptr); }
};

void WriteTo(CMemFile& out, const IXMLDOMNode* node, const Writing& how) {
  node->GetXMLHelper(out, how.depth, how.paged, how.first, how.count, how.currentPage, how.numPages,
                     how.padTemplate, how.masked, how.indexed, how.index);
}

const char kBetweenStripped[] = "<p><list a='1' curPage='8' b='2' numPages='9' c='3'/></p>";
const char kBeforeFirst[] = "<p>\n  <list curPage = '2' numPages = '3' a='1'";
const char kBeforeSecond[] = "<p>\n  <list curPage = '2' numPages = '3' a='1' b='2'";

}  // namespace

TEST(XMLWriterPaging, An_event_finds_in_the_buffer_all_that_was_written_before_it) {
  Document document = Load(kBetweenStripped);
  CMemFile out(16);
  BufferReader reader = {&out, {}};
  SinkScope scope(ReadBuffer, &reader);
  WriteTo(out, document, Pages(At(document, {0, 0}), 2, 3));
  EXPECT_EQ((std::vector<std::string>{kBeforeFirst, kBeforeSecond}), reader.seen);
}

TEST(XMLWriterPaging, What_a_sink_writes_stands_where_the_event_was) {
  Document document = Load(kBetweenStripped);
  CMemFile out(16);
  SinkScope scope(MarkBuffer, &out);
  WriteTo(out, document, Pages(At(document, {0, 0}), 2, 3));
  EXPECT_EQ("<p>\n  <list curPage = '2' numPages = '3' a='1'(event) b='2'(event) c='3'/>\n</p>\n",
            std::string(out.GetAsStr()));
}

TEST(XMLWriterPaging, A_sink_that_throws_leaves_what_was_written) {
  Document document = Load(kBetweenStripped);
  CMemFile out(16);
  SinkScope scope(ThrowAnything, nullptr);
  EXPECT_THROW(WriteTo(out, document, Pages(At(document, {0, 0}), 2, 3)), int);
  EXPECT_EQ(kBeforeFirst, std::string(out.GetAsStr()));
}

// ---- Pages of trees in which a node has no owner

TEST(XMLWriterPaging, A_node_without_owner_outside_the_page_gives_the_usual_layout_too) {
  Document document = Load("<list><row/><row><a><b/></a></row></list>");
  document->m_nIndent = 7;
  At(document, {0, 1, 0, 0})->m_pOwnerDocument = nullptr;
  EXPECT_EQ("<list>\n  <row index='001'/>\n</list>\n", Write(document, Page(Root(document), 1, 1)));
}

TEST(XMLWriterPaging, Behind_an_event_a_node_without_owner_is_known_already) {
  Document document = Load("<p><list curPage='8'/><a/></p>");
  document->m_nIndent = 7;
  At(document, {0, 1})->m_pOwnerDocument = nullptr;
  CMemFile out(16);
  BufferReader reader = {&out, {}};
  SinkScope scope(ReadBuffer, &reader);
  WriteTo(out, document, Pages(At(document, {0, 0}), 2, 3));
  EXPECT_EQ((std::vector<std::string>{"<p>\n  <list curPage = '2' numPages = '3'"}), reader.seen);
  EXPECT_STREQ("<p>\n  <list curPage = '2' numPages = '3'/>\n  <a/>\n</p>\n", out.GetAsStr());
}
