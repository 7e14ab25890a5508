// Bytes from 0x80 on are ordinary characters wherever characters are told apart, whether `char` has
// a sign, as on x86, or none, as on ARM.

#include <gtest/gtest.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include <string>
#include <vector>

#include "harness/CompactXml.h"
#include "harness/LogCapture.h"
#include "harness/StdoutCapture.h"
#include "harness/Trees.h"

namespace {

/// Each byte from 0x80 on, as a text.
std::vector<std::string> HighBytes() {
  std::vector<std::string> bytes;
  for (int byte = 0x80; byte <= 0xff; ++byte) bytes.emplace_back(1, static_cast<char>(byte));
  return bytes;
}

/// Each character from U+0080 to U+00FF in UTF-8.
std::vector<std::string> HighCharacters() {
  std::vector<std::string> characters;
  for (const std::string& byte : HighBytes()) {
    const int code = static_cast<unsigned char>(byte[0]);
    characters.push_back(
        {static_cast<char>(0xc0 | code >> 6), static_cast<char>(0x80 | (code & 0x3f))});
  }
  return characters;
}

}  // namespace

TEST(HighBytes, Are_loaded_and_written_as_they_are) {
  for (const std::string& character : HighCharacters()) {
    SCOPED_TRACE(character);
    const Document document = Load("<a x='" + character + "'>" + character + "<b/></a>");
    EXPECT_EQ("<a x='" + character + "'>" + character + "<b/></a>", CompactXml(document));
    Load(XmlOf(document));
  }
}

TEST(HighBytes, Are_no_white_space) {
  for (const std::string& byte : HighBytes()) {
    SCOPED_TRACE(byte);
    const Document document = NewDocument();
    document->loadXML("<a>");  // an element that stays open takes more
    document->m_pSax->OnDefault(byte.data(), 1);
    EXPECT_EQ("<a>" + byte + "</a>", CompactXml(document));
  }
}

TEST(HighBytes, Are_no_part_of_an_entity) {
  for (const std::string& byte : HighBytes()) {
    SCOPED_TRACE(byte);
    CMemFile written(16);
    written.WriteStrEntities((byte + "<" + byte).c_str());
    EXPECT_EQ(byte + "&lt;" + byte, written.GetAsStr());
    CMemFile translated(16);
    const StdoutCapture silence;
    EXPECT_EQ(1, TranslateEntities(written.GetAsStr(), translated));
    EXPECT_EQ(byte + "<" + byte, translated.GetAsStr());
  }
}

TEST(HighBytes, Begin_no_number_and_end_one) {
  for (const std::string& byte : HighBytes()) {
    SCOPED_TRACE(byte);
    const StdoutCapture silence;
    CMemFile translated(16);
    EXPECT_EQ(1, TranslateEntities(("&#65" + byte + ";&#" + byte + "65;").c_str(), translated));
    EXPECT_STREQ("A", translated.GetAsStr());
    const Document document = NewDocument();
    const Node element = NewElement(document, "a");
    element->AddAttribute("x", ("7" + byte).c_str());
    EXPECT_EQ(1, element->MatchQuery("a[@x=7]"));
    EXPECT_EQ(1, element->MatchQuery(("a[@x=7" + byte + "8]").c_str()));
    EXPECT_EQ(0, element->MatchQuery(("a[@x=" + byte + "7]").c_str()));
  }
}

TEST(HighBytes, Stand_in_the_steps_of_a_path) {
  for (const std::string& byte : HighBytes()) {
    SCOPED_TRACE(byte);
    const Document document = NewDocument();
    const Node root(document->AddChild(byte.c_str(), nullptr));
    const Node child(root->AddChild((byte + "b").c_str(), nullptr));
    child->AddAttribute("x", byte.c_str());
    const std::string path = "/" + byte + "/" + byte + "b[@x='" + byte + "']";
    const LogCapture log;
    const Node found(document->SelectSingleNode(path.c_str()));
    EXPECT_EQ(child.Get(), found.Get());
    EXPECT_TRUE(log.Events().empty());
  }
}

TEST(HighBytes, Do_not_end_the_tag_of_an_error) {
  for (const std::string& character : HighCharacters()) {
    SCOPED_TRACE(character);
    const std::string tag = "<b x='" + character + "'>";
    const Document document = NewDocument();
    document->loadXML(("<a>" + tag + "</a>").c_str());
    char buffer[100];
    EXPECT_EQ("</a>", Text(document->m_pSax->GetErrorTag(buffer, sizeof buffer)));
    document->loadXML(("<a>" + tag + character + "&u;" + character + "</b></a>").c_str());
    EXPECT_EQ(tag, Text(document->m_pSax->GetErrorTag(buffer, sizeof buffer)));
  }
}
