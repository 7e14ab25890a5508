// The search for one node: a loop over a stack of open searches, which makes a failed search again
// only when that can log or print something. Tested by tests/query/SingleNodeSearch_test.cpp and
// tests/query/SingleNodeSearchRepeats_test.cpp.

#include <xmldom/query/SingleNodeSearch.h>

#include <xmldom/dom/XMLNode.h>
#include <xmldom/query/NodeMatch.h>
#include <xmldom/query/StepWalk.h>

namespace xmldom {

namespace {

/// A failed search that has reported something is repeated while at most this many frames of
/// matched nodes are open, its own among them. Each of them doubles the tests below it.
const std::size_t kMostRepeats = 6;

/// The most tests of a node with a step: 2 to the power of kMostRepeats. In a path with "." or ".."
/// it limits their average over all nodes and steps; in other paths no pair exceeds it.
const std::size_t kMostTests = 1u << kMostRepeats;

/// The limit of the same average for the searches that are begun. Most of them are left out before
/// a test, and so cost little.
const std::size_t kMostMeetings = 4 * kMostTests;

/// Follows the steps from `*k` on that are "." or "..". Result: the node that they lead to, or null
/// when a parent is missing. Out: `*k` is the first step behind them.
IXMLDOMNode* FollowDots(IXMLDOMNode* node, const XPathSteps& steps, int* k) {
  for (; node != nullptr && steps.At(*k).HasDots(); ++*k) {
    if (steps.At(*k).IsParent()) node = node->m_pParent;
  }
  return node;
}

}  // namespace

SingleNodeSearch::SingleNodeSearch(const XPathSteps& steps, bool descendant)
    : m_steps(steps),
      m_descendant(descendant),
      m_remembers(steps.HasDots()),
      m_visits(0),
      m_tested(0),
      m_meetings(0),
      m_leftOutSince(0),
      m_leftOutInFrames(0),
      m_reportsBefore(m_reportCount.Now()),
      m_reports(m_reportsBefore),
      m_matchedFrames(0),
      m_framesWithReports(0),
      m_next(nullptr),
      m_found(nullptr) {}

/// The first node in document order that the steps select, one level a step, from the children of
/// `parent` on; null when there is none.
IXMLDOMNode* SingleNodeSearch::FindChainBelow(IXMLDOMNode* parent) const {
  return WalkSteps(parent->m_pFirstChild, m_steps, 0, nullptr);
}

IXMLDOMNode* SingleNodeSearch::Run(IXMLDOMNode* node, int k) {
  if (k == -1 && !m_remembers && m_steps.Count() != 0) {
    if (!m_descendant) return FindChainBelow(node);
    if (m_steps.Count() == 1) return FindDescendant(node);
  }
  Open(node, k);
  while (m_found == nullptr && !m_frames.IsEmpty()) {
    if (m_next == nullptr) {
      FinishChildren();
    } else if (!Open(m_next, m_frames.Top().childStep)) {
      MoveTo(m_next->m_pNextSibling);
    }
  }
  return m_found;
}

/// Searches everything below a node for the only step. Rules 3 and 4 search the same children with
/// the same step, so a failed search is repeated once, and only if the first pass logged or printed
/// something.
IXMLDOMNode* SingleNodeSearch::FindDescendant(IXMLDOMNode* node) {
  IXMLDOMNode* found = WalkEverywhere(node->m_pFirstChild, m_steps.At(0), nullptr);
  if (found == nullptr && m_reportCount.Now() != m_reportsBefore) {
    found = WalkEverywhere(node->m_pFirstChild, m_steps.At(0), nullptr);
  }
  return found;
}

/// Begins the search of a node with step `k`: tests it and, when its children have to be searched,
/// opens a frame. Result: whether a frame was opened; if not, the search has failed, or m_found is
/// set.
bool SingleNodeSearch::Open(IXMLDOMNode* node, int k) {
  if (m_remembers && !Begin(node, k)) return false;
  if (k >= 0 && !MatchesStep(node, m_steps.At(k))) {
    NoteReports();
    if (!m_descendant || node->m_pFirstChild == nullptr) return false;
    Push(Frame{node, 0, false, true}, node, k);
    return true;
  }
  if (k == m_steps.Count() - 1) {
    m_found = node;
    return false;
  }
  NoteReports();
  int childStep = k + 1;
  IXMLDOMNode* arrived = FollowDots(node, m_steps, &childStep);
  if (arrived == nullptr) return false;
  Push(Frame{node, childStep, true, false}, arrived, k);
  return true;
}

/// Numbers the test of a node with a step. Result: false when the test is left out, because this
/// search is open already, or because of m_leftOutSince.
bool SingleNodeSearch::Begin(IXMLDOMNode* node, int k) {
  SearchRecord& record = m_memory.At(node, k);
  if (record.isOpen) return false;
  if (m_leftOutSince != 0 && record.visit >= m_leftOutSince) return false;
  m_tested += record.visit == 0;
  record.visit = ++m_visits;
  return true;
}

/// Opens a frame, whose children to search are those of `parent`; `k` is the step with which the
/// frame's node was tested.
void SingleNodeSearch::Push(const Frame& frame, IXMLDOMNode* parent, int k) {
  if (m_remembers) {
    SearchRecord& record = m_memory.At(frame.node, k);
    record.isOpen = true;
    m_traces.Push(Trace{k, parent, record.visit});
  }
  m_frames.Push(frame);
  m_matchedFrames += frame.matched;
  MoveTo(parent->m_pFirstChild);
}

/// Makes `child`, or a sibling behind it, the next to be searched in the innermost frame; null ends
/// the children of that frame.
void SingleNodeSearch::MoveTo(IXMLDOMNode* child) {
  m_next = m_remembers ? ChildToSearch(child) : child;
}

/// The child to search instead of `child` in the innermost frame. While nothing may be repeated,
/// that is the first that no search of these children with this step has come to: those before it
/// have failed, or are open.
IXMLDOMNode* SingleNodeSearch::ChildToSearch(IXMLDOMNode* child) {
  if (m_frames.IsEmpty()) return child;
  IXMLDOMNode* parent = m_traces.Top().parent;
  const int step = m_frames.Top().childStep;
  SearchRecord& all = m_memory.At(parent, step);
  if (!MayRepeat()) child = all.unreached;
  if (child == nullptr) return nullptr;
  ++m_meetings;
  if (child == all.unreached) all.unreached = child->m_pNextSibling;
  return child;
}

/// Whether searches that have failed or are open may be begun once more: something was reported, so
/// that a repeat could report too, and neither average has reached its limit.
bool SingleNodeSearch::MayRepeat() const {
  return m_reportCount.Now() != m_reportsBefore && m_visits < kMostTests * m_tested &&
         m_meetings < kMostMeetings * m_tested;
}

/// Called after every test: when it has reported something, it did so below all frames that are
/// open now.
void SingleNodeSearch::NoteReports() {
  if (m_reportCount.Now() == m_reports) return;
  m_reports = m_reportCount.Now();
  m_framesWithReports = m_frames.Size();
}

/// All children of the innermost frame have failed. Rule 4 begins, as far as it can find or report
/// anything; else the frame is closed.
void SingleNodeSearch::FinishChildren() {
  Frame& frame = m_frames.Top();
  if (m_descendant && !frame.isRuleFour) {
    const bool isOuter = m_matchedFrames <= kMostRepeats;
    if (m_remembers || (isOuter && m_framesWithReports == m_frames.Size())) {
      if (!isOuter && m_leftOutSince == 0) {
        m_leftOutSince = m_traces.Top().visit;
        m_leftOutInFrames = m_frames.Size();
      }
      SearchAgain();
      return;
    }
    // The children of the start are searched with step 0 by rule 3, which tests the chains below
    // them too.
    if (frame.childStep != 0) {
      m_found = FindChainBelow(frame.node);
      NoteReports();
      if (m_found != nullptr) return;
    }
  }
  Close();
}

/// Rule 4 in full: searches the children of the innermost frame's node with step 0.
void SingleNodeSearch::SearchAgain() {
  Frame& frame = m_frames.Top();
  frame.isRuleFour = true;
  frame.childStep = 0;
  if (m_remembers) m_traces.Top().parent = frame.node;
  MoveTo(frame.node->m_pFirstChild);
}

/// Removes the innermost frame, whose search has failed, and goes on with the sibling of its node.
void SingleNodeSearch::Close() {
  if (m_leftOutInFrames == m_frames.Size()) m_leftOutSince = m_leftOutInFrames = 0;
  const Frame frame = m_frames.Pop();
  m_matchedFrames -= frame.matched;
  if (m_framesWithReports > m_frames.Size()) m_framesWithReports = m_frames.Size();
  if (m_remembers) m_memory.At(frame.node, m_traces.Pop().step).isOpen = false;
  MoveTo(frame.node->m_pNextSibling);
}

}  // namespace xmldom
