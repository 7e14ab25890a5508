#include <xmldom/query/SingleNodeSearch.h>

#include <xmldom/dom/ReportCount.h>
#include <xmldom/dom/TreeWalk.h>
#include <xmldom/query/NodeMatch.h>

namespace xmldom {

namespace {

/// Walks down one level a step, as long as nodes match, up to the first that matches the last.
class ChainFinder : public PreOrderVisitor {
 public:
  ChainFinder(const XPathSteps& steps, int firstStep)
      : m_steps(steps), m_firstStep(firstStep), m_found(nullptr) {}

  IXMLDOMNode* Enter(IXMLDOMNode* node, std::size_t depth) {
    const int k = m_firstStep + static_cast<int>(depth);
    if (!MatchesStep(node, m_steps.At(k))) return nullptr;
    if (k + 1 < m_steps.Count()) return node->m_pFirstChild;
    m_found = node;
    return nullptr;
  }

  bool IsDone() const { return m_found != nullptr; }
  IXMLDOMNode* Found() const { return m_found; }

 private:
  const XPathSteps& m_steps;
  int m_firstStep;
  IXMLDOMNode* m_found;
};

/// Walks everything, up to the first node that matches the only step.
class DescendantFinder : public PreOrderVisitor {
 public:
  explicit DescendantFinder(const XPathStep& step) : m_step(step), m_found(nullptr) {}

  IXMLDOMNode* Enter(IXMLDOMNode* node, std::size_t) {
    if (MatchesStep(node, m_step)) m_found = node;
    return node->m_pFirstChild;
  }

  bool IsDone() const { return m_found != nullptr; }
  IXMLDOMNode* Found() const { return m_found; }

 private:
  const XPathStep& m_step;
  IXMLDOMNode* m_found;
};

/// Below how many matched nodes, each within the one before, a search that was heard is repeated.
/// Each doubles the tests below it: 2 to the power of 6 are 64.
const std::size_t kMostRepeats = 6;

/// How many tests there may be, on average, of a node with a step in a path with "." or "..". In
/// other paths no more can come about.
const std::size_t kMostTests = 1u << kMostRepeats;

/// The same of searches that are met, and left out one by one for the most part. They cost little.
const std::size_t kMostMeetings = 4 * kMostTests;

/// Moves along the "." and ".." of the steps from `*k` on. Result: where they lead, null when there
/// is no parent; `*k` is then the step behind them.
IXMLDOMNode* FollowDots(IXMLDOMNode* node, const XPathSteps& steps, int* k) {
  for (; node != nullptr && steps.At(*k).HasDots(); ++*k) {
    if (steps.At(*k).IsParent()) node = node->m_pParent;
  }
  return node;
}

}  // namespace

IXMLDOMNode* FindChain(IXMLDOMNode* head, const XPathSteps& steps, int firstStep) {
  ChainFinder finder(steps, firstStep);
  WalkChain<SideTrail>(head, finder);
  return finder.Found();
}

SingleNodeSearch::SingleNodeSearch(const XPathSteps& steps, bool descendant)
    : m_steps(steps),
      m_descendant(descendant),
      m_remembers(steps.HasDots()),
      m_visits(0),
      m_tested(0),
      m_meetings(0),
      m_leftOutSince(0),
      m_leftOutInFrames(0),
      m_reportsBefore(ReportCount::Now()),
      m_reports(m_reportsBefore),
      m_matchedFrames(0),
      m_framesWithReports(0),
      m_next(nullptr),
      m_found(nullptr) {}

IXMLDOMNode* SingleNodeSearch::Run(IXMLDOMNode* node, int k) {
  if (k == -1 && !m_remembers && m_steps.Count() != 0) {
    if (!m_descendant) return FindChain(node->m_pFirstChild, m_steps, 0);
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

/// The search of all that is below a node for one step: here 4 repeats 3 once, and nothing else
/// does.
IXMLDOMNode* SingleNodeSearch::FindDescendant(IXMLDOMNode* node) {
  DescendantFinder finder(m_steps.At(0));
  WalkChain<SideTrail>(node->m_pFirstChild, finder);
  if (!finder.IsDone() && ReportCount::Now() != m_reportsBefore) {
    WalkChain<SideTrail>(node->m_pFirstChild, finder);
  }
  return finder.Found();
}

/// Tests the node and opens the search of its children. Result: false when there is no more to it,
/// because it has failed or is the one.
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

/// Notes that the node is tested with a step. Result: false when it is not to be tested.
bool SingleNodeSearch::Begin(IXMLDOMNode* node, int k) {
  SearchRecord& record = m_memory.At(node, k);
  if (record.isOpen) return false;
  if (m_leftOutSince != 0 && record.visit >= m_leftOutSince) return false;
  m_tested += record.visit == 0;
  record.visit = ++m_visits;
  return true;
}

/// Opens the search of the children of `parent`; `k` is the step with which the frame's node was
/// tested.
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

/// Goes on with a child of the innermost search, or with none.
void SingleNodeSearch::MoveTo(IXMLDOMNode* child) {
  m_next = m_remembers ? ChildToSearch(child) : child;
}

/// Which child of the innermost search is next where `child` would be: the first that no search of
/// these children has come to yet, when all before it can be left out.
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

/// Whether searches that have failed, or are open, are met once more.
bool SingleNodeSearch::MayRepeat() const {
  return ReportCount::Now() != m_reportsBefore && m_visits < kMostTests * m_tested &&
         m_meetings < kMostMeetings * m_tested;
}

/// Notes whether anything was heard since the last time: all frames that are open now have.
void SingleNodeSearch::NoteReports() {
  if (ReportCount::Now() == m_reports) return;
  m_reports = ReportCount::Now();
  m_framesWithReports = m_frames.Size();
}

/// All children of the innermost search have failed: repeats them as far as that can matter.
void SingleNodeSearch::FinishChildren() {
  Frame& frame = m_frames.Top();
  if (m_descendant && !frame.repeats) {
    const bool isOuter = m_matchedFrames <= kMostRepeats;
    if (m_remembers || (isOuter && m_framesWithReports == m_frames.Size())) {
      if (!isOuter && m_leftOutSince == 0) {
        m_leftOutSince = m_traces.Top().visit;
        m_leftOutInFrames = m_frames.Size();
      }
      SearchAgain();
      return;
    }
    // Searched with step 0 before, at the start, the chains have been tested too.
    if (frame.childStep != 0) {
      m_found = FindChain(frame.node->m_pFirstChild, m_steps, 0);
      NoteReports();
      if (m_found != nullptr) return;
    }
  }
  Close();
}

/// Searches the children of the innermost node with step 0.
void SingleNodeSearch::SearchAgain() {
  Frame& frame = m_frames.Top();
  frame.repeats = true;
  frame.childStep = 0;
  if (m_remembers) m_traces.Top().parent = frame.node;
  MoveTo(frame.node->m_pFirstChild);
}

/// The innermost search has failed.
void SingleNodeSearch::Close() {
  if (m_leftOutInFrames == m_frames.Size()) m_leftOutSince = m_leftOutInFrames = 0;
  const Frame frame = m_frames.Pop();
  m_matchedFrames -= frame.matched;
  if (m_framesWithReports > m_frames.Size()) m_framesWithReports = m_frames.Size();
  if (m_remembers) m_memory.At(frame.node, m_traces.Pop().step).isOpen = false;
  MoveTo(frame.node->m_pNextSibling);
}

}  // namespace xmldom
