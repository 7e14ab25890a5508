// Parsers whose events go to a handler of an application's own class.

#include <gtest/gtest.h>
#include <xmldom/parse/ExpatImpl.h>
#include <xmldom/xmldom.h>

#include <string>

#include "allocation/Sweeps.h"
#include "harness/Trees.h"

namespace {

/// A handler object as an application might write one: it keeps what it is told, and so throws when
/// memory is out.
class Recorder : public CExpatImpl<Recorder> {
 public:
  ~Recorder() { DestroyParser(); }

  void OnStartElement(const char* name, const char** attributes) {
    Record("start", name);
    for (; *attributes != nullptr; ++attributes) Record("attribute", *attributes);
  }
  void OnEndElement(const char* name) { Record("end", name); }
  void OnDefault(const char* text, int length) {
    Record("default", std::string(text, static_cast<std::size_t>(length)));
  }

  const std::string& Events() const { return m_events; }

 private:
  void Record(const std::string& kind, const std::string& text) {
    m_events += kind + " " + text + "\n";
  }

  std::string m_events;
};

const char* const kText =
    "<!DOCTYPE a [<!ENTITY e 'an entity of some length'>]>"
    "<a k='&amp;1' another='a value of some length'>&e;<b/>text<c>&e;</c><?p i?><!-- c --></a>";

/// Notes what came of a parse. One that memory has ended has failed.
void NoteParse(Recorder& recorder, bool isParsed) {
  if (!isParsed && recorder.GetErrorCode() == XML_ERROR_NO_MEMORY) return NoteFailure();
  Note(isParsed);
  Note(recorder.Events().c_str());
}

const FailingCall kHandlers[] = {
    {"CExpatImpl, CExpatImpl::DestroyParser",
     [](IXMLDOMDocument2*) {
       Recorder recorder;
       Note(recorder.CreateParser());
       recorder.DestroyParser();
       Note(recorder.m_p == nullptr);
     }},
    {"CExpatImpl::Parse",
     [](IXMLDOMDocument2*) {
       Recorder recorder;
       recorder.CreateParser();
       NoteParse(recorder, recorder.Parse(kText, -1, true));
     }},
    {"CExpatImpl::Parse, in pieces",
     [](IXMLDOMDocument2*) {
       Recorder recorder;
       recorder.CreateParser();
       bool isParsed = true;
       for (const char* at = kText; *at != '\0' && isParsed; ++at) {
         isParsed = recorder.Parse(at, 1, at[1] == '\0');
       }
       NoteParse(recorder, isParsed);
     }},
    {"CExpatImpl::Parse, a text that does not parse",
     [](IXMLDOMDocument2*) {
       Recorder recorder;
       recorder.CreateParser();
       NoteParse(recorder, recorder.Parse("<a><b x='1'>text</a>", -1, true));
     }},
    {"CExpatImpl::Parse, in a handler",
     [](IXMLDOMDocument2*) {
       struct Outer : CExpatImpl<Outer> {
         ~Outer() { DestroyParser(); }
         void OnStartElement(const char*, const char**) {
           inner.CreateParser();
           isInnerParsed = inner.Parse(kText, -1, true);
         }
         void OnEndElement(const char*) {}
         void OnDefault(const char*, int) {}
         Recorder inner;
         bool isInnerParsed = false;
       } outer;
       outer.CreateParser();
       const bool isParsed = outer.Parse("<a/>", -1, true);
       if (!isParsed && outer.GetErrorCode() == XML_ERROR_NO_MEMORY) return NoteFailure();
       NoteParse(outer.inner, outer.isInnerParsed);
     }},
    {"GetErrorCode, GetInputContext",
     [](IXMLDOMDocument2*) {
       Recorder recorder;
       recorder.CreateParser();
       if (recorder.Parse("<a></b>", -1, true)) NoteFault("it has parsed");
       if (recorder.GetErrorCode() == XML_ERROR_NO_MEMORY) return NoteFailure();
       Note(recorder.GetErrorCode());
       int offset = 0;
       int size = 0;
       Note(recorder.GetInputContext(&offset, &size) != nullptr);
       Note(offset);
     }},
    {"GetCurrentByteCount, GetCurrentLineNumber, GetCurrentColumnNumber",
     [](IXMLDOMDocument2*) {
       Recorder recorder;
       recorder.CreateParser();
       if (!recorder.Parse("<a>\n <b/></a>", -1, true)) return NoteFailure();
       Note(recorder.GetCurrentByteCount());
       Note(recorder.GetCurrentLineNumber());
       Note(recorder.GetCurrentColumnNumber());
     }},
    {"EnableElementHandler, EnableDefaultHandler",
     [](IXMLDOMDocument2*) {
       Recorder recorder;
       recorder.CreateParser();
       recorder.EnableElementHandler(false);
       recorder.EnableDefaultHandler(true, false);
       NoteParse(recorder, recorder.Parse(kText, -1, true));
     }},
    {"EnableStartElementHandler, EnableEndElementHandler",
     [](IXMLDOMDocument2*) {
       Recorder recorder;
       recorder.CreateParser();
       recorder.EnableStartElementHandler(false);
       recorder.EnableEndElementHandler(true);
       NoteParse(recorder, recorder.Parse(kText, -1, true));
     }},
    {"StartElementHandler, DefaultHandler, EndElementHandler",
     [](IXMLDOMDocument2*) {
       Recorder recorder;
       const char* attributes[] = {"k", "v", nullptr};
       Recorder::StartElementHandler(&recorder, "a name of some length", attributes);
       Recorder::DefaultHandler(&recorder, "a text of some length", 21);
       Recorder::EndElementHandler(&recorder, "a name of some length");
       Note(recorder.Events().c_str());
     }},
};

class AllocationHandlers : public testing::TestWithParam<FailingCall> {};

TEST_P(AllocationHandlers, That_fail_leave_nothing_behind) {
  FailEverywhere("handlers of an application", GetParam(), FailingCall::KEEPS_TREE, On::NO_TREE);
}

INSTANTIATE_TEST_SUITE_P(All, AllocationHandlers, testing::ValuesIn(kHandlers));

// Nothing is spared: whoever makes a parser is told that there is none.
TEST(AllocationHandlers, Without_memory_for_a_parser_have_none) {
  const FailingCall call = {"CExpatImpl::CreateParser", [](IXMLDOMDocument2*) {
                              Recorder recorder;
                              if (!recorder.CreateParser()) {
                                if (recorder.m_p != nullptr) NoteFault("there is a parser");
                                NoteFailure();
                              }
                            }};
  FailEverywhere("handlers of an application", call, FailingCall::KEEPS_TREE, On::NO_TREE,
                 AllocationFailure::EVERYBODY);
}

}  // namespace
