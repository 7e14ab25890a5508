#ifndef XMLDOM_QUERY_SINGLENODESEARCH_H
#define XMLDOM_QUERY_SINGLENODESEARCH_H

#include <xmldom/base/Stack.h>
#include <xmldom/dom/ReportCount.h>
#include <xmldom/query/SearchMemory.h>
#include <xmldom/query/XPathStep.h>

#include <cstddef>

class IXMLDOMNode;

namespace xmldom {

/// Finds one node that a path selects: the first that a depth-first search meets. Behind "//" with
/// several steps, that need not be the first in document order, nor in the list of SelectNodes.
///
/// The search (n, k) of node n with step k follows four rules. The first search that finds a node
/// ends all of them.
///   1. Node n is tested: it must match step k. When it does not, rule 4 is next. Step -1 is the
///      start of a path, where every node matches.
///   2. When k is the last step, n is found.
///   3. Each child of n is searched with step k + 1. When the steps behind k are "." or "..", the
///      search follows them first: a "." stays, a ".." moves to the parent, and without a parent
///      the search of n fails. The children of the node arrived at are then searched.
///   4. In a path that begins with "//", each child of n is searched with step 0.
/// A search that is begun again while it is open, as ".." below "//" can bring about, fails.
///
/// Example: the path "//a/b/c" is step 0 "a", step 1 "b" and step 2 "c". The six elements are
/// numbered in document order:
///
///     a1
///     |- a2
///     |  `- b3
///     `- a4
///        `- b5
///           `- c6
///
/// (document, -1) searches its child by rule 3. (a1, 0) matches, so its children are searched with
/// step 1: (a2, 1) fails, and by rule 4 so does (b3, 0); (a4, 1) fails, and by rule 4 so do (b5, 0)
/// and (c6, 0). Rule 4 for a1 searches its children with step 0: (a2, 0) and (b3, 1) match, but b3
/// has no children. By rule 4 for a2, (b3, 0) is searched once more. Then (a4, 0), (b5, 1) and
/// (c6, 2) match, and c6 is found.
///
/// Repeats. (b3, 0) could be left out the second time: what has failed once fails again. Rule 4
/// repeats in this manner, below a matched node, all the searches that rule 3 has led to, at each
/// level anew, so their number is exponential in the depth. But a test can report something, which
/// is to log an event or to print a line, and the reports of a repeat belong to the effects of a
/// search. So rule 4 is followed in full below a matched node when
///   - a test below that node reported something, and
///   - fewer than six matched nodes are open above it. The start of the search counts as one.
/// Else rule 4 does only what rule 3 has not: it tests the chains that match step 0 in a child of
/// n, step 1 in a child of that child, and so on. In the example nothing is reported, so the tests
/// are a1:0, a2:1, b3:0, a4:1, b5:0, c6:0, and then the chains a2:0, b3:1 and a4:0, b5:1, c6:2. In
/// a path without dots each node is tested at most 64 times with each step, and once when nothing
/// is reported.
///
/// Paths with dots. When a path has a step "." or "..", rule 3 can lead back to nodes that were
/// searched before, and the place of a node does not tell which searches rule 3 has made. These are
/// recorded in a SearchMemory, for each node and step:
///   - Until something is reported, the children of a node are never searched twice with a step:
///     the next search of them goes on where the last one stopped.
///   - Afterwards they are searched as often as the rules say, with two limits. Below six open
///     matched nodes, rule 4 leaves out what was tested since its node was. And nothing is repeated
///     any more once each node was tested 64 times with each step, on average.
/// What is left out has failed before, or is open and will go on, so the result is always that of
/// the four rules.
class SingleNodeSearch {
 public:
  /// `descendant`: the path begins with "//".
  SingleNodeSearch(const XPathSteps& steps, bool descendant);

  /// Searches `node` with step `k`. Result: the node found, borrowed, or null.
  IXMLDOMNode* Run(IXMLDOMNode* node, int k);

 private:
  /// A search that is open: its node was tested, and children are being searched.
  struct Frame {
    IXMLDOMNode* node;
    int childStep;    // with which the children are searched
    bool matched;     // the node matched its step
    bool isRuleFour;  // the children are searched by rule 4
  };

  /// What else is known of an open search in a path with dots.
  struct Trace {
    int step;             // with which the node was tested
    IXMLDOMNode* parent;  // whose children are searched
    std::size_t visit;    // the number of the test
  };

  IXMLDOMNode* FindChainBelow(IXMLDOMNode* parent) const;
  IXMLDOMNode* FindDescendant(IXMLDOMNode* node);
  bool Open(IXMLDOMNode* node, int k);
  bool Begin(IXMLDOMNode* node, int k);
  void Push(const Frame& frame, IXMLDOMNode* parent, int k);
  void FinishChildren();
  void SearchAgain();
  void Close();
  void MoveTo(IXMLDOMNode* child);
  IXMLDOMNode* ChildToSearch(IXMLDOMNode* child);
  bool MayRepeat() const;
  void NoteReports();

  const XPathSteps& m_steps;
  const bool m_descendant;

  const bool m_remembers;  // the path has dots; only then are the following seven used
  SearchMemory m_memory;
  Stack<Trace, 4> m_traces;       // one for each frame
  std::size_t m_visits;           // tests so far
  std::size_t m_tested;           // different pairs of a node and a step that were tested
  std::size_t m_meetings;         // searches begun so far, with those that were left out
  std::size_t m_leftOutSince;     // tests from this number on are left out; 0: none are
  std::size_t m_leftOutInFrames;  // this is so while at least this many frames are open

  const ReportCount m_reportCount;
  const unsigned long m_reportsBefore;  // the count of reports at the beginning
  unsigned long m_reports;              // the count of reports when it was looked at last
  Stack<Frame, 32> m_frames;
  std::size_t m_matchedFrames;  // how many of the frames are of matched nodes
  // How many frames, from the outermost on, had something reported below them. A report is made
  // below all frames that are open, so these are always the outermost ones.
  std::size_t m_framesWithReports;
  IXMLDOMNode* m_next;  // the child of the innermost frame to search next, or null
  IXMLDOMNode* m_found;
};

}  // namespace xmldom

#endif
