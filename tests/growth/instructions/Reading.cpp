// Operations that read texts, write XML and compare.

#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include "growth/instructions/Shapes.h"
#include "harness/Silence.h"
#include "harness/Trees.h"
#include "harness/Writing.h"

namespace {

std::string Records(int size) { return "<r>" + Times(size, "<a b='c'>t</a>") + "</r>"; }

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

void WriteCounted(const std::string& xml, const Writing& how) {
  Document document = Load(xml);
  Writing writing = how;
  if (how.count != 0) writing.paged = Root(document);
  const Counted counted;
  Write(document, writing);
}

void CompareCounted(const std::string& xml, const std::string& otherXml, int expected) {
  Document document = Load(xml);
  Document other = Load(otherXml);
  CMemFile report(16);
  const Counted counted;
  Require(CompareXMLNodes(document, other, report, 0) == expected);
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
    {"GetTextAsStr, GetStringValue, get_nodeTypedValue", "n texts", 1000,
     [](int size) {
       Document document = Load(Records(size));
       std::string buffer(static_cast<std::size_t>(2 * size + 1), ' ');
       const Counted counted;
       TakeHeap(document->GetTextAsStr());
       document->GetStringValue(&buffer[0], 2 * size + 1);
       _variant_t value;
       Root(document)->get_nodeTypedValue(&value);
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
    {"xmldom::Text, xmldom::Attribute", "the last of n attributes", 1000,
     [](int size) {
       Document document =
           Load("<r" + Attributes(size) + " last='v&lt;'>" + Times(size, "t&lt;") + "</r>");
       const Counted counted;
       Require(xmldom::Attribute(Root(document), "last") == "v<");
       Require(xmldom::Text(document).size() == 2 * static_cast<std::size_t>(size));
     },
     nullptr},
};

const Growing kWriting[] = {
    {"GetXML", "n records", 500, [](int size) { WriteCounted(Records(size), Writing()); }, nullptr},
    {"GetXML", "n attributes and texts of one element", 500,
     [](int size) {
       WriteCounted("<r" + Attributes(size) + ">" + Times(size, "t<b/>") + "</r>", Writing());
     },
     nullptr},
    {"GetXML", "n texts between elements, as built by hand", 500,
     [](int size) {
       Document document = WithTextsBetweenElements(size);
       const Counted counted;
       Write(document);
     },
     nullptr},
    {"GetXML", "n levels, indented", 1000, [](int size) { WriteCounted(Levels(size), Writing()); },
     "Indented writing"},
    {"GetXML", "n levels, not indented", 1000,
     [](int size) {
       Document document = Load(Levels(size));
       document->m_uFlags = 0;
       document->m_nIndent = 0;
       const Counted counted;
       Write(document);
     },
     nullptr},
    {"GetXML", "n siblings, one of them without owner", 500,
     [](int size) {
       Document document = Load(Records(size));
       LastChild(Root(document))->m_pOwnerDocument = nullptr;
       const Counted counted;
       Write(document);
     },
     nullptr},
    {"Getxml, GetMaskedXML", "n records", 500,
     [](int size) {
       Document document = Load(Records(size));
       const Counted counted;
       document->Getxml();
       document->GetMaskedXML();
     },
     nullptr},
    {"GetFilteredXML", "the last page of n", 500,
     [](int size) {
       Document document = Load(Records(size));
       const Counted counted;
       document->GetFilteredXML("/r", size - 3, 10, 5, 5, "<a/>");
     },
     nullptr},
    {"GetFilteredXML", "a page n rows behind the end", 500,
     [](int size) {
       Document document = Load("<r><a/></r>");
       const Counted counted;
       document->GetFilteredXML("/r", size, 10, 5, 5, "<a/>");
     },
     nullptr},
    {"Pad", "n rows", 500,
     [](int size) {
       CMemFile out(16);
       const Counted counted;
       Pad(out, "<row/>", 0, size);
     },
     nullptr},
    {"GetPathToNode", "n levels", 1000,
     [](int size) {
       Document document = Load(Levels(size));
       IXMLDOMNode* node = Root(document);
       while (node->m_pFirstChild != nullptr) node = node->m_pFirstChild;
       CMemFile out(16);
       const Counted counted;
       node->GetPathToNode(out);
     },
     nullptr},
    {"xmldom::Xml", "n tags, comments and breaks", 500,
     [](int size) {
       Document document =
           Load("<r>" + Times(size, "<a b='&#10;'/><!-- < --><?p <?><![CDATA[<]]>") + "</r>");
       const Counted counted;
       xmldom::Xml(document);
     },
     nullptr},
    {"xmldom::Xml", "n beginnings of comments in texts by hand", 5000,
     [](int size) {
       Document document = Load("<r/>");
       Root(document)->AddTextChild(Times(size, "<!-- ").c_str());
       const Counted counted;
       xmldom::Xml(document);
     },
     nullptr},
    {"CompareXMLNodes", "n equal records", 500,
     [](int size) { CompareCounted(Records(size), Records(size), 1); }, nullptr},
    {"CompareXMLNodes", "n equal levels", 1000,
     [](int size) { CompareCounted(Levels(size), Levels(size), 1); }, nullptr},
    {"CompareXMLNodes", "the last of n records differs", 500,
     [](int size) {
       CompareCounted("<r>" + Records(size) + "<x/></r>", "<r>" + Records(size) + "<y/></r>", 0);
     },
     nullptr},
};

}  // namespace

std::vector<Growing> ReadingRows() {
  std::vector<Growing> rows(std::begin(kReading), std::end(kReading));
  rows.insert(rows.end(), std::begin(kWriting), std::end(kWriting));
  return rows;
}
