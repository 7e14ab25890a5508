#include <gtest/gtest.h>
#include <tools/document/LossCheck.h>
#include <xmldom/text/Escaping.h>

#include <cstdio>
#include <map>
#include <set>
#include <string>

#include "tool/ParserEvents.h"
#include "tool/RandomText.h"
#include "tool/WrittenForm.h"

// What holds for any text: many small ones, made at random.

namespace {

using tool::FindLoss;
using tool::LossReport;
using tool::Surroundings;

const int kTexts = 40000;

class LosslessProperty : public testing::TestWithParam<unsigned int> {
 protected:
  void SetUp() override { std::printf("seed %u, %d texts\n", GetParam(), kTexts); }
};

INSTANTIATE_TEST_SUITE_P(Seeds, LosslessProperty, testing::Values(20261121u, 7u));

// Reasons that are given also where a parser sees no difference, because a reader of the file does.
bool IsCautious(const std::string& reason) {
  for (const char* part : {"comment", "processing instruction", "CDATA", "entity", "encoding",
                           "document type", "xml:space"}) {
    if (reason.find(part) != std::string::npos) return true;
  }
  return false;
}

TEST_P(LosslessProperty, What_is_called_lossless_is_given_back_and_what_is_called_lossy_is_not) {
  RandomText random(GetParam());
  int lossless = 0;
  int large = 0;  // lossless, with more than a few elements
  int lucky = 0;  // what was lost is the indentation that the written form adds
  std::map<std::string, int> reasons;
  for (int i = 0; i < kTexts; ++i) {
    const std::string text = random.Document();
    const std::string written = WrittenForm(text);
    if (written.empty()) continue;
    const LossReport report = FindLoss(text, Surroundings::kKept);
    if (report.reason == nullptr) {
      ++lossless;
      const auto events = ParserEvents(text);
      ASSERT_EQ(events, ParserEvents(written)) << text;
      if (events.size() > 10) ++large;
      ASSERT_EQ(nullptr, FindLoss(written, Surroundings::kKept).reason) << text;
      ASSERT_EQ(written, WrittenForm(written)) << text;
    } else {
      ++reasons[report.reason];
      ASSERT_LT(report.offset, text.size()) << text;
      if (!IsCautious(report.reason) && ParserEvents(text) == ParserEvents(written)) ++lucky;
    }
  }
  EXPECT_LT(kTexts / 10, lossless);
  EXPECT_LT(kTexts / 200, large);
  EXPECT_GT(kTexts / 1000, lucky);
  EXPECT_LE(12u, reasons.size());
  for (const auto& reason : reasons) EXPECT_LT(20, reason.second) << reason.first;
}

TEST_P(LosslessProperty, What_is_written_of_a_lossy_text_is_well_formed) {
  RandomText random(GetParam());
  int written = 0;
  for (int i = 0; i < kTexts; ++i) {
    const std::string text = random.Document();
    const std::string form = WrittenForm(text);
    if (form.empty()) continue;
    ++written;
    const auto events = ParserEvents(form);
    ASSERT_NE("not well-formed", events.back()) << text;
  }
  EXPECT_LT(kTexts / 2, written);
}

TEST_P(LosslessProperty, What_is_escaped_is_read_as_it_was_and_kept) {
  RandomText random(GetParam());
  std::set<std::string> seen;
  for (int i = 0; i < kTexts; ++i) {
    const std::string text = random.Plain();
    if (!seen.insert(text).second) continue;
    const std::string document = "<a>" + xmldom::EscapeText(text).text + "</a>";
    const std::string event = "text " + text;
    const auto events = ParserEvents(document);
    if (text.empty()) {
      ASSERT_EQ(2u, events.size());
    } else {
      ASSERT_EQ(3u, events.size()) << document;
      ASSERT_EQ(event, events[1]) << document;
    }
    ASSERT_EQ(nullptr, FindLoss(document, Surroundings::kDropped).reason) << document;
  }
  EXPECT_LT(1000u, seen.size());
}

TEST_P(LosslessProperty, What_is_escaped_as_attribute_is_read_as_it_was) {
  RandomText random(GetParam());
  for (int i = 0; i < kTexts; ++i) {
    const std::string value = random.Plain();
    const std::string document = "<a b='" + xmldom::EscapeAttribute(value).text + "'/>";
    const auto events = ParserEvents(document);
    ASSERT_EQ("begin a b=" + value + ";", events.front()) << document;
    const bool hasBreak = value.find_first_of("\t\r\n") != value.npos;
    ASSERT_EQ(hasBreak, FindLoss(document, Surroundings::kDropped).reason != nullptr) << document;
  }
}

}  // namespace
