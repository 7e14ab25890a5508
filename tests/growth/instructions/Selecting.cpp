// Searches.

#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include "growth/instructions/Shapes.h"
#include "harness/Lists.h"
#include "harness/Silence.h"
#include "harness/Trees.h"

namespace {

std::string SearchedRecords(int size) {
  return "<r>" + Times(size, "<a k='1'><b>t</b></a>") + "</r>";
}

void SelectAll(const std::string& xml, const char* path) {
  Document document = Load(xml);
  const Counted counted;
  List(document->SelectNodes(path));
}

void SelectOne(const std::string& xml, const char* path) {
  Document document = Load(xml);
  const Counted counted;
  Node(document->SelectSingleNode(path));
}

const char* const kReports = "A search that logs or prints";
const char* const kPredicates = "An element in a predicate";
const char* const kLongPaths = "Long paths";

/// Searches with tests of which some log or print.
void SelectOneReporting(const std::string& xml, const char* path) {
  const unsigned long events = LogEvents();
  SelectOne(xml, path);
  Require(LogEvents() != events);
}

/// Nested elements that have all one text.
std::string LevelsAround(int size, const std::string& text) {
  return Times(size, "<a>") + text + Times(size, "</a>");
}

const Growing kSearches[] = {
    {"SelectNodes", "//a of n records", 500,
     [](int size) { SelectAll(SearchedRecords(size), "//a"); }, nullptr},
    {"SelectNodes", "//a of n levels", 1000, [](int size) { SelectAll(Levels(size), "//a"); },
     nullptr},
    {"SelectNodes", "//a/a/a of n levels", 1000,
     [](int size) { SelectAll(Levels(size), "//a/a/a"); }, nullptr},
    {"SelectNodes", "/r/a[@k=1][b='t'] of n records", 500,
     [](int size) { SelectAll(SearchedRecords(size), "/r/a[@k=1][b='t']"); }, nullptr},
    {"SelectNodes", "//r[*/b='x'] of n records", 500,
     [](int size) { SelectAll(SearchedRecords(size), "//r[*/b='x']"); }, nullptr},
    {"SelectNodes", "//a[a='y'] of n levels", 300,
     [](int size) { SelectAll(LevelsAround(size, "x"), "//a[a='y']"); }, nullptr},
    {"SelectNodes", "//a[a='y'] of n levels with texts and references", 100,
     [](int size) { SelectAll(Times(size, "<a>x&lt;") + Times(size, "</a>"), "//a[a='y']"); },
     nullptr},
    {"SelectNodes", "n steps into n levels", 500,
     [](int size) { SelectAll(Levels(size), ("a" + Times(size - 1, "/a")).c_str()); }, nullptr},
    {"SelectNodes", "n predicates of a step", 500,
     [](int size) { SelectAll("<a k='1'/>", ("a" + Times(size, "[@k=1]")).c_str()); }, nullptr},
    {"SelectNodes", "//a[a='y'] of n levels around a reference, debug line on", 200,
     [](int size) {
       const Silence silence;
       SetDebugEntities(true);
       SelectAll(LevelsAround(size, "x&lt;"), "//a[a='y']");
       SetDebugEntities(false);
     },
     kPredicates},
    {"SelectNodes", "//a[a='y'] of n levels with references, debug line on", 100,
     [](int size) {
       const Silence silence;
       SetDebugEntities(true);
       SelectAll(Times(size, "<a>x&lt;") + Times(size, "</a>"), "//a[a='y']");
       SetDebugEntities(false);
     },
     kPredicates},
    {"SelectNodes", "//a[a='y'] of n levels around an unknown entity", 200,
     [](int size) {
       SelectAll("<!DOCTYPE a SYSTEM 's'>" + LevelsAround(size, "&none;"), "//a[a='y']");
     },
     kPredicates},
    {"SelectNodes", "//a[a=1] of n levels around n digits", 300,
     [](int size) { SelectAll(LevelsAround(size, Times(size, "1")), "//a[a=1]"); }, kPredicates},
    {"SelectNodes", "n steps behind // in 2n levels", 100,
     [](int size) { SelectAll(Levels(2 * size), ("//a" + Times(size - 1, "/a")).c_str()); },
     kLongPaths},
    {"SelectNodes", "n predicates at n records", 100,
     [](int size) { SelectAll(SearchedRecords(size), ("//a" + Times(size, "[@k=1]")).c_str()); },
     kLongPaths},
    {"SelectNodesHelper, SelectNodesTraverse", "n records", 500,
     [](int size) {
       Document document = Load(SearchedRecords(size));
       CXPathList list;
       list.ParsePath("a/b");
       const List found(new IXMLDOMNodeList);
       const Counted counted;
       document->SelectNodesHelper(Root(document), list, found, 0);
       document->SelectNodesTraverse(document, list, found);
       Require(found->m_nCount == 2 * size);
     },
     nullptr},
    {"SelectNodesHelper, SelectSingleNodeHelper", "n steps into n levels", 500,
     [](int size) {
       Document document = Load(Levels(size));
       CXPathList list;
       list.ParsePath(("a" + Times(size - 1, "/a")).c_str());
       const List found(new IXMLDOMNodeList);
       const Counted counted;
       document->SelectNodesHelper(document, list, found, 0);
       Require(found->m_nCount == 1);
       Require(Node(document->SelectSingleNodeHelper(document, list, -1)) != nullptr);
     },
     nullptr},
    {"SelectSingleNodeHelper", "nothing in n records", 500,
     [](int size) {
       Document document = Load(SearchedRecords(size));
       CXPathList list;
       list.ParsePath("//a/b/c");
       const Counted counted;
       Require(Node(document->SelectSingleNodeHelper(document, list, -1)) == nullptr);
       Require(Node(document->SelectSingleNodeHelper(Root(document), list, 0)) == nullptr);
     },
     nullptr},
    {"MatchQuery", "n segments of a predicate, n levels", 500,
     [](int size) {
       Document document = Load(Levels(size + 1));
       const std::string step = "a[" + Times(size, "a/") + "a='x']";
       const Counted counted;
       Require(Root(document)->MatchQuery(step.c_str()) == 0);
     },
     nullptr},
    {"MatchesSubquery, MatchSubqueryHelper", "n children", 500,
     [](int size) {
       Document document = Load(SearchedRecords(size));
       const Counted counted;
       Root(document)->MatchesSubquery("a/b='x'");
       document->MatchSubqueryHelper(Root(document), "r/a/b='x'");
     },
     nullptr},
    {"ParseXPathQuery, ParseXPathSubquery", "n bytes", 2000,
     [](int size) {
       const std::string name = "n" + Times(size, "x");
       char* texts[5] = {};
       bool hasPath = false;
       bool isQuoted = false;
       const Document document = NewDocument();
       const Counted counted;
       document->ParseXPathQuery((name + "[@" + name + "=1]").c_str(), &texts[0], &texts[1]);
       document->ParseXPathSubquery((name + "/@" + name + "='" + name + "'").c_str(), &hasPath,
                                    &texts[2], &texts[3], &texts[4], &isQuoted);
       for (char* text : texts) std::free(text);
     },
     nullptr},
    {"SelectSingleNode", "the last of n records", 500,
     [](int size) { SelectOne("<x>" + SearchedRecords(size) + "<y/></x>", "//y"); }, nullptr},
    {"SelectSingleNode", "nothing behind //a/a/b in n levels", 1000,
     [](int size) { SelectOne(Levels(size), "//a/a/b"); }, nullptr},
    {"SelectSingleNode", "nothing behind //a/../a/.. in n records", 200,
     [](int size) { SelectOne(SearchedRecords(size), "//a/../a/../a/x"); }, nullptr},
    {"SelectSingleNode", "nothing behind //a/../a in n levels", 200,
     [](int size) { SelectOne(Levels(size), "//a/../a/a/x"); }, nullptr},
    {"SelectSingleNode", "nothing behind // and n steps in 2n levels", 100,
     [](int size) { SelectOne(Levels(2 * size), ("//a" + Times(size - 1, "/a") + "/b").c_str()); },
     kLongPaths},
    {"SelectSingleNode", "n steps up and down", 300,
     [](int size) { SelectOne("<a><b/></a>", ("a" + Times(size, "/b/..") + "/x").c_str()); },
     nullptr},
    {"SelectSingleNode", "//a[a='y'] of n levels", 300,
     [](int size) { SelectOne(LevelsAround(size, "x"), "//a[a='y']"); }, nullptr},
    {"SelectSingleNode", "tests that log, n levels", 200,
     [](int size) { SelectOneReporting(Levels(size + 2), "//a/a/a["); }, nullptr},
    {"SelectSingleNode", "tests that log, the outermost n levels", 2,
     [](int size) { SelectOneReporting(Levels(size + 2), "//a/a/a["); }, kReports},
    {"SelectSingleNode", "tests that log, n steps up and down in n levels", 100,
     [](int size) { SelectOneReporting(Levels(size + 3), "//a/../a/a/a["); }, nullptr},
    {"selectSingleNode2, selectNodes2", "n records", 500,
     [](int size) {
       Document document = Load(SearchedRecords(size));
       char path[] = "//none";
       const Counted counted;
       List list;
       document->selectNodes2(path, list.Out());
       Node node;
       document->selectSingleNode2(path, node.Out());
     },
     nullptr},
    {"CXPathList::ParsePath, CreateIndex", "n steps", 1000,
     [](int size) {
       const std::string path = "//" + Times(size, "a[b='/']/");
       const Counted counted;
       CXPathList steps;
       steps.ParsePath(path.c_str());
       steps.CreateIndex();
     },
     nullptr},
    {"CXPathList::ParsePath", "n paths into one list", 300,
     [](int size) {
       const Counted counted;
       CXPathList steps;
       for (int i = 0; i < size; ++i) steps.ParsePath("a");
     },
     "ParsePath"},
    {"StringMatchesSubString, IsPageAttribute", "n bytes", 20000,
     [](int size) {
       const std::string text = Times(size, "x");
       const Document document = NewDocument();
       const Counted counted;
       Require(StringMatchesSubString(text.c_str(), text.c_str(), size) == 1);
       Require(document->IsPageAttribute(text.c_str()) == 0);
     },
     nullptr},
    {"xmldom::CheckPath", "n steps with predicates and n without", 1000,
     [](int size) {
       const std::string path = "a" + Times(size, "/a[b/c='1']") + Times(size, "/a");
       const Counted counted;
       Require(!xmldom::CheckPath(path));
     },
     nullptr},
    {"xmldom::SelectOne", "the last of n records", 500,
     [](int size) {
       Document document = Load("<x>" + SearchedRecords(size) + "<y/></x>");
       const Counted counted;
       Require(bool(xmldom::SelectOne(document, "//y")));
     },
     nullptr},
    {"xmldom::Select, xmldom::Selected", "n records that are removed in the loop", 500,
     [](int size) {
       Document document = Load(SearchedRecords(size));
       const Counted counted;
       for (const XMLPtr<IXMLDOMNode>& node : xmldom::Select(document, "//a")) {
         node->RemoveNodeFromTree();
         node->RealRelease();
       }
     },
     nullptr},
};

}  // namespace

std::vector<Growing> SelectingRows() {
  return std::vector<Growing>(std::begin(kSearches), std::end(kSearches));
}
