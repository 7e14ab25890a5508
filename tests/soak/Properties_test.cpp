#include <gtest/gtest.h>
#include <xmldom/xmldom.h>
#include <xmldom/xmldom_ptr.h>

#include <algorithm>
#include <vector>

#include "harness/CompactXml.h"
#include "harness/EventBody.h"
#include "harness/Trees.h"
#include "soak/Cases.h"
#include "soak/Forest.h"
#include "soak/RandomDocuments.h"
#include "soak/RandomPaths.h"

// What holds of every tree, whatever is in it: properties that need no second implementation.

namespace {

const char* const kNames[] = {"a", "b", "c", "long-name"};
const char* const kTexts[] = {"x",        "two words", "&amp;lt;", "a&lt;b",
                              "1 &gt; 0", "&#65;",     "\xc3\xa9"};
const char* const kValues[] = {"1", "", "x y", "&lt;&amp;&gt;", "it&apos;s &quot;so&quot;"};
const char* const kAttributes[] = {"k", "m", "n"};

/// A tree that a load could have made, with what it is made from.
struct Built {
  Document document;
  std::string xml;
};

/// Adds random attributes, a text and elements to an element, and the same to a text of XML.
void Build(Random& random, int depth, IXMLDOMNode* element, std::string* xml) {
  const std::string name = element->m_pszNodeName;
  *xml += "<" + name;
  for (const char* attribute : kAttributes) {
    if (!random.OneIn(4)) continue;
    const char* value = random.OneOf(kValues);
    element->AddAttribute(attribute, value);
    *xml += std::string(" ") + attribute + "='" + value + "'";
  }
  *xml += ">";
  if (random.OneIn(2)) {
    const char* text = random.OneOf(kTexts);
    element->AddTextChild(text);
    *xml += text;
  }
  for (int children = depth == 0 ? 0 : random.Below(4); children > 0; --children) {
    const Node child(element->AddChild(random.OneOf(kNames), nullptr));
    Build(random, depth - 1, child, xml);
  }
  *xml += "</" + name + ">";
}

Built BuildRandomly(Random& random) {
  Built built = {NewDocument(), ""};
  if (random.OneIn(2)) {
    built.document->m_uFlags = static_cast<unsigned int>(random.Below(2));
    built.document->m_nIndent = random.Below(5);
  }
  const Node root(built.document->AddChild(random.OneOf(kNames), nullptr));
  Build(random, random.Below(6), root, &built.xml);
  return built;
}

std::string Shown(IXMLDOMNode* node) { return CompactXml(node); }

/// While it lives, nothing is logged or printed. The body of the event of a missed path belongs to
/// whoever receives it.
class QuietLog {
 public:
  QuietLog() {
    CLogger::SetSink(Free, nullptr);
    SetDebugEntities(false);
  }
  ~QuietLog() { SetDebugEntities(true); }

  QuietLog(const QuietLog&) = delete;
  QuietLog& operator=(const QuietLog&) = delete;

 private:
  static void Free(const CLogEvent& event, void*) { FreeOwnBody(event); }
};

// ---- Building

std::string BuildAndLoad(Random random, Observer&) {
  const Built built = BuildRandomly(random);
  const Document loaded = NewDocument();
  loaded->m_uFlags = built.document->m_uFlags;
  loaded->m_nIndent = built.document->m_nIndent;
  if (loaded->loadXML(built.xml.c_str()) != VARIANT_TRUE) return "does not parse: " + built.xml;
  CMemFile report(64);
  if (CompareXMLNodes(built.document, loaded, report, 0) != 1) return report.GetAsStr();
  const std::string difference = Difference(Shown(loaded), Shown(built.document));
  return difference.empty() ? Difference(XmlOf(loaded), XmlOf(built.document)) : difference;
}

// ---- Writing

/// Gives each element that has texts beside elements one more. AddElement changes these texts so
/// that the blanks before them, with which they are written, do not become a part of them.
void PrepareTexts(IXMLDOMNode* node) {
  bool hasTexts = false;
  bool hasElements = false;
  for (IXMLDOMNode* child = node->m_pFirstChild; child != nullptr; child = child->m_pNextSibling) {
    hasTexts = hasTexts || child->m_eNodeType == NODE_TEXT;
    hasElements = hasElements || child->m_eNodeType == NODE_ELEMENT;
    PrepareTexts(child);
  }
  if (!hasTexts || !hasElements) return;
  EXPECT_TRUE(xmldom::AddElement(node, "added"));
}

/// A document with formatted layout, or null. Entities that another file declares are unknown to
/// whoever loads what was written, because that has no document type.
Document AnyLoaded(Random& random) {
  Document document = NewDocument();
  const std::string text = random.OneIn(3) ? BuildRandomly(random).xml : AnyDocument(random);
  const bool isAlone = text.find("SYSTEM") == std::string::npos;
  if (!isAlone || document->loadXML(text.c_str()) != VARIANT_TRUE) {
    document.Reset();
  } else {
    PrepareTexts(document);
    document->m_nIndent = random.Below(5);
  }
  return document;
}

std::string WriteAndLoad(Random random, Observer&) {
  const Document document = AnyLoaded(random);
  if (document == nullptr) return "";
  const std::string written = xmldom::Xml(document);
  const xmldom::LoadResult loaded = xmldom::LoadText(written);
  if (!loaded) return xmldom::OneLine(loaded.error) + "\n" + written;
  loaded.document->m_nIndent = document->m_nIndent;
  return Difference(xmldom::Xml(loaded.document), written);
}

// ---- Reading

std::string ReadWithoutTrace(Random random, Observer&) {
  ForestShape shape = AnySmallShape(random);
  const int kind = random.Below(4);
  if (kind == 3) shape.changesByHand = 0;  // which make cycles of parents
  Forest forest(random, shape);
  random.Next();
  IXMLDOMNode* node = random.OneIn(2) ? forest.At(0) : AnyNode(forest, random);
  IXMLDOMNode* other = AnyNode(forest, random);
  const std::string path = AnyPath(random, 3, random.OneIn(4));
  const int numbers[] = {random.Below(5), random.Below(5), random.Below(4) - 1,
                         random.Below(4) - 1};
  const QuietLog log;
  const std::string before = forest.State();
  const std::string written = XmlOf(node);
  CMemFile report(16);
  switch (kind) {
    case 0:
      node->GetMaskedXML();
      break;
    case 1:
      node->GetFilteredXML(path.c_str(), numbers[0], numbers[1], numbers[2], numbers[3], "<p/>");
      break;
    case 2:
      CompareXMLNodes(node, other, report, 0);
      break;
    default:
      xmldom::Text(node);
      xmldom::Xml(node);
      node->GetPathToNode(report);
  }
  return Difference(forest.State() + XmlOf(node), before + written);
}

// ---- Editing

/// The elements and texts of a tree that have a parent other than the document.
void Collect(IXMLDOMNode* node, std::vector<IXMLDOMNode*>* nodes) {
  for (IXMLDOMNode* child = node->m_pFirstChild; child != nullptr; child = child->m_pNextSibling) {
    if (node->m_eNodeType != NODE_DOCUMENT) nodes->push_back(child);
    Collect(child, nodes);
  }
}

/// Puts a node, which has no parent, back in front of `next`, or at the end.
void PutBack(IXMLDOMNode* parent, IXMLDOMNode* node, IXMLDOMNode* next) {
  if (next == nullptr) {
    parent->appendChild(node, nullptr);
  } else {
    parent->insertBefore(node, next, nullptr);
  }
}

void RemoveAndPutBack(IXMLDOMNode* node) {
  IXMLDOMNode* const parent = node->m_pParent;
  IXMLDOMNode* const next = node->m_pNextSibling;
  IXMLDOMNode* removed = nullptr;
  parent->removeChild(node, &removed);
  PutBack(parent, removed, next);
}

void MoveAndMoveBack(IXMLDOMNode* node, IXMLDOMNode* to) {
  IXMLDOMNode* const parent = node->m_pParent;
  IXMLDOMNode* const next = node->m_pNextSibling;
  if (to->appendChild(node, nullptr) != S_OK) return;
  PutBack(parent, node, next);
}

void ReplaceAndReplaceBack(IXMLDOMNode* node, IXMLDOMDocument2* document) {
  IXMLDOMNode* const parent = node->m_pParent;
  Node other(new IXMLDOMNode(document, "other", nullptr, NODE_ELEMENT));
  other->AddTextChild("text");
  IXMLDOMNode* replaced = nullptr;
  parent->replaceChild(other, node, &replaced);
  parent->replaceChild(replaced, other, nullptr);
}

void SetAndSetBack(IXMLDOMNode* node, Random& random) {
  if (node->m_eNodeType == NODE_TEXT) {
    const std::string value = node->m_pszValue;
    node->SetValue(random.OneOf(kTexts));
    node->SetValue(value.c_str());
    return;
  }
  IXMLDOMNode* const attribute = node->m_pFirstAttribute;
  if (attribute == nullptr) return;
  const std::string value = attribute->m_pszValue;
  for (const std::string& text : {std::string(random.OneOf(kValues)), value}) {
    node->SetAttribute(attribute->m_pszNodeName, text.c_str());
    attribute->RealRelease();  // each change of a value keeps a reference
  }
}

void AddAndRemove(IXMLDOMNode* node, Random& random) {
  const Node added(random.OneIn(2) ? node->AddChild("new", nullptr) : node->AddSibling("new", "v"));
  added->AddAttribute("k", "1");
  IXMLDOMNode* const parent = added->m_pParent;
  Node removed;
  parent->removeChild(added, removed.Out());
}

std::string EditAndUndo(Random random, Observer&) {
  const Built built = BuildRandomly(random);
  std::vector<IXMLDOMNode*> nodes;
  Collect(built.document, &nodes);
  if (nodes.empty()) return "";
  const auto any = [&] {
    return nodes[static_cast<std::size_t>(random.Below(static_cast<int>(nodes.size())))];
  };
  const std::string before = Shown(built.document) + XmlOf(built.document);
  const int live = IXMLDOMNode::m_iObjCount;
  for (int edits = 1 + random.Below(6); edits > 0; --edits) {
    IXMLDOMNode* const node = any();
    IXMLDOMNode* const other = any();
    switch (random.Below(5)) {
      case 0:
        RemoveAndPutBack(node);
        break;
      case 1:
        MoveAndMoveBack(node, other->m_eNodeType == NODE_ELEMENT ? other : node->m_pParent);
        break;
      case 2:
        ReplaceAndReplaceBack(node, built.document);
        break;
      case 3:
        SetAndSetBack(node, random);
        break;
      default:
        if (node->m_eNodeType == NODE_ELEMENT) AddAndRemove(node, random);
    }
  }
  if (IXMLDOMNode::m_iObjCount != live) return "nodes are left, or missing";
  return Difference(Shown(built.document) + XmlOf(built.document), before);
}

// ---- Selecting

/// Whether the search for one node reads a path in another way than that for all: the path "/", an
/// empty one, and steps that begin with a dot.
bool IsReadInTwoWays(const std::string& path) {
  CXPathList steps;
  steps.ParsePath(path.c_str());
  for (const CStrListElt* step = steps.m_pFirst; step != nullptr; step = step->m_pNext) {
    if (step->m_pszString[0] == '.') return true;
  }
  return path == "/";
}

// Only elements have children here, as in every tree that was loaded: below others the two searches
// differ too.
std::string SelectOneOfAll(Random random, Observer&) {
  const Built built = BuildRandomly(random);
  std::vector<IXMLDOMNode*> nodes(1, built.document);
  Collect(built.document, &nodes);
  IXMLDOMNode* const node =
      nodes[static_cast<std::size_t>(random.Below(static_cast<int>(nodes.size())))];
  const std::string path = AnyPath(random, 4, false);
  if (IsReadInTwoWays(path)) return "";
  const QuietLog log;
  const Node one(node->SelectSingleNode(path.c_str()));
  const Ref<IXMLDOMNodeList> all(node->SelectNodes(path.c_str()));
  bool isListed = false;
  for (const XMLPtr<IXMLDOMNode>& selected : xmldom::Listed(all.Get())) {
    isListed = isListed || selected.Get() == one.Get();
  }
  if (isListed || (one == nullptr && all->m_nCount == 0)) return "";
  return "path " + path + " finds one, which is not one of " + std::to_string(all->m_nCount) +
         "\n" + built.xml;
}

TEST(SoakProperties, What_is_built_is_what_a_load_builds) {
  RunCases("building and loading", BuildAndLoad, 25);
}

TEST(SoakProperties, What_is_written_loads_and_is_written_the_same) {
  RunCases("writing and loading", WriteAndLoad, 50);
}

TEST(SoakProperties, Masking_paging_comparing_and_reading_change_nothing) {
  RunCases("reading without a trace", ReadWithoutTrace, 50);
}

TEST(SoakProperties, An_edit_and_its_inverse_give_the_tree_back) {
  RunCases("editing and undoing", EditAndUndo, 50);
}

TEST(SoakProperties, The_single_node_is_one_of_all_nodes) {
  RunCases("one of all", SelectOneOfAll);
}

}  // namespace
