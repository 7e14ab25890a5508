#include <tools/document/Differences.h>

#include <gtest/gtest.h>
#include <xmldom/diag/Compare.h>
#include <xmldom/support/MemFile.h>

#include <string>

#include "tool/Loading.h"
#include "tool/RandomText.h"

// What differs between two documents. Where it stands in the files is in diff_test.bash.

namespace {

using tool::Difference;
using tool::FindDifferences;

/// The differences as "FIRST | SECOND", each with a line feed behind it.
std::string Differences(const std::string& first, const std::string& second, bool all) {
  const XMLPtr<IXMLDOMDocument2> documents[] = {Load(first), Load(second)};
  std::string text;
  for (const Difference& difference : FindDifferences(*documents[0], *documents[1], all)) {
    text += difference.first.description + " | " + difference.second.description + "\n";
  }
  return text;
}

struct Row {
  const char* first;
  const char* second;
  const char* differences;
};

class DifferencesRows : public testing::TestWithParam<Row> {};

INSTANTIATE_TEST_SUITE_P(
    Rows, DifferencesRows,
    testing::Values(Row{"<a/>", "<a></a>", ""},
                    Row{"<a b='1'> <c>x</c></a>", "<a  b='1'><c>x</c>\n</a>", ""},
                    Row{"<a/>", "<b/>", "element <a> | element <b>\n"},
                    Row{"<a>x</a>", "<a>y</a>", "text 'x' | text 'y'\n"},
                    Row{"<a>x</a>", "<a/>", "text 'x' | no text\n"},
                    Row{"<a>x</a>", "<a><b/></a>", "text 'x' | element <b>\n"},
                    Row{"<a b='1'/>", "<a b='2'/>", "attribute b='1' | attribute b='2'\n"},
                    Row{"<a b='1'/>", "<a c='1'/>", "attribute b='1' | attribute c='1'\n"},
                    Row{"<a b='1'/>", "<a/>", "attribute b='1' | no attribute\n"},
                    Row{"<a b='1' c='2'/>", "<a c='2' d='3'/>",
                        "attribute b='1' | no attribute\nno attribute | attribute d='3'\n"},
                    Row{"<a b='1' c='2'/>", "<a c='2' b='1'/>",
                        "attribute b='1' | no attribute\nno attribute | attribute b='1'\n"},
                    Row{"<a><b/><c/></a>", "<a><c/></a>", "element <b> | no element\n"},
                    Row{"<a><c/></a>", "<a><b/><c/></a>", "no element | element <b>\n"},
                    Row{"<a><b>1</b><c>2</c></a>", "<a><d>1</d><c>3</c></a>",
                        "element <b> | element <d>\ntext '2' | text '3'\n"},
                    Row{"<a><b><c/></b><d/></a>", "<a><b/><d/><e/></a>",
                        "element <c> | no element\nno element | element <e>\n"}));

TEST_P(DifferencesRows, Are_all_found) {
  const Row& row = GetParam();
  const std::string expected = row.differences;
  EXPECT_EQ(expected, Differences(row.first, row.second, true));
  EXPECT_EQ(expected.substr(0, expected.find('\n') + 1), Differences(row.first, row.second, false));
}

TEST(Differences, Are_found_in_the_documents_that_the_library_finds_different) {
  RandomText random(7);
  std::string before = "<a/>";
  int equal = 0;
  int different = 0;
  for (int round = 0; round < 2000; ++round) {
    const std::string text = random.Document();
    // Every other time, a copy with one byte changed: most of those are well-formed too.
    std::string other = round % 2 ? before : text;
    if (round % 4 == 0 && !other.empty())
      other[static_cast<std::size_t>(round) % other.size()] = 'e';
    before = text;
    const XMLPtr<IXMLDOMDocument2> first = TryLoad(text);
    const XMLPtr<IXMLDOMDocument2> second = TryLoad(other);
    if (first == nullptr || second == nullptr) continue;
    const bool hasSameRoot =
        std::string(first->m_pFirstChild->m_pszNodeName) == second->m_pFirstChild->m_pszNodeName;
    CMemFile report(4096);
    const bool isEqual = hasSameRoot && CompareXMLNodes(first.Get(), second.Get(), report, 0) != 0;
    ASSERT_EQ(isEqual, FindDifferences(*first, *second, false).empty()) << text << "\n" << other;
    ASSERT_EQ(isEqual, FindDifferences(*first, *second, true).empty()) << text << "\n" << other;
    ++(isEqual ? equal : different);
  }
  EXPECT_LT(100, equal);
  EXPECT_LT(100, different);
}

}  // namespace
