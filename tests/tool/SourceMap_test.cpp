#include <gtest/gtest.h>
#include <tools/document/DocumentOrder.h>
#include <tools/document/SourceMap.h>
#include <xmldom/diag/Compare.h>
#include <xmldom/support/MemFile.h>
#include <xmldom/xmldom.h>

#include <cstring>
#include <ostream>
#include <string>

#include "tool/Loading.h"
#include "tool/RandomText.h"

// Where the nodes of a tree stand in the text that it was loaded from.

namespace {

using tool::NextNode;
using tool::SourceMap;
using tool::SourcePlace;

std::string Cut(const std::string& text, std::size_t begin, std::size_t end) {
  return text.substr(begin, end - begin);
}

/// The place of a node in brackets, its inner part in further ones, and how it came there.
std::string Show(const std::string& text, const SourcePlace& place) {
  std::string shown = "[" + Cut(text, place.begin, place.innerBegin) + "[" +
                      Cut(text, place.innerBegin, place.innerEnd) + "]" +
                      Cut(text, place.innerEnd, place.end) + "]";
  if (place.origin == SourcePlace::kFromEntity) shown += " entity";
  if (place.origin == SourcePlace::kFromDocumentType) shown += " default";
  if (place.holdsCharacters) shown += " characters";
  if (place.keepsSpace) shown += " preserve";
  return shown;
}

/// The places of all nodes below the document in their order, a line each.
std::string Places(const std::string& text) {
  const XMLPtr<IXMLDOMDocument2> document = Load(text);
  const SourceMap map(text, *document);
  std::string lines;
  const IXMLDOMNode* root = document->m_pFirstChild;
  for (const IXMLDOMNode* node = root; node != nullptr; node = NextNode(node, root)) {
    lines += std::string(node->m_pszNodeName) + " " + Show(text, *map.Find(node)) + "\n";
    for (const IXMLDOMNode* attribute = node->m_pFirstAttribute; attribute != nullptr;
         attribute = attribute->m_pNextSibling) {
      lines += std::string("@") + attribute->m_pszNodeName + " " +
               Show(text, *map.Find(attribute)) + "\n";
    }
  }
  return lines;
}

struct Row {
  std::string text;
  const char* places;
};

/// How a row is named when its case fails.
void PrintTo(const Row& row, std::ostream* out) { *out << row.text; }

class SourceMapRows : public testing::TestWithParam<Row> {};

INSTANTIATE_TEST_SUITE_P(
    Texts, SourceMapRows,
    testing::Values(
        Row{"<a><b/><c></c><d >x</d ></a>\n",
            "a [<a>[<b/><c></c><d >x</d >]</a>]\nb [<b/>[]]\nc [<c>[]</c>]\n"
            "d [<d >[x]</d >] characters\n#Text [[x]]\n"},
        Row{"<a  b = \"1'\"\n c='>\"=/>' d=''/>",
            "a [<a  b = \"1'\"\n c='>\"=/>' d=''/>[]]\n@b [b = \"[1']\"]\n@c [c='[>\"=/>]']\n"
            "@d [d='[]']\n"},
        Row{"<a>\n one<b/>\n two \n<c/> three </a>",
            "a [<a>[\n one<b/>\n two \n<c/> three ]</a>] characters\n"
            "#Text [[ one<b/>\n two \n<c/> three ]]\nb [<b/>[]]\nc [<c/>[]]\n"},
        Row{"<!-- o --><a><!-- c --><b/><?p i?></a>",
            "a [<a>[<!-- c --><b/><?p i?>]</a>]\n#Text [[<!-- c --><b/><?p i?>]]\nb [<b/>[]]\n"},
        Row{"<a> <![CDATA[<b/>&]]> </a>",
            "a [<a>[ <![CDATA[<b/>&]]> ]</a>] characters\n#Text [[<![CDATA[<b/>&]]>]]\n"},
        Row{"<a b='&lt;&#10;'>&#32;</a>",
            "a [<a b='&lt;&#10;'>[&#32;]</a>] characters\n@b [b='[&lt;&#10;]']\n#Text [[&#32;]]\n"},
        Row{"<!DOCTYPE a [<!ENTITY e '<b x=\"1\">t</b>'>]><a>&e;<b/>&e;</a>",
            "a [<a>[&e;<b/>&e;]</a>]\nb [[&e;]] entity characters\n@x [[&e;]] entity\n"
            "#Text [[&e;]] entity\nb [<b/>[]]\nb [[&e;]] entity characters\n@x [[&e;]] entity\n"
            "#Text [[&e;]] entity\n"},
        Row{"<!DOCTYPE a [<!ENTITY e '<b/>'><!ENTITY f '<c>&e;</c>'>]><a>x&f;y</a>",
            "a [<a>[x&f;y]</a>] characters\n#Text [[x&f;y]]\nc [[&f;]] entity\nb [[&f;]] entity\n"},
        Row{"<!DOCTYPE a [<!ENTITY e 'long text'>]><a>&e;</a>",
            "a [<a>[&e;]</a>] characters\n#Text [[&e;]] entity\n"},
        Row{"<!DOCTYPE a [<!ENTITY e SYSTEM 'x'>]><a>&e;</a>",
            "a [<a>[&e;]</a>] characters\n#Text [[&e;]]\n"},
        Row{"<!DOCTYPE a [<!ATTLIST a b CDATA '1' c CDATA '2'>]><a c='3'/>",
            "a [<a c='3'/>[]]\n@c [c='[3]']\n@b [[<a c='3'/>]] default\n"},
        Row{"\xEF\xBB\xBF<a>x</a>", "a [<a>[x]</a>] characters\n#Text [[x]]\n"},
        Row{"<a>\r\n  <b>\r\nx\r\n</b>\r\n</a>\r\n",
            "a [<a>[\r\n  <b>\r\nx\r\n</b>\r\n]</a>]\nb [<b>[\r\nx\r\n]</b>] characters\n"
            "#Text [[x]]\n"},
        Row{"<?xml version='1.0' encoding='ISO-8859-1'?><\xe9 \xe8='\xe7'>\xff</\xe9>",
            "\xc3\xa9 [<\xe9 \xe8='\xe7'>[\xff]</\xe9>] characters\n@\xc3\xa8 [\xe8='[\xe7]']\n"
            "#Text [[\xff]]\n"},
        Row{"<a xml:space='preserve'><b xml:space='default'/><c/></a>",
            "a [<a xml:space='preserve'>[<b xml:space='default'/><c/>]</a>] preserve\n"
            "@xml:space [xml:space='[preserve]']\nb [<b xml:space='default'/>[]]\n"
            "@xml:space [xml:space='[default]']\nc [<c/>[]] preserve\n"}));

TEST_P(SourceMapRows, Tell_the_place_of_every_node) {
  EXPECT_EQ(GetParam().places, Places(GetParam().text));
}

TEST(SourceMap, Document_has_the_whole_text) {
  const std::string text = "<?xml version='1.0'?><a/>\n";
  const XMLPtr<IXMLDOMDocument2> document = Load(text);
  const SourceMap map(text, *document);
  EXPECT_EQ("[[" + text + "]]", Show(text, *map.Find(document.Get())));
}

TEST(SourceMap, Node_of_another_tree_has_no_place) {
  const std::string text = "<a/>";
  const XMLPtr<IXMLDOMDocument2> document = Load(text);
  const XMLPtr<IXMLDOMDocument2> other = Load(text);
  const SourceMap map(text, *document);
  EXPECT_EQ(nullptr, map.Find(other->m_pFirstChild));
}

TEST(SourceMap, Document_type_is_found) {
  const auto typeOf = [](const std::string& text) {
    const XMLPtr<IXMLDOMDocument2> document = Load(text);
    const tool::SourceRange range = SourceMap(text, *document).DocumentType();
    return Cut(text, range.begin, range.end);
  };
  EXPECT_EQ("", typeOf("<!-- <!DOCTYPE x> --><a/>"));
  EXPECT_EQ("<!DOCTYPE a>", typeOf("<?xml version='1.0'?>\n<!DOCTYPE a>\n<a/>"));
  EXPECT_EQ("<!DOCTYPE a [<!ENTITY e '>'>\n] >", typeOf("<!DOCTYPE a [<!ENTITY e '>'>\n] ><a/>"));
  EXPECT_EQ("<!DOCTYPE a PUBLIC 'x' \"]>\">", typeOf("<!DOCTYPE a PUBLIC 'x' \"]>\"><a/>"));
}

TEST(SourceMap, Tree_that_differs_from_the_text_is_refused) {
  const struct {
    const char* tree;
    const char* text;
    std::size_t offset;
  } rows[] = {{"<a/>", "<b/>", 0},
              {"<a><b/></a>", "<a></a>", 3},
              {"<a/>", "<a><b/></a>", 3},
              {"<a b='1'/>", "<a/>", 0},
              {"<a/>", "<a b='1'/>", 0},
              {"<a b='1'/>", "<a c='1'/>", 0},
              {"<a>x</a>", "<a> </a>", 4},
              {"<a/>", "<a>x</a>", 4},
              {"<a><b/>x</a>", "<a>x<b/></a>", 4},
              {"<a/>", "<a>", 3}};
  for (const auto& row : rows) {
    const XMLPtr<IXMLDOMDocument2> document = Load(row.tree);
    try {
      const SourceMap map(row.text, *document);
      ADD_FAILURE() << row.tree << " " << row.text;
    } catch (const tool::SourceMapError& error) {
      EXPECT_EQ(row.offset, error.Offset()) << row.tree << " " << row.text << ": " << error.what();
    }
  }
}

std::size_t CountNodes(const IXMLDOMNode* root) {
  std::size_t count = 0;
  for (const IXMLDOMNode* node = root; node != nullptr; node = NextNode(node, root)) {
    ++count;
    for (auto attribute = node->m_pFirstAttribute; attribute != nullptr;
         attribute = attribute->m_pNextSibling) {
      ++count;
    }
  }
  return count;
}

TEST(SourceMap, Takes_at_most_48_bytes_a_node) {
  std::string deep;
  for (int i = 0; i < 3000; ++i) deep += "<a b='1'>";
  for (int i = 0; i < 3000; ++i) deep += "</a>";
  std::string wide = "<a>";
  for (std::size_t size : {1, 30, 100, 384, 385, 800, 3000, 20000}) {
    while (wide.size() < 8 * size) wide += "<b>x</b>";
    for (const std::string& text : {wide + "</a>", deep}) {
      const XMLPtr<IXMLDOMDocument2> document = Load(text);
      const SourceMap map(text, *document);
      EXPECT_GE(48 * (CountNodes(document->m_pFirstChild) + 1), map.Size()) << text.size();
    }
  }
}

TEST(SourceMap, Bytes_of_each_element_make_the_same_element) {
  RandomText random(20261122);
  int compared = 0;
  for (int i = 0; i < 10000; ++i) {
    const std::string text = random.Document();
    const XMLPtr<IXMLDOMDocument2> document = TryLoad(text);
    if (document == nullptr) continue;
    const SourceMap map(text, *document);
    const bool isPlain = text.find("<!DOCTYPE") == text.npos && text.find("8859") == text.npos;
    const IXMLDOMNode* root = document->m_pFirstChild;
    for (const IXMLDOMNode* node = root; node != nullptr; node = NextNode(node, root)) {
      const SourcePlace* place = map.Find(node);
      ASSERT_NE(nullptr, place) << text;
      ASSERT_LE(place->begin, place->innerBegin) << text;
      ASSERT_LE(place->innerBegin, place->innerEnd) << text;
      ASSERT_LE(place->innerEnd, place->end) << text;
      ASSERT_LE(place->end, text.size()) << text;
      if (!isPlain || node->m_eNodeType != NODE_ELEMENT) continue;
      const XMLPtr<IXMLDOMDocument2> alone = Load(Cut(text, place->begin, place->end));
      CMemFile report(1024);
      ASSERT_TRUE(CompareXMLNodes(const_cast<IXMLDOMNode*>(node), alone->m_pFirstChild, report, 0))
          << text << report.GetAsStr();
      ++compared;
    }
  }
  EXPECT_LT(5000, compared);
}

}  // namespace
