#include <xmldom/text/NodeXml.h>

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <string>

#include "harness/Trees.h"

namespace {

using xmldom::Xml;

TEST(NodeXml, Xml_is_what_GetXML_writes) {
  for (const char* xml : {"<a/>", "<a b='1' c='x &amp; y'>text<d e='2'>x</d><f/></a>",
                          "<a><!-- x='\t' --><![CDATA[ <b c='\t'> ]]><?p '\t'?></a>"}) {
    Document document = Load(xml);
    EXPECT_EQ(XmlOf(document), Xml(document.Get()));
    EXPECT_EQ(XmlOf(Root(document)), Xml(xmldom::Share(Root(document))));
  }
}

TEST(NodeXml, Tabs_and_line_ends_of_attributes_are_written_as_references) {
  Document document = Load("<a b='x&#10;y&#9;z&#13;'>t\tu<c d='&#10;'/><!-- '\t' --></a>");
  EXPECT_STREQ("x\ny\tz\r", Root(document)->GetStrAttribute("b"));
  EXPECT_EQ("<a b='x&#10;y&#9;z&#13;'>\n  t\tu<!-- '\t' -->\n  <c d='&#10;'/>\n</a>\n",
            Xml(document.Get()));
}

// The load drops what stands between the brackets and the '>'.
TEST(NodeXml, A_text_that_has_come_to_hold_the_end_of_a_section_loads_again) {
  for (const char* xml : {"<a>]]\n></a>", "<!DOCTYPE a [<!ENTITY n ''>]><a>]]&n;></a>",
                          "<!DOCTYPE a [<!ENTITY g '&#62;'>]><a>]]&g;</a>", "<a>]]\n>]]\n></a>",
                          "<a>]]\n>]]<![CDATA[]]>]\n></a>"}) {
    SCOPED_TRACE(xml);
    const Document document = Load(xml);
    const xmldom::LoadResult again = xmldom::LoadText(Xml(document.Get()));
    ASSERT_TRUE(again);
    EXPECT_EQ(xmldom::Text(document.Get()), xmldom::Text(again.document.Get()));
    EXPECT_EQ(Xml(document.Get()), Xml(again.document.Get()));
  }
  EXPECT_TRUE(xmldom::LoadText(Xml(Load("<a>]]<b/>></a>").Get())));
}

TEST(NodeXml, The_end_of_a_section_stays_where_it_ends_one) {
  EXPECT_EQ("<a>x<![CDATA[<]]>]>&gt;<!-- ]]> --><?p ]]>?></a>\n",
            Xml(Load("<a>x<![CDATA[<]]>]>&gt;<!-- ]]> --><?p ]]>?></a>").Get()));
}

TEST(NodeXml, What_has_no_XML_alone_is_empty) {
  Document document = Load("<a b='1'>text</a>");
  EXPECT_EQ("", Xml(At(document, {0, 0})));
  EXPECT_EQ("", Xml(Root(document)->m_pFirstAttribute));
  EXPECT_EQ("", Xml(NewDocument().Get()));
  EXPECT_EQ("", Xml(nullptr));
}

TEST(NodeXml, Markup_that_does_not_end_is_copied) {
  for (const char* text : {"<!-- '\t'", "<![CDATA[ '\t'", "<?p '\t'", "<", "<b c=\"'", "a'\t'"}) {
    Document document = Load("<a/>");
    Root(document)->AddTextChild(text);
    EXPECT_EQ(std::string("<a>") + text,
              Xml(document.Get()).substr(0, 3 + std::string(text).size()));
  }
}

}  // namespace
