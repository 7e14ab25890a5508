#include "harness/FailingCall.h"

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <new>

#include "harness/Balance.h"
#include "harness/NodeFacts.h"
#include "harness/Silence.h"
#include "harness/Trees.h"
#include "harness/UnexpectedHandler.h"

const std::string kDeepXml = "<r v='1' w='2'>t&amp;u<a k='1'>x</a><a><b>y</b><b>&lt;</b></a><c/>" +
                             Repeat("<d>", 70) + "<e f='3'>z</e>" + Repeat("</d>", 70) + "</r>";

namespace {

/// What a call has noted.
char l_notes[1 << 18];
std::size_t l_notesSize = 0;
bool l_bHasFailed = false;
const char* l_fault = "";

/// The beginning of what differs, for texts that are too long to be printed; empty when nothing is.
std::string FirstDifference(const std::string& expected, const std::string& actual) {
  if (expected == actual) return "";
  std::size_t at = 0;
  while (at < expected.size() && at < actual.size() && expected[at] == actual[at]) ++at;
  return "at byte " + std::to_string(at) + " expected: " + expected.substr(at, 200) +
         "\nactual: " + actual.substr(at, 200);
}

struct Outcome {
  bool hasStruck;  // an allocation has failed
  bool hasFailed;  // the call has, with an exception or without
  int allocations;
  std::string notes;
};

Outcome RunWithin(int allowed, const FailingCall& call, const Failing& how,
                  IXMLDOMDocument2* document) {
  Outcome outcome = {false, false, 0, ""};
  l_notesSize = 0;
  l_bHasFailed = false;
  l_fault = "";
  UnexpectedHandler handler;
  const Silence silence;
  {
    AllocationFailure limit(allowed, how.reach, how.extent);
    try {
      outcome.hasFailed = handler.Catches([&] { call.run(document); });
    } catch (const std::bad_alloc&) {
      outcome.hasFailed = true;
    } catch (CLogException* exception) {
      delete exception;
      outcome.hasFailed = true;
    }
    outcome.hasStruck = limit.HasStruck();
    outcome.allocations = limit.Succeeded();
  }
  outcome.hasFailed = outcome.hasFailed || l_bHasFailed;
  outcome.notes.assign(l_notes, l_notesSize);
  return outcome;
}

void IgnoreEvent(const CLogEvent&, void*) {}

/// A call that has not run out of memory, with which the others are compared.
struct Success {
  Outcome outcome;
  std::string tree;
};

Success RunToTheEnd(const FailingCall& call, const Failing& how) {
  Document document = Load(*how.xml);
  Success success;
  success.outcome = RunWithin(INT_MAX, call, how, document);
  success.tree = XmlOf(document);
  return success;
}

/// Result: whether an allocation has failed.
bool FailOnce(int allowed, const FailingCall& call, const Failing& how, const Success& success) {
  const Balance balance = Balance::Now();
  const long blocks = HeapBlocks();
  const int nodesBefore = IXMLDOMNode::m_iObjCount;
  bool hasStruck = false;
  {
    Document document = Load(*how.xml);
    const std::string before = XmlOf(document);
    const Outcome outcome = RunWithin(allowed, call, how, document);
    hasStruck = outcome.hasStruck;
    EXPECT_STREQ("", l_fault);
    EXPECT_EQ("", Faults(document, nodesBefore));
    const std::string after = XmlOf(document);
    if (!outcome.hasFailed) {
      EXPECT_EQ("", FirstDifference(success.tree, after));
      EXPECT_EQ("", FirstDifference(success.outcome.notes, outcome.notes));
    } else if (how.guarantee == FailingCall::KEEPS_TREE) {
      EXPECT_EQ("", FirstDifference(before, after));
    }
    if (!after.empty()) Load(after);
  }
  EXPECT_EQ("", Balance::Now().ChangesSince(balance));
  EXPECT_EQ(blocks, HeapBlocks());
  return hasStruck;
}

}  // namespace

std::ostream& operator<<(std::ostream& out, const FailingCall& call) { return out << call.name; }

void Note(const char* text) {
  if (text == nullptr) text = "(null)";
  const std::size_t size = std::min(std::strlen(text), sizeof l_notes - l_notesSize);
  std::memcpy(l_notes + l_notesSize, text, size);
  l_notesSize += size;
}

void Note(long number) {
  char text[24];
  std::snprintf(text, sizeof text, "%ld;", number);
  Note(text);
}

void NoteFailure() { l_bHasFailed = true; }

void NoteFault(const char* fault) { l_fault = fault; }

int ExpectWholeTreeAfterEachFailure(const FailingCall& call, const Failing& how) {
  CLogger::SetSink(IgnoreEvent, nullptr);
  // What is allocated once for the whole process is so before anything is counted.
  RunToTheEnd(call, how);
  const Success success = RunToTheEnd(call, how);
  const int step = 1 + success.outcome.allocations / how.mostPoints;
  int points = 0;
  bool hasStruck = true;
  for (int allowed = 0; hasStruck && !testing::Test::HasFailure(); allowed += step) {
    SCOPED_TRACE(allowed);
    hasStruck = FailOnce(allowed, call, how, success);
    points += hasStruck ? 1 : 0;
  }
  return points;
}
