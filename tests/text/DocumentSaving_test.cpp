#include <xmldom/text/DocumentSaving.h>

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include <string>

#include "harness/TemporaryFolder.h"
#include "harness/Trees.h"

namespace {

using xmldom::Prolog;
using xmldom::Save;

TEST(DocumentSaving, A_document_is_saved_as_it_is_written) {
  const TemporaryFolder folder;
  Document document = Load("<a b='1'><c>x</c></a>");
  EXPECT_FALSE(Save(document, folder.Path("a.xml")));
  EXPECT_EQ("<a b='1'>\n  <c>x</c>\n</a>\n", folder.Read("a.xml"));
  EXPECT_FALSE(Save(xmldom::Share(At(document, {0, 0})), folder.Path("a.xml").c_str()));
  EXPECT_EQ("<c>x</c>\n", folder.Read("a.xml"));
  EXPECT_EQ("a.xml ", folder.Names());
}

TEST(DocumentSaving, A_declaration_can_stand_before_the_root) {
  const TemporaryFolder folder;
  Document document = Load("<a>\xc3\xa9</a>");
  EXPECT_FALSE(Save(document, folder.Path("a.xml"), Prolog::kDeclaration));
  EXPECT_EQ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<a>\xc3\xa9</a>\n", folder.Read("a.xml"));
  EXPECT_EQ("\xc3\xa9", xmldom::Text(xmldom::LoadFile(folder.Path("a.xml")).document));
}

TEST(DocumentSaving, What_has_no_XML_leaves_the_file_alone) {
  const TemporaryFolder folder;
  const std::string path = folder.Write("a.xml", "<old/>");
  Document document = Load("<a b='1'>x</a>");
  for (IXMLDOMNode* node : {NoNode(), Root(document)->m_pFirstAttribute, At(document, {0, 0})}) {
    EXPECT_TRUE(Save(node, path) == std::errc::invalid_argument);
  }
  EXPECT_TRUE(Save(NewDocument(), path) == std::errc::invalid_argument);
  EXPECT_TRUE(Save(document, std::string("a\0b", 3)) == std::errc::invalid_argument);
  EXPECT_TRUE(Save(document, nullptr) == std::errc::no_such_file_or_directory);
  EXPECT_EQ("<old/>", folder.Read("a.xml"));
  EXPECT_EQ("a.xml ", folder.Names());
}

TEST(DocumentSaving, What_an_attribute_holds_survives_every_further_load_and_save) {
  const TemporaryFolder folder;
  const std::string path = folder.Path("a.xml");
  const std::string value = "x\ty\r\nz\n'\"";
  Document document = Load("<a/>");
  ASSERT_TRUE(xmldom::SetAttribute(Root(document), "b", value));
  ASSERT_FALSE(Save(document, path));
  SetDebugEntities(false);
  for (int i = 0; i < 3; ++i) {
    const xmldom::LoadResult loaded = xmldom::LoadFile(path);
    ASSERT_TRUE(loaded);
    EXPECT_EQ(value, xmldom::Attribute(xmldom::SelectOne(loaded.document, "/a"), "b"));
    ASSERT_FALSE(Save(loaded.document, path));
  }
  SetDebugEntities(true);
}

}  // namespace
