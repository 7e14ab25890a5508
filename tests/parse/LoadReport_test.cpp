#include <gtest/gtest.h>
#include <malloc.h>
#include <unistd.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include <climits>
#include <new>
#include <string>

#include "harness/AllocationFailure.h"
#include "harness/Balance.h"
#include "harness/CompactXml.h"
#include "harness/Encodings.h"
#include "harness/InputContext.h"
#include "harness/LoadOutcome.h"
#include "harness/TemporaryFile.h"
#include "harness/Trees.h"

// ReleaseParser, and what get_parseError tells after it.

namespace {

Ref<IXMLDOMParseError> ErrorOf(IXMLDOMDocument2* document) {
  Ref<IXMLDOMParseError> error;
  EXPECT_EQ(S_OK, document->get_parseError(error.Out()));
  return error;
}

/// Every field of the error that a document tells.
std::string ErrorFields(IXMLDOMDocument2* document) {
  const Ref<IXMLDOMParseError> error = ErrorOf(document);
  return std::to_string(error->m_lErrorCode) + ", " + std::to_string(error->m_lFilePos) + ", " +
         std::to_string(error->m_lLine) + ", " + std::to_string(error->m_lLinePos) + ", " +
         Text(error->m_bstrReason) + ", " + Text(error->m_bstrSrcText);
}

const char* const kNothingLoaded = "0, 0, 0, 0, (null), (null)";

/// Releases the parser of a document, which must not change what get_parseError tells.
void ExpectSameErrorAfterRelease(IXMLDOMDocument2* document) {
  const std::string before = ErrorFields(document);
  document->ReleaseParser();
  EXPECT_EQ(nullptr, document->m_pSax);
  EXPECT_EQ(before, ErrorFields(document));
  EXPECT_EQ(before, ErrorFields(document));
  document->ReleaseParser();
  EXPECT_EQ(before, ErrorFields(document));
}

const char* const kTexts[] = {
    "",
    "<a/>",
    "<a>\n<b/></a>",
    "<a>\n<b x=1></b></a>",
    "<a><b></a>",
    "<a>&u;</a>",
    "abc",
    "<a>",
    "<?xml version='1.0' encoding='ISO-8859-1'?>\n<a>\xe9</b>",
};

}  // namespace

TEST(LoadReport, Is_that_of_no_load_when_nothing_was_ever_loaded) {
  const Document document = NewDocument();
  document->ReleaseParser();
  EXPECT_EQ(nullptr, document->m_pSax);
  EXPECT_EQ(kNothingLoaded, ErrorFields(document));
}

TEST(LoadReport, Is_the_same_without_the_parser_for_every_text) {
  const Document document = NewDocument();
  for (const char* text : kTexts) {
    SCOPED_TRACE(text);
    document->loadXML(text);
    const std::string tree = CompactXml(document);
    ExpectSameErrorAfterRelease(document);
    EXPECT_EQ(tree, CompactXml(document));
  }
}

TEST(LoadReport, Keeps_as_much_of_the_tag_as_the_parser_would_give) {
  const Document document = NewDocument();
  for (std::size_t length : {1u, 500u, 507u, 508u, 509u, 510u, 511u, 512u, 10000u}) {
    SCOPED_TRACE(length);
    document->loadXML(("<a></" + std::string(length, 'x') + ">").c_str());
    ExpectSameErrorAfterRelease(document);
  }
}

TEST(LoadReport, Is_the_same_without_the_parser_for_every_file) {
  const Document document = NewDocument();
  for (const EncodedDocument& encoded : EncodedDocuments()) {
    SCOPED_TRACE(encoded.encoding);
    for (const std::string& contents : {encoded.bytes, encoded.bytes + "<"}) {
      LoadFile(document, contents);
      ExpectSameErrorAfterRelease(document);
    }
  }
  for (const char* path : {"/tmp/xmldom-file-that-is-not-there", "/tmp", "/dev/null"}) {
    SCOPED_TRACE(path);
    LoadPath(document, path);
    ExpectSameErrorAfterRelease(document);
  }
}

TEST(LoadReport, Tells_that_memory_was_out) {
  if (!AllocationFailure::ReachesMalloc()) GTEST_SKIP() << "allocations cannot fail here";
  for (int allowed = 0;; ++allowed) {
    SCOPED_TRACE(allowed);
    const Document document = NewDocument();
    bool isLoaded = false;
    try {
      const AllocationFailure limit(allowed, AllocationFailure::ALL_BUT_EXPAT);
      isLoaded = document->loadXML("<a v='1'>x<b/>y</a>") == VARIANT_TRUE;
    } catch (const std::bad_alloc&) {
    }
    ExpectSameErrorAfterRelease(document);
    if (isLoaded) break;
  }
}

TEST(LoadReport, Is_handed_out_in_snapshots_that_share_nothing) {
  Document document = NewDocument();
  document->loadXML("<a></b>");
  document->ReleaseParser();
  const Ref<IXMLDOMParseError> first = ErrorOf(document);
  SysFreeString(first->m_bstrReason);
  first->m_bstrSrcText[0] = 'x';
  const Ref<IXMLDOMParseError> second = ErrorOf(document);
  EXPECT_EQ("mismatched tag", Text(second->m_bstrReason));
  document->loadXML("<a/>");
  document.Reset();
  EXPECT_EQ("mismatched tag", Text(second->m_bstrReason));
  EXPECT_EQ(7, second->m_lErrorCode);
}

TEST(LoadReport, Goes_with_the_next_load) {
  const Document document = NewDocument();
  document->loadXML("<a></b>");
  document->ReleaseParser();
  EXPECT_EQ(VARIANT_TRUE, document->loadXML("<c>x</c>"));
  EXPECT_EQ("<c>x</c>", CompactXml(document));
  ASSERT_NE(nullptr, document->m_pSax);
  EXPECT_EQ(0, ErrorOf(document)->m_lErrorCode);
  document->ReleaseParser();
  EXPECT_EQ(0, ErrorOf(document)->m_lErrorCode);

  document->loadXML("<a></b>");
  document->ReleaseParser();
  LoadPath(document, "/tmp/xmldom-file-that-is-not-there");
  EXPECT_EQ(0, ErrorOf(document)->m_lErrorCode);
}

TEST(LoadReport, Goes_when_a_load_cannot_even_begin) {
  const Document document = NewDocument();
  document->loadXML("<a></b>");
  document->ReleaseParser();
  {
    const OutOfMemory limit;
    EXPECT_THROW(document->loadXML("<c/>"), std::bad_alloc);
  }
  EXPECT_EQ(kNothingLoaded, ErrorFields(document));
}

TEST(LoadReport, Gives_way_to_a_builder_that_an_application_puts_in_place) {
  const Document document = NewDocument();
  document->loadXML("<a></b>");
  document->ReleaseParser();
  document->m_pSax = new CXMLSax(document);
  document->m_pSax->CreateParser();
  EXPECT_FALSE(document->m_pSax->LoadXML("abc"));
  EXPECT_EQ(2, ErrorOf(document)->m_lErrorCode);
  ExpectSameErrorAfterRelease(document);
}

// ---- What is freed, and what counts

TEST(LoadReport, Is_all_that_is_left_of_builder_and_stack) {
  const Document document = NewDocument();
  const Balance before = Balance::Now();
  document->loadXML("<a><b>");
  document->ReleaseParser();
  document->ClearNode(false);
  EXPECT_EQ("", Balance::Now().ChangesSince(before));
}

TEST(LoadReport, Goes_with_its_document) {
  const long blocks = HeapBlocks();
  {
    const Document document = NewDocument();
    document->loadXML("<a><b>");
    document->ReleaseParser();
  }
  EXPECT_EQ(blocks, HeapBlocks());
}

TEST(LoadReport, Keeps_nothing_of_the_text) {
  if (!AllocationFailure::ReachesMalloc()) GTEST_SKIP() << "the heap is not counted here";
  const auto heapBytes = [] {
    const struct mallinfo2 heap = mallinfo2();
    return static_cast<long>(heap.uordblks + heap.hblkhd);
  };
  const std::string xml = "<a/><!--" + std::string(1000000, 'x') + "-->";
  const Document document = NewDocument();
  const long before = heapBytes();
  document->loadXML(xml.c_str());
  if (HasInputContext()) {
    EXPECT_LT(1000000, heapBytes() - before);
  }
  document->ReleaseParser();
  // A node with its name, the report with 512 bytes of the tag at most, and what the allocator
  // keeps for itself of small blocks that were freed.
  EXPECT_GT(10000, heapBytes() - before);
}

TEST(LoadReport, Changes_nothing_when_there_is_no_memory_for_it) {
  if (!AllocationFailure::ReachesMalloc()) GTEST_SKIP() << "allocations cannot fail here";
  const Document document = NewDocument();
  document->loadXML("<a></b>");
  CXMLSax* const builder = document->m_pSax;
  const std::string before = ErrorFields(document);
  {
    const AllocationFailure limit(0);
    EXPECT_THROW(document->ReleaseParser(), std::bad_alloc);
  }
  EXPECT_EQ(builder, document->m_pSax);
  ExpectSameErrorAfterRelease(document);
  EXPECT_EQ(7, ErrorOf(document)->m_lErrorCode) << before;
}

// ---- Within a load

TEST(LoadReport, Is_not_made_while_the_load_runs) {
  const Document document = NewDocument();
  document->m_pSax = new CXMLSax(document);
  document->m_pSax->CreateParser();
  static int calls;
  calls = 0;
  XML_SetCommentHandler(document->m_pSax->m_p, [](void* sax, const char*) {
    IXMLDOMDocument2* loading = static_cast<CXMLSax*>(sax)->m_pDocument;
    loading->ReleaseParser();
    EXPECT_EQ(sax, loading->m_pSax);
    ++calls;
  });
  EXPECT_TRUE(document->m_pSax->LoadXML("<a>x<!-- c -->y<b/><!-- c --></a>"));
  EXPECT_EQ(2, calls);
  EXPECT_EQ("<a>xy<b/></a>", CompactXml(document));
  ExpectSameErrorAfterRelease(document);
}

TEST(LoadReport, May_be_made_by_the_log_function_that_is_told_of_a_refused_text) {
  const Document document = NewDocument();
  TemporaryFile file("<b/>");
  ASSERT_EQ(0, truncate(file.Path(), static_cast<off_t>(INT_MAX) + 1));
  CLogger::SetSink([](const CLogEvent&,
                      void* context) { static_cast<IXMLDOMDocument2*>(context)->ReleaseParser(); },
                   document.Get());
  EXPECT_EQ(kNotParsed, LoadPath(document, file.Path()));
  CLogger::SetSink(nullptr, nullptr);
  EXPECT_EQ(nullptr, document->m_pSax);
  EXPECT_EQ("3, 0, 1, 0, no element found, undefined", ErrorFields(document));
}
