#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <sstream>
#include <string>
#include <vector>

#include "harness/LogCapture.h"
#include "harness/Outline.h"
#include "harness/RandomTrees.h"
#include "harness/SmallStack.h"
#include "harness/StdoutCapture.h"
#include "harness/Trees.h"
#include "plain/PlainSingleNodeSearch.h"

// The selections save what nobody can hear. Here the same searches are done the plain way, with all
// their repeats; what is found, logged and printed must not differ.

namespace {

/// The step of that number, or null.
const char* StepAt(const CXPathList& list, int k) {
  return k >= 0 && k < list.m_nCount ? list.m_ppIndex[k] : nullptr;
}

IXMLDOMNode* StartOf(IXMLDOMNode* node, const CXPathList& list) {
  return list.m_bAbsolute ? node->m_pOwnerDocument : node;
}

/// Below so many open matched nodes a search that was heard is repeated.
const int kMostRepeats = 6;
/// So often a node is tested with a step, on average.
const int kMostTests = 64;
/// A plain search is given up after so many tests.
const int kMostSearches = 3000;

typedef std::vector<IXMLDOMNode*> Nodes;

void PlainSelectBelow(IXMLDOMNode* node, const CXPathList& list, int k, Nodes* nodes) {
  if (k == list.m_nCount) {
    nodes->push_back(node);
    return;
  }
  for (IXMLDOMNode* child = node->m_pFirstChild; child != nullptr; child = child->m_pNextSibling) {
    if (child->MatchQuery(StepAt(list, k))) PlainSelectBelow(child, list, k + 1, nodes);
  }
}

void PlainTraverse(IXMLDOMNode* node, const CXPathList& list, Nodes* nodes) {
  PlainSelectBelow(node, list, 0, nodes);
  for (IXMLDOMNode* child = node->m_pFirstChild; child != nullptr; child = child->m_pNextSibling) {
    if (child->m_eNodeType == NODE_ELEMENT) PlainTraverse(child, list, nodes);
  }
}

/// What a search finds and what it says meanwhile.
struct Heard {
  Nodes nodes;
  std::vector<LoggedEvent> events;
  std::string printed;
};

template <class Search>
Heard Listen(Search search) {
  Heard heard;
  LogCapture log;
  StdoutCapture out;
  heard.nodes = search();
  heard.printed = out.Take();
  heard.events = log.Events();
  return heard;
}

void ExpectSame(const Heard& plain, const Heard& library) {
  EXPECT_EQ(plain.nodes, library.nodes);
  EXPECT_EQ(plain.events, library.events);
  EXPECT_EQ(plain.printed, library.printed);
}

/// A library's single selection; null counts as a result too.
Nodes Single(IXMLDOMNode* found) { return Nodes{Node(found).Get()}; }

const int kTrees = 400;
const int kPathsPerTree = 6;

/// Calls `compare` with trees, one of their nodes and a path that `makePath` gives; it says whether
/// the search was short enough to be compared, as most have to be.
template <class MakePath, class Compare>
void CompareOnRandomTrees(unsigned int seed, MakePath makePath, Compare compare) {
  RandomTrees random(seed);
  int compared = 0;
  for (int i = 0; i < kTrees; ++i) {
    Document document = random.Tree();
    for (int k = 0; k < kPathsPerTree; ++k) {
      IXMLDOMNode* node = random.AnyNode(document);
      const std::string path = makePath(random);
      SCOPED_TRACE("\"" + path + "\" at " + Outline(node) + " in " + Outline(document));
      CXPathList list;
      list.ParsePath(path.c_str());
      if (compare(node, path, list)) ++compared;
      if (testing::Test::HasFailure()) return;
    }
  }
  EXPECT_LT(kTrees * kPathsPerTree * 9 / 10, compared);
}

std::string AnyPath(RandomTrees& random) { return random.Path(); }
std::string ClimbingPath(RandomTrees& random) { return random.ClimbingPath(); }

/// Compares the first node that the path selects.
bool CompareSingle(IXMLDOMNode* node, const std::string& path, CXPathList& list) {
  PlainSingleNodeSearch plain(list, kMostRepeats, kMostSearches);
  const Heard expected =
      Listen([&] { return Nodes{path == "/" ? node : plain.Find(StartOf(node, list), -1)}; });
  if (plain.IsTooLong() || plain.WasAbove(kMostTests - 1)) return false;
  ExpectSame(expected, Listen([&] { return Single(node->SelectSingleNode(path.c_str())); }));
  return true;
}

/// Compares the first node that is found from a step on; the length of the path chooses which.
bool CompareHelper(IXMLDOMNode* node, const std::string& path, CXPathList& list) {
  const int step = static_cast<int>(path.size()) % (list.m_nCount + 4) - 3;
  SCOPED_TRACE(step);
  PlainSingleNodeSearch plain(list, kMostRepeats, kMostSearches);
  const Heard expected = Listen([&] { return Nodes{plain.Find(node, step)}; });
  if (plain.IsTooLong() || plain.WasAbove(kMostTests - 1)) return false;
  ExpectSame(expected,
             Listen([&] { return Single(node->SelectSingleNodeHelper(node, list, step)); }));
  return true;
}

/// Compares all nodes that the path selects.
bool CompareList(IXMLDOMNode* node, const std::string& path, CXPathList& list) {
  const Heard expected = Listen([&] {
    Nodes nodes;
    if (list.m_bDescendant) {
      PlainTraverse(StartOf(node, list), list, &nodes);
    } else {
      PlainSelectBelow(StartOf(node, list), list, 0, &nodes);
    }
    return nodes;
  });
  ExpectSame(expected, Listen([&] {
               Nodes nodes;
               Ref<IXMLDOMNodeList> found(node->SelectNodes(path.c_str()));
               for (int i = 0; i < found->m_nCount; ++i) {
                 nodes.push_back(Node(found->GetItem(i)));
               }
               return nodes;
             }));
  return true;
}

/// Ends this process, with code 0 when the path selects nothing in any of the trees; a search
/// without end does not outlive it.
template <std::size_t N>
void ExitWhenNothingIsFound(const Document (&trees)[N], const char* path) {
  alarm(10);
  int found = 0;
  for (const Document& tree : trees) found += Node(tree->SelectSingleNode(path)) != nullptr;
  std::_Exit(found);
}

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
  const Heard heard = Listen([&] { return Single(node->SelectSingleNode(path.c_str())); });
  std::map<std::string, int> tests;
  std::istringstream lines(heard.printed);
  for (std::string line; std::getline(lines, line);) ++tests[line];
  return tests;
}

/// The processor time of a search for nothing below a root with `count` children.
double SecondsToSearch(int count, const char* path) {
  Document document = Load("<r>" + Repeat("<a/>", count) + "</r>");
  return OnSmallStack([&] { EXPECT_EQ(nullptr, document->SelectSingleNode(path)); });
}

/// `depth` levels of elements named a; those above the lowest have `width` children each.
std::string Bush(int depth, int width) {
  if (depth == 1) return "<a/>";
  return "<a>" + Repeat(Bush(depth - 1, width), width) + "</a>";
}

}  // namespace

// ---- Compared with the plain search

TEST(SingleNodeSearch, SelectSingleNode_finds_and_says_what_the_plain_search_does) {
  CompareOnRandomTrees(20261121, AnyPath, CompareSingle);
}

TEST(SingleNodeSearch, SelectSingleNode_does_so_when_paths_climb) {
  CompareOnRandomTrees(1, ClimbingPath, CompareSingle);
}

TEST(SingleNodeSearch, SelectSingleNodeHelper_does_so_from_every_step) {
  CompareOnRandomTrees(2, AnyPath, CompareHelper);
}

TEST(SingleNodeSearch, SelectSingleNodeHelper_does_so_from_every_step_when_paths_climb) {
  CompareOnRandomTrees(3, ClimbingPath, CompareHelper);
}

TEST(SingleNodeSearch, SelectNodes_finds_and_says_what_the_plain_walk_does) {
  CompareOnRandomTrees(4, AnyPath, CompareList);
}

// ---- Searches that come back to themselves

TEST(SingleNodeSearch, A_search_that_comes_back_to_itself_ends) {
  Document document = Load("<a><a><a/></a></a>");
  for (const char* path : {"//a/../../b", "//a/../../*/b", "//*/../*/../b", "//a/../../../b"}) {
    SCOPED_TRACE(path);
    EXPECT_EQ(nullptr, Node(document->SelectSingleNode(path)).Get());
  }
}

TEST(SingleNodeSearch, A_search_that_failed_unheard_may_be_heard_when_it_is_met_again) {
  const struct {
    const char* xml;
    const char* path;
  } rows[] = {{"<r><a><a/></a><a/></r>", "//a/../../a["},
              {"<r><a/><a/><b><a/></b></r>", "//a/../../b["},
              {"<r><b/><a><a/></a><a/></r>", "//a/../../b["},
              {"<r><b><a><a/></a></b><b><a/></b></r>", "//a/../../../*/a["},
              {"<r><a><a/></a><b><a><a/></a></b></r>", "//a/../a/../../../b["},
              {"<r><b><a><a/></a></b><a><a/></a><b><a/></b></r>", "//a/../../*/../../b["}};
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.path) + " in " + row.xml);
    Document document = Load(row.xml);
    CXPathList list;
    list.ParsePath(row.path);
    EXPECT_TRUE(CompareSingle(document, row.path, list));
  }
}

// ---- Searches that say something, in deep trees

TEST(SingleNodeSearch, Repeats_below_the_six_outermost_matched_nodes_alone) {
  RandomTrees random(5);
  int compared = 0;
  int leftOut = 0;
  for (int i = 0; i < kDeepTrees; ++i) {
    Document document = Load(TellingTree(random, 1 + random.Below(16), 2));
    const std::string path = TellingPath(random, i % 4 == 0);
    SCOPED_TRACE("\"" + path + "\" in " + Outline(document));
    CXPathList list;
    list.ParsePath(path.c_str());
    PlainSingleNodeSearch plain(list, kMostRepeats, kMostDeepSearches);
    const Heard expected = Listen([&] { return Nodes{plain.Find(document, -1)}; });
    if (plain.IsTooLong() || plain.WasAbove(kMostTests - 1)) continue;
    ++compared;
    ExpectSame(expected, Listen([&] { return Single(document->SelectSingleNode(path.c_str())); }));
    PlainSingleNodeSearch every(list, PlainSingleNodeSearch::kEveryRepeat, kMostDeepSearches);
    const Heard all = Listen([&] { return Nodes{every.Find(document, -1)}; });
    if (every.IsTooLong()) continue;
    EXPECT_EQ(all.nodes, expected.nodes);
    if (plain.LeftOutAny()) {
      if (all.printed != expected.printed || !(all.events == expected.events)) ++leftOut;
    } else {
      ExpectSame(all, expected);
    }
    if (HasFailure()) return;
  }
  EXPECT_LT(kDeepTrees * 9 / 10, compared);
  EXPECT_LT(kDeepTrees / 20, leftOut);
}

TEST(SingleNodeSearch, Tests_no_node_more_than_64_times_with_a_step) {
  RandomTrees random(6);
  int most = 0;
  for (int i = 0; i < 100; ++i) {
    Document document = Load(TellingTree(random, 40, 2));
    const std::string path = TellingPath(random, false);
    SCOPED_TRACE("\"" + path + "\" in " + Outline(document));
    for (const auto& test : TestsOf(document, path)) {
      EXPECT_GE(kMostTests, test.second) << test.first;
      most = std::max(most, test.second);
    }
    if (HasFailure()) return;
  }
  EXPECT_EQ(kMostTests, most);
}

TEST(SingleNodeSearch, Tests_no_node_more_than_64_times_with_a_step_on_average_when_paths_climb) {
  RandomTrees random(7);
  for (int i = 0; i < 100; ++i) {
    const int elements = 30;
    Document document = Load(TellingTree(random, elements, 1 + random.Below(30)));
    const std::string path = TellingPath(random, true);
    SCOPED_TRACE("\"" + path + "\" in " + Outline(document));
    CXPathList list;
    list.ParsePath(path.c_str());
    int tests = 0;
    for (const auto& test : TestsOf(document, path)) tests += test.second;
    EXPECT_GE(kMostTests * IXMLDOMNode::m_iObjCount * (list.m_nCount + 1), tests);
    if (HasFailure()) return;
  }
}

TEST(SingleNodeSearch, A_search_that_is_heard_ends_quickly_however_deep_the_tree) {
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
    const Heard heard = Listen([&] { return Single(document->SelectSingleNode(row.path)); });
    EXPECT_EQ(Nodes{nullptr}, heard.nodes);
    const std::size_t lines =
        static_cast<std::size_t>(std::count(heard.printed.begin(), heard.printed.end(), '\n'));
    EXPECT_LT(0u, lines + heard.events.size());
    EXPECT_GE(row.mostLines, lines + heard.events.size());
  }
}

// ---- Paths that climb, in wide trees

TEST(SingleNodeSearch, A_path_that_climbs_searches_siblings_once) {
  for (const char* path : {"/r/a/../zz", "/r/*/../*/../*/../zz", "//a/../zz", "//a/../../r/a/../zz",
                           "//a/./zz", "/r/a/../a/.././zz"}) {
    SCOPED_TRACE(path);
    const double small = SecondsToSearch(1000, path);
    const double large = SecondsToSearch(32000, path);
    // What is quadratic takes 1024 times as long.
    EXPECT_LT(large, 200 * small);
  }
}

TEST(SingleNodeSearch, A_path_that_climbs_finds_what_stands_last) {
  Document document = Load("<r>" + Repeat("<a/>", 8000) + "<zz/></r>");
  for (const char* path : {"/r/a/../zz", "/r/*/../*/../*/../zz", "//a/../zz"}) {
    SCOPED_TRACE(path);
    EXPECT_EQ(Root(document)->m_pFirstChild->m_pParent, Root(document));
    Node found(document->SelectSingleNode(path));
    ASSERT_NE(nullptr, found.Get());
    EXPECT_STREQ("zz", found->m_pszNodeName);
  }
}

// ---- Searches that take for ever when every repeat is made

TEST(SingleNodeSearch, A_failing_search_of_a_deep_tree_ends_quickly) {
  const int depth = 100000;
  Document document = Load(Repeat("<a>", depth) + Repeat("</a>", depth));
  for (const char* path : {"//a/b", "//a/a/a/b", "//a[@k='1']/b", "//*/*/*/*/*/*/*/*/b", "//b"}) {
    SCOPED_TRACE(path);
    IXMLDOMNode* found = document;
    OnSmallStack([&] { found = document->SelectSingleNode(path); });
    EXPECT_EQ(nullptr, found);
  }
}

TEST(SingleNodeSearch, A_failing_search_of_a_bushy_tree_ends_quickly) {
  Document document = Load(Bush(14, 2));
  for (const char* path : {"//a/b", "//a/a/a/b", "//*/*/*/*/*/*/*/*/*/*/*/*/*/b"}) {
    SCOPED_TRACE(path);
    EXPECT_EQ(nullptr, Node(document->SelectSingleNode(path)).Get());
  }
}

TEST(SingleNodeSearch, A_failing_search_of_a_wide_tree_ends_quickly) {
  Document document = Load("<r>" + Repeat("<a><a/></a>", 50000) + "</r>");
  for (const char* path : {"//a/b", "//a/a/b", "//*/a/a/a"}) {
    SCOPED_TRACE(path);
    EXPECT_EQ(nullptr, Node(document->SelectSingleNode(path)).Get());
  }
}

TEST(SingleNodeSearch, A_search_that_succeeds_late_ends_quickly) {
  const int depth = 100000;
  Document document = Load(Repeat("<a>", depth) + "<b><c/></b>" + Repeat("</a>", depth));
  IXMLDOMNode* found = nullptr;
  OnSmallStack([&] { found = document->SelectSingleNode("//a/a/b/c"); });
  Node owned(found);
  ASSERT_NE(nullptr, found);
  EXPECT_STREQ("c", found->m_pszNodeName);
}

TEST(SingleNodeSearch, A_failing_search_with_dots_ends_quickly) {
  const Document trees[] = {Load(Repeat("<a>", 1000) + Repeat("</a>", 1000)),
                            Load("<r>" + Repeat("<a><a/></a>", 200) + "</r>"), Load(Bush(9, 2))};
  for (const char* path :
       {"//a/./b", "//a/./a/./b", "//a/../b", "//a/../../b", "//a/../a/b", "//a/../*/../../*/b"}) {
    SCOPED_TRACE(path);
    EXPECT_EXIT(ExitWhenNothingIsFound(trees, path), testing::ExitedWithCode(0), "");
    if (HasFailure()) return;
  }
}

TEST(SingleNodeSearch, A_path_of_many_steps_ends_quickly) {
  const int depth = 2000;
  Document document = Load(Repeat("<a>", depth) + Repeat("</a>", depth));
  const std::string path = "/" + Repeat("/a", 300) + "/b";
  EXPECT_EQ(nullptr, Node(document->SelectSingleNode(path.c_str())).Get());
}
