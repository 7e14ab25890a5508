#ifndef XMLDOM_QUERY_XPATHSTEP_H
#define XMLDOM_QUERY_XPATHSTEP_H

#include <cstddef>
#include <vector>

class CXPathList;

namespace xmldom {

/// A stretch of somebody else's text.
struct TextRange {
  const char* begin;
  const char* end;

  std::size_t Length() const { return static_cast<std::size_t>(end - begin); }
  bool StartsWith(char c) const { return begin != end && *begin == c; }
};

/// The range of a whole NUL-terminated text.
TextRange WholeText(const char* text);

/// Whether a text, which may be missing, equals a range.
bool Equals(const char* text, const TextRange& range);

/// One step of a path, split once for a whole query. Borrows the step's text.
struct XPathStep {
  const char* text;        // null for a step that there is none of
  TextRange name;          // all before the first '['
  const char* predicates;  // from that '[' on, or null
  bool anyName;            // the name is "*"

  bool HasDots() const { return text != nullptr && *text == '.'; }
  bool IsParent() const { return HasDots() && text[1] == '.'; }
};

/// Splits a step; null gives the step that there is none of.
XPathStep SplitStep(const char* text);

/// The steps of a path, split. Borrows the texts of the list, which must outlive it unchanged.
class XPathSteps {
 public:
  /// Builds the list's index when it is missing.
  explicit XPathSteps(CXPathList& list);

  int Count() const { return static_cast<int>(m_steps.size()); }

  /// Step k, counted from 0; the step that there is none of for any k outside.
  const XPathStep& At(int k) const {
    return k >= 0 && k < Count() ? m_steps[static_cast<std::size_t>(k)] : m_none;
  }

  /// Whether any step moves instead of matching.
  bool HasDots() const { return m_hasDots; }

 private:
  std::vector<XPathStep> m_steps;
  XPathStep m_none;
  bool m_hasDots;
};

/// One segment of a predicate: those before the last name the way, the last holds the test.
struct XPathSegment {
  TextRange text;    // without the '@'
  bool isAttribute;  // an '@' stood before it
  bool anyName;      // it begins with '*'
};

/// Cuts a predicate at each '/' outside quotes. There is always a last segment.
class XPathPredicate {
 public:
  explicit XPathPredicate(const TextRange& text);

  std::size_t Count() const { return m_rest.size() + 1; }
  const XPathSegment& At(std::size_t i) const { return i == 0 ? m_first : m_rest[i - 1]; }

 private:
  XPathSegment m_first;  // the only one, most of the time
  std::vector<XPathSegment> m_rest;
};

}  // namespace xmldom

#endif
