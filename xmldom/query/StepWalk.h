#ifndef XMLDOM_QUERY_STEPWALK_H
#define XMLDOM_QUERY_STEPWALK_H

#include <xmldom/dom/TreeWalk.h>
#include <xmldom/query/NodeMatch.h>
#include <xmldom/query/XPathStep.h>

namespace xmldom {

/// A receiver of nodes that is content with the first.
class FirstNode {
 public:
  FirstNode() : m_node(nullptr) {}

  void Take(IXMLDOMNode* node) { m_node = node; }
  bool HasEnough() const { return m_node != nullptr; }

  /// Borrowed; null when there was none.
  IXMLDOMNode* Get() const { return m_node; }

 private:
  IXMLDOMNode* m_node;
};

/// Goes down one level a step, as long as nodes match, and gives each node that matches the last
/// step to the receiver.
template <class Receiver>
class StepVisitor : public PreOrderVisitor {
 public:
  StepVisitor(const XPathSteps& steps, int firstStep, const Receiver& receiver)
      : m_steps(steps), m_firstStep(firstStep), m_receiver(receiver) {}

  IXMLDOMNode* Enter(IXMLDOMNode* node, std::size_t depth) {
    const int k = m_firstStep + static_cast<int>(depth);
    if (!MatchesStep(node, m_steps.At(k))) return nullptr;
    if (k + 1 < m_steps.Count()) return node->m_pFirstChild;
    m_receiver.Take(node);
    return nullptr;
  }

  bool IsDone() const { return m_receiver.HasEnough(); }

  const Receiver& Received() const { return m_receiver; }

 private:
  const XPathSteps& m_steps;
  int m_firstStep;
  Receiver m_receiver;
};

/// Gives the nodes that the steps from `firstStep` on select, one level a step, to a receiver, in
/// document order. The first level is the chain of siblings that starts at `head`. Result: the
/// receiver as it is afterwards.
template <class Receiver>
Receiver WalkSteps(IXMLDOMNode* head, const XPathSteps& steps, int firstStep,
                   const Receiver& receiver) {
  StepVisitor<Receiver> visitor(steps, firstStep, receiver);
  WalkChain<SideTrail>(head, visitor);
  return visitor.Received();
}

}  // namespace xmldom

#endif
