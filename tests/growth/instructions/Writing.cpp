// Operations that write XML and compare.

#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include "growth/instructions/Shapes.h"
#include "harness/Trees.h"
#include "harness/Writing.h"

namespace {

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

std::vector<Growing> WritingRows() {
  return std::vector<Growing>(std::begin(kWriting), std::end(kWriting));
}
