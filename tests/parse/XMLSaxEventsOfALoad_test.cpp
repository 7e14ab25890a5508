// What a log function may do in the event of a load that the builder refuses: everything, since the
// load is over by then. The address sanitizer shows a library that goes on with what is gone.

#include <gtest/gtest.h>
#include <unistd.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include <climits>
#include <functional>
#include <ostream>
#include <string>

#include "harness/CompactXml.h"
#include "harness/ExpatVersion.h"
#include "harness/HugeText.h"
#include "harness/LoadOutcome.h"
#include "harness/RefusingLog.h"
#include "harness/TemporaryFile.h"
#include "harness/Trees.h"

namespace {

/// Entities that nest too deep for the parser in use, and a tree that is never reached.
std::string ChainOfEntities() {
  std::string xml = "<!DOCTYPE a [<!ENTITY e0 ''>";
  for (int i = 1; i < 300; ++i) {
    xml += "<!ENTITY e" + std::to_string(i) + " '&e" + std::to_string(i - 1) + ";'>";
  }
  return xml + "]><a>&e1;</a>";
}

LoadOutcome LoadChainFromText(IXMLDOMDocument2* document) {
  return LoadText(document, ChainOfEntities());
}

LoadOutcome LoadChainFromFile(IXMLDOMDocument2* document) {
  return LoadFile(document, ChainOfEntities());
}

LoadOutcome LoadHugeText(IXMLDOMDocument2* document) {
  HugeText text;
  LoadOutcome outcome = {S_OK, kFlagUntouched};
  outcome.result = document->loadXML(text.Get(), &outcome.flag);
  return outcome;
}

/// All but the start of the file is a hole.
LoadOutcome LoadHugeFile(IXMLDOMDocument2* document) {
  TemporaryFile file("<b/>");
  EXPECT_EQ(0, truncate(file.Path(), static_cast<off_t>(INT_MAX) + 1));
  return LoadPath(document, file.Path());
}

/// A load that posts one event.
struct Refusal {
  const char* name;
  LoadOutcome (*load)(IXMLDOMDocument2* document);
  bool isOfAFile;
  long code;
};

std::ostream& operator<<(std::ostream& out, const Refusal& refusal) { return out << refusal.name; }

const Refusal kRefusals[] = {
    {"ChainInText", LoadChainFromText, false, XML_ERROR_ABORTED},
    {"ChainInFile", LoadChainFromFile, true, XML_ERROR_ABORTED},
    {"HugeText", LoadHugeText, false, XML_ERROR_NO_ELEMENTS},
    {"HugeFile", LoadHugeFile, true, XML_ERROR_NO_ELEMENTS},
};

/// All cases run with a parser that expands entities by recursion, or says so.
class XMLSaxEventsOfALoad : public testing::TestWithParam<Refusal> {
 protected:
  void SetUp() override {
    // Half of the addresses of a 32-bit machine cannot be had again and again.
    if (sizeof(void*) == 4 && GetParam().load == LoadHugeText) {
      GTEST_SKIP() << "the text needs half of all addresses";
    }
  }

 private:
  ExpatVersion m_recursing{2, 6, 4};
};

INSTANTIATE_TEST_SUITE_P(All, XMLSaxEventsOfALoad, testing::ValuesIn(kRefusals),
                         [](const testing::TestParamInfo<Refusal>& row) {
                           return std::string(row.param.name);
                         });

/// While it lives, the first event does what a case wants; the others are ignored.
class ActingLog {
 public:
  explicit ActingLog(const std::function<void()>& act) : m_act(act), m_count(0) {
    CLogger::SetSink(Receive, this);
  }
  ~ActingLog() { CLogger::SetSink(nullptr, nullptr); }

  ActingLog(const ActingLog&) = delete;
  ActingLog& operator=(const ActingLog&) = delete;

  int Count() const { return m_count; }

 private:
  static void Receive(const CLogEvent&, void* context) {
    ActingLog* log = static_cast<ActingLog*>(context);
    if (log->m_count++ == 0) log->m_act();
  }

  std::function<void()> m_act;
  int m_count;
};

long ErrorCode(IXMLDOMDocument2* document) {
  Ref<IXMLDOMParseError> error;
  document->get_parseError(error.Out());
  return error->m_lErrorCode;
}

}  // namespace

TEST_P(XMLSaxEventsOfALoad, Find_the_result_told_and_the_document_emptied) {
  const Document document = Load("<old/>");
  long code = XML_ERROR_NONE;
  std::string tree;
  const ActingLog log([&] {
    code = ErrorCode(document);
    tree = CompactXml(document);
  });
  EXPECT_EQ(kNotParsed, GetParam().load(document));
  EXPECT_EQ(1, log.Count());
  EXPECT_EQ(GetParam().code, code);
  EXPECT_EQ("", tree);
  EXPECT_EQ(GetParam().code, ErrorCode(document));
}

TEST_P(XMLSaxEventsOfALoad, May_load_into_the_same_document) {
  const Document document = Load("<old/>");
  const ActingLog log([&document] { document->loadXML("<new v='1'>text</new>"); });
  EXPECT_EQ(kNotParsed, GetParam().load(document)) << "the result is that of the refused load";
  EXPECT_EQ("<new v='1'>text</new>", CompactXml(document));
  EXPECT_EQ(XML_ERROR_NONE, ErrorCode(document));
  EXPECT_EQ(1, CXMLSax::m_iObjCount);
  EXPECT_EQ(0, CNodeStackElt::m_iObjCount);
}

TEST_P(XMLSaxEventsOfALoad, May_load_what_is_refused_too) {
  const Document document = Load("<old/>");
  const ActingLog log([&document] { GetParam().load(document); });
  EXPECT_EQ(kNotParsed, GetParam().load(document));
  EXPECT_EQ(2, log.Count());
  EXPECT_EQ(GetParam().code, ErrorCode(document));
}

TEST_P(XMLSaxEventsOfALoad, May_release_the_document) {
  Document document = Load("<old/>");
  const ActingLog log([&document] { document.Reset(); });
  EXPECT_EQ(kNotParsed, GetParam().load(document));
  EXPECT_EQ(0, IXMLDOMDocument2::m_iObjCount);
  EXPECT_EQ(0, CXMLSax::m_iObjCount);
}

TEST_P(XMLSaxEventsOfALoad, May_release_the_document_and_throw) {
  Document document = Load("<old/>");
  const ActingLog log([&document] {
    document.Reset();
    throw 5;
  });
  if (GetParam().isOfAFile) {
    EXPECT_EQ(kNotParsed, GetParam().load(document));
  } else {
    EXPECT_THROW(GetParam().load(document), int);
  }
  EXPECT_EQ(0, IXMLDOMDocument2::m_iObjCount);
}

TEST_P(XMLSaxEventsOfALoad, May_throw_and_leave_a_document_that_loads_again) {
  const Document document = Load("<old/>");
  {
    const RefusingLog log;
    EXPECT_NE("", ThrownMessage([&] { GetParam().load(document); }));
  }
  EXPECT_EQ(GetParam().code, ErrorCode(document));
  EXPECT_EQ("", CompactXml(document));
  EXPECT_EQ(kParsed, LoadText(document, "<a/>"));
}
