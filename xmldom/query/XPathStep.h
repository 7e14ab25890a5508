#ifndef XMLDOM_QUERY_XPATHSTEP_H
#define XMLDOM_QUERY_XPATHSTEP_H

#include <xmldom/base/Text.h>

#include <cstddef>
#include <vector>

class CXPathList;

// The steps of a path, split once for a whole query: into names, predicates, the segments of each
// predicate and its test. Nothing is copied; all ranges point into the texts of the path list.

namespace xmldom {

/// One segment of a predicate such as `a/b/@c='x'`. The segments before the last lead from a node
/// to the candidates that are tested; the last one holds the test.
struct XPathSegment {
  TextRange text;    // without the '@'
  bool isAttribute;  // an '@' stands before it: its candidates are attributes, not children
  bool anyName;      // it begins with '*'
};

/// The test at the end of a predicate: name=number, name='text' or name="text".
struct XPathTest {
  enum Kind {
    NEVER_TRUE,   // it has no '='
    NUMBER,       // compares as integers
    LITERAL,      // compares as texts
    OPEN_LITERAL  // its quote is not closed: never true, but the value is still read
  };

  Kind kind;
  TextRange name;
  TextRange wanted;  // a literal without its quotes; the text of a number
};

/// One predicate, cut at each '/' outside quotes.
struct XPathPredicate {
  /// Effects: std::bad_alloc when memory is out.
  explicit XPathPredicate(const TextRange& text);

  std::vector<XPathSegment> segments;  // at least one
  XPathTest test;
};

/// One step of a path: a name, and predicates that all have to hold.
class XPathStep {
 public:
  /// How the text of the predicates ends.
  enum End {
    COMPLETE,
    WRONG_CHARACTER,  // a character other than '[' stands where the next one would begin
    UNTERMINATED      // the last one has no ']'
  };

  /// Splits `text`, which must stay as it is for as long as the step is used. A null text makes the
  /// missing step, which matches nothing and is reported when a node is tested with it.
  /// Effects: std::bad_alloc when memory is out.
  explicit XPathStep(const char* text);

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
  /// The predicates up to the first malformed one, in order.
  const std::vector<XPathPredicate>& Predicates() const { return m_predicates; }
  End PredicatesEnd() const { return m_end; }
  /// The character that ends the predicates when PredicatesEnd is WRONG_CHARACTER.
  char WrongCharacter() const { return m_wrongCharacter; }

 private:
  void SplitPredicates(const char* text);

  const char* m_text;
  TextRange m_name;
  bool m_anyName;
  bool m_hasPredicates;
  std::vector<XPathPredicate> m_predicates;
  End m_end;
  char m_wrongCharacter;
};

/// Splits the text of a step. Result: the name. Out: the text of the predicates, from the first '['
/// on, or null when there is none.
TextRange NameOfStep(const char* text, const char** predicates);

/// The steps of a path list, which must outlive this object unchanged.
class XPathSteps {
 public:
  /// Builds the index of the list when that is missing.
  /// Effects: std::bad_alloc when memory is out.
  explicit XPathSteps(CXPathList& list);

  XPathSteps(const XPathSteps&) = delete;
  XPathSteps& operator=(const XPathSteps&) = delete;

  /// The count of the list, which an application may have set to any number.
  int Count() const { return m_count; }

  /// Step k, counted from 0; the missing step for any k outside.
  const XPathStep& At(int k) const {
    const std::size_t i = static_cast<std::size_t>(k);
    return k >= 0 && i < m_steps.size() ? m_steps[i] : m_missing;
  }

  /// Whether any step begins with '.'.
  bool HasDots() const { return m_hasDots; }

 private:
  std::vector<XPathStep> m_steps;
  int m_count;
  XPathStep m_missing;
  bool m_hasDots;
};

}  // namespace xmldom

#endif
