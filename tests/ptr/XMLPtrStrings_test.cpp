#include <xmldom/ptr/XMLPtrStrings.h>

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <stdexcept>
#include <string>
#include <type_traits>
#include <utility>

#include "harness/AllocationFailure.h"
#include "harness/Trees.h"

namespace {

// ---- BSTRs

TEST(XMLPtrStrings, Adopt_takes_a_text_over) {
  BSTR plain = SysAllocString("text");
  const long strings = GetNumBSTRsAllocated();
  {
    const XMLBstr text = XMLBstr::Adopt(plain);
    EXPECT_EQ(plain, text.Get());
    EXPECT_STREQ("text", text.c_str());
    EXPECT_TRUE(static_cast<bool>(text));
  }
  EXPECT_EQ(strings - 1, GetNumBSTRsAllocated());
}

TEST(XMLPtrStrings, no_text_reads_as_an_empty_one) {
  const XMLBstr texts[] = {XMLBstr(), XMLBstr::Adopt(nullptr)};
  for (const XMLBstr& text : texts) {
    EXPECT_FALSE(static_cast<bool>(text));
    EXPECT_EQ(nullptr, text.Get());
    EXPECT_STREQ("", text.c_str());
  }
  const XMLBstr empty = XMLBstr::Adopt(SysAllocString(""));
  EXPECT_TRUE(static_cast<bool>(empty));
  EXPECT_STREQ("", empty.c_str());
}

TEST(XMLPtrStrings, moves_and_does_not_copy) {
  XMLBstr first = XMLBstr::Adopt(SysAllocString("text"));
  XMLBstr second(std::move(first));
  EXPECT_FALSE(static_cast<bool>(first));
  XMLBstr third = XMLBstr::Adopt(SysAllocString("other"));
  third = std::move(second);
  EXPECT_FALSE(static_cast<bool>(second));
  EXPECT_STREQ("text", third.c_str());
  EXPECT_FALSE(std::is_copy_constructible<XMLBstr>::value);
  EXPECT_FALSE(std::is_copy_assignable<XMLBstr>::value);
  EXPECT_TRUE(std::is_nothrow_move_constructible<XMLBstr>::value);
  EXPECT_EQ(sizeof(BSTR), sizeof(XMLBstr));
}

TEST(XMLPtrStrings, moving_to_itself_keeps_the_text) {
  XMLBstr text = XMLBstr::Adopt(SysAllocString("text"));
  XMLBstr& same = text;
  text = std::move(same);
  EXPECT_STREQ("text", text.c_str());
}

TEST(XMLPtrStrings, Swap_exchanges) {
  XMLBstr first = XMLBstr::Adopt(SysAllocString("text"));
  XMLBstr second;
  first.Swap(second);
  EXPECT_STREQ("", first.c_str());
  std::swap(first, second);
  EXPECT_STREQ("text", first.c_str());
}

TEST(XMLPtrStrings, Reset_frees_and_Detach_hands_over) {
  const long strings = GetNumBSTRsAllocated();
  XMLBstr text = XMLBstr::Adopt(SysAllocString("text"));
  text.Reset();
  EXPECT_EQ(strings, GetNumBSTRsAllocated());
  text.Reset();
  text = XMLBstr::Adopt(SysAllocString("other"));
  EXPECT_EQ("other", TakeBstr(text.Detach()));
  EXPECT_EQ(nullptr, text.Detach());
}

TEST(XMLPtrStrings, Out_a_second_time_frees_the_first) {
  Document document = Load("<a>text</a>");
  const long strings = GetNumBSTRsAllocated();
  XMLBstr text;
  EXPECT_EQ(S_OK, Root(document)->get_nodeName(text.Out()));
  EXPECT_STREQ("a", text.c_str());
  EXPECT_EQ(S_OK, Root(document)->get_text(text.Out()));
  EXPECT_STREQ("text", text.c_str());
  EXPECT_EQ(strings + 1, GetNumBSTRsAllocated());
}

TEST(XMLPtrStrings, Out_leaves_no_text_where_a_member_stores_none) {
  Document document = Load("<a/>");
  Ref<IXMLDOMParseError> error;
  document->get_parseError(error.Out());
  XMLBstr reason = XMLBstr::Adopt(SysAllocString("of an earlier load"));
  EXPECT_EQ(S_FALSE, error->get_reason(reason.Out()));
  EXPECT_STREQ("", reason.c_str());
}

TEST(XMLPtrStrings, an_exception_frees_the_text) {
  Document document = Load("<a/>");
  const long strings = GetNumBSTRsAllocated();
  EXPECT_THROW(
      {
        const XMLBstr xml = XMLBstr::Adopt(document->GetXML());
        throw std::runtime_error(xml.c_str());
      },
      std::runtime_error);
  EXPECT_EQ(strings, GetNumBSTRsAllocated());
}

// ---- The C heap

TEST(XMLPtrStrings, a_heap_text_is_freed) {
  Document document = Load("<a>text</a>");
  const long blocks = HeapBlocks();
  {
    XMLHeapStr text = XMLHeapStr::Adopt(Root(document)->GetTextAsStr());
    EXPECT_STREQ("text", text.c_str());
    text = XMLHeapStr::Adopt(document->GetTextAsStr());
    XMLHeapStr name, predicates;
    EXPECT_EQ(1, document->ParseXPathQuery("a[b=1]", name.Out(), predicates.Out()));
    EXPECT_EQ(1, document->ParseXPathQuery("c", name.Out(), predicates.Out()));
    EXPECT_STREQ("c", name.c_str());
    EXPECT_FALSE(static_cast<bool>(predicates));
  }
  EXPECT_EQ(blocks, HeapBlocks());
}

TEST(XMLPtrStrings, a_heap_text_that_is_null_reads_as_empty) {
  Document document = Load("<a/>");
  const XMLHeapStr text = XMLHeapStr::Adopt(Root(document)->GetTextAsStr());
  EXPECT_FALSE(static_cast<bool>(text));
  EXPECT_STREQ("", text.c_str());
}

}  // namespace
