#include <gtest/gtest.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include <new>
#include <string>

#include "harness/AllocationFailure.h"
#include "harness/Balance.h"
#include "harness/CompactXml.h"
#include "harness/FailingCall.h"
#include "harness/NodeFacts.h"
#include "harness/TemporaryFile.h"
#include "harness/Trees.h"

// Memory that is out at any point of a load, and while a tree is released.

namespace {

/// Loads with memory for `allowed` allocations of anybody, the parser's own ones included. Result:
/// whether the text was loaded.
typedef bool (*LimitedLoad)(CXMLSax& sax, const char* xml, int allowed);

bool LoadWithin(CXMLSax& sax, const char* xml, int allowed) {
  AllocationFailure limit(allowed);
  try {
    return sax.LoadXML(xml);
  } catch (const std::bad_alloc&) {
    return false;
  }
}

bool LoadFileWithin(CXMLSax& sax, const char* xml, int allowed) {
  TemporaryFile file(xml);
  AllocationFailure limit(allowed);
  return sax.LoadFromFile(file.Path()) == S_OK;
}

const LimitedLoad kLoads[] = {LoadWithin, LoadFileWithin};

const char* const kTexts[] = {
    "<a/>",
    "<a v='1'/>",
    "<a><b v='&lt;'/>t<c/>u</a>",
    "<!DOCTYPE a [<!ENTITY e '<b/>text'>]><a>&e;<c>&e;</c></a>",
};

/// Makes each allocation of a load fail, one after the other, until it gets through.
void ExpectWholeTreeAndNothingBehind(LimitedLoad load, const char* xml) {
  bool isLoaded = false;
  for (int allowed = 0; !isLoaded; ++allowed) {
    SCOPED_TRACE(allowed);
    const long blocks = HeapBlocks();
    const int nodesBefore = IXMLDOMNode::m_iObjCount;
    {
      Document document = NewDocument();
      CXMLSax sax(document);
      sax.CreateParser();
      isLoaded = load(sax, xml, allowed);
      EXPECT_EQ("", Faults(document, nodesBefore));
    }
    EXPECT_EQ(blocks, HeapBlocks());
  }
}

TEST(FailureLoadingParser, Of_each_allocation_leaves_a_whole_tree_and_nothing_behind) {
  for (const char* xml : kTexts) {
    SCOPED_TRACE(xml);
    for (LimitedLoad load : kLoads) ExpectWholeTreeAndNothingBehind(load, xml);
  }
}

TEST(FailureLoadingParser, Leaves_a_document_that_loads_again) {
  for (const char* xml : kTexts) {
    SCOPED_TRACE(xml);
    bool isLoaded = false;
    for (int allowed = 0; !isLoaded; ++allowed) {
      SCOPED_TRACE(allowed);
      Document document = NewDocument();
      {
        CXMLSax sax(document);
        sax.CreateParser();
        isLoaded = LoadWithin(sax, xml, allowed);
      }
      EXPECT_EQ(VARIANT_TRUE, document->loadXML("<z>t</z>"));
      EXPECT_EQ("<z>t</z>", CompactXml(document));
    }
  }
}

TEST(FailureLoadingRelease, Needs_no_memory) {
  const std::string texts[] = {kDeepXml, "<a>" + Repeat("<b v='1'>t</b>", 1000) + "</a>",
                               Repeat("<a v='1'>t", 1000) + Repeat("</a>", 1000)};
  for (const std::string& xml : texts) {
    const Balance balance = Balance::Now();
    Document document = Load(xml);
    Ref<IXMLDOMNodeList> list(document->SelectNodes("//*"));
    {
      AllocationFailure limit(0);
      document.Reset();
      list.Reset();
    }
    EXPECT_EQ("", Balance::Now().ChangesSince(balance));
  }
}

}  // namespace
