#ifndef XMLDOM_TESTS_PLAIN_PLAINSELECTION_H
#define XMLDOM_TESTS_PLAIN_PLAINSELECTION_H

#include <utility>
#include <vector>

class CXPathList;
class IXMLDOMNode;

namespace plain {

/// What CXPathList::ParsePath does, on the public fields of a list.
int ParsePath(CXPathList& list, const char* path);

/// What CXPathList::CreateIndex does.
void CreateIndex(CXPathList& list);

/// What the members of IXMLDOMNode of the same names do, by recursion; the nodes are borrowed.
std::vector<IXMLDOMNode*> SelectNodes(IXMLDOMNode* node, const char* path);
void SelectNodesHelper(IXMLDOMNode* node, CXPathList& list, std::vector<IXMLDOMNode*>* result,
                       int step);
void SelectNodesTraverse(IXMLDOMNode* node, CXPathList& list, std::vector<IXMLDOMNode*>* result);

/// The search for a single node, by recursion. A matched node whose search has failed has its
/// children searched once more from the first step on, and so everything below is searched again:
/// that is left out below six matched nodes that are open.
class SingleSearch {
 public:
  explicit SingleSearch(CXPathList& list);

  /// What IXMLDOMNode::SelectSingleNodeHelper does; the node is borrowed.
  IXMLDOMNode* Run(IXMLDOMNode* node, int step) { return Search(node, step, true); }

  /// Whether it took more tests than anybody wants to wait for; the result is then no result.
  bool HasGivenUp() const { return m_tests > kMostTests; }
  /// Whether a repeat was left out that would have logged or printed something.
  bool HasLeftOut() const { return m_leftOut; }

 private:
  static const int kMostTests = 20000;
  static const int kMostOpen = 6;

  const char* Step(int k) const;
  IXMLDOMNode* Search(IXMLDOMNode* node, int step, bool restarts);
  IXMLDOMNode* SearchOpened(IXMLDOMNode* node, int step, bool restarts);
  IXMLDOMNode* SearchChildren(IXMLDOMNode* node, int step, bool restarts);
  IXMLDOMNode* SearchMatched(IXMLDOMNode* node, int step, bool restarts);

  CXPathList& m_list;
  bool m_hasDots;
  bool m_leftOut;
  int m_tests;
  int m_openMatched;
  std::vector<std::pair<IXMLDOMNode*, int>> m_open;
};

}  // namespace plain

#endif
