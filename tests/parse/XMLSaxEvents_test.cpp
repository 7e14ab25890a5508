#include <gtest/gtest.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include <string>

#include "harness/CompactXml.h"
#include "harness/TemporaryFile.h"
#include "harness/Trees.h"

namespace {

struct Row {
  const char* xml;
  const char* tree;
};

template <std::size_t count>
void ExpectTrees(const Row (&rows)[count]) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.xml);
    const Document document = Load(row.xml);
    EXPECT_EQ(row.tree, CompactXml(document));
  }
}

}  // namespace

// ---- Elements and attributes

TEST(XMLSaxEventsElements, Keep_names_and_document_order) {
  const Row rows[] = {
      {"<a/>", "<a/>"},
      {"<a></a>", "<a/>"},
      {"<a ></a >", "<a/>"},
      {"<a><b/><c><d/></c><b/></a>", "<a><b/><c><d/></c><b/></a>"},
      {"<p:a xmlns:p='u'><p:b/></p:a>", "<p:a xmlns:p='u'><p:b/></p:a>"},
      {"<\xc3\xa9t\xc3\xa9/>", "<\xc3\xa9t\xc3\xa9/>"},
  };
  ExpectTrees(rows);
}

TEST(XMLSaxEventsAttributes, Are_stored_escaped_in_document_order) {
  const Row rows[] = {
      {"<a z='1' b='2' m='3'/>", "<a z='1' b='2' m='3'/>"},
      {"<a v=''/>", "<a v=''/>"},
      {"<a v='1&lt;2'/>", "<a v='1&lt;2'/>"},
      {"<a v=\"'&quot;&amp;&gt;\"/>", "<a v='&apos;&quot;&amp;&gt;'/>"},
      {"<a v='>'/>", "<a v='&gt;'/>"},
      {"<a v='&#65;&#x42;&#38;'/>", "<a v='AB&amp;'/>"},
      {"<a v=' x\n\ty '/>", "<a v=' x  y '/>"},
      {"<a v='x&#10;y'/>", "<a v='x\ny'/>"},
      {"<a v='a long value' w='' x='short'/>", "<a v='a long value' w='' x='short'/>"},
      {"<a v='1'><b v='2'/></a>", "<a v='1'><b v='2'/></a>"},
      {"<!DOCTYPE a [<!ENTITY e 'x&#38;#38;y'>]><a v='&e;'/>", "<a v='x&amp;y'/>"},
      {"<!DOCTYPE a [<!ATTLIST a v CDATA '&lt;'>]><a/>", "<a v='&lt;'/>"},
  };
  ExpectTrees(rows);
}

TEST(XMLSaxEventsAttributes, Clear_the_error_code) {
  const Document document = NewDocument();
  CXML::SetXMLError(CXML::NO_SUCH_CHILD);
  document->loadXML("<a v='1'/>");
  EXPECT_EQ(CXML::NO_ERROR, CXML::GetXMLError());
}

TEST(XMLSaxEventsElements, Leave_the_error_code_alone) {
  const Document document = NewDocument();
  CXML::SetXMLError(CXML::NO_SUCH_CHILD);
  document->loadXML("<a><b/>text</a>");
  EXPECT_EQ(CXML::NO_SUCH_CHILD, CXML::GetXMLError());
}

// ---- Text

TEST(XMLSaxEventsText, Gathers_in_the_one_text_child_where_the_first_piece_stood) {
  const Row rows[] = {
      {"<a>x</a>", "<a>x</a>"},
      {"<a>x<b/>y</a>", "<a>xy<b/></a>"},
      {"<a><b/>x<c/>y<d/>z</a>", "<a><b/>xyz<c/><d/></a>"},
      {"<a>x<b>y<c>z</c>y</b>x</a>", "<a>xx<b>yy<c>z</c></b></a>"},
      {"<a>x<b/>y<c>z</c></a>", "<a>xy<b/><c>z</c></a>"},
  };
  ExpectTrees(rows);
}

TEST(XMLSaxEventsText, Is_kept_as_it_is_written) {
  const Row rows[] = {
      {"<a>&amp;</a>", "<a>&amp;</a>"},
      {"<a>1&lt;2&gt;&quot;&apos;</a>", "<a>1&lt;2&gt;&quot;&apos;</a>"},
      {"<a>&#65;x&#x41;</a>", "<a>&#65;x&#x41;</a>"},
      {"<a>\"'></a>", "<a>\"'></a>"},
      {"<a>\xe2\x82\xac</a>", "<a>\xe2\x82\xac</a>"},
  };
  ExpectTrees(rows);
}

TEST(XMLSaxEventsText, Loses_the_pieces_that_are_white_space_alone) {
  const Row rows[] = {
      {"<a> <b/> </a>", "<a><b/></a>"},
      {"<a>\n\t<b/>\r\n</a>", "<a><b/></a>"},
      {"<a>x<b/> <c/>y</a>", "<a>xy<b/><c/></a>"},
      // Each line and each line end is a piece of its own.
      {"<a>x\ny</a>", "<a>xy</a>"},
      {"<a>x\r\ny</a>", "<a>xy</a>"},
      {"<a>x\n  y</a>", "<a>x  y</a>"},
      {"<a>\n  \n</a>", "<a/>"},
      {"<a>&amp; &amp;</a>", "<a>&amp;&amp;</a>"},
  };
  ExpectTrees(rows);
}

TEST(XMLSaxEventsText, Keeps_white_space_that_is_part_of_a_piece_or_written_as_a_reference) {
  const Row rows[] = {
      {"<a> x </a>", "<a> x </a>"},           {"<a>x <b/> y</a>", "<a>x  y<b/></a>"},
      {"<a>&#32;</a>", "<a>&#32;</a>"},       {"<a>&#10;&#x9;</a>", "<a>&#10;&#x9;</a>"},
      {"<a>\xc2\xa0</a>", "<a>\xc2\xa0</a>"},
  };
  ExpectTrees(rows);
}

TEST(XMLSaxEventsText, Keeps_all_white_space_without_formatted_layout) {
  const Row rows[] = {
      {"<a> <b/>\t</a>", "<a> \t<b/></a>"},
      {"<a>x\ny</a>", "<a>x\ny</a>"},
      {"<a>x\r\ny\r</a>", "<a>x\r\ny\r</a>"},
      {" <a/> ", "<a/>"},
  };
  const Document document = NewDocument();
  document->m_uFlags = 0;
  for (const Row& row : rows) {
    SCOPED_TRACE(row.xml);
    document->loadXML(row.xml);
    EXPECT_EQ(row.tree, CompactXml(document));
  }
}

TEST(XMLSaxEventsText, Takes_comments_instructions_and_CDATA_sections_as_they_are_written) {
  const Row rows[] = {
      {"<a><!-- c --></a>", "<a><!-- c --></a>"},
      {"<a>x<!--\n\n-->y</a>", "<a>x<!--\n\n-->y</a>"},
      {"<a><b/><?p d?></a>", "<a><b/><?p d?></a>"},
      {"<a><![CDATA[x<y>&amp;]]></a>", "<a><![CDATA[x<y>&amp;]]></a>"},
      {"<a><![CDATA[]]></a>", "<a><![CDATA[]]></a>"},
      {"<a>1<![CDATA[2]]>3</a>", "<a>1<![CDATA[2]]>3</a>"},
      // White space inside a section is a piece like any other.
      {"<a><![CDATA[ ]]></a>", "<a><![CDATA[]]></a>"},
      {"<a><![CDATA[x\ny]]></a>", "<a><![CDATA[xy]]></a>"},
  };
  ExpectTrees(rows);
}

TEST(XMLSaxEventsText, Outside_the_root_element_is_dropped) {
  const Row rows[] = {
      {"<?xml version='1.0'?>\n<!--c--><?p d?><!DOCTYPE a>\n<a/>", "<a/>"},
      {"<a/>\n<!--c--><?p d?>\n", "<a/>"},
      {"<!--c--><a>x</a><!--d-->", "<a>x</a>"},
  };
  ExpectTrees(rows);
}

// ---- Entities

TEST(XMLSaxEventsEntities, That_are_internal_are_replaced) {
  const Row rows[] = {
      {"<!DOCTYPE a [<!ENTITY e 'y'>]><a>x&e;z</a>", "<a>xyz</a>"},
      {"<!DOCTYPE a [<!ENTITY e '<b>y</b>z'>]><a>x&e;</a>", "<a>xz<b>y</b></a>"},
      {"<!DOCTYPE a [<!ENTITY e '<b v=\"&#38;#60;\"/>'>]><a>&e;&e;</a>",
       "<a><b v='&lt;'/><b v='&lt;'/></a>"},
      {"<!DOCTYPE a [<!ENTITY e 'x'><!ENTITY f '&e;&e;'>]><a>&f;</a>", "<a>xx</a>"},
      {"<!DOCTYPE a [<!ENTITY e '1 &lt; 2'>]><a>&e;</a>", "<a>1 &lt; 2</a>"},
      {"<!DOCTYPE a [<!ENTITY e '&#38;#38;'>]><a>&e;</a>", "<a>&#38;</a>"},
      {"<!DOCTYPE a [<!ENTITY e ''>]><a>x&e;y</a>", "<a>xy</a>"},
      {"<!DOCTYPE a [<!ENTITY e ' '>]><a>x&e;y</a>", "<a>xy</a>"},
  };
  ExpectTrees(rows);
}

TEST(XMLSaxEventsEntities, That_may_be_declared_elsewhere_stay_references) {
  const Row rows[] = {
      {"<!DOCTYPE a SYSTEM 'no-such-file'><a>x&e;y</a>", "<a>x&e;y</a>"},
  };
  ExpectTrees(rows);
}

TEST(XMLSaxEventsEntities, That_are_external_stay_references_and_are_not_read) {
  TemporaryFile secret("secret");
  const std::string declaration = "<!ENTITY e SYSTEM '" + std::string(secret.Path()) + "'>";
  const Document document = Load("<!DOCTYPE a [" + declaration + "]><a>x&e;y</a>");
  EXPECT_EQ("<a>x&e;y</a>", CompactXml(document));
}

TEST(XMLSaxEventsEntities, That_grow_without_bounds_are_refused) {
  std::string xml = "<!DOCTYPE a [<!ENTITY e0 '" + std::string(1000, 'x') + "'>";
  for (int level = 1; level < 10; ++level) {
    const std::string inner = "&e" + std::to_string(level - 1) + ";";
    xml += "<!ENTITY e" + std::to_string(level) + " '";
    for (int copy = 0; copy < 10; ++copy) xml += inner;
    xml += "'>";
  }
  xml += "]><a>&e9;</a>";
  const Document document = NewDocument();
  EXPECT_EQ(VARIANT_FALSE, document->loadXML(xml.c_str()));
  EXPECT_EQ(XML_ERROR_AMPLIFICATION_LIMIT_BREACH, document->m_pSax->GetErrorCode());
}

// ---- The records

TEST(XMLSaxEventsTree, Belongs_to_the_document_and_holds_one_reference_a_node) {
  const Document document = Load("<a v='1'>x<b>y</b></a>");
  const struct {
    IXMLDOMNode* node;
    IXMLDOMNode* parent;
    tagDOMNodeType type;
  } rows[] = {
      {Root(document), document, NODE_ELEMENT},
      {Root(document)->m_pFirstAttribute, Root(document), NODE_ATTRIBUTE},
      {At(document, {0, 0}), Root(document), NODE_TEXT},
      {At(document, {0, 1}), Root(document), NODE_ELEMENT},
      {At(document, {0, 1, 0}), At(document, {0, 1}), NODE_TEXT},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.node->m_pszNodeName);
    EXPECT_EQ(row.parent, row.node->m_pParent);
    EXPECT_EQ(row.type, row.node->m_eNodeType);
    EXPECT_EQ(document.Get(), row.node->m_pOwnerDocument);
    EXPECT_EQ(1, row.node->GetRefCount());
  }
  EXPECT_EQ(6, IXMLDOMNode::m_iObjCount);
}

TEST(XMLSaxEventsTree, Can_be_edited_like_one_that_was_built) {
  const Document document = Load("<a v='1'>x<b/>y</a>");
  IXMLDOMNode* root = Root(document);
  At(document, {0, 0})->AppendValue("zzz", 3);
  root->AddTextChild("t");
  EXPECT_EQ(0, root->AddAttribute("v", "2"));
  root->m_pFirstAttribute->RealRelease();  // the refused call kept a reference
  EXPECT_EQ(1, root->AddAttribute("w", "3"));
  EXPECT_EQ("<a v='1' w='3'>xyzzz<b/>t</a>", CompactXml(document));
}

// ---- Errors

TEST(XMLSaxEventsErrors, Leave_the_tree_built_so_far) {
  const struct {
    const char* xml;
    XML_Error code;
    const char* tree;
  } rows[] = {
      {"", XML_ERROR_NO_ELEMENTS, ""},
      {"<!--c-->", XML_ERROR_NO_ELEMENTS, ""},
      {"text", XML_ERROR_SYNTAX, ""},
      {"<a v='1'", XML_ERROR_UNCLOSED_TOKEN, ""},
      {"<a v='1' v='2'/>", XML_ERROR_DUPLICATE_ATTRIBUTE, ""},
      {"<a>x<b v='1' v='2'/></a>", XML_ERROR_DUPLICATE_ATTRIBUTE, "<a>x</a>"},
      {"<a>x<b>y</a>", XML_ERROR_TAG_MISMATCH, "<a>x<b>y</b></a>"},
      {"<a>x<b>y</b>z", XML_ERROR_NO_ELEMENTS, "<a>xz<b>y</b></a>"},
      {"<a>x&u;y</a>", XML_ERROR_UNDEFINED_ENTITY, "<a>x</a>"},
      {"<a>x<b/>]]>y</a>", XML_ERROR_INVALID_TOKEN, "<a>x<b/></a>"},
      {"<a>x\x01</a>", XML_ERROR_INVALID_TOKEN, "<a>x</a>"},
      {"<a>x\xff</a>", XML_ERROR_INVALID_TOKEN, "<a>x</a>"},
      {"<a>x<!-- -- --></a>", XML_ERROR_INVALID_TOKEN, "<a>x</a>"},
      {"<a>x<![CDATA[y</a>", XML_ERROR_UNCLOSED_CDATA_SECTION, "<a>x<![CDATA[y</a></a>"},
      {"<a>x</a>y", XML_ERROR_JUNK_AFTER_DOC_ELEMENT, "<a>x</a>"},
      {"<a/><b/>", XML_ERROR_JUNK_AFTER_DOC_ELEMENT, "<a/>"},
      {"<!DOCTYPE a [<!ENTITY e 'y&e;'>]><a>x&e;</a>", XML_ERROR_RECURSIVE_ENTITY_REF, "<a>xy</a>"},
      {"<!DOCTYPE a [<!ENTITY e '<b>y'>]><a>x&e;</a>", XML_ERROR_ASYNC_ENTITY, "<a>x<b>y</b></a>"},
      {"<?xml version='1.0' encoding='no-such'?><a/>", XML_ERROR_UNKNOWN_ENCODING, ""},
  };
  const Document document = NewDocument();
  for (const auto& row : rows) {
    SCOPED_TRACE(row.xml);
    EXPECT_EQ(VARIANT_FALSE, document->loadXML(row.xml));
    EXPECT_EQ(row.code, document->m_pSax->GetErrorCode());
    EXPECT_EQ(row.tree, CompactXml(document));
  }
}

TEST(XMLSaxEventsErrors, Leave_texts_that_can_be_appended_to) {
  const Document document = NewDocument();
  document->loadXML("<a>one two three<b>");
  At(document, {0, 0})->AppendValue(" four", 5);
  EXPECT_EQ("<a>one two three four<b/></a>", CompactXml(document));
}
