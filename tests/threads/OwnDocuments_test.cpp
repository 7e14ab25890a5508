#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <atomic>
#include <string>

#include "harness/Trees.h"
#include "threads/Threads.h"

// Threads that use the library at the same time, each with documents of its own. That nothing is
// left alive is tested after the case.

namespace {

const int kItems = 60;

std::atomic<long> l_events;

void CountEvent(const CLogEvent&, void*) { ++l_events; }

std::string TextOf(int thread) {
  std::string text = "<list owner='" + std::to_string(thread) + "'>";
  for (int i = 0; i < kItems; ++i) {
    text += "<item id='" + std::to_string(i) + "'><part>a &amp; b</part></item>";
  }
  return text + "</list>";
}

void Query(IXMLDOMNode* list, int thread) {
  EXPECT_EQ(std::to_string(thread), list->GetStrAttribute("owner"));
  const Ref<IXMLDOMNodeList> parts(list->SelectNodes("//item/part"));
  EXPECT_EQ(kItems, parts->m_nCount);
  const Node found(list->SelectSingleNode("/list/item[@id=7]"));
  ASSERT_NE(nullptr, found.Get());
  EXPECT_EQ("a & b", TakeHeap(found->GetTextAsStr()));
  EXPECT_EQ(nullptr, list->SelectSingleNode("//item[@id=99]/none"));
}

void Edit(IXMLDOMNode* list) {
  for (int i = 0; i < kItems; ++i) {
    const Node added(list->AddChild("added", nullptr));
    added->AddTextChild("t");
    added->AddAttribute("n", "1");
    IXMLDOMNode* inserted = NewElement(nullptr, "inserted").Detach();
    EXPECT_EQ(S_OK, list->insertBefore(inserted, list->m_pFirstChild, nullptr));
  }
  for (int i = 0; i < kItems; ++i) {
    Node removed;
    EXPECT_EQ(S_OK, list->removeChild(list->m_pFirstChild, removed.Out()));
  }
  EXPECT_EQ(2 * kItems, list->CountChildNodes());
  EXPECT_EQ(1, list->AppendChildAtXPath("/list/item[@id=3]", "<more><x/></more>"));
  EXPECT_EQ(1, list->RemoveChildAtXPath("/list/item[@id=4]"));
  list->m_pFirstChild->RecurseSetDocument(list->m_pOwnerDocument);
}

/// Two different failures of loads, and a text whose unknown entity is logged.
void Fail(IXMLDOMDocument2* document) {
  EXPECT_EQ(VARIANT_FALSE, document->loadXML("<a><b><c>"));
  EXPECT_NE(nullptr, Root(document));
  EXPECT_EQ(VARIANT_FALSE, document->loadXML(""));
  EXPECT_EQ(VARIANT_TRUE, document->loadXML("<a>x</a>"));
  const Node text(document->m_pFirstChild->AddChild("t", nullptr));
  text->AddTextChild("&unknown;");
  EXPECT_EQ("&unknown;", TakeHeap(text->GetTextAsStr()));
}

void UseTheLibrary(int thread) {
  CXML::SetXMLError(100 + thread);
  const Document document = NewDocument();
  ASSERT_EQ(VARIANT_TRUE, document->loadXML(TextOf(thread).c_str()));
  EXPECT_EQ(0, CXML::GetXMLError());
  CXML::SetXMLError(100 + thread);
  Query(Root(document), thread);
  EXPECT_EQ(100 + thread, CXML::GetXMLError());
  Edit(Root(document));

  const Document again = Load(TakeBstr(document->GetXML()));
  CMemFile report(0);
  EXPECT_EQ(1, CompareXMLNodes(document, again, report, 0)) << report.GetAsStr();
  Fail(document);
  EXPECT_EQ(nullptr, Root(again)->GetChild("none"));
  EXPECT_EQ(CXML::NO_SUCH_CHILD, CXML::GetXMLError());
}

TEST(OwnDocuments, Are_used_by_several_threads_at_once) {
  CLogger::SetSink(CountEvent, nullptr);
  SetDebugEntities(false);
  l_events = 0;
  std::atomic<long> rounds(0);
  InFourThreads([&rounds](int thread) {
    UseTheLibrary(thread);
    ++rounds;
  });
  EXPECT_EQ(rounds.load(), l_events.load());
  SetDebugEntities(true);
}

}  // namespace
