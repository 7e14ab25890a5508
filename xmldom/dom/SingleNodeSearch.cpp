#include <xmldom/dom/SingleNodeSearch.h>

#include <xmldom/dom/NodeMatch.h>
#include <xmldom/dom/Notices.h>
#include <xmldom/dom/TreeWalk.h>

#include <algorithm>
#include <cstdint>

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
      m_found(nullptr) {}

/// Whether a search has failed before, and would only do so again without a sound.
bool SingleNodeSearch::IsSettled(const Search& search) {
  if (m_failed.count(search) != 0) return true;
  if (Notices::Count() != m_heardBefore || m_failedUnheard.count(search) == 0) return false;
  // It may have met a search that is still open; then so has the one that skips it here.
  m_frames.back().lowestMet = 0;
  return true;
}

IXMLDOMNode* SingleNodeSearch::Run(IXMLDOMNode* node, int k) {
  if (k == -1 && !m_remembers && m_steps.Count() != 0) {
    if (!m_descendant) return FindChain(node->m_pFirstChild, m_steps, 0);
    if (m_steps.Count() == 1) return FindDescendant(node);
  }
  Open(node, k);
  while (m_found == nullptr && !m_frames.empty()) {
    Frame& frame = m_frames.back();
    if (frame.child == nullptr) {
      FinishChildren();
      continue;
    }
    IXMLDOMNode* child = frame.child;
    frame.child = child->m_pNextSibling;
    Open(child, frame.childStep);
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

/// Tests the node and opens the search of its children, or finds that there is no more to it.
void SingleNodeSearch::Open(IXMLDOMNode* node, int k) {
  const Search search(node, k);
  if (m_remembers) {
    if (IsSettled(search)) return;
    const auto open = m_open.find(search);
    if (open != m_open.end()) {
      Frame& top = m_frames.back();
      top.lowestMet = std::min(top.lowestMet, open->second);
      return;
    }
  }

  const unsigned long heard = Notices::Count();
  if (k >= 0 && !MatchesStep(node, m_steps.At(k))) {
    if (!m_descendant) return;
    if (!m_remembers && node->m_pFirstChild == nullptr) return;
    PushFrame(search, node->m_pFirstChild, 0, heard);
    m_frames.back().repeats = true;
    return;
  }
  if (k == m_steps.Count() - 1) {
    m_found = node;
    return;
  }
  int childStep = k + 1;
  IXMLDOMNode* arrived = FollowDots(node, m_steps, &childStep);
  if (arrived == nullptr) return;
  PushFrame(search, arrived->m_pFirstChild, childStep, heard);
}

void SingleNodeSearch::PushFrame(const Search& search, IXMLDOMNode* firstChild, int childStep,
                                 unsigned long heard) {
  if (m_remembers) m_open[search] = m_frames.size();
  m_frames.push_back(
      Frame{search, firstChild, childStep, false, SIZE_MAX, heard, Notices::Count()});
}

/// All children of the innermost search have failed: repeats them as far as that can matter.
void SingleNodeSearch::FinishChildren() {
  Frame& frame = m_frames.back();
  if (frame.repeats || !m_descendant) {
    Close();
    return;
  }
  IXMLDOMNode* children = frame.search.first->m_pFirstChild;
  if (m_remembers || Notices::Count() != frame.heardBelow) {
    frame.repeats = true;
    frame.child = children;
    frame.childStep = 0;
    return;
  }
  // Searched with step 0 before, at the start, the chains have been tested too.
  if (frame.childStep != 0) m_found = FindChain(children, m_steps, 0);
  if (m_found == nullptr) Close();
}

/// The innermost search has failed.
void SingleNodeSearch::Close() {
  const Frame frame = m_frames.back();
  m_frames.pop_back();
  if (!m_remembers) return;
  m_open.erase(frame.search);
  if (frame.lowestMet < m_frames.size()) {
    // It has met a search that is still open, and so has the one around it. Once that is closed
    // this one could come further, though only to what has been tested by then: that matters when
    // it can be heard.
    Frame& outer = m_frames.back();
    outer.lowestMet = std::min(outer.lowestMet, frame.lowestMet);
    m_failedUnheard.insert(frame.search);
  } else if (frame.heard == Notices::Count()) {
    m_failed.insert(frame.search);
  }
}

}  // namespace xmldom
