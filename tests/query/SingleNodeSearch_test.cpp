#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "harness/LogCapture.h"
#include "harness/Outline.h"
#include "harness/RandomTrees.h"
#include "harness/SmallStack.h"
#include "harness/StdoutCapture.h"
#include "harness/Trees.h"

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

/// The search for the first node, by plain recursion.
class PlainSearch {
 public:
  explicit PlainSearch(const CXPathList& list) : m_list(list), m_searches(0) {}

  /// Borrowed, or null.
  IXMLDOMNode* Find(IXMLDOMNode* node, int k) {
    // A search that is met again while it is open yields nothing.
    if (IsTooLong() || !m_open.insert(std::make_pair(node, k)).second) return nullptr;
    ++m_searches;
    IXMLDOMNode* found = FindAt(node, k);
    m_open.erase(std::make_pair(node, k));
    return found;
  }

  /// Whether the search was given up: the repeats multiply at every level.
  bool IsTooLong() const { return m_searches >= kMostSearches; }

 private:
  static const int kMostSearches = 3000;

  IXMLDOMNode* FindAt(IXMLDOMNode* node, int k) {
    if (k < 0 || node->MatchQuery(StepAt(m_list, k))) {
      if (k == m_list.m_nCount - 1) return node;
      IXMLDOMNode* arrived = node;
      int next = k + 1;
      for (; next < m_list.m_nCount && IsDot(StepAt(m_list, next)); ++next) {
        if (StepAt(m_list, next)[1] == '.') arrived = arrived->m_pParent;
        if (arrived == nullptr) return nullptr;
      }
      if (IXMLDOMNode* found = FindAmongChildren(arrived, next)) return found;
    }
    return m_list.m_bDescendant ? FindAmongChildren(node, 0) : nullptr;
  }

  IXMLDOMNode* FindAmongChildren(IXMLDOMNode* node, int k) {
    for (IXMLDOMNode* child = node->m_pFirstChild; child != nullptr;
         child = child->m_pNextSibling) {
      if (IXMLDOMNode* found = Find(child, k)) return found;
    }
    return nullptr;
  }

  static bool IsDot(const char* step) { return step != nullptr && step[0] == '.'; }

  const CXPathList& m_list;
  std::set<std::pair<IXMLDOMNode*, int>> m_open;
  int m_searches;
};

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
Nodes Single(IXMLDOMNode* found) { return Nodes{Node(found).get()}; }

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
  PlainSearch plain(list);
  const Heard expected =
      Listen([&] { return Nodes{path == "/" ? node : plain.Find(StartOf(node, list), -1)}; });
  if (plain.IsTooLong()) return false;
  ExpectSame(expected, Listen([&] { return Single(node->SelectSingleNode(path.c_str())); }));
  return true;
}

/// Compares the first node that is found from a step on; the length of the path chooses which.
bool CompareHelper(IXMLDOMNode* node, const std::string& path, CXPathList& list) {
  const int step = static_cast<int>(path.size()) % (list.m_nCount + 4) - 3;
  SCOPED_TRACE(step);
  PlainSearch plain(list);
  const Heard expected = Listen([&] { return Nodes{plain.Find(node, step)}; });
  if (plain.IsTooLong()) return false;
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
    EXPECT_EQ(nullptr, Node(document->SelectSingleNode(path)).get());
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
    EXPECT_EQ(nullptr, Node(document->SelectSingleNode(path)).get());
  }
}

TEST(SingleNodeSearch, A_failing_search_of_a_wide_tree_ends_quickly) {
  Document document = Load("<r>" + Repeat("<a><a/></a>", 50000) + "</r>");
  for (const char* path : {"//a/b", "//a/a/b", "//*/a/a/a"}) {
    SCOPED_TRACE(path);
    EXPECT_EQ(nullptr, Node(document->SelectSingleNode(path)).get());
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
  EXPECT_EQ(nullptr, Node(document->SelectSingleNode(path.c_str())).get());
}
