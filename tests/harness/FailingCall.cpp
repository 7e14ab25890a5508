#include "harness/FailingCall.h"

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <new>

#include "harness/AllocationFailure.h"
#include "harness/Balance.h"
#include "harness/NodeFacts.h"
#include "harness/StdoutCapture.h"
#include "harness/Trees.h"
#include "harness/UnexpectedHandler.h"

const std::string kDeepXml = "<r v='1' w='2'>t&amp;u<a k='1'>x</a><a><b>y</b><b>&lt;</b></a><c/>" +
                             Repeat("<d>", 70) + "<e f='3'>z</e>" + Repeat("</d>", 70) + "</r>";

namespace {

const int kUnlimited = -1;

struct Outcome {
  bool hasFailed;  // an allocation has
  bool hasThrown;
};

Outcome RunWithin(int allowed, const FailingCall& call, IXMLDOMDocument2* document) {
  Outcome outcome = {false, false};
  UnexpectedHandler handler;
  StdoutCapture silence;
  AllocationFailure limit(allowed, AllocationFailure::ALL_BUT_EXPAT);
  try {
    outcome.hasThrown = handler.Catches([&] { call.run(document); });
  } catch (const std::bad_alloc&) {
    outcome.hasThrown = true;
  } catch (CLogException* exception) {
    delete exception;
    outcome.hasThrown = true;
  }
  outcome.hasFailed = limit.HasStruck();
  return outcome;
}

void IgnoreEvent(const CLogEvent&, void*) {}

}  // namespace

std::ostream& operator<<(std::ostream& out, const FailingCall& call) { return out << call.name; }

void ExpectWholeTreeAfterEachFailure(const FailingCall& call, FailingCall::Guarantee guarantee) {
  CLogger::SetSink(IgnoreEvent, nullptr);
  // What is allocated once for the whole process is so before anything is counted.
  RunWithin(kUnlimited, call, Load(kDeepXml));
  bool hasFailed = true;
  for (int allowed = 0; hasFailed && !testing::Test::HasFailure(); ++allowed) {
    SCOPED_TRACE(allowed);
    const Balance balance = Balance::Now();
    const long blocks = HeapBlocks();
    const int nodesBefore = IXMLDOMNode::m_iObjCount;
    {
      Document document = Load(kDeepXml);
      const std::string before = XmlOf(document);
      const Outcome outcome = RunWithin(allowed, call, document);
      hasFailed = outcome.hasFailed;
      EXPECT_EQ("", Faults(document, nodesBefore));
      const std::string after = XmlOf(document);
      if (outcome.hasThrown && guarantee == FailingCall::KEEPS_TREE) {
        EXPECT_EQ(before, after);
      }
      if (!after.empty()) Load(after);
    }
    EXPECT_EQ("", Balance::Now().ChangesSince(balance));
    EXPECT_EQ(blocks, HeapBlocks());
  }
}
