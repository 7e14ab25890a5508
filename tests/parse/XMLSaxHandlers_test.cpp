#include <gtest/gtest.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include <string>

#include "harness/CompactXml.h"
#include "harness/Trees.h"

// The builder as a caller sees it who drives it without a document's loads.

TEST(XMLSax, Is_born_without_parser_and_stack) {
  const Document document = NewDocument();
  const CXMLSax sax(document);
  EXPECT_EQ(nullptr, sax.m_p);
  EXPECT_EQ(nullptr, sax.m_pNodeStack);
  EXPECT_EQ(document.Get(), sax.m_pDocument);
  EXPECT_FALSE(sax.m_bFirstElement);
}

TEST(XMLSax, Takes_no_reference_on_its_document) {
  const Document document = NewDocument();
  const CXMLSax sax(document);
  EXPECT_EQ(1, document->GetRefCount());
}

TEST(XMLSax, Is_counted_while_it_lives) {
  const Document document = NewDocument();
  {
    const CXMLSax sax(document);
    EXPECT_EQ(1, CXMLSax::m_iObjCount);
  }
  EXPECT_EQ(0, CXMLSax::m_iObjCount);
}

TEST(XMLSax, Loads_a_text_into_its_document) {
  const Document document = NewDocument();
  CXMLSax sax(document);
  ASSERT_TRUE(sax.CreateParser());
  EXPECT_TRUE(sax.LoadXML("<a>x</a>"));
  EXPECT_EQ("<a>x</a>", CompactXml(document));
}

TEST(XMLSax, Starts_a_second_load_with_an_empty_document_and_stack) {
  const Document document = NewDocument();
  CXMLSax sax(document);
  ASSERT_TRUE(sax.CreateParser());
  EXPECT_FALSE(sax.LoadXML("<a><b>"));
  EXPECT_FALSE(sax.LoadXML("<c/>"));  // the parser serves one document only
  EXPECT_EQ("", CompactXml(document));
  EXPECT_EQ(1, CNodeStack::m_iObjCount);
  EXPECT_EQ(0, CNodeStackElt::m_iObjCount);
  EXPECT_TRUE(sax.m_bFirstElement);
}

TEST(XMLSax, Waits_for_the_first_element_until_it_has_come) {
  const Document document = NewDocument();
  document->loadXML("no element");
  EXPECT_TRUE(document->m_pSax->m_bFirstElement);
  document->loadXML("<a/>");
  EXPECT_FALSE(document->m_pSax->m_bFirstElement);
}

TEST(XMLSax, Has_the_open_elements_on_its_stack_while_it_parses) {
  const Document document = NewDocument();
  document->loadXML("<a><b/><c><d>");
  std::string names;
  for (const CNodeStackElt* element = document->m_pSax->m_pNodeStack->m_pTop; element != nullptr;
       element = element->m_pNext) {
    names += element->m_pNode->m_pszNodeName;
  }
  EXPECT_EQ("dca", names);
}

TEST(XMLSaxHandlers, Ignore_text_and_ends_before_a_load) {
  const Document document = NewDocument();
  CXMLSax sax(document);
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
