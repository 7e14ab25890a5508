#ifndef XMLDOM_QUERY_SINGLENODESEARCH_H
#define XMLDOM_QUERY_SINGLENODESEARCH_H

#include <xmldom/base/Stack.h>
#include <xmldom/query/XPathStep.h>

#include <cstddef>
#include <cstdint>
#include <map>
#include <utility>

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
/// As described, 4 repeats below a matched node all that 3 has searched there, at each level again:
/// exponential in the depth. What has failed once fails again, so a repeat matters only for what it
/// logs and prints. When nothing below was heard the first time, 4 tests no more than the chains
/// that begin at the children, which 3 has not tested with step 0; then no node is tested more
/// often than the path has steps. Paths with "." and ".." skip every search that has failed
/// unheard.
///
/// A search that is met again while it is open, which ".." below "//" can bring about, yields
/// nothing.
class SingleNodeSearch {
 public:
  /// `descendant`: the path begins with "//".
  SingleNodeSearch(const XPathSteps& steps, bool descendant);

  /// Searches `node` with step `k`. Result: the node found, borrowed, or null.
  IXMLDOMNode* Run(IXMLDOMNode* node, int k);

 private:
  typedef std::pair<IXMLDOMNode*, int> Search;

  /// A search that is open: its node was tested, and its children are being searched.
  struct Frame {
    IXMLDOMNode* node;
    int childStep;  // with which the children are searched
    bool repeats;   // this is 4
  };

  /// What more there is to know of an open search in a path with "." or "..".
  struct Trace {
    int step;
    std::size_t lowestMet;  // frame of the outermost open search that was met below
    unsigned long heard;    // notices before the node was tested
  };

  /// What is known of a search in a path with "." or "..".
  struct Knowledge {
    std::size_t frame = SIZE_MAX;   // while it is open
    bool hasFailed = false;         // nobody would hear it fail again
    bool hasFailedUnheard = false;  // the same as long as nothing at all has been heard
  };

  IXMLDOMNode* FindDescendant(IXMLDOMNode* node);
  bool IsSettled(const Search& search);
  bool Open(IXMLDOMNode* node, int k);
  void Push(const Frame& frame, IXMLDOMNode* firstChild, int k, unsigned long heard);
  void FinishChildren();
  void Close();
  void CloseTrace(IXMLDOMNode* node);
  void Listen();

  const XPathSteps& m_steps;
  const bool m_descendant;
  const bool m_remembers;  // the path has "." or "..": these two are kept
  std::map<Search, Knowledge> m_known;
  Stack<Trace, 4> m_traces;           // one a frame
  const unsigned long m_heardBefore;  // notices before all this
  unsigned long m_heard;              // notices so far
  Stack<Frame, 32> m_frames;
  std::size_t m_framesThatHeard;  // how many of them, from the outermost on, have heard from below
  IXMLDOMNode* m_next;            // child of the innermost frame to be searched next, or null
  IXMLDOMNode* m_found;
};

/// The first node in document order that the steps from `firstStep` on select, one level a step,
/// beginning with the chain of siblings at `head`; borrowed, or null.
IXMLDOMNode* FindChain(IXMLDOMNode* head, const XPathSteps& steps, int firstStep);

}  // namespace xmldom

#endif
