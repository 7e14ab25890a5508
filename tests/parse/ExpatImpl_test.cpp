#include <gtest/gtest.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include <functional>
#include <new>
#include <string>

#include "harness/AllocationFailure.h"
#include "harness/HugeText.h"
#include "harness/InputContext.h"
#include "harness/Trees.h"

namespace {

/// A handler object that writes down what it is told.
class Recorder : public CExpatImpl<Recorder> {
 public:
  Recorder() { CreateParser(); }
  ~Recorder() { DestroyParser(); }

  void OnStartElement(const char* name, const char** attributes) {
    ThrowAt("start");
    Note(std::string("start ") + name);
    for (; *attributes != nullptr; ++attributes) m_events += std::string(" ") + *attributes;
  }
  void OnEndElement(const char* name) {
    ThrowAt("end");
    Note(std::string("end ") + name);
  }
  void OnDefault(const char* text, int length) {
    ThrowAt("default");
    Note("default " + std::string(text, static_cast<std::size_t>(length)));
    m_byteCount = GetCurrentByteCount();
  }

  std::string m_events;
  std::string m_thrower;  // the event that throws its own name
  int m_byteCount = -1;   // of the latest default event

 private:
  void Note(const std::string& event) { m_events += (m_events.empty() ? "" : "|") + event; }
  void ThrowAt(const std::string& event) {
    if (event == m_thrower) throw event;
  }
};

}  // namespace

// ---- The parser

TEST(ExpatImpl, Has_no_parser_before_it_is_made) {
  const Document document = NewDocument();
  const CXMLSax sax(document);
  EXPECT_EQ(nullptr, sax.m_p);
}

TEST(ExpatImpl, Registers_the_handler_object_with_the_parser) {
  const Document document = NewDocument();
  CXMLSax sax(document);
  EXPECT_TRUE(sax.CreateParser());
  ASSERT_NE(nullptr, sax.m_p);
  EXPECT_EQ(&sax, XML_GetUserData(sax.m_p));
}

TEST(ExpatImpl, Has_no_parser_after_it_is_destroyed) {
  const Document document = NewDocument();
  CXMLSax sax(document);
  sax.CreateParser();
  sax.DestroyParser();
  EXPECT_EQ(nullptr, sax.m_p);
  sax.DestroyParser();
  EXPECT_EQ(nullptr, sax.m_p);
}

// ---- Handlers

TEST(ExpatImplHandlers, Are_on_from_the_beginning) {
  Recorder recorder;
  recorder.Parse("<a v='1'>x<b/>y</a>", -1, true);
  EXPECT_EQ("start a v 1|default x|start b|end b|default y|end a", recorder.m_events);
}

TEST(ExpatImplHandlers, Can_be_switched_off_and_on) {
  const struct {
    const char* what;
    void (*set)(Recorder&);
    const char* events;
  } rows[] = {
      {"start off", [](Recorder& recorder) { recorder.EnableStartElementHandler(false); },
       "default <a>|default x|end a"},
      {"end off", [](Recorder& recorder) { recorder.EnableEndElementHandler(false); },
       "start a|default x|default </a>"},
      {"elements off", [](Recorder& recorder) { recorder.EnableElementHandler(false); },
       "default <a>|default x|default </a>"},
      {"default off", [](Recorder& recorder) { recorder.EnableDefaultHandler(false, true); },
       "start a|end a"},
      {"default off without expansion",
       [](Recorder& recorder) { recorder.EnableDefaultHandler(false, false); }, "start a|end a"},
      {"all on again",
       [](Recorder& recorder) {
         recorder.EnableElementHandler(false);
         recorder.EnableDefaultHandler(false, false);
         recorder.EnableStartElementHandler(true);
         recorder.EnableEndElementHandler(true);
         recorder.EnableDefaultHandler(true, true);
       },
       "start a|default x|end a"},
      {"elements on again",
       [](Recorder& recorder) {
         recorder.EnableElementHandler(false);
         recorder.EnableElementHandler(true);
       },
       "start a|default x|end a"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.what);
    Recorder recorder;
    row.set(recorder);
    recorder.Parse("<a>x</a>", -1, true);
    EXPECT_EQ(row.events, recorder.m_events);
  }
}

TEST(ExpatImplHandlers, Get_entities_replaced_only_with_expansion) {
  const char* const xml = "<!DOCTYPE a [<!ENTITY e 'x'>]><a>&e;</a>";
  for (bool expand : {true, false}) {
    Recorder recorder;
    recorder.EnableDefaultHandler(true, expand);
    recorder.Parse(xml, -1, true);
    const std::string inRoot = recorder.m_events.substr(recorder.m_events.find("start a"));
    EXPECT_EQ(expand ? "start a|default x|end a" : "start a|default &e;|end a", inRoot);
  }
}

TEST(ExpatImplHandlers, May_throw_through_the_parse) {
  for (const std::string thrower : {"start", "end", "default"}) {
    SCOPED_TRACE(thrower);
    Recorder recorder;
    recorder.m_thrower = thrower;
    EXPECT_THROW(recorder.Parse("<a>x</a>", -1, true), std::string);
    EXPECT_EQ(XML_ERROR_ABORTED, recorder.GetErrorCode());
  }
}

namespace {

/// A handler object whose handlers do what a case wants.
class Caller : public CExpatImpl<Caller> {
 public:
  explicit Caller(std::function<void()> onStart) : m_onStart(onStart) { CreateParser(); }
  ~Caller() { DestroyParser(); }

  void OnStartElement(const char*, const char**) {
    ++m_starts;
    m_onStart();
  }
  void OnEndElement(const char*) {}
  void OnDefault(const char*, int) {}

  int m_starts = 0;

 private:
  std::function<void()> m_onStart;
};

struct NoMoreRoom : std::bad_alloc {};

}  // namespace

TEST(ExpatImplHandlers, May_throw_that_memory_is_out_or_something_derived_from_that) {
  Caller plain([] { throw std::bad_alloc(); });
  EXPECT_THROW(plain.Parse("<a/>", -1, true), std::bad_alloc);
  Caller derived([] { throw NoMoreRoom(); });
  EXPECT_THROW(derived.Parse("<a/>", -1, true), NoMoreRoom);
}

namespace {

/// A handler object with a member that has the name of a private one of the binding.
class Keeper : public CExpatImpl<Keeper> {
 public:
  Keeper() { CreateParser(); }
  ~Keeper() { DestroyParser(); }

  void OnStartElement(const char*, const char**) { throw std::string("start"); }
  void OnEndElement(const char*) {}
  void OnDefault(const char*, int) {}

  void Keep() { m_isKept = true; }

  bool m_isKept = false;
};

}  // namespace

TEST(ExpatImplHandlers, May_throw_whatever_names_the_members_of_their_class_have) {
  Keeper keeper;
  EXPECT_THROW(keeper.Parse("<a/>", -1, true), std::string);
  EXPECT_FALSE(keeper.m_isKept);
}

TEST(ExpatImplHandlers, Are_not_called_any_more_once_one_has_thrown) {
  Recorder recorder;
  recorder.m_thrower = "default";
  EXPECT_THROW(recorder.Parse("<a>x<b/></a>", -1, true), std::string);
  EXPECT_EQ("start a", recorder.m_events);
}

// Expat itself tells no error where a piece ends behind the opening of a CDATA section.
TEST(ExpatImplHandlers, That_throw_end_the_parse_also_where_Expat_tells_no_error) {
  Recorder recorder;
  ASSERT_TRUE(recorder.Parse("<a>", -1, false));
  recorder.m_thrower = "default";
  EXPECT_THROW(recorder.Parse("<![CDATA[", -1, false), std::string);
  EXPECT_EQ(XML_ERROR_NONE, recorder.GetErrorCode());
  recorder.m_thrower = "";
  EXPECT_FALSE(recorder.Parse("x]]></a>", -1, true));
  EXPECT_EQ(XML_ERROR_FINISHED, recorder.GetErrorCode());
  EXPECT_EQ("start a", recorder.m_events);
}

TEST(ExpatImplHandlers, May_parse_another_text_which_keeps_its_exceptions_to_itself) {
  Caller caller([] {
    Recorder recorder;
    recorder.m_thrower = "default";
    EXPECT_THROW(recorder.Parse("<b>x</b>", -1, true), std::string);
  });
  EXPECT_TRUE(caller.Parse("<a><b/></a>", -1, true));
  EXPECT_EQ(2, caller.m_starts);
}

TEST(ExpatImplHandlers, Called_by_hand_in_the_parse_of_another_parser_throw_to_their_caller) {
  Recorder other;
  other.m_thrower = "end";
  Caller caller([&other] { EXPECT_THROW(Recorder::EndElementHandler(&other, "x"), std::string); });
  EXPECT_TRUE(caller.Parse("<a><b/></a>", -1, true));
  EXPECT_EQ(2, caller.m_starts);
  EXPECT_TRUE(other.Parse("<a>", -1, false)) << "its own parser has been stopped";
}

TEST(ExpatImplHandlers, Called_by_hand_outside_a_parse_throw_to_their_caller) {
  Recorder recorder;
  recorder.m_thrower = "end";
  EXPECT_THROW(Recorder::EndElementHandler(&recorder, "x"), std::string);
  EXPECT_TRUE(recorder.Parse("<a>", -1, false));
}

// ---- Parse

TEST(ExpatImplParse, Measures_the_text_when_the_length_is_negative) {
  for (int length : {-1, -2, INT_MIN}) {
    SCOPED_TRACE(length);
    Recorder recorder;
    EXPECT_TRUE(recorder.Parse("<a/>\0<b/>", length, true));
    EXPECT_EQ("start a|end a", recorder.m_events);
  }
}

TEST(ExpatImplParse, Takes_the_length_as_it_is_otherwise) {
  const struct {
    int length;
    bool parsed;
  } rows[] = {{4, true}, {0, false}, {3, false}, {5, false}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.length);
    Recorder recorder;
    EXPECT_EQ(row.parsed, recorder.Parse("<a/>\0", row.length, true));
  }
}

TEST(ExpatImplParse, Waits_for_the_final_piece) {
  Recorder recorder;
  EXPECT_TRUE(recorder.Parse("<a>x</", -1, false));
  EXPECT_TRUE(recorder.Parse("a>", -1, true));
  EXPECT_EQ("start a|default x|end a", recorder.m_events);
}

TEST(ExpatImplParse, Tells_when_a_piece_does_not_parse) {
  Recorder recorder;
  EXPECT_FALSE(recorder.Parse("<a></b>", -1, false));
  EXPECT_EQ("start a", recorder.m_events);
}

TEST(ExpatImplParse, Refuses_a_text_that_is_longer_than_the_parser_can_count) {
  Recorder recorder;
  HugeText text;
  if (text.Get() == nullptr) GTEST_SKIP() << "there is no room for the text";
  EXPECT_FALSE(recorder.Parse(text.Get(), -1, true));
  EXPECT_EQ("", recorder.m_events);
}

// ---- What the parser tells

TEST(ExpatImplGetters, Tell_where_and_why_a_parse_failed) {
  Recorder recorder;
  recorder.Parse("<a>\n <b></a>", -1, true);
  EXPECT_EQ(XML_ERROR_TAG_MISMATCH, recorder.GetErrorCode());
  EXPECT_EQ(2, recorder.GetCurrentLineNumber());
  EXPECT_EQ(6, recorder.GetCurrentColumnNumber());
}

TEST(ExpatImplGetters, Tell_no_error_after_a_parse) {
  Recorder recorder;
  recorder.Parse("<a/>", -1, true);
  EXPECT_EQ(XML_ERROR_NONE, recorder.GetErrorCode());
  EXPECT_EQ(1, recorder.GetCurrentLineNumber());
  EXPECT_EQ(4, recorder.GetCurrentColumnNumber());
}

TEST(ExpatImplGetters, Tell_how_long_an_event_is) {
  Recorder recorder;
  recorder.Parse("<a>&quot;</a>", -1, true);
  EXPECT_EQ(6, recorder.m_byteCount);
}

TEST(ExpatImplGetters, Give_the_input_with_the_place_of_the_event) {
  if (!HasInputContext()) GTEST_SKIP() << "the parser keeps no text";
  const std::string xml = "<a>\n <b></a>";
  Recorder recorder;
  recorder.Parse(xml.c_str(), -1, true);
  int offset = -1;
  int size = -1;
  const char* input = recorder.GetInputContext(&offset, &size);
  ASSERT_NE(nullptr, input);
  EXPECT_EQ(xml, std::string(input, static_cast<std::size_t>(size)));
  EXPECT_EQ(xml.find("a>", 4), static_cast<std::size_t>(offset));
}

TEST(ExpatImplGetters, Give_no_input_before_a_parse) {
  Recorder recorder;
  int offset = -1;
  int size = -1;
  EXPECT_EQ(nullptr, recorder.GetInputContext(&offset, &size));
}

// ---- Without a parser

namespace {

/// A member that needs the parser: its signature as the compilers print it, with a blank where
/// only one of them does.
struct Member {
  const char* result;
  const char* name;
  const char* arguments;
  void (*call)(CXMLSax& sax);
};

std::ostream& operator<<(std::ostream& out, const Member& member) { return out << member.name; }

class ExpatImplDeathTest : public testing::TestWithParam<Member> {};

const Member kMembers[] = {
    {"void", "EnableStartElementHandler", "bool",
     [](CXMLSax& sax) { sax.EnableStartElementHandler(true); }},
    {"void", "EnableEndElementHandler", "bool",
     [](CXMLSax& sax) { sax.EnableEndElementHandler(true); }},
    {"void", "EnableElementHandler", "bool", [](CXMLSax& sax) { sax.EnableElementHandler(false); }},
    {"void", "EnableDefaultHandler", "bool, bool",
     [](CXMLSax& sax) { sax.EnableDefaultHandler(true, true); }},
    {"bool", "Parse", "const char ?\\*, int, bool", [](CXMLSax& sax) { sax.Parse("", 0, true); }},
    {"XML_Error", "GetErrorCode", "", [](CXMLSax& sax) { sax.GetErrorCode(); }},
    {"int", "GetCurrentByteCount", "", [](CXMLSax& sax) { sax.GetCurrentByteCount(); }},
    {"int", "GetCurrentLineNumber", "", [](CXMLSax& sax) { sax.GetCurrentLineNumber(); }},
    {"int", "GetCurrentColumnNumber", "", [](CXMLSax& sax) { sax.GetCurrentColumnNumber(); }},
    {"const char ?\\*", "GetInputContext", "int ?\\*, int ?\\*",
     [](CXMLSax& sax) { sax.GetInputContext(nullptr, nullptr); }},
};

std::string AssertionIn(const std::string& result, const std::string& name,
                        const std::string& arguments) {
  return "ExpatImpl\\.h:[0-9]+: " + result + " ?CExpatImpl<(_T|CXMLSax)>::" + name + "\\(" +
         arguments + "\\) \\[(with )?_T = CXMLSax\\]: Assertion `m_p != __null' failed";
}

}  // namespace

TEST_P(ExpatImplDeathTest, Asserts_that_there_is_a_parser) {
  const Document document = NewDocument();
  CXMLSax sax(document);
  const Member& member = GetParam();
  EXPECT_DEATH(member.call(sax), AssertionIn(member.result, member.name, member.arguments));
}

INSTANTIATE_TEST_SUITE_P(All, ExpatImplDeathTest, testing::ValuesIn(kMembers),
                         [](const testing::TestParamInfo<Member>& row) {
                           return std::string(row.param.name);
                         });

TEST(ExpatImplDeathTest, A_load_without_parser_asserts_in_the_parse) {
  const Document document = NewDocument();
  CXMLSax sax(document);
  EXPECT_DEATH(sax.LoadXML("<a/>"), AssertionIn("bool", "Parse", "const char ?\\*, int, bool"));
}

TEST(ExpatImplDeathTest, Asking_for_the_error_asserts_when_the_builder_has_no_parser) {
  const Document document = Load("<a/>");
  document->m_pSax->DestroyParser();
  IXMLDOMParseError* error = nullptr;
  EXPECT_DEATH(document->get_parseError(&error), AssertionIn("XML_Error", "GetErrorCode", ""));
}

TEST(ExpatImplMemoryDeathTest, Without_memory_has_no_parser_and_asserts_in_a_load) {
  if (!AllocationFailure::ReachesMalloc()) GTEST_SKIP() << "malloc cannot be made to fail";
  const Document document = NewDocument();
  CXMLSax sax(document);
  {
    const AllocationFailure limit(0);
    EXPECT_FALSE(sax.CreateParser());
  }
  EXPECT_EQ(nullptr, sax.m_p);
  EXPECT_DEATH(sax.LoadXML("<a/>"), "Assertion `m_p != ");
  EXPECT_TRUE(sax.CreateParser());
  EXPECT_TRUE(sax.LoadXML("<a/>"));
}
