#include <gtest/gtest.h>
#include <xmldom/support/Logger.h>

#include <cerrno>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include "harness/LogCapture.h"
#include "harness/Trees.h"

namespace {

typedef std::vector<LoggedEvent> Events;

const char* const kNoText = nullptr;
IXMLDOMNode* const kNoNode = nullptr;

void KeepContext(const CLogEvent&, void* context) { *static_cast<bool*>(context) = true; }

void Refuse(const CLogEvent&, void*) { throw std::runtime_error("refused"); }

TEST(Logger, PostLogEvent_hands_everything_to_the_sink) {
  LogCapture log;
  CLogger::PostLogEvent(LOG_TYPE_DOM, LOG_SEVERITY_WARNING, "title", "body");
  EXPECT_EQ(Events{Event(18, 4, "title", "body")}, log.Events());
}

TEST(Logger, PostLogEvent_does_not_format) {
  LogCapture log;
  CLogger::PostLogEvent(LOG_TYPE_DOM, LOG_SEVERITY_WARNING, "100%s", "%n%d");
  EXPECT_EQ(Events{Event(18, 4, "100%s", "%n%d")}, log.Events());
}

TEST(Logger, A_missing_body_is_no_empty_body) {
  LogCapture log;
  CLogger::PostLogEvent(LOG_TYPE_DATA, LOG_SEVERITY_TRACE, "title", kNoText);
  CLogger::PostLogEvent(LOG_TYPE_DATA, LOG_SEVERITY_TRACE, "title", "");
  EXPECT_EQ((Events{Event(11, 10, "title"), Event(11, 10, "title", "")}), log.Events());
}

TEST(Logger, A_missing_title_is_empty) {
  LogCapture log;
  CLogger::PostLogEvent(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, nullptr, "body");
  EXPECT_EQ(Events{Event(18, 3, "", "body")}, log.Events());
}

TEST(Logger, Every_number_is_a_type_and_a_severity) {
  const int numbers[] = {-1, 0, 99};
  for (int number : numbers) {
    LogCapture log;
    CLogger::PostLogEvent(static_cast<LogTypeEnum>(number), static_cast<LogSeverityEnum>(number),
                          "title", kNoText);
    EXPECT_EQ(Events{Event(number, number, "title")}, log.Events());
  }
}

TEST(Logger, The_names_stand_for_the_numbers_of_the_platform) {
  EXPECT_EQ(11, LOG_TYPE_DATA);
  EXPECT_EQ(18, LOG_TYPE_DOM);
  EXPECT_EQ(25, LOG_TYPE_EXCEPTION);
  EXPECT_EQ(26, LOG_TYPE_LEAKS);
  EXPECT_EQ(1, LOG_SEVERITY_ALERT);
  EXPECT_EQ(3, LOG_SEVERITY_ERROR);
  EXPECT_EQ(4, LOG_SEVERITY_WARNING);
  EXPECT_EQ(7, LOG_SEVERITY_DEBUG);
  EXPECT_EQ(10, LOG_SEVERITY_TRACE);
}

TEST(Logger, A_node_is_logged_as_its_xml) {
  Document document = Load("<a><b x='1'>t</b><c/></a>");
  LogCapture log;
  CLogger::PostLogEvent(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "title", Root(document));
  EXPECT_EQ(Events{Event(18, 3, "title", XmlOf(Root(document)))}, log.Events());
}

TEST(Logger, Logging_a_node_takes_no_reference) {
  Document document = Load("<a/>");
  LogCapture log;
  CLogger::PostLogEvent(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "title", Root(document));
  EXPECT_EQ(1, Root(document)->GetRefCount());
}

TEST(Logger, A_missing_node_gives_no_body) {
  LogCapture log;
  CLogger::PostLogEvent(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "title", kNoNode);
  EXPECT_EQ(Events{Event(18, 3, "title")}, log.Events());
}

/// While it lives, the log turns nodes into texts with another function than the library's.
class OtherRenderer {
 public:
  explicit OtherRenderer(NodeRenderer renderer) { CLogger::SetNodeRenderer(renderer); }
  ~OtherRenderer() {
    CLogger::SetNodeRenderer([](IXMLDOMNode* node) { return node->GetXML(); });
  }

  OtherRenderer(const OtherRenderer&) = delete;
  OtherRenderer& operator=(const OtherRenderer&) = delete;
};

TEST(Logger, SetNodeRenderer_says_how_a_node_is_logged) {
  Document document = Load("<a/>");
  LogCapture log;
  {
    const OtherRenderer names(
        [](IXMLDOMNode* node) { return SysAllocString(node->m_pszNodeName); });
    CLogger::PostLogEvent(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "title", Root(document));
    CLogger::PostLogEvent(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "title", kNoNode);
  }
  EXPECT_EQ((Events{Event(18, 3, "title", "a"), Event(18, 3, "title")}), log.Events());
}

TEST(Logger, A_node_that_the_renderer_gives_no_text_has_no_body) {
  Document document = Load("<a/>");
  LogCapture log;
  {
    const OtherRenderer nothing([](IXMLDOMNode*) -> BSTR { return nullptr; });
    CLogger::PostLogEvent(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "title", Root(document));
  }
  EXPECT_EQ(Events{Event(18, 3, "title")}, log.Events());
}

TEST(Logger, Without_renderer_a_node_has_no_body) {
  Document document = Load("<a/>");
  LogCapture log;
  {
    const OtherRenderer none(nullptr);
    CLogger::PostLogEvent(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "title", Root(document));
  }
  EXPECT_EQ(Events{Event(18, 3, "title")}, log.Events());
}

TEST(Logger, PostLogEventF_formats_the_title_and_has_no_body) {
  LogCapture log;
  CLogger::PostLogEventF(LOG_TYPE_DOM, LOG_SEVERITY_WARNING, "%s-%d-%c%%", "a", -7, 'x');
  CLogger::PostLogEventF(LOG_TYPE_DOM, LOG_SEVERITY_WARNING, "no arguments");
  EXPECT_EQ((Events{Event(18, 4, "a--7-x%"), Event(18, 4, "no arguments")}), log.Events());
}

TEST(Logger, PostLogEventFB_formats_the_title_from_what_follows_the_body) {
  LogCapture log;
  CLogger::PostLogEventFB(LOG_TYPE_LEAKS, LOG_SEVERITY_DEBUG, "%s-%d", "body%s", "a", -7);
  CLogger::PostLogEventFB(LOG_TYPE_LEAKS, LOG_SEVERITY_DEBUG, "no arguments", "body");
  EXPECT_EQ((Events{Event(26, 7, "a--7", "body%s"), Event(26, 7, "no arguments", "body")}),
            log.Events());
}

TEST(Logger, PostLogEventFB_may_have_no_body) {
  LogCapture log;
  CLogger::PostLogEventFB(LOG_TYPE_LEAKS, LOG_SEVERITY_DEBUG, "%d", nullptr, 1);
  EXPECT_EQ(Events{Event(26, 7, "1")}, log.Events());
}

TEST(Logger, Titles_are_never_cut) {
  const std::string text(100000, 'x');
  LogCapture log;
  CLogger::PostLogEventF(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "'%s'", text.c_str());
  CLogger::PostLogEventFB(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "'%s'", text.c_str(), text.c_str());
  EXPECT_EQ((Events{Event(18, 3, "'" + text + "'"), Event(18, 3, "'" + text + "'", text)}),
            log.Events());
}

TEST(Logger, PostBacktrace_posts_the_stack_of_the_caller) {
  LogCapture log;
  CLogger::PostBacktrace(LOG_TYPE_DOM, LOG_SEVERITY_WARNING, "title");
  ASSERT_EQ(1u, log.Events().size());
  const LoggedEvent& event = log.Events().front();
  EXPECT_EQ(Event(18, 4, "title", event.body), event);
  EXPECT_EQ(std::string::npos, event.body.find("PostBacktrace")) << event.body;
}

TEST(Logger, PostBacktrace_writes_one_frame_a_line) {
  LogCapture log;
  CLogger::PostBacktrace(LOG_TYPE_DOM, LOG_SEVERITY_WARNING, "title");
  ASSERT_EQ(1u, log.Events().size());
  const std::string& body = log.Events().front().body;
  ASSERT_FALSE(body.empty());
  EXPECT_EQ('\n', body.back());
  EXPECT_EQ(std::string::npos, body.find("\n\n"));
}

TEST(Logger, PostBacktrace_names_the_program_that_a_frame_is_in) {
  LogCapture log;
  CLogger::PostBacktrace(LOG_TYPE_DOM, LOG_SEVERITY_WARNING, "title");
  ASSERT_EQ(1u, log.Events().size());
  const std::string& body = log.Events().front().body;
  if (body.find("not available") != std::string::npos) GTEST_SKIP() << body;
  EXPECT_NE(std::string::npos, body.find(program_invocation_short_name)) << body;
}

TEST(Logger, The_sink_is_called_with_its_context) {
  bool called = false;
  CLogger::SetSink(KeepContext, &called);
  CLogger::PostLogEvent(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "title", kNoText);
  EXPECT_TRUE(called);
}

TEST(Logger, A_new_sink_replaces_the_old_one) {
  bool called = false;
  CLogger::SetSink(KeepContext, &called);
  LogCapture log;
  CLogger::PostLogEvent(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "title", kNoText);
  EXPECT_FALSE(called);
  EXPECT_EQ(1u, log.Events().size());
}

TEST(Logger, An_exception_of_the_sink_reaches_whoever_posts) {
  Document document = Load("<a/>");
  CLogger::SetSink(Refuse, nullptr);
  EXPECT_THROW(CLogger::PostLogEvent(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "", kNoText),
               std::runtime_error);
  EXPECT_THROW(CLogger::PostLogEvent(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "", Root(document)),
               std::runtime_error);
  EXPECT_THROW(CLogger::PostLogEventF(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "%d", 1),
               std::runtime_error);
  EXPECT_THROW(CLogger::PostLogEventFB(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "%d", "", 1),
               std::runtime_error);
  EXPECT_THROW(CLogger::PostBacktrace(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, ""), std::runtime_error);
}

TEST(Logger, Without_sink_events_go_to_standard_error) {
  EXPECT_EXIT(
      {
        CLogger::PostLogEvent(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "the title", "the body");
        std::_Exit(0);
      },
      testing::ExitedWithCode(0), "the title(.|\n)*the body");
}

TEST(Logger, Without_sink_an_event_may_have_no_body) {
  EXPECT_EXIT(
      {
        CLogger::PostLogEventF(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "title %d", 7);
        std::_Exit(0);
      },
      testing::ExitedWithCode(0), "title 7");
}

TEST(Logger, A_null_sink_restores_standard_error) {
  EXPECT_EXIT(
      {
        bool called = false;
        CLogger::SetSink(KeepContext, &called);
        CLogger::SetSink(nullptr, &called);
        CLogger::PostLogEvent(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "the title", kNoText);
        std::_Exit(called ? 1 : 0);
      },
      testing::ExitedWithCode(0), "the title");
}

}  // namespace
