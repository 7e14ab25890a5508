#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "harness/CompactXml.h"
#include "harness/RandomTrees.h"
#include "harness/SearchOutcome.h"
#include "harness/SmallStack.h"
#include "harness/Trees.h"
#include "plain/PlainSelection.h"

// The selections make no repeat that finds, logs and prints nothing. Here the same searches are
// done plainly, with all their repeats, and the outcomes are compared.

namespace {

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
      SCOPED_TRACE("\"" + path + "\" at " + CompactXml(node) + " in " + CompactXml(document));
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

/// Compares the first node that is found from a step on; the length of the path chooses which.
bool CompareHelper(IXMLDOMNode* node, const std::string& path, CXPathList& list) {
  const int step = static_cast<int>(path.size()) % (list.m_nCount + 4) - 3;
  SCOPED_TRACE(step);
  return CompareSingleFrom(node, list, step);
}

/// Compares all nodes that the path selects.
bool CompareList(IXMLDOMNode* node, const std::string& path, CXPathList&) {
  const SearchOutcome expected = Observe([&] { return plain::SelectNodes(node, path.c_str()); });
  ExpectSame(expected, Observe([&] {
               Nodes nodes;
               Ref<IXMLDOMNodeList> found(node->SelectNodes(path.c_str()));
               for (int i = 0; i < found->m_nCount; ++i) {
                 nodes.push_back(Node(found->GetItem(i)));
               }
               return nodes;
             }));
  return true;
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

TEST(SingleNodeSearch, A_path_of_many_steps_ends_quickly) {
  const int depth = 2000;
  Document document = Load(Repeat("<a>", depth) + Repeat("</a>", depth));
  const std::string path = "/" + Repeat("/a", 300) + "/b";
  EXPECT_EQ(nullptr, Node(document->SelectSingleNode(path.c_str())).Get());
}
