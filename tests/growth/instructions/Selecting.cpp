// Searches.

#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include "growth/instructions/Shapes.h"
#include "harness/Lists.h"
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
     [](int size) { SelectAll(Times(size, "<a>") + "x" + Times(size, "</a>"), "//a[a='y']"); },
     nullptr},
    {"SelectNodes", "//a[a='y'] of n levels with texts and references", 100,
     [](int size) { SelectAll(Times(size, "<a>x&lt;") + Times(size, "</a>"), "//a[a='y']"); },
     nullptr},
    {"SelectNodes", "n steps into n levels", 500,
     [](int size) { SelectAll(Levels(size), ("a" + Times(size - 1, "/a")).c_str()); }, nullptr},
    {"SelectNodes", "n predicates of a step", 500,
     [](int size) { SelectAll("<a k='1'/>", ("a" + Times(size, "[@k=1]")).c_str()); }, nullptr},
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
    {"SelectSingleNode", "n steps up and down", 300,
     [](int size) { SelectOne("<a><b/></a>", ("a" + Times(size, "/b/..") + "/x").c_str()); },
     nullptr},
    {"SelectSingleNode", "//a[a='y'] of n levels", 300,
     [](int size) { SelectOne(Times(size, "<a>") + "x" + Times(size, "</a>"), "//a[a='y']"); },
     nullptr},
    {"SelectSingleNode", "tests that log, n levels", 200,
     [](int size) { SelectOne(Levels(size), "//a[@k=1]x/a[@k=1]x/b"); }, nullptr},
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
    {"CXPathList::ParsePath", "n steps", 1000,
     [](int size) {
       const std::string path = "//" + Times(size, "a[b='/']/");
       const Counted counted;
       CXPathList steps;
       steps.ParsePath(path.c_str());
     },
     nullptr},
    {"xmldom::CheckPath", "n steps with predicates and n without", 1000,
     [](int size) {
       const std::string path = "a" + Times(size, "/a[b/c='1']") + Times(size, "/a");
       const Counted counted;
       Require(!xmldom::CheckPath(path));
     },
     nullptr},
    {"xmldom::Select", "n records that are removed in the loop", 500,
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
