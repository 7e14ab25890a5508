#include <gtest/gtest.h>
#include <xmldom/xmldom.h>

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <new>
#include <vector>

#include "harness/AllocationFailure.h"
#include "harness/Balance.h"
#include "harness/Trees.h"
#include "plain/PlainSelection.h"
#include "soak/Cases.h"
#include "soak/Forest.h"
#include "soak/RandomDocuments.h"
#include "soak/RandomPaths.h"
#include "soak/RandomTexts.h"

// Calls that run out of memory, and are made again with enough of it.

namespace {

typedef std::function<void(std::string& results)> Call;

void Ignore(const CLogEvent&, void*) {}

void FreeBstr(char* text) { SysFreeString(text); }

/// Appends a text that the library handed out, and gives it back even when memory is out.
void AppendOwned(std::string& results, char* text, void (*free)(char*)) {
  const std::unique_ptr<char, void (*)(char*)> owned(text, free);
  if (text != nullptr) results += text;
}

/// Runs a call with so many allocations. Result: what it left behind; empty when nothing.
std::string RunOutOfMemory(const Call& call, int allowed) {
  std::string results;
  results.reserve(1 << 16);  // so that the results themselves need no memory, most of the time
  const Balance before = Balance::Now();
  const long blocks = HeapBlocks();
  {
    AllocationFailure failure(allowed, AllocationFailure::ALL_BUT_EXPAT);
    try {
      call(results);
    } catch (const std::bad_alloc&) {
    }
  }
  const long left = HeapBlocks() - blocks;
  std::string changes = Balance::Now().ChangesSince(before);
  if (left != 0) changes += "blocks: " + std::to_string(left) + "\n";
  return changes;
}

/// Observes a call, lets it run out of memory, and observes it again.
std::string FailOnce(const Call& call, int allowed, Forest& forest, Observer& observer) {
  const std::string before = forest.State();
  const std::string first = observer.Observe(call);
  CLogger::SetSink(Ignore, nullptr);
  const std::string left = RunOutOfMemory(call, allowed);
  observer.Resume();
  const std::string again = observer.Observe(call);
  if (!left.empty()) return "left behind:\n" + left;
  return Difference(again + forest.State(), first + before);
}

std::string ReadOutOfMemory(Random random, Observer& observer) {
  const ForestShape shape = AnySmallShape(random);
  Forest forest(random, shape);
  random.Next();
  IXMLDOMNode* node = random.OneIn(2) ? forest.At(0) : AnyNode(forest, random);
  IXMLDOMNode* other = AnyNode(forest, random);
  const std::string path = AnyPath(random, 4, random.OneIn(4));
  const Call calls[] = {
      [&](std::string& results) {
        AppendOwned(results, node->GetTextAsStr(), [](char* text) { std::free(text); });
      },
      [&](std::string& results) { AppendOwned(results, node->GetTextAsBSTR(), FreeBstr); },
      [&](std::string& results) { AppendOwned(results, node->GetXML(), FreeBstr); },
      [&](std::string& results) {
        CMemFile out(8);
        node->GetXMLHelper(out, 0, other, 1, 2, 1, 2, "<row/>", false, false, 0);
        results += out.GetAsStr();
      },
      [&](std::string& results) {
        CMemFile report(8);
        results += std::to_string(CompareXMLNodes(node, other, report, 0));
        results += report.GetAsStr();
      },
      [&](std::string& results) {
        const Ref<IXMLDOMNodeList> list(node->SelectNodes(path.c_str()));
        for (int i = 0; i < list->m_nCount; ++i) {
          const Node item(list->GetItem(i));
          results += forest.NameOf(item);
        }
      },
      [&](std::string& results) {
        const Node found(node->SelectSingleNode(path.c_str()));
        results += forest.NameOf(found);
      },
      [&](std::string& results) {
        CXPathList list;
        list.ParsePath("first");
        list.ParsePath(path.c_str());
        results += std::to_string(list.m_nCount);
      },
  };
  const Call& call = random.OneOf(calls);
  return FailOnce(call, random.Below(random.OneIn(2) ? 6 : 40), forest, observer);
}

/// A forest of one document with many nodes and texts.
class ManyTexts {
 public:
  explicit ManyTexts(Random& random) : m_forest(random, Empty()) {
    random.Next();
    IXMLDOMNode* root = m_forest.At(0)->AddChild("a", nullptr);
    root->RealRelease();
    random.OneIn(2) ? GrowLateTexts(root, random) : NestTexts(root, random);
  }

  Forest& Get() { return m_forest; }
  IXMLDOMNode* Document() const { return m_forest.At(0); }

 private:
  static ForestShape Empty() {
    ForestShape shape;
    shape.nodes = 0;
    return shape;
  }

  Forest m_forest;
};

/// Collects more text, and compares more of it, than has room without the heap.
std::string ReadManyOutOfMemory(Random random, Observer& observer) {
  ManyTexts texts(random);
  IXMLDOMNode* const document = texts.Document();
  static const char* const kPaths[] = {"//a[a='x']", "//*[*='xyy']", "//a[*/a=1]",
                                       "//a[a=''][b=1]"};
  const std::string path = random.OneOf(kPaths);
  const Call calls[] = {
      [&](std::string& results) {
        AppendOwned(results, document->GetTextAsStr(), [](char* text) { std::free(text); });
      },
      [&](std::string& results) { AppendOwned(results, document->GetTextAsBSTR(), FreeBstr); },
      [&](std::string& results) {
        const Ref<IXMLDOMNodeList> list(document->SelectNodes(path.c_str()));
        results += std::to_string(list->m_nCount);
      },
      [&](std::string& results) {
        const Node found(document->SelectSingleNode((path + "/none").c_str()));
        results += texts.Get().NameOf(found);
      },
  };
  SwitchDebugLines(random.OneIn(4), observer);
  const Call& call = random.OneOf(calls);
  const int allowed = random.Below(random.OneIn(2) ? 6 : 40);
  const std::string difference = FailOnce(call, allowed, texts.Get(), observer);
  SwitchDebugLines(true, observer);
  return difference;
}

/// The nodes of a list, which has to count them.
std::vector<IXMLDOMNode*> NodesOf(const IXMLDOMNodeList* list) {
  std::vector<IXMLDOMNode*> nodes;
  for (const IXMLDOMNodeListElt* link = list->m_pHead; link != nullptr; link = link->m_pNext) {
    nodes.push_back(link->m_pNode);
  }
  EXPECT_EQ(static_cast<std::size_t>(list->m_nCount), nodes.size());
  return nodes;
}

/// Whether all nodes of `part` are in `whole`, in the same order and none more often than there.
bool IsPartOf(const std::vector<IXMLDOMNode*>& part, const std::vector<IXMLDOMNode*>& whole) {
  auto place = whole.begin();
  for (IXMLDOMNode* node : part) {
    place = std::find(place, whole.end(), node);
    if (place == whole.end()) return false;
    ++place;
  }
  return true;
}

/// What a list and a file hold when memory is out before all is found.
std::string StopOutOfMemory(Random random, Observer& observer) {
  ManyTexts texts(random);
  IXMLDOMNode* const document = texts.Document();
  static const char* const kPaths[] = {"//a", "//*", "//b", "//a/b", "//a/*/a"};
  CXPathList steps;
  steps.ParsePath(random.OneOf(kPaths));
  const int allowed = random.Below(random.OneIn(2) ? 8 : 80);
  SwitchDebugLines(false, observer);
  CLogger::SetSink(Ignore, nullptr);
  const Ref<IXMLDOMNodeList> list(new IXMLDOMNodeList);
  CMemFile whole(8);
  CMemFile part(8);
  document->GetTextHelper(whole);
  const AllocationFailure::Reach reach = AllocationFailure::ALL_BUT_EXPAT;
  try {
    const AllocationFailure failure(allowed, reach);
    document->SelectNodesTraverse(document, steps, list);
  } catch (const std::bad_alloc&) {
  }
  try {
    const AllocationFailure failure(allowed, reach);
    document->GetTextHelper(part);
  } catch (const std::bad_alloc&) {
  }
  SwitchDebugLines(true, observer);
  std::vector<IXMLDOMNode*> all;
  plain::SelectNodesTraverse(document, steps, &all);
  if (!IsPartOf(NodesOf(list), all)) return "nodes in another order";
  const std::string read = part.GetAsStr();
  return std::string(whole.GetAsStr()).compare(0, read.size(), read) == 0 ? "" : "text " + read;
}

/// Goes on with a path list, and with a document, for which memory was out half way.
std::string GoOnRandomly(Random random, Observer& observer) {
  ForestShape shape;
  shape.nodes = 2 + random.Below(20);
  Forest forest(random, shape);
  random.Next();
  IXMLDOMNode* node = AnyNode(forest, random);
  const std::string path = AnyPath(random, 4, false);
  const int allowed = random.Below(8);
  return observer.Observe([&](std::string&) {
    CXPathList list;
    list.ParsePath("a");
    int steps = list.m_nCount;
    try {
      AllocationFailure failure(allowed);
      list.ParsePath(path.c_str());
    } catch (const std::bad_alloc&) {
      steps = 0;
      for (const CStrListElt* step = list.m_pFirst; step != nullptr; step = step->m_pNext) ++steps;
      if (steps != list.m_nCount) throw;
    }
    // The steps that there are serve a search, whatever that logs or prints.
    const Ref<IXMLDOMNodeList> found(new IXMLDOMNodeList);
    CLogger::SetSink(Ignore, nullptr);
    SetDebugEntities(false);
    node->SelectNodesHelper(node, list, found, 0);
    SetDebugEntities(true);
    observer.Resume();
  });
}

std::string LoadOutOfMemory(Random random, Observer& observer) {
  ForestShape shape;
  shape.nodes = 0;
  Forest forest(random, shape);
  const std::string text = AnyDocument(random);
  const Call call = [&](std::string& results) {
    const Document document = NewDocument();
    results += std::to_string(document->loadXML(text.c_str()));
    AppendOwned(results, document->GetXML(), FreeBstr);
  };
  return FailOnce(call, random.Below(random.OneIn(2) ? 12 : 120), forest, observer);
}

TEST(SoakMemory, A_call_that_runs_out_of_memory_leaves_nothing_behind) {
  RunCases("reading without memory", ReadOutOfMemory);
}

TEST(SoakMemory, A_long_read_that_runs_out_of_memory_leaves_nothing_behind) {
  RunCases("long reading without memory", ReadManyOutOfMemory, 20);
}

TEST(SoakMemory, What_is_found_before_memory_is_out_is_in_its_order) {
  RunCases("part of a reading", StopOutOfMemory, 20);
}

TEST(SoakMemory, A_load_that_runs_out_of_memory_leaves_nothing_behind) {
  RunCases("loading without memory", LoadOutOfMemory);
}

TEST(SoakMemory, A_path_list_that_ran_out_of_memory_can_be_used) {
  RunCases("path list without memory", GoOnRandomly);
}

}  // namespace
