#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <cstdlib>
#include <ostream>
#include <string>
#include <vector>

#include "harness/Balance.h"
#include "harness/EventBody.h"
#include "harness/RefusingLog.h"
#include "harness/StdoutCapture.h"
#include "harness/Trees.h"

// What a log sink may do, at every place that posts an event: the call that posted it ends as if
// the sink had only listened.

namespace {

/// A call that posts events. Result: what it has handed out, as text.
struct Place {
  const char* name;
  std::string (*run)(IXMLDOMDocument2* document);
};

std::ostream& operator<<(std::ostream& out, const Place& place) { return out << place.name; }

std::string Numbered(int number) { return std::to_string(number); }

std::string TextOf(IXMLDOMNode* found) {
  const Node node(found);
  return node.Get() == nullptr ? "nothing" : XmlOf(node);
}

std::string TextOf(IXMLDOMNodeList* found) {
  const Ref<IXMLDOMNodeList> list(found);
  return std::to_string(list->m_nCount);
}

std::string ChainOfEntities() {
  std::string xml = "<!DOCTYPE a [<!ENTITY e0 'text'>";
  for (int i = 1; i <= 1000; ++i) {
    xml += "<!ENTITY e" + std::to_string(i) + " '&e" + std::to_string(i - 1) + ";'>";
  }
  return xml + "]><a/>";
}

const Place kSlots[] = {
    {"SetValue",
     [](IXMLDOMDocument2* document) {
       document->SetValue("new");
       return std::string();
     }},
    {"text", [](IXMLDOMDocument2* document) { return TakeBstr(document->GetTextAsBSTR()); }},
    {"text that does not fit",
     [](IXMLDOMDocument2* document) {
       char buffer[12];
       return Text(document->GetStringValue(buffer, sizeof buffer));
     }},
    {"TranslateEntities",
     [](IXMLDOMDocument2*) {
       CMemFile out(4);
       const int result = TranslateEntities("1 &one; 2 &two; 3", out);
       return Numbered(result) + out.GetAsStr();
     }},
    {"a step that is missing",
     [](IXMLDOMDocument2* document) { return TextOf(document->SelectSingleNode("//b/..")); }},
    {"predicates of a step",
     [](IXMLDOMDocument2* document) { return Numbered(Root(document)->MatchQuery("r[@k='1'")); }},
    {"a wrong character in a step",
     [](IXMLDOMDocument2* document) { return Numbered(Root(document)->MatchQuery("r[@k='1']x")); }},
    {"ParseXPathQuery",
     [](IXMLDOMDocument2* document) {
       return Numbered(document->ParseXPathQuery(nullptr, nullptr, nullptr));
     }},
    {"a search by text",
     [](IXMLDOMDocument2* document) { return TextOf(document->SelectSingleNode("//r[a='1']/b")); }},
    {"a selection by text",
     [](IXMLDOMDocument2* document) { return TextOf(document->SelectNodes("//r[a='1']")); }},
    {"a selection by malformed steps",
     [](IXMLDOMDocument2* document) { return TextOf(document->SelectNodes("//a[b='1")); }},
    {"a path that filters nothing",
     [](IXMLDOMDocument2* document) {
       return Text(document->GetFilteredXML("/none", 1, 1, 3, 4, nullptr));
     }},
    {"page attributes that are stripped",
     [](IXMLDOMDocument2* document) {
       return Text(document->GetFilteredXML("/r", 1, 2, 3, 4, "<row/>"));
     }},
    {"an edit without path",
     [](IXMLDOMDocument2* document) {
       return Numbered(document->AppendChildAtXPath(nullptr, "<n/>"));
     }},
    {"an edit without target",
     [](IXMLDOMDocument2* document) {
       return Numbered(document->AppendChildAtXPath("/none", "<n/>")) +
              Numbered(document->ReplaceChildAtXPath("/none", "<n/>")) +
              Numbered(document->InsertBeforeXPath("/", "<n/>")) +
              Numbered(document->RemoveChildAtXPath("/none"));
     }},
    {"an edit with content that does not parse",
     [](IXMLDOMDocument2* document) {
       return Numbered(document->InsertBeforeXPath("/r/a", "<n>"));
     }},
    {"an edit by text",
     [](IXMLDOMDocument2* document) {
       return Numbered(document->AppendChildAtXPath("//r[a='&unknown; and &others;']", "<n/>"));
     }},
    {"a load that is refused",
     [](IXMLDOMDocument2* document) {
       static const std::string xml = ChainOfEntities();
       return Numbered(document->loadXML(xml.c_str()));
     }},
    {"SetDebugXPATH",
     [](IXMLDOMDocument2*) {
       SetDebugXPATH(false);
       return std::string();
     }},
    {"CheckLeaks",
     [](IXMLDOMDocument2*) {
       const long before = GetNumBSTRsAllocated();
       return std::to_string(CXML::CheckLeaks("here") - before);
     }},
    {"LogMessage",
     [](IXMLDOMDocument2*) {
       CLogException("where", "message", "detail").LogMessage(25, 1, "caught");
       return std::string();
     }},
    {"PostBacktrace",
     [](IXMLDOMDocument2*) {
       CLogger::PostBacktrace(LOG_TYPE_DOM, LOG_SEVERITY_WARNING, "from here");
       return std::string();
     }},
};

void Refuse(const CLogEvent& event, void*) {
  FreeOwnBody(event);
  throw Exception("Refuse", event.title, nullptr);
}

class Listener;

/// What a sink does with the documents at hand.
struct Deed {
  const char* name;
  void (*run)(Listener& listener);
};

/// A sink that notes the titles and does something at each event, but not at those that it causes.
class Listener {
 public:
  Listener(IXMLDOMDocument2* document, const Deed* deed)
      : m_document(document), m_deed(deed), m_isBusy(false) {
    CLogger::SetSink(Receive, this);
  }
  ~Listener() { CLogger::SetSink(nullptr, nullptr); }

  Listener(const Listener&) = delete;
  Listener& operator=(const Listener&) = delete;

  IXMLDOMDocument2* Target() const { return m_document; }
  const std::vector<std::string>& Titles() const { return m_titles; }

  /// Holds a reference that the next deed may release.
  void Hold(IXMLDOMNode* node) { m_held.push_back(Keep(node).Detach()); }
  void ReleaseHeld() {
    for (IXMLDOMNode*& node : m_held) Release(node);
    m_held.clear();
  }

  static void Receive(const CLogEvent& event, void* context) {
    Listener* listener = static_cast<Listener*>(context);
    if (!listener->m_isBusy) {
      listener->m_isBusy = true;
      if (listener->m_deed != nullptr) listener->m_deed->run(*listener);
      // What the deed has done may not have touched the event.
      listener->m_titles.push_back(event.title);
      listener->m_isBusy = false;
    }
    FreeOwnBody(event);
  }

  static void ReceiveInstead(const CLogEvent& event, void* context) { Receive(event, context); }

 private:
  IXMLDOMDocument2* m_document;
  const Deed* m_deed;
  bool m_isBusy;
  std::vector<std::string> m_titles;
  std::vector<IXMLDOMNode*> m_held;
};

const Deed kDeeds[] = {
    {"loads another document",
     [](Listener&) {
       Document other = Load("<x y='1'>&lt;<z/></x>");
       other->loadXML("<x>");
       other->loadXML(ChainOfEntities().c_str());
     }},
    {"builds",
     [](Listener&) {
       Document other = Load("<x><y>1</y></x>");
       Node(Root(other)->AddChild("z", "1"));
       Root(other)->AddAttribute("k", "1");
       Root(other)->m_pFirstChild->SetValue("2");
       other->AppendChildAtXPath("//z", "<n/>");
       other->RemoveChildAtXPath("//y");
     }},
    {"queries the tree at hand",
     [](Listener& listener) {
       IXMLDOMDocument2* document = listener.Target();
       XmlOf(document);
       TextOf(document->SelectNodes("//r[a='1']"));
       TextOf(document->SelectSingleNode("//a/.."));
       TakeHeap(document->GetTextAsStr());
       CMemFile report(4);
       CompareXMLNodes(document, document, report, 0);
     }},
    {"releases its own references", [](Listener& listener) { listener.ReleaseHeld(); }},
    {"reports leaks", [](Listener&) { CXML::CheckLeaks("there"); }},
    {"sets another sink",
     [](Listener& listener) { CLogger::SetSink(Listener::ReceiveInstead, &listener); }},
};

/// All that is left of a call.
struct Outcome {
  std::string result;
  std::string tree;
  std::vector<std::string> titles;
  std::string balance;  // of what has been made and not been freed
};

Document NewSample() {
  Document document =
      Load("<r k='1' curPage='1' numPages='2'><a k='1'><b/><b/></a><a><c/></a><a/></r>");
  for (int i = 0; i < 3; ++i) At(document, {0, i})->AddTextChild("&unknown; and &others;");
  return document;
}

Outcome Observe(const Place& place, const Deed* deed) {
  StdoutCapture silence;
  Outcome outcome;
  const Balance before = Balance::Now();
  {
    Document document = NewSample();
    Document other = Load("<x><y/></x>");
    {
      Listener listener(document, deed);
      listener.Hold(Root(document));
      listener.Hold(Root(other));
      other.Reset();
      outcome.result = place.run(document);
      outcome.titles = listener.Titles();
      listener.ReleaseHeld();
    }
    outcome.tree = XmlOf(document);
  }
  outcome.balance = Balance::Now().ChangesSince(before);
  return outcome;
}

void ExpectSame(const Outcome& expected, const Outcome& actual) {
  EXPECT_EQ(expected.result, actual.result);
  EXPECT_EQ(expected.tree, actual.tree);
  EXPECT_EQ(expected.titles, actual.titles);
  EXPECT_EQ(expected.balance, actual.balance);
  EXPECT_FALSE(expected.titles.empty()) << "nothing was logged";
}

class FailureCallbacks : public testing::TestWithParam<Place> {};

INSTANTIATE_TEST_SUITE_P(All, FailureCallbacks, testing::ValuesIn(kSlots));

TEST_P(FailureCallbacks, May_do_what_they_like_with_all_but_the_tree_at_hand) {
  const Outcome expected = Observe(GetParam(), nullptr);
  for (const Deed& deed : kDeeds) {
    SCOPED_TRACE(deed.name);
    ExpectSame(expected, Observe(GetParam(), &deed));
  }
}

TEST_P(FailureCallbacks, May_throw_and_the_call_can_be_made_again) {
  const Outcome expected = Observe(GetParam(), nullptr);
  StdoutCapture silence;
  Document document = NewSample();
  CLogger::SetSink(Refuse, nullptr);
  const std::string thrown = ThrownMessage([&] { GetParam().run(document); });
  EXPECT_FALSE(expected.titles.empty());
  EXPECT_EQ(expected.titles.front(), thrown);
  Listener listener(document, nullptr);
  EXPECT_EQ(expected.result, GetParam().run(document));
  EXPECT_EQ(expected.tree, XmlOf(document));
  EXPECT_EQ(expected.titles, listener.Titles());
}

}  // namespace
