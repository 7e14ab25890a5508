#include <gtest/gtest.h>

#include <new>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "harness/AllocationFailure.h"
#include "harness/LogCapture.h"
#include "harness/Trees.h"

namespace {

struct Query {
  std::string name;
  std::string predicates;
};

Query Split(const char* query) {
  char* name = nullptr;
  char* predicates = nullptr;
  EXPECT_EQ(1, NewDocument()->ParseXPathQuery(query, &name, &predicates));
  return Query{TakeHeap(name), TakeHeap(predicates)};
}

/// What ParseXPathSubquery hands out.
struct Subquery {
  bool hasPath;
  std::string elementName;
  std::string attributeName;
  std::string value;
  bool quoted;
};

bool operator==(const Subquery& a, const Subquery& b) {
  return a.hasPath == b.hasPath && a.elementName == b.elementName &&
         a.attributeName == b.attributeName && a.value == b.value && a.quoted == b.quoted;
}

std::ostream& operator<<(std::ostream& out, const Subquery& s) {
  return out << "{" << s.hasPath << ", " << s.elementName << ", " << s.attributeName << ", "
             << s.value << ", " << s.quoted << "}";
}

Subquery SplitSubquery(const char* subquery) {
  bool hasPath = true;
  bool quoted = true;
  char* element = nullptr;
  char* attribute = nullptr;
  char* value = nullptr;
  EXPECT_EQ(1, NewDocument()->ParseXPathSubquery(subquery, &hasPath, &element, &attribute, &value,
                                                 &quoted));
  return Subquery{hasPath, TakeHeap(element), TakeHeap(attribute), TakeHeap(value), quoted};
}

}  // namespace

TEST(XMLNodeStep, ParseXPathQuery_cuts_at_the_first_bracket) {
  const struct {
    const char* query;
    const char* name;
    const char* predicates;
  } rows[] = {
      {"item", "item", "(null)"},
      {"item[@a='1'] [b=2]", "item", "[@a='1'] [b=2]"},
      {"item [b=2]", "item ", "[b=2]"},
      {"[x]", "", "[x]"},
      {"item[", "item", "["},
      {"item]x[", "item]x", "["},
      {"", "", "(null)"},
      {"*", "*", "(null)"},
      {"..", "..", "(null)"},
      {"\xc3\xa9[\x01", "\xc3\xa9", "[\x01"},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.query);
    const Query query = Split(row.query);
    EXPECT_EQ(row.name, query.name);
    EXPECT_EQ(row.predicates, query.predicates);
  }
}

TEST(XMLNodeStep, ParseXPathQuery_copies_a_long_step) {
  const std::string name(100000, 'n');
  const std::string predicates = "[" + std::string(100000, 'p');
  const Query query = Split((name + predicates).c_str());
  EXPECT_EQ(name, query.name);
  EXPECT_EQ(predicates, query.predicates);
}

TEST(XMLNodeStep, ParseXPathQuery_refuses_null_arguments_and_hands_nothing_out) {
  Document document = NewDocument();
  char name[] = "name";
  char predicates[] = "predicates";
  for (int missing = 0; missing < 3; ++missing) {
    SCOPED_TRACE(missing);
    char* outName = name;
    char* outPredicates = predicates;
    LogCapture log;
    EXPECT_EQ(0, document->ParseXPathQuery(missing == 0 ? nullptr : "a[b=1]",
                                           missing == 1 ? nullptr : &outName,
                                           missing == 2 ? nullptr : &outPredicates));
    EXPECT_EQ(std::vector<LoggedEvent>{Event(
                  18, 3, "IXMLDOMNode::ParseXPathQuery - called with NULL query or name")},
              log.Events());
    EXPECT_EQ(name, outName);
    EXPECT_EQ(predicates, outPredicates);
  }
}

TEST(XMLNodeStep, ParseXPathQuery_hands_nothing_out_when_memory_is_out) {
  if (!AllocationFailure::ReachesMalloc()) GTEST_SKIP() << "malloc cannot be made to fail";
  Document document = NewDocument();
  for (int allowed = 0; allowed < 2; ++allowed) {
    SCOPED_TRACE(allowed);
    char before[] = "before";
    char* name = before;
    char* predicates = before;
    bool isRefused = false;
    const long blocks = HeapBlocks();
    try {
      const AllocationFailure limit(allowed);
      document->ParseXPathQuery("a[b=1]", &name, &predicates);
    } catch (const std::bad_alloc&) {
      isRefused = true;
    }
    EXPECT_TRUE(isRefused);
    EXPECT_EQ(nullptr, name);
    EXPECT_EQ(nullptr, predicates);
    EXPECT_EQ(blocks, HeapBlocks());
  }
}

TEST(XMLNodeStep, ParseXPathSubquery_reads_an_element_with_its_path) {
  const std::vector<std::pair<const char*, Subquery>> rows = {
      {"n='v'", {false, "n", "(null)", "v", true}},
      {"a/b='v'", {true, "a/b", "(null)", "v", true}},
      {"/b='v'", {true, "/b", "(null)", "v", true}},
      {"n", {false, "n", "(null)", "(null)", false}},
      {"a/b", {true, "a/b", "(null)", "(null)", false}},
      {"a/", {true, "a/", "(null)", "(null)", false}},
      {"", {false, "", "(null)", "(null)", false}},
      {"=v", {false, "", "(null)", "v", false}},
      {"n[x=1", {false, "n[x", "(null)", "1", false}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.first);
    EXPECT_EQ(row.second, SplitSubquery(row.first));
  }
}

TEST(XMLNodeStep, ParseXPathSubquery_reads_an_attribute_without_its_path) {
  const std::vector<std::pair<const char*, Subquery>> rows = {
      {"@id=7", {false, "(null)", "id", "7", false}},
      {"x/@id=7", {true, "(null)", "id", "7", false}},
      {"a/b/@id='7'", {true, "(null)", "id", "7", true}},
      {"@id", {false, "(null)", "id", "(null)", false}},
      {"x/@id", {true, "(null)", "id", "(null)", false}},
      {"@", {false, "(null)", "", "(null)", false}},
      {"@=v", {false, "(null)", "", "v", false}},
      {"x='1'/@id=7", {true, "(null)", "id", "7", false}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.first);
    EXPECT_EQ(row.second, SplitSubquery(row.first));
  }
}

TEST(XMLNodeStep, ParseXPathSubquery_ends_a_quoted_value_at_either_quote) {
  const std::vector<std::pair<const char*, Subquery>> rows = {
      {"@id='a\"b'", {false, "(null)", "id", "a", true}},
      {"n=\"it's\"", {false, "n", "(null)", "it", true}},
      {"n='v'tail", {false, "n", "(null)", "v", true}},
      {"n=''", {false, "n", "(null)", "", true}},
      {"n='", {false, "n", "(null)", "", true}},
      {"n='open", {false, "n", "(null)", "open", true}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.first);
    EXPECT_EQ(row.second, SplitSubquery(row.first));
  }
}

TEST(XMLNodeStep, ParseXPathSubquery_takes_everything_behind_the_sign_as_unquoted_value) {
  const std::vector<std::pair<const char*, Subquery>> rows = {
      {"n=5 ", {false, "n", "(null)", "5 ", false}},
      {"n= 'v'", {false, "n", "(null)", " 'v'", false}},
      {"n=1=2", {false, "n", "(null)", "1=2", false}},
      {"n=", {false, "n", "(null)", "", false}},
      {"n=it's", {false, "n", "(null)", "it's", false}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.first);
    EXPECT_EQ(row.second, SplitSubquery(row.first));
  }
}

TEST(XMLNodeStep, ParseXPathSubquery_counts_a_slash_inside_quotes_too) {
  EXPECT_EQ((Subquery{true, "n", "(null)", "a/b", true}), SplitSubquery("n='a/b'"));
  EXPECT_EQ((Subquery{true, "(null)", "b'", "(null)", false}), SplitSubquery("n='a/@b'"));
}

TEST(XMLNodeStep, ParseXPathSubquery_refuses_null_arguments_silently_and_hands_nothing_out) {
  Document document = NewDocument();
  char kept[] = "kept";
  for (int missing = 0; missing < 6; ++missing) {
    SCOPED_TRACE(missing);
    bool hasPath = true;
    bool quoted = true;
    char* element = kept;
    char* attribute = kept;
    char* value = kept;
    LogCapture log;
    EXPECT_EQ(0, document->ParseXPathSubquery(
                     missing == 0 ? nullptr : "n=1", missing == 1 ? nullptr : &hasPath,
                     missing == 2 ? nullptr : &element, missing == 3 ? nullptr : &attribute,
                     missing == 4 ? nullptr : &value, missing == 5 ? nullptr : &quoted));
    EXPECT_TRUE(log.Events().empty());
    EXPECT_TRUE(hasPath && quoted && element == kept && attribute == kept && value == kept);
  }
}
