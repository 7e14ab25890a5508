#include <gtest/gtest.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include <string>

#include "harness/LogCapture.h"
#include "harness/Trees.h"

namespace {

/// The one event that CheckLeaks posts.
LoggedEvent ReportOf(const char* where, long* outstanding = nullptr) {
  LogCapture log;
  const long result = CXML::CheckLeaks(where);
  if (outstanding != nullptr) *outstanding = result;
  EXPECT_EQ(1u, log.Events().size());
  return log.Events().empty() ? Event(0, 0, "no event") : log.Events().front();
}

/// Sets a counter while it lives.
class Count {
 public:
  Count(int& counter, int value) : m_counter(counter), m_before(counter) { counter = value; }
  ~Count() { m_counter = m_before; }
  Count(const Count&) = delete;
  Count& operator=(const Count&) = delete;

 private:
  int& m_counter;
  int m_before;
};

struct Line {
  int* counter;
  const char* text;  // behind the number
};

const Line kLines[] = {
    {&IXMLDOMNode::m_iObjCount, " XML nodes in memory\n"},
    {&CNodeStack::m_iObjCount, " Node Stacks in memory\n"},
    {&CNodeStackElt::m_iObjCount, " Node Stack Elements in memory\n"},
    {&CXMLSax::m_iObjCount, " XML SAXes in memory\n"},
    {&IXMLDOMDocument2::m_iObjCount, " XML documents in memory\n"},
    {&CXPathList::m_iObjCount, " StrLists in memory\n"},
    {&CStrListElt::m_iObjCount, " StrListElt's in memory\n"},
    {&IXMLDOMNodeList::m_iObjCount, " IXMLDOMNodeLists in memory\n"},
    {&IXMLDOMNodeListElt::m_iObjCount, " NodeListElt's in memory\n"},
    {&IXMLDOMParseError::m_iObjCount, " XML Parse Error Objects in memory\n"},
};

}  // namespace

TEST(LeakReport, Is_the_heading_alone_when_nothing_lives) {
  long outstanding = -1;
  EXPECT_EQ(Event(26, 7, "CXML::CheckLeaks - x", "\nCheckLeaks - x:\n"),
            ReportOf("x", &outstanding));
  EXPECT_EQ(0, outstanding);
}

TEST(LeakReport, Is_posted_empty_when_nothing_lives_and_nobody_asks_by_name) {
  long outstanding = -1;
  EXPECT_EQ(Event(26, 7, "CXML::CheckLeaks", ""), ReportOf(nullptr, &outstanding));
  EXPECT_EQ(0, outstanding);
}

TEST(LeakReport, Takes_the_heading_for_what_it_is) {
  const std::string names[] = {"", "100%s %n", "two\nlines", std::string(100000, 'x')};
  for (const std::string& name : names) {
    EXPECT_EQ(Event(26, 7, "CXML::CheckLeaks - " + name, "\nCheckLeaks - " + name + ":\n"),
              ReportOf(name.c_str()));
  }
}

TEST(LeakReport, Has_a_line_for_each_counter_above_0) {
  for (const Line& line : kLines) {
    SCOPED_TRACE(line.text);
    for (int value : {1, 2147483647}) {
      const Count count(*line.counter, value);
      EXPECT_EQ(Event(26, 7, "CXML::CheckLeaks", std::to_string(value) + line.text),
                ReportOf(nullptr));
    }
  }
}

TEST(LeakReport, Has_no_line_for_a_counter_below_0) {
  for (const Line& line : kLines) {
    SCOPED_TRACE(line.text);
    const Count count(*line.counter, -1);
    EXPECT_EQ(Event(26, 7, "CXML::CheckLeaks", ""), ReportOf(nullptr));
  }
}

TEST(LeakReport, Counts_and_returns_the_outstanding_strings) {
  BSTR first = SysAllocString("x");
  BSTR second = SysAllocString("");
  long outstanding = -1;
  EXPECT_EQ(Event(26, 7, "CXML::CheckLeaks", "There're 2 outstanding bstrs\n"),
            ReportOf(nullptr, &outstanding));
  EXPECT_EQ(2, outstanding);
  SysFreeString(first);
  SysFreeString(second);
}

TEST(LeakReport, Tells_all_that_lives_in_a_fixed_order) {
  const Document document = NewDocument();
  document->loadXML("<a v='1'><b>x</b><c>");
  IXMLDOMParseError* error = nullptr;
  document->get_parseError(&error);
  const Ref<IXMLDOMParseError> errorOwner(error);
  IXMLDOMNodeList* list = nullptr;
  Root(document)->get_childNodes(&list);
  const Ref<IXMLDOMNodeList> listOwner(list);
  CXPathList path;
  path.ParsePath("/a/b/c");
  long outstanding = -1;
  EXPECT_EQ(Event(26, 7, "CXML::CheckLeaks - all",
                  "\nCheckLeaks - all:\n"
                  "6 XML nodes in memory\n"
                  "1 Node Stacks in memory\n"
                  "2 Node Stack Elements in memory\n"
                  "1 XML SAXes in memory\n"
                  "1 XML documents in memory\n"
                  "1 StrLists in memory\n"
                  "3 StrListElt's in memory\n"
                  "1 IXMLDOMNodeLists in memory\n"
                  "2 NodeListElt's in memory\n"
                  "1 XML Parse Error Objects in memory\n"
                  "There're 2 outstanding bstrs\n"),
            ReportOf("all", &outstanding));
  EXPECT_EQ(2, outstanding);
}

TEST(LeakReport, Counts_a_new_document_twice) {
  const Document document = NewDocument();
  EXPECT_EQ(Event(26, 7, "CXML::CheckLeaks",
                  "1 XML nodes in memory\n"
                  "1 XML documents in memory\n"),
            ReportOf(nullptr));
}

TEST(LeakReport, Counts_builder_and_stack_that_a_loaded_document_keeps) {
  const Document document = Load("<a/>");
  EXPECT_EQ(Event(26, 7, "CXML::CheckLeaks",
                  "2 XML nodes in memory\n"
                  "1 Node Stacks in memory\n"
                  "1 XML SAXes in memory\n"
                  "1 XML documents in memory\n"),
            ReportOf(nullptr));
}
