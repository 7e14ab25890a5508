#include <expat.h>
#include <gtest/gtest.h>
#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include <string>
#include <vector>

#include "harness/TemporaryFolder.h"
#include "harness/Trees.h"
#include "soak/Cases.h"
#include "soak/RandomStrings.h"

// Texts that are set, written, loaded and read: every one comes back the same, or was refused
// because no XML can hold it. What XML can hold is what the parser accepts.

namespace {

const int kStringsOfACase = 500;

/// Where the parser stops in a text that stands in an element; the size of the text when it does
/// not.
std::size_t EndForTheParser(const std::string& text) {
  std::string document = "<a>";
  for (char c : text) {
    document += c == '&' ? "&amp;" : c == '<' ? "&lt;" : c == '>' ? "&gt;" : std::string(1, c);
  }
  XML_Parser parser = XML_ParserCreate("UTF-8");
  document += "</a>";
  const int size = static_cast<int>(document.size());
  const bool isAccepted = XML_Parse(parser, document.data(), size, 1) == XML_STATUS_OK;
  std::size_t end = text.size();
  if (!isAccepted) {
    // The parser has gone over what stands before as often as the text was escaped.
    const std::string before =
        document.substr(3, static_cast<std::size_t>(XML_GetCurrentByteIndex(parser)) - 3);
    end = 0;
    for (std::size_t at = 0; at < before.size(); ++end) {
      at = before[at] == '&' ? before.find(';', at) + 1 : at + 1;
    }
  }
  XML_ParserFree(parser);
  return end;
}

/// One text, and where it was stored.
struct Stored {
  std::string text;
  bool isBesideElements;
};

std::string Describe(const std::string& what, const std::string& text, const std::string& read) {
  return what + ": " + xmldom::OneLine(text, 2000) + "\n  became " + xmldom::OneLine(read, 2000);
}

/// Adds an element that has `text` as text and as attribute; in one of three cases an element
/// stands beside the text. Result: what is wrong; empty when nothing is.
std::string Store(IXMLDOMNode* parent, const std::string& text, Random& random,
                  std::vector<Stored>& stored) {
  const XMLPtr<IXMLDOMNode> element = xmldom::Adopt(parent->AddChild("e", nullptr));
  const bool isBeside = random.OneIn(3);
  if (isBeside) element->AddChild("b", nullptr)->RealRelease();
  if (random.OneIn(2) && !isBeside) element->AddTextChild("old");
  const xmldom::StoreResult asText = xmldom::SetText(element, text);
  const xmldom::StoreResult asAttribute = xmldom::SetAttribute(element, "k", text);
  const std::size_t end = EndForTheParser(text);
  if (static_cast<bool>(asText) != static_cast<bool>(asAttribute)) return "only one was refused";
  if (static_cast<bool>(asText) != (end == text.size())) {
    return Describe(asText ? "not refused" : "refused", text, "");
  }
  if (asText) {
    stored.push_back({text, isBeside});
    return "";
  }
  if (asText.offset != end || asAttribute.offset != end) {
    return Describe("another offset than " + std::to_string(end), text,
                    std::to_string(asText.offset));
  }
  XMLPtr<IXMLDOMNode> refused;
  parent->removeChild(element.Get(), refused.Out());
  return "";
}

/// Compares the elements below `parent` with what was stored in them.
std::string Compare(IXMLDOMNode* parent, const std::vector<Stored>& stored) {
  std::size_t i = 0;
  for (IXMLDOMNode* child = parent->m_pFirstChild; child != nullptr;
       child = child->m_pNextSibling, ++i) {
    if (i == stored.size()) return "more elements than texts";
    const std::string& text = stored[i].text;
    if (xmldom::Text(child) != text) return Describe("a text", text, xmldom::Text(child));
    const std::string value = xmldom::Attribute(child, "k");
    if (value != text) return Describe("an attribute", text, value);
    if (stored[i].isBesideElements != (child->CountChildNodes() == 1)) return "elements are lost";
  }
  return i == stored.size() ? "" : "fewer elements than texts";
}

std::string CompareAfterLoad(const xmldom::LoadResult& loaded, const std::vector<Stored>& stored) {
  if (!loaded) return xmldom::OneLine(loaded.error);
  return Compare(loaded.document->m_pFirstChild->m_pFirstChild, stored);
}

std::string StoreRandomly(Random random, const TemporaryFolder& folder) {
  Document document = Load("<root><deep/></root>");
  std::vector<Stored> stored;
  for (int i = 0; i < kStringsOfACase; ++i) {
    const std::string difference = Store(At(document, {0, 0}), AnyString(random), random, stored);
    if (!difference.empty()) return difference;
  }
  std::string difference = Compare(At(document, {0, 0}), stored);
  // As GetXML writes it, which is indented.
  xmldom::LoadResult loaded = xmldom::LoadText(XmlOf(document));
  if (difference.empty()) difference = CompareAfterLoad(loaded, stored);
  // As Save writes it, from what the load has made of the first; in some cases through a file, for
  // whose way to the disk one has to wait.
  if (difference.empty()) loaded = xmldom::LoadText(xmldom::Xml(loaded.document));
  if (difference.empty()) difference = CompareAfterLoad(loaded, stored);
  if (!difference.empty() || !random.OneIn(8)) return difference;
  const std::string path = folder.Path("saved.xml");
  const std::error_code error =
      xmldom::Save(loaded.document, path,
                   random.OneIn(2) ? xmldom::Prolog::kNone : xmldom::Prolog::kDeclaration);
  if (error) return error.message();
  return CompareAfterLoad(xmldom::LoadFile(path), stored);
}

TEST(SoakRoundTrip, Every_text_comes_back_the_same_or_is_refused) {
  const TemporaryFolder folder;
  SetDebugEntities(false);
  // 1 % of the usual 20,000 cases: 100,000 texts.
  RunCases(
      "round trip", [&](Random random, Observer&) { return StoreRandomly(random, folder); }, 1);
  SetDebugEntities(true);
}

}  // namespace
