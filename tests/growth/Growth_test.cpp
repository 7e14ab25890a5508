#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <string>

#include "harness/LinearTime.h"
#include "harness/LoadOutcome.h"
#include "harness/SmallStack.h"
#include "harness/Trees.h"

// Wide, long and deep documents of up to 10^5 pieces: loaded, read and released on a small stack,
// in time that grows with their size alone.

namespace {

const int kCount = 100000;

std::string Joined(const std::string& piece, const std::string& separator, int count) {
  return piece + Repeat(separator + piece, count - 1);
}

std::string Attributes(int count) {
  std::string xml;
  for (int i = 0; i < count; ++i) xml += " v" + std::to_string(i) + "='1'";
  return xml;
}

/// The texts are made by the cases, so that they cost the other cases of this binary nothing.
struct Shape {
  const char* name;
  std::string (*xml)(int count);
  std::string (*text)(int count);
  int nodes;  // for all pieces together, the document included
  int nodesOfPiece;

  int Nodes(int count) const { return nodes + nodesOfPiece * count; }
};

std::ostream& operator<<(std::ostream& out, const Shape& shape) { return out << shape.name; }

const Shape kShapes[] = {
    {"FlatRecords", [](int count) { return "<a>" + Repeat("<b>x</b>", count) + "</a>"; },
     [](int count) { return Joined("x", " ", count); }, 2, 2},
    {"EmptyRecords", [](int count) { return "<a>" + Repeat("<b/>", count) + "</a>"; },
     [](int) { return std::string(); }, 2, 1},
    {"LinesOfText", [](int count) { return "<a>" + Repeat("line\n", count) + "</a>"; },
     [](int count) { return Repeat("line", count); }, 3, 0},
    {"TextBetweenElements", [](int count) { return "<a>" + Repeat("x<b/>", count) + "</a>"; },
     [](int count) { return Repeat("x", count); }, 3, 1},
    {"OneLongText", [](int count) { return "<a>" + Repeat("0123456789", count) + "</a>"; },
     [](int count) { return Repeat("0123456789", count); }, 3, 0},
    {"Attributes", [](int count) { return "<a" + Attributes(count) + ">x</a>"; },
     [](int) { return std::string("x"); }, 3, 1},
    {"Levels", [](int count) { return Repeat("<b>", count) + "x" + Repeat("</b>", count); },
     [](int) { return std::string("x"); }, 2, 1},
    {"LevelsWithText", [](int count) { return Repeat("<b>x", count) + Repeat("</b>", count); },
     [](int count) { return Joined("x", " ", count); }, 1, 2},
    {"LateTextsOfLevels",
     [](int count) { return "<a>" + Repeat("<b>", count) + "x" + Repeat("</b>y", count) + "</a>"; },
     [](int count) { return Repeat("y ", count) + "x"; }, 3, 2},
    {"LateTextsBeforeALongOne",
     [](int count) {
       return "<a>" + Repeat("<b>", count) + Repeat("0123456789", count) + Repeat("</b>y", count) +
              "</a>";
     },
     [](int count) { return Repeat("y ", count) + Repeat("0123456789", count); }, 3, 2},
    {"LateTextsOfManyElements",
     [](int count) { return "<a>" + Repeat("<b><c>x</c>y</b>", count) + "</a>"; },
     [](int count) { return Joined("y x", " ", count); }, 2, 4},
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
  ExpectLinearTime(kCount, [&](int count) {
    const std::string xml = shape.xml(count);
    const std::string text = shape.text(count);
    return OnSmallStack([&] {
      const Document document = Load(xml);
      EXPECT_EQ(shape.Nodes(count), IXMLDOMNode::m_iObjCount);
      ExpectText(text, document);
    });
  });
}

TEST_P(Growth, Of_a_loaded_file) {
  const Shape& shape = GetParam();
  ExpectLinearTime(kCount, [&](int count) {
    const std::string xml = shape.xml(count);
    return OnSmallStack([&] {
      const Document document = NewDocument();
      EXPECT_EQ(kParsed, LoadFile(document, xml));
      EXPECT_EQ(shape.Nodes(count), IXMLDOMNode::m_iObjCount);
    });
  });
}

TEST_P(Growth, Of_a_tree_that_an_error_cut_short) {
  const Shape& shape = GetParam();
  ExpectLinearTime(kCount, [&](int count) {
    const std::string xml = shape.xml(count) + "<";
    const std::string text = shape.text(count);
    return OnSmallStack([&] {
      const Document document = NewDocument();
      EXPECT_EQ(VARIANT_FALSE, document->loadXML(xml.c_str()));
      EXPECT_EQ(shape.Nodes(count), IXMLDOMNode::m_iObjCount);
      ExpectText(text, document);
    });
  });
}

TEST_P(Growth, Of_loads_that_follow_each_other) {
  ExpectLinearTime(kCount, [](int count) {
    const std::string xml = GetParam().xml(count);
    return OnSmallStack([&] {
      const Document document = Load(xml);
      EXPECT_EQ(VARIANT_TRUE, document->loadXML("<a/>"));
      EXPECT_EQ(2, IXMLDOMNode::m_iObjCount);
    });
  });
}

TEST(Growth, Of_late_texts_in_one_chain_before_a_long_one) {
  ExpectLinearTime(kCount, [](int count) {
    const Document document = Load("<a><b>" + Repeat("0123456789", count) + "</b></a>");
    for (int i = 0; i < count; ++i) Root(document)->AddTextChild("y");
    const std::string text = Repeat("y ", count) + Repeat("0123456789", count);
    return OnSmallStack([&] { ExpectText(text, document); });
  });
}

TEST(Growth, Of_elements_that_stay_open) {
  ExpectLinearTime(kCount, [](int count) {
    const std::string xml = Repeat("<b>x", count);
    return OnSmallStack([&] {
      const Document document = NewDocument();
      EXPECT_EQ(VARIANT_FALSE, document->loadXML(xml.c_str()));
      EXPECT_EQ(1 + 2 * count, IXMLDOMNode::m_iObjCount);
      EXPECT_EQ(VARIANT_FALSE, document->loadXML(""));
      EXPECT_EQ(1, IXMLDOMNode::m_iObjCount);
    });
  });
}
