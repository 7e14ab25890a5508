// Operations that write XML and compare.

#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include "growth/instructions/Shapes.h"
#include "harness/TemporaryFile.h"
#include "harness/Trees.h"
#include "harness/Writing.h"

namespace {

const char* const kIndented = "Indented writing";

void WriteCounted(const std::string& xml) {
  Document document = Load(xml);
  const Counted counted;
  Write(document);
}

/// Writes a document that is not in formatted layout.
void WriteUnindented(const std::string& xml, int indent) {
  Document document = Load(xml);
  document->m_uFlags = 0;
  document->m_nIndent = indent;
  const Counted counted;
  Write(document);
}

/// Nested elements, each of them with a text.
std::string LevelsWithTexts(int size) { return Times(size, "<a>t") + Times(size, "</a>"); }

void CompareCounted(const std::string& xml, const std::string& otherXml, int expected) {
  Document document = Load(xml);
  Document other = Load(otherXml);
  CMemFile report(16);
  const Counted counted;
  Require(CompareXMLNodes(document, other, report, 0) == expected);
}

const Growing kWriting[] = {
    {"GetXML", "n records", 500, [](int size) { WriteCounted(Records(size)); }, nullptr},
    {"GetXML", "n attributes and texts of one element", 500,
     [](int size) { WriteCounted("<r" + Attributes(size) + ">" + Times(size, "t<b/>") + "</r>"); },
     nullptr},
    {"GetXML", "n texts between elements, as built by hand", 500,
     [](int size) {
       Document document = WithTextsBetweenElements(size);
       const Counted counted;
       Write(document);
     },
     nullptr},
    {"GetXML", "n levels, indented", 1000, [](int size) { WriteCounted(Levels(size)); }, kIndented},
    {"GetXML", "n levels, not indented", 1000, [](int size) { WriteUnindented(Levels(size), 0); },
     nullptr},
    {"GetXML", "n siblings, one of them without owner", 500,
     [](int size) {
       Document document = Load(Records(size));
       LastChild(Root(document))->m_pOwnerDocument = nullptr;
       const Counted counted;
       Write(document);
     },
     nullptr},
    {"GetXML", "n levels with elements beside texts, not indented", 300,
     [](int size) { WriteUnindented(LevelsWithTexts(size), 2); }, kIndented},
    {"GetXML", "n levels with elements beside texts, indent of 0", 300,
     [](int size) { WriteUnindented(LevelsWithTexts(size), 0); }, nullptr},
    {"GetXMLHelper", "n records, masked and with an index", 500,
     [](int size) {
       Writing how;
       how.masked = true;
       how.indexed = true;
       Document document = Load(Records(size));
       const Counted counted;
       Write(Root(document), how);
     },
     nullptr},
    {"GetXMLHelper", "a page of n records that has page attributes already", 500,
     [](int size) {
       Document document =
           Load("<r curPage='1' numPages='2'>" + Times(size, "<a b='c'>t</a>") + "</r>");
       Writing how;
       how.paged = Root(document);
       how.first = 1;
       how.count = size;
       how.currentPage = how.numPages = 1;
       how.padTemplate = "<a/>";
       const Counted counted;
       Write(document, how);
     },
     nullptr},
    {"Getxml, get_xml, GetMaskedXML, PostLogEvent of a node", "n records", 500,
     [](int size) {
       Document document = Load(Records(size));
       const Counted counted;
       document->Getxml();
       BSTR xml = nullptr;
       document->get_xml(&xml);
       SysFreeString(xml);
       document->GetMaskedXML();
       CLogger::PostLogEvent(LOG_TYPE_DOM, LOG_SEVERITY_ERROR, "title", document);
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
    {"GetFilteredXML", "a page behind the end whose number has n bits", 3,
     [](int size) {
       Document document = Load("<r><a/></r>");
       const Counted counted;
       document->GetFilteredXML("/r", 1 << size, 10, 5, 5, "<a/>");
     },
     "A page far behind the end"},
    {"Pad", "n rows", 500,
     [](int size) {
       CMemFile out(16);
       const Counted counted;
       Pad(out, "<row/>", 0, size);
     },
     nullptr},
    {"PrintSpaces", "n blanks", 20000,
     [](int size) {
       CMemFile out(16);
       const Counted counted;
       PrintSpaces(out, size);
     },
     nullptr},
    {"GetPathToNode, GetPathToNodeHelper", "n levels", 1000,
     [](int size) {
       Document document = Load(Levels(size));
       IXMLDOMNode* node = Root(document);
       while (node->m_pFirstChild != nullptr) node = node->m_pFirstChild;
       CMemFile out(16);
       const Counted counted;
       node->GetPathToNode(out);
       node->GetPathToNodeHelper(node, out);
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
    {"xmldom::Xml", "n beginnings of comments in texts by hand", 20000,
     [](int size) {
       Document document = Load("<r/>");
       Root(document)->AddTextChild(Times(size, "<!-- ").c_str());
       const Counted counted;
       xmldom::Xml(document);
     },
     nullptr},
    {"xmldom::Save", "n records, in place of a file", 500,
     [](int size) {
       TemporaryFile file("<r/>");
       Document document = Load(Records(size));
       const Counted counted;
       Require(!xmldom::Save(document, file.Path(), xmldom::Prolog::kDeclaration));
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

std::vector<Growing> WritingRows() {
  return std::vector<Growing>(std::begin(kWriting), std::end(kWriting));
}
