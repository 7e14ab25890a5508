#include <xmldom/query/SingleNodeSearch.h>

#include <xmldom/dom/Reports.h>
#include <xmldom/dom/TreeWalk.h>
#include <xmldom/query/NodeMatch.h>

#include <algorithm>

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
  WalkChain<HeapTrail>(head, finder);
  return finder.Found();
}

SingleNodeSearch::SingleNodeSearch(const XPathSteps& steps, bool descendant)
    : m_steps(steps),
      m_descendant(descendant),
      m_remembers(steps.HasDots()),
      m_heardBefore(Notices::Count()),
      m_heard(m_heardBefore),
      m_framesThatHeard(0),
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
      m_next = m_next->m_pNextSibling;
    }
  }
  return m_found;
}

/// The search of all that is below a node for one step: here 4 repeats 3 once, and nothing else
/// does.
IXMLDOMNode* SingleNodeSearch::FindDescendant(IXMLDOMNode* node) {
  DescendantFinder finder(m_steps.At(0));
  WalkChain<HeapTrail>(node->m_pFirstChild, finder);
  if (!finder.IsDone() && Notices::Count() != m_heardBefore) {
    WalkChain<HeapTrail>(node->m_pFirstChild, finder);
  }
  return finder.Found();
}

/// Tests the node and opens the search of its children. Result: false when there is no more to it,
/// because it has failed or is the one.
bool SingleNodeSearch::Open(IXMLDOMNode* node, int k) {
  if (m_remembers && IsSettled(Search(node, k))) return false;
  const unsigned long heard = Notices::Count();
  if (k >= 0 && !MatchesStep(node, m_steps.At(k))) {
    Listen();
    if (!m_descendant || (!m_remembers && node->m_pFirstChild == nullptr)) return false;
    Push(Frame{node, 0, true}, node->m_pFirstChild, k, heard);
    return true;
  }
  if (k == m_steps.Count() - 1) {
    m_found = node;
    return false;
  }
  Listen();
  int childStep = k + 1;
  IXMLDOMNode* arrived = FollowDots(node, m_steps, &childStep);
  if (arrived == nullptr) return false;
  Push(Frame{node, childStep, false}, arrived->m_pFirstChild, k, heard);
  return true;
}

void SingleNodeSearch::Push(const Frame& frame, IXMLDOMNode* firstChild, int k,
                            unsigned long heard) {
  if (m_remembers) {
    m_known[Search(frame.node, k)].frame = m_frames.Size();
    m_traces.Push(Trace{k, SIZE_MAX, heard});
  }
  m_frames.Push(frame);
  m_next = firstChild;
}

/// Notes whether anything was heard since the last time: all frames that are open now have.
void SingleNodeSearch::Listen() {
  if (Notices::Count() == m_heard) return;
  m_heard = Notices::Count();
  m_framesThatHeard = m_frames.Size();
}

/// All children of the innermost search have failed: repeats them as far as that can matter.
void SingleNodeSearch::FinishChildren() {
  Frame& frame = m_frames.Top();
  if (m_descendant && !frame.repeats) {
    IXMLDOMNode* children = frame.node->m_pFirstChild;
    if (m_remembers || m_framesThatHeard == m_frames.Size()) {
      frame.repeats = true;
      frame.childStep = 0;
      m_next = children;
      return;
    }
    // Searched with step 0 before, at the start, the chains have been tested too.
    if (frame.childStep != 0) {
      m_found = FindChain(children, m_steps, 0);
      Listen();
      if (m_found != nullptr) return;
    }
  }
  Close();
}

/// The innermost search has failed.
void SingleNodeSearch::Close() {
  IXMLDOMNode* node = m_frames.Pop().node;
  if (m_framesThatHeard > m_frames.Size()) m_framesThatHeard = m_frames.Size();
  m_next = node->m_pNextSibling;
  if (m_remembers) CloseTrace(node);
}

/// Whether a search yields nothing: it has failed before and would only do so again without a
/// sound, or it is still open.
bool SingleNodeSearch::IsSettled(const Search& search) {
  const auto known = m_known.find(search);
  if (known == m_known.end()) return false;
  const Knowledge& knowledge = known->second;
  if (knowledge.hasFailed) return true;
  if (knowledge.hasFailedUnheard && Notices::Count() == m_heardBefore) {
    // It may have met a search that is still open; then so has the one that skips it here.
    m_traces.Top().lowestMet = 0;
    return true;
  }
  if (knowledge.frame == SIZE_MAX) return false;
  Trace& trace = m_traces.Top();
  trace.lowestMet = std::min(trace.lowestMet, knowledge.frame);
  return true;
}

/// What is to be remembered of the search of `node`, whose frame is gone.
void SingleNodeSearch::CloseTrace(IXMLDOMNode* node) {
  const Trace trace = m_traces.Pop();
  Knowledge& knowledge = m_known[Search(node, trace.step)];
  knowledge.frame = SIZE_MAX;
  if (trace.lowestMet < m_frames.Size()) {
    // It has met a search that is still open, and so has the one around it. Once that is closed
    // this one could come further, though only to what has been tested by then: that matters when
    // it can be heard.
    Trace& outer = m_traces.Top();
    outer.lowestMet = std::min(outer.lowestMet, trace.lowestMet);
    knowledge.hasFailedUnheard = true;
  } else if (trace.heard == Notices::Count()) {
    knowledge.hasFailed = true;
  }
}

}  // namespace xmldom
