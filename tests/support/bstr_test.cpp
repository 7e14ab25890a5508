#include <gtest/gtest.h>
#include <xmldom/support/bstr.h>

#include <climits>
#include <cstring>
#include <new>
#include <string>

#include "harness/AllocationFailure.h"
#include "harness/Trees.h"

namespace {

TEST(bstr, SysAllocString_copies_the_text) {
  const std::string texts[] = {"", "a", "two words", "\xc3\xa9\xff\x01", std::string(100000, 'x')};
  for (const std::string& text : texts) {
    BSTR copy = SysAllocString(text.c_str());
    EXPECT_NE(text.c_str(), copy);
    EXPECT_EQ(text, TakeBstr(copy));
  }
}

TEST(bstr, SysAllocString_of_null_is_null) {
  EXPECT_EQ(nullptr, SysAllocString(nullptr));
  EXPECT_EQ(nullptr, SysAllocStringLen(nullptr, 0));
  EXPECT_EQ(nullptr, SysAllocStringLen(nullptr, 3));
}

TEST(bstr, SysAllocStringLen_copies_that_many_bytes_and_terminates_them) {
  const struct {
    const char* text;
    unsigned long length;
    const char* expected;
  } rows[] = {{"abcdef", 3, "abc"}, {"abcdef", 6, "abcdef"}, {"abcdef", 1, "a"}};
  for (const auto& row : rows) {
    EXPECT_EQ(row.expected, TakeBstr(SysAllocStringLen(row.text, row.length)));
  }
}

TEST(bstr, SysAllocStringLen_needs_no_terminator_in_the_text) {
  const char text[] = {'a', 'b', 'c'};
  EXPECT_EQ("abc", TakeBstr(SysAllocStringLen(text, sizeof text)));
}

TEST(bstr, SysAllocStringLen_copies_every_byte) {
  const std::string bytes = AllBytes();
  BSTR copy = SysAllocStringLen(bytes.data(), bytes.size());
  EXPECT_EQ(0, std::memcmp(bytes.data(), copy, bytes.size()));
  EXPECT_EQ('\0', copy[bytes.size()]);
  SysFreeString(copy);
}

TEST(bstr, A_length_of_0_gives_an_empty_text_that_counts) {
  const long before = GetNumBSTRsAllocated();
  BSTR empty = SysAllocStringLen("abc", 0);
  ASSERT_NE(nullptr, empty);
  EXPECT_STREQ("", empty);
  EXPECT_EQ(before + 1, GetNumBSTRsAllocated());
  SysFreeString(empty);
}

TEST(bstr, A_length_beyond_the_address_space_is_out_of_memory) {
  const long before = GetNumBSTRsAllocated();
  EXPECT_THROW(SysAllocStringLen("abc", ULONG_MAX), std::bad_alloc);
  EXPECT_EQ(before, GetNumBSTRsAllocated());
}

TEST(bstr, Counts_what_is_allocated_and_not_yet_freed) {
  const long before = GetNumBSTRsAllocated();
  BSTR first = SysAllocString("a");
  BSTR second = SysAllocStringLen("bc", 1);
  BSTR none = SysAllocString(nullptr);
  EXPECT_EQ(before + 2, GetNumBSTRsAllocated());
  SysFreeString(first);
  EXPECT_EQ(before + 1, GetNumBSTRsAllocated());
  SysFreeString(none);
  SysFreeString(second);
  EXPECT_EQ(before, GetNumBSTRsAllocated());
}

TEST(bstr, SysFreeString_nulls_the_pointer) {
  BSTR text = SysAllocString("a");
  SysFreeString(text);
  EXPECT_EQ(nullptr, text);
}

TEST(bstr, SysFreeString_leaves_a_null_pointer_alone) {
  BSTR text = nullptr;
  SysFreeString(text);
  EXPECT_EQ(nullptr, text);
}

TEST(bstr, A_wrapper_copies_a_text) {
  const char text[] = "text";
  const _bstr_t wrapper(text);
  EXPECT_STREQ("text", static_cast<char*>(wrapper));
  EXPECT_NE(text, static_cast<char*>(wrapper));
}

TEST(bstr, A_wrapper_of_nothing_holds_null) {
  const char* none = nullptr;
  BSTR noBstr = nullptr;
  EXPECT_EQ(nullptr, static_cast<char*>(_bstr_t()));
  EXPECT_EQ(nullptr, static_cast<char*>(_bstr_t(none)));
  EXPECT_EQ(nullptr, static_cast<char*>(_bstr_t(noBstr, true)));
  EXPECT_EQ(nullptr, static_cast<char*>(_bstr_t(noBstr, false)));
}

TEST(bstr, A_wrapper_told_to_copy_leaves_the_original_to_the_caller) {
  BSTR text = SysAllocString("text");
  {
    const _bstr_t wrapper(text, true);
    EXPECT_NE(text, static_cast<char*>(wrapper));
    EXPECT_STREQ("text", static_cast<char*>(wrapper));
  }
  EXPECT_EQ("text", TakeBstr(text));
}

TEST(bstr, A_wrapper_told_not_to_copy_takes_the_text_over) {
  const long before = GetNumBSTRsAllocated();
  BSTR text = SysAllocString("text");
  {
    const _bstr_t wrapper(text, false);
    EXPECT_EQ(text, static_cast<char*>(wrapper));
    EXPECT_EQ(before + 1, GetNumBSTRsAllocated());
  }
  EXPECT_EQ(before, GetNumBSTRsAllocated());
}

TEST(bstr, Copies_of_a_wrapper_are_independent) {
  _bstr_t original("text");
  const _bstr_t copy(original);
  EXPECT_NE(static_cast<char*>(original), static_cast<char*>(copy));
  original = _bstr_t("other");
  EXPECT_STREQ("text", static_cast<char*>(copy));
  EXPECT_STREQ("other", static_cast<char*>(original));
}

TEST(bstr, Assigning_a_wrapper_frees_what_it_held) {
  const long before = GetNumBSTRsAllocated();
  _bstr_t wrapper("text");
  wrapper = _bstr_t();
  EXPECT_EQ(nullptr, static_cast<char*>(wrapper));
  EXPECT_EQ(before, GetNumBSTRsAllocated());
}

TEST(bstr, A_wrapper_that_cannot_take_a_copy_keeps_its_text) {
  if (!AllocationFailure::ReachesMalloc()) GTEST_SKIP() << "malloc cannot be made to fail";
  _bstr_t text("old");
  const _bstr_t other("new");
  {
    const AllocationFailure limit(0);
    EXPECT_THROW(text = other, std::bad_alloc);
  }
  EXPECT_STREQ("old", static_cast<char*>(text));
}

TEST(bstr, A_wrapper_assigned_to_itself_keeps_its_text) {
  _bstr_t wrapper("text");
  const _bstr_t& same = wrapper;
  wrapper = same;
  EXPECT_STREQ("text", static_cast<char*>(wrapper));
}

}  // namespace
