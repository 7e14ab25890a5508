#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

#include "harness/LinearTime.h"
#include "harness/SearchOutcome.h"
#include "harness/SmallStack.h"
#include "harness/Trees.h"

// Single searches of paths with "." and "..".

namespace {

/// Ends this process, with code 0 when the path selects nothing in any of the trees; a search
/// without end does not outlive it.
template <std::size_t N>
void ExitWhenNothingIsFound(const Document (&trees)[N], const char* path) {
  alarm(120);  // far more than a busy machine needs
  int found = 0;
  for (const Document& tree : trees) found += Node(tree->SelectSingleNode(path)) != nullptr;
  std::_Exit(found);
}

/// The processor time of a search for nothing below a root with `count` children.
double SecondsToSearch(int count, const char* path) {
  Document document = Load("<r>" + Repeat("<a/>", count) + "</r>");
  return OnSmallStack([&] { EXPECT_EQ(nullptr, document->SelectSingleNode(path)); });
}

}  // namespace

// ---- Searches that come back to themselves

TEST(SingleNodeSearchDots, A_search_that_comes_back_to_itself_ends) {
  Document document = Load("<a><a><a/></a></a>");
  for (const char* path : {"//a/../../b", "//a/../../*/b", "//*/../*/../b", "//a/../../../b"}) {
    SCOPED_TRACE(path);
    EXPECT_EQ(nullptr, Node(document->SelectSingleNode(path)).Get());
  }
}

TEST(SingleNodeSearchDots, A_search_that_failed_quietly_may_report_when_it_is_begun_again) {
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

// ---- Paths that climb, in wide trees

TEST(SingleNodeSearchDots, A_path_that_climbs_searches_siblings_once) {
  for (const char* path : {"/r/a/../zz", "/r/*/../*/../*/../zz", "//a/../zz", "//a/../../r/a/../zz",
                           "//a/./zz", "/r/a/../a/.././zz"}) {
    SCOPED_TRACE(path);
    // What is quadratic takes 1024 times as long.
    ExpectGrowthBelow(200, 1000, 32000, [path](int count) { return SecondsToSearch(count, path); });
  }
}

TEST(SingleNodeSearchDots, A_path_that_climbs_finds_what_stands_last) {
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

TEST(SingleNodeSearchDots, A_failing_search_with_dots_ends_quickly) {
  const Document trees[] = {Load(Repeat("<a>", 1000) + Repeat("</a>", 1000)),
                            Load("<r>" + Repeat("<a><a/></a>", 200) + "</r>"), Load(Bush(9, 2))};
  for (const char* path :
       {"//a/./b", "//a/./a/./b", "//a/../b", "//a/../../b", "//a/../a/b", "//a/../*/../../*/b"}) {
    SCOPED_TRACE(path);
    EXPECT_EXIT(ExitWhenNothingIsFound(trees, path), testing::ExitedWithCode(0), "");
    if (HasFailure()) return;
  }
}
