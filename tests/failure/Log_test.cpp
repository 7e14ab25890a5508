#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <cstdlib>
#include <ostream>
#include <string>

#include "harness/AllocationFailure.h"
#include "harness/Balance.h"
#include "harness/EventBody.h"
#include "harness/ExpatVersion.h"
#include "harness/NodeFacts.h"
#include "harness/StdoutCapture.h"
#include "harness/Trees.h"

// A log that throws at any of its events: the exception passes through the call, what is left can
// be written and released, and nothing is left behind.

namespace {

struct AnyException {};

/// While it lives, the log throws an Exception at one of its events, the first being 0.
template <class Exception>
class ThrowingLog {
 public:
  explicit ThrowingLog(int event) : m_event(event), m_hasThrown(false) {
    CLogger::SetSink(Count, this);
  }
  ~ThrowingLog() { CLogger::SetSink(nullptr, nullptr); }

  ThrowingLog(const ThrowingLog&) = delete;
  ThrowingLog& operator=(const ThrowingLog&) = delete;

  bool HasThrown() const { return m_hasThrown; }

 private:
  static void Count(const CLogEvent& event, void* context) {
    FreeOwnBody(event);
    ThrowingLog* log = static_cast<ThrowingLog*>(context);
    if (log->m_event-- != 0) return;
    log->m_hasThrown = true;
    throw Exception();
  }

  int m_event;
  bool m_hasThrown;
};

/// A call on a document that logs something.
struct Row {
  const char* name;
  void (*run)(IXMLDOMDocument2* document);
};

std::ostream& operator<<(std::ostream& out, const Row& row) { return out << row.name; }

void Drop(BSTR text) { SysFreeString(text); }

void Drop(CRefCountedObject* object) {
  if (object != nullptr) object->RealRelease();
}

const Row kRows[] = {
    {"SetValue", [](IXMLDOMDocument2* document) { document->SetValue("new"); }},
    {"GetTextAsBSTR", [](IXMLDOMDocument2* document) { Drop(document->GetTextAsBSTR()); }},
    {"GetTextAsStr", [](IXMLDOMDocument2* document) { std::free(document->GetTextAsStr()); }},
    {"get_text",
     [](IXMLDOMDocument2* document) {
       BSTR text = nullptr;
       document->get_text(&text);
       Drop(text);
     }},
    {"GetStringValue",
     [](IXMLDOMDocument2* document) {
       char buffer[3];
       document->GetStringValue(buffer, sizeof buffer);
     }},
    {"get_nodeTypedValue",
     [](IXMLDOMDocument2* document) {
       _variant_t value("old");
       Root(document)->get_nodeTypedValue(&value);
     }},
    {"MatchQuery of null", [](IXMLDOMDocument2* document) { Root(document)->MatchQuery(nullptr); }},
    {"SelectNodes, malformed",
     [](IXMLDOMDocument2* document) { Drop(document->SelectNodes("//a[b='1")); }},
    {"SelectNodes, by text",
     [](IXMLDOMDocument2* document) { Drop(document->SelectNodes("//r[a='1']")); }},
    {"SelectSingleNode, malformed",
     [](IXMLDOMDocument2* document) { Drop(document->SelectSingleNode("//a[b='1")); }},
    {"SelectSingleNode, by text",
     [](IXMLDOMDocument2* document) { Drop(document->SelectSingleNode("//r[a='1']")); }},
    {"selectNodes2",
     [](IXMLDOMDocument2* document) {
       char path[] = "//r[a='1']";
       IXMLDOMNodeList* list = nullptr;
       document->selectNodes2(path, &list);
       Drop(list);
     }},
    {"GetFilteredXML, page attributes",
     [](IXMLDOMDocument2* document) { document->GetFilteredXML("/r", 1, 1, 3, 4, nullptr); }},
    {"GetFilteredXML, a path that matches nothing",
     [](IXMLDOMDocument2* document) { document->GetFilteredXML("//none", 1, 1, 3, 4, nullptr); }},
    {"a load that is stopped",
     [](IXMLDOMDocument2* document) {
       static const std::string xml = [] {
         std::string entities = "<!ENTITY e0 'text'>";
         for (int i = 1; i <= 1000; ++i) {
           entities += "<!ENTITY e" + std::to_string(i) + " '&e" + std::to_string(i - 1) + ";'>";
         }
         return "<!DOCTYPE a [" + entities + "]><a/>";
       }();
       const ExpatVersion recursing(2, 6, 4);
       document->loadXML(xml.c_str());
     }},
    {"SetDebugEntities", [](IXMLDOMDocument2*) { SetDebugEntities(true); }},
    {"SetDebugXPATH", [](IXMLDOMDocument2*) { SetDebugXPATH(false); }},
    {"CheckLeaks", [](IXMLDOMDocument2*) { CXML::CheckLeaks("here"); }},
};

/// A document with page attributes, and with references that nobody knows.
Document NewSample() {
  Document document = Load("<r curPage='1' numPages='2'><a k='1'><b/><b/></a><a><c/></a><a/></r>");
  for (int i = 0; i < 3; ++i) At(document, {0, i})->AddTextChild("&unknown; and &others;");
  return document;
}

/// Runs a call with a log that throws at an event. Result: whether it has.
template <class Exception>
bool RunWith(int event, const Row& row, IXMLDOMDocument2* document) {
  StdoutCapture silence;
  ThrowingLog<Exception> log(event);
  try {
    row.run(document);
  } catch (const Exception&) {
  }
  return log.HasThrown();
}

// A CLogException* has nothing to be freed here: the log throws null.
template <class Exception>
void ThrowAtEach(const Row& row) {
  int event = 0;
  for (bool hasThrown = true; hasThrown && !testing::Test::HasFailure(); ++event) {
    SCOPED_TRACE(event);
    const Balance balance = Balance::Now();
    const long blocks = HeapBlocks();
    const int nodesBefore = IXMLDOMNode::m_iObjCount;
    {
      Document document = NewSample();
      hasThrown = RunWith<Exception>(event, row, document);
      EXPECT_EQ("", Faults(document, nodesBefore));
      XmlOf(document);
    }
    EXPECT_EQ("", Balance::Now().ChangesSince(balance));
    EXPECT_EQ(blocks, HeapBlocks());
  }
  EXPECT_LT(1, event) << "nothing was logged";
}

class FailureLog : public testing::TestWithParam<Row> {
 protected:
  // What is allocated once for the whole process is so before anything is counted.
  void SetUp() override { RunWith<AnyException>(-1, GetParam(), NewSample()); }
};

TEST_P(FailureLog, Passes_a_log_exception_through_and_leaves_nothing_behind) {
  ThrowAtEach<CLogException*>(GetParam());
}

TEST_P(FailureLog, Passes_any_other_exception_through_and_leaves_nothing_behind) {
  ThrowAtEach<AnyException>(GetParam());
}

INSTANTIATE_TEST_SUITE_P(All, FailureLog, testing::ValuesIn(kRows));

}  // namespace
