#ifndef XMLDOM_QUERY_SINGLENODESEARCH_H
#define XMLDOM_QUERY_SINGLENODESEARCH_H

#include <xmldom/base/Stack.h>
#include <xmldom/query/SearchMemory.h>
#include <xmldom/query/XPathStep.h>

#include <cstddef>

class IXMLDOMNode;

namespace xmldom {

/// The depth-first search for the first node that a path selects.
///
/// A search of node n with step k is this:
///   1. When k is at least 0, n must match step k, else go on with 4. Step -1 matches any node.
///   2. When k is the last step, n is the result.
///   3. Each ".." of the steps that follow moves to the parent (without one the search of n fails),
///      each "." stays; then each child of the node arrived at is searched with the next step.
///   4. In a path that begins with "//" each child of n is searched with step 0.
/// The first search that succeeds ends all.
///
/// A search that is met again while it is open, which ".." below "//" can bring about, yields
/// nothing.
///
/// Done plainly, 4 repeats below a matched node all that 3 has searched there, at each level again:
/// exponential in the depth. What has failed once fails again, so a repeat matters only for what it
/// logs and prints. It is made when anything below was heard the first time, and when fewer than
/// six matched nodes are open above; the node that the search begins with counts as one. Else 4
/// does no more than 3 has left: it tests the chains that begin at the children, which 3 has not
/// tested with step 0. So no node is tested more than 64 times with a step, and where nothing is
/// heard, once.
///
/// In a path with "." or "..", 3 can bring the search back to where it was, and what it has left is
/// no longer told by the place. Such a search remembers for each node and step what was searched.
/// While nothing has been heard, the children of a node are searched on from where any search of
/// them with that step has come. After that they are searched again as often as 3 and 4 say, but
/// below six matched nodes 4 leaves out what was searched since its node was opened, and nothing is
/// repeated while there have been 64 tests, on average, of each node with each step. The result
/// does not depend on any of this: what is left out has failed, or is open and so goes on further
/// out.
class SingleNodeSearch {
 public:
  /// `descendant`: the path begins with "//".
  SingleNodeSearch(const XPathSteps& steps, bool descendant);

  /// Searches `node` with step `k`. Result: the node found, borrowed, or null.
  IXMLDOMNode* Run(IXMLDOMNode* node, int k);

 private:
  /// A search that is open: its node was tested, and its children are being searched.
  struct Frame {
    IXMLDOMNode* node;
    int childStep;  // with which the children are searched
    bool matched;   // the node matched its step
    bool repeats;   // this is 4
  };

  /// What more there is to an open search in a path with "." or "..".
  struct Trace {
    int step;             // with which the node was tested
    IXMLDOMNode* parent;  // whose children are searched
    std::size_t visit;    // the number of the test
  };

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
  const bool m_remembers;  // the path has "." or "..": the next seven are kept
  SearchMemory m_memory;
  Stack<Trace, 4> m_traces;       // one a frame
  std::size_t m_visits;           // tests so far
  std::size_t m_tested;           // nodes and steps that they were of
  std::size_t m_meetings;         // tests, and searches that were left out one by one
  std::size_t m_leftOutSince;     // what was tested from this visit on is left out; 0 for nothing
  std::size_t m_leftOutInFrames;  // while there are so many frames
  const unsigned long m_reportsBefore;  // notices before all this
  unsigned long m_reports;              // notices so far
  Stack<Frame, 32> m_frames;
  std::size_t m_matchedFrames;  // how many of them are of matched nodes
  std::size_t
      m_framesWithReports;  // how many of them, from the outermost on, have heard from below
  IXMLDOMNode* m_next;      // child of the innermost frame to be searched next, or null
  IXMLDOMNode* m_found;
};

/// The first node in document order that the steps from `firstStep` on select, one level a step,
/// beginning with the chain of siblings at `head`; borrowed, or null.
IXMLDOMNode* FindChain(IXMLDOMNode* head, const XPathSteps& steps, int firstStep);

}  // namespace xmldom

#endif
