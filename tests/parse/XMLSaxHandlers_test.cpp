#include <gtest/gtest.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include <string>

#include "harness/CompactXml.h"
#include "harness/Trees.h"

// The handlers, called by hand.

TEST(XMLSaxHandlers, Ignore_everything_before_a_load) {
  const Document document = NewDocument();
  CXMLSax sax(document);
  sax.OnStartElement("a", nullptr);
  sax.OnDefault("text", 4);
  sax.OnEndElement("a");
  EXPECT_EQ("", CompactXml(document));
}

namespace {

/// A document whose load ended inside <a><b>, so that its builder still takes events.
Document OpenDocument() {
  Document document = NewDocument();
  document->loadXML("<a><b>");
  return document;
}

}  // namespace

TEST(XMLSaxHandlers, Put_an_element_under_the_innermost_open_one) {
  const Document document = OpenDocument();
  const char* attributes[] = {"v", "1<2", "w", "", nullptr};
  document->m_pSax->OnStartElement("c", attributes);
  EXPECT_EQ("<a><b><c v='1&lt;2' w=''/></b></a>", CompactXml(document));
}

TEST(XMLSaxHandlers, Put_an_element_there_without_attributes_too) {
  const char* none[] = {nullptr};
  for (const char** attributes : {static_cast<const char**>(nullptr), &none[0]}) {
    const Document document = OpenDocument();
    document->m_pSax->OnStartElement("c", attributes);
    document->m_pSax->OnStartElement("d", attributes);
    EXPECT_EQ("<a><b><c><d/></c></b></a>", CompactXml(document));
  }
}

TEST(XMLSaxHandlers, Put_the_first_element_under_the_document_whatever_is_open) {
  const Document document = OpenDocument();
  document->m_pSax->m_bFirstElement = 1;
  document->m_pSax->OnStartElement("c", nullptr);
  document->m_pSax->OnStartElement("d", nullptr);
  EXPECT_EQ("<a><b/></a><c><d/></c>", CompactXml(document));
}

TEST(XMLSaxHandlers, Close_the_innermost_element_whatever_its_name) {
  const Document document = OpenDocument();
  document->m_pSax->OnEndElement("other");
  EXPECT_EQ(Root(document), document->m_pSax->m_pNodeStack->m_pTop->m_pNode);
  EXPECT_EQ(1, CNodeStackElt::m_iObjCount);
}

TEST(XMLSaxHandlers, Ignore_ends_and_text_when_no_element_is_open) {
  const Document document = OpenDocument();
  for (int end = 0; end < 3; ++end) document->m_pSax->OnEndElement("b");
  document->m_pSax->OnDefault("text", 4);
  EXPECT_EQ("<a><b/></a>", CompactXml(document));
  EXPECT_EQ(0, CNodeStackElt::m_iObjCount);
}

TEST(XMLSaxHandlers, Read_no_more_of_a_text_than_they_are_told) {
  const Document document = OpenDocument();
  document->m_pSax->OnDefault("abcdef", 3);
  document->m_pSax->OnDefault("ghi", 1);
  EXPECT_EQ("<a><b>abcg</b></a>", CompactXml(document));
}

TEST(XMLSaxHandlers, Judge_white_space_by_that_part_alone) {
  const Document document = OpenDocument();
  document->m_pSax->OnDefault("  x", 2);
  EXPECT_EQ("<a><b/></a>", CompactXml(document));
}

TEST(XMLSaxHandlers, Ignore_a_text_of_no_length) {
  const Document document = OpenDocument();
  document->m_pSax->OnDefault("x", 0);
  EXPECT_EQ("<a><b/></a>", CompactXml(document));
}
