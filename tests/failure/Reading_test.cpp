#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <cstdlib>
#include <new>
#include <string>

#include "harness/AllocationFailure.h"
#include "harness/FailingCall.h"
#include "harness/Trees.h"

// Memory that is out at any point of a call that reads a tree.

namespace {

void Drop(BSTR text) { SysFreeString(text); }

void Drop(CRefCountedObject* object) {
  if (object != nullptr) object->RealRelease();
}

/// While it lives, the log frees the text of each event, which has to be a string that is its own.
class BodyFreeingLog {
 public:
  BodyFreeingLog() { CLogger::SetSink(FreeBody, nullptr); }
  ~BodyFreeingLog() { CLogger::SetSink(nullptr, nullptr); }

  BodyFreeingLog(const BodyFreeingLog&) = delete;
  BodyFreeingLog& operator=(const BodyFreeingLog&) = delete;

 private:
  static void FreeBody(const CLogEvent& event, void*) {
    BSTR body = const_cast<char*>(event.body);
    SysFreeString(body);
  }
};

const FailingCall kSelecting[] = {
    {"SelectNodes",
     [](IXMLDOMDocument2* document) { Drop(document->SelectNodes("/r/a[@k='1']")); }},
    {"SelectNodes, everywhere",
     [](IXMLDOMDocument2* document) { Drop(document->SelectNodes("//d/*")); }},
    {"SelectNodes, of a wrapped path",
     [](IXMLDOMDocument2* document) { Drop(document->SelectNodes(_bstr_t("//b"))); }},
    {"selectNodes2",
     [](IXMLDOMDocument2* document) {
       char path[] = "//b";
       IXMLDOMNodeList* list = nullptr;
       document->selectNodes2(path, &list);
       Drop(list);
     }},
    {"SelectSingleNode",
     [](IXMLDOMDocument2* document) { Drop(document->SelectSingleNode("//e[@f='3']")); }},
    {"SelectSingleNode, more steps and segments than have room without the heap",
     [](IXMLDOMDocument2* document) {
       Drop(document->SelectSingleNode("/r/././././d/e[@f='3'][../a/b/c/d/e='1']"));
     }},
    {"MatchQuery, more segments than have room without the heap",
     [](IXMLDOMDocument2* document) { document->MatchQuery("r[a/b/c/d/e/f='1']"); }},
    {"MatchesSubquery, more segments than have room without the heap",
     [](IXMLDOMDocument2* document) { document->MatchesSubquery("r/a/b/c/d/e='1'"); }},
    {"SelectSingleNode, up and down",
     [](IXMLDOMDocument2* document) { Drop(document->SelectSingleNode("//b/../../c")); }},
    {"SelectSingleNode, nothing",
     [](IXMLDOMDocument2* document) { Drop(document->SelectSingleNode("//d/x[b='&amp;']")); }},
    {"SelectSingleNode, malformed",
     [](IXMLDOMDocument2* document) { Drop(document->SelectSingleNode("//a[@k='1")); }},
    {"selectSingleNode2",
     [](IXMLDOMDocument2* document) {
       IXMLDOMNode* node = nullptr;
       document->selectSingleNode2("/r/a/b", &node);
       Drop(node);
     }},
    {"get_childNodes",
     [](IXMLDOMDocument2* document) {
       IXMLDOMNodeList* list = nullptr;
       Root(document)->get_childNodes(&list);
       Drop(list);
     }},
    {"get_attributes",
     [](IXMLDOMDocument2* document) {
       IXMLDOMNamedNodeMap* map = nullptr;
       Root(document)->get_attributes(&map);
       Drop(map);
     }},
};

const FailingCall kWriting[] = {
    {"GetXML", [](IXMLDOMDocument2* document) { Drop(document->GetXML()); }},
    {"Getxml", [](IXMLDOMDocument2* document) { document->Getxml(); }},
    {"GetMaskedXML", [](IXMLDOMDocument2* document) { document->GetMaskedXML(); }},
    {"GetFilteredXML",
     [](IXMLDOMDocument2* document) {
       document->GetFilteredXML("/r/a[b='y']", 2, 4, 1, 2, "<row/>");
     }},
    {"GetFilteredXML, nothing",
     [](IXMLDOMDocument2* document) {
       // The event is longer than the memory that the log begins with.
       static const std::string path = "/" + std::string(300, 'n');
       const BodyFreeingLog log;
       document->GetFilteredXML(path.c_str(), 2, 4, 1, 2, "<row/>");
     }},
    {"text as BSTR", [](IXMLDOMDocument2* document) { Drop(document->GetTextAsBSTR()); }},
    {"text on the heap", [](IXMLDOMDocument2* document) { std::free(document->GetTextAsStr()); }},
    {"text that does not fit",
     [](IXMLDOMDocument2* document) {
       char buffer[4];
       document->GetStringValue(buffer, sizeof buffer);
     }},
    {"value",
     [](IXMLDOMDocument2* document) {
       _variant_t value;
       Root(document)->m_pFirstChild->get_nodeValue(&value);
     }},
    {"typed value",
     [](IXMLDOMDocument2* document) {
       _variant_t value("old");
       Root(document)->get_nodeTypedValue(&value);
     }},
    {"type name", [](IXMLDOMDocument2* document) { Drop(document->GetNodeTypeString()); }},
    {"path",
     [](IXMLDOMDocument2* document) {
       IXMLDOMNode* node = At(document, {0, 4});
       while (node->m_pFirstChild != nullptr) node = node->m_pFirstChild;
       CMemFile out(4);
       node->GetPathToNode(out);
     }},
    {"leak report", [](IXMLDOMDocument2*) { CXML::CheckLeaks("here"); }},
};

const FailingCall kComparing[] = {
    {"equal trees",
     [](IXMLDOMDocument2* document) {
       CMemFile report(4);
       CompareXMLNodes(document, document, report, 0);
     }},
    {"trees that differ",
     [](IXMLDOMDocument2* document) {
       CMemFile report(4);
       CompareXMLNodes(At(document, {0, 1}), At(document, {0, 2}), report, 0);
     }},
    {"a missing tree",
     [](IXMLDOMDocument2* document) {
       CMemFile report(4);
       CompareXMLNodes(document, nullptr, report, 0);
     }},
};

class FailureReading : public testing::TestWithParam<FailingCall> {};

TEST_P(FailureReading, Of_each_allocation_leaves_the_tree_as_it_was_and_nothing_behind) {
  ExpectWholeTreeAfterEachFailure(GetParam(), FailingCall::KEEPS_TREE);
}

INSTANTIATE_TEST_SUITE_P(Selecting, FailureReading, testing::ValuesIn(kSelecting));
INSTANTIATE_TEST_SUITE_P(Writing, FailureReading, testing::ValuesIn(kWriting));
INSTANTIATE_TEST_SUITE_P(Comparing, FailureReading, testing::ValuesIn(kComparing));

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
