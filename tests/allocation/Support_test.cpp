// The support layer: strings, variants, buffers, exceptions and the log.

#include <gtest/gtest.h>
#include <xmldom/support/ArgumentList.h>
#include <xmldom/xmldom.h>

#include <cstdarg>
#include <string>

#include "allocation/Sweeps.h"
#include "harness/Trees.h"

namespace {

const FailingCall kStrings[] = {
    {"SysAllocString, SysFreeString, GetNumBSTRsAllocated",
     [](IXMLDOMDocument2*) {
       const long before = GetNumBSTRsAllocated();
       BSTR text = SysAllocString("text");
       Note(GetNumBSTRsAllocated() - before);
       Note(text);
       SysFreeString(text);
       Note(GetNumBSTRsAllocated() - before);
     }},
    {"SysAllocStringLen", [](IXMLDOMDocument2*) { NoteAndFree(SysAllocStringLen("text", 2)); }},
    {"_bstr_t", [](IXMLDOMDocument2*) { Note(_bstr_t("text")); }},
    {"_bstr_t, a copy",
     [](IXMLDOMDocument2*) {
       const _bstr_t text("text");
       Note(_bstr_t(text));
       Note(_bstr_t(static_cast<BSTR>(text), true));
     }},
    {"_bstr_t::operator=",
     [](IXMLDOMDocument2*) {
       _bstr_t text("text");
       const _bstr_t other("other");
       text = other;
       Note(text);
     }},
    {"_bstr_t, taken over",
     [](IXMLDOMDocument2*) { Note(_bstr_t(SysAllocString("text"), false)); }},
    {"_variant_t",
     [](IXMLDOMDocument2*) {
       const _variant_t value("text");
       Note(value.bstrVal);
     }},
    {"VariantCopy",
     [](IXMLDOMDocument2*) {
       _variant_t from("text");
       _variant_t to("old");
       VariantCopy(&to, &from);
       Note(to.bstrVal);
     }},
    {"VariantChangeType, to a text",
     [](IXMLDOMDocument2*) {
       _variant_t value;
       value.vt = VT_I4;
       value.lVal = -12345;
       Note(VariantChangeType(&value, &value, 0, VT_BSTR));
       Note(value.bstrVal);
     }},
    {"VariantChangeType, to a number",
     [](IXMLDOMDocument2*) {
       _variant_t value("123");
       _variant_t number("old");
       Note(VariantChangeType(&number, &value, 0, VT_I4));
       Note(number.lVal);
     }},
    {"VariantChangeType, a text to a text",
     [](IXMLDOMDocument2*) {
       _variant_t value("abc");
       _variant_t text("old");
       Note(VariantChangeType(&text, &value, 0, VT_BSTR));
       Note(text.bstrVal);
     }},
    {"VariantInit, VariantClear",
     [](IXMLDOMDocument2*) {
       VARIANT fresh;
       VariantInit(&fresh);
       Note(fresh.vt);
       _variant_t value("123");
       Note(VariantClear(&value));
     }},
};

/// What a function with a variable number of arguments makes of its own.
void WriteArguments(CMemFile& file, const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  const xmldom::ArgumentListEnd end = {arguments};
  file.WriteFV(format, arguments);
}

const FailingCall kBuffers[] = {
    {"CMemFile, CMemFile::Write",
     [](IXMLDOMDocument2*) {
       CMemFile file(1);
       for (int i = 0; i < 200; ++i) file.Write("0123456789", 10);
       Note(file.GetAsStr());
     }},
    {"CMemFile::WriteF",
     [](IXMLDOMDocument2*) {
       CMemFile file(1);
       file.WriteF("%s and %d", "text", 5);
       file.WriteF("%2000d", 5);
       Note(file.GetAsStr());
     }},
    {"CMemFile::WriteFV",
     [](IXMLDOMDocument2*) {
       CMemFile file(1);
       WriteArguments(file, "%s and %d", "text", 5);
       WriteArguments(file, "%2000d", 5);
       Note(file.GetAsStr());
     }},
    {"CMemFile::WriteStrEntities",
     [](IXMLDOMDocument2*) {
       CMemFile file(1);
       file.WriteStrEntities("a < b & c > d \"e\" 'f'");
       Note(file.GetAsStr());
     }},
    {"CMemFile::Read",
     [](IXMLDOMDocument2*) {
       CMemFile file(8);
       file.Write("0123456789", 10);
       file.m_uPosition = 0;
       char text[11] = "";
       Note(static_cast<long>(file.Read(text, 10)));
       Note(text);
     }},
    {"CMemFile::GetAsStr, of nothing",
     [](IXMLDOMDocument2*) {
       CMemFile file(8);
       Note(file.GetAsStr());
     }},
};

const FailingCall kLog[] = {
    {"new CLogException",
     [](IXMLDOMDocument2*) { delete new CLogException("where", "message", "detail"); }},
    {"GetWhere, GetMessage, GetDetail",
     [](IXMLDOMDocument2*) {
       const CLogException exception("where", "message", "detail");
       Note(exception.GetWhere());
       Note(exception.GetMessage());
       Note(exception.GetDetail());
     }},
    {"CLogException::LogMessage",
     [](IXMLDOMDocument2*) {
       CLogException("where", "message", "detail").LogMessage(25, 1, "caught");
     }},
    {"Exception",
     [](IXMLDOMDocument2*) {
       char detail[] = "detail";
       throw Exception("where", "message", detail);
     }},
    {"ExceptionF", [](IXMLDOMDocument2*) { throw ExceptionF("where", "%s: %d", "message", 5); }},
    {"ExceptionF, long", [](IXMLDOMDocument2*) { throw ExceptionF("where", "%3000d: %d", 4, 5); }},
    {"PostLogEvent",
     [](IXMLDOMDocument2*) {
       CLogger::PostLogEvent(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "title", "body");
     }},
    {"PostLogEvent, of a node",
     [](IXMLDOMDocument2* document) {
       CLogger::PostLogEvent(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "title", Root(document));
     }},
    {"PostLogEventF",
     [](IXMLDOMDocument2*) {
       CLogger::PostLogEventF(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "%2000d %s", 1, "title");
     }},
    {"PostLogEventFB",
     [](IXMLDOMDocument2*) {
       CLogger::PostLogEventFB(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "%d%2000d", "body", 1, 2);
     }},
    {"PostBacktrace",
     [](IXMLDOMDocument2*) {
       CLogger::PostBacktrace(LOG_TYPE_DOM, LOG_SEVERITY_WARNING, "from here");
     }},
    {"SetNodeRenderer",
     [](IXMLDOMDocument2* document) {
       struct Renderer {
         Renderer() {
           CLogger::SetNodeRenderer([](IXMLDOMNode*) { return SysAllocString("a node"); });
         }
         ~Renderer() {
           CLogger::SetNodeRenderer([](IXMLDOMNode* node) { return node->GetXML(); });
         }
       } renderer;
       CLogger::PostLogEvent(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "title", Root(document));
     }},
    {"SetXMLError, GetXMLError, ClearXMLError",
     [](IXMLDOMDocument2*) {
       CXML::SetXMLError(CXML::NO_SUCH_CHILD);
       Note(CXML::GetXMLError());
       CXML::ClearXMLError();
       Note(CXML::GetXMLError());
     }},
    {"SetDebugXPATH, SetDebugEntities",
     [](IXMLDOMDocument2*) {
       SetDebugXPATH(false);
       SetDebugEntities(true);
     }},
    {"SetSink, standard error",
     [](IXMLDOMDocument2*) {
       struct Ignoring {
         Ignoring() { CLogger::SetSink(nullptr, nullptr); }
         ~Ignoring() {
           CLogger::SetSink([](const CLogEvent&, void*) {}, nullptr);
         }
       } ignoring;
       CLogger::PostLogEvent(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "", static_cast<char*>(nullptr));
     }},
};

class AllocationSupport : public testing::TestWithParam<FailingCall> {};

TEST_P(AllocationSupport, That_fails_leaves_nothing_behind) {
  FailEverywhere("support layer", GetParam(), FailingCall::KEEPS_TREE, On::NO_TREE);
}

INSTANTIATE_TEST_SUITE_P(Strings, AllocationSupport, testing::ValuesIn(kStrings));
INSTANTIATE_TEST_SUITE_P(Buffers, AllocationSupport, testing::ValuesIn(kBuffers));
INSTANTIATE_TEST_SUITE_P(Log, AllocationSupport, testing::ValuesIn(kLog));

}  // namespace
