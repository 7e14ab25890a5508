#include <gtest/gtest.h>
#include <tools/document/DocumentOrder.h>
#include <tools/document/ExactPaths.h>
#include <tools/document/PathSearch.h>
#include <tools/document/PathSyntax.h>
#include <unistd.h>
#include <xmldom/xmldom.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <functional>
#include <string>
#include <vector>

#include "harness/LinearTime.h"
#include "tool/Loading.h"
#include "tool/RandomPaths.h"

namespace {

using tool::PathPurpose;
using tool::SearchPath;

typedef std::vector<IXMLDOMNode*> Nodes;

// Quadratic work grows by the square of 16 between these, linear work by about 16.
const int kFewLevels = 250;
const int kManyLevels = 4000;
const double kMostGrowth = 80;

/// Switches the line that tells of each text with references off, as the tool does.
class NoDebugLines {
 public:
  NoDebugLines() {
    CLogger::SetSink([](const CLogEvent&, void*) {}, nullptr);
    SetDebugEntities(false);
  }
  ~NoDebugLines() { SetDebugEntities(true); }

  NoDebugLines(const NoDebugLines&) = delete;
  NoDebugLines& operator=(const NoDebugLines&) = delete;
};

SearchPath Read(const std::string& text, PathPurpose purpose = PathPurpose::kAll) {
  SearchPath path;
  const xmldom::PathProblem problem = tool::ReadPath(text, purpose, path);
  EXPECT_FALSE(problem) << text << ": " << problem.reason;
  return path;
}

/// The attributes n of elements.
std::string NumbersOf(const Nodes& elements) {
  std::string numbers;
  for (IXMLDOMNode* element : elements) numbers += std::string(element->GetStrAttribute("n")) + " ";
  return numbers;
}

/// What a path selects.
std::string Select(const std::string& text, const std::string& path) {
  const XMLPtr<IXMLDOMDocument2> document = Load(text);
  return NumbersOf(tool::SelectAll(Read(path), document.Get()));
}

std::string SelectFirst(const std::string& text, const std::string& path) {
  const XMLPtr<IXMLDOMDocument2> document = Load(text);
  IXMLDOMNode* node = tool::SelectFirst(Read(path, PathPurpose::kFirst), document.Get());
  return node == nullptr ? "" : NumbersOf({node});
}

const char kText[] =
    "<r n='1'><a n='2'><b n='3' x=''/><b n='4'/></a><a n='5'><c n='6'/><b n='7'/></a>"
    "<c n='8'><a n='9'><b n='10'><c n='11'/></b></a></c></r>";

TEST(PathSearch, A_position_counts_among_the_nodes_of_one_step_from_one_node) {
  EXPECT_EQ("2 ", Select(kText, "/r/a[1]"));
  EXPECT_EQ("2 9 ", Select(kText, "//a[1]"));
  EXPECT_EQ("5 9 ", Select(kText, "//a[last()]"));
  EXPECT_EQ("3 7 ", Select(kText, "/r/a/b[1]"));
  EXPECT_EQ("4 ", Select(kText, "/r/a/b[2]"));
  EXPECT_EQ("8 ", Select(kText, "/r/*[3]"));
  EXPECT_EQ("", Select(kText, "/r/a[4]"));
  EXPECT_EQ("1 ", Select(kText, "r[1]"));
}

TEST(PathSearch, A_position_counts_among_what_the_predicates_before_it_leave) {
  EXPECT_EQ("5 ", Select(kText, "/r/*[b][2]"));
  EXPECT_EQ("5 ", Select(kText, "/r/*[2][b]"));
  EXPECT_EQ("", Select(kText, "/r/*[3][b]"));
  EXPECT_EQ("5 ", Select(kText, "/r/*[b][last()][1]"));
  EXPECT_EQ("5 ", Select(kText, "/r/a[@n='5'][1]"));
}

TEST(PathSearch, An_existence_test_asks_for_children_and_attributes) {
  EXPECT_EQ("3 ", Select(kText, "//b[@x]"));
  EXPECT_EQ("5 10 ", Select(kText, "//*[c][@n][b]") + Select(kText, "//b[c]"));
  EXPECT_EQ("2 ", Select(kText, "//*[b/@x]"));
  EXPECT_EQ("8 9 ", Select(kText, "/r/*[a/b/c]") + Select(kText, "/r/*/*[*/*]"));
  EXPECT_EQ("", Select(kText, "/r/a[b/c]"));
}

TEST(PathSearch, An_attribute_at_the_end_is_selected_where_it_is) {
  const XMLPtr<IXMLDOMDocument2> document = Load(kText);
  const Nodes all = tool::SelectAll(Read("//b/@x"), document.Get());
  ASSERT_EQ(1u, all.size());
  EXPECT_EQ(NODE_ATTRIBUTE, all[0]->m_eNodeType);
  EXPECT_EQ(11u, tool::SelectAll(Read("//@n"), document.Get()).size());
  // The first b has none.
  const XMLPtr<IXMLDOMDocument2> other = Load("<r><b/><b x='1'/></r>");
  EXPECT_NE(nullptr, tool::SelectFirst(Read("//b/@x", PathPurpose::kFirst), other.Get()));
  EXPECT_EQ(nullptr, tool::SelectFirst(Read("//b/@y", PathPurpose::kFirst), other.Get()));
}

TEST(PathSearch, One_node_is_found_behind_steps_that_move) {
  EXPECT_EQ("5 ", SelectFirst(kText, "/r/a[1]/../a[2]"));
  EXPECT_EQ("3 ", SelectFirst(kText, "//b[last()]/../b[@x]"));
  EXPECT_EQ("8 ", SelectFirst(kText, "//a[b/c]/../../c"));
  EXPECT_EQ("", SelectFirst(kText, "//b[c]/../../a[2]"));
  const XMLPtr<IXMLDOMDocument2> document = Load("<r><b x='1'><b/></b></r>");
  const SearchPath path = Read("//b/../@x", PathPurpose::kFirst);
  IXMLDOMNode* const attribute = tool::SelectFirst(path, document.Get());
  ASSERT_NE(nullptr, attribute);
  EXPECT_EQ("/r/b/@x", tool::ExactPaths().PathTo(attribute));
}

TEST(PathSearch, A_field_begins_at_its_node) {
  const XMLPtr<IXMLDOMDocument2> document = Load(kText);
  const Nodes nodes = tool::SelectAll(Read("/r/a[2]"), document.Get());
  ASSERT_EQ(1u, nodes.size());
  const auto field = [&nodes](const std::string& path) {
    IXMLDOMNode* node = tool::SelectFirst(Read(path, PathPurpose::kField), nodes[0]);
    return node == nullptr ? std::string() : tool::ExactPaths().PathTo(node);
  };
  EXPECT_EQ("/r/a[2]", field("."));
  EXPECT_EQ("/r/a[2]/b", field("b"));
  EXPECT_EQ("/r/a[2]/c/@n", field("c/@n"));
  EXPECT_EQ("/r/a[2]/@n", field("@n"));
  EXPECT_EQ("/r/a[1]/b[2]", field("../a/b[2]"));
  EXPECT_EQ("/r/@n", field("../@n"));
  EXPECT_EQ("", field("d"));
  EXPECT_EQ("", field("../../../x"));
}

TEST(PathSearch, Many_siblings_and_levels_take_linear_time) {
  std::string text = "<r>";
  for (int i = 0; i < 30000; ++i) text += "<a/>";
  for (int i = 0; i < 30000; ++i) text += "<b>";
  for (int i = 0; i < 30000; ++i) text += "</b>";
  const XMLPtr<IXMLDOMDocument2> document = Load(text + "</r>");
  EXPECT_EQ(1u, tool::SelectAll(Read("//a[30000]"), document.Get()).size());
  EXPECT_EQ(29998u, tool::SelectAll(Read("//b[b/b]"), document.Get()).size());
  EXPECT_EQ(30000u, tool::SelectAll(Read("//b[1]"), document.Get()).size());
  EXPECT_EQ(nullptr,
            tool::SelectFirst(Read("//a/../a[1]/../b/../c", PathPurpose::kFirst), document.Get()));
}

// The text of each element is a part of the texts of all elements around it, and has a reference,
// so that it cannot be compared as it is stored.
TEST(PathSearch, Comparisons_of_elements_in_each_other_take_linear_time) {
  const NoDebugLines noDebugLines;
  const auto secondsFor = [](int levels, const std::function<bool(IXMLDOMNode*)>& search) {
    std::string text;
    for (int i = 0; i < levels; ++i) text += "<a>";
    text += "x&amp;y";
    for (int i = 0; i < levels; ++i) text += "</a>";
    const XMLPtr<IXMLDOMDocument2> document = Load(text);
    const std::clock_t begin = std::clock();
    EXPECT_FALSE(search(document.Get()));
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
  };
  for (const char* text : {"//a[a='q']/@id", "//a[a='q'][1]", "//*[*/a='q'][last()]"}) {
    SCOPED_TRACE(text);
    const SearchPath path = Read(text);
    ExpectGrowthBelow(kMostGrowth, kFewLevels, kManyLevels, [&](int levels) {
      return secondsFor(levels,
                        [&](IXMLDOMNode* start) { return !tool::SelectAll(path, start).empty(); });
    });
    ExpectGrowthBelow(kMostGrowth, kFewLevels, kManyLevels, [&](int levels) {
      return secondsFor(
          levels, [&](IXMLDOMNode* start) { return tool::SelectFirst(path, start) != nullptr; });
    });
  }
  const SearchPath field = Read("a[a='q']/@id", PathPurpose::kField);
  ExpectGrowthBelow(kMostGrowth, kFewLevels, kManyLevels, [&](int levels) {
    return secondsFor(levels, [&](IXMLDOMNode* node) {
      tool::FieldSearch search(field);
      bool isFound = false;
      while ((node = tool::NextElement(node)) != nullptr) {
        isFound = search.From(node) != nullptr || isFound;
      }
      return isFound;
    });
  });
}

TEST(PathSearch, A_field_with_a_comparison_is_searched_from_each_node) {
  const XMLPtr<IXMLDOMDocument2> document = Load(kText);
  const SearchPath field = Read("b[c=''][@n=10]/@n", PathPurpose::kField);
  tool::FieldSearch search(field);
  std::string found;
  for (IXMLDOMNode* node : tool::SelectAll(Read("//a"), document.Get())) {
    IXMLDOMNode* const attribute = search.From(node);
    found += attribute == nullptr ? "- " : std::string(attribute->m_pszValue) + " ";
  }
  EXPECT_EQ("- - 10 ", found);
}

// ---- What holds for any tree: many small ones, made at random.

class PathSearchProperty : public testing::TestWithParam<unsigned int> {};

INSTANTIATE_TEST_SUITE_P(Seeds, PathSearchProperty, testing::Values(20261122u, 11u));

TEST_P(PathSearchProperty, Paths_that_the_library_knows_select_what_it_selects_in_its_order) {
  RandomPaths random(GetParam());
  int found = 0;
  for (int i = 0; i < 60; ++i) {
    const XMLPtr<IXMLDOMDocument2> document = Load(random.Document(40));
    for (int j = 0; j < 50; ++j) {
      SearchPath path = Read(random.Path(RandomPaths::kPlain));
      ASSERT_TRUE(path.isPlain) << path.text;
      const Nodes expected = tool::SelectAll(path, document.Get());
      path.isPlain = false;
      ASSERT_EQ(expected, tool::SelectAll(path, document.Get())) << path.text;
      if (expected.size() > 1) ++found;

      path = Read(random.Path(RandomPaths::kWithDots), PathPurpose::kFirst);
      ASSERT_TRUE(path.isPlain) << path.text;
      IXMLDOMNode* const first = tool::SelectFirst(path, document.Get());
      path.isPlain = false;
      ASSERT_EQ(first, tool::SelectFirst(path, document.Get())) << path.text;
    }
  }
  EXPECT_LT(500, found);
}

TEST_P(PathSearchProperty, The_one_node_is_among_all_if_there_are_any) {
  RandomPaths random(GetParam());
  int found = 0;
  for (int i = 0; i < 60; ++i) {
    const XMLPtr<IXMLDOMDocument2> document = Load(random.Document(40));
    for (int j = 0; j < 50; ++j) {
      const std::string path = random.Path(RandomPaths::kAny) + (j % 3 == 0 ? "/@y" : "");
      const Nodes all = tool::SelectAll(Read(path), document.Get());
      IXMLDOMNode* const first = tool::SelectFirst(Read(path, PathPurpose::kFirst), document.Get());
      if (all.empty()) {
        ASSERT_EQ(nullptr, first) << path;
      } else {
        ASSERT_EQ(1, std::count(all.begin(), all.end(), first)) << path;
        ++found;
      }
    }
  }
  EXPECT_LT(500, found);
}

TEST_P(PathSearchProperty, The_path_of_a_node_selects_that_node_alone) {
  RandomPaths random(GetParam());
  for (int i = 0; i < 60; ++i) {
    const XMLPtr<IXMLDOMDocument2> document = Load(random.Document(40));
    tool::ExactPaths paths;
    for (IXMLDOMNode* element = document.Get();
         (element = tool::NextElement(element)) != nullptr;) {
      const std::string path = paths.PathTo(element);
      ASSERT_EQ(Nodes{element}, tool::SelectAll(Read(path), document.Get())) << path;
      for (IXMLDOMNode* attribute = element->m_pFirstAttribute; attribute != nullptr;
           attribute = attribute->m_pNextSibling) {
        const std::string below = paths.PathTo(attribute);
        ASSERT_EQ(Nodes{attribute}, tool::SelectAll(Read(below), document.Get())) << below;
      }
    }
  }
}

/// What xmllint selects: for each path, the attributes n of its elements, in order.
std::vector<std::string> SelectWithXmllint(const std::string& document,
                                           const std::vector<std::string>& paths) {
  const std::string folder = testing::TempDir() + "xmldom-paths-" + std::to_string(getpid());
  const std::string commands = folder + ".txt";
  const std::string file = folder + ".xml";
  std::ofstream(file) << document;
  {
    std::ofstream out(commands);
    for (const std::string& path : paths) out << "cat " << path << "/@n\n";
  }
  std::string printed;
  FILE* pipe = popen(("xmllint --shell " + file + " < " + commands + " 2>&1").c_str(), "r");
  char buffer[4096];
  for (std::size_t count; (count = fread(buffer, 1, sizeof buffer, pipe)) > 0;) {
    printed.append(buffer, count);
  }
  pclose(pipe);
  std::remove(commands.c_str());
  std::remove(file.c_str());

  static const char kPrompt[] = "/ > ";
  static const char kNumber[] = " n=\"";
  std::vector<std::string> selected;
  std::size_t at = printed.find(kPrompt);
  for (std::size_t i = 0; i < paths.size() && at != printed.npos; ++i) {
    const std::size_t end = printed.find(kPrompt, at + 1);
    std::string numbers;
    while ((at = printed.find(kNumber, at + 1)) < end) {
      const std::size_t begin = at + sizeof kNumber - 1;
      numbers += printed.substr(begin, printed.find('"', begin) - begin) + " ";
    }
    selected.push_back(numbers);
    at = end;
  }
  return selected;
}

TEST_P(PathSearchProperty, Paths_select_what_XPath_selects) {
  if (std::system("xmllint --version >/dev/null 2>&1") != 0) GTEST_SKIP() << "there is no xmllint";
  RandomPaths random(GetParam());
  int found = 0;
  for (int i = 0; i < 3; ++i) {
    const std::string text = random.Document(400);
    const XMLPtr<IXMLDOMDocument2> document = Load(text);
    std::vector<std::string> paths;
    for (int j = 0; j < 400; ++j) paths.push_back(random.Path(RandomPaths::kAny));
    const std::vector<std::string> expected = SelectWithXmllint(text, paths);
    ASSERT_EQ(paths.size(), expected.size());
    for (std::size_t j = 0; j < paths.size(); ++j) {
      Nodes nodes = tool::SelectAll(Read(paths[j]), document.Get());
      // Behind "//" XPath has another order, that of the document, which that of the numbers is.
      std::sort(nodes.begin(), nodes.end(), [](IXMLDOMNode* left, IXMLDOMNode* right) {
        return std::atoi(left->GetStrAttribute("n")) < std::atoi(right->GetStrAttribute("n"));
      });
      ASSERT_EQ(expected[j], NumbersOf(nodes)) << paths[j];
      if (!nodes.empty() && paths[j].find_first_of("123l") != std::string::npos) ++found;
    }
  }
  EXPECT_LT(100, found);
}

}  // namespace
