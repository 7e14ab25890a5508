#include <gtest/gtest.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include <cstdlib>
#include <string>

#include "harness/LogCapture.h"
#include "harness/Outline.h"
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

/// A document that declares `count` entities of that value and uses none.
std::string Declarations(int count, const std::string& value) {
  std::string xml = "<!DOCTYPE a [<!ENTITY e 'x'>";
  for (int i = 0; i < count; ++i) {
    xml += "<!ENTITY e" + std::to_string(i) + " '" + value + "'>";
  }
  return xml + "]><a/>";
}

}  // namespace

TEST(EntityNesting, Is_expanded_on_a_small_stack_up_to_the_limit) {
  OnSmallStack([] {
    const Document document = Load(Chain(kMost));
    EXPECT_EQ("a[#Text'x']", Outline(document));
  });
}

TEST(EntityNesting, Is_expanded_in_an_attribute_on_a_small_stack_too) {
  std::string xml = Chain(kMost);
  xml.replace(xml.find("<a>"), std::string::npos, "<a v='&e" + std::to_string(kMost) + ";'/>");
  OnSmallStack([&xml] {
    const Document document = Load(xml);
    EXPECT_EQ("a(v='x')", Outline(document));
  });
}

TEST(EntityNesting, Beyond_the_limit_fails_the_load) {
  const Document document = Load("<old/>");
  const LogCapture log;
  EXPECT_EQ(VARIANT_FALSE, document->loadXML(Chain(kMost + 1).c_str()));
  EXPECT_EQ("", Outline(document));
  EXPECT_EQ(XML_ERROR_ABORTED, document->m_pSax->GetErrorCode());
}

TEST(EntityNesting, Beyond_the_limit_is_logged_once) {
  const Document document = NewDocument();
  const LogCapture log;
  document->loadXML(Chain(10 * kMost).c_str());
  ASSERT_EQ(1u, log.Events().size());
  EXPECT_EQ(Event(18, 3, "CXMLSax - more than 256 entities refer to other entities"),
            log.Events()[0]);
}

TEST(EntityNesting, Counts_a_declaration_once_however_often_it_refers) {
  const LogCapture log;
  EXPECT_EQ("a", Outline(Load(Declarations(kMost, "&e;&e;&e;"))));
  EXPECT_TRUE(log.Events().empty());
}

TEST(EntityNesting, Counts_no_declaration_that_refers_to_nothing) {
  const LogCapture log;
  for (const char* value : {"", "x", "&#65;", "> <!ENTITY"}) {
    SCOPED_TRACE(value);
    EXPECT_EQ("a", Outline(Load(Declarations(2 * kMost, value))));
  }
  EXPECT_TRUE(log.Events().empty());
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
