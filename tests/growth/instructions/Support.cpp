// The support layer, and the checks of texts.

#include <xmldom/dom/XmlNames.h>
#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include "growth/instructions/Growth.h"
#include "harness/Trees.h"

namespace {

/// Posts the call stack with so many frames of this function above the caller's. Result: how many.
int PostFromDepth(int depth) {
  if (depth == 0) {
    CLogger::PostBacktrace(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "title");
    return 0;
  }
  return 1 + PostFromDepth(depth - 1);
}

const Growing kRows[] = {
    {"SysAllocString, SysAllocStringLen, _bstr_t, VariantCopy, VariantChangeType", "n bytes", 20000,
     [](int size) {
       const std::string text = Times(size, "x");
       const Counted counted;
       BSTR copy = SysAllocString(text.c_str());
       SysFreeString(copy);
       copy = SysAllocStringLen(text.c_str(), static_cast<unsigned long>(size));
       SysFreeString(copy);
       const _bstr_t first(text.c_str());
       const _bstr_t second(first);
       _variant_t value(text.c_str());
       _variant_t other;
       VariantCopy(&other, &value);
       VariantChangeType(&value, &other, 0, VT_I4);
     },
     nullptr},
    {"CMemFile::Write", "n pieces", 1000,
     [](int size) {
       CMemFile out(1);
       const Counted counted;
       for (int i = 0; i < size; ++i) out.Write("0123456789", 10);
     },
     nullptr},
    {"CMemFile::WriteF", "n pieces", 500,
     [](int size) {
       CMemFile out(1);
       const Counted counted;
       for (int i = 0; i < size; ++i) out.WriteF("%s %d ", "text", 5);
     },
     nullptr},
    {"CMemFile::GetAsStr", "after each of n pieces", 1000,
     [](int size) {
       CMemFile out(1);
       const Counted counted;
       for (int i = 0; i < size; ++i) {
         out.Write("0123456789", 10);
         out.GetAsStr();
       }
     },
     nullptr},
    {"CMemFile::Read", "n pieces", 1000,
     [](int size) {
       CMemFile out(1);
       for (int i = 0; i < size; ++i) out.Write("0123456789", 10);
       out.m_uPosition = 0;
       char piece[10];
       const Counted counted;
       while (out.Read(piece, sizeof piece) != 0) {
       }
     },
     nullptr},
    {"CMemFile::WriteStrEntities", "n characters to be escaped", 2000,
     [](int size) {
       const std::string text = Times(size, "<x");
       CMemFile out(1);
       const Counted counted;
       out.WriteStrEntities(text.c_str());
     },
     nullptr},
    {"PostLogEvent, CLogException", "n bytes", 20000,
     [](int size) {
       const std::string text = Times(size, "x");
       const Counted counted;
       CLogger::PostLogEvent(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, text.c_str(), text.c_str());
       CLogException(text.c_str(), text.c_str(), text.c_str()).LogMessage(25, 1, "title");
     },
     nullptr},
    {"PostLogEventF, PostLogEventFB, ExceptionF", "n bytes", 20000,
     [](int size) {
       const std::string text = Times(size, "x");
       const Counted counted;
       CLogger::PostLogEventF(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "title %s", text.c_str());
       CLogger::PostLogEventFB(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "title %s", text.c_str(),
                               text.c_str());
       try {
         throw ExceptionF("where", "message %s", text.c_str());
       } catch (const CLogException* exception) {
         delete exception;
       }
     },
     nullptr},
    {"PostBacktrace", "n frames, of which it takes 64", 10,
     [](int size) {
       const Counted counted;
       Require(PostFromDepth(size) == size);
     },
     nullptr},
    {"CXML::CheckLeaks", "a heading of n bytes, n nodes", 20000,
     [](int size) {
       const Document document = Load("<r>" + Times(size, "<a/>") + "</r>");
       const std::string heading = Times(size, "x");
       const Counted counted;
       CXML::CheckLeaks(heading.c_str());
     },
     nullptr},
    {"xmldom::FindForbidden", "behind n characters", 1000,
     [](int size) {
       const std::string text = Times(size, "a\xc3\xa9");
       const Counted counted;
       Require(xmldom::FindForbidden(text + '\x01') == text.size());
     },
     nullptr},
    {"xmldom::IsXmlName", "n letters, some of them beyond ASCII", 10000,
     [](int size) {
       const std::string name = Times(size, "a\xc3\xa9");
       const Counted counted;
       Require(xmldom::IsXmlName(name));
     },
     nullptr},
    {"xmldom::EscapeText, xmldom::EscapeAttribute, xmldom::OneLine", "n characters", 1000,
     [](int size) {
       const std::string text = Times(size, "<&\t\xc3\xa9 ");
       const Counted counted;
       Require(bool(xmldom::EscapeText(text, xmldom::TextPlace::kBesideElements)));
       Require(bool(xmldom::EscapeAttribute(text)));
       Require(!xmldom::OneLine(text, text.size()).empty());
     },
     nullptr},
};

}  // namespace

std::vector<Growing> SupportRows() {
  return std::vector<Growing>(std::begin(kRows), std::end(kRows));
}
