#include <xmldom/ptr/XMLPtrStrings.h>

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <cstring>
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
    const XMLBstr text = xmldom::AdoptBstr(plain);
    EXPECT_EQ(plain, text.Get());
    EXPECT_STREQ("text", text.c_str());
    EXPECT_TRUE(static_cast<bool>(text));
  }
  EXPECT_EQ(strings - 1, GetNumBSTRsAllocated());
}

TEST(XMLPtrStrings, no_text_reads_as_an_empty_one) {
  const XMLBstr texts[] = {XMLBstr(), xmldom::AdoptBstr(nullptr)};
  for (const XMLBstr& text : texts) {
    EXPECT_FALSE(static_cast<bool>(text));
    EXPECT_EQ(nullptr, text.Get());
    EXPECT_STREQ("", text.c_str());
  }
  const XMLBstr empty = xmldom::AdoptBstr(SysAllocString(""));
  EXPECT_TRUE(static_cast<bool>(empty));
  EXPECT_STREQ("", empty.c_str());
}

TEST(XMLPtrStrings, moves_and_does_not_copy) {
  XMLBstr first = xmldom::AdoptBstr(SysAllocString("text"));
  XMLBstr second(std::move(first));
  EXPECT_FALSE(static_cast<bool>(first));
  XMLBstr third = xmldom::AdoptBstr(SysAllocString("other"));
  third = std::move(second);
  EXPECT_FALSE(static_cast<bool>(second));
  EXPECT_STREQ("text", third.c_str());
  EXPECT_FALSE(std::is_copy_constructible<XMLBstr>::value);
  EXPECT_FALSE(std::is_copy_assignable<XMLBstr>::value);
  EXPECT_TRUE(std::is_nothrow_move_constructible<XMLBstr>::value);
  EXPECT_EQ(sizeof(BSTR), sizeof(XMLBstr));
}

TEST(XMLPtrStrings, moving_to_itself_keeps_the_text) {
  XMLBstr text = xmldom::AdoptBstr(SysAllocString("text"));
  XMLBstr& same = text;
  text = std::move(same);
  EXPECT_STREQ("text", text.c_str());
}

TEST(XMLPtrStrings, Swap_exchanges) {
  XMLBstr first = xmldom::AdoptBstr(SysAllocString("text"));
  XMLBstr second;
  first.Swap(second);
  EXPECT_STREQ("", first.c_str());
  std::swap(first, second);
  EXPECT_STREQ("text", first.c_str());
}

TEST(XMLPtrStrings, converts_to_a_standard_string) {
  const XMLBstr text = xmldom::AdoptBstr(SysAllocString("text"));
  const std::string copy = text;
  EXPECT_EQ("text", copy);
  EXPECT_EQ("text", std::string(text));
  const XMLHeapStr none;
  std::string other = "other";
  other = none;
  EXPECT_EQ("", other);
  EXPECT_FALSE((std::is_convertible<XMLBstr, XMLHeapStr>::value));
  EXPECT_FALSE((std::is_convertible<XMLBstr, const char*>::value));
  EXPECT_FALSE((std::is_convertible<XMLBstr, bool>::value));
}

TEST(XMLPtrStrings, compares_with_every_kind_of_text) {
  const XMLBstr text = xmldom::AdoptBstr(SysAllocString("text"));
  const XMLHeapStr same = xmldom::AdoptHeapStr(strdup("text"));
  const XMLBstr none;
  const std::string standard = "text";
  const char* const plain = "text";
  EXPECT_TRUE(text == same && text == standard && standard == text);
  EXPECT_TRUE(text == "text" && "text" == text && text == plain && plain == text);
  EXPECT_FALSE(text != same || text != standard || standard != text || text != "text" ||
               "text" != text);
  EXPECT_TRUE(text != none && text != "texts" && "tex" != text && text != std::string());
  EXPECT_TRUE(std::string("text\0x", 6) != text);
}

TEST(XMLPtrStrings, no_text_equals_an_empty_one_and_null) {
  const XMLBstr none;
  const XMLBstr empty = xmldom::AdoptBstr(SysAllocString(""));
  const char* const null = nullptr;
  EXPECT_TRUE(none == empty && none == "" && none == std::string());
  EXPECT_TRUE(none == nullptr && nullptr == none && none == null);
  EXPECT_TRUE(empty != nullptr && null != empty);
}

TEST(XMLPtrStrings, swap_is_found_by_its_arguments) {
  XMLBstr first = xmldom::AdoptBstr(SysAllocString("text"));
  XMLBstr second;
  swap(first, second);
  EXPECT_TRUE(first == nullptr && second == "text");
}

TEST(XMLPtrStrings, Out_gives_the_former_text_back_last) {
  Document document = Load("<a>text</a>");
  const long strings = GetNumBSTRsAllocated();
  XMLBstr text = xmldom::AdoptBstr(SysAllocString("former"));
  EXPECT_TRUE(Root(document)->get_text(text.Out()) == S_OK && text == "former");
  EXPECT_EQ("text", text);
  EXPECT_EQ(strings + 1, GetNumBSTRsAllocated());
}

TEST(XMLPtrStrings, Reset_frees_and_Detach_hands_over) {
  const long strings = GetNumBSTRsAllocated();
  XMLBstr text = xmldom::AdoptBstr(SysAllocString("text"));
  text.Reset();
  EXPECT_EQ(strings, GetNumBSTRsAllocated());
  text.Reset();
  text = xmldom::AdoptBstr(SysAllocString("other"));
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
  XMLBstr reason = xmldom::AdoptBstr(SysAllocString("of an earlier load"));
  EXPECT_EQ(S_FALSE, error->get_reason(reason.Out()));
  EXPECT_STREQ("", reason.c_str());
}

TEST(XMLPtrStrings, an_exception_frees_the_text) {
  Document document = Load("<a/>");
  const long strings = GetNumBSTRsAllocated();
  EXPECT_THROW(
      {
        const XMLBstr xml = xmldom::AdoptBstr(document->GetXML());
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
    XMLHeapStr text = xmldom::AdoptHeapStr(Root(document)->GetTextAsStr());
    EXPECT_STREQ("text", text.c_str());
    text = xmldom::AdoptHeapStr(document->GetTextAsStr());
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
  const XMLHeapStr text = xmldom::AdoptHeapStr(Root(document)->GetTextAsStr());
  EXPECT_FALSE(static_cast<bool>(text));
  EXPECT_STREQ("", text.c_str());
}

}  // namespace
