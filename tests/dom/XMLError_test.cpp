#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <climits>
#include <thread>

#include "harness/Trees.h"

TEST(XMLError, Keeps_any_code_that_is_set) {
  for (int code : {1, 2, 3, 4, -1, INT_MAX, INT_MIN, 0}) {
    CXML::SetXMLError(code);
    EXPECT_EQ(code, CXML::GetXMLError());
    EXPECT_EQ(code, CXML::iXMLError);
  }
}

TEST(XMLError, Is_0_once_cleared) {
  CXML::SetXMLError(CXML::NO_SUCH_CHILD);
  CXML::ClearXMLError();
  EXPECT_EQ(0, CXML::GetXMLError());
}

TEST(XMLError, Is_the_plain_member) {
  CXML::iXMLError = 5;
  EXPECT_EQ(5, CXML::GetXMLError());
}

TEST(XMLError, Belongs_to_the_thread) {
  CXML::SetXMLError(5);
  std::thread([] {
    EXPECT_EQ(0, CXML::GetXMLError());
    EXPECT_EQ(nullptr, Root(Load("<a/>"))->GetChild("b"));
    EXPECT_EQ(CXML::NO_SUCH_CHILD, CXML::iXMLError);
  }).join();
  EXPECT_EQ(5, CXML::GetXMLError());
  EXPECT_EQ(5, CXML::iXMLError);
}

TEST(XMLError, Has_the_codes_1_2_and_4) {
  EXPECT_EQ(0, CXML::NO_ERROR);
  EXPECT_EQ(1, CXML::DUPLICATE_ATTRIBUTE);
  EXPECT_EQ(2, CXML::NO_SUCH_ATTRIBUTE);
  EXPECT_EQ(4, CXML::NO_SUCH_CHILD);
}

TEST(XMLError, Stays_until_it_is_set_or_cleared) {
  const Document document = Load("<a v='1'><b/></a>");
  IXMLDOMNode* root = Root(document);
  EXPECT_EQ(nullptr, root->GetChild("c"));
  EXPECT_EQ(4, CXML::GetXMLError());
  const Node child(root->GetChild("b"));
  EXPECT_EQ("1", Text(root->GetStrAttribute("v")));
  EXPECT_EQ(4, CXML::GetXMLError());
  EXPECT_EQ(nullptr, root->GetStrAttribute("w"));
  EXPECT_EQ(2, CXML::GetXMLError());
}

TEST(XMLError, Tells_a_duplicate_attribute_until_one_is_added) {
  const Document document = Load("<a v='1'/>");
  IXMLDOMNode* root = Root(document);
  EXPECT_EQ(0, root->AddAttribute("v", "2"));
  root->m_pFirstAttribute->RealRelease();  // the refused call kept a reference
  EXPECT_EQ(1, CXML::GetXMLError());
  EXPECT_EQ(1, root->AddAttribute("w", "2"));
  EXPECT_EQ(0, CXML::GetXMLError());
}
