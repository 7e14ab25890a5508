#include "harness/SearchOutcome.h"

#include <gtest/gtest.h>

#include "harness/Trees.h"
#include "plain/PlainSingleNodeSearch.h"

namespace {

/// A plain search is given up after so many tests.
const int kMostSearches = 3000;

}  // namespace

IXMLDOMNode* StartOf(IXMLDOMNode* node, const CXPathList& list) {
  return list.m_bAbsolute ? node->m_pOwnerDocument : node;
}

Nodes Single(IXMLDOMNode* found) { return Nodes{Node(found).Get()}; }

void ExpectSame(const SearchOutcome& plain, const SearchOutcome& library) {
  EXPECT_EQ(plain.nodes, library.nodes);
  EXPECT_EQ(plain.events, library.events);
  EXPECT_EQ(plain.printed, library.printed);
}

bool CompareSingle(IXMLDOMNode* node, const std::string& path, CXPathList& list) {
  plain::SingleNodeSearch search(list, plain::SingleNodeSearch::kMostRepeats, kMostSearches);
  const SearchOutcome expected =
      Observe([&] { return Nodes{path == "/" ? node : search.Find(StartOf(node, list), -1)}; });
  if (!search.IsComparable()) return false;
  ExpectSame(expected, Observe([&] { return Single(node->SelectSingleNode(path.c_str())); }));
  return true;
}

bool CompareSingleFrom(IXMLDOMNode* node, CXPathList& list, int step) {
  plain::SingleNodeSearch search(list, plain::SingleNodeSearch::kMostRepeats, kMostSearches);
  const SearchOutcome expected = Observe([&] { return Nodes{search.Find(node, step)}; });
  if (!search.IsComparable()) return false;
  ExpectSame(expected,
             Observe([&] { return Single(node->SelectSingleNodeHelper(node, list, step)); }));
  return true;
}
