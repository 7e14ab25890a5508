#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <new>
#include <string>

#include "harness/AllocationFailure.h"
#include "harness/FailingCall.h"
#include "harness/Trees.h"

// Memory that is out at any point of a call that writes into a buffer.

namespace {

/// Makes each allocation of `call`, which writes into a buffer, fail. What has come into the buffer
/// by then has to be the beginning of the whole.
template <class Call>
void ExpectBeginnings(Call call) {
  CMemFile whole(1);
  call(whole);
  const std::string expected = whole.GetAsStr();
  bool isThrough = false;
  for (int allowed = 0; !isThrough; ++allowed) {
    CMemFile out(1);
    try {
      AllocationFailure limit(allowed);
      call(out);
      isThrough = true;
    } catch (const std::bad_alloc&) {
    }
    ASSERT_LE(out.m_uLength, expected.size());
    EXPECT_EQ(expected.substr(0, out.m_uLength), std::string(out.GetAsStr(), out.m_uLength));
  }
}

TEST(FailureReadingBuffer, Holds_the_xml_that_was_written_so_far) {
  Document document = Load(kDeepXml);
  ExpectBeginnings([&](CMemFile& out) {
    document->GetXMLHelper(out, 0, nullptr, 0, 0, -1, -1, nullptr, false, false, 0);
  });
}

// The elements from the 33rd below the top one on need memory for the way back up; their start tags
// are written before that is asked for.
TEST(FailureReadingBuffer, Holds_the_last_tag_before_memory_was_out) {
  if (!AllocationFailure::ReachesMalloc()) GTEST_SKIP();
  Document document = Load(Repeat("<a>", 40) + "<b/>" + Repeat("</a>", 40));
  const std::string whole = XmlOf(document);
  CMemFile out(4096);
  out.Write("\n", 1);
  EXPECT_THROW(
      {
        AllocationFailure limit(0);
        document->GetXMLHelper(out, 0, nullptr, 0, 0, -1, -1, nullptr, false, false, 0);
      },
      std::bad_alloc);
  std::size_t end = 0;
  for (int line = 0; line < 34; ++line) end = whole.find('\n', end) + 1;
  EXPECT_EQ("\n" + whole.substr(0, end), std::string(out.GetAsStr()));
}

// The text that was not in the buffer yet comes into it as far as there is memory.
TEST(FailureReadingBuffer, Is_filled_to_its_end_when_it_cannot_grow) {
  if (!AllocationFailure::ReachesMalloc()) GTEST_SKIP();
  Document document = Load("<r>" + Repeat("<a/>", 100) + "</r>");
  const std::string whole = XmlOf(document);
  CMemFile out(100);
  out.Write("\n", 1);
  EXPECT_THROW(
      {
        AllocationFailure limit(0);
        document->GetXMLHelper(out, 0, nullptr, 0, 0, -1, -1, nullptr, false, false, 0);
      },
      std::bad_alloc);
  EXPECT_EQ("\n" + whole.substr(0, 99), std::string(out.GetAsStr()));
}

TEST(FailureReadingBuffer, Holds_the_report_that_was_written_so_far) {
  Document document = Load(kDeepXml);
  ExpectBeginnings([&](CMemFile& out) {
    CompareXMLNodes(Root(document), At(document, {0, 1}), out, 0);
  });
}

TEST(FailureReadingBuffer, Holds_the_path_that_was_written_so_far) {
  Document document = Load(kDeepXml);
  const Node innermost(document->SelectSingleNode("//e"));
  ExpectBeginnings([&](CMemFile& out) { innermost->GetPathToNode(out); });
}

}  // namespace
