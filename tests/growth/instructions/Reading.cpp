// Operations that read texts.

#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include "growth/instructions/Shapes.h"
#include "harness/Silence.h"
#include "harness/Trees.h"

namespace {

void ReadText(const std::string& xml) {
  Document document = Load(xml);
  const Counted counted;
  TakeBstr(document->GetTextAsBSTR());
}

void Translate(const std::string& text) {
  CMemFile out(16);
  const Counted counted;
  TranslateEntities(text.c_str(), out);
}

const Growing kReading[] = {
    {"GetTextAsBSTR", "n texts", 1000, [](int size) { ReadText(Records(size)); }, nullptr},
    {"GetTextAsBSTR", "n levels with texts", 1000,
     [](int size) { ReadText(Times(size, "<a>t") + Times(size, "</a>")); }, nullptr},
    {"GetTextAsBSTR", "n texts with references", 500,
     [](int size) { ReadText("<r>" + Times(size, "<a>t&lt;u</a>") + "</r>"); }, nullptr},
    {"GetTextAsBSTR", "n texts with references, debug line on", 400,
     [](int size) {
       const Silence silence;
       SetDebugEntities(true);
       ReadText("<r>" + Times(size, "<a>t&lt;u and so on</a>") + "</r>");
       SetDebugEntities(false);
     },
     "Text with references"},
    {"GetTextAsStr, GetStringValue, get_nodeTypedValue, get_text", "n texts", 1000,
     [](int size) {
       Document document = Load(Records(size));
       std::string buffer(static_cast<std::size_t>(2 * size + 1), ' ');
       const Counted counted;
       TakeHeap(document->GetTextAsStr());
       document->GetStringValue(&buffer[0], 2 * size + 1);
       _variant_t value;
       Root(document)->get_nodeTypedValue(&value);
       BSTR text = nullptr;
       document->get_text(&text);
       SysFreeString(text);
     },
     nullptr},
    {"GetTextHelper", "n texts", 1000,
     [](int size) {
       Document document = Load(Records(size));
       CMemFile out(16);
       const Counted counted;
       document->GetTextHelper(out);
     },
     nullptr},
    {"GetStringValue", "n texts that are cut off", 1000,
     [](int size) {
       Document document = Load(Records(size));
       char buffer[8];
       const Counted counted;
       document->GetStringValue(buffer, sizeof buffer);
     },
     nullptr},
    {"get_nodeName, get_nodeValue", "n bytes", 20000,
     [](int size) {
       const std::string name = "n" + Times(size, "x");
       Document document = Load("<" + name + " k='" + name + "'/>");
       const Counted counted;
       BSTR text = nullptr;
       Root(document)->get_nodeName(&text);
       SysFreeString(text);
       _variant_t value;
       Root(document)->m_pFirstAttribute->get_nodeValue(&value);
     },
     nullptr},
    {"TranslateEntities", "n references", 1000,
     [](int size) { Translate(Times(size, "&lt;&#233;&amp;")); }, nullptr},
    {"TranslateEntities", "n ampersands without an end", 1000,
     [](int size) { Translate(Times(size, "& ")); }, nullptr},
    {"TranslateEntities", "a reference of n bytes", 4000,
     [](int size) { Translate("&" + Times(size, "l") + ";&#" + Times(size, "0") + "65;"); },
     nullptr},
    {"TranslateEntities", "n unknown entities", 100,
     [](int size) { Translate(Times(size, "&none; and more ")); }, "Unknown entities"},
    {"xmldom::Text, xmldom::Attribute, xmldom::HasAttribute", "the last of n attributes", 1000,
     [](int size) {
       Document document =
           Load("<r" + Attributes(size) + " last='v&lt;'>" + Times(size, "t&lt;") + "</r>");
       const Counted counted;
       Require(xmldom::HasAttribute(Root(document), "last"));
       Require(xmldom::Attribute(Root(document), "last") == "v<");
       Require(xmldom::Text(document).size() == 2 * static_cast<std::size_t>(size));
     },
     nullptr},
};

}  // namespace

std::vector<Growing> ReadingRows() {
  return std::vector<Growing>(std::begin(kReading), std::end(kReading));
}
