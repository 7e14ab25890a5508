#include <gtest/gtest.h>
#include <xmldom/text/NodeXml.h>
#include <xmldom/xmldom.h>

#include <string>

#include "plain/PlainNodeXml.h"
#include "plain/PlainWriter.h"
#include "soak/Cases.h"
#include "soak/Forest.h"

namespace {

const char* const kTemplates[] = {nullptr, "<row/>", "<row a='/'></row>", "<row", "",
                                  ">x",    "<r / >"};

/// Writes any node with any arguments.
std::string WriteAnyNode(Random& random, Observer& observer, Forest& forest) {
  const IXMLDOMNode* node = random.OneIn(2) ? forest.Document(0) : AnyNode(forest, random);
  IXMLDOMNode* paged = random.OneIn(3) ? nullptr : AnyNode(forest, random);
  const int depth = random.OneIn(3) ? random.Below(5) - 1 : 0;
  const int first = random.Below(6) - 1;
  const int count = random.Below(6) - 1;
  const int currentPage = random.Below(4) - 1;
  const int numPages = random.Below(4) - 1;
  const char* padTemplate = random.OneOf(kTemplates);
  const bool masked = random.OneIn(4);
  const bool indexed = random.OneIn(4);
  const int index = random.Below(1200);
  g_bDispAddr = random.OneIn(4);
  const std::string before = forest.State();
  const auto run = [&](bool library) {
    return observer.Observe([&](std::string& results) {
      CMemFile out(8);
      const BufferResult written(out, results);
      observer.LookAtEvents([&] { return std::string(out.GetAsStr()); });
      if (library) {
        node->GetXMLHelper(out, depth, paged, first, count, currentPage, numPages, padTemplate,
                           masked, indexed, index);
      } else {
        plain::GetXMLHelper(node, out, depth, paged, first, count, currentPage, numPages,
                            padTemplate, masked, indexed, index);
      }
    });
  };
  const std::string library = run(true);
  const std::string after = forest.State();
  const std::string same = run(false);
  g_bDispAddr = false;
  return Difference(library + after, same + before);
}

std::string WriteOwned(Random random, Observer& observer) {
  ForestShape shape = AnySmallShape(random);
  shape.changesOwners = false;
  shape.variesLayout = true;
  Forest forest(random, shape);
  random.Next();
  // Owners that differ, none missing.
  for (int i = random.Below(4); i > 0; --i) {
    forest.At(2 + random.Below(forest.Count() - 2))->m_pOwnerDocument =
        forest.Document(random.Below(2));
  }
  return WriteAnyNode(random, observer, forest);
}

std::string WriteUsualLayout(Random random, Observer& observer) {
  ForestShape shape;
  shape.nodes = 2 + random.Below(20);
  shape.changesByHand = random.Below(10);
  Forest forest(random, shape);
  random.Next();
  return WriteAnyNode(random, observer, forest);
}

std::string WriteWithoutOwners(Random random, Observer& observer) {
  ForestShape shape;
  shape.nodes = 2 + random.Below(20);
  shape.changesByHand = random.Below(10);
  shape.variesLayout = true;
  Forest forest(random, shape);
  random.Next();
  return WriteAnyNode(random, observer, forest);
}

/// Pieces of markup in any order, as an application can store them in a text.
std::string MakeLoadable(Random random, Observer&) {
  static const char* const kPieces[] = {"<",         ">",    "]",  "]]",  "]]>", "<a",   "</a>",
                                        "<![CDATA[", "<!--", "--", "-->", "<?",  "?>",   "'",
                                        "\"",        "&gt;", "\t", "\n",  "\r",  "text", " "};
  std::string xml;
  for (int i = random.Below(20); i > 0; --i) xml += random.OneOf(kPieces);
  return Difference(xmldom::LoadableXml(xml.c_str(), xml.c_str() + xml.size()),
                    plain::LoadableXml(xml));
}

TEST(SoakWriting, What_has_to_be_loaded_has_references_where_a_plain_reading_puts_them) {
  RunCases("loadable writing", MakeLoadable);
}

TEST(SoakWriting, Nodes_of_documents_are_written_as_by_the_plain_writer) {
  RunCases("writing", WriteOwned);
}

TEST(SoakWriting, Nodes_with_and_without_owner_are_written_alike_in_the_usual_layout) {
  RunCases("writing in the usual layout", WriteUsualLayout);
}

TEST(SoakWriting, A_node_without_owner_gives_everything_the_usual_layout) {
  RunCases("writing without owners", WriteWithoutOwners);
}

}  // namespace
