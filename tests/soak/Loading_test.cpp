#include <gtest/gtest.h>
#include <xmldom/parse/XMLSax.h>
#include <xmldom/xmldom.h>

#include <vector>

#include "harness/CompactXml.h"
#include "harness/LoadOutcome.h"
#include "harness/Trees.h"
#include "plain/PlainBuilder.h"
#include "plain/PlainSelection.h"
#include "plain/PlainText.h"
#include "soak/Cases.h"
#include "soak/Forest.h"
#include "soak/RandomDocuments.h"

namespace {

ForestShape TwoEmptyDocuments() {
  ForestShape shape;
  shape.nodes = 0;
  return shape;
}

std::string DescribeError(IXMLDOMDocument2* document) {
  Ref<IXMLDOMParseError> error;
  document->get_parseError(error.Out());
  return std::to_string(error->m_lErrorCode) + ", " + std::to_string(error->m_lFilePos) + ", " +
         std::to_string(error->m_lLine) + ", " + std::to_string(error->m_lLinePos) + ", " +
         Text(error->m_bstrReason) + ", <" + Text(error->m_bstrSrcText) + ">\n";
}

/// Loads one or two texts into one document.
std::string LoadTexts(const std::string* texts, int count, bool formatted, Observer& observer) {
  Forest one(Random(0), TwoEmptyDocuments());
  Forest two(Random(0), TwoEmptyDocuments());
  for (Forest* forest : {&one, &two}) {
    forest->Document(0)->m_uFlags = formatted ? IXMLDOMDocument2::FORMATTED_LAYOUT : 0;
  }
  const std::string library = observer.Observe([&](std::string& results) {
    for (int i = 0; i < count; ++i) {
      const bool parsed = one.Document(0)->loadXML(texts[i].c_str()) == VARIANT_TRUE;
      results += parsed ? "parsed " : "refused ";
      const CNodeStackElt* open = one.Document(0)->m_pSax->m_pNodeStack->m_pTop;
      int openElements = 0;
      for (; open != nullptr; open = open->m_pNext) ++openElements;
      results += std::to_string(openElements) + " open " + DescribeError(one.Document(0));
      // Nodes are compared, the builder and its stack have counters that are checked here.
      results += std::to_string(CXMLSax::m_iObjCount) + std::to_string(CNodeStack::m_iObjCount) +
                 std::to_string(CNodeStackElt::m_iObjCount == openElements) + "\n";
    }
    delete one.Document(0)->m_pSax;
    one.Document(0)->m_pSax = nullptr;
  });
  const std::string plainly = observer.Observe([&](std::string& results) {
    for (int i = 0; i < count; ++i) {
      plain::Builder builder(two.Document(0));
      results += builder.Load(texts[i]) ? "parsed " : "refused ";
      results += std::to_string(builder.OpenElements()) + " open " + builder.DescribeError();
      results += "111\n";
    }
  });
  return Difference(library + one.State(), plainly + two.State());
}

std::string LoadRandomly(Random random, Observer& observer) {
  const int count = 1 + random.Below(2);
  std::string texts[2];
  for (std::string& text : texts) {
    text = random.OneIn(200) ? ManyEntities(random) : AnyDocument(random);
  }
  const std::string difference = LoadTexts(texts, count, !random.OneIn(4), observer);
  return difference.empty() ? "" : texts[0] + "\n" + texts[1] + "\n" + difference;
}

/// Loads a text or a file and asks for the error before and after its parser is released.
std::string ReleaseRandomly(Random random, Observer&) {
  std::string text = AnyDocument(random);
  if (random.OneIn(3)) text = Widened(text, random.OneIn(2));
  const Document document = NewDocument();
  if (random.OneIn(2)) {
    LoadFile(document, text);
  } else {
    document->loadXML(text.c_str());
  }
  const std::string before = DescribeError(document);
  document->ReleaseParser();
  const std::string difference = Difference(before, DescribeError(document));
  return difference.empty() ? "" : text + "\n" + difference;
}

/// Loads one text from memory and from a file, which takes another way to the parser.
std::string LoadFileRandomly(Random random, Observer&) {
  std::string text = AnyDocument(random);
  if (random.OneIn(3)) text = Widened(text, random.OneIn(2));
  const Document fromMemory = NewDocument();
  const Document fromFile = NewDocument();
  const LoadOutcome inMemory = LoadText(fromMemory, text);
  const LoadOutcome inFile = LoadFile(fromFile, text);
  std::string difference = Difference(DescribeError(fromFile) + CompactXml(fromFile),
                                      DescribeError(fromMemory) + CompactXml(fromMemory));
  if (!(inMemory == inFile)) difference += "results differ\n";
  return difference.empty() ? "" : text + "\n" + difference;
}

/// Reads and compares the texts of a document that was loaded in any encoding.
std::string ReadLoaded(Random random, Observer& observer) {
  std::string text = AnyDocument(random);
  if (random.OneIn(2)) text = Widened(text, random.OneIn(2));
  const Document document = NewDocument();
  CLogger::SetSink([](const CLogEvent&, void*) {}, nullptr);
  LoadText(document, text);
  observer.Resume();
  static const char* const kPaths[] = {"//*[*=", "//a[b=", "*/*[c=", "//*[@m=", "//b[*/*="};
  static const char* const kLiterals[] = {"'x']", "'\xc3\xa9']", "1]", "'x<y']", "'']"};
  const std::string path = std::string(random.OneOf(kPaths)) + random.OneOf(kLiterals);
  SwitchDebugLines(random.OneIn(2), observer);
  const auto run = [&](bool library) {
    return observer.Observe([&](std::string& results) {
      results += TakeHeap(library ? document->GetTextAsStr() : plain::GetTextAsStr(document));
      std::vector<IXMLDOMNode*> nodes;
      if (library) {
        const Ref<IXMLDOMNodeList> list(document->SelectNodes(path.c_str()));
        for (int i = 0; i < list->m_nCount; ++i) nodes.push_back(Node(list->GetItem(i)));
      } else {
        nodes = plain::SelectNodes(document, path.c_str());
      }
      for (IXMLDOMNode* node : nodes) results += "\n" + XmlOf(node);
    });
  };
  const std::string difference = Difference(run(true), run(false));
  SwitchDebugLines(true, observer);
  return difference.empty() ? "" : text + "\n" + path + "\n" + difference;
}

/// Feeds a builder piece by piece, in any encoding: its handlers are then called outside a load.
std::string FeedRandomly(Random random, Observer& observer) {
  std::string text = AnyDocument(random);
  if (random.OneIn(3)) text = Widened(text, random.OneIn(2));
  Forest one(Random(0), TwoEmptyDocuments());
  Forest two(Random(0), TwoEmptyDocuments());
  const Random source = random;
  const auto feed = [&](std::string& results, const std::function<bool(std::string, bool)>& parse) {
    Random sizes = source;
    std::size_t begin = 0;
    bool goesOn = true;
    while (goesOn) {
      const std::size_t size = static_cast<std::size_t>(1 + sizes.Below(sizes.OneIn(2) ? 4 : 60));
      const bool final = begin + size >= text.size();
      goesOn = parse(text.substr(begin, size), final) && !final;
      begin += size;
    }
    results += "at " + std::to_string(begin) + "\n";
  };
  const std::string library = observer.Observe([&](std::string& results) {
    CXMLSax builder(one.Document(0));
    builder.CreateParser();
    builder.m_pNodeStack = new CNodeStack;
    builder.m_bFirstElement = 1;
    feed(results, [&](const std::string& piece, bool final) {
      return builder.Parse(piece.data(), static_cast<int>(piece.size()), final);
    });
    results += std::to_string(CNodeStackElt::m_iObjCount) + " open, " +
               std::to_string(builder.GetErrorCode()) + ", " +
               std::to_string(builder.GetCurrentByteCount()) + ", " +
               std::to_string(builder.GetCurrentLineNumber()) + ", " +
               std::to_string(builder.GetCurrentColumnNumber()) + ", ";
    char tag[512];
    results += Text(XML_ErrorString(builder.GetErrorCode())) + ", <" +
               builder.GetErrorTag(tag, sizeof tag) + ">\n";
  });
  const std::string plainly = observer.Observe([&](std::string& results) {
    plain::Builder builder(two.Document(0));
    feed(results,
         [&](const std::string& piece, bool final) { return builder.Parse(piece, final); });
    results += std::to_string(builder.OpenElements()) + " open, " + builder.DescribeError();
  });
  const std::string difference = Difference(library + one.State(), plainly + two.State());
  return difference.empty() ? "" : text + "\n" + difference;
}

TEST(SoakLoading, Documents_are_built_as_by_a_plain_builder) { RunCases("loading", LoadRandomly); }

TEST(SoakLoading, Pieces_are_built_as_by_a_plain_builder) { RunCases("feeding", FeedRandomly); }

TEST(SoakLoading, Texts_are_read_as_plainly_whatever_the_encoding) {
  RunCases("texts of loads", ReadLoaded);
}

TEST(SoakLoading, A_file_is_loaded_as_its_text) { RunCases("files", LoadFileRandomly); }

TEST(SoakLoading, Errors_are_the_same_when_the_parser_has_been_released) {
  RunCases("releasing", ReleaseRandomly);
}

}  // namespace
