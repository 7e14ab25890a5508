// Calls that write XML, paths and reports.

#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <string>

#include "allocation/Sweeps.h"
#include "harness/Trees.h"
#include "harness/Writing.h"

namespace {

/// While it lives, the log frees the text of each event, which has to be a string that is its own.
class BodyFreeingLog {
 public:
  BodyFreeingLog() { CLogger::SetSink(FreeBody, nullptr); }
  ~BodyFreeingLog() { CLogger::SetSink(Ignore, nullptr); }

  BodyFreeingLog(const BodyFreeingLog&) = delete;
  BodyFreeingLog& operator=(const BodyFreeingLog&) = delete;

 private:
  static void Ignore(const CLogEvent&, void*) {}
  static void FreeBody(const CLogEvent& event, void*) {
    BSTR body = const_cast<char*>(event.body);
    SysFreeString(body);
  }
};

void WriteAndNote(const IXMLDOMNode* node, const Writing& how) {
  CMemFile out(16);
  node->GetXMLHelper(out, how.depth, how.paged, how.first, how.count, how.currentPage, how.numPages,
                     how.padTemplate, how.masked, how.indexed, how.index);
  Note(out.GetAsStr());
}

IXMLDOMNode* Innermost(IXMLDOMDocument2* document) {
  IXMLDOMNode* node = At(document, {0, 4});
  while (node->m_pFirstChild != nullptr) node = node->m_pFirstChild;
  return node;
}

const FailingCall kWriting[] = {
    {"GetXML", [](IXMLDOMDocument2* document) { NoteAndFree(document->GetXML()); }},
    {"get_xml",
     [](IXMLDOMDocument2* document) {
       BSTR xml = nullptr;
       At(document, {0, 2})->get_xml(&xml);
       NoteAndFree(xml);
     }},
    {"Getxml", [](IXMLDOMDocument2* document) { Note(document->Getxml()); }},
    {"GetMaskedXML", [](IXMLDOMDocument2* document) { Note(document->GetMaskedXML()); }},
    {"GetFilteredXML",
     [](IXMLDOMDocument2* document) {
       Note(document->GetFilteredXML("/r/a[b='y']", 2, 4, 1, 2, "<row/>"));
     }},
    {"GetFilteredXML, without path",
     [](IXMLDOMDocument2* document) {
       Note(document->GetFilteredXML(nullptr, 1, 1, 1, 2, "<row/>"));
     }},
    {"GetFilteredXML, nothing",
     [](IXMLDOMDocument2* document) {
       // The event is longer than the memory that the log begins with.
       static const std::string path = "/" + std::string(300, 'n');
       const BodyFreeingLog log;
       Note(document->GetFilteredXML(path.c_str(), 2, 4, 1, 2, "<row/>"));
     }},
    {"GetXMLHelper, a page",
     [](IXMLDOMDocument2* document) {
       Writing how;
       how.paged = Root(document);
       how.first = 2;
       how.count = 60;
       how.currentPage = 1;
       how.numPages = 3;
       how.padTemplate = "<row><cell/></row>";
       WriteAndNote(document, how);
     }},
    {"GetXMLHelper, masked, numbered, further in",
     [](IXMLDOMDocument2* document) {
       Writing how;
       how.depth = 3;
       how.masked = true;
       how.indexed = true;
       how.index = 7;
       WriteAndNote(Root(document), how);
     }},
    {"GetXMLHelper, a node without owner",
     [](IXMLDOMDocument2*) {
       const Node node(new IXMLDOMNode(nullptr, "n", nullptr, NODE_ELEMENT));
       Node(node->AddChild("m", nullptr))->AddTextChild("t");
       WriteAndNote(node, Writing());
     }},
    {"SetDispAddr, GetXML with addresses",
     [](IXMLDOMDocument2* document) {
       struct Decoration {
         Decoration() { SetDispAddr(true); }
         ~Decoration() { SetDispAddr(false); }
       } decoration;
       _bstr_t xml(At(document, {0, 2})->Getxml());
     }},
    {"Pad",
     [](IXMLDOMDocument2*) {
       CMemFile out(1);
       Pad(out, "<row k='1'>t</row>", 3, 20);
       Note(out.GetAsStr());
     }},
    {"PrintSpaces",
     [](IXMLDOMDocument2*) {
       CMemFile out(1);
       PrintSpaces(out, 100);
       Note(out.GetAsStr());
     }},
    {"GetPathToNode",
     [](IXMLDOMDocument2* document) {
       CMemFile out(4);
       Innermost(document)->GetPathToNode(out);
       Note(out.GetAsStr());
     }},
    {"GetPathToNodeHelper",
     [](IXMLDOMDocument2* document) {
       CMemFile out(4);
       Root(document)->GetPathToNodeHelper(Innermost(document), out);
       Note(out.GetAsStr());
     }},
    {"CheckLeaks", [](IXMLDOMDocument2*) { Note(CXML::CheckLeaks("here")); }},
};

const FailingCall kComparing[] = {
    {"CompareXMLNodes, equal trees",
     [](IXMLDOMDocument2* document) {
       CMemFile report(4);
       Note(CompareXMLNodes(document, document, report, 0));
       Note(report.GetAsStr());
     }},
    {"CompareXMLNodes, trees that differ",
     [](IXMLDOMDocument2* document) {
       CMemFile report(4);
       Note(CompareXMLNodes(At(document, {0, 1}), At(document, {0, 2}), report, 0));
       Note(report.GetAsStr());
     }},
    {"CompareXMLNodes, another document",
     [](IXMLDOMDocument2* document) {
       Document other;
       Create(other.Out());
       if (other->loadXML(kDeepXml.c_str()) != VARIANT_TRUE) return NoteFailure();
       CMemFile report(4);
       Innermost(other)->SetValue("other");
       Note(CompareXMLNodes(document, other, report, 0));
       Note(report.GetAsStr());
     }},
    {"CompareXMLNodes, a missing tree",
     [](IXMLDOMDocument2* document) {
       CMemFile report(4);
       Note(CompareXMLNodes(document, nullptr, report, 0));
       Note(report.GetAsStr());
     }},
};

class AllocationWriting : public testing::TestWithParam<FailingCall> {};

TEST_P(AllocationWriting, That_fails_leaves_the_tree_as_it_was_and_nothing_behind) {
  FailEverywhere("writing", GetParam(), FailingCall::KEEPS_TREE);
}

INSTANTIATE_TEST_SUITE_P(All, AllocationWriting, testing::ValuesIn(kWriting));

class AllocationWritingReports : public testing::TestWithParam<FailingCall> {};

TEST_P(AllocationWritingReports, That_fails_leaves_the_trees_as_they_were_and_nothing_behind) {
  FailEverywhere("comparison", GetParam(), FailingCall::KEEPS_TREE);
}

INSTANTIATE_TEST_SUITE_P(All, AllocationWritingReports, testing::ValuesIn(kComparing));

}  // namespace
