#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "harness/CompactXml.h"
#include "harness/RandomTrees.h"
#include "harness/SearchOutcome.h"
#include "harness/Trees.h"
#include "plain/PlainSingleNodeSearch.h"

// Failed searches that report something are repeated, up to a limit.

namespace {

/// So often a node is tested with a step.
const int kMostTests = plain::SingleNodeSearch::kMostTests;

const int kDeepTrees = 500;
const int kMostDeepSearches = 30000;

/// A tree of elements named a and b, each below one of the latest `back` ones, with children that
/// say which one is tested: a test of t0 prints a line that holds the number of the element, and
/// "0".
std::string TellingTree(RandomTrees& random, int elements, int back) {
  std::vector<std::string> before;
  std::vector<std::vector<std::size_t>> children(static_cast<std::size_t>(elements));
  for (int i = 0; i < elements; ++i) {
    const std::string id = std::to_string(i);
    std::string text = random.Below(4) == 0 ? "<b" : "<a";
    text += random.Below(2) == 0 ? "><t0>x" + id + ".0&amp;</t0>" : ">";
    text += "<t1>x" + id + ".1&amp;</t1><t2>x" + id + ".2&amp;</t2>";
    before.push_back(text);
    if (i == 0) continue;
    const int parent = std::max(0, i - 1 - (random.Below(3) == 0 ? random.Below(back) : 0));
    children[static_cast<std::size_t>(parent)].push_back(static_cast<std::size_t>(i));
  }
  std::vector<std::string> whole(before.size());
  for (std::size_t i = before.size(); i-- > 0;) {
    whole[i] = before[i];
    for (std::size_t child : children[i]) whole[i] += whole[child];
    whole[i] += before[i][1] == 'a' ? "</a>" : "</b>";
  }
  return whole[0];
}

/// A path that begins with "//", for such a tree.
std::string TellingPath(RandomTrees& random, bool withDots) {
  const char* const first[] = {"a[t0=0]", "*[t0=0]", "a", "*", "*[t0=1]", "a[t0=0][@k='']"};
  const char* const next[2][6] = {{"a[t1=0]", "*[t1=0]", "a", "*", "*[t1=1]", "a["},
                                  {"a[t2=0]", "*[t2=0]", "a", "*", "*[t2=1]", "a["}};
  const char* const dots[] = {".", "..", "../..", "./."};
  std::string path = "//" + std::string(first[random.Below(6)]);
  const int more = random.Below(3);
  for (int i = 0; i < more; ++i) {
    if (withDots && random.Below(2) == 0) path += "/" + std::string(dots[random.Below(4)]);
    path += "/" + std::string(next[i][random.Below(6)]);
  }
  if (withDots) path += "/" + std::string(dots[random.Below(4)]);
  return random.Below(3) == 0 ? path : path + "/c";
}

/// How often each node was tested with each step that prints something: by the line printed.
std::map<std::string, int> TestsOf(IXMLDOMNode* node, const std::string& path) {
  const SearchOutcome outcome =
      Observe([&] { return Single(node->SelectSingleNode(path.c_str())); });
  std::map<std::string, int> tests;
  std::istringstream lines(outcome.printed);
  for (std::string line; std::getline(lines, line);) ++tests[line];
  return tests;
}

}  // namespace

TEST(SingleNodeSearchRepeats, Are_made_below_the_six_outermost_matched_nodes_alone) {
  RandomTrees random(5);
  int compared = 0;
  int leftOut = 0;
  for (int i = 0; i < kDeepTrees; ++i) {
    Document document = Load(TellingTree(random, 1 + random.Below(16), 2));
    const std::string path = TellingPath(random, i % 4 == 0);
    SCOPED_TRACE("\"" + path + "\" in " + CompactXml(document));
    CXPathList list;
    list.ParsePath(path.c_str());
    plain::SingleNodeSearch search(list, plain::SingleNodeSearch::kMostRepeats, kMostDeepSearches);
    const SearchOutcome expected = Observe([&] { return Nodes{search.Find(document, -1)}; });
    if (!search.IsComparable()) continue;
    ++compared;
    ExpectSame(expected, Observe([&] { return Single(document->SelectSingleNode(path.c_str())); }));
    plain::SingleNodeSearch every(list, plain::SingleNodeSearch::kEveryRepeat, kMostDeepSearches);
    const SearchOutcome all = Observe([&] { return Nodes{every.Find(document, -1)}; });
    if (every.IsTooLong()) continue;
    EXPECT_EQ(all.nodes, expected.nodes);
    if (search.LeftOutAny()) {
      if (all.printed != expected.printed || !(all.events == expected.events)) ++leftOut;
    } else {
      ExpectSame(all, expected);
    }
    if (HasFailure()) return;
  }
  EXPECT_LT(kDeepTrees * 9 / 10, compared);
  EXPECT_LT(kDeepTrees / 20, leftOut);
}

TEST(SingleNodeSearchRepeats, Tests_no_node_more_than_64_times_with_a_step) {
  RandomTrees random(6);
  int most = 0;
  for (int i = 0; i < 100; ++i) {
    Document document = Load(TellingTree(random, 40, 2));
    const std::string path = TellingPath(random, false);
    SCOPED_TRACE("\"" + path + "\" in " + CompactXml(document));
    for (const auto& test : TestsOf(document, path)) {
      EXPECT_GE(kMostTests, test.second) << test.first;
      most = std::max(most, test.second);
    }
    if (HasFailure()) return;
  }
  EXPECT_EQ(kMostTests, most);
}

TEST(SingleNodeSearchRepeats,
     Tests_no_node_more_than_64_times_with_a_step_on_average_when_paths_climb) {
  RandomTrees random(7);
  for (int i = 0; i < 100; ++i) {
    const int elements = 30;
    Document document = Load(TellingTree(random, elements, 1 + random.Below(30)));
    const std::string path = TellingPath(random, true);
    SCOPED_TRACE("\"" + path + "\" in " + CompactXml(document));
    CXPathList list;
    list.ParsePath(path.c_str());
    int tests = 0;
    for (const auto& test : TestsOf(document, path)) tests += test.second;
    EXPECT_GE(kMostTests * IXMLDOMNode::m_iObjCount * (list.m_nCount + 1), tests);
    if (HasFailure()) return;
  }
}

TEST(SingleNodeSearchRepeats, A_search_that_reports_ends_quickly_however_deep_the_tree) {
  const struct {
    std::string xml;
    const char* path;
    std::size_t mostLines;  // 64 for each node that says something, with each step that does
  } rows[] = {
      {Repeat("<a><b>x &amp; z</b>", 40) + Repeat("</a>", 40), "//a[b='x & y']/c", 40 * 64},
      {Repeat("<a><b>x &amp; z</b>", 40) + Repeat("</a>", 40), "//a[b='x & z']/c", 40 * 64},
      {Repeat("<a><c>&amp;</c>", 38) + Repeat("</a>", 38), "//*/*/*[c='x']", 38 * 64},
      {Repeat("<a>", 40) + Repeat("</a>", 40), "//a/.", 40 * 64},
      {Repeat("<a>", 40) + Repeat("</a>", 40), "//a/..", 40 * 64},
      {Repeat("<a>", 40) + Repeat("</a>", 40), "//*/*/*/a[", 40 * 64},
      {"<r>" + Repeat("<a/>", 2000) + "</r>", "/r/a/../a[", 2 * 2000 * 64},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.path);
    Document document = Load(row.xml);
    const SearchOutcome outcome =
        Observe([&] { return Single(document->SelectSingleNode(row.path)); });
    EXPECT_EQ(Nodes{nullptr}, outcome.nodes);
    const std::size_t lines =
        static_cast<std::size_t>(std::count(outcome.printed.begin(), outcome.printed.end(), '\n'));
    EXPECT_LT(0u, lines + outcome.events.size());
    EXPECT_GE(row.mostLines, lines + outcome.events.size());
  }
}
