#include <gtest/gtest.h>
#include <tools/command/Trouble.h>
#include <tools/document/SourceMap.h>
#include <tools/io/Output.h>
#include <xmldom/support/LogException.h>

#include <cerrno>
#include <functional>
#include <new>
#include <ostream>
#include <stdexcept>
#include <string>

// What becomes of the exceptions of work on a file: a message and an exit status.

namespace {

using tool::ExitStatus;
using tool::SayTrouble;

struct Row {
  std::function<ExitStatus()> work;
  ExitStatus status;
  const char* message;
};

/// How a row is named when its case fails.
void PrintTo(const Row& row, std::ostream* out) { *out << row.message; }

class TroubleRows : public testing::TestWithParam<Row> {};

INSTANTIATE_TEST_SUITE_P(
    Rows, TroubleRows,
    testing::Values(Row{[] { return ExitStatus::kNo; }, ExitStatus::kNo, ""},
                    Row{[]() -> ExitStatus { throw Exception("Node::Load", "no parser", nullptr); },
                        ExitStatus::kTrouble, "xmldom: a.xml: Node::Load: no parser\n"},
                    Row{[]() -> ExitStatus { throw std::length_error("basic_string"); },
                        ExitStatus::kTrouble, "xmldom: a.xml: the result is too large\n"},
                    Row{[]() -> ExitStatus { throw tool::SourceMapError(3, "no attribute"); },
                        ExitStatus::kTrouble, "xmldom: a.xml: no attribute\n"},
                    Row{[]() -> ExitStatus { throw std::bad_alloc(); }, ExitStatus::kTrouble,
                        "xmldom: a.xml: out of memory\n"}));

TEST_P(TroubleRows, Are_said_and_make_the_exit_status) {
  testing::internal::CaptureStderr();
  const ExitStatus status = SayTrouble("a.xml", GetParam().work);
  EXPECT_STREQ(GetParam().message, testing::internal::GetCapturedStderr().c_str());
  EXPECT_EQ(GetParam().status, status);
}

TEST(Trouble, Failed_write_ends_the_tool_and_not_the_work_on_one_file) {
  const auto work = []() -> ExitStatus { throw tool::OutputError(ENOSPC); };
  EXPECT_THROW(SayTrouble("a.xml", work), tool::OutputError);
}

}  // namespace
