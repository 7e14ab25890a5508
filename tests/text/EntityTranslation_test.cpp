#include <gtest/gtest.h>
#include <xmldom/support/MemFile.h>
#include <xmldom/xmldom.h>

#include <climits>
#include <cstdlib>
#include <string>
#include <vector>

#include "harness/LinearTime.h"
#include "harness/LogCapture.h"
#include "harness/SmallStack.h"
#include "harness/StdoutCapture.h"
#include "harness/Trees.h"

namespace {

const char* const kUnknown =
    "TranslateEntities FAILED to match entity at the begining of this string: ";

/// All that a translation does.
struct Translation {
  int result;
  std::string text;
  std::string printed;
  std::vector<LoggedEvent> logged;
};

/// Translates into a buffer that holds `before` already.
Translation Translate(const char* in, const std::string& before = "") {
  CMemFile out(16);
  out.Write(before.data(), static_cast<unsigned int>(before.size()));
  LogCapture log;
  StdoutCapture output;
  const int result = TranslateEntities(in, out);
  return Translation{result, std::string(out.GetAsStr(), out.m_uLength), output.Take(),
                     log.Events()};
}

struct Row {
  const char* in;
  const char* out;
};

/// Checks rows of texts in which every reference is understood.
template <std::size_t count>
void ExpectUnderstood(const Row (&rows)[count]) {
  for (const Row& row : rows) {
    SCOPED_TRACE(row.in);
    const Translation translation = Translate(row.in);
    EXPECT_EQ(1, translation.result);
    EXPECT_EQ(row.out, translation.text);
    EXPECT_TRUE(translation.logged.empty());
  }
}

}  // namespace

// ---- Texts without references

TEST(EntityTranslation, Copies_texts_without_references_in_silence) {
  const char* const texts[] = {"", "text", "x & y", "&", "&&", "&lt", ";", "; & x", "a;b&c", "#65"};
  for (const char* text : texts) {
    SCOPED_TRACE(text);
    const Translation translation = Translate(text);
    EXPECT_EQ(1, translation.result);
    EXPECT_EQ(text, translation.text);
    EXPECT_EQ("", translation.printed);
    EXPECT_TRUE(translation.logged.empty());
  }
}

TEST(EntityTranslation, Takes_a_null_text_for_an_empty_one) {
  const Translation translation = Translate(nullptr, "before");
  EXPECT_EQ(1, translation.result);
  EXPECT_EQ("before", translation.text);
  EXPECT_EQ("", translation.printed);
}

// ---- Predefined entities

TEST(EntityTranslation, Knows_the_predefined_entities) {
  const Row rows[] = {
      {"&lt;", "<"},       {"&gt;", ">"},        {"&amp;", "&"},     {"&quot;", "\""},
      {"&apos;", "'"},     {"a&lt;b", "a<b"},    {"&lt;&gt;", "<>"}, {"&amp;lt;", "&lt;"},
      {"&LT;", "<"},       {"&AMP;&Amp;", "&&"}, {"&qUoT;", "\""},   {"&lt;;", "<;"},
      {"&lt;x&y", "<x&y"}, {"&lt;&", "<&"},
  };
  ExpectUnderstood(rows);
}

TEST(EntityTranslation, Takes_a_part_of_a_name_for_the_first_that_begins_so) {
  const Row rows[] = {
      {"&;", "<"},   {"&l;", "<"},   {"&g;", ">"},   {"&a;", "&"},   {"&am;", "&"},
      {"&ap;", "'"}, {"&apo;", "'"}, {"&q;", "\""},  {"&qu;", "\""}, {"&quo;", "\""},
      {"&A;", "&"},  {"&AP;", "'"},  {"&;&;", "<<"},
  };
  ExpectUnderstood(rows);
}

// ---- Character references

TEST(EntityTranslation, Decodes_decimal_references_as_UTF_8) {
  const Row rows[] = {
      {"&#65;", "A"},
      {"&#065;", "A"},
      {"&#1;", "\x01"},
      {"&#127;", "\x7f"},
      {"&#128;", "\xc2\x80"},
      {"&#233;", "\xc3\xa9"},
      {"&#2047;", "\xdf\xbf"},
      {"&#2048;", "\xe0\xa0\x80"},
      {"&#8364;", "\xe2\x82\xac"},
      {"&#65535;", "\xef\xbf\xbf"},
      {"&#65536;", "\xf0\x90\x80\x80"},
      {"&#128512;", "\xf0\x9f\x98\x80"},
      {"&#1114111;", "\xf4\x8f\xbf\xbf"},
      {"x&#65;&#66;y", "xABy"},
      {"&#38;lt;", "&lt;"},
  };
  ExpectUnderstood(rows);
}

TEST(EntityTranslation, Reads_the_digits_at_the_front_and_ignores_what_follows) {
  const Row rows[] = {
      {"&#65x;", "A"}, {"&#65 66;", "A"}, {"&# 65;", "A"},
      {"&#+65;", "A"}, {"&#65&;", "A"},   {"&#6.5;", "\x06"},
  };
  ExpectUnderstood(rows);
}

TEST(EntityTranslation, Writes_nothing_for_references_without_a_decimal_value) {
  const Row rows[] = {
      {"&#0;", ""}, {"&#;", ""},     {"&#x41;", ""},       {"&#X41;", ""},
      {"&#x;", ""}, {"&#text;", ""}, {"&#65;&#x41;", "A"}, {"a&#x41;b", "ab"},
  };
  ExpectUnderstood(rows);
}

TEST(EntityTranslation, Encodes_numbers_that_are_no_characters_in_the_same_way) {
  const Row rows[] = {
      {"&#55296;", "\xed\xa0\x80"},
      {"&#57343;", "\xed\xbf\xbf"},
      {"&#1114112;", "\xf4\x90\x80\x80"},
      {"&#2097152;", "\xf8\x88\x80\x80\x80"},
      {"&#67108864;", "\xfc\x84\x80\x80\x80\x80"},
      {"&#2147483647;", "\xfd\xbf\xbf\xbf\xbf\xbf"},
      {"&#-1;", "\xff\xbf\xbf\xbf\xbf\xbf"},
      {"&#-2147483648;", "\xfe\x80\x80\x80\x80\x80"},
  };
  ExpectUnderstood(rows);
}

// A number is read into a long, which holds the nearest that it can.
TEST(EntityTranslation, Encodes_the_low_32_bits_of_a_number_as_far_as_a_long_reaches) {
#if LONG_MAX > 2147483647
  const Row rows[] = {
      {"&#2147483648;", "\xfe\x80\x80\x80\x80\x80"},
      {"&#4294967295;", "\xff\xbf\xbf\xbf\xbf\xbf"},
      {"&#4294967296;", ""},
      {"&#4294967361;", "A"},
      {"&#99999999999999999999999999;", "\xff\xbf\xbf\xbf\xbf\xbf"},
      {"&#-99999999999999999999999999;", ""},
  };
#else
  const char* const most = "\xfd\xbf\xbf\xbf\xbf\xbf";
  const Row rows[] = {
      {"&#2147483648;", most},
      {"&#4294967295;", most},
      {"&#4294967296;", most},
      {"&#4294967361;", most},
      {"&#99999999999999999999999999;", most},
      {"&#-99999999999999999999999999;", "\xfe\x80\x80\x80\x80\x80"},
  };
#endif
  ExpectUnderstood(rows);
}

// ---- Unknown references

TEST(EntityTranslation, Copies_and_logs_an_unknown_reference) {
  const struct {
    const char* in;
    const char* logged;  // the rest of the text from the reference on
  } rows[] = {
      {"&foo;", "&foo;"}, {"a&foo;b", "&foo;b"},    {"a & b; c", "& b; c"},
      {"&ltx;", "&ltx;"}, {"&lt ;", "&lt ;"},       {"& lt;", "& lt;"},
      {"&&lt;", "&&lt;"}, {"&quotes;", "&quotes;"}, {"& #65;", "& #65;"},
      {"&\n;", "&\n;"},   {"&100%s;", "&100%s;"},   {"&\xc3\xa9;", "&\xc3\xa9;"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.in);
    const Translation translation = Translate(row.in);
    EXPECT_EQ(0, translation.result);
    EXPECT_EQ(row.in, translation.text);
    ASSERT_EQ(1u, translation.logged.size());
    EXPECT_EQ(Event(11, 4, kUnknown + ("'" + std::string(row.logged) + "'")),
              translation.logged[0]);
  }
}

TEST(EntityTranslation, Goes_on_behind_an_unknown_reference) {
  const Translation translation = Translate("&foo;&lt;&bar;&#65;");
  EXPECT_EQ(0, translation.result);
  EXPECT_EQ("&foo;<&bar;A", translation.text);
  ASSERT_EQ(2u, translation.logged.size());
  EXPECT_EQ(Event(11, 4, kUnknown + std::string("'&foo;&lt;&bar;&#65;'")), translation.logged[0]);
  EXPECT_EQ(Event(11, 4, kUnknown + std::string("'&bar;&#65;'")), translation.logged[1]);
}

TEST(EntityTranslation, Logs_the_whole_rest_however_long) {
  const std::string text = "&foo;" + std::string(100000, 'x');
  const Translation translation = Translate(text.c_str());
  ASSERT_EQ(1u, translation.logged.size());
  EXPECT_EQ(Event(11, 4, kUnknown + ("'" + text + "'")), translation.logged[0]);
}

// ---- The debug line

TEST(EntityTranslationDebugLine, Shows_the_text_and_all_that_the_buffer_holds) {
  const struct {
    const char* in;
    const char* before;
    const char* printed;
  } rows[] = {
      {"a&lt;b", "", "Translate Entities: from <a&lt;b> to <a<b>\n"},
      {"a&lt;b", "x y", "Translate Entities: from <a&lt;b> to <x ya<b>\n"},
      {"&foo;", "", "Translate Entities: from <&foo;> to <&foo;>\n"},
      {"&#x41;", "", "Translate Entities: from <&#x41;> to <>\n"},
      {"&lt;%s&y", "", "Translate Entities: from <&lt;%s&y> to <<%s&y>\n"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.in);
    EXPECT_EQ(row.printed, Translate(row.in, row.before).printed);
  }
}

TEST(EntityTranslation, Appends_behind_what_the_buffer_holds) {
  EXPECT_EQ("x y<", Translate("&lt;", "x y").text);
  EXPECT_EQ("x yz", Translate("z", "x y").text);
}

// ---- The switch of the debug line

namespace {

/// Switches the debug line off while it lives.
struct NoDebugLine {
  NoDebugLine() { SetDebugEntities(false); }
  ~NoDebugLine() { SetDebugEntities(true); }
};

/// The processor time that it takes to read `count` texts with a reference each.
double SecondsToRead(int count) {
  std::string xml = "<r>";
  for (int i = 0; i < count; ++i) xml += "<a>x&amp;</a>";
  const Document document = Load(xml + "</r>");
  return OnSmallStack([&] { std::free(document->GetTextAsStr()); });
}

}  // namespace

TEST(EntityTranslationDebugLine, Is_switched_with_a_log_event) {
  LogCapture log;
  SetDebugEntities(false);
  SetDebugEntities(true);
  const std::vector<LoggedEvent> expected = {Event(18, 7, "EntityDebug has been disabled"),
                                             Event(18, 7, "EntityDebug has been enabled")};
  EXPECT_EQ(expected, log.Events());
}

TEST(EntityTranslationDebugLine, Is_not_printed_when_it_is_off_and_back_when_it_is_on) {
  {
    const NoDebugLine off;
    const Translation translation = Translate("a&lt;b", "x y");
    EXPECT_EQ("", translation.printed);
    EXPECT_EQ("x ya<b", translation.text);
    EXPECT_EQ(1, translation.result);
  }
  EXPECT_NE("", Translate("a&lt;b").printed);
}

TEST(EntityTranslationDebugLine, Leaves_unknown_references_in_the_log_when_it_is_off) {
  const NoDebugLine off;
  const Translation translation = Translate("&foo;");
  EXPECT_EQ("", translation.printed);
  EXPECT_EQ(0, translation.result);
  EXPECT_EQ((std::vector<LoggedEvent>{Event(11, 4, kUnknown + std::string("'&foo;'"))}),
            translation.logged);
}

TEST(EntityTranslationDebugLine, Lets_the_cost_of_reading_grow_with_the_text_when_it_is_off) {
  const NoDebugLine off;
  StdoutCapture output;
  ExpectLinearTime(320000, SecondsToRead);
  EXPECT_EQ("", output.Take());
}

// ---- Long texts

TEST(EntityTranslation, Translates_a_hundred_thousand_references) {
  std::string text;
  std::string expected;
  for (int i = 0; i < 100000; ++i) {
    text += "&#65;&gt;";
    expected += "A>";
  }
  EXPECT_EQ(expected, Translate(text.c_str()).text);
}

TEST(EntityTranslation, Looks_once_at_a_hundred_thousand_ampersands) {
  const std::string text(100000, '&');
  EXPECT_EQ(text, Translate(text.c_str()).text);
  EXPECT_EQ("<" + text, Translate(("&lt;" + text).c_str()).text);
}
