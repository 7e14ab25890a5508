#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <string>

#include "harness/LoadOutcome.h"
#include "harness/SmallStack.h"
#include "harness/Trees.h"

// Wide, long and deep documents of 10^5 pieces: loaded, read and released on a small stack, in time
// that grows with their size alone. What grows with its square takes minutes here.

namespace {

const int kCount = 100000;
const double kMostSeconds = 1.0;

std::string Repeat(const std::string& piece, const std::string& separator = "") {
  std::string text;
  for (int i = 0; i < kCount; ++i) text += (i == 0 ? "" : separator) + piece;
  return text;
}

std::string Attributes() {
  std::string xml;
  for (int i = 0; i < kCount; ++i) xml += " v" + std::to_string(i) + "='1'";
  return xml;
}

/// The texts are made by the cases, so that they cost the other cases of this binary nothing.
struct Shape {
  const char* name;
  std::string (*xml)();
  std::string (*text)();
  int nodes;  // the document included
};

std::ostream& operator<<(std::ostream& out, const Shape& shape) { return out << shape.name; }

const Shape kShapes[] = {
    {"FlatRecords", [] { return "<a>" + Repeat("<b>x</b>") + "</a>"; },
     [] { return Repeat("x", " "); }, 2 + 2 * kCount},
    {"EmptyRecords", [] { return "<a>" + Repeat("<b/>") + "</a>"; }, [] { return std::string(); },
     2 + kCount},
    {"LinesOfText", [] { return "<a>" + Repeat("line\n") + "</a>"; }, [] { return Repeat("line"); },
     3},
    {"TextBetweenElements", [] { return "<a>" + Repeat("x<b/>") + "</a>"; },
     [] { return Repeat("x"); }, 3 + kCount},
    {"OneLongText", [] { return "<a>" + Repeat("0123456789") + "</a>"; },
     [] { return Repeat("0123456789"); }, 3},
    {"Attributes", [] { return "<a" + Attributes() + ">x</a>"; }, [] { return std::string("x"); },
     3 + kCount},
    {"Levels", [] { return Repeat("<b>") + "x" + Repeat("</b>"); }, [] { return std::string("x"); },
     2 + kCount},
    {"LevelsWithText", [] { return Repeat("<b>x") + Repeat("</b>"); },
     [] { return Repeat("x", " "); }, 1 + 2 * kCount},
};

class Growth : public testing::TestWithParam<Shape> {};

INSTANTIATE_TEST_SUITE_P(All, Growth, testing::ValuesIn(kShapes),
                         [](const testing::TestParamInfo<Shape>& row) {
                           return std::string(row.param.name);
                         });

/// The texts are too long to be printed when they differ.
void ExpectText(const std::string& expected, IXMLDOMNode* node) {
  const std::string text = TakeBstr(node->GetTextAsBSTR());
  EXPECT_EQ(expected.size(), text.size());
  EXPECT_TRUE(expected == text);
}

}  // namespace

TEST_P(Growth, Of_a_loaded_text) {
  const Shape& shape = GetParam();
  const std::string xml = shape.xml();
  const std::string text = shape.text();
  const double seconds = OnSmallStack([&] {
    const Document document = Load(xml);
    EXPECT_EQ(shape.nodes, IXMLDOMNode::m_iObjCount);
    ExpectText(text, document);
  });
  EXPECT_LT(seconds, kMostSeconds);
}

TEST_P(Growth, Of_a_loaded_file) {
  const Shape& shape = GetParam();
  const std::string xml = shape.xml();
  const double seconds = OnSmallStack([&] {
    const Document document = NewDocument();
    EXPECT_EQ(kParsed, LoadFile(document, xml));
    EXPECT_EQ(shape.nodes, IXMLDOMNode::m_iObjCount);
  });
  EXPECT_LT(seconds, kMostSeconds);
}

TEST_P(Growth, Of_a_tree_that_an_error_cut_short) {
  const Shape& shape = GetParam();
  const std::string xml = shape.xml() + "<";
  const std::string text = shape.text();
  const double seconds = OnSmallStack([&] {
    const Document document = NewDocument();
    EXPECT_EQ(VARIANT_FALSE, document->loadXML(xml.c_str()));
    EXPECT_EQ(shape.nodes, IXMLDOMNode::m_iObjCount);
    ExpectText(text, document);
  });
  EXPECT_LT(seconds, kMostSeconds);
}

TEST_P(Growth, Of_loads_that_follow_each_other) {
  const std::string xml = GetParam().xml();
  const double seconds = OnSmallStack([&] {
    const Document document = Load(xml);
    EXPECT_EQ(VARIANT_TRUE, document->loadXML("<a/>"));
    EXPECT_EQ(2, IXMLDOMNode::m_iObjCount);
  });
  EXPECT_LT(seconds, kMostSeconds);
}

TEST(Growth, Of_elements_that_stay_open) {
  const double seconds = OnSmallStack([] {
    const Document document = NewDocument();
    EXPECT_EQ(VARIANT_FALSE, document->loadXML(Repeat("<b>x").c_str()));
    EXPECT_EQ(1 + 2 * kCount, IXMLDOMNode::m_iObjCount);
    EXPECT_EQ(VARIANT_FALSE, document->loadXML(""));
    EXPECT_EQ(1, IXMLDOMNode::m_iObjCount);
  });
  EXPECT_LT(seconds, kMostSeconds);
}
