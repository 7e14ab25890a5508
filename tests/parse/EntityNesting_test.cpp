#include <gtest/gtest.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include <algorithm>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

#include "harness/CompactXml.h"
#include "harness/ExpatVersion.h"
#include "harness/LogCapture.h"
#include "harness/SmallStack.h"
#include "harness/Trees.h"

namespace {

const int kMost = 256;

/// A document whose text is the last of a chain of entities: `length` of them hold nothing but a
/// reference to the one before, which begins with `ampersand`.
std::string Chain(int length, const std::string& ampersand = "&") {
  std::string xml = "<!DOCTYPE a [<!ENTITY e0 'x'>";
  for (int i = 1; i <= length; ++i) {
    xml +=
        "<!ENTITY e" + std::to_string(i) + " '" + ampersand + "e" + std::to_string(i - 1) + ";'>";
  }
  return xml + "]><a>&e" + std::to_string(length) + ";</a>";
}

/// An XML declaration that names an encoding.
std::string Declared(const std::string& encoding) {
  return "<?xml version='1.0' encoding='" + encoding + "'?>";
}

}  // namespace

TEST(EntityNesting, Is_expanded_on_a_small_stack_up_to_the_limit) {
  OnSmallStack([] {
    const Document document = Load(Chain(kMost));
    EXPECT_EQ("<a>x</a>", CompactXml(document));
  });
}

TEST(EntityNesting, Is_expanded_in_an_attribute_on_a_small_stack_too) {
  std::string xml = Chain(kMost);
  xml.replace(xml.find("<a>"), std::string::npos, "<a v='&e" + std::to_string(kMost) + ";'/>");
  OnSmallStack([&xml] {
    const Document document = Load(xml);
    EXPECT_EQ("<a v='x'/>", CompactXml(document));
  });
}

namespace {

/// A document that declares all that, and uses none of it.
std::string Declaring(const std::string& declarations) {
  return "<!DOCTYPE a [" + declarations + "]><a/>";
}

/// `count` declarations, of which each has the number of the one before for "@" and its own for
/// "~".
std::string Numbered(int count, const std::string& declaration) {
  std::string text;
  for (int i = 1; i <= count; ++i) {
    for (char c : declaration) {
      if (c == '@' || c == '~') {
        text += std::to_string(c == '@' ? i - 1 : i);
      } else {
        text += c;
      }
    }
  }
  return text;
}

const int kTooMany = kMost + 1;

/// Whether a load is refused for its entities.
bool IsRefused(const std::string& xml) {
  const ExpatVersion recursing(2, 6, 4);
  const Document document = NewDocument();
  const LogCapture log;
  const short loaded = document->loadXML(xml.c_str());
  const int code = document->m_pSax->GetErrorCode();
  EXPECT_EQ(loaded == VARIANT_TRUE ? XML_ERROR_NONE : XML_ERROR_ABORTED, code);
  EXPECT_EQ(loaded == VARIANT_TRUE ? 0u : 1u, log.Events().size());
  return loaded != VARIANT_TRUE;
}

}  // namespace

TEST(EntityNesting, Beyond_the_limit_fails_the_load) {
  const ExpatVersion recursing(2, 6, 4);
  const Document document = Load("<old/>");
  const LogCapture log;
  EXPECT_EQ(VARIANT_FALSE, document->loadXML(Chain(kTooMany).c_str()));
  EXPECT_EQ("", CompactXml(document));
  EXPECT_EQ(XML_ERROR_ABORTED, document->m_pSax->GetErrorCode());
}

TEST(EntityNesting, Is_not_limited_where_the_parser_expands_without_recursion) {
  for (int major : {2, 3}) {
    const ExpatVersion flat(major, major == 2 ? 7 : 0, 0);
    const Document document = Load(Chain(kTooMany));
    EXPECT_EQ("<a>x</a>", CompactXml(document));
  }
}

TEST(EntityNesting, Is_limited_in_every_older_parser) {
  for (int minor : {0, 6, 95}) {
    const ExpatVersion recursing(minor == 95 ? 1 : 2, minor, 8);
    const Document document = NewDocument();
    EXPECT_EQ(VARIANT_FALSE, document->loadXML(Chain(kTooMany).c_str()));
  }
}

TEST(EntityNesting, Beyond_the_limit_is_logged_once_in_every_encoding) {
  const ExpatVersion recursing(2, 6, 4);
  const std::string mark = "\xef\xbb\xbf";
  for (const std::string& start : {std::string(), mark, Declared("UTF-8"), Declared("ISO-8859-1"),
                                   Declared("US-ASCII"), "<!--" + std::string(5000, 'c') + "-->"}) {
    SCOPED_TRACE(start);
    const Document document = NewDocument();
    const LogCapture log;
    document->loadXML((start + Chain(10 * kMost)).c_str());
    ASSERT_EQ(1u, log.Events().size());
    EXPECT_EQ(Event(18, 3, "CXMLSax - more than 256 entities refer to each other in a chain"),
              log.Events()[0]);
  }
}

// The parser converts such a text in pieces of a KiB.
TEST(EntityNesting, Is_found_wherever_the_parser_cuts_a_declaration) {
  for (const char* encoding : {"UTF-8", "ISO-8859-1"}) {
    for (int length : {1000, 1020, 1021, 1022, 1023, 1024, 1025, 3000}) {
      SCOPED_TRACE(length);
      const std::string blank(static_cast<std::size_t>(length), ' ');
      const std::string value = "'" + blank + "&e@;" + blank + "&e0;'";
      const std::string chain =
          "<!ENTITY e0 'x'>" + Numbered(kTooMany, "<!ENTITY e~ " + value + ">");
      EXPECT_TRUE(IsRefused(Declared(encoding) + Declaring(chain)));
      const std::string flat =
          "<!ENTITY e0 'x'>" + Numbered(kTooMany, "<!ENTITY e~ '" + blank + "&e0;'>");
      EXPECT_FALSE(IsRefused(Declared(encoding) + Declaring(flat)));
    }
  }
}

TEST(EntityNesting, Counts_no_declarations_that_refer_beside_each_other) {
  for (const char* declaration :
       {"<!ENTITY e~ 'a &lt; b'>", "<!ENTITY e~ 'A&amp;B&quot;&apos;&gt;'>",
        "<!ENTITY e~ '&co; x'>", "<!ENTITY e~ '&co;&co;&co2;'>", "<!ENTITY e~ SYSTEM 'a?b&e@;'>",
        "<!ENTITY e~ PUBLIC 'p' \"a?b&e@;\">", "<!ENTITY e~ SYSTEM '&e@;' NDATA n>",
        "<!ENTITY e~ '&#65;&#x42;'>", "<!ENTITY e~ '> <!ENTITY'>", "<!ENTITY e~ '&#38;#38;e@;'>",
        "<!ENTITY e~ '&#38;e@ '>", "<!ENTITY e~ '&unknown~;'>", "<!ENTITY % e~ '&e@;'>",
        "<!ENTITY e~ '&#37;e@;'>", "<!--<!ENTITY e~ '&e@;'>-->", "<!--><!ENTITY e~ '&e@;'>-->",
        "<?p <!ENTITY e~ '&e@;'>?>", "<!ATTLIST a v~ CDATA '>!ENTITY e~ \"&co;\">'>",
        "<!NOTATION n~ SYSTEM \"<!ENTITY e~ '&e@;'>\">"}) {
    SCOPED_TRACE(declaration);
    EXPECT_FALSE(
        IsRefused(Declaring("<!NOTATION n SYSTEM 'n'><!ENTITY co '&co2;'><!ENTITY co2 'x'>" +
                            Numbered(2 * kMost, declaration))));
  }
}

TEST(EntityNesting, Of_a_chain_is_found_however_it_is_declared) {
  for (const char* declaration :
       {"<!ENTITY e~ '&e@;'>", "<!ENTITY\n\te~\n\"x '&e@;\"\n>", "<!ENTITY\re~\r'&e@;'\r>",
        "<!ENTITY e~ 'text &lt;&e@;'>", "<!ENTITY e~ '&#38;e@;'>",
        "<!ENTITY e~ '&#x00026;&#101;@&#59;'>", "<!ENTITY e~ 'x'><!ENTITY f~ '&f@;'>",
        "<!ENTITY % e~ '&#37;e@;'>", "<!--'--><?p '?><!ENTITY e~ '&e@;'>",
        "<!ENTITY \xc3\xa9~ '&#38;&#xE9;@;'>",
        "<!ELEMENT b~ ANY><!ATTLIST b~ v CDATA \"'\"><!ENTITY e~ '&e@;'>",
        "<!ENTITY e~ '&co;&e@;&co;'>"}) {
    SCOPED_TRACE(declaration);
    const std::string first =
        "<!ENTITY co ''><!ENTITY e0 ''><!ENTITY f0 ''><!ENTITY \xc3\xa9\x30 ''><!ENTITY % e0 ''>";
    EXPECT_TRUE(IsRefused(Declaring(first + Numbered(kTooMany, declaration))));
    EXPECT_FALSE(IsRefused(Declaring(first + Numbered(kMost, declaration))));
  }
}

// Neither refers to anything, and a quote in them opens no literal.
TEST(EntityNesting, Of_a_chain_is_found_behind_comments_and_instructions) {
  const std::string chain = "<!ENTITY e0 'x'>" + Numbered(kTooMany, "<!ENTITY e~ '&e@;'>");
  for (const char* before : {"<!-- & -->", "<!-- &e9; ' -->", "<!-- \" & - -->", "<?p & ?>",
                             "<?p &e9; ' ?>", "<?p > & \" ?>", "<!--&--><?p &?><!--&e1;-->",
                             "<?p > <!-- ?>", "<!-- > <? -->", "<!-- -> <? -->"}) {
    SCOPED_TRACE(before);
    EXPECT_TRUE(IsRefused(Declaring(before + chain)));
    EXPECT_FALSE(IsRefused(Declaring(before + std::string("<!ENTITY e1 '&e0;'>"))));
  }
}

TEST(EntityNesting, Of_a_chain_is_found_in_any_order_of_declarations) {
  std::vector<std::string> declarations;
  for (int i = 0; i <= kTooMany; ++i) {
    declarations.push_back("<!ENTITY e" + std::to_string(i) + " '" +
                           (i == 0 ? "" : "&e" + std::to_string(i - 1) + ";") + "'>");
  }
  std::mt19937 random(1);
  for (int order = 0; order < 20; ++order) {
    SCOPED_TRACE(order);
    if (order == 0) {
      std::reverse(declarations.begin(), declarations.end());
    } else {
      std::shuffle(declarations.begin(), declarations.end(), random);
    }
    std::string all;
    for (const std::string& declaration : declarations) all += declaration;
    EXPECT_TRUE(IsRefused(Declaring(all)));
    // Without one that others refer to there are two chains.
    const std::string middle = "<!ENTITY e128 '&e127;'>";
    all.replace(all.find(middle), middle.size(), "");
    EXPECT_FALSE(IsRefused(Declaring(all)));
  }
}

TEST(EntityNesting, Is_that_of_the_first_declaration_of_a_name) {
  const std::string chain = "<!ENTITY e0 'x'>" + Numbered(kMost, "<!ENTITY e~ '&e@;'>");
  EXPECT_FALSE(IsRefused(Declaring(chain + "<!ENTITY top '&e255;'><!ENTITY top '&e256;'>")));
  EXPECT_FALSE(IsRefused(Declaring(chain + "<!ENTITY top 'x'><!ENTITY top '&e256;'>")));
  EXPECT_TRUE(IsRefused(Declaring(chain + "<!ENTITY top '&e256;'><!ENTITY top 'x'>")));
}

TEST(EntityNesting, Of_all_that_refer_to_an_entity_grows_with_its_declaration) {
  const std::string chain = Numbered(kTooMany, "<!ENTITY e~ '&e@;'>");
  const std::string other = "<!ENTITY f '&e0;'>";
  EXPECT_TRUE(IsRefused(Declaring(chain + other + "<!ENTITY e0 ''>")));
  EXPECT_TRUE(IsRefused(Declaring(other + chain + "<!ENTITY e0 ''>")));
}

TEST(EntityNesting, Never_goes_through_a_predefined_entity) {
  const std::string chain = "<!ENTITY e0 'x'>" + Numbered(kMost, "<!ENTITY e~ '&e@;'>");
  EXPECT_FALSE(IsRefused(Declaring(chain + "<!ENTITY amp '&#38;#38;'><!ENTITY e '&amp;'>")));
  EXPECT_FALSE(IsRefused(Declaring("<!ENTITY lt '&#38;#60;'>" + chain)));
}

TEST(EntityNesting, In_the_identifier_of_the_document_type_is_none) {
  const std::string chain = "<!ENTITY e0 ''>" + Numbered(kTooMany, "<!ENTITY e~ '&e@;'>");
  EXPECT_FALSE(IsRefused("<!DOCTYPE a SYSTEM \"" + chain + "\"><a/>"));
  EXPECT_TRUE(IsRefused("<!DOCTYPE a SYSTEM \"['\" [" + chain + "]><a/>"));
}

TEST(EntityNesting, Of_a_cycle_is_left_to_the_parser) {
  const std::string cycle = "<!ENTITY e0 '&e99;'>" + Numbered(99, "<!ENTITY e~ '&e@;'>");
  EXPECT_FALSE(IsRefused(Declaring(cycle)));
  EXPECT_FALSE(IsRefused(Declaring("<!ENTITY e '&e;'>")));
  const Document document = NewDocument();
  EXPECT_EQ(VARIANT_FALSE, document->loadXML(("<!DOCTYPE a [" + cycle + "]><a>&e5;</a>").c_str()));
  EXPECT_EQ(XML_ERROR_RECURSIVE_ENTITY_REF, document->m_pSax->GetErrorCode());
}

TEST(EntityNesting, Cannot_hide_in_cycles) {
  EXPECT_TRUE(IsRefused(Declaring("<!ENTITY e0 '&e300;'>" + Numbered(300, "<!ENTITY e~ '&e@;'>"))));
  // Cycles of two that are a chain of 600.
  EXPECT_TRUE(IsRefused(
      Declaring("<!ENTITY f0 ''>" + Numbered(300, "<!ENTITY e~ '&f~;&e~;'><!ENTITY f~ '&e@;'>"))));
}

TEST(EntityNesting, Counts_afresh_in_the_next_load) {
  const Document document = NewDocument();
  const LogCapture log;
  for (int load = 0; load < 3; ++load) {
    EXPECT_EQ(VARIANT_TRUE, document->loadXML(Chain(kMost).c_str()));
  }
}

// A reference can be written so that it is one only in the replacement text.
TEST(EntityNestingDeathTest, Does_not_exhaust_a_small_stack_however_it_is_written) {
  for (const std::string ampersand : {"&", "&#38;", "&#038;", "&#x26;"}) {
    SCOPED_TRACE(ampersand);
    EXPECT_EXIT(
        {
          OnSmallStack([&ampersand] { NewDocument()->loadXML(Chain(5000, ampersand).c_str()); });
          std::exit(0);
        },
        testing::ExitedWithCode(0), "");
  }
}
