#include <fcntl.h>
#include <gtest/gtest.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include <string>

#include "harness/CompactXml.h"
#include "harness/HugeText.h"
#include "harness/LoadOutcome.h"
#include "harness/LogCapture.h"
#include "harness/RefusingLog.h"
#include "harness/StdoutCapture.h"
#include "harness/Trees.h"

namespace {

/// One of the three loads, with what it says of a good and of a bad text.
struct Loader {
  const char* name;
  LoadOutcome (*load)(IXMLDOMDocument2* document, const std::string& xml);
  LoadOutcome parsed;
  LoadOutcome notParsed;
};

std::ostream& operator<<(std::ostream& out, const Loader& loader) { return out << loader.name; }

const Loader kLoaders[] = {
    {"Text",
     [](IXMLDOMDocument2* document, const std::string& xml) {
       return LoadOutcome{document->loadXML(xml.c_str()), kFlagUntouched};
     },
     {VARIANT_TRUE, kFlagUntouched},
     {VARIANT_FALSE, kFlagUntouched}},
    {"TextWithFlag",
     [](IXMLDOMDocument2* document, const std::string& xml) { return LoadText(document, xml); },
     kParsed, kNotParsed},
    {"File", LoadFile, kParsed, kNotParsed},
};

class XMLDocumentLoads : public testing::TestWithParam<Loader> {
 protected:
  LoadOutcome LoadInto(IXMLDOMDocument2* document, const std::string& xml) {
    return GetParam().load(document, xml);
  }
};

INSTANTIATE_TEST_SUITE_P(All, XMLDocumentLoads, testing::ValuesIn(kLoaders),
                         [](const testing::TestParamInfo<Loader>& row) {
                           return std::string(row.param.name);
                         });

int CountOpenFiles() {
  int count = 0;
  for (int file = 0; file < 1024; ++file) {
    if (fcntl(file, F_GETFD) != -1) ++count;
  }
  return count;
}

}  // namespace

// ---- What all loads have in common

TEST_P(XMLDocumentLoads, Tell_a_text_that_parses) {
  const Document document = NewDocument();
  EXPECT_EQ(GetParam().parsed, LoadInto(document, "<a/>"));
}

TEST_P(XMLDocumentLoads, Tell_texts_that_do_not_parse) {
  const char* const texts[] = {"",
                               " ",
                               "a",
                               "<",
                               "<a",
                               "<a>",
                               "<a></b>",
                               "<a/><b/>",
                               "<a/>x",
                               "<a>&u;</a>",
                               "<a v=1/>",
                               "<a v='1' v='2'/>",
                               "<a>\x01</a>",
                               "<a>\xff</a>",
                               "\xff\xfe",
                               "<a><!--</a>",
                               "<a><![CDATA[</a>"};
  const Document document = NewDocument();
  for (const char* text : texts) {
    SCOPED_TRACE(text);
    EXPECT_EQ(GetParam().notParsed, LoadInto(document, text));
  }
}

TEST_P(XMLDocumentLoads, Replace_the_tree) {
  const Document document = Load("<a>text</a>");
  LoadInto(document, "<b/>");
  EXPECT_EQ("<b/>", CompactXml(document));
}

TEST_P(XMLDocumentLoads, Leave_the_tree_built_up_to_the_error) {
  const Document document = Load("<old/>");
  LoadInto(document, "<a>x<b>y</a>");
  EXPECT_EQ("<a>x<b>y</b></a>", CompactXml(document));
}

TEST_P(XMLDocumentLoads, Empty_the_document_for_a_text_without_elements) {
  const Document document = Load("<old/>");
  LoadInto(document, "text");
  EXPECT_EQ("", CompactXml(document));
}

TEST_P(XMLDocumentLoads, Parse_no_truncated_text) {
  const std::string whole = "<?xml version='1.0'?><a v='1'>x<b/>&amp;<![CDATA[c]]><!--d--></a>";
  const Document document = NewDocument();
  for (std::size_t size = 0; size < whole.size(); ++size) {
    SCOPED_TRACE(size);
    EXPECT_EQ(GetParam().notParsed, LoadInto(document, whole.substr(0, size)));
  }
  EXPECT_EQ(GetParam().parsed, LoadInto(document, whole));
}

TEST_P(XMLDocumentLoads, Drop_what_else_hangs_on_the_document) {
  const Document document = NewDocument();
  document->AddAttribute("v", "1");
  LoadInto(document, "<a/>");
  EXPECT_EQ(nullptr, document->m_pFirstAttribute);
}

TEST_P(XMLDocumentLoads, Leave_the_document_itself_as_it_is) {
  const Document document = NewDocument();
  LoadInto(document, "<a/>");
  EXPECT_EQ("Document Root", Text(document->m_pszNodeName));
  EXPECT_EQ(nullptr, document->m_pszValue);
  EXPECT_EQ(NODE_DOCUMENT, document->m_eNodeType);
  EXPECT_EQ(document.Get(), document->m_pOwnerDocument);
  EXPECT_EQ(static_cast<unsigned int>(IXMLDOMDocument2::FORMATTED_LAYOUT), document->m_uFlags);
  EXPECT_EQ(2, document->m_nIndent);
  EXPECT_EQ(1, document->GetRefCount());
}

TEST_P(XMLDocumentLoads, Keep_one_builder_with_an_empty_stack) {
  const Document document = NewDocument();
  LoadInto(document, "<a><b/></a>");
  LoadInto(document, "<a><b/></a>");
  ASSERT_NE(nullptr, document->m_pSax);
  EXPECT_EQ(document.Get(), document->m_pSax->m_pDocument);
  EXPECT_EQ(nullptr, document->m_pSax->m_pNodeStack->m_pTop);
  EXPECT_EQ(1, CXMLSax::m_iObjCount);
  EXPECT_EQ(1, CNodeStack::m_iObjCount);
  EXPECT_EQ(0, CNodeStackElt::m_iObjCount);
}

TEST_P(XMLDocumentLoads, Keep_the_elements_on_the_stack_that_an_error_left_open) {
  const Document document = NewDocument();
  LoadInto(document, "<a><b/><c>");
  EXPECT_EQ(2, CNodeStackElt::m_iObjCount);
  const CNodeStackElt* top = document->m_pSax->m_pNodeStack->m_pTop;
  EXPECT_EQ(At(document, {0, 1}), top->m_pNode);
  EXPECT_EQ(Root(document), top->m_pNext->m_pNode);
  EXPECT_EQ(nullptr, top->m_pNext->m_pNext);
}

TEST_P(XMLDocumentLoads, Drop_the_open_elements_of_the_load_before) {
  const Document document = NewDocument();
  LoadInto(document, "<a><b><c>");
  LoadInto(document, "<a/>");
  EXPECT_EQ(0, CNodeStackElt::m_iObjCount);
  EXPECT_EQ(1, CNodeStack::m_iObjCount);
}

TEST_P(XMLDocumentLoads, Leave_an_old_root_that_is_still_referred_to_with_its_tree) {
  const Document document = Load("<a v='1'>x<b/></a>");
  Node root;
  document->get_documentElement(root.Out());
  LoadInto(document, "<c/>");
  EXPECT_EQ("<a v='1'>x<b/></a>", CompactXml(root));
  EXPECT_EQ(1, root->GetRefCount());
}

TEST_P(XMLDocumentLoads, Take_parent_and_owner_from_a_referred_child_of_the_old_root) {
  const Document document = Load("<a><b>x</b></a>");
  const Node child(At(document, {0, 0}));
  child->AddRef();
  LoadInto(document, "<c/>");
  EXPECT_EQ("<b>x</b>", CompactXml(child));
  EXPECT_EQ(nullptr, child->m_pParent);
  EXPECT_EQ(nullptr, child->m_pOwnerDocument);
}

TEST_P(XMLDocumentLoads, Log_and_print_nothing) {
  const Document document = NewDocument();
  LogCapture log;
  StdoutCapture output;
  LoadInto(document, "<a v='&lt;'>&amp;</a>");
  LoadInto(document, "<a><b></a>");
  EXPECT_EQ("", output.Take());
  EXPECT_TRUE(log.Events().empty());
}

TEST_P(XMLDocumentLoads, Keep_no_file_open) {
  const Document document = NewDocument();
  const int before = CountOpenFiles();
  LoadInto(document, "<a/>");
  LoadInto(document, "<a>");
  EXPECT_EQ(before, CountOpenFiles());
}

TEST_P(XMLDocumentLoads, Take_texts_of_any_length) {
  const Document document = NewDocument();
  for (std::size_t size : {1u, 1023u, 1024u, 1025u, 4096u, 100000u}) {
    SCOPED_TRACE(size);
    const std::string text(size, 'x');
    EXPECT_EQ(GetParam().parsed, LoadInto(document, "<a>" + text + "</a>"));
    EXPECT_EQ(text, Text(At(document, {0, 0})->m_pszValue));
  }
}

// ---- Texts

TEST(XMLDocumentLoad, A_null_text_is_an_empty_one) {
  const Document document = Load("<a/>");
  EXPECT_EQ(VARIANT_FALSE, document->loadXML(nullptr));
  EXPECT_EQ("", CompactXml(document));
}

TEST(XMLDocumentLoad, A_null_text_is_an_empty_one_with_a_flag_too) {
  const Document document = Load("<a/>");
  short flag = kFlagUntouched;
  EXPECT_EQ(S_FALSE, document->loadXML(nullptr, &flag));
  EXPECT_EQ(VARIANT_FALSE, flag);
  EXPECT_EQ("", CompactXml(document));
}

TEST(XMLDocumentLoad, A_text_is_not_loaded_without_a_flag_to_fill) {
  const Document document = NewDocument();
  document->loadXML("<a>x<b>");
  std::string xml = "<c/>";
  EXPECT_EQ(E_ARGUMENT, document->loadXML(&xml[0], nullptr));
  EXPECT_EQ("<a>x<b/></a>", CompactXml(document));
  EXPECT_EQ(2, CNodeStackElt::m_iObjCount);
  EXPECT_EQ(XML_ERROR_NO_ELEMENTS, document->m_pSax->GetErrorCode());
}

TEST(XMLDocumentLoad, A_first_text_makes_no_builder_without_a_flag_to_fill) {
  const Document document = NewDocument();
  std::string xml = "<b/>";
  EXPECT_EQ(E_ARGUMENT, document->loadXML(&xml[0], nullptr));
  EXPECT_EQ(nullptr, document->m_pSax);
}

// ---- Texts longer than the parser takes

namespace {

const char* const kTooLong =
    "CXMLSax - a text of 2147483648 bytes is larger than the parser's limit of 2147483647";

}  // namespace

TEST(XMLDocumentLoad, A_text_that_is_too_long_empties_the_document_and_does_not_parse) {
  const Document document = Load("<a/>");
  HugeText text;
  if (text.Get() == nullptr) GTEST_SKIP() << "there is no room for the text";
  const LogCapture log;
  EXPECT_EQ(VARIANT_FALSE, document->loadXML(text.Get()));
  EXPECT_EQ("", CompactXml(document));
  ASSERT_EQ(1u, log.Events().size());
  EXPECT_EQ(Event(18, 3, kTooLong), log.Events()[0]);
}

TEST(XMLDocumentLoad, A_text_that_is_too_long_lets_a_log_exception_through) {
  const Document document = NewDocument();
  HugeText text;
  if (text.Get() == nullptr) GTEST_SKIP() << "there is no room for the text";
  short flag = kFlagUntouched;
  const RefusingLog log;
  EXPECT_EQ(kTooLong, ThrownMessage([&] { document->loadXML(text.Get(), &flag); }));
}
