// Asks the library about comparisons: about one element, or in one search about all elements of the
// document, whose answers are kept. In such a search the library remembers the texts of elements
// that stand in each other. Tested by tests/tool/PathComparisons_test.cpp.

#include <tools/document/PathComparisons.h>

#include <tools/document/PathSyntax.h>

#include <xmldom/dom/XMLNode.h>
#include <xmldom/xmldom_ptr.h>

#include <string>

namespace tool {

bool PathComparisons::Hold(const PathStep& step, const PathPredicate& comparison,
                           IXMLDOMNode* element) {
  if (m_reach == kOneDepth) return element->MatchesSubquery(comparison.comparison.c_str()) != 0;
  const auto placed = m_holding.emplace(&comparison, Elements());
  Elements& holding = placed.first->second;
  if (placed.second) {
    const std::string path = "//" + step.name + "[" + comparison.comparison + "]";
    for (const XMLPtr<IXMLDOMNode> found : xmldom::Selected(element, path.c_str())) {
      holding.insert(found.Get());
    }
  }
  return holding.count(element) != 0;
}

}  // namespace tool
