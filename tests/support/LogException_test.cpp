#include <gtest/gtest.h>
#include <xmldom/support/LogException.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "harness/LogCapture.h"
#include "harness/Trees.h"

namespace {

typedef std::vector<LoggedEvent> Events;
typedef std::unique_ptr<CLogException> Caught;

/// Runs `call` and takes over what it throws; null when it throws nothing.
Caught Catch(const std::function<void()>& call) {
  try {
    call();
  } catch (CLogException* exception) {
    return Caught(exception);
  }
  return Caught();
}

TEST(LogException, Keeps_copies_of_its_texts) {
  char where[] = "where";
  char message[] = "message";
  char detail[] = "detail";
  const CLogException exception(where, message, detail);
  where[0] = message[0] = detail[0] = '?';
  EXPECT_STREQ("where", exception.GetWhere());
  EXPECT_STREQ("message", exception.GetMessage());
  EXPECT_STREQ("detail", exception.GetDetail());
}

TEST(LogException, A_missing_detail_is_null) {
  const CLogException exception("where", "message", nullptr);
  EXPECT_EQ(nullptr, exception.GetDetail());
}

TEST(LogException, An_empty_detail_is_a_detail) {
  const CLogException exception("where", "message", "");
  EXPECT_STREQ("", exception.GetDetail());
}

TEST(LogException, Missing_texts_are_empty) {
  const CLogException exception(nullptr, nullptr, nullptr);
  EXPECT_STREQ("", exception.GetWhere());
  EXPECT_STREQ("", exception.GetMessage());
}

TEST(LogException, Exception_throws_a_pointer) {
  char detail[] = "<a/>\n";
  const Caught caught =
      Catch([&] { Exception("IXMLDOMNode::GetfirstChild", "Call failed", detail); });
  ASSERT_NE(nullptr, caught);
  EXPECT_STREQ("IXMLDOMNode::GetfirstChild", caught->GetWhere());
  EXPECT_STREQ("Call failed", caught->GetMessage());
  EXPECT_STREQ("<a/>\n", caught->GetDetail());
}

TEST(LogException, Exception_does_not_format) {
  const Caught caught = Catch([] { Exception("%s", "100%d", nullptr); });
  ASSERT_NE(nullptr, caught);
  EXPECT_STREQ("%s", caught->GetWhere());
  EXPECT_STREQ("100%d", caught->GetMessage());
  EXPECT_EQ(nullptr, caught->GetDetail());
}

// Code written for a platform whose function returns the pointer throws what it returns.
TEST(LogException, The_result_can_be_thrown) {
  const Caught caught = Catch([] { throw Exception("where", "message", nullptr); });
  ASSERT_NE(nullptr, caught);
  EXPECT_STREQ("where", caught->GetWhere());
}

TEST(LogException, ExceptionF_formats_the_message_and_has_no_detail) {
  const Caught caught =
      Catch([] { throw ExceptionF("where", "Call failed, invalid node type %d", 12); });
  ASSERT_NE(nullptr, caught);
  EXPECT_STREQ("where", caught->GetWhere());
  EXPECT_STREQ("Call failed, invalid node type 12", caught->GetMessage());
  EXPECT_EQ(nullptr, caught->GetDetail());
}

TEST(LogException, ExceptionF_takes_texts_of_any_length) {
  const std::string text(100000, 'x');
  const Caught caught = Catch([&] { throw ExceptionF("where", "%s.", text.c_str()); });
  ASSERT_NE(nullptr, caught);
  EXPECT_EQ(text + ".", caught->GetMessage());
}

TEST(LogException, Making_one_logs_nothing) {
  LogCapture log;
  ASSERT_NE(nullptr, Catch([] { throw Exception("where", "message", nullptr); }));
  EXPECT_EQ(Events(), log.Events());
}

TEST(LogException, LogMessage_posts_one_event) {
  const struct {
    const char* detail;
    const char* body;
  } rows[] = {
      {nullptr, "where: message"},
      {"", "where: message\n"},
      {"<a/>", "where: message\n<a/>"},
      {"%s%n", "where: message\n%s%n"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(Text(row.detail));
    LogCapture log;
    CLogException("where", "message", row.detail).LogMessage(25, 1, "title");
    EXPECT_EQ(Events{Event(25, 1, "title", row.body)}, log.Events());
  }
}

TEST(LogException, LogMessage_takes_the_given_type_and_severity) {
  LogCapture log;
  const CLogException exception("where", "message", nullptr);
  exception.LogMessage(18, 4, "first");
  exception.LogMessage(-1, 99, "second");
  EXPECT_EQ(
      (Events{Event(18, 4, "first", "where: message"), Event(-1, 99, "second", "where: message")}),
      log.Events());
}

}  // namespace
