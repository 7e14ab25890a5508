#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <ostream>
#include <string>

#include "harness/LinearTime.h"
#include "harness/SmallStack.h"
#include "harness/StdoutCapture.h"
#include "harness/Trees.h"

// Predicates on the text of elements that are nested in each other, so that the text of each is
// part of the text of those around it.

namespace {

const int kLevels = 100000;
const int kSomeLevels = 50;  // more than the nodes whose text is read anew each time

int CountSelected(IXMLDOMNode* node, const std::string& path) {
  return Ref<IXMLDOMNodeList>(node->SelectNodes(path.c_str()))->m_nCount;
}

std::string Nested(const std::string& begin, const std::string& middle, const std::string& end,
                   int levels) {
  return Repeat(begin, levels) + middle + Repeat(end, levels);
}

struct Shape {
  const char* name;
  const char* begin;
  const char* middle;
  const char* end;
  const char* path;
  int selected;  // a negative number: all but so many
};

std::ostream& operator<<(std::ostream& out, const Shape& shape) { return out << shape.name; }

const Shape kShapes[] = {
    {"NoText", "<a>", "", "</a>", "//a[a='x']", 0},
    {"NoTextIsTheEmptyText", "<a>", "", "</a>", "//a[a='']", -1},
    {"TextAtTheBottom", "<a>", "x", "</a>", "//a[a='x']", -1},
    {"NumberAtTheBottom", "<a>", "12", "</a>", "//a[a=12]", -1},
    {"TextAtEachLevel", "<a>y", "x", "</a>", "//a[a='yx']", 1},
    {"LateTextAtEachLevel", "<a>", "x", "y</a>", "//a[a='xy']", 1},
    {"OtherElementsAtEachLevel", "<a><b>1</b><c/><b><c>2</c>3</b>", "x", "<b/></a>", "//a[a='x']",
     0},
    {"ReferencesThatNobodyIsToldOf", "<a>", "&lt;x", "</a>", "//a[a='<x']", -1},
    {"ReferencesThatBecomeNothing", "<a>", "<c>&#x41;</c><c>x</c>", "</a>", "//a[a='x']", -1},
    {"CandidatesFurtherDown", "<a>", "x", "</a>", "//a[a/a/a='x']", -3},
};

class TextMemory : public testing::TestWithParam<Shape> {};

INSTANTIATE_TEST_SUITE_P(All, TextMemory, testing::ValuesIn(kShapes),
                         [](const testing::TestParamInfo<Shape>& row) {
                           return std::string(row.param.name);
                         });

}  // namespace

TEST_P(TextMemory, Of_nested_elements_is_read_in_linear_time) {
  const Shape& shape = GetParam();
  SetDebugEntities(false);
  ExpectLinearTime(kLevels, [&](int levels) {
    const Document document = Load(Nested(shape.begin, shape.middle, shape.end, levels));
    return OnSmallStack([&] {
      const int selected = shape.selected < 0 ? levels + shape.selected : shape.selected;
      EXPECT_EQ(selected, CountSelected(document, shape.path));
    });
  });
  SetDebugEntities(true);
}

TEST(TextMemoryOfNestedElements, Is_read_in_linear_time_by_a_single_search) {
  ExpectLinearTime(kLevels, [](int levels) {
    const Document document = Load(Nested("<a>", "x", "</a>", levels));
    return OnSmallStack(
        [&] { EXPECT_EQ(nullptr, Node(document->SelectSingleNode("//a[a='y']")).Get()); });
  });
}

TEST(TextMemoryOfNestedElements, Has_the_text_of_each_element) {
  std::string xml;
  for (int i = 0; i < kSomeLevels; ++i) xml += "<a>" + std::to_string(i);
  const Document document = Load(xml + Repeat("</a>", kSomeLevels));
  EXPECT_EQ(0, CountSelected(document, "//a[a='48']"));
  EXPECT_EQ(1, CountSelected(document, "//a[a='48 49']"));
  EXPECT_EQ(1, CountSelected(document, "//a[a='47 48 49']"));
  EXPECT_EQ(1, CountSelected(document, "//a[a=1]"));
  EXPECT_EQ(0, CountSelected(document, "//a[a=0]"));
}

TEST(TextMemoryOfNestedElements, Is_the_same_for_each_predicate_of_a_step) {
  const std::string many = Repeat("<c/>", kSomeLevels);
  const Document document = Load("<r><a><b>x" + many + "</b></a></r>");
  EXPECT_EQ(1, CountSelected(document, "//a[b='x'][b='x']"));
  // What an application has put below a text is no part of it.
  At(Root(document), {0, 0, 0})->AddTextChild("y");
  EXPECT_EQ(1, CountSelected(document, "//a[b='x'][b='x']"));
}

TEST(TextMemoryOfNestedElements, Has_number_0_without_digits_whatever_stands_behind) {
  const std::string inner = "<a>&#32;" + Repeat("<c/>", kSomeLevels) + "</a>";
  const Document document = Load("<a><a>" + inner + "<d>7</d></a></a>");
  SetDebugEntities(false);
  EXPECT_EQ(1, CountSelected(document, "//a[a=0]"));
  EXPECT_EQ(1, CountSelected(document, "//a[a=7]"));
  SetDebugEntities(true);
}

TEST(TextMemoryOfNestedElements, Keeps_the_numbers_of_different_texts_apart) {
  const std::string many = Repeat("<c/>", kSomeLevels);
  const Document document = Load("<a><a><a>12" + many + "</a></a><a>34" + many + "</a></a>");
  EXPECT_EQ(0, CountSelected(document, "//a[a=0]"));
}

TEST(TextMemoryOfNestedElements, Leaves_out_what_is_logged_or_printed_each_time) {
  const Document document = Load(Nested("<a>", "x&amp;", "</a>", kSomeLevels));
  StdoutCapture output;
  EXPECT_EQ(kSomeLevels - 1, CountSelected(document, "//a[a='x&']"));
  EXPECT_EQ(Repeat("Translate Entities: from <x&amp;> to <x&>\n", kSomeLevels - 1), output.Take());
}
