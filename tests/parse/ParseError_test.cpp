#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <memory>
#include <new>
#include <string>

#include "harness/AllocationFailure.h"
#include "harness/InputContext.h"
#include "harness/Trees.h"

namespace {

typedef Ref<IXMLDOMParseError> Error;

Error ErrorOf(IXMLDOMDocument2* document) {
  IXMLDOMParseError* error = nullptr;
  EXPECT_EQ(S_OK, document->get_parseError(&error));
  return Error(error);
}

Error ErrorOfText(const std::string& xml) {
  const Document document = NewDocument();
  document->loadXML(xml.c_str());
  return ErrorOf(document);
}

/// An error object with every field set; null texts stay null.
Error MakeError(long code, const char* reason, const char* tag) {
  Error error(new IXMLDOMParseError);
  error->m_lErrorCode = code;
  error->m_lFilePos = 11;
  error->m_lLine = 22;
  error->m_lLinePos = 33;
  error->m_bstrReason = SysAllocString(reason);
  error->m_bstrSrcText = SysAllocString(tag);
  return error;
}

/// What a getter for a text said, its out-pointer set to "untouched" before.
struct TextResult {
  HRESULT result;
  std::string text;
};

TextResult Ask(IXMLDOMParseError* error, HRESULT (IXMLDOMParseError::*getter)(char**)) {
  char untouched[] = "untouched";
  char* out = untouched;
  const HRESULT result = (error->*getter)(&out);
  return TextResult{result, out == untouched ? "untouched" : TakeBstr(out)};
}

}  // namespace

// ---- The record

TEST(ParseError, Is_born_empty_counted_and_with_one_reference) {
  const Error error(new IXMLDOMParseError);
  EXPECT_EQ(0, error->m_lErrorCode);
  EXPECT_EQ(0, error->m_lFilePos);
  EXPECT_EQ(0, error->m_lLine);
  EXPECT_EQ(0, error->m_lLinePos);
  EXPECT_EQ(nullptr, error->m_bstrReason);
  EXPECT_EQ(nullptr, error->m_bstrSrcText);
  EXPECT_EQ(1, error->GetRefCount());
  EXPECT_EQ(1, IXMLDOMParseError::m_iObjCount);
}

TEST(ParseError, Frees_its_texts) {
  {
    const Error error = MakeError(7, "reason", "<tag>");
    EXPECT_EQ(2, GetNumBSTRsAllocated());
  }
  EXPECT_EQ(0, GetNumBSTRsAllocated());
  EXPECT_EQ(0, IXMLDOMParseError::m_iObjCount);
}

// ---- get_parseError

TEST(ParseErrorOfDocument, Refuses_a_null_out_pointer) {
  const Document document = NewDocument();
  EXPECT_EQ(E_ARGUMENT, document->get_parseError(nullptr));
  EXPECT_EQ(0, IXMLDOMParseError::m_iObjCount);
}

TEST(ParseErrorOfDocument, Is_empty_when_nothing_was_ever_loaded) {
  const Document document = NewDocument();
  const Error error = ErrorOf(document);
  EXPECT_EQ(0, error->m_lErrorCode);
  EXPECT_EQ(0, error->m_lFilePos);
  EXPECT_EQ(0, error->m_lLine);
  EXPECT_EQ(0, error->m_lLinePos);
  EXPECT_EQ(nullptr, error->m_bstrReason);
  EXPECT_EQ(nullptr, error->m_bstrSrcText);
}

TEST(ParseErrorOfDocument, Has_no_code_and_no_reason_after_a_good_load) {
  const Error error = ErrorOfText("<a>\n<b/></a>");
  EXPECT_EQ(0, error->m_lErrorCode);
  EXPECT_EQ(2, error->m_lLine);
  EXPECT_EQ(8, error->m_lLinePos);
  EXPECT_EQ(nullptr, error->m_bstrReason);
  EXPECT_EQ(ShownTag("</a>"), Text(error->m_bstrSrcText));
}

TEST(ParseErrorOfDocument, Has_no_code_after_a_file_could_not_be_opened) {
  const Document document = NewDocument();
  document->loadXML("<a><b></a>");
  std::string path = "/tmp/xmldom-file-that-is-not-there";
  short parsed = VARIANT_TRUE;
  document->load(&path[0], &parsed);
  const Error error = ErrorOf(document);
  EXPECT_EQ(0, error->m_lErrorCode);
  EXPECT_EQ(nullptr, error->m_bstrReason);
  EXPECT_EQ("undefined", Text(error->m_bstrSrcText));
}

TEST(ParseErrorOfDocument, Tells_code_reason_place_and_tag_after_a_bad_load) {
  const struct {
    const char* xml;
    long code;
    const char* reason;
    long line;
    long column;
    const char* tag;
  } rows[] = {
      {"<a><b></a>", 7, "mismatched tag", 1, 8, "</a>"},
      {"<a>\n<b x=1></b></a>", 4, "not well-formed (invalid token)", 2, 5, "<b x=1>"},
      {"<a>\n <b\n x=1\n></b></a>", 4, "not well-formed (invalid token)", 3, 3, "<b\n x=1\n>"},
      {"<a v='1' v='2'/>", 8, "duplicate attribute", 1, 9, "<a v='1' v='2'/>"},
      {"<a>&u;</a>", 11, "undefined entity", 1, 3, "<a>"},
      {"<a/>x", 9, "junk after document element", 1, 4, "<a/>"},
      {"<a/><b/>", 9, "junk after document element", 1, 4, "<b/>"},
      {"<a>", 3, "no element found", 1, 3, "<a>"},
      {"<a>x", 3, "no element found", 1, 4, "<a>"},
      {"<a>x <b", 5, "unclosed token", 1, 5, "<b"},
      {"abc", 2, "syntax error", 1, 0, "abc"},
      {"a>c", 2, "syntax error", 1, 0, "a>"},
      {"", 3, "no element found", 1, 0, "undefined"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.xml);
    const Error error = ErrorOfText(row.xml);
    EXPECT_EQ(row.code, error->m_lErrorCode);
    EXPECT_EQ(row.reason, Text(error->m_bstrReason));
    EXPECT_EQ(row.line, error->m_lLine);
    EXPECT_EQ(row.column, error->m_lLinePos);
    EXPECT_EQ(ShownTag(row.tag), Text(error->m_bstrSrcText));
  }
}

TEST(ParseErrorOfDocument, Keeps_511_bytes_of_the_tag) {
  const struct {
    std::size_t length;
    std::size_t kept;
  } rows[] = {{510, 510}, {511, 511}, {512, 511}, {100000, 511}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.length);
    const std::string tag = "</" + std::string(row.length - 3, 'x') + ">";
    const Error error = ErrorOfText("<a>" + tag);
    EXPECT_EQ(ShownTag(tag.substr(0, row.kept)), Text(error->m_bstrSrcText));
  }
}

TEST(ParseErrorOfDocument, Is_a_snapshot_that_outlives_its_document) {
  Document document = NewDocument();
  document->loadXML("<a></b>");
  const Error error = ErrorOf(document);
  document->loadXML("<a/>");
  document.Reset();
  EXPECT_EQ(7, error->m_lErrorCode);
  EXPECT_EQ("mismatched tag", Text(error->m_bstrReason));
  EXPECT_EQ(ShownTag("</b>"), Text(error->m_bstrSrcText));
}

TEST(ParseErrorOfDocument, Is_a_new_object_every_time) {
  const Document document = NewDocument();
  const Error first = ErrorOf(document);
  const Error second = ErrorOf(document);
  EXPECT_NE(first.Get(), second.Get());
  EXPECT_EQ(2, IXMLDOMParseError::m_iObjCount);
}

// The parser that tells it may never have made a copy of the text.
TEST(ParseErrorOfDocument, Needs_nothing_of_the_text_once_it_is_loaded) {
  for (const char* xml : {"<a>\n<b></a>", "<a>\n<b/></a>"}) {
    SCOPED_TRACE(xml);
    const Document document = NewDocument();
    {
      std::unique_ptr<std::string> text(new std::string(std::string(5000, '\n') + xml));
      document->loadXML(text->c_str());
    }
    const Error error = ErrorOf(document);
    EXPECT_EQ(5002, error->m_lLine);
    EXPECT_EQ(error->m_lLine, ErrorOf(document)->m_lLine);
  }
}

// ---- Getters

TEST(ParseErrorGetters, Refuse_null_out_pointers) {
  for (long code : {0L, 7L}) {
    SCOPED_TRACE(code);
    const Error error = MakeError(code, "reason", "<tag>");
    EXPECT_EQ(E_ARGUMENT, error->get_errorCode(nullptr));
    EXPECT_EQ(E_ARGUMENT, error->get_filepos(nullptr));
    EXPECT_EQ(E_ARGUMENT, error->get_line(nullptr));
    EXPECT_EQ(E_ARGUMENT, error->get_linepos(nullptr));
    EXPECT_EQ(E_ARGUMENT, error->get_reason(nullptr));
    EXPECT_EQ(E_ARGUMENT, error->get_srcText(nullptr));
    EXPECT_EQ(E_ARGUMENT, error->get_errormessage(nullptr));
  }
}

TEST(ParseErrorGetters, Give_the_numbers_and_tell_whether_there_was_an_error) {
  const struct {
    const char* name;
    HRESULT (IXMLDOMParseError::*getter)(long*);
    long value;
    HRESULT withoutError;
  } rows[] = {
      {"line", &IXMLDOMParseError::get_line, 22, S_FALSE},
      {"linepos", &IXMLDOMParseError::get_linepos, 33, S_FALSE},
      // The only one that does not look at the code.
      {"filepos", &IXMLDOMParseError::get_filepos, 11, S_OK},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    long value = -1;
    EXPECT_EQ(S_OK, (MakeError(7, "reason", "<tag>").Get()->*row.getter)(&value));
    EXPECT_EQ(row.value, value);
    value = -1;
    EXPECT_EQ(row.withoutError, (MakeError(0, nullptr, nullptr).Get()->*row.getter)(&value));
    EXPECT_EQ(row.value, value);
  }
}

TEST(ParseErrorGetters, Give_the_code_and_tell_whether_it_is_one) {
  const struct {
    long code;
    HRESULT result;
  } rows[] = {{7, S_OK}, {-1, S_OK}, {0, S_FALSE}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.code);
    long code = 77;
    EXPECT_EQ(row.result, MakeError(row.code, "reason", "<tag>")->get_errorCode(&code));
    EXPECT_EQ(row.code, code);
  }
}

TEST(ParseErrorGetters, Give_copies_of_the_texts_of_an_error) {
  const struct {
    const char* name;
    HRESULT (IXMLDOMParseError::*getter)(char**);
    const char* text;
  } rows[] = {
      {"reason", &IXMLDOMParseError::get_reason, "reason"},
      {"srcText", &IXMLDOMParseError::get_srcText, "<tag>"},
      {"errormessage", &IXMLDOMParseError::get_errormessage,
       "Error 7 (reason) at line 22, column 33, offending tag <tag>"},
  };
  const Error error = MakeError(7, "reason", "<tag>");
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const TextResult answer = Ask(error, row.getter);
    EXPECT_EQ(S_OK, answer.result);
    EXPECT_EQ(row.text, answer.text);
  }
}

TEST(ParseErrorGetters, Give_null_for_the_texts_of_no_error_but_leave_the_reason_alone) {
  const struct {
    const char* name;
    HRESULT (IXMLDOMParseError::*getter)(char**);
    const char* text;
  } rows[] = {
      {"reason", &IXMLDOMParseError::get_reason, "untouched"},
      {"srcText", &IXMLDOMParseError::get_srcText, "(null)"},
      {"errormessage", &IXMLDOMParseError::get_errormessage, "(null)"},
  };
  const Error error = MakeError(0, "reason", "<tag>");
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    const TextResult answer = Ask(error, row.getter);
    EXPECT_EQ(S_FALSE, answer.result);
    EXPECT_EQ(row.text, answer.text);
  }
}

TEST(ParseErrorGetters, Give_null_for_texts_that_an_error_lacks) {
  const Error error = MakeError(7, nullptr, nullptr);
  for (auto getter : {&IXMLDOMParseError::get_reason, &IXMLDOMParseError::get_srcText}) {
    const TextResult answer = Ask(error, getter);
    EXPECT_EQ(S_OK, answer.result);
    EXPECT_EQ("(null)", answer.text);
  }
}

TEST(ParseErrorMessage, Prints_missing_texts_as_null) {
  const Error error = MakeError(-7, nullptr, nullptr);
  EXPECT_EQ("Error -7 ((null)) at line 22, column 33, offending tag (null)",
            Ask(error, &IXMLDOMParseError::get_errormessage).text);
}

TEST(ParseErrorMessage, Holds_at_most_2047_bytes) {
  const Error error = MakeError(7, "reason", std::string(100000, 'x').c_str());
  const std::string whole =
      "Error 7 (reason) at line 22, column 33, offending tag " + std::string(2047, 'x');
  EXPECT_EQ(whole.substr(0, 2047), Ask(error, &IXMLDOMParseError::get_errormessage).text);
}

TEST(ParseErrorMessage, Takes_texts_for_what_they_are) {
  const Error error = MakeError(7, "100%s", "<%n>");
  EXPECT_EQ("Error 7 (100%s) at line 22, column 33, offending tag <%n>",
            Ask(error, &IXMLDOMParseError::get_errormessage).text);
}

// ---- Assignment

TEST(ParseErrorAssignment, Copies_numbers_and_texts) {
  const Error target = MakeError(1, "old", "<old>");
  {
    const Error source = MakeError(7, "reason", "<tag>");
    source->m_lFilePos = 44;
    source->m_lLine = 55;
    source->m_lLinePos = 66;
    EXPECT_EQ(target.Get(), &(*target.Get() = *source.Get()));
  }
  EXPECT_EQ(7, target->m_lErrorCode);
  EXPECT_EQ(44, target->m_lFilePos);
  EXPECT_EQ(55, target->m_lLine);
  EXPECT_EQ(66, target->m_lLinePos);
  EXPECT_EQ("reason", Text(target->m_bstrReason));
  EXPECT_EQ("<tag>", Text(target->m_bstrSrcText));
}

TEST(ParseErrorAssignment, Copies_missing_texts_as_missing) {
  const Error target = MakeError(1, "old", "<old>");
  const Error source = MakeError(7, nullptr, nullptr);
  *target.Get() = *source.Get();
  EXPECT_EQ(nullptr, target->m_bstrReason);
  EXPECT_EQ(nullptr, target->m_bstrSrcText);
}

TEST(ParseErrorAssignment, Of_an_error_to_itself_changes_nothing) {
  const Error error = MakeError(7, "reason", "<tag>");
  IXMLDOMParseError& same = *error.Get();
  *error.Get() = same;
  EXPECT_EQ(7, error->m_lErrorCode);
  EXPECT_EQ("reason", Text(error->m_bstrReason));
  EXPECT_EQ("<tag>", Text(error->m_bstrSrcText));
}

TEST(ParseErrorAssignment, Changes_nothing_when_memory_is_out) {
  const Error source = MakeError(7, "mismatched tag", "</a>");
  for (int allowed = 0; allowed < 2; ++allowed) {
    SCOPED_TRACE(allowed);
    const Error target = MakeError(3, "no element found", "<b>");
    target->m_lLine = 1;
    const long strings = GetNumBSTRsAllocated();
    bool isOut = false;
    if (AllocationFailure::ReachesMalloc()) {
      AllocationFailure limit(allowed);
      try {
        *target = *source;
      } catch (const std::bad_alloc&) {
        isOut = true;
      }
    }
    EXPECT_EQ(AllocationFailure::ReachesMalloc(), isOut);
    EXPECT_EQ(3, target->m_lErrorCode);
    EXPECT_EQ(1, target->m_lLine);
    EXPECT_STREQ("no element found", target->m_bstrReason);
    EXPECT_STREQ("<b>", target->m_bstrSrcText);
    EXPECT_EQ(strings, GetNumBSTRsAllocated());
  }
}

TEST(ParseErrorAssignment, Leaves_reference_counts_alone) {
  const Error target(new IXMLDOMParseError);
  const Error source(new IXMLDOMParseError);
  source->AddRef();
  *target.Get() = *source.Get();
  EXPECT_EQ(1, target->GetRefCount());
  EXPECT_EQ(1, source->RealRelease());
}
