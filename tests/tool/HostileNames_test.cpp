#include <gtest/gtest.h>
#include <tools/document/DocumentShape.h>
#include <tools/document/ExactPaths.h>

#include <cstdint>
#include <ctime>
#include <functional>
#include <ostream>
#include <string>
#include <unordered_set>
#include <vector>

#include "harness/LinearTime.h"
#include "tool/Loading.h"

// What looks names up must not become slow for names that somebody has chosen. A hash table without
// a secret does: all names can be chosen for one and the same of its chains.

namespace {

// Quadratic work grows by the square of 16 between these, linear work by about 16.
const int kFew = 250;
const int kMany = 4000;
const double kMostGrowth = 60;

typedef std::size_t (*Hash)(const std::string& name);

std::size_t HashOfLibrary(const std::string& name) { return std::hash<std::string>()(name); }

/// FNV-1a of a zero byte, of another byte and of a name.
std::size_t FnvHash(std::uint64_t second, const std::string& name) {
  const std::uint64_t prime = 1099511628211u;
  std::uint64_t hash = ((14695981039346656037u * prime) ^ second) * prime;
  for (const char c : name) hash = (hash ^ static_cast<unsigned char>(c)) * prime;
  return static_cast<std::size_t>(hash);
}

std::size_t FnvHashBehind0(const std::string& name) { return FnvHash(0, name); }
std::size_t FnvHashBehind1(const std::string& name) { return FnvHash(1, name); }

/// Names that a hash table of so many elements has all in one chain.
std::vector<std::string> NamesInOneChain(int count, Hash hash) {
  std::unordered_set<int> table;
  for (int i = 0; i < count; ++i) table.insert(i);
  std::vector<std::string> names;
  for (std::string name = "aaaaaa"; names.size() < static_cast<std::size_t>(count);) {
    if (hash(name) % table.bucket_count() == 0) names.push_back(name);
    std::size_t at = name.size() - 1;
    while (name[at] == 'z') name[at--] = 'a';
    ++name[at];
  }
  return names;
}

std::string Elements(const std::vector<std::string>& names) {
  std::string text = "<r>";
  for (const std::string& name : names) text += "<" + name + "/>";
  return text + "</r>";
}

std::string Attributes(const std::vector<std::string>& names) {
  std::string text = "<r";
  for (const std::string& name : names) text += " " + name + "=''";
  return text + "/>";
}

std::size_t ElementsInShape(IXMLDOMNode* root) {
  return tool::DocumentShape(root, 2).Elements().size() - 1;
}

std::size_t AttributesInShape(IXMLDOMNode* root) {
  return tool::DocumentShape(root, 1).Elements()[0].attributes.size();
}

std::size_t Paths(IXMLDOMNode* root) {
  tool::ExactPaths paths;
  std::size_t count = 0;
  for (const IXMLDOMNode* child = root->m_pFirstChild; child != nullptr;
       child = child->m_pNextSibling) {
    count += paths.PathTo(child) == "/r/" + std::string(child->m_pszNodeName) ? 1 : 0;
  }
  return count;
}

struct Row {
  const char* name;
  Hash hash;
  std::string (*text)(const std::vector<std::string>& names);
  std::size_t (*work)(IXMLDOMNode* root);
};

void PrintTo(const Row& row, std::ostream* out) { *out << row.name; }

class HostileNames : public testing::TestWithParam<Row> {};

TEST_P(HostileNames, Are_looked_up_in_linear_time) {
  const Row& row = GetParam();
  ExpectGrowthBelow(kMostGrowth, kFew, kMany, [&row](int count) {
    const XMLPtr<IXMLDOMDocument2> document = Load(row.text(NamesInOneChain(count, row.hash)));
    const std::clock_t begin = std::clock();
    EXPECT_EQ(static_cast<std::size_t>(count), row.work(document->m_pFirstChild));
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
  });
}

INSTANTIATE_TEST_SUITE_P(
    Rows, HostileNames,
    testing::Values(
        Row{"shape of elements", FnvHashBehind0, Elements, ElementsInShape},
        Row{"shape of elements, another hash", HashOfLibrary, Elements, ElementsInShape},
        Row{"shape of attributes", FnvHashBehind1, Attributes, AttributesInShape},
        Row{"shape of attributes, another hash", HashOfLibrary, Attributes, AttributesInShape},
        Row{"paths", HashOfLibrary, Elements, Paths}));

}  // namespace
