#include <gtest/gtest.h>
#include <malloc.h>
#include <xmldom/query/XPathList.h>

#include <new>
#include <string>
#include <vector>

#include "harness/AllocationFailure.h"
#include "harness/LogCapture.h"
#include "harness/Trees.h"

namespace {

typedef std::vector<std::string> Steps;

Steps StepsOf(const CXPathList& list) {
  Steps steps;
  for (const CStrListElt* step = list.m_pFirst; step != nullptr; step = step->m_pNext) {
    steps.push_back(step->m_pszString);
  }
  return steps;
}

const CStrListElt* LastOf(const CXPathList& list) {
  const CStrListElt* step = list.m_pFirst;
  while (step != nullptr && step->m_pNext != nullptr) step = step->m_pNext;
  return step;
}

void ExpectEmpty(const CXPathList& list) {
  EXPECT_EQ("(null)", Text(list.m_pszPrefix));
  EXPECT_EQ(nullptr, list.m_pFirst);
  EXPECT_EQ(nullptr, list.m_pLast);
  EXPECT_EQ(0, list.m_nCount);
  EXPECT_EQ(nullptr, list.m_ppIndex);
  EXPECT_FALSE(list.m_bDescendant);
  EXPECT_FALSE(list.m_bAbsolute);
}

struct Cut {
  const char* path;
  Steps steps;
};

void ExpectCuts(const std::vector<Cut>& rows) {
  for (const Cut& row : rows) {
    SCOPED_TRACE(row.path);
    CXPathList list;
    EXPECT_EQ(1, list.ParsePath(row.path));
    EXPECT_EQ(row.steps, StepsOf(list));
    EXPECT_EQ(static_cast<int>(row.steps.size()), list.m_nCount);
    EXPECT_EQ(LastOf(list), list.m_pLast);
  }
}

}  // namespace

TEST(XPathList, A_new_list_is_empty) {
  const CXPathList list;
  ExpectEmpty(list);
}

TEST(XPathList, Lists_are_counted_while_they_live) {
  const int before = CXPathList::m_iObjCount;
  {
    const CXPathList list;
    EXPECT_EQ(before + 1, CXPathList::m_iObjCount);
  }
  EXPECT_EQ(before, CXPathList::m_iObjCount);
}

TEST(XPathList, Steps_are_counted_while_they_live) {
  const int before = CStrListElt::m_iObjCount;
  {
    CXPathList list;
    list.ParsePath("a/b/c");
    EXPECT_EQ(before + 3, CStrListElt::m_iObjCount);
  }
  EXPECT_EQ(before, CStrListElt::m_iObjCount);
}

TEST(XPathList, A_step_copies_as_many_bytes_as_it_is_told) {
  const char text[] = "abcdef";
  const CStrListElt step(text + 1, 3);
  EXPECT_STREQ("bcd", step.m_pszString);
  EXPECT_EQ(nullptr, step.m_pNext);
}

TEST(XPathList, A_step_may_be_empty) {
  const CStrListElt step("abc", 0);
  EXPECT_STREQ("", step.m_pszString);
}

TEST(XPathList, Destroying_a_step_destroys_those_behind_it) {
  const int before = CStrListElt::m_iObjCount;
  CStrListElt* first = new CStrListElt("a", 1);
  first->m_pNext = new CStrListElt("b", 1);
  first->m_pNext->m_pNext = new CStrListElt("c", 1);
  delete first;
  EXPECT_EQ(before, CStrListElt::m_iObjCount);
}

TEST(XPathList, ParsePath_takes_the_leading_slashes_as_prefix) {
  const struct {
    const char* path;
    const char* prefix;
    bool absolute;
    bool descendant;
  } rows[] = {
      {"a/b", "(null)", false, false}, {"a//b", "(null)", false, false},
      {"[/]", "(null)", false, false}, {" /a", "(null)", false, false},
      {"/a/b", "/", true, false},      {"/", "/", true, false},
      {"/a//b", "/", true, false},     {"//a/b", "//", true, true},
      {"//", "//", true, true},        {"///a", "///", true, true},
      {"/////", "/////", true, true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.path);
    CXPathList list;
    EXPECT_EQ(1, list.ParsePath(row.path));
    EXPECT_EQ(row.prefix, Text(list.m_pszPrefix));
    EXPECT_EQ(row.absolute, list.m_bAbsolute);
    EXPECT_EQ(row.descendant, list.m_bDescendant);
  }
}

TEST(XPathList, ParsePath_cuts_at_every_slash) {
  ExpectCuts({
      {"a", {"a"}},
      {"a/b", {"a", "b"}},
      {"//a/b", {"a", "b"}},
      {"///a", {"a"}},
      {"/config/network/interface", {"config", "network", "interface"}},
      {"../sibling", {"..", "sibling"}},
      {"./*", {".", "*"}},
      {" a / b ", {" a ", " b "}},
      {"a\xc3\xa9/\x01\xff", {"a\xc3\xa9", "\x01\xff"}},
  });
}

TEST(XPathList, ParsePath_makes_a_step_of_every_cut_also_an_empty_one) {
  ExpectCuts({
      {"/", {""}},
      {"//", {""}},
      {"a/", {"a", ""}},
      {"/a/", {"a", ""}},
      {"a//b", {"a", "", "b"}},
      {"a///", {"a", "", "", ""}},
  });
}

TEST(XPathList, ParsePath_does_not_cut_inside_brackets) {
  ExpectCuts({
      {"x[y/z='1']/w", {"x[y/z='1']", "w"}},
      {"/a/b[c/d='x'][@id=\"7\"]", {"a", "b[c/d='x'][@id=\"7\"]"}},
      {"[a/b]", {"[a/b]"}},
      {"a[b/c]d/e[f/g]", {"a[b/c]d", "e[f/g]"}},
      {"a[b/c", {"a[b/c"}},
      {"a[b]/[c/d]", {"a[b]", "[c/d]"}},
  });
}

TEST(XPathList, ParsePath_ends_brackets_at_the_first_closing_one) {
  ExpectCuts({
      {"a[[b]/c]", {"a[[b]", "c]"}},
      {"a[b[c/d]/e]/f", {"a[b[c/d]", "e]", "f"}},
      {"a]/b", {"a]", "b"}},
      {"a][b/c]/d", {"a][b/c]", "d"}},
  });
}

TEST(XPathList, ParsePath_does_not_look_at_quotes) {
  ExpectCuts({
      {"x[y=']/z']/w", {"x[y=']", "z']", "w"}},
      {"x[y='[/z']/w", {"x[y='[/z']", "w"}},
      {"'a/b'", {"'a", "b'"}},
      {"\"a/b\"[c=\"]\"]/d", {"\"a", "b\"[c=\"]\"]", "d"}},
  });
}

TEST(XPathList, ParsePath_refuses_a_null_and_an_empty_path_silently) {
  LogCapture log;
  CXPathList list;
  EXPECT_EQ(0, list.ParsePath(static_cast<const char*>(nullptr)));
  EXPECT_EQ(0, list.ParsePath(""));
  EXPECT_EQ(0, list.ParsePath(_bstr_t()));
  EXPECT_EQ(0, list.ParsePath(_bstr_t("")));
  ExpectEmpty(list);
  EXPECT_TRUE(log.Events().empty());
}

TEST(XPathList, A_refused_path_leaves_earlier_steps_alone) {
  CXPathList list;
  list.ParsePath("//a/b");
  EXPECT_EQ(0, list.ParsePath(""));
  EXPECT_EQ(0, list.ParsePath(static_cast<const char*>(nullptr)));
  EXPECT_EQ((Steps{"a", "b"}), StepsOf(list));
  EXPECT_EQ("//", Text(list.m_pszPrefix));
  EXPECT_TRUE(list.m_bDescendant);
  EXPECT_TRUE(list.m_bAbsolute);
}

TEST(XPathList, ParsePath_reads_a_wrapped_string_alike) {
  CXPathList list;
  EXPECT_EQ(1, list.ParsePath(_bstr_t("//a[b/c]/d")));
  EXPECT_EQ((Steps{"a[b/c]", "d"}), StepsOf(list));
  EXPECT_EQ("//", Text(list.m_pszPrefix));
}

TEST(XPathList, A_second_path_appends_its_steps) {
  CXPathList list;
  list.ParsePath("a/b");
  EXPECT_EQ(1, list.ParsePath("c/d"));
  EXPECT_EQ((Steps{"a", "b", "c", "d"}), StepsOf(list));
  EXPECT_EQ(4, list.m_nCount);
  EXPECT_EQ(LastOf(list), list.m_pLast);
  EXPECT_STREQ("a", list.m_ppIndex[0]);
  EXPECT_STREQ("d", list.m_ppIndex[3]);
}

TEST(XPathList, A_second_prefix_replaces_the_first_and_its_flags) {
  const struct {
    const char* first;
    const char* second;
    const char* prefix;
    bool absolute;
    bool descendant;
  } rows[] = {
      {"a", "/b", "/", true, false},   {"a", "//b", "//", true, true},
      {"/a", "//b", "//", true, true}, {"//a", "/b", "/", true, false},
      {"/a", "b", "/", true, false},   {"//a", "b", "//", true, true},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.first) + " then " + row.second);
    CXPathList list;
    list.ParsePath(row.first);
    list.ParsePath(row.second);
    EXPECT_EQ(row.prefix, Text(list.m_pszPrefix));
    EXPECT_EQ(row.absolute, list.m_bAbsolute);
    EXPECT_EQ(row.descendant, list.m_bDescendant);
  }
}

TEST(XPathList, The_index_holds_the_texts_of_the_steps_themselves) {
  CXPathList list;
  list.ParsePath("a/b/c");
  ASSERT_NE(nullptr, list.m_ppIndex);
  EXPECT_EQ(list.m_pFirst->m_pszString, list.m_ppIndex[0]);
  EXPECT_EQ(list.m_pFirst->m_pNext->m_pszString, list.m_ppIndex[1]);
  EXPECT_EQ(list.m_pLast->m_pszString, list.m_ppIndex[2]);
}

TEST(XPathList, CreateIndex_follows_steps_that_were_linked_by_hand) {
  CXPathList list;
  list.ParsePath("a");
  list.m_pLast->m_pNext = new CStrListElt("b", 1);
  list.m_pLast = list.m_pLast->m_pNext;
  ++list.m_nCount;
  list.CreateIndex();
  EXPECT_STREQ("a", list.m_ppIndex[0]);
  EXPECT_EQ(list.m_pLast->m_pszString, list.m_ppIndex[1]);
}

TEST(XPathList, CreateIndex_has_room_for_all_steps_whatever_the_count_says) {
  const int steps = 1000;
  for (const int count : {-1, 0, 1, steps, steps + 1000}) {
    SCOPED_TRACE(count);
    CXPathList list;
    list.ParsePath(Repeat("/a", steps).c_str());
    list.m_nCount = count;
    list.CreateIndex();
    ASSERT_GE(malloc_usable_size(list.m_ppIndex), steps * sizeof(char*));
    EXPECT_EQ(list.m_pFirst->m_pszString, list.m_ppIndex[0]);
    EXPECT_EQ(list.m_pLast->m_pszString, list.m_ppIndex[steps - 1]);
    for (int k = steps; k < count; ++k) EXPECT_EQ(nullptr, list.m_ppIndex[k]);
  }
}

TEST(XPathList, CreateIndex_of_an_empty_list_has_no_entries) {
  CXPathList list;
  list.CreateIndex();
  list.CreateIndex();
  EXPECT_EQ(0, list.m_nCount);
  EXPECT_EQ(nullptr, list.m_pFirst);
}

TEST(XPathList, A_path_of_many_steps_is_cut_and_destroyed) {
  const int count = 100000;
  CXPathList list;
  EXPECT_EQ(1, list.ParsePath(Repeat("/a", count).c_str()));
  EXPECT_EQ(count, list.m_nCount);
  EXPECT_EQ(list.m_pLast->m_pszString, list.m_ppIndex[count - 1]);
}

TEST(XPathList, A_path_of_many_slashes_is_one_prefix) {
  const std::string slashes(100000, '/');
  CXPathList list;
  EXPECT_EQ(1, list.ParsePath(slashes.c_str()));
  EXPECT_EQ(slashes, list.m_pszPrefix);
  EXPECT_EQ(Steps{""}, StepsOf(list));
}

TEST(XPathList, A_step_of_many_bytes_is_kept_whole) {
  const std::string step = "a[" + std::string(100000, '/') + "]";
  CXPathList list;
  EXPECT_EQ(1, list.ParsePath(step.c_str()));
  EXPECT_EQ(Steps{step}, StepsOf(list));
}

// An index that was there before knows nothing of the steps added since.
TEST(XPathList, A_list_whose_second_path_ran_out_of_memory_can_be_used) {
  Document document = Load("<a><b><c/></b></a>");
  bool isThrough = false;
  for (int allowed = 0; !isThrough; ++allowed) {
    SCOPED_TRACE(allowed);
    CXPathList list;
    list.ParsePath("a");
    try {
      AllocationFailure limit(allowed);
      list.ParsePath("b/c");
      isThrough = true;
    } catch (const std::bad_alloc&) {
    }
    const int count = list.m_nCount;
    EXPECT_EQ(static_cast<std::size_t>(count), StepsOf(list).size());
    EXPECT_EQ(LastOf(list), list.m_pLast);
    EXPECT_TRUE(isThrough || list.m_ppIndex == nullptr);
    Ref<IXMLDOMNodeList> selected(new IXMLDOMNodeList);
    document->SelectNodesHelper(document, list, selected, 0);
    ASSERT_EQ(1, selected->m_nCount);
    EXPECT_EQ(std::string(1, static_cast<char>('a' + count - 1)),
              selected->m_pHead->m_pNode->m_pszNodeName);
  }
}
