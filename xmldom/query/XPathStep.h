#ifndef XMLDOM_QUERY_XPATHSTEP_H
#define XMLDOM_QUERY_XPATHSTEP_H

#include <xmldom/base/Stack.h>
#include <xmldom/base/Text.h>

#include <cstddef>

class CXPathList;

// The steps of a path, split once for a whole query: into names, predicates and the segments of
// each predicate. Nothing is copied; all ranges point into the texts of the path list. All steps
// are in one table, and the segments of all their predicates in another.

namespace xmldom {

/// One segment of a predicate such as `a/b/@c='x'`. The segments before the last lead from a node
/// to the candidates that are tested; the last one is the test: name=number, name='text' or
/// name="text".
struct XPathSegment {
  enum Kind {
    LEADS_ON,     // it is not the last: another segment of the same predicate follows
    NEVER_TRUE,   // a test without '='
    NUMBER,       // compares as integers
    LITERAL,      // compares as texts
    OPEN_LITERAL  // its quote is not closed: never true, but the value is still read
  };

  Kind kind;
  bool isAttribute;  // an '@' stands before it: its candidates are attributes, not children
  bool anyName;      // it begins with '*'; tests do not look at this
  TextRange name;    // without the '@'
  TextRange wanted;  // only of a test with '=': a literal without its quotes; the text of a number
};

class TextMemory;

/// The segments of predicates, one predicate behind the other, and the texts that the predicates
/// have been compared with.
class XPathSegments : public Stack<XPathSegment, 4> {
 public:
  XPathSegments() : m_texts(nullptr) {}
  ~XPathSegments();

  /// The texts of the elements with which the predicates are compared. Effects: std::bad_alloc when
  /// memory is out.
  TextMemory& Texts() const;

 private:
  mutable TextMemory* m_texts;  // null until it is needed
};

/// Cuts a predicate at each '/' outside quotes, and appends its segments, of which there is at
/// least one. Effects: std::bad_alloc when memory is out; segments that were appended stay.
void AppendPredicate(const TextRange& text, XPathSegments* segments);

/// One step of a path: a name, and predicates that all have to hold.
class XPathStep {
 public:
  XPathStep() = default;

  /// Splits `text`, which must stay as it is for as long as the step is used. A null text makes the
  /// missing step, which matches nothing and is reported when a node is tested with it. The
  /// segments of the predicates are appended to `segments`, which must outlive the step.
  /// Effects: std::bad_alloc when memory is out.
  XPathStep(const char* text, XPathSegments* segments);

  bool IsMissing() const { return m_text == nullptr; }

  /// Whether the step begins with '.': a single-node search then stays where it is, or moves to
  /// the parent (IsParent), instead of testing children.
  bool HasDots() const { return m_text != nullptr && *m_text == '.'; }
  bool IsParent() const { return HasDots() && m_text[1] == '.'; }

  /// Whether a node of that name can match: the name of the step is everything before the first
  /// '[', and "*" stands for any.
  bool NameMatches(const char* name) const { return m_anyName || Equals(name, m_name); }

  /// Whether anything stands behind the name.
  bool HasPredicates() const { return m_hasPredicates; }
  /// The segments of the predicates up to the first malformed one, in order. They are valid until
  /// another step is split into the same table.
  const XPathSegment* SegmentsBegin() const { return m_segments->Items() + m_firstSegment; }
  const XPathSegment* SegmentsEnd() const { return m_segments->Items() + m_endSegment; }
  /// The table that they are in.
  const XPathSegments& Segments() const { return *m_segments; }
  /// Where the predicates end: at the end of the text, or at a character other than '[' that stands
  /// where the next one would begin. Null when the last one has no ']'.
  const char* PredicatesEnd() const { return m_predicatesEnd; }

  /// Whether testing a node with the step can log or print something: it is missing, a predicate is
  /// malformed, or one reads the text of an element. Cost: linear in the segments.
  bool MayReport() const;

 private:
  void SplitPredicates(const char* text, XPathSegments* segments);

  const char* m_text;
  TextRange m_name;
  bool m_anyName;
  bool m_hasPredicates;
  const XPathSegments* m_segments;
  std::size_t m_firstSegment;
  std::size_t m_endSegment;
  const char* m_predicatesEnd;
};

/// Splits the text of a step. Result: the name. Out: the text of the predicates, from the first '['
/// on, or null when there is none.
TextRange NameOfStep(const char* text, const char** predicates);

/// The steps of a path, whose texts must outlive this object unchanged.
class XPathSteps {
 public:
  /// The steps of a list. Builds the index of the list when that is missing.
  /// Effects: std::bad_alloc when memory is out.
  explicit XPathSteps(CXPathList& list);
  /// The one step of that text, which may be null.
  /// Effects: std::bad_alloc when memory is out.
  explicit XPathSteps(const char* step);

  XPathSteps(const XPathSteps&) = delete;
  XPathSteps& operator=(const XPathSteps&) = delete;

  /// The count of the list, which an application may have set to any number.
  int Count() const { return m_count; }

  /// Step k, counted from 0; the missing step for any k outside.
  const XPathStep& At(int k) const {
    const std::size_t i = static_cast<std::size_t>(k);
    return k >= 0 && i < m_steps.Size() ? m_steps.Items()[i] : m_missing;
  }

  /// Whether any step begins with '.'.
  bool HasDots() const { return m_hasDots; }

 private:
  void Append(const char* step);

  Stack<XPathStep, 4> m_steps;
  XPathSegments m_segments;
  int m_count;
  XPathStep m_missing;
  bool m_hasDots;
};

}  // namespace xmldom

#endif
