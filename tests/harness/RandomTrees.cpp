#include "harness/RandomTrees.h"

namespace {

const char* const kNames[] = {"a", "b", "c"};
const char* const kAttributes[] = {"k", "m"};
const char* const kValues[] = {"1", "x", "&lt;", "", nullptr};
const char* const kTexts[] = {"x",      "1",     " 1b",     "&amp;lt;", "&foo;",
                              "a&lt;b", "x & y", "&#65;;&", "",         nullptr};
const char* const kPrefixes[] = {"", "", "/", "//", "//"};
const char* const kSteps[] = {"a", "a", "a", "b", "b", "c", "*", "*", ".", "..", ".x", ""};
const char* const kClimbingSteps[] = {"a", "b", "*", "*", "..", "..", ".."};
const char* const kPredicates[] = {
    "[@k='1']",       "[@k=1]",      "[@m='x']",  "[@m='']",   "[b='x']",  "[a=1]",
    "[c='']",         "[b='&lt;']",  "[a='a<b']", "[*/b='x']", "[a/@k=1]", "[*/@m='&lt;']",
    "[b='x'] [@k=1]", "[c]",         "[]",        "[",         "[@k='1'",  "[@k=1]x",
    "[a='x]",         "[b='&foo;']", "[a/b/c=0]"};

void Collect(IXMLDOMNode* node, std::vector<IXMLDOMNode*>* nodes) {
  nodes->push_back(node);
  for (IXMLDOMNode* first : {node->m_pFirstAttribute, node->m_pFirstChild}) {
    for (IXMLDOMNode* next = first; next != nullptr; next = next->m_pNextSibling) {
      Collect(next, nodes);
    }
  }
}

}  // namespace

int RandomTrees::Below(int limit) {
  // Not a standard distribution: those differ from one library to the next.
  return static_cast<int>(m_engine() % static_cast<unsigned int>(limit));
}

Document RandomTrees::Tree() {
  Document document = NewDocument();
  std::vector<IXMLDOMNode*> parents(1, document);
  const int elements = 1 + Below(12);
  for (int i = 0; i < elements; ++i) {
    // Mostly among the latest, so that the trees grow deep as well as wide.
    const int latest = static_cast<int>(parents.size()) - 1;
    const int back = Below(3);
    IXMLDOMNode* parent = parents[static_cast<std::size_t>(back > latest ? latest : latest - back)];
    if (Below(3) == 0) parent->AddTextChild(OneOf(kTexts));
    const bool isComment = Below(16) == 0;
    IXMLDOMNode* node =
        new IXMLDOMNode(document, OneOf(kNames), nullptr, isComment ? NODE_COMMENT : NODE_ELEMENT);
    parent->AddChild(node);
    if (Below(2) == 0) node->AddAttribute(OneOf(kAttributes), OneOf(kValues));
    if (Below(2) == 0) node->AddTextChild(OneOf(kTexts));
    parents.push_back(node);
  }
  return document;
}

template <std::size_t N>
std::string RandomTrees::Steps(const char* const (&steps)[N]) {
  std::string path;
  const int count = 1 + Below(4);
  for (int i = 0; i < count; ++i) {
    if (i != 0) path += "/";
    path += OneOf(steps);
    if (Below(3) == 0) path += OneOf(kPredicates);
  }
  return path;
}

std::string RandomTrees::Path() {
  const std::string prefix = OneOf(kPrefixes);
  return prefix + Steps(kSteps);
}

std::string RandomTrees::ClimbingPath() { return "//" + Steps(kClimbingSteps); }

IXMLDOMNode* RandomTrees::AnyNode(IXMLDOMNode* tree) {
  std::vector<IXMLDOMNode*> nodes;
  Collect(tree, &nodes);
  return nodes[static_cast<std::size_t>(Below(static_cast<int>(nodes.size())))];
}
