#ifndef XMLDOM_TOOLS_DOCUMENT_PATHCOMPARISONS_H
#define XMLDOM_TOOLS_DOCUMENT_PATHCOMPARISONS_H

#include <unordered_map>
#include <unordered_set>

class IXMLDOMNode;

namespace tool {

struct PathPredicate;
struct PathStep;

/// Tells which elements the comparisons of a path hold for, during one search or several in one
/// tree. The tree must not be changed as long as this lives. The library decides.
class PathComparisons {
 public:
  /// Which elements a step of the path may be asked about.
  enum Reach {
    kOneDepth,  ///< None of them stands below another: the library is asked about each by itself.
    kAnyDepth   ///< They may be nested in each other, and the text of one is a part of that of the
                ///< others: the library is asked once about all elements that have the name of the
                ///< step, because it then reads a text only once.
  };
  explicit PathComparisons(Reach reach) : m_reach(reach) {}

  PathComparisons(const PathComparisons&) = delete;
  PathComparisons& operator=(const PathComparisons&) = delete;

  /// Whether a comparison holds for an element. Bad input: `comparison` is one of the predicates of
  /// `step`, both are borrowed for as long as this lives, and `element` has the name of the step.
  /// Cost: with kOneDepth that of the comparison; with kAnyDepth it is constant, but for the first
  /// call with a comparison, which costs what the library takes to search for the step in the whole
  /// document, and so is linear in it where no text that is compared is logged.
  bool Hold(const PathStep& step, const PathPredicate& comparison, IXMLDOMNode* element);

 private:
  typedef std::unordered_set<const IXMLDOMNode*> Elements;

  const Reach m_reach;
  std::unordered_map<const PathPredicate*, Elements> m_holding;  // by the comparison
};

}  // namespace tool

#endif
