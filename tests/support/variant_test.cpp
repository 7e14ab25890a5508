#include <gtest/gtest.h>
#include <xmldom/support/variant.h>

#include <climits>
#include <string>

#include "harness/Trees.h"

namespace {

const unsigned short kUnknownType = 5;

/// A record that is cleared at the end.
class Variant {
 public:
  Variant() { VariantInit(&m_record); }
  Variant(int value) : Variant() {
    m_record.vt = VT_I4;
    m_record.lVal = value;
  }
  Variant(const char* text) : Variant() {
    m_record.vt = VT_BSTR;
    m_record.bstrVal = SysAllocString(text);
  }
  ~Variant() { VariantClear(&m_record); }

  Variant(const Variant&) = delete;
  Variant& operator=(const Variant&) = delete;

  operator VARIANT*() { return &m_record; }
  VARIANT* operator->() { return &m_record; }

 private:
  VARIANT m_record;
};

TEST(variant, Type_codes_are_those_of_the_interface) {
  EXPECT_EQ(0, VT_EMPTY);
  EXPECT_EQ(3, VT_I4);
  EXPECT_EQ(8, VT_BSTR);
}

TEST(variant, VariantInit_makes_any_record_empty) {
  char text[] = "text";
  VARIANT record;
  record.vt = 0xffff;
  record.bstrVal = text;
  VariantInit(&record);
  EXPECT_EQ(VT_EMPTY, record.vt);
  EXPECT_EQ(nullptr, record.bstrVal);
}

TEST(variant, VariantInit_does_not_free_what_the_record_held) {
  BSTR text = SysAllocString("text");
  VARIANT record;
  record.vt = VT_BSTR;
  record.bstrVal = text;
  VariantInit(&record);
  EXPECT_EQ("text", TakeBstr(text));
}

TEST(variant, VariantClear_frees_a_string) {
  const long before = GetNumBSTRsAllocated();
  Variant record("text");
  EXPECT_EQ(S_OK, VariantClear(record));
  EXPECT_EQ(VT_EMPTY, record->vt);
  EXPECT_EQ(before, GetNumBSTRsAllocated());
}

TEST(variant, VariantClear_empties_a_record_without_string) {
  Variant records[] = {{}, {5}, {nullptr}};
  for (Variant& record : records) {
    EXPECT_EQ(S_OK, VariantClear(record));
    EXPECT_EQ(VT_EMPTY, record->vt);
  }
}

TEST(variant, VariantCopy_copies_a_number) {
  Variant source(-5);
  Variant target;
  EXPECT_EQ(S_OK, VariantCopy(target, source));
  EXPECT_EQ(VT_I4, target->vt);
  EXPECT_EQ(-5, target->lVal);
}

TEST(variant, VariantCopy_duplicates_a_string) {
  Variant source("text");
  Variant target;
  EXPECT_EQ(S_OK, VariantCopy(target, source));
  EXPECT_EQ(VT_BSTR, target->vt);
  EXPECT_EQ("text", Text(target->bstrVal));
  EXPECT_NE(source->bstrVal, target->bstrVal);
  EXPECT_EQ("text", Text(source->bstrVal));
}

TEST(variant, VariantCopy_copies_a_missing_string) {
  Variant source(nullptr);
  Variant target(5);
  EXPECT_EQ(S_OK, VariantCopy(target, source));
  EXPECT_EQ(VT_BSTR, target->vt);
  EXPECT_EQ(nullptr, target->bstrVal);
}

TEST(variant, VariantCopy_frees_the_string_that_it_replaces) {
  const long before = GetNumBSTRsAllocated();
  Variant source(5);
  Variant target("text");
  EXPECT_EQ(S_OK, VariantCopy(target, source));
  EXPECT_EQ(5, target->lVal);
  EXPECT_EQ(before, GetNumBSTRsAllocated());
}

TEST(variant, VariantCopy_of_an_empty_record_empties) {
  Variant source;
  Variant target("text");
  EXPECT_EQ(S_OK, VariantCopy(target, source));
  EXPECT_EQ(VT_EMPTY, target->vt);
}

TEST(variant, VariantCopy_of_a_record_to_itself_changes_nothing) {
  Variant record("text");
  EXPECT_EQ(S_OK, VariantCopy(record, record));
  EXPECT_EQ(VT_BSTR, record->vt);
  EXPECT_EQ("text", Text(record->bstrVal));
}

TEST(variant, A_number_converts_to_decimal_text) {
  const struct {
    int value;
    const char* text;
  } rows[] = {{0, "0"}, {7, "7"}, {-1, "-1"}, {INT_MAX, "2147483647"}, {INT_MIN, "-2147483648"}};
  for (const auto& row : rows) {
    Variant source(row.value);
    Variant target;
    EXPECT_EQ(S_OK, VariantChangeType(target, source, 0, VT_BSTR));
    EXPECT_EQ(VT_BSTR, target->vt);
    EXPECT_EQ(row.text, Text(target->bstrVal));
  }
}

TEST(variant, Decimal_text_converts_to_a_number) {
  const struct {
    const char* text;
    int value;
  } rows[] = {{"0", 0},
              {"7", 7},
              {"-1", -1},
              {"007", 7},
              {"2147483647", INT_MAX},
              {"-2147483648", INT_MIN}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.text);
    Variant source(row.text);
    Variant target;
    EXPECT_EQ(S_OK, VariantChangeType(target, source, 0, VT_I4));
    EXPECT_EQ(VT_I4, target->vt);
    EXPECT_EQ(row.value, target->lVal);
  }
}

TEST(variant, Text_that_is_no_number_that_fits_does_not_convert) {
  const char* const texts[] = {nullptr,       "",     "x",   "12x", "-",
                               "2147483648",  "0x10", "1.5", "1 2", "99999999999999999999",
                               "-2147483649", "&#49;"};
  for (const char* text : texts) {
    SCOPED_TRACE(Text(text));
    Variant source(text);
    Variant target("before");
    EXPECT_EQ(E_FAIL, VariantChangeType(target, source, 0, VT_I4));
    ASSERT_EQ(VT_BSTR, target->vt);
    EXPECT_EQ("before", Text(target->bstrVal));
  }
}

TEST(variant, There_is_no_other_conversion) {
  Variant sources[] = {{}, {5}, {"5"}};
  for (Variant& source : sources) {
    Variant target(3);
    EXPECT_EQ(E_FAIL, VariantChangeType(target, source, 0, kUnknownType));
    EXPECT_EQ(VT_I4, target->vt);
    EXPECT_EQ(3, target->lVal);
  }
}

TEST(variant, An_empty_record_converts_to_nothing_else) {
  Variant source;
  Variant target(3);
  EXPECT_EQ(E_FAIL, VariantChangeType(target, source, 0, VT_I4));
  EXPECT_EQ(E_FAIL, VariantChangeType(target, source, 0, VT_BSTR));
  EXPECT_EQ(3, target->lVal);
}

TEST(variant, Anything_converts_to_empty) {
  Variant sources[] = {{}, {5}, {"text"}};
  for (Variant& source : sources) {
    Variant target("before");
    EXPECT_EQ(S_OK, VariantChangeType(target, source, 0, VT_EMPTY));
    EXPECT_EQ(VT_EMPTY, target->vt);
  }
}

TEST(variant, A_conversion_to_the_same_type_copies) {
  Variant source("text");
  Variant target(5);
  EXPECT_EQ(S_OK, VariantChangeType(target, source, 0, VT_BSTR));
  EXPECT_EQ("text", Text(target->bstrVal));
  EXPECT_NE(source->bstrVal, target->bstrVal);
}

TEST(variant, A_record_converts_in_place) {
  Variant record("42");
  EXPECT_EQ(S_OK, VariantChangeType(record, record, 0, VT_I4));
  EXPECT_EQ(42, record->lVal);
  EXPECT_EQ(S_OK, VariantChangeType(record, record, 0, VT_BSTR));
  EXPECT_EQ("42", Text(record->bstrVal));
}

TEST(variant, A_conversion_that_fails_in_place_keeps_the_value) {
  Variant record("text");
  EXPECT_EQ(E_FAIL, VariantChangeType(record, record, 0, VT_I4));
  EXPECT_EQ(VT_BSTR, record->vt);
  EXPECT_EQ("text", Text(record->bstrVal));
}

TEST(variant, A_conversion_frees_the_string_that_it_replaces) {
  const long before = GetNumBSTRsAllocated();
  Variant record("42");
  EXPECT_EQ(S_OK, VariantChangeType(record, record, 0, VT_I4));
  EXPECT_EQ(before, GetNumBSTRsAllocated());
}

TEST(variant, Flags_change_nothing) {
  Variant source(5);
  Variant target;
  EXPECT_EQ(S_OK, VariantChangeType(target, source, 0xffff, VT_BSTR));
  EXPECT_EQ("5", Text(target->bstrVal));
}

TEST(variant, Missing_records_are_refused) {
  Variant record(5);
  VariantInit(nullptr);
  EXPECT_EQ(E_ARGUMENT, VariantClear(nullptr));
  EXPECT_EQ(E_ARGUMENT, VariantCopy(nullptr, record));
  EXPECT_EQ(E_ARGUMENT, VariantCopy(record, nullptr));
  EXPECT_EQ(E_ARGUMENT, VariantChangeType(nullptr, record, 0, VT_BSTR));
  EXPECT_EQ(E_ARGUMENT, VariantChangeType(record, nullptr, 0, VT_BSTR));
  EXPECT_EQ(VT_I4, record->vt);
  EXPECT_EQ(5, record->lVal);
}

}  // namespace
