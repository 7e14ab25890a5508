#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include "harness/Trees.h"
#include "plain/PlainSelection.h"
#include "plain/PlainSingleNodeSearch.h"
#include "soak/Cases.h"
#include "soak/Forest.h"
#include "soak/RandomPaths.h"
#include "soak/RandomTexts.h"

namespace {

std::string NamesOf(const Forest& forest, IXMLDOMNodeList* list) {
  std::string names = std::to_string(list->m_nCount) + ":";
  while (IXMLDOMNode* node = list->NextNode()) {
    names += " " + forest.NameOf(node);
    node->RealRelease();
  }
  return names + "\n";
}

std::string NamesOf(const Forest& forest, const std::vector<IXMLDOMNode*>& list) {
  std::string names = std::to_string(list.size()) + ":";
  for (IXMLDOMNode* node : list) names += " " + forest.NameOf(node);
  return names + "\n";
}

std::string SelectRandomly(Random random, Observer& observer) {
  const ForestShape shape = AnySmallShape(random);
  Forest forest(random, shape);
  random.Next();
  IXMLDOMNode* node = random.OneIn(2) ? forest.At(0) : AnyNode(forest, random);
  const std::string path = AnyPath(random, 4, random.OneIn(4));
  const int kind = random.Below(4);
  const int step = random.Below(6) - 1;
  IXMLDOMNode* const present = AnyNode(forest, random);
  const int presentCount = random.Below(3);
  const int tail = random.Below(3);
  const std::string before = forest.State();
  const auto run = [&](bool library) {
    return observer.Observe([&](std::string& results) {
      if (kind < 2) {
        if (!library) {
          results += NamesOf(forest, plain::SelectNodes(node, path.c_str()));
          return;
        }
        const Ref<IXMLDOMNodeList> list(kind == 0 ? node->SelectNodes(path.c_str())
                                                  : node->SelectNodes(_bstr_t(path.c_str())));
        results += NamesOf(forest, list);
        return;
      }
      CXPathList steps;
      library ? steps.ParsePath(path.c_str()) : plain::ParsePath(steps, path.c_str());
      if (library) {
        const Ref<IXMLDOMNodeList> list(new IXMLDOMNodeList);
        for (int i = 0; i < presentCount; ++i) list->Add(present);
        if (tail != 0) list->m_pTail = tail == 1 ? list->m_pHead : nullptr;
        kind == 2 ? forest.At(0)->SelectNodesHelper(node, steps, list, step)
                  : forest.At(0)->SelectNodesTraverse(node, steps, list);
        list->Add(present);
        results += NamesOf(forest, list);
      } else {
        std::vector<IXMLDOMNode*> list(static_cast<std::size_t>(presentCount), present);
        kind == 2 ? plain::SelectNodesHelper(node, steps, &list, step)
                  : plain::SelectNodesTraverse(node, steps, &list);
        list.push_back(present);
        results += NamesOf(forest, list);
      }
    });
  };
  const std::string library = run(true);
  const std::string after = forest.State();
  const std::string difference = Difference(library + after, run(false) + before);
  return difference.empty() ? "" : "path " + path + "\n" + difference;
}

/// Compares the texts of nested elements with that of one of them.
std::string CompareNestedTexts(Random random, Observer& observer) {
  ForestShape shape;
  shape.nodes = 0;
  Forest forest(random, shape);
  random.Next();
  IXMLDOMNode* document = forest.At(0);
  IXMLDOMNode* node = document->AddChild("a", nullptr);
  node->RealRelease();
  NestTexts(node, random);
  forest.State();
  for (int changes = random.OneIn(2) ? 0 : random.Below(6); changes > 0; --changes) {
    forest.ChangeByHand(random, shape);
  }
  SwitchDebugLines(random.OneIn(4), observer);
  for (int levels = random.Below(60); levels > 0 && node->m_pFirstChild != nullptr; --levels) {
    node = node->m_pFirstChild;
  }
  CMemFile text(64);
  CLogger::SetSink([](const CLogEvent&, void*) {}, nullptr);
  node->GetTextHelper(text);
  observer.Resume();
  static const char* const kPaths[] = {
      "//a[a=", "//*[a=", "//a[*/a=", "//a[a=1][b=", "a/*[a=", "//a/a[a="};
  const std::string literal =
      random.OneIn(4) ? (random.OneIn(2) ? "1]" : "0]") : "'" + std::string(text.GetAsStr()) + "']";
  const std::string path = random.OneOf(kPaths) + literal;
  const std::string library = observer.Observe([&](std::string& results) {
    results += NamesOf(forest, Ref<IXMLDOMNodeList>(document->SelectNodes(path.c_str())));
  });
  const std::string plainly = observer.Observe([&](std::string& results) {
    results += NamesOf(forest, plain::SelectNodes(document, path.c_str()));
  });
  SwitchDebugLines(true, observer);
  const std::string difference = Difference(library, plainly);
  return difference.empty() ? "" : "path " + path + "\n" + difference;
}

/// Hangs new elements below each other, many of one name, whose predicates say something.
void NestElements(Forest& forest, Random& random) {
  IXMLDOMNode* parent = forest.At(0);
  for (int levels = 4 + random.Below(8); levels > 0; --levels) {
    for (int i = random.Below(3); i > 0; --i) {
      IXMLDOMNode* child = parent->AddChild(random.OneIn(2) ? "b" : "c", nullptr);
      child->AddTextChild(random.OneIn(2) ? "x &amp; y" : "&foo;");
      child->RealRelease();
    }
    IXMLDOMNode* nested = parent->AddChild(random.OneIn(4) ? "b" : "a", nullptr);
    nested->RealRelease();
    parent = nested;
  }
}

/// A path that matches at many levels and rarely to its end.
std::string NestedPath(Random& random) {
  static const char* const kSteps[] = {"a", "a", "*", "*[b='x & y']", "a[b='x']", "a[c=1]", "b"};
  std::string path = "//";
  for (int steps = 1 + random.Below(3); steps > 0; --steps) {
    path += std::string(random.OneOf(kSteps)) + "/";
  }
  return path + (random.OneIn(2) ? "d" : "c[b='1']");
}

/// `deep`: trees whose matched nodes nest more than six times.
std::string SearchRandomly(Random random, Observer& observer, bool deep) {
  ForestShape shape;
  shape.nodes = deep ? random.Below(8) : 2 + random.Below(20);
  shape.changesByHand = deep || random.OneIn(2) ? 0 : random.Below(8);
  Forest forest(random, shape);
  random.Next();
  if (deep) NestElements(forest, random);
  IXMLDOMNode* node = random.OneIn(2) ? forest.At(0) : AnyNode(forest, random);
  std::string path = AnyPath(random, 4, !deep && random.OneIn(2));
  if (deep) path = NestedPath(random);
  const bool byPath = random.OneIn(2);
  const int step = random.Below(5) - 1;

  CXPathList list;
  plain::ParsePath(list, path.c_str());
  const int most = 20000;
  plain::SingleNodeSearch search(list, plain::SingleNodeSearch::kMostRepeats, most);
  const std::string before = forest.State();
  const std::string plainly = observer.Observe([&](std::string& results) {
    IXMLDOMNode* found = nullptr;
    IXMLDOMNode* start = list.m_bAbsolute && byPath ? node->m_pOwnerDocument : node;
    if (byPath && path == "/") {
      found = node;
    } else if (start != nullptr) {
      found = search.Find(start, byPath ? -1 : step);
    }
    results += forest.NameOf(found) + "\n";
  });
  if (!search.IsComparable()) return "";
  const std::string library = observer.Observe([&](std::string& results) {
    IXMLDOMNode* found = nullptr;
    if (byPath) {
      found = node->SelectSingleNode(path.c_str());
    } else {
      CXPathList own;
      own.ParsePath(path.c_str());
      found = forest.At(0)->SelectSingleNodeHelper(node, own, step);
    }
    results += forest.NameOf(found) + "\n";
    if (found != nullptr) found->RealRelease();
  });
  const std::string difference = Difference(library + forest.State(), plainly + before);
  return difference.empty()
             ? ""
             : "path " + path + " from " + forest.NameOf(node) +
                   (search.LeftOutAny() ? ", with repeats left out\n" : "\n") + difference;
}

/// All that a path list shows.
std::string Describe(CXPathList& list) {
  std::string text = Text(list.m_pszPrefix) + ", " + std::to_string(list.m_nCount) + " steps, " +
                     (list.m_bAbsolute ? "absolute, " : "") +
                     (list.m_bDescendant ? "descendant" : "") + "\n";
  int i = 0;
  for (CStrListElt* step = list.m_pFirst; step != nullptr; step = step->m_pNext, ++i) {
    text += std::string("<") + step->m_pszString + ">";
    if (list.m_ppIndex == nullptr || list.m_ppIndex[i] != step->m_pszString) text += " not indexed";
    if (step->m_pNext == nullptr && list.m_pLast != step) text += " not last";
  }
  return text + "\n";
}

std::string ParseRandomly(Random random, Observer& observer) {
  static const char* const kPieces[] = {"/",     "/", "//", "[", "]", "a",
                                        "b='x'", "'", ".",  " ", "\""};
  std::string paths[3];
  for (std::string& path : paths) {
    path = random.OneIn(2) ? AnyPath(random, 4, true) : "";
    for (int pieces = random.Below(8); pieces > 0; --pieces) path += random.OneOf(kPieces);
  }
  const int count = 1 + random.Below(3);
  const auto run = [&](bool library) {
    return observer.Observe([&](std::string& results) {
      CXPathList list;
      for (int i = 0; i < count; ++i) {
        const char* path = paths[i].c_str();
        results += std::to_string(library ? list.ParsePath(path) : plain::ParsePath(list, path));
        results += " " + Describe(list);
        library ? list.CreateIndex() : plain::CreateIndex(list);
        results += Describe(list);
      }
    });
  };
  return Difference(run(true), run(false));
}

TEST(SoakSelection, Paths_are_cut_as_plainly) { RunCases("path parsing", ParseRandomly); }

TEST(SoakSelection, All_nodes_are_selected_as_by_recursion) {
  RunCases("selection", SelectRandomly);
}

TEST(SoakSelection, Texts_of_nested_elements_are_compared_as_by_collecting_each) {
  RunCases("nested texts", CompareNestedTexts, 20);
}

TEST(SoakSelection, The_first_node_is_found_as_by_recursion) {
  RunCases("single search", [](Random random, Observer& observer) {
    return SearchRandomly(random, observer, false);
  });
}

TEST(SoakSelection, Below_six_matched_nodes_no_search_is_repeated) {
  RunCases("deep single search", [](Random random, Observer& observer) {
    return SearchRandomly(random, observer, true);
  });
}

}  // namespace
