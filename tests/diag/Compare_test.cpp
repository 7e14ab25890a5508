#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <ostream>
#include <string>

#include "harness/LinearTime.h"
#include "harness/NodeFacts.h"
#include "harness/SmallStack.h"
#include "harness/Trees.h"

namespace {

/// What a comparison says, with its report.
struct Verdict {
  int result;
  std::string report;
};

bool operator==(const Verdict& a, const Verdict& b) {
  return a.result == b.result && a.report == b.report;
}

std::ostream& operator<<(std::ostream& out, const Verdict& verdict) {
  return out << verdict.result << " \"" << verdict.report << "\"";
}

const Verdict kEqual = {1, ""};

Verdict Differs(const std::string& report) { return Verdict{0, report}; }

/// How a report ends: the XML of both nodes.
std::string Dump(const std::string& first, const std::string& second) {
  return "-----\nNode 1:\n" + first + "\n-----\nNode 2:\n" + second + "\n";
}

/// Compares with a report that held something before.
Verdict Compare(IXMLDOMNode* first, IXMLDOMNode* second, int depth = 0) {
  CMemFile report(16);
  report.Write("old", 3);
  report.m_uPosition = 2;
  Verdict verdict = {CompareXMLNodes(first, second, report, depth), ""};
  verdict.report.assign(report.GetAsStr(), report.m_uLength);
  return verdict;
}

// ---- Documents that differ, and those that do not

struct Row {
  const char* name;
  const char* first;
  const char* second;
  Verdict verdict;
};

std::ostream& operator<<(std::ostream& out, const Row& row) { return out << row.name; }

const Row kRows[] = {
    {"the same", "<a v='1' w='2'><b>t</b><c/>u</a>", "<a v='1' w='2'><b>t</b><c/>u</a>", kEqual},
    {"written otherwise", "<a v='1'><b></b></a>", "<?xml version='1.0'?>\n<a  v=\"1\">\n<b/></a>",
     kEqual},
    {"roots of other names", "<a><b/></a>", "<z><b/></z>", kEqual},

    {"attribute name", "<a v='1'/>", "<a w='1'/>",
     Differs("Failed at depth 0: Attribute name mismatch, v vs w" +
             Dump("<a v='1'/>\n", "<a w='1'/>\n"))},
    {"attributes in another order", "<a v='1' w='2'/>", "<a w='2' v='1'/>",
     Differs("Failed at depth 0: Attribute name mismatch, v vs w" +
             Dump("<a v='1' w='2'/>\n", "<a w='2' v='1'/>\n"))},
    {"attribute value", "<a v='1' w='2'/>", "<a v='1' w='3'/>",
     Differs("Failed at depth 0: Attribute value mismatch, 2 vs 3" +
             Dump("<a v='1' w='2'/>\n", "<a v='1' w='3'/>\n"))},
    {"attribute name before value", "<a v='1'/>", "<a w='2'/>",
     Differs("Failed at depth 0: Attribute name mismatch, v vs w" +
             Dump("<a v='1'/>\n", "<a w='2'/>\n"))},
    {"more attributes first", "<a v='1' w='2'/>", "<a v='1'/>",
     Differs("Failed at depth 0: Node 1 has more attributes than Node 2\n" +
             Dump("<a v='1' w='2'/>\n", "<a v='1'/>\n"))},
    {"more attributes second", "<a/>", "<a v='1'/>",
     Differs("Failed at depth 0: Node 2 has more attributes than Node 1\n" +
             Dump("<a/>\n", "<a v='1'/>\n"))},
    {"attributes before children", "<a v='1'><b/></a>", "<a v='2'><c/></a>",
     Differs("Failed at depth 0: Attribute value mismatch, 1 vs 2" +
             Dump("<a v='1'>\n  <b/>\n</a>\n", "<a v='2'>\n  <c/>\n</a>\n"))},

    {"type of a child", "<a>t</a>", "<a><b/></a>",
     Differs("Failed at depth 0: node type mismatch, 3 vs 1" + Dump("<#Text/>\n", "<b/>\n"))},
    {"name of a child", "<a><b/><c/></a>", "<a><b/><d/></a>",
     Differs("Failed at depth 0: node name mismatch, c vs d" + Dump("<c/>\n", "<d/>\n"))},
    {"name of a child before its attributes", "<a><b v='1'/></a>", "<a><c v='2'/></a>",
     Differs("Failed at depth 0: node name mismatch, b vs c" +
             Dump("<b v='1'/>\n", "<c v='2'/>\n"))},
    {"text", "<a>t</a>", "<a>u</a>",
     Differs("Failed at depth 0: text value mismatch, t vs u" + Dump("<#Text/>\n", "<#Text/>\n"))},
    {"text as stored", "<a>&lt;</a>", "<a>&#60;</a>",
     Differs("Failed at depth 0: text value mismatch, &lt; vs &#60;" +
             Dump("<#Text/>\n", "<#Text/>\n"))},
    {"text that looks like a format", "<a>%s%n</a>", "<a>%d</a>",
     Differs("Failed at depth 0: text value mismatch, %s%n vs %d" +
             Dump("<#Text/>\n", "<#Text/>\n"))},
    {"more children first", "<a><b/><c/></a>", "<a><b/></a>",
     Differs("Failed at depth 0: Node 1 has more children than Node 2\n" +
             Dump("<a>\n  <b/>\n  <c/>\n</a>\n", "<a>\n  <b/>\n</a>\n"))},
    {"more children second", "<a><b/></a>", "<a><b/><c/></a>",
     Differs("Failed at depth 0: Node 2 has more children than Node 1\n" +
             Dump("<a>\n  <b/>\n</a>\n", "<a>\n  <b/>\n  <c/>\n</a>\n"))},
    {"children second alone", "<a/>", "<a>t</a>",
     Differs("Failed at depth 0: Node 2 has more children than Node 1\n" +
             Dump("<a/>\n", "<a>t</a>\n"))},
    {"a child of its own before more children", "<a><b/><c/></a>", "<a><d/></a>",
     Differs("Failed at depth 0: node name mismatch, b vs d" + Dump("<b/>\n", "<d/>\n"))},

    {"attribute of a child", "<a><b v='1'/></a>", "<a><b v='2'/></a>",
     Differs("Failed at depth 1: Attribute value mismatch, 1 vs 2" +
             Dump("<b v='1'/>\n", "<b v='2'/>\n"))},
    {"text of a child", "<a><b>t</b></a>", "<a><b>u</b></a>",
     Differs("Failed at depth 1: text value mismatch, t vs u" + Dump("<#Text/>\n", "<#Text/>\n"))},
    {"more children below", "<a><b><c/></b></a>", "<a><b/></a>",
     Differs("Failed at depth 1: Node 1 has more children than Node 2\n" +
             Dump("<b>\n  <c/>\n</b>\n", "<b/>\n"))},
    {"more children below, second", "<a><b/><c/></a>", "<a><b><d/></b><c/></a>",
     Differs("Failed at depth 1: Node 2 has more children than Node 1\n" +
             Dump("<b/>\n", "<b>\n  <d/>\n</b>\n"))},
    {"far below", "<a><b><c><d v='1'/></c></b></a>", "<a><b><c><d w='1'/></c></b></a>",
     Differs("Failed at depth 3: Attribute name mismatch, v vs w" +
             Dump("<d v='1'/>\n", "<d w='1'/>\n"))},
    {"after what is equal far below", "<a><b><c><d/></c></b><e/></a>",
     "<a><b><c><d/></c></b><f/></a>",
     Differs("Failed at depth 0: node name mismatch, e vs f" + Dump("<e/>\n", "<f/>\n"))},
    {"more children after what is equal far below", "<a><b><c><d/></c></b></a>",
     "<a><b><c><d/></c></b><f/></a>",
     Differs("Failed at depth 0: Node 2 has more children than Node 1\n" +
             Dump("<a>\n  <b>\n    <c>\n      <d/>\n    </c>\n  </b>\n</a>\n",
                  "<a>\n  <b>\n    <c>\n      <d/>\n    </c>\n  </b>\n  <f/>\n</a>\n"))},
    {"only the first of a child too many and a name", "<r><a><x/></a><b/></r>",
     "<r><a><x/><y/></a><b/></r>",
     Differs("Failed at depth 1: Node 2 has more children than Node 1\n" +
             Dump("<a>\n  <x/>\n</a>\n", "<a>\n  <x/>\n  <y/>\n</a>\n"))},
    {"a child too many far below", "<r><a><b><c><x/></c></b></a></r>",
     "<r><a><b><c><x/><y/></c></b></a></r>",
     Differs("Failed at depth 3: Node 2 has more children than Node 1\n" +
             Dump("<c>\n  <x/>\n</c>\n", "<c>\n  <x/>\n  <y/>\n</c>\n"))},
    {"only the first difference", "<a><b>t</b><c/></a>", "<a><b>u</b><d/></a>",
     Differs("Failed at depth 1: text value mismatch, t vs u" + Dump("<#Text/>\n", "<#Text/>\n"))},
};

class CompareDocuments : public testing::TestWithParam<Row> {};

INSTANTIATE_TEST_SUITE_P(All, CompareDocuments, testing::ValuesIn(kRows));

TEST_P(CompareDocuments, Finds_the_first_difference_between_documents) {
  Document first = Load(GetParam().first);
  Document second = Load(GetParam().second);
  EXPECT_EQ(GetParam().verdict, Compare(first, second));
}

TEST_P(CompareDocuments, Changes_neither_tree) {
  Document first = Load(GetParam().first);
  Document second = Load(GetParam().second);
  const std::string references[] = {References(first), References(second)};
  const std::string xml[] = {XmlOf(first), XmlOf(second)};
  Compare(first, second);
  EXPECT_EQ(references[0], References(first));
  EXPECT_EQ(references[1], References(second));
  EXPECT_EQ(xml[0], XmlOf(first));
  EXPECT_EQ(xml[1], XmlOf(second));
}

// The numbers go up with the depth that the caller starts from, and the report goes on.
TEST_P(CompareDocuments, Counts_from_the_depth_of_the_caller_behind_what_the_report_holds) {
  Document first = Load(GetParam().first);
  Document second = Load(GetParam().second);
  Verdict expected = GetParam().verdict;
  for (int depth = 3; depth >= 0; --depth) {
    const std::string old = "Failed at depth " + std::to_string(depth) + ":";
    const std::size_t at = expected.report.find(old);
    if (at == std::string::npos) continue;
    expected.report.replace(at, old.size(), "Failed at depth " + std::to_string(depth + 40) + ":");
  }
  expected.report = "old" + expected.report;
  EXPECT_EQ(expected, Compare(Root(first), Root(second), 40));
}

TEST(Compare, A_child_too_many_is_reported_once_however_deep_it_hangs) {
  const int levels = 1000;
  Document first = Load(Repeat("<a>", levels) + "<b><x/></b>" + Repeat("</a>", levels));
  Document second = Load(Repeat("<a>", levels) + "<b><x/><y/></b>" + Repeat("</a>", levels));
  EXPECT_EQ(Differs("Failed at depth 1000: Node 2 has more children than Node 1\n" +
                    Dump("<b>\n  <x/>\n</b>\n", "<b>\n  <x/>\n  <y/>\n</b>\n")),
            Compare(first, second));
}

// ---- Nodes that are missing, and documents

TEST(Compare, Two_missing_nodes_are_equal) {
  EXPECT_EQ(kEqual, Compare(nullptr, nullptr));
  EXPECT_EQ((Verdict{1, "old"}), Compare(nullptr, nullptr, 1));
}

TEST(Compare, A_missing_node_differs_from_any_other) {
  Document document = Load("<a><b/></a>");
  const std::string dump = "-----\n<a>\n  <b/>\n</a>\n\n";
  for (IXMLDOMNode* node : {static_cast<IXMLDOMNode*>(document), Root(document)}) {
    SCOPED_TRACE(node->m_pszNodeName);
    EXPECT_EQ(Differs("Failed at depth 0: pNode1 NULL, pNode2 Non-NULL\n" + dump),
              Compare(nullptr, node));
    EXPECT_EQ(Differs("Failed at depth 0: pNode1 Non-NULL, pNode2 NULL\n" + dump),
              Compare(node, nullptr));
    EXPECT_EQ(Differs("oldFailed at depth 5: pNode1 NULL, pNode2 Non-NULL\n" + dump),
              Compare(nullptr, node, 5));
    EXPECT_EQ(Differs("oldFailed at depth 5: pNode1 Non-NULL, pNode2 NULL\n" + dump),
              Compare(node, nullptr, 5));
  }
}

TEST(Compare, A_document_stands_for_its_first_child) {
  Document document = Load("<a><b/></a>");
  Document empty = NewDocument();
  Document other = Load("<a><b/></a>");
  EXPECT_EQ(kEqual, Compare(document, Root(document)));
  EXPECT_EQ(kEqual, Compare(Root(document), document));
  EXPECT_EQ(kEqual, Compare(empty, nullptr));
  EXPECT_EQ(kEqual, Compare(empty, NewDocument()));
  EXPECT_EQ(Differs("Failed at depth 0: pNode1 NULL, pNode2 Non-NULL\n-----\n"
                    "<a>\n  <b/>\n</a>\n\n"),
            Compare(empty, document));
  Node(other->AddChild("c", nullptr));
  other->AddAttribute("v", "1");
  EXPECT_EQ(kEqual, Compare(document, other));
}

TEST(Compare, At_a_depth_a_document_stands_for_itself) {
  Document document = Load("<a><b/></a>");
  Document other = Load("<z><b/></z>");
  EXPECT_EQ(Differs("oldFailed at depth 1: node name mismatch, a vs z" +
                    Dump("<a>\n  <b/>\n</a>\n", "<z>\n  <b/>\n</z>\n")),
            Compare(document, other, 1));
  Node(document->AddChild("c", nullptr));
  Document same = Load("<a><b/></a>");
  EXPECT_EQ(Differs("oldFailed at depth 1: Node 1 has more children than Node 2\n" +
                    Dump("<a>\n  <b/>\n</a>\n", "<a>\n  <b/>\n</a>\n")),
            Compare(document, same, 1));
}

TEST(Compare, A_tree_is_equal_to_itself) {
  Document document = Load("<a v='1'><b>t</b></a>");
  EXPECT_EQ(kEqual, Compare(document, document));
}

// ---- What is not compared

TEST(Compare, Names_types_and_values_of_the_two_nodes_themselves_do_not_count) {
  Node first(new IXMLDOMNode(nullptr, "a", "1", NODE_ELEMENT));
  Node second(new IXMLDOMNode(nullptr, "b", "2", NODE_COMMENT));
  Node text(new IXMLDOMNode(nullptr, "#Text", "3", NODE_TEXT));
  EXPECT_EQ(kEqual, Compare(first, second));
  EXPECT_EQ(kEqual, Compare(first, text));
}

/// A parent with one child, to which the test adds.
Node ParentOf(DOMNodeType type, const char* value) {
  Node parent = NewElement(nullptr, "p");
  parent->AddChild(new IXMLDOMNode(nullptr, "n", value, type));
  return parent;
}

TEST(Compare, Values_count_for_texts_alone) {
  for (int type = NODE_INVALID; type <= NODE_NOTATION; ++type) {
    SCOPED_TRACE(type);
    Node first = ParentOf(static_cast<DOMNodeType>(type), "1");
    Node second = ParentOf(static_cast<DOMNodeType>(type), "2");
    EXPECT_EQ(type != NODE_TEXT, Compare(first, second).result);
  }
}

TEST(Compare, Attributes_and_children_count_for_all_but_texts) {
  for (int type = NODE_INVALID; type <= NODE_NOTATION; ++type) {
    SCOPED_TRACE(type);
    Node first = ParentOf(static_cast<DOMNodeType>(type), "1");
    Node second = ParentOf(static_cast<DOMNodeType>(type), "1");
    second->m_pFirstChild->AddAttribute("v", "1");
    EXPECT_EQ(type == NODE_TEXT, Compare(first, second).result);
    first->m_pFirstChild->AddAttribute("v", "1");
    Node(second->m_pFirstChild->AddChild("c", nullptr));
    EXPECT_EQ(type == NODE_TEXT, Compare(first, second).result);
  }
}

// ---- Missing names and values

TEST(Compare, A_missing_value_equals_only_a_missing_one) {
  const struct {
    const char* first;
    const char* second;
    const char* shown;
  } rows[] = {{nullptr, nullptr, nullptr},
              {nullptr, "", "(null) vs "},
              {"", nullptr, " vs (null)"},
              {"1", nullptr, "1 vs (null)"},
              {nullptr, "(null)", "(null) vs (null)"}};
  for (const auto& row : rows) {
    SCOPED_TRACE(row.shown == nullptr ? "equal" : row.shown);
    Node texts[] = {ParentOf(NODE_TEXT, row.first), ParentOf(NODE_TEXT, row.second)};
    Node attributes[] = {NewElement(nullptr, "a"), NewElement(nullptr, "a")};
    attributes[0]->AddAttribute("v", row.first);
    attributes[1]->AddAttribute("v", row.second);
    if (row.shown == nullptr) {
      EXPECT_EQ(kEqual, Compare(texts[0], texts[1]));
      EXPECT_EQ(kEqual, Compare(attributes[0], attributes[1]));
    } else {
      EXPECT_EQ(Differs(std::string("Failed at depth 0: text value mismatch, ") + row.shown +
                        Dump("<n/>\n", "<n/>\n")),
                Compare(texts[0], texts[1]));
      EXPECT_EQ(Differs(std::string("Failed at depth 0: Attribute value mismatch, ") + row.shown +
                        Dump("<a v='" + std::string(row.first ? row.first : "") + "'/>\n",
                             "<a v='" + std::string(row.second ? row.second : "") + "'/>\n")),
                Compare(attributes[0], attributes[1]));
    }
  }
}

TEST(Compare, A_missing_name_equals_only_a_missing_one) {
  Node first = ParentOf(NODE_ELEMENT, nullptr);
  Node second = ParentOf(NODE_ELEMENT, nullptr);
  first->m_pFirstChild->ClearNode(true);
  const Verdict verdict = Compare(first, second);
  EXPECT_EQ(0, verdict.result);
  EXPECT_EQ(0u, verdict.report.find("Failed at depth 0: node name mismatch, (null) vs n-----\n"));
  second->m_pFirstChild->ClearNode(true);
  EXPECT_EQ(kEqual, Compare(first, second));
}

// ---- Size

const int kCount = 100000;

/// Levels with a value at the innermost.
std::string Levels(int count, const std::string& value) {
  return Repeat("<a>", count) + "<b v='" + value + "'/>" + Repeat("</a>", count);
}

/// Siblings with a name for the last.
std::string Siblings(int count, const std::string& last) {
  return "<a>" + Repeat("<b>t</b>", count) + "<" + last + "/></a>";
}

double SecondsToCompare(const Verdict& expected, const std::string& first,
                        const std::string& second) {
  const Document documents[] = {Load(first), Load(second)};
  Verdict verdict = {0, ""};
  const double seconds = OnSmallStack([&] { verdict = Compare(documents[0], documents[1]); });
  EXPECT_EQ(expected, verdict);
  return seconds;
}

TEST(CompareSize, Deep_trees_need_no_stack) {
  ExpectLinearTime(kCount, [](int count) {
    return SecondsToCompare(kEqual, Levels(count, "1"), Levels(count, "1"));
  });
  ExpectLinearTime(kCount, [](int count) {
    return SecondsToCompare(
        Differs("Failed at depth " + std::to_string(count) + ": Attribute value mismatch, 1 vs 2" +
                Dump("<b v='1'/>\n", "<b v='2'/>\n")),
        Levels(count, "1"), Levels(count, "2"));
  });
}

TEST(CompareSize, Wide_trees_take_no_longer_than_their_size) {
  ExpectLinearTime(kCount, [](int count) {
    return SecondsToCompare(kEqual, Siblings(count, "y"), Siblings(count, "y"));
  });
  ExpectLinearTime(kCount, [](int count) {
    return SecondsToCompare(
        Differs("Failed at depth 0: node name mismatch, y vs z" + Dump("<y/>\n", "<z/>\n")),
        Siblings(count, "y"), Siblings(count, "z"));
  });
}

TEST(CompareSize, Long_texts_are_reported_whole) {
  const std::string text(100000, 't');
  const Document first = Load("<a>" + text + "</a>");
  const Document second = Load("<a>" + text + "u</a>");
  EXPECT_EQ(Differs("Failed at depth 0: text value mismatch, " + text + " vs " + text + "u" +
                    Dump("<#Text/>\n", "<#Text/>\n")),
            Compare(first, second));
}

}  // namespace
