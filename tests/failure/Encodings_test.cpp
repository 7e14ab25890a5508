#include <gtest/gtest.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include <climits>
#include <new>
#include <string>
#include <vector>

#include "harness/AllocationFailure.h"
#include "harness/Encodings.h"
#include "harness/NodeFacts.h"
#include "harness/Trees.h"

// Handlers that throw and memory that is out in the middle of a parse, in every encoding. Where the
// parser has to convert a text it calls a handler several times in a row, whatever that has done.

namespace {

class FailureEncodings : public testing::TestWithParam<EncodedDocument> {};
class FailureEncodingsOfTexts : public FailureEncodings {};

/// The documents that can be loaded as a text, which a NUL byte ends.
std::vector<EncodedDocument> Texts() {
  std::vector<EncodedDocument> texts;
  for (const EncodedDocument& document : EncodedDocuments()) {
    if (!document.holdsNul) texts.push_back(document);
  }
  return texts;
}

/// Throws at one of the events that it is told, the first being 0.
class Thrower : public CExpatImpl<Thrower> {
 public:
  explicit Thrower(int event) : m_event(event), m_count(0) { CreateParser(); }
  ~Thrower() { DestroyParser(); }

  void OnStartElement(const char*, const char**) { Count(); }
  void OnEndElement(const char*) { Count(); }
  void OnDefault(const char*, int) { Count(); }

  int EventsSeen() const { return m_count; }

 private:
  void Count() {
    if (m_count++ == m_event) throw m_event;
  }

  int m_event;
  int m_count;
};

/// Parses a document with a handler that throws at an event. Result: how many events it was told.
int ParseThrowing(const EncodedDocument& document, int event) {
  Thrower thrower(event);
  int thrown = -1;
  try {
    EXPECT_TRUE(thrower.Parse(document.bytes.data(), static_cast<int>(document.bytes.size()), true))
        << XML_ErrorString(thrower.GetErrorCode());
  } catch (int number) {
    thrown = number;
    EXPECT_EQ(XML_ERROR_ABORTED, thrower.GetErrorCode());
  }
  EXPECT_EQ(event == INT_MAX ? -1 : event, thrown);
  EXPECT_EQ(&thrower, XML_GetUserData(thrower.m_p));
  return thrower.EventsSeen();
}

/// A builder that is told the events of a parse as if by hand, since a text with NUL bytes in it
/// cannot be loaded.
bool BuildWithin(IXMLDOMDocument2* document, const EncodedDocument& encoded, int allowed) {
  CXMLSax sax(document);
  sax.CreateParser();
  sax.m_pNodeStack = new CNodeStack;
  sax.m_bFirstElement = true;
  const AllocationFailure limit(allowed);
  try {
    return sax.Parse(encoded.bytes.data(), static_cast<int>(encoded.bytes.size()), true);
  } catch (const std::bad_alloc&) {
    return false;
  }
}

bool LoadWithin(IXMLDOMDocument2* document, const EncodedDocument& encoded, int allowed) {
  CXMLSax sax(document);
  sax.CreateParser();
  const AllocationFailure limit(allowed);
  try {
    return sax.LoadXML(encoded.bytes.c_str());
  } catch (const std::bad_alloc&) {
    return false;
  }
}

/// Makes each allocation of a load fail, one after the other, until it gets through.
void ExpectWholeTreeAfterEachFailureOf(bool (*load)(IXMLDOMDocument2*, const EncodedDocument&, int),
                                       const EncodedDocument& encoded) {
  bool isLoaded = false;
  for (int allowed = 0; !isLoaded && !testing::Test::HasFailure(); ++allowed) {
    SCOPED_TRACE(allowed);
    const long blocks = HeapBlocks();
    const int nodesBefore = IXMLDOMNode::m_iObjCount;
    {
      Document document = NewDocument();
      isLoaded = load(document, encoded, allowed);
      EXPECT_EQ("", Faults(document, nodesBefore));
    }
    EXPECT_EQ(blocks, HeapBlocks());
  }
}

}  // namespace

TEST_P(FailureEncodings, Of_a_handler_at_each_event_leaves_the_parse_as_one_exception) {
  const int events = ParseThrowing(GetParam(), INT_MAX);
  EXPECT_LT(15, events);
  for (int event = 0; event < events; ++event) {
    SCOPED_TRACE(event);
    EXPECT_EQ(event + 1, ParseThrowing(GetParam(), event)) << "events behind the exception";
  }
}

TEST_P(FailureEncodings, Of_each_allocation_of_a_parse_leaves_a_whole_tree_and_nothing_behind) {
  ExpectWholeTreeAfterEachFailureOf(BuildWithin, GetParam());
}

TEST_P(FailureEncodingsOfTexts, Of_each_allocation_leaves_a_whole_tree_and_nothing_behind) {
  ExpectWholeTreeAfterEachFailureOf(LoadWithin, GetParam());
}

INSTANTIATE_TEST_SUITE_P(All, FailureEncodings, testing::ValuesIn(EncodedDocuments()));
INSTANTIATE_TEST_SUITE_P(All, FailureEncodingsOfTexts, testing::ValuesIn(Texts()));
