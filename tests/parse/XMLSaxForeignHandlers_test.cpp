// What a handler of an application may do while a load runs: one that it has installed on the
// parser of the builder, and one of a class of its own.

#include <gtest/gtest.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include <cstring>
#include <functional>
#include <string>

#include "harness/Balance.h"
#include "harness/CompactXml.h"
#include "harness/Trees.h"

namespace {

std::function<void()> l_onComment;

/// Loads a text into a document and calls `onComment` at each of its comments.
bool LoadWithComments(IXMLDOMDocument2* document, const std::string& xml,
                      const std::function<void()>& onComment) {
  CXMLSax sax(document);
  sax.CreateParser();
  l_onComment = onComment;
  XML_SetCommentHandler(sax.m_p, [](void*, const char*) { l_onComment(); });
  const bool loaded = sax.LoadXML(xml.c_str());
  l_onComment = nullptr;
  return loaded;
}

const char* const kXml = "<a v='1'>one<b>two</b><!--c-->three<c/>four</a>";
const char* const kTree = "<a v='1'>onethreefour<b>two</b><c/></a>";

}  // namespace

TEST(XMLSaxForeignHandlers, May_load_build_change_and_release_other_documents) {
  const Balance balance = Balance::Now();
  {
    const Document document = NewDocument();
    Document older = Load("<old/>");
    EXPECT_TRUE(LoadWithComments(document, kXml, [&older] {
      const Document other = Load("<x><y/></x>");
      EXPECT_EQ(VARIANT_FALSE, NewDocument()->loadXML("<x>"));
      EXPECT_TRUE(other->AppendChildAtXPath("/x/y", "<z/>"));
      EXPECT_EQ("<x><y><z/></y></x>", CompactXml(other));
      older.Reset();
    }));
    EXPECT_EQ(kTree, CompactXml(document));
  }
  EXPECT_EQ("", Balance::Now().ChangesSince(balance));
}

TEST(XMLSaxForeignHandlers, Are_told_the_length_of_the_event_as_the_place_of_the_error) {
  const Document document = NewDocument();
  CXMLSax sax(document);
  sax.CreateParser();
  long place = -1;
  l_onComment = [&document, &place] {
    XMLPtr<IXMLDOMParseError> error;
    EXPECT_EQ(S_OK, document->get_parseError(error.Out()));
    place = error->m_lFilePos;
  };
  XML_SetCommentHandler(sax.m_p, [](void*, const char*) { l_onComment(); });
  document->m_pSax = &sax;
  EXPECT_TRUE(sax.LoadXML(kXml));
  document->m_pSax = nullptr;
  l_onComment = nullptr;
  EXPECT_EQ(static_cast<long>(std::strlen("<!--c-->")), place);
}

TEST(XMLSaxForeignHandlers, May_load_what_calls_them_again) {
  const Document outer = NewDocument();
  const Document inner = NewDocument();
  EXPECT_TRUE(LoadWithComments(outer, kXml, [&inner] {
    EXPECT_TRUE(LoadWithComments(inner, "<i><!--d-->t</i>", [&inner] {
      EXPECT_EQ("<i/>", CompactXml(inner));
      EXPECT_EQ("<x/>", CompactXml(Load("<x/>")));
    }));
  }));
  EXPECT_EQ(kTree, CompactXml(outer));
  EXPECT_EQ("<i>t</i>", CompactXml(inner));
}

TEST(XMLSaxForeignHandlers, May_query_and_read_the_tree_that_grows) {
  const Document document = NewDocument();
  EXPECT_TRUE(LoadWithComments(document, "<a v='1'>one<b>two</b>three<!--c--><c/>four</a>", [&] {
    EXPECT_EQ("<a v='1'>one<b>two</b></a>", CompactXml(document)) << "without the text since";
    const Node found(document->SelectSingleNode("//b"));
    ASSERT_NE(nullptr, found.Get());
    EXPECT_EQ("two", TakeBstr(found->GetTextAsBSTR()));
    EXPECT_NE(std::string::npos, XmlOf(document).find("<b>two</b>"));
  }));
  EXPECT_EQ(kTree, CompactXml(document));
}

TEST(XMLSaxForeignHandlers, Find_the_counters_up_to_date) {
  const Document document = NewDocument();
  const int nodes = IXMLDOMNode::m_iObjCount;
  int seen = 0;
  const char* const xml = "<a v='1' w='2'><b/><!--c-->one<c>two<!--c--></c><!--c--></a>";
  EXPECT_TRUE(LoadWithComments(document, xml, [&] {
    const int nodesMade[] = {4, 6, 7};  // without the text since the last tag
    const int elementsOpen[] = {1, 2, 1};
    EXPECT_EQ(nodes + nodesMade[seen], IXMLDOMNode::m_iObjCount);
    EXPECT_EQ(elementsOpen[seen], CNodeStackElt::m_iObjCount);
    ++seen;
  }));
  EXPECT_EQ(3, seen);
  EXPECT_EQ(nodes + 7, IXMLDOMNode::m_iObjCount);
}

TEST(XMLSaxForeignHandlers, May_take_references_and_release_their_own) {
  const Document document = Load("<old/>");
  Node old = Keep(Root(document));
  Node kept;
  Ref<IXMLDOMNodeList> list(document->SelectNodes("//*"));
  EXPECT_TRUE(LoadWithComments(document, kXml, [&] {
    old.Reset();
    list.Reset();
    document->get_documentElement(kept.Out());
  }));
  EXPECT_EQ(kTree, CompactXml(document));
  EXPECT_EQ(2, kept->GetRefCount());
}

namespace {

/// A handler object that keeps a document of its own, and throws at the end of an element.
class Loader : public CExpatImpl<Loader> {
 public:
  Loader() : m_document(NewDocument()) { CreateParser(); }
  ~Loader() { DestroyParser(); }

  void OnStartElement(const char* name, const char**) {
    EXPECT_EQ(VARIANT_TRUE, m_document->loadXML(("<" + std::string(name) + "/>").c_str()));
  }
  void OnEndElement(const char*) { throw 5; }
  void OnDefault(const char* text, int length) {
    Root(m_document)->AddTextChild(std::string(text, static_cast<std::size_t>(length)).c_str());
  }

  Document m_document;
};

}  // namespace

TEST(XMLSaxForeignHandlers, Of_a_class_of_their_own_may_load_and_build_and_throw) {
  Loader loader;
  EXPECT_THROW(loader.Parse("<a>x<b>y</b></a>", -1, true), int);
  EXPECT_EQ("<b>y</b>", CompactXml(loader.m_document));
}
