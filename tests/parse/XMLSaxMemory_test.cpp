#include <gtest/gtest.h>
#include <malloc.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include <string>

#include "harness/Allocation.h"
#include "harness/AllocationFailure.h"
#include "harness/CompactXml.h"
#include "harness/ExpatVersion.h"
#include "harness/InputContext.h"
#include "harness/LoadOutcome.h"
#include "harness/LongText.h"
#include "harness/RefusingLog.h"
#include "harness/TemporaryFile.h"
#include "harness/Trees.h"

// Exceptions that leave a handler of the builder in the middle of a parse.

namespace {

const char* const kXml =
    "<a v='1' w='&lt;'>text<b>more &amp; more</b><!--c--><c x='2'/><d><e>deep</e></d></a>";

/// Loads with memory for no more than `allowed` allocations. Result: whether it got through.
bool LoadWithin(IXMLDOMDocument2* document, int allowed) {
  try {
    OutOfMemory limit(allowed);
    document->loadXML(kXml);
  } catch (const std::bad_alloc&) {
    return false;
  }
  return true;
}

}  // namespace

TEST(XMLSaxMemory, Lets_each_failing_allocation_of_a_load_through) {
  const int failures = CountFailingAllocations([] {
    const Document document = NewDocument();
    document->loadXML(kXml);
  });
  // An object for each of eleven nodes and three open elements, document, builder and stack.
  EXPECT_LE(17, failures);
}

TEST(XMLSaxMemory, Keeps_the_tree_built_up_to_the_failure) {
  const Document whole = Load(kXml);
  const Document document = NewDocument();
  int allowed = 0;
  for (int nodes = 0; !LoadWithin(document, allowed); ++allowed) {
    SCOPED_TRACE(allowed);
    const int now = IXMLDOMNode::m_iObjCount;
    EXPECT_LE(nodes, now);
    nodes = now;
    for (const IXMLDOMNode* child = document->m_pFirstChild; child != nullptr;
         child = child->m_pFirstChild) {
      EXPECT_EQ(document.Get(), child->m_pOwnerDocument);
    }
  }
  EXPECT_EQ(CompactXml(whole), CompactXml(document));
}

// A text comes in pieces: here the first line, its end, which is dropped, and the second line,
// which needs memory.
TEST(XMLSaxMemory, Keeps_a_text_up_to_the_piece_that_failed) {
  const std::string xml = "<a>one\n" + std::string(100, 'x') + "</a>";
  int kept = 0;
  for (int allowed = 0;; ++allowed) {
    const Document document = NewDocument();
    try {
      const bool failsOnce = true;
      OutOfMemory limit(allowed, failsOnce);
      document->loadXML(xml.c_str());
      break;
    } catch (const std::bad_alloc&) {
      kept += CompactXml(document) == "<a>one</a>";
    }
  }
  EXPECT_EQ(1, kept);
}

TEST(XMLSaxMemory, Leaves_a_document_that_loads_again) {
  const Document document = NewDocument();
  for (int allowed = 0; !LoadWithin(document, allowed); ++allowed) {
    SCOPED_TRACE(allowed);
    EXPECT_EQ(VARIANT_TRUE, document->loadXML("<z/>"));
    EXPECT_EQ("<z/>", CompactXml(document));
    EXPECT_EQ(1, CXMLSax::m_iObjCount);
    EXPECT_EQ(1, CNodeStack::m_iObjCount);
    EXPECT_EQ(0, CNodeStackElt::m_iObjCount);
  }
}

TEST(XMLSaxMemory, Leaves_nothing_behind_when_the_document_goes_after_a_failure) {
  for (int allowed = 0;; ++allowed) {
    SCOPED_TRACE(allowed);
    Document document = NewDocument();
    const bool loaded = LoadWithin(document, allowed);
    document.Reset();
    EXPECT_EQ(0, IXMLDOMNode::m_iObjCount);
    EXPECT_EQ(0, CXMLSax::m_iObjCount);
    EXPECT_EQ(0, CNodeStack::m_iObjCount);
    EXPECT_EQ(0, CNodeStackElt::m_iObjCount);
    if (loaded) break;
  }
}

TEST(XMLSaxMemory, Tells_a_file_that_memory_was_out_for_like_one_that_does_not_parse) {
  TemporaryFile file(kXml);
  int failures = 0;
  for (int allowed = 0;; ++allowed) {
    SCOPED_TRACE(allowed);
    const Document document = NewDocument();
    LoadOutcome outcome = {S_OK, kFlagUntouched};
    try {
      OutOfMemory limit(allowed);
      outcome.result = document->load(file.Path(), &outcome.flag);
    } catch (const std::bad_alloc&) {
      EXPECT_EQ(nullptr, document->m_pSax);  // only when there is no builder yet
      continue;
    }
    if (outcome == kParsed) break;
    EXPECT_EQ(kNotParsed, outcome);
    ++failures;
  }
  EXPECT_LE(15, failures);
}

TEST(XMLSaxMemory, Is_out_for_a_text_that_the_parser_cannot_hold) {
  if (!NoMoreMemory::IsPossible()) GTEST_SKIP() << "memory cannot be limited here";
  const std::string xml = "<a>" + LongText() + "</a>";
  const Document document = Load("<old/>");
  short parsed = VARIANT_TRUE;
  {
    const NoMoreMemory limit;
    parsed = document->loadXML(xml.c_str());
  }
  EXPECT_EQ(VARIANT_FALSE, parsed);
  EXPECT_EQ(XML_ERROR_NO_MEMORY, document->m_pSax->GetErrorCode());
  EXPECT_EQ("", CompactXml(document));
}

TEST(XMLSaxMemory, Is_out_for_a_file_that_cannot_be_read_whole) {
  if (!NoMoreMemory::IsPossible()) GTEST_SKIP() << "memory cannot be limited here";
  TemporaryFile file("<a>" + LongText() + "</a>");
  const Document document = Load("<old/>");
  LoadOutcome outcome = {S_OK, kFlagUntouched};
  {
    const NoMoreMemory limit;
    outcome.result = document->load(file.Path(), &outcome.flag);
  }
  EXPECT_EQ(kNotParsed, outcome);
  EXPECT_EQ("", CompactXml(document));
}

// ---- What get_parseError tells of it

namespace {

Ref<IXMLDOMParseError> ErrorOf(IXMLDOMDocument2* document) {
  Ref<IXMLDOMParseError> error;
  document->get_parseError(error.Out());
  return error;
}

/// Loads a file with memory for `allowed` allocations of all but the parser.
LoadOutcome LoadFileWithin(IXMLDOMDocument2* document, char* path, int allowed) {
  LoadOutcome outcome = {S_OK, kFlagUntouched};
  AllocationFailure limit(allowed, AllocationFailure::ALL_BUT_EXPAT);
  try {
    outcome.result = document->load(path, &outcome.flag);
  } catch (const std::bad_alloc&) {
    // Not even the builder could be made.
  }
  return outcome;
}

}  // namespace

TEST(XMLSaxMemory, Of_a_file_is_told_as_out_until_the_parse_begins_and_as_aborted_then) {
  TemporaryFile file(kXml);
  int outBefore = 0;
  int outWithin = 0;
  for (int allowed = 0;; ++allowed) {
    SCOPED_TRACE(allowed);
    const Document document = NewDocument();
    const LoadOutcome outcome = LoadFileWithin(document, file.Path(), allowed);
    if (document->m_pSax == nullptr) continue;
    const long code = ErrorOf(document)->m_lErrorCode;
    if (outcome == kParsed) {
      EXPECT_EQ(XML_ERROR_NONE, code);
      break;
    }
    EXPECT_EQ(kNotParsed, outcome);
    EXPECT_TRUE(code == XML_ERROR_ABORTED || (code == XML_ERROR_NO_MEMORY && outWithin == 0))
        << code;
    ++(code == XML_ERROR_NO_MEMORY ? outBefore : outWithin);
  }
  EXPECT_LE(1, outBefore);
  EXPECT_LE(11, outWithin);
}

TEST(XMLSaxMemory, Of_a_text_is_told_as_out_when_the_load_cannot_even_begin) {
  const Document document = NewDocument();
  int outBefore = 0;
  for (int allowed = 0; !LoadWithin(document, allowed); ++allowed) {
    SCOPED_TRACE(allowed);
    if (document->m_pSax == nullptr) continue;
    if (ErrorOf(document)->m_lErrorCode == XML_ERROR_NO_MEMORY) ++outBefore;
    EXPECT_NE(XML_ERROR_NONE, ErrorOf(document)->m_lErrorCode);
  }
  EXPECT_LE(1, outBefore);
  EXPECT_EQ(XML_ERROR_NONE, ErrorOf(document)->m_lErrorCode);
}

TEST(XMLSaxMemory, That_was_out_before_the_parse_is_told_in_words_and_only_until_the_next_load) {
  if (!NoMoreMemory::IsPossible()) GTEST_SKIP() << "memory cannot be limited here";
  TemporaryFile file("<a>" + LongText() + "</a>");
  const Document document = NewDocument();
  short flag = kFlagUntouched;
  {
    const NoMoreMemory limit;
    document->load(file.Path(), &flag);
  }
  BSTR message = nullptr;
  EXPECT_EQ(S_OK, ErrorOf(document)->get_errormessage(&message));
  EXPECT_EQ("Error 1 (out of memory) at line 1, column 0, offending tag undefined",
            TakeBstr(message));
  char line[256];
  EXPECT_EQ("Parsing error \"out of memory\", tag \"undefined\", line 1, column 0",
            Text(document->m_pSax->GetErrorStr(line, sizeof line)));
  if (HasInputContext()) {
    EXPECT_EQ(XML_ERROR_NO_MEMORY, document->m_pSax->GetErrorCode()) << "whose buffer it was for";
  } else {
    EXPECT_EQ(XML_ERROR_NONE, document->m_pSax->GetErrorCode()) << "which asks the parser alone";
  }

  document->loadXML("<a/>");
  EXPECT_EQ(XML_ERROR_NONE, ErrorOf(document)->m_lErrorCode);
}

// ---- What texts take

TEST(XMLSaxMemory, Of_a_text_is_that_of_its_bytes_alone) {
  std::string pieces;
  for (int i = 0; i < 1000; ++i) pieces += "text&amp;";
  const std::size_t kMostOverhead = 64;
  const Document document = NewDocument();
  // The element that holds the text is closed, or left open by an error.
  for (const std::string rest : {"</a>", ""}) {
    SCOPED_TRACE(rest);
    document->loadXML(("<a>" + pieces + rest).c_str());
    char* value = At(document, {0, 0})->m_pszValue;
    EXPECT_EQ(pieces, Text(value));
    EXPECT_LE(malloc_usable_size(value), pieces.size() + kMostOverhead);
  }
}

// ---- Exceptions of other kinds, thrown while the parser runs

namespace {

/// A text that ends in a log event: entities that nest too deep for the parser in use.
std::string TextThatIsLogged() {
  std::string entities = "<!ENTITY e0 ''>";
  for (int i = 1; i < 300; ++i) {
    entities += "<!ENTITY e" + std::to_string(i) + " '&e" + std::to_string(i - 1) + ";'>";
  }
  return "<!DOCTYPE a [" + entities + "]><a/>";
}

/// All cases run with a parser for which they do.
class XMLSaxMemoryExceptions : public testing::Test {
 private:
  ExpatVersion m_recursing{2, 6, 4};
};

/// While it lives, every log event throws 5.
class ThrowingLog {
 public:
  ThrowingLog() { CLogger::SetSink(Throw, nullptr); }
  ~ThrowingLog() { CLogger::SetSink(nullptr, nullptr); }
  ThrowingLog(const ThrowingLog&) = delete;
  ThrowingLog& operator=(const ThrowingLog&) = delete;

 private:
  static void Throw(const CLogEvent&, void*) { throw 5; }
};

}  // namespace

TEST_F(XMLSaxMemoryExceptions, Pass_out_of_the_load_of_a_text) {
  const Document document = NewDocument();
  const ThrowingLog log;
  EXPECT_THROW(document->loadXML(TextThatIsLogged().c_str()), int);
}

TEST_F(XMLSaxMemoryExceptions, Are_thrown_once) {
  const Document document = NewDocument();
  {
    const ThrowingLog log;
    EXPECT_THROW(document->loadXML(TextThatIsLogged().c_str()), int);
  }
  EXPECT_EQ(VARIANT_TRUE, document->loadXML("<a/>"));
}

TEST_F(XMLSaxMemoryExceptions, End_the_load_of_a_file_like_an_error) {
  const Document document = NewDocument();
  TemporaryFile file(TextThatIsLogged());
  const ThrowingLog log;
  short success = VARIANT_TRUE;
  EXPECT_EQ(S_FALSE, document->load(file.Path(), &success));
  EXPECT_EQ(VARIANT_FALSE, success);
}

TEST_F(XMLSaxMemoryExceptions, Pass_out_of_the_load_of_a_file_when_they_are_the_library_s_own) {
  const Document document = NewDocument();
  TemporaryFile file(TextThatIsLogged());
  const RefusingLog log;
  short success = VARIANT_FALSE;
  EXPECT_EQ("CXMLSax - more than 256 entities refer to each other in a chain",
            ThrownMessage([&] { document->load(file.Path(), &success); }));
}
