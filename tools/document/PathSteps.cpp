// Takes one step of a path from one node: the children of its name, and of these the ones that the
// predicates leave, one predicate after the other.
// Tested by tests/tool/PathSearch_test.cpp.

#include <tools/document/PathSteps.h>

#include <tools/document/DocumentOrder.h>
#include <tools/document/PathComparisons.h>
#include <tools/document/PathSyntax.h>

#include <xmldom/text/NodeTexts.h>

#include <algorithm>

namespace tool {

namespace {

typedef std::vector<IXMLDOMNode*> Nodes;

bool IsCalled(const IXMLDOMNode* node, const std::string& name) {
  return name == "*" || name == node->m_pszNodeName;
}

/// Whether the names of an existence test lead anywhere from `node`.
bool Leads(IXMLDOMNode* node, const std::vector<std::string>& names) {
  struct Place {
    const IXMLDOMNode* node;
    std::size_t depth;  // how many of the names have led to it
  };
  std::vector<Place> places = {{node, 0}};
  while (!places.empty()) {
    const Place place = places.back();
    places.pop_back();
    const std::string& name = names[place.depth];
    const bool isLast = place.depth + 1 == names.size();
    if (name[0] == '@') {
      if (FindAttribute(place.node, name.substr(1)) != nullptr) return true;
      continue;
    }
    for (IXMLDOMNode* child = ElementFrom(place.node->m_pFirstChild); child != nullptr;
         child = ElementFrom(child->m_pNextSibling)) {
      if (!IsCalled(child, name)) continue;
      if (isLast) return true;
      places.push_back({child, place.depth + 1});
    }
  }
  return false;
}

/// Leaves of the nodes from `begin` on, which a step has found from one node, those for which one
/// of its predicates is true.
void Apply(const PathStep& step, const PathPredicate& predicate, PathComparisons& comparisons,
           Nodes& nodes, std::size_t begin) {
  const std::size_t count = nodes.size() - begin;
  const bool isPosition = predicate.kind == PathPredicate::kPosition;
  if (isPosition || predicate.kind == PathPredicate::kLast) {
    const std::size_t position = isPosition ? predicate.position : count;
    const bool isThere = position > 0 && position <= count;
    if (isThere) nodes[begin] = nodes[begin + position - 1];
    nodes.resize(begin + (isThere ? 1 : 0));
    return;
  }
  const auto fails = [&](IXMLDOMNode* node) {
    if (predicate.kind == PathPredicate::kExistence) return !Leads(node, predicate.names);
    return !comparisons.Hold(step, predicate, node);
  };
  nodes.erase(
      std::remove_if(nodes.begin() + static_cast<std::ptrdiff_t>(begin), nodes.end(), fails),
      nodes.end());
}

}  // namespace

void TakeStep(const PathStep& step, IXMLDOMNode* from, PathComparisons& comparisons,
              Nodes& selected) {
  const std::size_t begin = selected.size();
  for (IXMLDOMNode* child = ElementFrom(from->m_pFirstChild); child != nullptr;
       child = ElementFrom(child->m_pNextSibling)) {
    if (IsCalled(child, step.name)) selected.push_back(child);
  }
  for (const PathPredicate& predicate : step.predicates) {
    Apply(step, predicate, comparisons, selected, begin);
  }
}

IXMLDOMNode* FindAttribute(const IXMLDOMNode* element, const std::string& name) {
  return name == "*" ? element->m_pFirstAttribute : xmldom::FindAttribute(element, name.c_str());
}

}  // namespace tool
