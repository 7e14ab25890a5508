// Loads, and what tells of them.

#include <gtest/gtest.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include <string>

#include "allocation/Sweeps.h"
#include "harness/TemporaryFile.h"
#include "harness/Trees.h"

namespace {

/// In a load that failed the document holds what had been read; whoever asks is told.
void Expect(bool isLoaded) {
  if (!isLoaded) NoteFailure();
}

std::string Utf16(const std::string& text) {
  std::string wide = "\xff\xfe";
  for (char c : text) wide += std::string(1, c) + '\0';
  return wide;
}

const char* const kEntities =
    "<!DOCTYPE a [<!ENTITY e '<b/>text'><!ENTITY f '&e;&e;'><!ATTLIST b z CDATA 'x'>]>"
    "<a k='&amp;1'>&f;<c>&e;</c><?p i?><!-- c --></a>";

void DropError(IXMLDOMDocument2* document) {
  IXMLDOMParseError* error = nullptr;
  document->get_parseError(&error);
  Drop(error);
}

const FailingCall kLoading[] = {
    {"loadXML",
     [](IXMLDOMDocument2* document) {
       Expect(document->loadXML(kDeepXml.c_str()) == VARIANT_TRUE);
     }},
    {"loadXML, with a result",
     [](IXMLDOMDocument2* document) {
       char text[] = "<a b='1'>text<c/></a>";
       short isLoaded = VARIANT_FALSE;
       Expect(document->loadXML(text, &isLoaded) == S_OK);
     }},
    {"loadXML, entities and default attributes",
     [](IXMLDOMDocument2* document) { Expect(document->loadXML(kEntities) == VARIANT_TRUE); }},
    {"loadXML, without formatted layout",
     [](IXMLDOMDocument2* document) {
       document->m_uFlags = 0;
       Expect(document->loadXML("<a>\n one\n <b> two </b>\n</a>") == VARIANT_TRUE);
     }},
    {"loadXML, another encoding",
     [](IXMLDOMDocument2* document) {
       Expect(
           document->loadXML("<?xml version='1.0' encoding='ISO-8859-1'?><a b='\xe9'>\xe8</a>") ==
           VARIANT_TRUE);
     }},
    {"loadXML, a long text",
     [](IXMLDOMDocument2* document) {
       static const std::string xml = "<a b='" + std::string(9000, 'v') + "'>" +
                                      std::string(20000, 'x') + Repeat("<b>y &lt; z\n</b>", 200) +
                                      "</a>";
       Expect(document->loadXML(xml.c_str()) == VARIANT_TRUE);
     }},
    {"loadXML, many attributes",
     [](IXMLDOMDocument2* document) {
       static const std::string xml = [] {
         std::string text = "<a";
         for (int i = 0; i < 100; ++i) text += " k" + std::to_string(i) + "='v'";
         return text + "/>";
       }();
       Expect(document->loadXML(xml.c_str()) == VARIANT_TRUE);
     }},
    {"loadXML, twice",
     [](IXMLDOMDocument2* document) {
       const bool isFirst = document->loadXML("<a>1</a>") == VARIANT_TRUE;
       Expect(document->loadXML("<b c='2'/>") == VARIANT_TRUE && isFirst);
     }},
    {"loadXML, a text that does not parse",
     [](IXMLDOMDocument2* document) {
       Expect(document->loadXML("<a v='1'>x<b>y</b>z<c>") == VARIANT_TRUE);
       DropError(document);
     }},
    {"loadXML, nothing",
     [](IXMLDOMDocument2* document) { Expect(document->loadXML(nullptr) == VARIANT_TRUE); }},
    {"load",
     [](IXMLDOMDocument2* document) {
       static TemporaryFile file(kDeepXml);
       short isLoaded = VARIANT_FALSE;
       Expect(document->load(file.Path(), &isLoaded) == S_OK);
     }},
    {"load, UTF-16",
     [](IXMLDOMDocument2* document) {
       static TemporaryFile file(Utf16("<a b='1'>t<c>u</c></a>"));
       short isLoaded = VARIANT_FALSE;
       Expect(document->load(file.Path(), &isLoaded) == S_OK);
     }},
    {"load, no such file",
     [](IXMLDOMDocument2* document) {
       char path[] = "/tmp/there/is/no/such/file";
       short isLoaded = VARIANT_FALSE;
       Note(document->load(path, &isLoaded));
     }},
    {"load, a folder",
     [](IXMLDOMDocument2* document) {
       char path[] = "/tmp";
       short isLoaded = VARIANT_FALSE;
       Expect(document->load(path, &isLoaded) == S_OK);
     }},
    {"ReleaseParser",
     [](IXMLDOMDocument2* document) {
       document->ReleaseParser();
       DropError(document);
     }},
};

const FailingCall kBuilders[] = {
    {"CXMLSax",
     [](IXMLDOMDocument2* document) {
       const CXMLSax sax(document);
       Note(sax.m_p == nullptr);
     }},
    {"SetMaxDefaultsFactor",
     [](IXMLDOMDocument2* document) {
       SetMaxDefaultsFactor(100);
       Expect(document->loadXML(kEntities) == VARIANT_TRUE);
     }},
    {"CXMLSax::LoadXML",
     [](IXMLDOMDocument2* document) {
       CXMLSax sax(document);
       sax.CreateParser();
       Expect(sax.LoadXML(kEntities));
     }},
    {"CXMLSax::LoadFromFile",
     [](IXMLDOMDocument2* document) {
       static TemporaryFile file(kEntities);
       CXMLSax sax(document);
       sax.CreateParser();
       Expect(sax.LoadFromFile(file.Path()) == S_OK);
     }},
    {"CXMLSax::GetErrorStr, CXMLSax::GetErrorTag",
     [](IXMLDOMDocument2* document) {
       CXMLSax sax(document);
       sax.CreateParser();
       Expect(sax.LoadXML("<a><b x='1'</a>"));
       char text[200];
       Note(sax.GetErrorStr(text, sizeof text));
       Note(sax.GetErrorTag(text, sizeof text));
     }},
    {"OnStartElement, OnDefault, OnEndElement, by hand",
     [](IXMLDOMDocument2* document) {
       CXMLSax sax(document);
       CNodeStack stack;
       sax.m_pNodeStack = &stack;
       struct Guard {
         CXMLSax& sax;
         ~Guard() { sax.m_pNodeStack = nullptr; }
       } guard = {sax};
       sax.m_bFirstElement = 1;
       const char* attributes[] = {"k", "1 < 2", "m", "", nullptr};
       sax.OnStartElement("by-hand", attributes);
       sax.OnDefault("text", 4);
       sax.OnStartElement("inner", nullptr);
       sax.OnDefault("more", 4);
       sax.OnEndElement("inner");
       sax.OnDefault(" and more", 9);
       sax.OnEndElement("by-hand");
     }},
    {"CExpatImpl::Parse, of a builder, in pieces",
     [](IXMLDOMDocument2* document) {
       CXMLSax sax(document);
       sax.CreateParser();
       sax.m_pNodeStack = new CNodeStack;
       sax.m_bFirstElement = 1;
       bool isParsed = true;
       const std::size_t size = std::char_traits<char>::length(kEntities);
       for (std::size_t at = 0; at < size && isParsed; at += 7) {
         const std::size_t length = size - at < 7 ? size - at : 7;
         isParsed = sax.Parse(kEntities + at, static_cast<int>(length), at + 7 >= size);
       }
       Expect(isParsed);
     }},
};

class AllocationLoading : public testing::TestWithParam<FailingCall> {};

TEST_P(AllocationLoading, That_fails_leaves_a_whole_tree_and_nothing_behind) {
  FailEverywhere("loading", GetParam(), FailingCall::CHANGES_TREE);
}

INSTANTIATE_TEST_SUITE_P(Documents, AllocationLoading, testing::ValuesIn(kLoading));
INSTANTIATE_TEST_SUITE_P(Builders, AllocationLoading, testing::ValuesIn(kBuilders));

/// What is read of the error of a load; reading changes no tree.
const FailingCall kErrors[] = {
    {"get_parseError", DropError},
    {"get_errorCode, get_reason, get_srcText, get_errormessage",
     [](IXMLDOMDocument2* document) {
       Document other;
       Create(other.Out());
       if (other->loadXML("<a>\n<b x='1'>t</a>") == VARIANT_TRUE) Note("loaded");
       Ref<IXMLDOMParseError> error;
       other->get_parseError(error.Out());
       long code = 0;
       error->get_errorCode(&code);
       if (code == XML_ERROR_NO_MEMORY) NoteFailure();
       BSTR text = nullptr;
       error->get_reason(&text);
       NoteAndFree(text);
       error->get_srcText(&text);
       NoteAndFree(text);
       error->get_errormessage(&text);
       NoteAndFree(text);
       Note(Root(document)->m_pszNodeName);
     }},
    {"get_line, get_linepos, get_filepos",
     [](IXMLDOMDocument2* document) {
       Ref<IXMLDOMParseError> error;
       document->get_parseError(error.Out());
       long place = -1;
       error->get_line(&place);
       Note(place);
       error->get_linepos(&place);
       Note(place);
       error->get_filepos(&place);
       Note(place);
     }},
    {"new IXMLDOMParseError, IXMLDOMParseError::operator=",
     [](IXMLDOMDocument2*) {
       Ref<IXMLDOMParseError> from(new IXMLDOMParseError);
       Ref<IXMLDOMParseError> to(new IXMLDOMParseError);
       from->m_bstrReason = SysAllocString("reason");
       from->m_bstrSrcText = SysAllocString("text");
       *to.Get() = *from.Get();
       Note(to->m_bstrReason);
       Note(to->m_bstrSrcText);
     }},
};

class AllocationLoadingErrors : public testing::TestWithParam<FailingCall> {};

TEST_P(AllocationLoadingErrors, That_fail_leave_the_tree_as_it_was_and_nothing_behind) {
  FailEverywhere("errors of loads", GetParam(), FailingCall::KEEPS_TREE);
}

INSTANTIATE_TEST_SUITE_P(All, AllocationLoadingErrors, testing::ValuesIn(kErrors));

}  // namespace
