#include <tools/document/ResultCheck.h>
#include <tools/document/SourceEncoding.h>

#include <gtest/gtest.h>
#include <tools/document/DocumentOrder.h>
#include <tools/io/SourceText.h>
#include <xmldom/dom/XMLDocument.h>

#include <algorithm>
#include <cstdio>
#include <random>
#include <string>

#include "tool/Loading.h"

// Texts are loaded and written by the library, and what is said of the result is compared with what
// a second load finds.

namespace {

using tool::FindResultProblem;
using tool::NeedsResultCheck;
using tool::ResultKind;
using tool::ResultProblem;
using tool::SourceEncoding;

const char kInvalid[] = "would not load: not well-formed (invalid token)";
const char kUndefined[] = "would not load: undefined entity";

std::string Written(IXMLDOMDocument2& document) { return std::string(document.Getxml()); }

ResultProblem ProblemOf(const std::string& text, ResultKind kind) {
  const XMLPtr<IXMLDOMDocument2> document = Load(text);
  const std::string xml =
      kind == ResultKind::kMasked ? std::string(document->GetMaskedXML()) : Written(*document);
  ResultProblem problem = FindResultProblem(xml.c_str(), *document->m_pFirstChild, kind);
  // References to entities that are declared elsewhere are looked for with a document type alone.
  EXPECT_TRUE(problem.element == nullptr || problem.reason == kUndefined ||
              NeedsResultCheck(SourceEncoding(text), xml.c_str(), kind))
      << text;
  problem.element = nullptr;
  return problem;
}

struct Case {
  const char* text;
  const char* reason;  // empty when nothing is wrong
};

const char kOther[] = "would load as something else";

class ResultCheck : public testing::TestWithParam<Case> {};

INSTANTIATE_TEST_SUITE_P(
    Texts, ResultCheck,
    testing::Values(
        Case{"<a/>", ""}, Case{"<a b='1>2]]>'>x<c/>y<d>z</d></a>", ""},
        Case{"<a>x <!-- c --> &lt; &#62;<?p i?><![CDATA[<b>]]><b/> y\n</a>", ""},
        Case{"<a>]]<b>]]</b>></a>", kInvalid},
        Case{"<!DOCTYPE a [<!ENTITY e '<b>x</b>'>]><a>&e; &e;<![CDATA[]]></a>", ""},
        Case{"<a>]]<b/>></a>", kInvalid}, Case{"<a>]]\n></a>", kInvalid},
        Case{"<a>]\n]&#62;]\n>]\n]\n></a>", kInvalid},
        Case{"<!DOCTYPE a [<!ENTITY e ']]'>]><a>&e;></a>", kInvalid},
        Case{"<a><![CDATA[]]\n><admin right='all'/><![CDATA[]]></a>", kOther},
        Case{"<a><![CDATA[]]\n></a><a><![CDATA[]]></a>", kOther},
        // A child element of the tree takes the place of one that the text has brought.
        Case{"<a><![CDATA[]]\n><b/><![CDATA[]]><b/></a>", kOther},
        Case{"<a><![CDATA[]]\n><b><![CDATA[]]><b/></a>", kOther},
        Case{"<a><![CDATA[]]\n><?p ]]><b>?></b></a>", kOther},
        // An instruction swallows an element, and a text further down brings another one.
        Case{"<a><![CDATA[]]\n><?p ]]><b/><c>?><![CDATA[]]\n><b/><c>]]></c></a>", kOther},
        Case{"<a><![CDATA[]]\n>&lt; & ]]></a>", kInvalid},
        Case{"<a><![CDATA[]]\n>&e;<![CDATA[]]></a>", kUndefined},
        Case{"<!DOCTYPE a SYSTEM 'a.dtd'><a>&e;</a>", kUndefined},
        Case{"<?xml version='1.0' encoding='ISO-8859-1'?><a>\xe9</a>", ""},
        Case{"<?xml version='1.0' encoding='ISO-8859-1'?><a><\xaa/></a>", kInvalid},
        Case{"<?xml version='1.0' encoding='ISO-8859-1'?><a \xb5='1'/>", kInvalid}));

TEST_P(ResultCheck, Problem_of_a_written_document_is_found) {
  EXPECT_EQ(GetParam().reason, ProblemOf(GetParam().text, ResultKind::kDocument).reason)
      << GetParam().text;
}

TEST(ResultCheckKinds, Fragment_may_refer_to_entities_that_are_declared_elsewhere) {
  const std::string type = "<!DOCTYPE a SYSTEM 'a.dtd'>";
  EXPECT_EQ("", ProblemOf(type + "<a>&e;<b>&f;</b></a>", ResultKind::kFragment).reason);
  EXPECT_EQ(kInvalid, ProblemOf(type + "<a>&e;]]<b/>></a>", ResultKind::kFragment).reason);
}

TEST(ResultCheckKinds, Masked_document_has_only_names) {
  EXPECT_EQ("", ProblemOf("<a>]]<b c='1'/>></a>", ResultKind::kMasked).reason);
  const std::string declaration = "<?xml version='1.0' encoding='ISO-8859-1'?>";
  EXPECT_EQ("", ProblemOf(declaration + "<a>]]<b/>></a>", ResultKind::kMasked).reason);
  EXPECT_EQ(kInvalid, ProblemOf(declaration + "<a><\xba/></a>", ResultKind::kMasked).reason);
}

TEST(ResultCheckKinds, Frame_is_passed_over_and_declares_entities) {
  const std::string type = "<!DOCTYPE a SYSTEM 'a.dtd'>\n<!-- <b/> -->";
  const XMLPtr<IXMLDOMDocument2> document = Load(type + "<a>&e;</a>");
  const std::string framed = type + Written(*document) + "<?p i?>";
  const IXMLDOMNode& root = *document->m_pFirstChild;
  EXPECT_EQ(nullptr, FindResultProblem(framed.c_str(), root, ResultKind::kDocument).element);
}

TEST(ResultCheckKinds, Element_with_the_problem_is_named) {
  const XMLPtr<IXMLDOMDocument2> document = Load("<a><b/><c>]]<d/>></c></a>");
  const std::string xml = Written(*document);
  const IXMLDOMNode& root = *document->m_pFirstChild;
  const ResultProblem problem = FindResultProblem(xml.c_str(), root, ResultKind::kDocument);
  ASSERT_NE(nullptr, problem.element);
  EXPECT_STREQ("c", problem.element->m_pszNodeName);
}

TEST(ResultCheckKinds, Texts_longer_than_a_piece_of_the_parser_are_compared_whole) {
  std::string text = "<a>";
  for (int i = 0; i < 30000; ++i) text += "<![CDATA[x]]> y &lt;<!-- z -->";
  EXPECT_EQ("", ProblemOf(text + "</a>", ResultKind::kDocument).reason);
  EXPECT_EQ(kInvalid, ProblemOf(text + "]]<b/>></a>", ResultKind::kDocument).reason);
}

// ---- Random texts

class ResultCheckProperty : public testing::TestWithParam<unsigned int> {};

INSTANTIATE_TEST_SUITE_P(Seeds, ResultCheckProperty, testing::Values(20261123u, 11u));

/// All that a tree holds: for each element its level, its name and its text without white space.
std::string Content(IXMLDOMDocument2& document) {
  std::string content;
  for (IXMLDOMNode* element = document.m_pFirstChild; element != nullptr;
       element = tool::NextElement(element)) {
    for (IXMLDOMNode* above = element->m_pParent; above != nullptr; above = above->m_pParent) {
      content += '/';
    }
    content += std::string(element->m_pszNodeName) + ' ';
    for (IXMLDOMNode* child = element->m_pFirstChild; child != nullptr;
         child = child->m_pNextSibling) {
      if (child->m_eNodeType != NODE_TEXT) continue;
      std::string text = child->m_pszValue;
      text.erase(std::remove_if(text.begin(), text.end(), tool::IsSpace), text.end());
      content += text;
    }
  }
  return content;
}

TEST_P(ResultCheckProperty, Nothing_is_found_where_a_second_load_finds_the_same) {
  static const char* const kParts[] = {"]",
                                       "]",
                                       ">",
                                       ">",
                                       "\n",
                                       " ",
                                       "x",
                                       "<b/>",
                                       "<c>",
                                       "</c>",
                                       "<![CDATA[",
                                       "]]>",
                                       "<?p ",
                                       "?>",
                                       "<!--",
                                       "-->",
                                       "&lt;",
                                       "&",
                                       "<![CDATA[]]\n>",
                                       "<![CDATA[]]\n><b/>",
                                       "<![CDATA[]]>",
                                       "]]\n>"};
  std::mt19937 engine(GetParam());
  std::printf("seed %u\n", GetParam());
  int loaded = 0;
  int broken = 0;   // of which the result does not load
  int altered = 0;  // of which it loads as something else
  for (int i = 0; i < 120000; ++i) {
    std::string text = "<a>";
    for (unsigned int part = engine() % 9 + 1; part != 0; --part) {
      text += kParts[engine() % (sizeof kParts / sizeof kParts[0])];
    }
    text += "</a>";
    const XMLPtr<IXMLDOMDocument2> document = TryLoad(text);
    if (document == nullptr) continue;
    ++loaded;
    const std::string xml = Written(*document);
    const ResultProblem problem =
        FindResultProblem(xml.c_str(), *document->m_pFirstChild, ResultKind::kDocument);
    const bool isFound = problem.element != nullptr;
    const XMLPtr<IXMLDOMDocument2> again = TryLoad(xml);
    const bool isSame = again != nullptr && Content(*document) == Content(*again);
    ASSERT_EQ(isSame, !isFound) << text << "\n" << xml << problem.reason;
    if (isFound) ++(again == nullptr ? broken : altered);
    ASSERT_TRUE(!isFound ||
                NeedsResultCheck(SourceEncoding(text), xml.c_str(), ResultKind::kDocument))
        << text;
  }
  EXPECT_LT(10000, loaded);
  EXPECT_LT(100, broken);
  EXPECT_LT(10, altered);
  std::printf("%d loaded, %d broken, %d altered\n", loaded, broken, altered);
}

}  // namespace
