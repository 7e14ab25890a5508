#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <new>
#include <ostream>
#include <string>
#include <vector>

#include "harness/AllocationFailure.h"
#include "harness/LogCapture.h"
#include "harness/NodeFacts.h"
#include "harness/RefusingLog.h"
#include "harness/Thrown.h"
#include "harness/Trees.h"
#include "harness/UnexpectedHandler.h"

// Edits at a path that are not done: what they log, in which order they look at what they are
// given, and what leaves them.

namespace {

int Replace(IXMLDOMNode* node, const char* path, const char* content) {
  return node->ReplaceChildAtXPath(path, content);
}

int Append(IXMLDOMNode* node, const char* path, const char* content) {
  return node->AppendChildAtXPath(path, content);
}

int Insert(IXMLDOMNode* node, const char* path, const char* content) {
  return node->InsertBeforeXPath(path, content);
}

int Remove(IXMLDOMNode* node, const char* path, const char*) {
  return node->RemoveChildAtXPath(path);
}

typedef int (*Edit)(IXMLDOMNode* node, const char* path, const char* content);

const char kXml[] = "<r v='1'><a/></r>";
const char kDocumentXml[] = "<r v='1'>\n  <a/>\n</r>\n";

/// An edit of a document that holds kXml, and the one event that it logs.
struct Row {
  const char* name;
  Edit edit;
  const char* path;
  const char* content;
  LoggedEvent event;
};

std::ostream& operator<<(std::ostream& out, const Row& row) { return out << row.name; }

const Row kRows[] = {
    {"replace, null path", Replace, nullptr, "<n/>",
     Event(11, 3, "IXMLDOMNode::ReplaceChildAtXPath called with NULL pcszXPath")},
    {"replace, all null", Replace, nullptr, nullptr,
     Event(11, 3, "IXMLDOMNode::ReplaceChildAtXPath called with NULL pcszXPath")},
    {"replace, null content", Replace, "/r", nullptr,
     Event(11, 3, "IXMLDOMNode::ReplaceChildAtXPath called with NULL pcszContent")},
    {"replace, null content comes before the path", Replace, "/x", nullptr,
     Event(11, 3, "IXMLDOMNode::ReplaceChildAtXPath called with NULL pcszContent")},
    {"replace nothing", Replace, "/x", "<n/>",
     Event(18, 3, "IXMLDOMNode::ReplaceChildAtXPath - can't resolve xpath /x")},
    {"replace nothing comes before the content", Replace, "/x", "<n>",
     Event(18, 3, "IXMLDOMNode::ReplaceChildAtXPath - can't resolve xpath /x")},
    {"replace, path that looks like a format", Replace, "/%s%n", "<n/>",
     Event(18, 3, "IXMLDOMNode::ReplaceChildAtXPath - can't resolve xpath /%s%n")},
    {"replace by nothing well-formed", Replace, "/r", "<n>",
     Event(18, 3, "IXMLDOMNode::ReplaceChildAtXPath - can't load replacement into DOM", "<n>")},
    {"replace by nothing", Replace, "/r", "",
     Event(18, 3, "IXMLDOMNode::ReplaceChildAtXPath - can't load replacement into DOM", "")},
    {"replace the root by nothing well-formed", Replace, "/", "<n>",
     Event(18, 3, "IXMLDOMNode::ReplaceChildAtXPath - can't load replacement into DOM", "<n>")},

    {"append, null path", Append, nullptr, "<n/>",
     Event(11, 3, "IXMLDOMNode::AppendChildAtXPath called with NULL pcszXPath")},
    {"append, all null", Append, nullptr, nullptr,
     Event(11, 3, "IXMLDOMNode::AppendChildAtXPath called with NULL pcszXPath")},
    {"append, null content", Append, "/r", nullptr,
     Event(11, 3, "IXMLDOMNode::AppendChildAtXPath called with NULL pcszContent")},
    {"append, null content comes before the path", Append, "/x", nullptr,
     Event(11, 3, "IXMLDOMNode::AppendChildAtXPath called with NULL pcszContent")},
    {"append to nothing", Append, "/x", "<n/>",
     Event(18, 3, "IXMLDOMNode::AppendChildAtXPath - can't resolve xpath /x", kDocumentXml)},
    {"append to nothing comes before the content", Append, "/x", "<n>",
     Event(18, 3, "IXMLDOMNode::AppendChildAtXPath - can't resolve xpath /x", kDocumentXml)},
    {"append, path that looks like a format", Append, "/%s%n", "<n/>",
     Event(18, 3, "IXMLDOMNode::AppendChildAtXPath - can't resolve xpath /%s%n", kDocumentXml)},
    {"append nothing well-formed", Append, "/r", "%s",
     Event(18, 3, "IXMLDOMNode::AppendChildAtXPath - can't load append string into DOM", "%s")},
    {"append nothing", Append, "/r", "",
     Event(18, 3, "IXMLDOMNode::AppendChildAtXPath - can't load append string into DOM", "")},
    {"append two roots to the root", Append, "/", "<n/><n/>",
     Event(18, 3, "IXMLDOMNode::AppendChildAtXPath - can't load append string into DOM",
           "<n/><n/>")},

    {"insert, null path", Insert, nullptr, "<n/>",
     Event(11, 3, "IXMLDOMNode::InsertBeforeXPath called with NULL pcszXPath")},
    {"insert, all null", Insert, nullptr, nullptr,
     Event(11, 3, "IXMLDOMNode::InsertBeforeXPath called with NULL pcszXPath")},
    {"insert, null content", Insert, "/r", nullptr,
     Event(11, 3, "IXMLDOMNode::InsertBeforeXPath called with NULL pcszContent")},
    {"insert, null content comes before the document", Insert, "/", nullptr,
     Event(11, 3, "IXMLDOMNode::InsertBeforeXPath called with NULL pcszContent")},
    {"insert before the document", Insert, "/", "<n/>",
     Event(18, 3, "IXMLDOMNode::InsertBeforeXPath - can't insert before document node, path = /",
           kDocumentXml)},
    {"insert before any root", Insert, "/*", "<n/>",
     Event(18, 3, "IXMLDOMNode::InsertBeforeXPath - can't insert before document node, path = /*",
           kDocumentXml)},
    {"insert before the document comes before the content", Insert, "/", "<n>",
     Event(18, 3, "IXMLDOMNode::InsertBeforeXPath - can't insert before document node, path = /",
           kDocumentXml)},
    {"insert before nothing", Insert, "/x", "<n/>",
     Event(18, 3, "IXMLDOMNode::InsertBeforeXPath - can't resolve xpath /x", kDocumentXml)},
    {"insert before nothing comes before the content", Insert, "/x", "<n>",
     Event(18, 3, "IXMLDOMNode::InsertBeforeXPath - can't resolve xpath /x", kDocumentXml)},
    {"insert nothing well-formed", Insert, "/r/a", "text",
     Event(18, 3, "IXMLDOMNode::InsertBeforeXPath - can't load append string into DOM", "text")},
    {"insert nothing", Insert, "/r/a", "",
     Event(18, 3, "IXMLDOMNode::InsertBeforeXPath - can't load append string into DOM", "")},

    {"remove, null path", Remove, nullptr, nullptr,
     Event(11, 3, "IXMLDOMNode::RemoveChildAtXPath called with NULL pcszXPath")},
    {"remove nothing", Remove, "/x", nullptr,
     Event(18, 3, "IXMLDOMNode::RemoveChildAtXPath - can't resolve xpath /x", kDocumentXml)},
    {"remove, path that looks like a format", Remove, "/%s%n", nullptr,
     Event(18, 3, "IXMLDOMNode::RemoveChildAtXPath - can't resolve xpath /%s%n", kDocumentXml)},
};

class XMLNodePathEditFailures : public testing::TestWithParam<Row> {
 protected:
  XMLNodePathEditFailures() : m_document(Load(kXml)), m_before(References(m_document)) {}

  int Run() { return GetParam().edit(m_document, GetParam().path, GetParam().content); }

  void ExpectUnchanged() {
    EXPECT_EQ(m_before, References(m_document));
    EXPECT_EQ("", NotOwnedBy(m_document, m_document));
    EXPECT_EQ("", AttributesNotOwnedBy(m_document, m_document));
  }

  Document m_document;
  std::string m_before;
};

INSTANTIATE_TEST_SUITE_P(All, XMLNodePathEditFailures, testing::ValuesIn(kRows));

TEST_P(XMLNodePathEditFailures, Give_0_and_one_event_and_change_nothing) {
  LogCapture log;
  EXPECT_EQ(0, Run());
  EXPECT_EQ(std::vector<LoggedEvent>{GetParam().event}, log.Events());
  ExpectUnchanged();
}

TEST_P(XMLNodePathEditFailures, Let_the_exception_of_a_log_through_and_change_nothing) {
  RefusingLog log;
  EXPECT_EQ(GetParam().event.title, ThrownMessage([&] { Run(); }));
  ExpectUnchanged();
}

// ---- The rest of what is logged

TEST(XMLNodePathEditFailuresLog, Shows_the_node_that_was_called_and_not_its_document) {
  Document document = Load("<r><a><b/></a></r>");
  IXMLDOMNode* node = At(document, {0, 0});
  LogCapture log;
  node->AppendChildAtXPath("x", "<n/>");
  node->InsertBeforeXPath("x", "<n/>");
  node->InsertBeforeXPath("/", "<n/>");
  node->RemoveChildAtXPath("x");
  ASSERT_EQ(4u, log.Events().size());
  for (const LoggedEvent& event : log.Events()) EXPECT_EQ("<a>\n  <b/>\n</a>\n", event.body);
}

TEST(XMLNodePathEditFailuresLog, Holds_long_paths_and_contents_whole) {
  Document document = Load("<a/>");
  const std::string path(100000, 'x');
  LogCapture log;
  document->ReplaceChildAtXPath(path.c_str(), "<n/>");
  document->ReplaceChildAtXPath("/", path.c_str());
  const std::vector<LoggedEvent> expected = {
      Event(18, 3, "IXMLDOMNode::ReplaceChildAtXPath - can't resolve xpath " + path),
      Event(18, 3, "IXMLDOMNode::ReplaceChildAtXPath - can't load replacement into DOM", path)};
  EXPECT_TRUE(expected == log.Events());
}

TEST(XMLNodePathEditFailuresLog, An_empty_document_has_nothing_at_its_root) {
  Document document = NewDocument();
  LogCapture log;
  EXPECT_EQ(0, document->ReplaceChildAtXPath("/", "<n/>"));
  EXPECT_EQ(0, document->AppendChildAtXPath("/", "<n/>"));
  EXPECT_EQ(0, document->RemoveChildAtXPath("/"));
  const std::vector<LoggedEvent> expected = {
      Event(18, 3, "IXMLDOMNode::ReplaceChildAtXPath - can't resolve xpath /"),
      Event(18, 3, "IXMLDOMNode::AppendChildAtXPath - can't resolve xpath /", ""),
      Event(18, 3, "IXMLDOMNode::RemoveChildAtXPath - can't resolve xpath /", "")};
  EXPECT_EQ(expected, log.Events());
}

// The content is not looked at.
TEST(XMLNodePathEditFailuresLog, A_target_that_lacks_the_parent_for_it_gives_0_without_a_word) {
  Document document = Load("<a/>");
  Node detached = NewElement(document, "n");
  LogCapture log;
  for (IXMLDOMNode* node : {static_cast<IXMLDOMNode*>(document), detached.Get()}) {
    SCOPED_TRACE(node->m_pszNodeName);
    const std::string before = References(node);
    EXPECT_EQ(0, node->ReplaceChildAtXPath("", "<n>"));
    EXPECT_EQ(0, node->InsertBeforeXPath("", "<n>"));
    EXPECT_EQ(0, node->RemoveChildAtXPath(""));
    EXPECT_EQ(before, References(node));
  }
  EXPECT_EQ(0, detached->ReplaceChildAtXPath("/", "<n>"));
  EXPECT_EQ(0, detached->RemoveChildAtXPath("/"));
  EXPECT_EQ("n1", References(detached));
  EXPECT_TRUE(log.Events().empty());
}

// ---- Targets that their parent does not list

class XMLNodePathEditFailuresAtAttribute : public testing::Test {
 protected:
  XMLNodePathEditFailuresAtAttribute()
      : m_document(Load("<r v='1'><a/></r>")), m_attribute(Root(m_document)->m_pFirstAttribute) {}

  void ExpectUnchanged() { EXPECT_EQ("Document Root1[r1(v1)[a1]]", References(m_document)); }

  Document m_document;
  IXMLDOMNode* m_attribute;
};

const char kNotListed[] = "IXMLDOMNode::get_previousSibling: Call failed, no previous sibling";

TEST_F(XMLNodePathEditFailuresAtAttribute, Replacing_logs_the_exception_and_throws_it_on) {
  LogCapture log;
  EXPECT_EQ(kNotListed, Thrown([&] { m_attribute->ReplaceChildAtXPath("/", "<n v='1'/>"); }));
  EXPECT_EQ(
      (std::vector<LoggedEvent>{Event(25, 1, "IXMLDOMNode::ReplaceChildAtXPath", kNotListed)}),
      log.Events());
  ExpectUnchanged();
}

TEST_F(XMLNodePathEditFailuresAtAttribute, Replacing_throws_what_the_log_throws_instead) {
  const long blocks = HeapBlocks();
  {
    RefusingLog log;
    EXPECT_EQ("IXMLDOMNode::ReplaceChildAtXPath",
              ThrownMessage([&] { m_attribute->ReplaceChildAtXPath("/", "<n v='1'/>"); }));
  }
  EXPECT_EQ(blocks, HeapBlocks()) << "the exception that was to be thrown on is left behind";
  ExpectUnchanged();
}

// Deliberate: the exception leaves with the reference of the call taken.
TEST_F(XMLNodePathEditFailuresAtAttribute, Removing_throws_without_a_word_and_keeps_a_reference) {
  LogCapture log;
  EXPECT_EQ(kNotListed, Thrown([&] { m_attribute->RemoveChildAtXPath("/"); }));
  EXPECT_TRUE(log.Events().empty());
  EXPECT_EQ("Document Root1[r1(v2)[a1]]", References(m_document));
  m_attribute->RealRelease();
}

TEST_F(XMLNodePathEditFailuresAtAttribute, Replacing_gives_back_the_content_that_it_has_taken_out) {
  const int before = IXMLDOMNode::m_iObjCount;
  LogCapture log;
  EXPECT_EQ(kNotListed, Thrown([&] { m_attribute->ReplaceChildAtXPath("/", "<n><m/></n>"); }));
  EXPECT_EQ(before, IXMLDOMNode::m_iObjCount);
}

// A place that is not found is no failure of the insertion.
TEST_F(XMLNodePathEditFailuresAtAttribute, Inserting_gives_1_and_inserts_nothing) {
  LogCapture log;
  EXPECT_EQ(1, m_attribute->InsertBeforeXPath("", "<n v='1'/>"));
  EXPECT_TRUE(log.Events().empty());
  ExpectUnchanged();
}

TEST_F(XMLNodePathEditFailuresAtAttribute, Appending_adds_a_child_to_the_attribute) {
  EXPECT_EQ(1, m_attribute->AppendChildAtXPath("/", "<n v='1'/>"));
  EXPECT_EQ("Document Root1[r1(v1[n1(v1)])[a1]]", References(m_document));
}

// ---- Exceptions that may not leave

template <class T>
void Throw(const CLogEvent&, void*) {
  throw T();
}

struct AnyException {};

const struct {
  const char* name;
  Edit edit;
} kEdits[] = {{"replace", Replace}, {"append", Append}, {"insert", Insert}, {"remove", Remove}};

TEST(XMLNodePathEditFailuresDeathTest, Any_other_exception_ends_the_program) {
  const LogSink sinks[] = {Throw<int>, Throw<std::bad_alloc>, Throw<AnyException>};
  for (LogSink sink : sinks) {
    EXPECT_DEATH(
        {
          Document document = Load(kXml);
          CLogger::SetSink(sink, nullptr);
          Replace(document, "/x", "<n/>");
        },
        "terminate called");
  }
  for (const auto& row : kEdits) {
    SCOPED_TRACE(row.name);
    EXPECT_DEATH(
        {
          Document document = Load(kXml);
          CLogger::SetSink(Throw<int>, nullptr);
          row.edit(document, "/x", "<n/>");
        },
        "terminate called after throwing an instance of 'int'");
  }
}

TEST(XMLNodePathEditFailuresUnexpected,
     Any_other_exception_ends_in_the_handler_with_all_given_back) {
  UnexpectedHandler handler;
  for (const auto& row : kEdits) {
    SCOPED_TRACE(row.name);
    Document document = Load(kXml);
    CLogger::SetSink(Throw<AnyException>, nullptr);
    EXPECT_TRUE(handler.Catches([&] { row.edit(document, "/x", "<n/>"); }));
    EXPECT_TRUE(handler.Catches([&] { row.edit(document, nullptr, "<n/>"); }));
    CLogger::SetSink(nullptr, nullptr);
    EXPECT_EQ("Document Root1[r1(v1)[a1]]", References(document));
  }
}

}  // namespace
