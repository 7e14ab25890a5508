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
