#ifndef XMLDOM_QUERY_XPATHSTEP_H
#define XMLDOM_QUERY_XPATHSTEP_H

#include <cstddef>
#include <cstring>
#include <memory>

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
inline bool Equals(const char* text, const TextRange& range) {
  if (text == nullptr) return false;
  const std::size_t length = range.Length();
  // Most names differ in their first byte, which is cheaper to look at than to call for.
  if (length != 0 && *text != *range.begin) return false;
  return std::strncmp(text, range.begin, length) == 0 && text[length] == '\0';
}

/// One segment of a predicate: those before the last name the way, the last holds the test.
struct XPathSegment {
  TextRange text;    // without the '@'
  bool isAttribute;  // an '@' stood before it
  bool anyName;      // it begins with '*'
};

/// The test at the end of a predicate: name=number, name='text' or name="text".
struct XPathTest {
  enum Kind {
    HOLDS_NEVER,  // it has no '='
    NUMBER,
    LITERAL,
    OPEN_LITERAL  // a quote that is not closed: it never holds either, but the value is looked at
  };

  Kind kind;
  TextRange name;
  TextRange wanted;  // of a literal without its quotes; a number is followed by no digit
};

/// One predicate, cut at each '/' outside quotes.
class XPathPredicate {
 public:
  explicit XPathPredicate(const TextRange& text);

  XPathPredicate(const XPathPredicate&) = delete;
  XPathPredicate& operator=(const XPathPredicate&) = delete;

  /// At least 1.
  std::size_t Count() const { return m_count; }
  const XPathSegment& At(std::size_t i) const { return i == 0 ? m_first : m_rest[i - 1]; }
  const XPathTest& Test() const { return m_test; }

 private:
  XPathSegment m_first;  // the only one, most of the time
  std::unique_ptr<XPathSegment[]> m_rest;
  std::size_t m_count;
  XPathTest m_test;
};

/// One step of a path, split once for a whole query. Borrows the step's text.
class XPathStep {
 public:
  /// How the text of the predicates ends.
  enum End {
    COMPLETE,
    WRONG_CHARACTER,  // something else than a '[' begins the next
    UNTERMINATED      // there is no ']' for the last
  };

  /// Null gives the step that there is none of.
  explicit XPathStep(const char* text);
  ~XPathStep();

  XPathStep(const XPathStep&) = delete;
  XPathStep& operator=(const XPathStep&) = delete;

  bool IsMissing() const { return m_text == nullptr; }
  bool HasDots() const { return m_text != nullptr && *m_text == '.'; }
  bool IsParent() const { return HasDots() && m_text[1] == '.'; }

  /// Whether the name of a node is the step's, which is all before the first '[' or "*".
  bool NameMatches(const char* name) const { return m_anyName || Equals(name, m_name); }

  /// Whether there is more to the step than its name.
  bool HasPredicates() const { return m_hasPredicates; }
  /// Whether `holds` is true for each predicate up to the first malformed one.
  template <class Holds>
  bool AllPredicates(Holds holds) const {
    const LinkedPredicate* linked = m_predicates;
    while (linked != nullptr && holds(linked->predicate)) linked = linked->next;
    return linked == nullptr;
  }
  End PredicatesEnd() const { return m_end; }
  char WrongCharacter() const { return m_wrongCharacter; }

 private:
  struct LinkedPredicate {
    explicit LinkedPredicate(const TextRange& text) : predicate(text), next(nullptr) {}

    XPathPredicate predicate;
    LinkedPredicate* next;
  };

  XPathStep();
  void SplitPredicates(const char* text);

  const char* m_text;
  TextRange m_name;
  bool m_anyName;
  bool m_hasPredicates;
  LinkedPredicate* m_predicates;
  End m_end;
  char m_wrongCharacter;
};

/// The name of a step, and the text of its predicates, from the first '[' on, or null.
TextRange NameOfStep(const char* text, const char** predicates);

/// The steps of a path, split. Borrows the texts of the list, which must outlive it unchanged.
class XPathSteps {
 public:
  /// Builds the list's index when it is missing.
  explicit XPathSteps(CXPathList& list);
  ~XPathSteps();

  XPathSteps(const XPathSteps&) = delete;
  XPathSteps& operator=(const XPathSteps&) = delete;

  int Count() const { return m_count; }

  /// Step k, counted from 0; the step that there is none of for any k outside.
  const XPathStep& At(int k) const { return k >= 0 && k < m_count ? m_steps[k] : m_none; }

  /// Whether any step moves instead of matching.
  bool HasDots() const { return m_hasDots; }

 private:
  XPathSteps();

  XPathStep* m_steps;
  int m_count;
  XPathStep m_none;
  bool m_hasDots;
};

}  // namespace xmldom

#endif
