#ifndef XMLDOM_QUERY_XPATHSTEP_H
#define XMLDOM_QUERY_XPATHSTEP_H

#include <cstddef>
#include <cstring>
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

  /// At least 1.
  std::size_t Count() const { return m_rest.size() + 1; }
  const XPathSegment& At(std::size_t i) const { return i == 0 ? m_first : m_rest[i - 1]; }
  const XPathTest& Test() const { return m_test; }

 private:
  XPathSegment m_first;  // the only one, most of the time
  std::vector<XPathSegment> m_rest;
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

  bool IsMissing() const { return m_text == nullptr; }
  bool HasDots() const { return m_text != nullptr && *m_text == '.'; }
  bool IsParent() const { return HasDots() && m_text[1] == '.'; }

  /// Whether the name of a node is the step's, which is all before the first '[' or "*".
  bool NameMatches(const char* name) const { return m_anyName || Equals(name, m_name); }

  /// Whether there is more to the step than its name.
  bool HasPredicates() const { return m_hasPredicates; }
  const std::vector<XPathPredicate>& Predicates() const { return m_predicates; }
  End PredicatesEnd() const { return m_end; }
  char WrongCharacter() const { return m_wrongCharacter; }

 private:
  void SplitPredicates(const char* text);

  const char* m_text;
  TextRange m_name;
  bool m_anyName;
  bool m_hasPredicates;
  std::vector<XPathPredicate> m_predicates;  // up to the first malformed one
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

}  // namespace xmldom

#endif
